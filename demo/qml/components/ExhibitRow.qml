import QtQuick 2.15
import "../theme"

Column {
    id: row

    property string title
    default property alias exhibits: line.data

    width: parent ? parent.width : 0
    spacing: 8

    Text {
        text: row.title
        color: Theme.ink
        font.pixelSize: Theme.bodyText
        font.weight: Font.DemiBold
    }

    Flow {
        id: line

        width: parent.width
        spacing: 12
    }
}
