import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// The pictures and files that go out with the next message.
ListView {
    id: strip

    signal removed(int index)

    implicitHeight: count > 0 ? 76 : 0
    orientation: ListView.Horizontal
    spacing: 8
    leftMargin: 10
    rightMargin: 10
    clip: true
    delegate: Item {
        id: entry

        required property int index
        required property string path
        required property string name
        required property double bytes
        required property bool isPicture

        width: isPicture ? 64 : 190
        height: strip.height

        Rectangle {
            anchors { fill: parent; topMargin: 8; bottomMargin: 4 }
            radius: Theme.radius
            color: Theme.field
            border { width: 1; color: Theme.line }

            Image {
                visible: entry.isPicture
                anchors { fill: parent; margins: 3 }
                asynchronous: true
                sourceSize: Qt.size(160, 160)
                fillMode: Image.PreserveAspectCrop
                source: entry.isPicture ? ImUtil.fromLocalFile(entry.path) : ""
            }

            Icon {
                visible: !entry.isPicture
                x: 10
                anchors.verticalCenter: parent.verticalCenter
                name: "file"
                size: 26
                color: Theme.accent
            }

            Column {
                visible: !entry.isPicture
                anchors { left: parent.left; right: parent.right; leftMargin: 44; rightMargin: 26 }
                anchors.verticalCenter: parent.verticalCenter

                Text {
                    width: parent.width
                    text: entry.name
                    elide: Text.ElideMiddle
                    color: Theme.ink
                    font.pixelSize: 13
                }

                Text {
                    text: ImUtil.intToSizeStr(entry.bytes)
                    color: Theme.inkSoft
                    font.pixelSize: Theme.smallText
                }
            }
        }

        IconButton {
            anchors { right: parent.right; top: parent.top; rightMargin: -4; topMargin: 2 }
            implicitWidth: 20
            implicitHeight: 20
            radius: 10
            iconName: "close"
            iconSize: 12
            iconColor: "white"
            fill: Theme.inkSoft
            hint: qsTr("Leave out %1").arg(entry.name)
            onClicked: strip.removed(entry.index)
        }
    }
}
