import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// A file: its name, size and age. A double click shows it in the file manager.
BubbleFrame {
    id: bubble

    property string name
    property var file: ({})
    readonly property Item textItem: null
    readonly property alias detail: detailText.text

    width: 300
    height: 76

    Rectangle {
        id: symbol

        x: 12
        y: 12
        width: 42
        height: 42
        radius: Theme.radius
        color: Theme.accent

        Icon {
            visible: !upload.visible
            anchors.centerIn: parent
            name: "file"
            size: 24
            color: "white"
        }

        CircleProgress {
            id: upload

            anchors.centerIn: parent
            visible: bubble.delivery === "sending"
            radius: 16
            color: "white"
            progress: bubble.progress
        }
    }

    Text {
        anchors { left: symbol.right; right: parent.right; leftMargin: 12; rightMargin: 14 }
        y: 13
        text: bubble.name
        elide: Text.ElideMiddle
        color: Theme.ink
        font.pixelSize: Theme.bodyText
        font.weight: Font.DemiBold
    }

    Text {
        id: detailText

        anchors { left: symbol.right; leftMargin: 12 }
        y: 35
        text: ImUtil.intToSizeStr(bubble.file.bytes || 0) + " · " + ImUtil.toFormatedTimeType(bubble.file.changed || 0)
        color: Theme.inkSoft
        font.pixelSize: 12
    }

    BubbleFooter {
        bubble: bubble
        anchors { right: parent.right; bottom: parent.bottom; rightMargin: 11; bottomMargin: 6 }
    }

    TapHandler {
        onDoubleTapped: ImUtil.openPath(bubble.file.path)
    }
}
