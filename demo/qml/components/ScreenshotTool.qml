import QtQuick 2.15
import QtQuick.Window 2.15
import com.ostrel.im.component 1.0
import "../theme"

// Cuts a piece out of a picture of the screen: a drag draws it, a click takes the window below the pointer, Return or a
// double click takes it, Escape gives up. It goes away with its window.
ScreenCapture {
    id: tool

    property string picture // path
    readonly property alias surface: surface

    signal taken(string path)

    function take() {
        if (region.width < 2 || region.height < 2)
            return
        const path = picture.replace(/\.png$/, "-" + screenId + ".png")
        const ratio = Screen.devicePixelRatio
        const part = Qt.rect(region.x * ratio, region.y * ratio, region.width * ratio, region.height * ratio)
        if (ImUtil.copyPhoto(picture, path, part, Qt.size(part.width, part.height)))
            tool.taken(path)
        close()
    }

    Image {
        anchors.fill: parent
        source: ImUtil.fromLocalFile(tool.picture)
    }

    // Four shades around what was chosen.
    Repeater {
        model: [[0, 0, surface.width, tool.region.y],
                [0, tool.region.y, tool.region.x, tool.region.height],
                [tool.region.x + tool.region.width, tool.region.y,
                 surface.width - tool.region.x - tool.region.width, tool.region.height],
                [0, tool.region.y + tool.region.height, surface.width,
                 surface.height - tool.region.y - tool.region.height]]

        Rectangle {
            required property var modelData

            x: modelData[0]
            y: modelData[1]
            width: modelData[2]
            height: modelData[3]
            color: "#70000000"
        }
    }

    Rectangle {
        x: tool.region.x
        y: tool.region.y
        width: tool.region.width
        height: tool.region.height
        color: "transparent"
        border { width: 2; color: Theme.accent }
        visible: width > 0
    }

    Rectangle {
        x: tool.region.x
        y: Math.max(4, tool.region.y - height - 6)
        width: label.implicitWidth + 20
        height: 26
        radius: 6
        color: "#26304a"
        visible: tool.region.width > 0

        Text {
            id: label

            anchors.centerIn: parent
            text: qsTr("%1 × %2 — Return takes it").arg(tool.region.width).arg(tool.region.height)
            color: "white"
            font.pixelSize: 12
        }
    }

    MouseArea {
        id: surface

        property point start

        anchors.fill: parent
        focus: true
        cursorShape: Qt.CrossCursor
        onPressed: start = Qt.point(mouse.x, mouse.y)
        onPositionChanged: {
            tool.region = Qt.rect(Math.min(start.x, mouse.x), Math.min(start.y, mouse.y), Math.abs(mouse.x - start.x),
                                  Math.abs(mouse.y - start.y))
        }
        onClicked: {
            if (mouse.x === start.x && mouse.y === start.y)
                tool.windowRegion(mouse.x, mouse.y)
        }
        onDoubleClicked: tool.take()
        Keys.onReturnPressed: tool.take()
        Keys.onEnterPressed: tool.take()
    }
}
