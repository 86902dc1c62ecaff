import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// The text of a message, in the client's colours. The colours stand here and never change afterwards, because a
// change of one of them takes the marks of a running search away.
DrawableText {
    font: Theme.messageFont
    color: Theme.ink
    linkColor: Theme.link
    aiteColor: Theme.mention
    emailColor: Theme.email
    sharpColor: Theme.tag
    textBlockColor: Theme.accentDark
    highlightBgColor: Theme.match
    selectionColor: Theme.selection
    selectedTextColor: Theme.ink
    leading: 2
    textCursorShape: Qt.IBeamCursor
    mouseEnabled: true
    selectByMouse: true
}
