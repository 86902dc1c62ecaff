import QtQuick 2.15
import QtQuick.Controls 2.15

// The caption buttons of a frameless window as three round ones at its left. Their glyphs show while the pointer is
// over any of them.
Button {
    id: windowbuttons

    // The window to act on; without one nothing happens.
    property var window: null
    property bool enableMenu: false
    property bool enableMinimize: true
    property bool enableMaximize: true
    property bool enableClose: true
    property color iconColor: "#333"
    property real iconSize: 10
    // These, and the menu, are here so that either kind of buttons can stand in for the other.
    property color menuColor: "#22000000"
    property color minimizeColor: "#22000000"
    property color maximizeColor: "#22000000"
    property color closeColor: "red"

    // Comes before the window changes, so that a receiver can prepare.
    signal action(var cmd, var data)

    width: row_buttons.width
    height: row_buttons.height
    hoverEnabled: true
    contentItem: Item {}
    background: Item {}

    Row {
        id: row_buttons
        z: 1
        spacing: 4

        FontLoader {
            id: iconfont
            source: "./image/iconfont.ttf"
        }

        Rectangle {
            width: 14
            height: 14
            radius: width
            border.width: 1
            border.color: "#20000000"
            visible: windowbuttons.enableClose
            color: (windowbuttons.hovered || Qt.application.active) ? "#f36058" : "#ddd"

            Text {
                anchors.centerIn: parent
                visible: windowbuttons.hovered
                font.family: iconfont.name
                font.pixelSize: windowbuttons.iconSize
                color: "#88000000"
                text: "\ue93c"
            }

            MouseArea {
                id: mouse_close
                anchors.fill: parent
                hoverEnabled: true
                onClicked: {
                    if (windowbuttons.window) {
                        windowbuttons.action("close", {});
                        windowbuttons.window.close();
                    }
                }
            }
        }

        Rectangle {
            width: 14
            height: 14
            radius: width
            border.width: 1
            border.color: "#20000000"
            visible: windowbuttons.enableMinimize
            color: (windowbuttons.hovered || Qt.application.active) ? "#ffcc33" : "#ddd"

            Text {
                anchors.centerIn: parent
                visible: windowbuttons.hovered
                font.family: iconfont.name
                font.pixelSize: windowbuttons.iconSize
                color: "#88000000"
                text: "\ue8a7"
            }

            MouseArea {
                id: mouse_min
                anchors.fill: parent
                hoverEnabled: true
                onClicked: {
                    if (windowbuttons.window) {
                        windowbuttons.action("showMinimized", {});
                        windowbuttons.window.showMinimized();
                    }
                }
            }
        }

        Rectangle {
            width: 14
            height: 14
            radius: width
            border.width: 1
            border.color: "#20000000"
            visible: windowbuttons.enableMaximize
            color: (windowbuttons.hovered || Qt.application.active) ? "#30cc40" : "#ddd"

            Text {
                anchors.centerIn: parent
                visible: windowbuttons.hovered
                font.family: iconfont.name
                font.pixelSize: windowbuttons.iconSize
                color: "#88000000"
                text: "\ue628"
            }

            MouseArea {
                id: mouse_max
                anchors.fill: parent
                hoverEnabled: true
                onClicked: {
                    if (windowbuttons.window) {
                        const max = windowbuttons.window.windowState === Qt.WindowMaximized;
                        windowbuttons.action(max ? "showNormal" : "showMaximized", {});
                        if (max)
                            windowbuttons.window.showNormal();
                        else
                            windowbuttons.window.showMaximized();
                    }
                }
            }
        }
    }
}
