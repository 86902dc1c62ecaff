import QtQuick 2.15
import "../theme"
import "../model/people.js" as People

// Initials on a rounded square. Its colour belongs to the name.
Rectangle {
    id: avatar

    property string name
    property bool online: false
    property real size: 40

    width: size
    height: size
    radius: size * 0.3
    color: Theme.avatarColor(name)

    Text {
        anchors.centerIn: parent
        text: People.initials(avatar.name)
        color: "white"
        font.pixelSize: avatar.size * 0.4
        font.weight: Font.DemiBold
    }

    Rectangle {
        visible: avatar.online
        anchors { right: parent.right; bottom: parent.bottom; margins: -2 }
        width: Math.max(10, avatar.size * 0.28)
        height: width
        radius: width / 2
        color: Theme.online
        border { width: 2; color: Theme.panel }
    }
}
