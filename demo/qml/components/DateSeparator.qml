import QtQuick 2.15
import "../theme"

Item {
    id: separator

    property string title

    height: 46

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        anchors { left: parent.left; right: parent.right; margins: 24 }
        height: 1
        color: Theme.line
    }

    Rectangle {
        anchors.centerIn: parent
        width: label.implicitWidth + 24
        height: 24
        radius: 12
        color: Theme.window

        Text {
            id: label

            anchors.centerIn: parent
            text: separator.title
            color: Theme.inkSoft
            font.pixelSize: 12
        }
    }
}
