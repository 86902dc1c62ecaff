import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/linkify.js" as Linkify

// Says where a link leads before it is pressed.
Item {
    id: card

    property string link
    readonly property bool isTag: link.startsWith("#")
    readonly property bool isMail: !isTag && link.indexOf("@") > 0 && link.indexOf("/") === -1
    readonly property string title: isTag ? qsTr("Tag") : isMail ? qsTr("E-mail") : hostOf(link)

    width: Math.max(headline.implicitWidth, detail.width) + 66
    height: 58
    visible: opacity > 0
    opacity: 0

    Behavior on opacity { NumberAnimation { duration: Theme.quick } }

    function hostOf(address) {
        return address.replace(/^[a-z]+:\/\//i, "").replace(/[\/?#].*$/, "")
    }

    // Above the point, and inside the parent.
    function show(text, near, atX, atY) {
        const point = card.parent.mapFromItem(near, atX, atY)
        if (card.link !== text || card.opacity === 0) {
            card.link = text
            card.x = Math.max(8, Math.min(card.parent.width - card.width - 8, point.x - 40))
            card.y = point.y > card.height + 30 ? point.y - card.height - 16 : point.y + 24
        }
        card.opacity = 1
    }

    function hide() {
        card.opacity = 0
    }

    Card {
        anchors.fill: parent
    }

    Rectangle {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 36
        height: 36
        radius: Theme.radius
        color: Theme.accentSoft

        Icon {
            anchors.centerIn: parent
            name: card.isTag ? "tag" : card.isMail ? "mail" : "link"
            color: Theme.accent
        }
    }

    Text {
        id: headline

        x: 56
        y: 10
        text: card.title
        color: Theme.ink
        font.pixelSize: 13
        font.weight: Font.DemiBold
    }

    DrawableText {
        id: detail

        x: 56
        y: 30
        font: Theme.noticeFont
        color: Theme.inkSoft
        elide: Qt.ElideMiddle
        maximumLineCount: 1
        maxWidth: 340
        text: card.link
    }
}
