import QtQuick 2.15
import "../theme"

// What the bubbles of all kinds of message have in common.
Rectangle {
    id: frame

    property bool own: false
    property string clock
    property string delivery // "", "sending", "sent" or "failed"
    property real progress: 0 // of sending, 0 to 1

    radius: Theme.bubbleRadius
    color: own ? Theme.ownBubble : Theme.bubble
    border { width: own ? 0 : 1; color: Theme.line }

    function flash() {
        flashMotion.restart()
    }

    Rectangle {
        id: ring

        anchors.fill: parent
        z: 1
        radius: parent.radius
        color: "transparent"
        border { width: 2; color: Theme.accent }
        opacity: 0
        visible: opacity > 0

        SequentialAnimation {
            id: flashMotion

            NumberAnimation { target: ring; property: "opacity"; to: 1; duration: Theme.quick }
            PauseAnimation { duration: 700 }
            NumberAnimation { target: ring; property: "opacity"; to: 0; duration: 400 }
        }
    }
}
