import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// A picture, never larger than it is. A click opens the viewer.
BubbleFrame {
    id: bubble

    property string name
    property var file: ({})
    property real widest: 400
    readonly property Item textItem: null
    readonly property real factor: Math.min(1, Math.min(widest, 360) / Math.max(1, file.width || 0),
                                            240 / Math.max(1, file.height || 0))

    signal clicked()

    width: Math.max(140, (file.width || 0) * factor)
    height: Math.max(80, (file.height || 0) * factor)

    Image {
        anchors { fill: parent; margins: 3 }
        asynchronous: true
        sourceSize: Qt.size(720, 480)
        fillMode: Image.PreserveAspectFit
        source: bubble.file.path ? ImUtil.fromLocalFile(bubble.file.path) : ""
    }

    Rectangle {
        anchors { fill: footer; margins: -4; leftMargin: -8; rightMargin: -8 }
        radius: height / 2
        color: "#ccffffff"
    }

    BubbleFooter {
        id: footer

        bubble: bubble
        anchors { right: parent.right; bottom: parent.bottom; rightMargin: 16; bottomMargin: 12 }
    }

    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.PointingHandCursor
        onClicked: bubble.clicked()
    }
}
