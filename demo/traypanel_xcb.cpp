// The tray by the protocol of freedesktop.org: whoever owns the selection of the screen is the tray; programs
// ask its window to take theirs in.

#include "traypanel.h"

#include <QGuiApplication>

#include <qpa/qplatformnativeinterface.h>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct FreeDeleter
{
    void operator()(void *reply) const { std::free(reply); }
};

template <typename Type>
using Reply = std::unique_ptr<Type, FreeDeleter>;

xcb_connection_t *server()
{
    if (QGuiApplication::platformName() != QLatin1String("xcb"))
        return nullptr;
    QPlatformNativeInterface *native = QGuiApplication::platformNativeInterface();
    return static_cast<xcb_connection_t *>(native->nativeResourceForIntegration("connection"));
}

xcb_atom_t atom(xcb_connection_t *connection, const char *name)
{
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, quint16(std::strlen(name)), name), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

/// Keeps other windows off the panel: its height, at the lower edge, over the whole width.
void reserve(xcb_connection_t *connection, xcb_window_t window, const QRect &panel)
{
    const quint32 strut[12] = {
        0, 0, 0, quint32(panel.height()), 0, 0, 0, 0, 0, 0, quint32(panel.left()), quint32(panel.right())};
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atom(connection, "_NET_WM_STRUT_PARTIAL"),
                        XCB_ATOM_CARDINAL, 32, 12, strut);
}

/// Painted by the server, so that icons can take it for their own background.
constexpr quint32 panelColor = 0xe4e9f2;
constexpr quint32 requestDock = 0;
constexpr quint32 embeddedNotify = 0;

} // namespace

bool TrayPanel::takeTray()
{
    xcb_connection_t *connection = server();
    if (!connection)
        return false;
    const xcb_atom_t selection = atom(connection, "_NET_SYSTEM_TRAY_S0");
    const Reply<xcb_get_selection_owner_reply_t> before(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr));
    if (!before || before->owner != XCB_NONE)
        return false;
    setProperty("_q_xcb_wm_window_type", 4); // a dock
    create();
    const auto window = xcb_window_t(winId());
    reserve(connection, window, geometry());
    xcb_change_window_attributes(connection, window, XCB_CW_BACK_PIXEL, &panelColor);
    // Icons that come later ask who owns it; there is none yet that would have to be told.
    xcb_set_selection_owner(connection, window, selection, XCB_CURRENT_TIME);
    xcb_flush(connection);
    return true;
}

void TrayPanel::dock(quint32 icon)
{
    icons.append(icon);
    const QRect rect = place(icons.size() - 1);
    xcb_connection_t *connection = server();
    xcb_reparent_window(connection, icon, xcb_window_t(winId()), qint16(rect.x()), qint16(rect.y()));
    const quint32 size[] = {quint32(rect.width()), quint32(rect.height())};
    xcb_configure_window(connection, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    xcb_map_window(connection, icon);

    xcb_client_message_event_t message = {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = icon;
    message.type = atom(connection, "_XEMBED");
    message.data.data32[1] = embeddedNotify;
    message.data.data32[3] = quint32(winId());
    xcb_send_event(connection, 0, icon, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&message));
    xcb_flush(connection);
}

bool TrayPanel::nativeEventFilter(const QByteArray &eventType, void *message, long *)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    if ((event->response_type & ~0x80) != XCB_CLIENT_MESSAGE)
        return false;
    const auto *request = reinterpret_cast<const xcb_client_message_event_t *>(event);
    const bool docks = request->window == winId() && request->data.data32[1] == requestDock &&
                       request->type == atom(server(), "_NET_SYSTEM_TRAY_OPCODE");
    if (docks)
        dock(request->data.data32[2]);
    return docks;
}
