import QtQuick 2.15
import QtQuick.Controls 2.15
import "components"
import "model"
import "pages"
import "theme"

// The window of one signed-in user. A new page needs a line in `pages` and its item in the stack below.
ApplicationWindow {
    id: window

    property alias user: chatClient.user
    property alias serverUrl: chatClient.serverUrl
    property alias fresh: chatClient.fresh
    property alias startWith: chatClient.startWith
    property string page: "chats"
    readonly property alias client: chatClient
    readonly property alias conversation: chatsPage.conversation
    readonly property alias conversations: chatsPage.conversations
    readonly property alias emojiPage: emojiPage
    readonly property var pages: [
        { key: "chats", icon: "chat", title: qsTr("Chats") },
        { key: "emoji", icon: "smile", title: qsTr("Emoji") }
    ]

    width: 1120
    height: 740
    minimumWidth: 820
    minimumHeight: 520
    color: Theme.window
    title: chatClient.userName

    ChatClient {
        id: chatClient
    }

    Shortcut {
        sequence: StandardKey.Find
        onActivated: {
            window.page = "chats"
            window.conversation.openSearch("")
        }
    }

    NavigationRail {
        id: rail

        height: parent.height
        pages: window.pages
        current: window.page
        userName: chatClient.userName
        online: chatClient.connected
        onChosen: window.page = key
    }

    Item {
        anchors { left: rail.right; right: parent.right; top: parent.top; bottom: parent.bottom }

        ChatsPage {
            id: chatsPage

            anchors.fill: parent
            visible: window.page === "chats"
            client: chatClient
        }

        EmojiPage {
            id: emojiPage

            anchors.fill: parent
            visible: window.page === "emoji"
            onPicked: {
                window.conversation.composer.insert(emoji)
                window.page = "chats"
                window.conversation.composer.takeFocus()
            }
        }
    }
}
