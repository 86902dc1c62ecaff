// A message with a mention, a link and a matched word. The item sizes itself; the bubble follows.
import QtQuick 2.15
import com.ostrel.im.component 1.0

Rectangle {
    width: message.width + 24
    height: message.height + 16
    radius: 8
    color: "#e8f0fe"

    DrawableText {
        id: message
        x: 12
        y: 8
        font.pixelSize: 15
        maxWidth: 320
        mouseEnabled: true
        selectByMouse: true
        aiteColor: "#1f6feb"
        highlightBgColor: "#fff3a3"
        highlightText: "lunch"
        // 3 is a mention, 1 a link; positions count UTF-16 units of the text.
        userBlocks: [
            { start: 0, length: 4, type: 3, data: 7 },
            { start: 26, length: 11, type: 1, data: "https://example.org" }
        ]
        text: "@Bob shall we lunch at\n🍜 example.org ?"
        onAiteClick: console.log("A mention of user", data)
        onLinkActivated: ImUtil.openUrl(link)
    }
}
