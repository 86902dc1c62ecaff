import QtQuick 2.15
import QtQuick.Controls 2.15
import "../components"
import "../model"
import "../theme"

Rectangle {
    id: page

    property ChatClient client
    readonly property alias list: list

    color: Theme.panel

    SearchField {
        id: filter

        anchors { left: parent.left; right: parent.right; margins: 14 }
        y: 14
        placeholderText: qsTr("Find a conversation")
        Keys.onEscapePressed: clear()
    }

    ListView {
        id: list

        anchors { left: parent.left; right: parent.right; top: filter.bottom; bottom: parent.bottom; topMargin: 10 }
        leftMargin: 8
        rightMargin: 12
        bottomMargin: 8
        spacing: 2
        clip: true
        interactive: false
        boundsBehavior: Flickable.StopAtBounds
        model: page.client.conversations
        ScrollBar.vertical: ThinScrollBar {}
        moveDisplaced: Transition { NumberAnimation { property: "y"; duration: 180; easing.type: Easing.OutCubic } }
        move: Transition { NumberAnimation { property: "y"; duration: 180; easing.type: Easing.OutCubic } }
        delegate: ConversationRow {
            required property string conversationId
            required peer
            required title
            required preview
            required time
            required unread
            readonly property bool wanted: title.toLowerCase().indexOf(filter.text.trim().toLowerCase()) !== -1

            width: list.width - 20
            height: wanted ? implicitHeight : 0
            visible: wanted
            current: conversationId === page.client.currentId
            online: peer > 0 && page.client.onlineUsers.indexOf(peer) !== -1
            onClicked: page.client.open(conversationId)
        }

        WheelScroller {
            parent: list
            anchors.fill: parent
            z: -1
            view: list
        }
    }

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.line
    }
}
