import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../components"
import "../model"
import "../theme"

// The open conversation: header, search, messages, composer.
Item {
    id: page

    property ChatClient client
    readonly property alias list: messageList
    readonly property alias composer: composer
    readonly property alias searchBar: searchBar
    readonly property alias hoverCard: hoverCard
    readonly property alias personCard: personCard
    readonly property alias toast: toast
    readonly property alias menu: menu
    readonly property alias pictureMenu: pictureMenu
    readonly property alias newestButton: newestButton
    property var matches: []
    property string shownId
    property string wallpaper
    property var drafts: ({}) // what was being written, by conversation

    signal screenshotRequested()
    signal pictureClicked(string path)
    signal personHovered(int person, Item near)
    signal personLeft()

    function openSearch(words) {
        searchBar.visible = true
        searchBar.ask(words)
    }

    function closeSearch() {
        searchBar.ask("")
        searchBar.visible = false
        composer.takeFocus()
    }

    function step(direction) {
        if (matches.length === 0)
            return
        searchBar.position = (searchBar.position + direction + matches.length) % matches.length
        messageList.jumpTo(matches[searchBar.position])
    }

    function findMatches() {
        matches = page.client.messages.search(messageList.highlight)
        searchBar.count = matches.length
        searchBar.position = 0
        if (matches.length > 0)
            messageList.jumpTo(matches[0])
    }

    function exchangeDraft() {
        if (shownId !== "")
            drafts[shownId] = composer.draft()
        shownId = client.currentId
        composer.restore(drafts[shownId])
    }

    Connections {
        target: page.client

        function onCurrentIdChanged() {
            if (searchBar.visible)
                page.closeSearch()
            page.exchangeDraft()
            messageList.missed = 0
            Qt.callLater(messageList.showNewest)
        }

        function onReceived(conversationId) {
            if (conversationId === page.client.currentId)
                messageList.noteNewest()
        }
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.window
    }

    Loader {
        anchors.fill: messageList
        active: page.wallpaper !== ""
        sourceComponent: DrawableImage {
            fillMode: DrawableImage.PreserveAspectCrop
            backgroundColor: Theme.window
            opacity: 0.55
            source: page.wallpaper
        }
    }

    ConversationHeader {
        id: header

        width: parent.width
        client: page.client
        onSearchRequested: page.openSearch("")
    }

    SearchBar {
        id: searchBar

        y: header.height
        width: parent.width
        visible: false
        onWordsChanged: typing.restart()
        onStepped: page.step(direction)
        onClosed: page.closeSearch()

        Timer {
            id: typing

            interval: 150
            onTriggered: {
                messageList.highlight = searchBar.words.trim()
                page.findMatches()
            }
        }
    }

    MessageList {
        id: messageList

        anchors { left: parent.left; right: parent.right; bottom: composer.top; top: header.bottom }
        anchors.topMargin: searchBar.visible ? searchBar.height : 0
        model: page.client.messages
        me: page.client.user
        named: !header.isDirect
        onLinkClicked: toast.show(link.startsWith("mailto:") ? qsTr("New mail to %1").arg(link.slice(7)) : qsTr("Opening %1").arg(link))
        onTagClicked: page.openSearch(tag)
        onPersonClicked: {
            personCard.person = person
            personCard.showNear(near)
        }
        onLinkHovered: hoverCard.show(link, near, x, y)
        onHoverEnded: hoverCard.hide()
        onPictureClicked: page.pictureClicked(path)
        onPictureMenuRequested: {
            pictureMenu.path = path
            pictureMenu.popup(picture, at)
        }
        onPersonHovered: page.personHovered(person, near)
        onPersonLeft: page.personLeft()
        onMenuRequested: {
            menu.textItem = textItem
            menu.popup(textItem, at)
        }
    }

    NewestButton {
        id: newestButton

        anchors { right: messageList.right; bottom: messageList.bottom; rightMargin: 24; bottomMargin: 8 }
        visible: !messageList.atNewest
        missed: messageList.missed
        onClicked: messageList.showNewest()
    }

    Composer {
        id: composer

        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        placeholder: qsTr("Write a message")
        people: page.client.current ? page.client.current.members.filter(member => member !== page.client.user) : []
        tags: page.client.tags
        onSent: {
            page.client.send(text, mentions, files)
            messageList.showNewest()
        }
        onRefused: toast.show(why)
        onScreenshotRequested: page.screenshotRequested()
    }

    HoverCard {
        id: hoverCard
    }

    PersonCard {
        id: personCard

        online: page.client.isOnline(person)
    }

    Toast {
        id: toast

        anchors { horizontalCenter: parent.horizontalCenter; bottom: composer.top; bottomMargin: 14 }
    }

    PictureMenu {
        id: pictureMenu

        onCopied: toast.show(qsTr("Copied"))
    }

    MessageMenu {
        id: menu

        onCopied: toast.show(qsTr("Copied"))
    }
}
