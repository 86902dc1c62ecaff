// A card below an avatar: it opens after a moment of hovering and goes when the pointer has left both.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Rectangle {
    id: avatar
    width: 48
    height: 48
    radius: 24
    color: "#8ab4f8"

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onEntered: card.open()
        onExited: card.fade()
    }

    PopupWindow {
        id: card
        width: 200
        height: 100
        attachItem: avatar
        edge: "bottom"
        delay: 300
        timeout: 200

        Rectangle {
            anchors.fill: parent
            color: "white"
            border.color: "#d0d7de"

            Text {
                anchors.centerIn: parent
                text: "Bob, online"
            }
        }
    }
}
