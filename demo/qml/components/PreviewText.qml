import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// One line of a message, cut where the space ends. It lets the mouse through.
DrawableText {
    font: Theme.previewFont
    color: Theme.inkSoft
    linkColor: Theme.inkSoft
    elide: Qt.ElideRight
    maximumLineCount: 1
}
