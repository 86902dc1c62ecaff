import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

ScrollBar {
    id: bar

    padding: 3
    minimumSize: 0.06
    contentItem: Rectangle {
        implicitWidth: 6
        implicitHeight: 6
        radius: 3
        color: bar.pressed ? Theme.inkSoft : Theme.inkFaint
        opacity: bar.size < 1 && (bar.active || bar.hovered) ? 0.8 : 0

        Behavior on opacity { NumberAnimation { duration: 200 } }
    }
}
