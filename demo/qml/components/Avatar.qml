import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/people.js" as People

// The picture of a person, or initials on a rounded square whose colour belongs to the name.
Item {
    id: avatar

    property string name
    property int person: 0 // 0 for a group
    property bool online: false
    property real size: 40
    readonly property string picture: person > 0 && Theme.pictures ? Theme.pictures.of(person) : ""

    width: size
    height: size

    Rectangle {
        visible: avatar.picture === ""
        anchors.fill: parent
        radius: avatar.size * 0.3
        color: Theme.avatarColor(avatar.name)

        Text {
            anchors.centerIn: parent
            text: People.initials(avatar.name)
            color: "white"
            font.pixelSize: avatar.size * 0.4
            font.weight: Font.DemiBold
        }
    }

    RoundedImage {
        anchors.fill: parent
        visible: avatar.picture !== ""
        radius: avatar.size * 0.3
        fillMode: RoundedImage.PreserveAspectCrop
        cache: true
        sourceSize: Qt.size(128, 128)
        source: avatar.picture
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
