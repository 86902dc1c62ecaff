import QtQuick 2.15
import "../theme"

// One picture of the gallery with its caption.
Column {
    id: exhibit

    property string caption
    default property alias shown: stage.data

    spacing: 4

    Item {
        id: stage

        width: 132
        height: 92
    }

    Text {
        width: stage.width
        horizontalAlignment: Text.AlignHCenter
        text: exhibit.caption
        elide: Text.ElideRight
        color: Theme.inkSoft
        font.pixelSize: Theme.smallText
    }
}
