import QtQuick 2.15
import "../components"
import "../theme"

// Every emoji that the picker knows, large.
Item {
    id: page

    signal picked(string emoji)

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }

    Text {
        x: 28
        y: 20
        text: qsTr("Emoji")
        color: Theme.ink
        font.pixelSize: 20
        font.weight: Font.DemiBold
    }

    EmojiGrid {
        anchors { fill: parent; topMargin: 64; leftMargin: 18; rightMargin: 6; bottomMargin: 6 }
        cell: 54
        onPicked: page.picked(emoji)
    }
}
