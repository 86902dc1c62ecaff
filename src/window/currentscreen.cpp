#include "currentscreen.h"

#include <QGuiApplication>
#include <QMetaType>
#include <QScreen>
#include <QVariant>

namespace currentscreen {
namespace {

constexpr char propertyName[] = "currentScreen";

} // namespace

QScreen *get()
{
    const QVariant value = qApp->property(propertyName);
    if (!(QMetaType::typeFlags(value.userType()) & QMetaType::PointerToQObject))
        return nullptr;
    // The property holds a bare pointer, which outlives a screen that was unplugged. QVariant's own
    // conversion would look into the object, so the address alone is compared.
    const void *address = *static_cast<const void *const *>(value.constData());
    for (QScreen *screen : QGuiApplication::screens()) {
        if (static_cast<QObject *>(screen) == address)
            return screen;
    }
    return nullptr;
}

void set(QScreen *screen)
{
    qApp->setProperty(propertyName, QVariant::fromValue(screen));
}

} // namespace currentscreen
