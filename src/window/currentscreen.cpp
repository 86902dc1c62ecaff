#include "currentscreen.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariant>

namespace currentscreen {
namespace {

constexpr char propertyName[] = "currentScreen";

} // namespace

QScreen *get()
{
    auto *screen = qApp->property(propertyName).value<QScreen *>();
    // The property holds a bare pointer, which outlives a screen that was unplugged.
    return QGuiApplication::screens().contains(screen) ? screen : nullptr;
}

void set(QScreen *screen)
{
    qApp->setProperty(propertyName, QVariant::fromValue(screen));
}

} // namespace currentscreen
