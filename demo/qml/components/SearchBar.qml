import QtQuick 2.15
import "../theme"

// The search in the open conversation: words, how many messages hold them, and the way from one to the next.
Item {
    id: bar

    readonly property alias words: field.text
    readonly property alias field: field
    property int count: 0
    property int position: 0

    signal stepped(int direction)
    signal closed()

    height: 52

    function ask(words) {
        field.text = words
        field.forceActiveFocus()
        field.selectAll()
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.panel
    }

    SearchField {
        id: field

        anchors { left: parent.left; right: counter.left; leftMargin: 20; rightMargin: 12 }
        anchors.verticalCenter: parent.verticalCenter
        placeholderText: qsTr("Search in this conversation")
        Keys.onReturnPressed: bar.stepped(event.modifiers & Qt.ShiftModifier ? -1 : 1)
        Keys.onUpPressed: bar.stepped(1)
        Keys.onDownPressed: bar.stepped(-1)
        Keys.onEscapePressed: bar.closed()
    }

    Text {
        id: counter

        anchors { right: buttons.left; rightMargin: 8; verticalCenter: parent.verticalCenter }
        width: 74
        horizontalAlignment: Text.AlignRight
        text: field.text.trim() === "" ? "" : bar.count === 0 ? qsTr("No match") : qsTr("%1 of %2").arg(bar.position + 1).arg(bar.count)
        color: Theme.inkSoft
        font.pixelSize: 12
    }

    Row {
        id: buttons

        anchors { right: parent.right; rightMargin: 14; verticalCenter: parent.verticalCenter }

        IconButton {
            iconName: "up"
            hint: qsTr("Older match")
            enabled: bar.count > 1
            onClicked: bar.stepped(1)
        }

        IconButton {
            iconName: "down"
            hint: qsTr("Newer match")
            enabled: bar.count > 1
            onClicked: bar.stepped(-1)
        }

        IconButton {
            iconName: "close"
            hint: qsTr("Close the search")
            onClicked: bar.closed()
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
}
