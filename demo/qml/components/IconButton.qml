import QtQuick 2.15
import QtQuick.Controls 2.15
import "qrc:/qml" as Documents
import "../theme"

AbstractButton {
    id: button

    property string iconName
    property string hint
    property color iconColor: checked ? Theme.accent : Theme.inkSoft
    property color fill: "transparent"
    property real iconSize: 20
    property real radius: Theme.radius

    implicitWidth: 36
    implicitHeight: 36
    hoverEnabled: true
    onPressed: {
        ripple.active = true
        ripple.item.touchStart(pressX, pressY)
    }
    onReleased: ripple.item.touchEnd()
    onCanceled: ripple.item.touchEnd()
    Accessible.name: hint
    contentItem: Item {
        Icon {
            anchors.centerIn: parent
            name: button.iconName
            size: button.iconSize
            color: button.enabled ? button.iconColor : Theme.inkFaint
        }
    }
    background: Rectangle {
        radius: button.radius
        color: button.fill
        border { width: button.visualFocus ? 2 : 0; color: Theme.accent }

        Rectangle {
            anchors.fill: parent
            radius: parent.radius
            color: button.down ? Theme.pressed : Theme.hover
            opacity: button.checked || button.down || button.hovered ? (button.fill.a > 0 ? 0.2 : 1) : 0

            Behavior on opacity { NumberAnimation { duration: Theme.quick } }
        }
    }

    // Most buttons are never pressed.
    Loader {
        id: ripple

        active: false
        anchors.fill: parent
        sourceComponent: Documents.ButtonClickEffect {
            backgroundColor: "#08000000"
            spreadColor: "#18000000"
        }
    }
}
