import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

TextField {
    id: field

    implicitHeight: 36
    leftPadding: 36
    rightPadding: 12
    color: Theme.ink
    placeholderTextColor: Theme.inkFaint
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    selectByMouse: true
    font.pixelSize: Theme.bodyText
    background: Rectangle {
        radius: Theme.radius
        color: field.activeFocus ? Theme.panel : Theme.field
        border { width: field.activeFocus ? 1 : 0; color: Theme.accent }

        Icon {
            x: 10
            anchors.verticalCenter: parent.verticalCenter
            name: "search"
            size: 18
            color: Theme.inkFaint
        }
    }
}
