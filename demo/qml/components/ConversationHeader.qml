import QtQuick 2.15
import "../model"
import "../theme"
import "../model/people.js" as People

Rectangle {
    id: header

    property ChatClient client
    readonly property var conversation: client.current
    readonly property bool isDirect: conversation !== null && conversation.members.length === 2
    readonly property int peer: isDirect ? othersOf(conversation)[0] : 0

    signal searchRequested()

    function othersOf(entry) {
        return entry.members.filter(member => member !== client.user)
    }

    height: Theme.headerHeight
    color: Theme.panel

    Avatar {
        id: avatar

        x: 20
        anchors.verticalCenter: parent.verticalCenter
        size: 38
        name: title.text
        person: header.peer
        online: header.peer > 0 && header.client.onlineUsers.indexOf(header.peer) !== -1
    }

    Column {
        anchors { left: avatar.right; leftMargin: 12; verticalCenter: parent.verticalCenter }
        spacing: 1

        PreviewText {
            id: title

            font: Qt.font({ family: Theme.family, pixelSize: Theme.titleText, weight: Font.DemiBold })
            color: Theme.ink
            maxWidth: header.width - 160
            text: header.conversation ? header.client.titleOf(header.conversation) : ""
        }

        Text {
            text: !header.conversation ? ""
                : !header.isDirect ? header.othersOf(header.conversation).map(People.nameOf).join(", ")
                : avatar.online ? qsTr("Online") : People.byId(header.peer).role
            color: avatar.online ? Theme.online : Theme.inkSoft
            font.pixelSize: 12
        }
    }

    IconButton {
        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }
        iconName: "search"
        hint: qsTr("Search in this conversation")
        onClicked: header.searchRequested()
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
}
