import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"

// What could follow a "@" or "#". It never takes the focus: whoever owns the text hands it the keys.
Item {
    id: completion

    property var entries: [] // of { title, detail, value }
    property bool withAvatars: false
    property int currentIndex: 0
    readonly property bool open: visible && entries.length > 0

    signal chosen(var value)
    signal dismissed()

    width: 270
    height: list.height + 12
    visible: false
    onEntriesChanged: currentIndex = 0

    function itemAt(index) {
        return list.itemAtIndex(index)
    }

    // Whether `key` was for the list.
    function takeKey(key) {
        if (!open)
            return false
        switch (key) {
        case Qt.Key_Up:
        case Qt.Key_Down:
            currentIndex = (currentIndex + (key === Qt.Key_Up ? -1 : 1) + entries.length) % entries.length
            return true
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Tab:
            chosen(entries[currentIndex].value)
            return true
        case Qt.Key_Escape:
            dismissed()
            return true
        }
        return false
    }

    Card {
        anchors.fill: parent
    }

    ListView {
        id: list

        x: 6
        y: 6
        width: parent.width - 12
        height: Math.min(240, contentHeight)
        clip: true
        interactive: false
        model: completion.entries
        currentIndex: completion.currentIndex
        highlightMoveDuration: 0
        delegate: Rectangle {
            id: row

            required property int index
            required property var modelData

            width: list.width
            height: 40
            radius: 8
            color: index === completion.currentIndex ? Theme.accentSoft : "transparent"

            Avatar {
                id: face

                visible: completion.withAvatars
                x: 6
                anchors.verticalCenter: parent.verticalCenter
                size: 28
                name: row.modelData.title
                person: completion.withAvatars ? row.modelData.value : 0
            }

            DrawableText {
                id: title

                x: completion.withAvatars ? 44 : 10
                anchors.verticalCenter: parent.verticalCenter
                font: Qt.font({ family: Theme.family, pixelSize: Theme.bodyText })
                color: Theme.ink
                elide: Qt.ElideRight
                maximumLineCount: 1
                maxWidth: row.width - x - 10
                text: row.modelData.title
            }

            Text {
                anchors { right: parent.right; rightMargin: 10; verticalCenter: parent.verticalCenter }
                text: row.modelData.detail
                color: Theme.inkFaint
                font.pixelSize: 12
            }

            MouseArea {
                anchors.fill: parent
                hoverEnabled: true
                onPositionChanged: completion.currentIndex = row.index
                onClicked: completion.chosen(row.modelData.value)
            }
        }
    }
}
