import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../model/format.js" as Format

// What can be done with the message under the pointer.
AppMenu {
    id: menu

    property Item textItem: null

    signal copied()

    AppMenuItem {
        text: qsTr("Copy")
        shortcutText: "Ctrl+C"
        enabled: menu.textItem !== null && menu.textItem.selectedText !== ""
        onTriggered: {
            menu.textItem.copy()
            menu.copied()
        }
    }

    AppMenuItem {
        text: qsTr("Copy message")
        onTriggered: {
            menu.textItem.selectAll()
            menu.textItem.copy()
            menu.textItem.deselect()
            menu.copied()
        }
    }

    AppMenuItem {
        text: qsTr("Copy as HTML")
        onTriggered: {
            Clipboard.setMimeData({ "text/plain": menu.textItem.plainText(), "text/html": Format.html(menu.textItem.plainText()) })
            menu.copied()
        }
    }

    AppMenuItem {
        text: qsTr("Select all")
        shortcutText: "Ctrl+A"
        onTriggered: {
            menu.textItem.forceActiveFocus()
            menu.textItem.selectAll()
        }
    }
}
