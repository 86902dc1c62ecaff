import QtQuick 2.15
import "../model"

// The list of conversations beside the open one.
Item {
    id: page

    property ChatClient client
    readonly property alias conversation: conversation
    readonly property alias conversations: conversations

    ConversationList {
        id: conversations

        width: 300
        height: parent.height
        client: page.client
    }

    ConversationPage {
        id: conversation

        anchors { left: conversations.right; right: parent.right }
        height: parent.height
        client: page.client
    }
}
