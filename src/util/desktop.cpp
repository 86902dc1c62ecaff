#include "desktop.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QOperatingSystemVersion>
#include <QScreen>
#include <QWindow>

namespace imutil {

void flashTaskbar(QWindow *window)
{
    if (!window)
        return;
    while (window->parent())
        window = window->parent();
    window->alert(0);
}

QVariantMap screenRect(QWindow *window)
{
    if (!window || !window->screen())
        return {};
    const QRect area = window->screen()->availableGeometry();
    return {
        {QStringLiteral("x"), area.x()},
        {QStringLiteral("y"), area.y()},
        {QStringLiteral("width"), area.width()},
        {QStringLiteral("height"), area.height()},
    };
}

QRect desktopGeometry()
{
    if (!qobject_cast<QApplication *>(QCoreApplication::instance()))
        return {0, 0, 1024, 740};
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    // Only the desktop widget knows all screens as one area, also where they are separate desktops.
    return QApplication::desktop()->geometry();
    QT_WARNING_POP
}

QVariantMap systemVersion()
{
    const QOperatingSystemVersion version = QOperatingSystemVersion::current();
    return {
        {QStringLiteral("major"), version.majorVersion()},
        {QStringLiteral("minor"), version.minorVersion()},
        {QStringLiteral("micro"), version.microVersion()},
    };
}

} // namespace imutil
