import QtQuick 2.15
import "../theme"

// The time of a message and, for one's own, how far it has come.
Row {
    id: footer

    property BubbleFrame bubble

    spacing: 3

    Text {
        text: footer.bubble.clock
        color: footer.bubble.own ? Qt.darker(Theme.inkFaint, 1.15) : Theme.inkFaint
        font.pixelSize: Theme.smallText
    }

    Icon {
        visible: footer.bubble.delivery !== ""
        anchors.verticalCenter: parent.verticalCenter
        name: footer.bubble.delivery
        size: 13
        color: footer.bubble.delivery === "failed" ? Theme.warning : Theme.accent
    }
}
