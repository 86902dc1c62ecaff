import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

// The way back to the newest message, with the number of those that arrived meanwhile.
AbstractButton {
    id: button

    property int missed: 0

    implicitWidth: 40
    implicitHeight: 40
    hoverEnabled: true
    Accessible.name: qsTr("Newest message")
    background: Rectangle {
        radius: 20
        color: button.down ? Theme.pressed : button.hovered ? Theme.hover : Theme.panel
        border { width: 1; color: Theme.line }
    }
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: "down"
            color: Theme.accent
        }
    }

    Badge {
        anchors { horizontalCenter: parent.horizontalCenter; verticalCenter: parent.top }
        count: button.missed
    }
}
