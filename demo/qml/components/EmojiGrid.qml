import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/emoji.js" as Emoji

// All emoji, by group.
Flickable {
    id: grid

    property real cell: 46

    signal picked(string emoji)

    clip: true
    interactive: false
    contentHeight: column.height
    boundsBehavior: Flickable.StopAtBounds
    ScrollBar.vertical: ThinScrollBar {}

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
            model: Emoji.groups

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

                            width: grid.cell
                            height: grid.cell
                            hoverEnabled: true
                            Accessible.name: modelData
                            background: Rectangle {
                                radius: Theme.radius
                                color: cell.down ? Theme.pressed : cell.hovered ? Theme.accentSoft : "transparent"
                            }
                            contentItem: Item {
                                DrawableText {
                                    anchors.centerIn: parent
                                    font: Theme.emojiFont
                                    maxWidth: 200
                                    text: cell.modelData
                                }
                            }
                            onClicked: grid.picked(modelData)
                        }
                    }
                }
            }
        }
    }
}
