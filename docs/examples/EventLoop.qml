// Waits inside a function until the user has answered. The interface stays alive meanwhile.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Rectangle {
    id: question

    property bool answer: false

    function ask() {
        visible = true
        loop.start()
        visible = false
        return answer
    }

    function reply(value) {
        answer = value
        loop.quit()
    }

    width: 200
    height: 60
    visible: false

    EventLoop {
        id: loop
    }

    Text {
        anchors.centerIn: parent
        text: "Delete the message? Click for yes."
    }

    MouseArea {
        anchors.fill: parent
        onClicked: question.reply(true)
    }
}
