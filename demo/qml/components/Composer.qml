import QtQuick 2.15
import QtQuick.Controls 2.15
import "../theme"

// Where messages are written. Return sends, Shift+Return breaks the line. A richer box can take the place of
// the text area, as long as it offers `text`, `insert()` and `sent`.
Item {
    id: composer

    property alias text: input.text
    property string placeholder
    readonly property alias input: input
    readonly property alias picker: picker

    signal sent(string text)

    implicitHeight: frame.height + 28

    function insert(text) {
        input.insert(input.cursorPosition, text)
    }

    function takeFocus() {
        input.forceActiveFocus()
    }

    function send() {
        if (input.text.trim() === "")
            return
        const text = input.text
        input.clear()
        composer.sent(text)
    }

    Rectangle {
        id: frame

        anchors { left: parent.left; right: parent.right; leftMargin: 20; rightMargin: 20 }
        y: 8
        height: Math.max(48, Math.min(150, input.implicitHeight + 8))
        radius: Theme.bubbleRadius
        color: Theme.panel
        border { width: 1; color: input.activeFocus ? Theme.accent : Theme.line }

        Behavior on border.color { ColorAnimation { duration: Theme.quick } }

        IconButton {
            id: emojiButton

            anchors { left: parent.left; bottom: parent.bottom; margins: 6 }
            iconName: "smile"
            hint: qsTr("Emoji")
            onClicked: picker.open()
        }

        Flickable {
            id: flick

            anchors { left: emojiButton.right; right: sendButton.left; top: parent.top; bottom: parent.bottom }
            anchors { leftMargin: 2; rightMargin: 6; topMargin: 4; bottomMargin: 4 }
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ThinScrollBar {}

            TextArea.flickable: TextArea {
                id: input

                leftPadding: 4
                topPadding: 9
                bottomPadding: 9
                wrapMode: TextEdit.Wrap
                color: Theme.ink
                placeholderText: composer.placeholder
                placeholderTextColor: Theme.inkFaint
                selectionColor: Theme.selection
                selectedTextColor: Theme.ink
                selectByMouse: true
                font: Theme.messageFont
                background: null
                Keys.onPressed: {
                    const isReturn = event.key === Qt.Key_Return || event.key === Qt.Key_Enter
                    if (isReturn && !(event.modifiers & Qt.ShiftModifier)) {
                        event.accepted = true
                        composer.send()
                    }
                }
            }
        }

        IconButton {
            id: sendButton

            anchors { right: parent.right; bottom: parent.bottom; margins: 6 }
            enabled: input.text.trim() !== ""
            iconName: "send"
            iconColor: "white"
            fill: enabled ? Theme.accent : Theme.field
            hint: qsTr("Send")
            onClicked: composer.send()
        }
    }

    EmojiPicker {
        id: picker

        x: 20
        y: -height
        onPicked: {
            composer.insert(emoji)
            composer.takeFocus()
        }
    }
}
