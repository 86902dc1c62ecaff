import QtQml 2.15 as Qml
import QtQuick 2.15
import QtQuick.Controls 2.15

// A flickable with thin scroll bars over its edges. While the view moves it sets the bars; otherwise the bars set the
// view.
Frame {
    // What is declared in a ScrollArea scrolls.
    default property alias _content: content.data
    property alias container: scrollarea
    property alias verticalScrollBar: vbar
    property alias horizontalScrollBar: hbar

    padding: 0
    width: 500
    height: 100

    Flickable {
        id: scrollarea
        contentWidth: content.width
        contentHeight: content.height
        clip: true
        // Only while the view rests: setting a position ends a flick.
        Qml.Binding on contentX {
            when: !scrollarea.moving
            value: hbar.position * scrollarea.contentWidth
            restoreMode: Binding.RestoreNone
        }
        Qml.Binding on contentY {
            when: !scrollarea.moving
            value: vbar.position * scrollarea.contentHeight
            restoreMode: Binding.RestoreNone
        }
        width: parent.width - (vbar.visible ? vbar.width : 0)
        height: parent.height - (hbar.visible ? hbar.height : 0)

        Item {
            id: content
            width: childrenRect.width
            height: childrenRect.height
        }
    }

    ScrollBar {
        id: vbar
        visible: content.height > parent.height
        width: 6
        height: scrollarea.height
        anchors.right: parent.right
        hoverEnabled: true
        size: scrollarea.visibleArea.heightRatio
        padding: 1
        states: State {
            when: scrollarea.moving
            PropertyChanges {
                target: vbar
                restoreEntryValues: false // the view stays where the flick took it
                position: scrollarea.visibleArea.yPosition
            }
        }
        background: Rectangle {
            color: "#44000000"
        }
        contentItem: Rectangle {
            y: scrollarea.visibleArea.yPosition * scrollarea.height
            color: vbar.pressed ? "#bbffffff" : vbar.hovered ? "#99ffffff" : "#66ffffff"
        }
    }

    ScrollBar {
        id: hbar
        visible: content.width > parent.width
        width: scrollarea.width
        height: 6
        anchors.bottom: parent.bottom
        orientation: Qt.Horizontal
        hoverEnabled: true
        size: scrollarea.visibleArea.widthRatio
        padding: 1
        states: State {
            when: scrollarea.moving
            PropertyChanges {
                target: hbar
                restoreEntryValues: false
                position: scrollarea.visibleArea.xPosition
            }
        }
        background: Rectangle {
            color: "#44000000"
        }
        contentItem: Rectangle {
            x: scrollarea.visibleArea.xPosition * scrollarea.width
            color: hbar.pressed ? "#bbffffff" : hbar.hovered ? "#99ffffff" : "#66ffffff"
        }
    }
}
