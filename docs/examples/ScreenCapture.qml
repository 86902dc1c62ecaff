// A selection of the screen: moving the pointer snaps to windows, dragging draws a rectangle, Escape gives up.
import QtQuick 2.15
import com.ostrel.im.component 1.0

ScreenCapture {
    id: capture

    signal selected(rect region)

    color: "#40000000"

    Rectangle {
        x: capture.region.x
        y: capture.region.y
        width: capture.region.width
        height: capture.region.height
        color: "transparent"
        border { width: 2; color: "#1f6feb" }
    }

    MouseArea {
        property point from

        anchors.fill: parent
        hoverEnabled: true
        focus: true
        Keys.onEscapePressed: capture.close()
        onPressed: from = Qt.point(mouse.x, mouse.y)
        onPositionChanged: {
            if (pressed)
                capture.region = Qt.rect(Math.min(from.x, mouse.x), Math.min(from.y, mouse.y),
                                         Math.abs(mouse.x - from.x), Math.abs(mouse.y - from.y))
            else
                capture.windowRegion(mouse.x, mouse.y)
        }
        onReleased: capture.selected(capture.region)
    }
}
