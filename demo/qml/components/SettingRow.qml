import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

// A setting: its name, what it does, and at the right how to change it.
Item {
    id: row

    property string title
    property string detail
    default property alias control: slot.data

    width: parent ? parent.width : 0
    height: 62

    Column {
        anchors { left: parent.left; leftMargin: 18; verticalCenter: parent.verticalCenter }
        spacing: 3

        Text {
            text: row.title
            color: Theme.ink
            font.pixelSize: Theme.bodyText
        }

        Text {
            text: row.detail
            color: Theme.inkSoft
            font.pixelSize: 12
        }
    }

    Item {
        id: slot

        anchors { right: parent.right; rightMargin: 18; verticalCenter: parent.verticalCenter }
        width: childrenRect.width
        height: childrenRect.height
    }

    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: 18; rightMargin: 18 }
        height: 1
        color: Theme.line
    }
}
