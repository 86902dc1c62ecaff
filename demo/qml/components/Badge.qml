import QtQuick 2.15
import "../theme"

// How many messages wait to be read.
Rectangle {
    id: badge

    property int count: 0

    visible: count > 0
    width: Math.max(height, label.implicitWidth + 10)
    height: 18
    radius: height / 2
    color: Theme.accent

    Text {
        id: label

        anchors.centerIn: parent
        text: badge.count > 99 ? "99+" : badge.count
        color: "white"
        font.pixelSize: Theme.smallText
        font.weight: Font.DemiBold
    }
}
