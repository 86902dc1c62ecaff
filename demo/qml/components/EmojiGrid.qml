import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/emoji.js" as Emoji

// All emoji, by group. The arrow keys go from one to the next, Return picks.
Flickable {
    id: grid

    property real cell: 46
    property var recent: [] // shown first
    readonly property var groups: recent.length === 0 ? Emoji.groups
        : [{ title: qsTr("Recent"), emoji: recent.join(" ") }].concat(Emoji.groups)

    signal picked(string emoji)

    clip: true
    interactive: false
    contentHeight: column.height
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ThinScrollBar {}

    function takeFocus() {
        nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
    }

    // The cell that a key leads to from `from`; a row up or down, the nearest one in it.
    function move(from, key) {
        const forward = key === Qt.Key_Right || key === Qt.Key_Down
        const sameRow = key === Qt.Key_Left || key === Qt.Key_Right
        const start = from.mapToItem(column, 0, 0)
        let best = null
        let bestDistance = 0
        let row = start.y
        for (let item = from.nextItemInFocusChain(forward); item && item.emoji !== undefined && item !== from;
             item = item.nextItemInFocusChain(forward)) {
            const place = item.mapToItem(column, 0, 0)
            if (sameRow) {
                best = item
                break
            }
            if (forward ? place.y < start.y : place.y > start.y)
                break
            if (place.y === start.y)
                continue
            if (best && place.y !== row)
                break
            row = place.y
            const distance = Math.abs(place.x - start.x)
            if (!best || distance < bestDistance) {
                best = item
                bestDistance = distance
            }
        }
        if (best)
            best.forceActiveFocus(Qt.TabFocusReason)
    }

    function show(item) {
        const top = item.mapToItem(column, 0, 0).y
        contentY = Math.max(0, Math.min(contentHeight - height, Math.max(top + item.height - height, Math.min(contentY, top))))
    }

    WheelScroller {
        width: grid.width
        height: grid.contentHeight
        view: grid
    }

    Column {
        id: column

        width: grid.width
        spacing: 6

        Repeater {
            model: grid.groups

            Column {
                id: group

                required property var modelData

                width: column.width
                bottomPadding: 10

                Text {
                    text: group.modelData.title
                    color: Theme.inkSoft
                    font.pixelSize: 12
                    font.weight: Font.DemiBold
                    leftPadding: 10
                    bottomPadding: 4
                }

                Flow {
                    width: parent.width

                    Repeater {
                        model: group.modelData.emoji.split(" ")

                        AbstractButton {
                            id: cell

                            required property string modelData
                            readonly property string emoji: modelData

                            width: grid.cell
                            height: grid.cell
                            hoverEnabled: true
                            Accessible.name: modelData
                            background: Rectangle {
                                radius: Theme.radius
                                color: cell.down ? Theme.pressed : cell.hovered ? Theme.accentSoft : "transparent"
                                border { width: cell.visualFocus ? 2 : 0; color: Theme.accent }
                            }
                            contentItem: Item {
                                DrawableText {
                                    anchors.centerIn: parent
                                    font: Theme.emojiFont
                                    maxWidth: 200
                                    text: cell.modelData
                                }
                            }
                            onActiveFocusChanged: {
                                if (activeFocus)
                                    grid.show(cell)
                            }
                            onClicked: grid.picked(modelData)
                            Keys.onReturnPressed: clicked()
                            Keys.onEnterPressed: clicked()
                            Keys.onPressed: {
                                if ([Qt.Key_Left, Qt.Key_Right, Qt.Key_Up, Qt.Key_Down].indexOf(event.key) !== -1) {
                                    event.accepted = true
                                    grid.move(cell, event.key)
                                }
                            }
                        }
                    }
                }
            }
        }
    }
}
