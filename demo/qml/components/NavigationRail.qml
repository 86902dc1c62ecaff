import QtQuick 2.15
import "../theme"

// The narrow column at the left edge: one button for each page.
Rectangle {
    id: rail

    property var pages: [] // of { key, icon, title }
    property string current
    property string userName
    property int user: 0
    property bool online: false

    signal chosen(string key)

    width: 60
    color: Theme.rail

    Avatar {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 14
        size: 36
        name: rail.userName
        person: rail.user
        online: rail.online
    }

    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: 72
        spacing: 6

        Repeater {
            model: rail.pages

            IconButton {
                required property var modelData

                implicitWidth: 42
                implicitHeight: 42
                iconName: modelData.icon
                iconSize: 22
                hint: modelData.title
                checked: rail.current === modelData.key
                onClicked: rail.chosen(modelData.key)
            }
        }
    }
}
