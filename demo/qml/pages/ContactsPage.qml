import QtQuick 2.15
import com.ostrel.im.component 1.0
import "qrc:/qml" as Documents
import "../components"
import "../model"
import "../theme"
import "../model/people.js" as People

// Everybody by team, and what is known about the one who is chosen.
Item {
    id: page

    property ChatClient client
    readonly property alias tree: tree
    readonly property var chosen: tree.currentNode && tree.currentNode.person ? People.byId(tree.currentNode.person) : null
    readonly property var shared: !chosen ? [] : client.sharedWith(chosen.id)

    signal conversationChosen(string id)

    Rectangle {
        width: 300
        height: parent.height
        color: Theme.panel
    }

    Text {
        x: 24
        y: 20
        text: qsTr("Contacts")
        color: Theme.ink
        font.pixelSize: 20
        font.weight: Font.DemiBold
    }

    Documents.TreeView {
        id: tree

        anchors { left: parent.left; top: parent.top; bottom: parent.bottom; topMargin: 60; leftMargin: 12; bottomMargin: 12 }
        width: 280
        nodeHeight: 36
        itemHeight: 40
        columnIndent: 14
        background: null
        model: People.teams()
        delegateNode: Text {
            // `model` is the row's object, from the loader around.
            verticalAlignment: Text.AlignVCenter
            color: tree.currentNode === model ? "white" : Theme.inkSoft
            font.pixelSize: 13
            font.weight: Font.DemiBold
            text: model ? model.text : ""
        }
        delegateItem: Item {
            width: 200

            Avatar {
                anchors.verticalCenter: parent.verticalCenter
                size: 28
                name: model ? model.text : ""
                person: model ? model.person : 0
                online: model ? page.client.isOnline(model.person) : false
            }

            Text {
                x: 38
                anchors.verticalCenter: parent.verticalCenter
                text: model ? model.text : ""
                color: tree.currentNode === model ? "white" : Theme.ink
                font.pixelSize: Theme.bodyText
            }
        }
        Component.onCompleted: expanded = true
    }

    Rectangle {
        x: 300
        width: 1
        height: parent.height
        color: Theme.line
    }

    Documents.ScrollArea {
        id: details

        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: parent.bottom; leftMargin: 301 }
        visible: page.chosen !== null
        background: null

        Column {
            width: Math.max(420, details.width - 20)
            padding: 40
            spacing: 18

            Row {
                spacing: 24

                Avatar {
                    size: 110
                    name: page.chosen ? page.chosen.name : ""
                    person: page.chosen ? page.chosen.id : 0
                    online: page.chosen ? page.client.isOnline(page.chosen.id) : false
                }

                Column {
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 4

                    Text {
                        text: page.chosen ? page.chosen.name : ""
                        color: Theme.ink
                        font.pixelSize: 26
                        font.weight: Font.DemiBold
                    }

                    Text {
                        text: page.chosen ? page.chosen.role : ""
                        color: Theme.inkSoft
                        font.pixelSize: Theme.bodyText
                    }
                }
            }

            Text {
                text: qsTr("In common")
                color: Theme.inkSoft
                font.pixelSize: 12
                font.weight: Font.DemiBold
                topPadding: 14
            }

            Repeater {
                model: page.shared

                ConversationRow {
                    required property var modelData

                    width: 420
                    title: modelData.title
                    preview: modelData.preview
                    time: modelData.time
                    peer: modelData.peer
                    onClicked: page.conversationChosen(modelData.conversationId)
                }
            }
        }
    }
}
