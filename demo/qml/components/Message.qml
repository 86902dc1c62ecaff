import QtQuick 2.15
import "../theme"
import "../model/format.js" as Format
import "../model/people.js" as People

// One row of the message list: the date where a day begins, the author and the bubble; or a notice of the
// service. Rows are reused for other messages while the list scrolls.
Item {
    id: row

    required property int index
    required property string messageId
    required property int author
    required property string body
    required property string blocks
    required property string kind
    required property double time
    required property string dayTitle
    required property bool follows
    required property string delivery
    required property string attachment // as JSON, "" for none
    required property double progress // of sending, 0 to 1

    property int me
    property bool named: true
    property string highlight
    property var sizes: ({})
    readonly property bool own: author === me
    readonly property bool notice: kind === "notice"
    readonly property Item bubble: notice ? null : bubbleLoader.item
    readonly property alias face: face
    readonly property Item textItem: bubble ? bubble.textItem : noticeLoader.item
    readonly property var file: attachment !== "" ? JSON.parse(attachment) : ({})
    readonly property real widest: Math.min(620, width * 0.72)

    signal selected(Item textItem)
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

    height: content.y + content.height
    ListView.onPooled: {
        // A long text that is still being laid out would come back into the next message: it gets an item of
        // its own every time.
        if (body.length >= 500)
            bubbleLoader.active = false
    }
    ListView.onReused: bubbleLoader.active = true

    function flash() {
        if (bubble)
            bubble.flash()
    }

    DateSeparator {
        id: separator

        visible: row.dayTitle !== ""
        width: row.width
        title: row.dayTitle
    }

    Item {
        id: content

        y: (separator.visible ? separator.height : 0) + (row.follows ? 3 : 12)
        width: row.width
        height: row.notice ? noticeLoader.height : (nameLabel.visible ? 20 : 0) + bubbleLoader.height

        Avatar {
            id: face

            visible: !row.notice && !row.own && !row.follows
            x: 20
            size: 34
            name: People.nameOf(row.author)
            person: row.author

            MouseArea {
                anchors.fill: parent
                hoverEnabled: true
                cursorShape: Qt.PointingHandCursor
                onEntered: row.personHovered(row.author, parent)
                onExited: row.personLeft()
                onClicked: row.personClicked(row.author, parent)
            }
        }

        Text {
            id: nameLabel

            visible: row.named && !row.notice && !row.own && !row.follows
            x: 66
            text: People.nameOf(row.author)
            color: Theme.avatarColor(text)
            font.pixelSize: 12
            font.weight: Font.DemiBold
        }

        Loader {
            id: bubbleLoader

            x: row.own ? row.width - width - 24 : 64
            y: nameLabel.visible ? 20 : 0
            visible: !row.notice
            sourceComponent: ({ text: bubbleComponent, code: codeComponent, file: fileComponent,
                                picture: pictureComponent })[row.kind] || null
        }

        Loader {
            id: noticeLoader

            anchors.horizontalCenter: parent.horizontalCenter
            sourceComponent: row.notice ? noticeComponent : null
        }
    }

    Component {
        id: bubbleComponent

        Bubble {
            own: row.own
            widest: row.widest
            text: row.body
            blocks: row.blocks
            highlight: row.highlight
            clock: Format.clock(row.time)
            delivery: row.own ? row.delivery : ""
            expectedSize: row.sizes[row.messageId + row.widest] || Qt.size(0, 0)
            onSizeKnown: row.sizes[row.messageId + row.widest] = size
            onSelected: row.selected(textItem)
            onLinkClicked: row.linkClicked(link)
            onTagClicked: row.tagClicked(tag)
            onPersonClicked: row.personClicked(person, textItem)
            onLinkHovered: row.linkHovered(link, near, x, y)
            onHoverEnded: row.hoverEnded()
            onMenuRequested: row.menuRequested(textItem, at)
        }
    }

    Component {
        id: codeComponent

        CodeBubble {
            own: row.own
            widest: row.widest
            text: row.body
            highlight: row.highlight
            clock: Format.clock(row.time)
            delivery: row.own ? row.delivery : ""
        }
    }

    Component {
        id: fileComponent

        FileBubble {
            own: row.own
            name: row.body
            file: row.file
            clock: Format.clock(row.time)
            delivery: row.own ? row.delivery : ""
            progress: row.progress
        }
    }

    Component {
        id: pictureComponent

        PictureBubble {
            own: row.own
            name: row.body
            file: row.file
            widest: row.widest
            clock: Format.clock(row.time)
            delivery: row.own ? row.delivery : ""
            progress: row.progress
            onClicked: row.pictureClicked(row.file.path)
            onMenuRequested: row.pictureMenuRequested(row.file.path, this, at)
        }
    }

    Component {
        id: noticeComponent

        MessageText {
            font: Theme.noticeFont
            color: Theme.inkSoft
            selectByMouse: false
            textCursorShape: Qt.ArrowCursor
            maxWidth: row.widest
            text: row.body
            onAiteClick: row.personClicked(data, this)
        }
    }
}
