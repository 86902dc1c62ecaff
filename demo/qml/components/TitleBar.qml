import QtQuick 2.15
import "qrc:/qml" as Documents
import "../theme"

// The top of the window: it moves the window, and its buttons are its own.
Rectangle {
    id: bar

    property var window: null
    property bool macButtons: false
    property string title
    readonly property Item buttons: macButtons ? macRow : row

    height: 34
    color: Theme.rail

    Text {
        anchors.centerIn: parent
        text: bar.title
        color: Theme.inkSoft
        font.pixelSize: 12
        font.weight: Font.DemiBold
    }

    Documents.MacWindowButtons {
        id: macRow

        visible: bar.macButtons
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        window: bar.window
    }

    Documents.WindowButtons {
        id: row

        visible: !bar.macButtons
        anchors { right: parent.right; rightMargin: 2; verticalCenter: parent.verticalCenter }
        window: bar.window
        iconColor: Theme.inkSoft
    }
}
