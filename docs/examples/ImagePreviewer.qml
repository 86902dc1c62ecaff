// A viewer: drag to move, turn the wheel to zoom.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Item {
    id: viewer

    property string file: ":/qml/image/transparent.png"
    property size pictureSize: Qt.size(640, 640)
    property real zoom: 0.5
    property point offset: Qt.point(0, 0)

    width: 320
    height: 240
    clip: true

    ImagePreviewer {
        source: viewer.file
        boundaryItem: viewer
        viewGeometry: Qt.rect(viewer.offset.x, viewer.offset.y,
                              viewer.pictureSize.width * viewer.zoom, viewer.pictureSize.height * viewer.zoom)
    }

    MouseArea {
        property point pressedAt

        anchors.fill: parent
        onPressed: pressedAt = Qt.point(mouse.x - viewer.offset.x, mouse.y - viewer.offset.y)
        onPositionChanged: viewer.offset = Qt.point(mouse.x - pressedAt.x, mouse.y - pressedAt.y)
        onWheel: viewer.zoom = Math.max(0.1, Math.min(4, viewer.zoom * (wheel.angleDelta.y > 0 ? 1.1 : 0.9)))
    }
}
