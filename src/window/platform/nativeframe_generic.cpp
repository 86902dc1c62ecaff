// Platforms that don't ask for hits: X11, where the decoration is taken away by a hint to the window manager
// while the window's flags stay those of a full window, and all others, where that is left to the flags.

#include "nativeframe.h"

#ifdef COMPONENT_XCB
#include "xcbconnection.h"

#include <xcb/xcb.h>
#endif

#include <QWindow>

#include <private/qhighdpiscaling_p.h>
#include <qpa/qplatformwindow.h>

namespace nativeframe {
namespace {

#ifdef COMPONENT_XCB
/// The hints of the Motif window manager, which all others understand.
struct MotifHints
{
    quint32 flags = 2; ///< only `decorations` is meant
    quint32 functions = 0;
    quint32 decorations = 0;
    qint32 inputMode = 0;
    quint32 status = 0;
};

void removeDecoration(QWindow *window)
{
    xcb_connection_t *connection = xcbconnection::get();
    if (!connection)
        return;
    const char name[] = "_MOTIF_WM_HINTS";
    const xcbconnection::Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, sizeof(name) - 1, name), nullptr));
    if (!atom)
        return;
    const MotifHints hints;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, xcb_window_t(window->winId()), atom->atom,
                        atom->atom, 32, sizeof(hints) / 4, &hints);
    xcb_flush(connection);
}
#else
void removeDecoration(QWindow *) {}
#endif

} // namespace

bool asksForHits()
{
    return false;
}

void apply(QWindow *window, bool)
{
    window->create();
    removeDecoration(window);
}

NativeRect rectOf(QWindow *window)
{
    const QRect rect = window->handle() ? window->handle()->geometry() : window->geometry();
    return {rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()};
}

QPoint toNative(QPointF globalPosition, QWindow *window)
{
    return QHighDpi::toNativePixels(globalPosition, window).toPoint();
}

Message decode(const QByteArray &, void *)
{
    return {};
}

} // namespace nativeframe
