import QtQuick 2.15
import "../theme"

// The bubble of one message, with the time behind the last line.
BubbleFrame {
    id: bubble

    property real widest: 400
    property string text
    property string blocks: "[]" // as JSON, because a list model holds no arrays
    property string highlight
    property size expectedSize: Qt.size(0, 0)
    readonly property alias textItem: content
    readonly property int sidePadding: 13
    readonly property int endPadding: 8

    signal selected(Item textItem)
    signal linkClicked(string link)
    signal tagClicked(string tag)
    signal personClicked(int person)
    signal linkHovered(string link, Item near, real x, real y)
    signal hoverEnded()
    signal menuRequested(Item textItem, point at)
    // Of a text that was laid out on a worker.
    signal sizeKnown(size size)

    width: content.width + 2 * sidePadding
    height: content.height + 2 * endPadding

    MessageText {
        id: content

        // More characters than this are laid out on a worker, and until then the item has `previewSize`: the size
        // that it had, so that nothing jumps when it is laid out again, or one that is guessed.
        readonly property bool isLong: text.length >= 500
        property size lastSize: bubble.expectedSize

        x: bubble.sidePadding
        y: bubble.endPadding
        maxWidth: bubble.widest - 2 * bubble.sidePadding
        reservedWidth: footer.width + 10
        previewSize: !isLong ? Qt.size(0, 0) : lastSize.width > 0 ? lastSize : estimate()
        highlightText: bubble.highlight
        userBlocks: JSON.parse(bubble.blocks)
        text: bubble.text

        function estimate() {
            const perLine = Math.max(1, maxWidth / (font.pixelSize * 0.62))
            return Qt.size(maxWidth, Math.ceil(bubble.text.length / perLine) * font.pixelSize * 1.5)
        }

        onHeightChanged: {
            if (isLong && lineCount > 0 && height !== previewSize.height) {
                lastSize = Qt.size(width, height)
                bubble.sizeKnown(lastSize)
            }
        }
        onSelectedTextChanged: {
            if (content.selectedText !== "")
                bubble.selected(content)
        }
        onLinkActivated: bubble.linkClicked(link)
        onSharpClick: bubble.tagClicked(sharpText)
        onAiteClick: bubble.personClicked(data)
        onLinkHovered: {
            pointer.overLink = true
            bubble.linkHovered(link, content, pointer.point.position.x, pointer.point.position.y)
        }

        // The text tells when the pointer moves over a link, and not when it leaves: a move without that word has
        // left it.
        HoverHandler {
            id: pointer

            property bool overLink: false
            property bool wasOverLink: false

            onPointChanged: Qt.callLater(settle)
            onHoveredChanged: Qt.callLater(settle)

            function settle() {
                if (!overLink && wasOverLink)
                    bubble.hoverEnded()
                wasOverLink = overLink
                overLink = false
            }
        }
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onTapped: bubble.menuRequested(content, bubble.mapToItem(content, eventPoint.position))
    }

    BubbleFooter {
        id: footer

        bubble: bubble
        anchors { right: parent.right; bottom: parent.bottom; rightMargin: 11; bottomMargin: 6 }
    }
}
