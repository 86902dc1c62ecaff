import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

TextField {
    id: field

    implicitHeight: 34
    leftPadding: 10
    rightPadding: 10
    color: Theme.ink
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    selectByMouse: true
    font.pixelSize: Theme.bodyText
    opacity: enabled ? 1 : 0.5
    background: Rectangle {
        radius: Theme.radius
        color: field.activeFocus ? Theme.panel : Theme.field
        border { width: field.activeFocus ? 1 : 0; color: Theme.accent }
    }
}
