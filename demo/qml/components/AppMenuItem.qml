import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

MenuItem {
    id: item

    property string shortcutText

    implicitHeight: 34
    contentItem: Item {
        Text {
            anchors { left: parent.left; leftMargin: 8; verticalCenter: parent.verticalCenter }
            text: item.text
            color: item.enabled ? Theme.ink : Theme.inkFaint
            font.pixelSize: Theme.bodyText
        }

        Text {
            anchors { right: parent.right; rightMargin: 8; verticalCenter: parent.verticalCenter }
            text: item.shortcutText
            color: Theme.inkFaint
            font.pixelSize: 12
        }
    }
    background: Rectangle {
        radius: 8
        color: item.highlighted && item.enabled ? Theme.hover : "transparent"
    }
}
