// Copies an invitation, and tells what can be pasted.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Text {
    function copyInvitation() {
        Clipboard.setMimeData({
            "text/plain": "Join us: https://example.org/join",
            "text/html": "Join us: <a href='https://example.org/join'>here</a>"
        })
    }

    function describe() {
        const files = Clipboard.filterContent()
        text = files.length > 0 ? files.length + " files to paste" : Clipboard.text()
    }

    text: "Click to see the clipboard"

    MouseArea {
        anchors.fill: parent
        onClicked: parent.describe()
    }
}
