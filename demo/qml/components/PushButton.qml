import QtQuick 2.15
import QtQuick.Controls 2.15
import "qrc:/qml" as Documents
import "../theme"

AbstractButton {
    id: button

    property bool strong: false

    implicitWidth: Math.max(84, label.implicitWidth + 32)
    implicitHeight: 36
    hoverEnabled: true
    opacity: enabled ? 1 : 0.5
    onPressed: ripple.touchStart(pressX, pressY)
    onReleased: ripple.touchEnd()
    onCanceled: ripple.touchEnd()
    contentItem: Text {
        id: label

        text: button.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: button.strong ? "white" : Theme.ink
        font.pixelSize: Theme.bodyText
    }
    background: Rectangle {
        radius: Theme.radius
        color: button.strong ? (button.hovered ? Theme.accentDark : Theme.accent) : button.hovered ? Theme.pressed : Theme.field
        border { width: button.visualFocus ? 2 : 0; color: Theme.accentDark }
    }

    Documents.ButtonClickEffect {
        id: ripple

        anchors.fill: parent
        backgroundColor: "#08000000"
        spreadColor: "#18000000"
    }
}
