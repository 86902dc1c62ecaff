import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0
import "../theme"

// A question that the asking function waits for.
Popup {
    id: question

    property EventLoop loop: null
    property bool answer: false
    readonly property alias yesButton: yesButton

    // True for yes. Everything else goes on meanwhile; a second question counts as answered with no.
    function ask(text) {
        if (loop)
            return false
        label.text = text
        answer = false
        loop = EventLoopCreator.create()
        open()
        loop.start()
        return answer
    }

    function settle(answer) {
        question.answer = answer
        close()
    }

    modal: true
    dim: true
    focus: true
    anchors.centerIn: parent
    width: 340
    padding: 22
    closePolicy: Popup.CloseOnEscape
    background: Card {}
    onClosed: {
        const ended = loop
        loop = null
        if (ended)
            ended.quit()
    }
    contentItem: Column {
        spacing: 18

        Text {
            id: label

            width: parent.width
            wrapMode: Text.Wrap
            color: Theme.ink
            font.pixelSize: Theme.bodyText
        }

        Row {
            anchors.right: parent.right
            spacing: 8

            PushButton {
                text: qsTr("Cancel")
                onClicked: question.settle(false)
            }

            PushButton {
                id: yesButton

                text: qsTr("Yes")
                strong: true
                onClicked: question.settle(true)
            }
        }
    }
}
