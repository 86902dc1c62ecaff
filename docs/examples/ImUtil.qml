// The heading of a conversation: the time of its last message, the size of a file, the colour of a name.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Row {
    property double lastMessage: Date.now()
    property string name: "Bob"

    spacing: 8

    Rectangle {
        width: 32
        height: 32
        radius: 16
        color: ImUtil.colorByStr(name)
    }

    Text {
        text: ImUtil.toFormatedTimeType(lastMessage)
    }

    Text {
        text: ImUtil.intToSizeStr(3 * 1024 * 1024)
    }

    Text {
        text: ImUtil.fromTime(75000) // a voice message of 1:15
    }
}
