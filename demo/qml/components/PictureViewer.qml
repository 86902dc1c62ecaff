import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// One picture over the whole window: the wheel zooms at the pointer, a drag moves, a double click shows all of it.
Rectangle {
    id: viewer

    property string path
    property size pictureSize: Qt.size(1, 1)
    property real zoom: 1
    property point offset
    readonly property real fitting: Math.min(1, (width - 80) / pictureSize.width, (height - 120) / pictureSize.height)
    readonly property bool loaded: preview.statusSource === ImagePreviewer.Ready
    readonly property alias preview: preview
    readonly property alias surface: surface

    visible: false
    color: "#e6131a2b"
    onWidthChanged: showAll()
    onHeightChanged: showAll()

    function show(path) {
        const size = ImUtil.imageSize(path)
        if (size.width <= 0)
            return
        pictureSize = size
        viewer.path = path
        visible = true
        showAll()
        forceActiveFocus()
    }

    function close() {
        visible = false
        path = ""
    }

    function showAll() {
        zoom = fitting
        offset = Qt.point((width - pictureSize.width * zoom) / 2, (height - pictureSize.height * zoom) / 2)
    }

    // The point under the pointer stays where it is.
    function zoomAt(x, y, factor) {
        const wanted = Math.max(fitting, Math.min(4, zoom * factor))
        offset = Qt.point(x - (x - offset.x) * wanted / zoom, y - (y - offset.y) * wanted / zoom)
        zoom = wanted
    }

    Keys.onEscapePressed: close()
    Keys.onPressed: {
        if (event.key === Qt.Key_Plus)
            zoomAt(width / 2, height / 2, 1.25)
        else if (event.key === Qt.Key_Minus)
            zoomAt(width / 2, height / 2, 0.8)
    }

    MouseArea {
        id: surface

        property point last

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: pressed ? Qt.ClosedHandCursor : Qt.OpenHandCursor
        onPressed: last = Qt.point(mouse.x, mouse.y)
        onPositionChanged: {
            if (pressed) {
                viewer.offset = Qt.point(viewer.offset.x + mouse.x - last.x, viewer.offset.y + mouse.y - last.y)
                last = Qt.point(mouse.x, mouse.y)
            }
        }
        onDoubleClicked: viewer.showAll()
        onWheel: viewer.zoomAt(wheel.x, wheel.y, Math.pow(1.25, wheel.angleDelta.y / 120))
    }

    Item {
        id: viewport

        anchors.fill: parent
        clip: true

        // The whole picture; the previewer keeps itself to the part of it that is seen.
        Item {
            id: whole

            x: viewer.offset.x
            y: viewer.offset.y
            width: viewer.pictureSize.width * viewer.zoom
            height: viewer.pictureSize.height * viewer.zoom

            ImagePreviewer {
                id: preview

                boundaryItem: viewport
                source: viewer.path
                viewGeometry: Qt.rect(whole.x, whole.y, whole.width, whole.height)
            }
        }
    }

    CircleProgress {
        id: waiting

        anchors.centerIn: parent
        visible: preview.statusSource === ImagePreviewer.Loading
        radius: 26
        color: "white"
        progress: 0.5
    }

    Rectangle {
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 20 }
        width: label.implicitWidth + 32
        height: 34
        radius: 17
        color: "#b0000000"

        Text {
            id: label

            anchors.centerIn: parent
            text: qsTr("%1 × %2 · %3 %").arg(viewer.pictureSize.width).arg(viewer.pictureSize.height)
                  .arg(Math.round(viewer.zoom * 100))
            color: "white"
            font.pixelSize: 13
        }
    }

    IconButton {
        anchors { right: parent.right; top: parent.top; margins: 14 }
        iconName: "close"
        iconColor: "white"
        hint: qsTr("Close")
        onClicked: viewer.close()
    }
}
