import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// A picture as a whole, over a blurred copy of itself where its shape leaves room. A click opens the viewer.
BubbleFrame {
    id: bubble

    property string name
    property var file: ({})
    property real widest: 400
    readonly property Item textItem: null
    readonly property alias picture: picture
    readonly property real factor: Math.min(1, Math.min(widest, 360) / Math.max(1, file.width || 0),
                                            240 / Math.max(1, file.height || 0))

    signal clicked()
    signal menuRequested(point at)

    width: Math.max(220, (file.width || 0) * factor)
    height: Math.max(110, (file.height || 0) * factor)

    ImageRender {
        id: picture

        anchors { fill: parent; margins: 1 }
        sourceFillMode: ImageRender.PreserveAspectFit
        backgroundFillMode: ImageRender.PreserveAspectCrop
        blurRadius: 3
        sourceSize: Qt.size(720, 480)
        topLeftRadius: Theme.bubbleRadius
        topRightRadius: Theme.bubbleRadius
        bottomLeftRadius: Theme.bubbleRadius
        bottomRightRadius: Theme.bubbleRadius
        // The thumbnail came with the message, so that there is something to see at once.
        backgroundSource: bubble.file.thumbnail || ""
        source: bubble.file.path || ""
    }

    CircleProgress {
        anchors.centerIn: parent
        visible: bubble.delivery === "sending"
        radius: 22
        color: "white"
        progress: bubble.progress
    }

    Rectangle {
        anchors { fill: footer; margins: -3; leftMargin: -8; rightMargin: -8 }
        radius: height / 2
        color: "#d9ffffff"
    }

    BubbleFooter {
        id: footer

        bubble: bubble
        anchors { right: parent.right; bottom: parent.bottom; rightMargin: 16; bottomMargin: 11 }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        cursorShape: Qt.PointingHandCursor
        onClicked: {
            if (mouse.button === Qt.RightButton)
                bubble.menuRequested(Qt.point(mouse.x, mouse.y))
            else
                bubble.clicked()
        }
    }
}
