import QtQuick 2.15
import "../theme"

// A raised sheet: what pops up lies on one.
Item {
    Repeater {
        model: 4

        Rectangle {
            required property int index

            anchors { fill: parent; margins: -index * 2; topMargin: 1 - index; bottomMargin: -1 - index * 3 }
            radius: 12 + index * 2
            color: "#0b1a3a"
            opacity: 0.035
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 12
        color: Theme.panel
        border { width: 1; color: Theme.line }
    }
}
