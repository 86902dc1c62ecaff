import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"
import "../model/people.js" as People

// Who is behind a mention or an avatar.
Popup {
    id: card

    property int person: 0
    property bool online: false
    readonly property var details: People.byId(person)

    width: 250
    height: 88
    padding: 16
    background: Card {}
    contentItem: Item {
        Avatar {
            id: picture

            size: 56
            name: card.details.name
            person: card.person
            online: card.online
        }

        Column {
            anchors { left: picture.right; leftMargin: 14; verticalCenter: picture.verticalCenter }
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
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick } }

    function showNear(item) {
        const point = parent.mapFromItem(item, 0, 0)
        x = Math.max(8, Math.min(parent.width - width - 8, point.x))
        y = point.y > height + 16 ? point.y - height - 8 : point.y + item.height + 8
        open()
    }
}
