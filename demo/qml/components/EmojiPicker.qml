import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

Popup {
    id: picker

    signal picked(string emoji)

    width: 400
    height: 340
    padding: 8
    background: Card {}
    contentItem: Loader {
        // Two hundred items: made when they are first wanted.
        active: picker.visible || item !== null
        sourceComponent: EmojiGrid {
            cell: 42
            onPicked: picker.picked(emoji)
        }
    }
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick } }
}
