#include "xcbconnection.h"

#include <QGuiApplication>
#include <QScreen>

#include <qpa/qplatformnativeinterface.h>

namespace xcbconnection {

xcb_connection_t *get()
{
    if (!qGuiApp || QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    return static_cast<xcb_connection_t *>(native->nativeResourceForIntegration("connection"));
}

unsigned int rootWindow()
{
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    void *root = native->nativeResourceForScreen("rootwindow", QGuiApplication::primaryScreen());
    return static_cast<unsigned int>(reinterpret_cast<quintptr>(root));
}

} // namespace xcbconnection
