import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

AbstractButton {
    id: button

    implicitWidth: 42
    implicitHeight: 24
    checkable: true
    hoverEnabled: true
    background: Rectangle {
        radius: 12
        color: button.checked ? Theme.accent : Theme.inkFaint
        border { width: button.visualFocus ? 2 : 0; color: Theme.accentDark }

        Behavior on color { ColorAnimation { duration: Theme.quick } }

        Rectangle {
            x: button.checked ? parent.width - width - 3 : 3
            anchors.verticalCenter: parent.verticalCenter
            width: 18
            height: 18
            radius: 9
            color: "white"

            Behavior on x { NumberAnimation { duration: Theme.quick } }
        }
    }
}
