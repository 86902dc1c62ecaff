import QtQuick 2.15
import QtQuick.Controls 2.15
import "../components"
import "../model"
import "../theme"

// The conversations. Ctrl+O leads here; letters narrow the list, the arrow keys go through it, Return opens.
Rectangle {
    id: page

    property ChatClient client
    readonly property alias list: list

    // Someone opened a conversation here, to write in it.
    signal chosen()

    function takeFocus() {
        filter.forceActiveFocus(Qt.ShortcutFocusReason)
        filter.selectAll()
    }

    function choose(id) {
        client.open(id)
        filter.clear()
        chosen()
    }

    // Leads from the row `index` to the next one that is shown, or from the first one back to the filter.
    function go(index, step) {
        for (let i = index + step; i < list.count; i += step) {
            if (i < 0) {
                filter.forceActiveFocus(Qt.BacktabFocusReason)
                return
            }
            list.positionViewAtIndex(i, ListView.Contain)
            const row = list.itemAtIndex(i)
            if (row && row.wanted) {
                row.forceActiveFocus(Qt.TabFocusReason)
                return
            }
        }
    }

    function firstWanted() {
        for (let i = 0; i < list.count; ++i) {
            const row = list.itemAtIndex(i)
            if (row && row.wanted)
                return row
        }
        return null
    }

    color: Theme.panel

    SearchField {
        id: filter

        anchors { left: parent.left; right: parent.right; margins: 14 }
        y: 14
        placeholderText: qsTr("Find a conversation")
        onAccepted: {
            const row = page.firstWanted()
            if (row)
                page.choose(row.conversationId)
        }
        Keys.onDownPressed: page.go(-1, 1)
        Keys.onEscapePressed: {
            clear()
            page.chosen()
        }
    }

    ListView {
        id: list

        anchors { left: parent.left; right: parent.right; top: filter.bottom; bottom: parent.bottom; topMargin: 10 }
        leftMargin: 8
        rightMargin: 12
        bottomMargin: 8
        spacing: 2
        clip: true
        interactive: false
        boundsBehavior: Flickable.StopAtBounds
        model: page.client.conversations
        ScrollBar.vertical: ThinScrollBar {}
        moveDisplaced: Transition { NumberAnimation { property: "y"; duration: 180; easing.type: Easing.OutCubic } }
        move: Transition { NumberAnimation { property: "y"; duration: 180; easing.type: Easing.OutCubic } }
        delegate: ConversationRow {
            required property int index
            required property string conversationId
            required peer
            required title
            required preview
            required time
            required unread
            readonly property bool wanted: title.toLowerCase().indexOf(filter.text.trim().toLowerCase()) !== -1

            width: list.width - 20
            height: wanted ? implicitHeight : 0
            visible: wanted
            current: conversationId === page.client.currentId
            online: peer > 0 && page.client.onlineUsers.indexOf(peer) !== -1
            onClicked: page.choose(conversationId)
            Keys.onDownPressed: page.go(index, 1)
            Keys.onUpPressed: page.go(index, -1)
            Keys.onEscapePressed: page.chosen()
        }

        WheelScroller {
            parent: list
            anchors.fill: parent
            z: -1
            view: list
        }
    }

    Rectangle {
        anchors.right: parent.right
        width: 1
        height: parent.height
        color: Theme.line
    }
}
