// A hot key that works whatever window has the focus.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Item {
    id: client

    signal screenshotWanted

    QxtGlobalShortcut {
        id: hotKey
        onActivated: client.screenshotWanted()
        Component.onCompleted: {
            if (!setShortcut("Ctrl+Alt+Shift+F9"))
                console.info("Another program has this hot key")
        }
    }
}
