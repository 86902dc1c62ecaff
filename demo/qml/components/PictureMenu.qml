import QtQuick 2.15
import com.ostrel.im.component 1.0

// What can be done with the picture under the pointer.
AppMenu {
    id: menu

    property string path

    signal copied()

    AppMenuItem {
        text: qsTr("Copy picture")
        onTriggered: {
            Clipboard.copyImageToClipboard(ImUtil.fromLocalFile(menu.path))
            menu.copied()
        }
    }

    AppMenuItem {
        text: qsTr("Show in folder")
        onTriggered: ImUtil.openPath(menu.path)
    }
}
