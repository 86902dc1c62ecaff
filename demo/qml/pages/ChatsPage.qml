import QtQuick 2.15
import "../model"

// The list of conversations beside the open one.
Item {
    id: page

    property ChatClient client
    readonly property alias conversation: conversation
    readonly property alias conversations: conversations
    property alias wallpaper: conversation.wallpaper

    signal screenshotRequested()
    signal pictureClicked(string path)
    signal personHovered(int person, Item near)
    signal personLeft()

    ConversationList {
        id: conversations

        width: 300
        height: parent.height
        client: page.client
        onChosen: conversation.composer.takeFocus()
    }

    ConversationPage {
        id: conversation

        anchors { left: conversations.right; right: parent.right }
        height: parent.height
        client: page.client
        onScreenshotRequested: page.screenshotRequested()
        onPictureClicked: page.pictureClicked(path)
        onPersonHovered: page.personHovered(person, near)
        onPersonLeft: page.personLeft()
    }
}
