import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

Popup {
    id: picker

    property var recent: []
    readonly property Item grid: contentItem.item

    signal picked(string emoji)

    width: 400
    height: 340
    padding: 8
    focus: true
    background: Card {}
    contentItem: Loader {
        // Two hundred items: made when they are first wanted.
        active: picker.visible || item !== null
        focus: true
        sourceComponent: EmojiGrid {
            cell: 42
            focus: true
            recent: picker.recent
            onPicked: picker.picked(emoji)
        }
    }
    onOpened: grid.takeFocus()
    enter: Transition { NumberAnimation { property: "opacity"; from: 0; to: 1; duration: Theme.quick } }
    exit: Transition { NumberAnimation { property: "opacity"; from: 1; to: 0; duration: Theme.quick } }
}
