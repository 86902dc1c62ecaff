import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// A short word on what has just happened.
Rectangle {
    id: toast

    readonly property alias text: label.text

    width: label.width + 36
    height: 40
    radius: 20
    color: "#26304a"
    opacity: 0
    visible: opacity > 0

    Behavior on opacity { NumberAnimation { duration: 160 } }

    function show(text) {
        label.text = text
        opacity = 1
        leave.restart()
    }

    DrawableText {
        id: label

        anchors.centerIn: parent
        font: Theme.previewFont
        color: "white"
        elide: Qt.ElideMiddle
        maximumLineCount: 1
        maxWidth: 520
    }

    Timer {
        id: leave

        interval: 2600
        onTriggered: toast.opacity = 0
    }
}
