import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"
import "../model/format.js" as Format

AbstractButton {
    id: row

    property string title
    property string preview
    property double time: 0
    property int unread: 0
    property bool online: false
    property int peer: 0 // the other one of two, 0 for a group
    property bool current: false
    readonly property alias previewItem: previewText

    implicitHeight: 66
    hoverEnabled: true
    Accessible.name: title
    background: Rectangle {
        radius: Theme.radius
        color: row.current ? Theme.accentSoft : row.down ? Theme.pressed : row.hovered ? Theme.hover : "transparent"
        border { width: row.visualFocus ? 2 : 0; color: Theme.accent }
    }
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    contentItem: Item {
        Avatar {
            id: avatar

            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: row.title
            person: row.peer
            size: 44
            online: row.online
        }

        Item {
            id: lines

            anchors { left: avatar.right; right: parent.right; leftMargin: 12; rightMargin: 12 }
            anchors.verticalCenter: parent.verticalCenter
            height: 42

            PreviewText {
                font: Qt.font({ family: Theme.family, pixelSize: Theme.bodyText, weight: Font.DemiBold })
                color: Theme.ink
                maxWidth: lines.width - timeLabel.width - 10
                text: row.title
            }

            Text {
                id: timeLabel

                anchors { right: parent.right; top: parent.top; topMargin: 2 }
                text: row.time > 0 ? Format.recent(row.time) : ""
                color: row.unread > 0 ? Theme.accent : Theme.inkFaint
                font.pixelSize: Theme.smallText
            }

            PreviewText {
                id: previewText

                anchors.bottom: parent.bottom
                maxWidth: lines.width - (badge.visible ? badge.width + 10 : 0)
                text: row.preview
            }

            Badge {
                id: badge

                anchors { right: parent.right; bottom: parent.bottom }
                count: row.unread
            }
        }
    }
}
