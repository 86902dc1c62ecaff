// The client in the tray, with the number of unread messages.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Item {
    id: client

    property int unread: 3

    signal windowWanted

    SystemTrayIcon {
        id: tray
        visible: true
        toolTip: client.unread > 0 ? "Chat: " + client.unread + " unread" : "Chat"
        state: SystemTrayIcon.Online
        messageCount: client.unread
        onTrigger: client.windowWanted()
        onMessageClick: client.windowWanted()
    }

    function announce(sender, text) {
        tray.showMessage(sender, text, "")
        tray.flash()
    }
}
