// A window that draws its own frame: a margin for the shadow, a title bar that moves it, and the carried buttons.
import QtQuick 2.15
import com.ostrel.im.component 1.0

FramelessWindow {
    id: window

    width: 640 + 2 * shadowWidth
    height: 480 + 2 * shadowWidth
    visible: true
    title: "Chat"
    titleArea: titleBar
    excludeTitleArea: [buttons]
    shadowWidth: 20

    Rectangle {
        anchors { fill: parent; margins: window.windowState === Qt.WindowMaximized ? 0 : window.shadowWidth }
        color: "white"
        border.color: "#d0d7de"

        Rectangle {
            id: titleBar
            width: parent.width
            height: 40
            color: "#f6f8fa"

            Text {
                anchors.centerIn: parent
                text: window.title
            }

            Loader {
                id: buttons
                anchors { right: parent.right; top: parent.top }
                source: "qrc:/qml/WindowButtons.qml"
                onLoaded: item.window = window
            }
        }
    }
}
