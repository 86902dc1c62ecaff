import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/people.js" as People

// The card that opens beside an avatar under the pointer. A window of its own, so that it may reach over the edge of
// the client's.
PopupWindow {
    id: card

    property int person: 0
    property bool online: false
    readonly property var details: People.byId(person)

    width: 250
    height: 108
    delay: 250
    timeout: 300
    edge: "right"

    function showFor(person, item) {
        if (visible && attachItem !== item)
            close()
        card.person = person
        attachItem = item
        open()
    }

    Card {
        anchors { fill: parent; margins: 10 }
    }

    Avatar {
        id: face

        x: 24
        anchors.verticalCenter: parent.verticalCenter
        size: 56
        name: card.details.name
        person: card.person
        online: card.online
    }

    Column {
        anchors { left: face.right; leftMargin: 14; verticalCenter: face.verticalCenter }
        spacing: 2

        Text {
            text: card.details.name
            color: Theme.ink
            font.pixelSize: Theme.titleText
            font.weight: Font.DemiBold
        }

        Text {
            text: card.details.role
            color: Theme.inkSoft
            font.pixelSize: 12
        }

        Text {
            text: card.online ? qsTr("Online") : qsTr("Away")
            color: card.online ? Theme.online : Theme.inkFaint
            font.pixelSize: 12
        }
    }
}
