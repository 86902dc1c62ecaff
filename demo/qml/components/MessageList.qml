import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

// The messages of a conversation, the newest at the bottom.
ListView {
    id: list

    property int me
    property bool named: true // whether the author's name stands above
    property string highlight
    property Item selectedText: null
    readonly property bool atNewest: originY + contentHeight - height - contentY < 80
    property int missed: 0 // messages that arrived below what is shown
    // Sizes of long messages that were laid out before, so that the list does not jump when they come back.
    property var sizes: ({})

    signal linkClicked(string link)
    signal tagClicked(string tag)
    signal personClicked(int person, Item near)
    signal linkHovered(string link, Item near, real x, real y)
    signal hoverEnded()
    signal menuRequested(Item textItem, point at)
    signal pictureClicked(string path)
    signal pictureMenuRequested(string path, Item picture, point at)
    signal personHovered(int person, Item near)
    signal personLeft()

    verticalLayoutDirection: ListView.BottomToTop
    interactive: false
    reuseItems: true
    clip: true
    cacheBuffer: 600
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ThinScrollBar {}
    // The list runs upwards: its header is what stands below the newest message.
    header: Item { height: 14 }
    footer: Item { height: 14 }
    delegate: Message {
        width: list.width
        named: list.named
        me: list.me
        highlight: list.highlight
        sizes: list.sizes
        onSelected: list.select(textItem)
        onLinkClicked: list.linkClicked(link)
        onTagClicked: list.tagClicked(tag)
        onPersonClicked: list.personClicked(person, near)
        onLinkHovered: list.linkHovered(link, near, x, y)
        onHoverEnded: list.hoverEnded()
        onMenuRequested: list.menuRequested(textItem, at)
        onPictureClicked: list.pictureClicked(path)
        onPictureMenuRequested: list.pictureMenuRequested(path, picture, at)
        onPersonHovered: list.personHovered(person, near)
        onPersonLeft: list.personLeft()
    }

    onAtNewestChanged: {
        if (atNewest)
            missed = 0
    }

    // What is read stays in view when the window changes its size.
    onHeightChanged: {
        if (atNewest)
            Qt.callLater(showNewest)
    }

    // A message was added below: whoever reads the newest ones sees it, whoever reads old ones is not disturbed.
    function noteNewest() {
        if (atNewest)
            Qt.callLater(showNewest)
        else
            ++missed
    }

    function showNewest() {
        scroller.stop()
        positionViewAtBeginning()
    }

    function jumpTo(index) {
        scroller.stop()
        positionViewAtIndex(index, ListView.Center)
        const item = itemAtIndex(index)
        if (item)
            item.flash()
    }

    // One selection in the whole list.
    function select(textItem) {
        if (selectedText && selectedText !== textItem)
            selectedText.deselect()
        selectedText = textItem
    }

    WheelScroller {
        id: scroller

        parent: list
        anchors.fill: parent
        z: -1
        view: list
    }
}
