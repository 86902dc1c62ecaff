import QtQuick 2.15

// The caption buttons of a frameless window: menu, minimise, maximise or restore, close.
Row {
    id: buttons

    // The window to act on; without one only the menu button does something.
    property var window: null
    property bool enableMenu: false
    property bool enableMinimize: true
    property bool enableMaximize: true
    property bool enableClose: true
    property color iconColor: "#333"
    property real iconSize: 16
    property color menuColor: "#20000000"
    property color minimizeColor: "#20000000"
    property color maximizeColor: "#20000000"
    property color closeColor: "#FF5454"

    // Comes before the window changes, so that a receiver can prepare. The menu button hands out its mouse area, for a
    // menu to stand beside.
    signal action(var cmd, var data)

    z: 1

    FontLoader {
        id: iconfont
        source: "./image/iconfont.ttf"
    }

    Rectangle {
        width: 30
        height: 30
        visible: buttons.enableMenu
        color: mouse_menu.containsMouse ? buttons.menuColor : "transparent"

        Text {
            anchors.centerIn: parent
            anchors.horizontalCenterOffset: 1
            font.family: iconfont.name
            font.pixelSize: buttons.iconSize
            color: buttons.iconColor
            text: "\ue61a"
        }

        MouseArea {
            id: mouse_menu
            anchors.fill: parent
            hoverEnabled: true
            onClicked: buttons.action("menu", mouse_menu)
        }
    }

    Rectangle {
        width: 30
        height: 30
        visible: buttons.enableMinimize
        color: mouse_min.containsMouse ? buttons.minimizeColor : "transparent"

        Text {
            anchors.centerIn: parent
            font.family: iconfont.name
            font.pixelSize: buttons.iconSize
            color: buttons.iconColor
            text: "\ue8a7"
        }

        MouseArea {
            id: mouse_min
            anchors.fill: parent
            hoverEnabled: true
            onClicked: {
                if (buttons.window) {
                    buttons.action("showMinimized", {});
                    buttons.window.showMinimized();
                }
            }
        }
    }

    Rectangle {
        width: 30
        height: 30
        visible: buttons.enableMaximize
        color: mouse_max.containsMouse ? buttons.maximizeColor : "transparent"

        Text {
            anchors.centerIn: parent
            visible: !(buttons.window && buttons.window.windowState === Qt.WindowMaximized)
            font.family: iconfont.name
            font.pixelSize: buttons.iconSize
            color: buttons.iconColor
            text: "\uebc1"
        }

        Text {
            anchors.centerIn: parent
            visible: !!buttons.window && buttons.window.windowState === Qt.WindowMaximized
            font.family: iconfont.name
            font.pixelSize: buttons.iconSize
            color: buttons.iconColor
            text: "\uebb0"
        }

        MouseArea {
            id: mouse_max
            anchors.fill: parent
            hoverEnabled: true
            onClicked: {
                if (buttons.window) {
                    const max = buttons.window.windowState === Qt.WindowMaximized;
                    buttons.action(max ? "showNormal" : "showMaximized", {});
                    if (max)
                        buttons.window.showNormal();
                    else
                        buttons.window.showMaximized();
                }
            }
        }
    }

    Rectangle {
        width: 30
        height: 30
        visible: buttons.enableClose
        color: mouse_close.containsMouse ? buttons.closeColor : "transparent"

        Text {
            anchors.centerIn: parent
            font.family: iconfont.name
            font.pixelSize: buttons.iconSize
            color: mouse_close.containsMouse ? "white" : buttons.iconColor
            text: "\ue93c"
        }

        MouseArea {
            id: mouse_close
            anchors.fill: parent
            hoverEnabled: true
            onClicked: {
                if (buttons.window) {
                    buttons.action("close", {});
                    buttons.window.close();
                }
            }
        }
    }
}
