// The input box in a view that scrolls. Return sends, Shift+Return breaks the line.
import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0

Flickable {
    id: view

    signal sent(string text, var mentions)

    width: 320
    height: 90
    clip: true

    TextArea.flickable: DrawableTextArea {
        id: input
        wrapMode: TextEdit.Wrap
        font.pixelSize: 15
        aiteEnabled: true
        maxCharacterCount: 4000
        // What is to be seen of the box; only there emoji are painted.
        visualX: view.contentX
        visualY: view.contentY
        visualWidth: view.width
        visualHeight: view.height
        onAiteDetected: {
            if (detected && aiteString === "@b") {
                select(aiteFrom, aiteFrom + aiteLen)
                insertAite("@Bob", { userId: 7, aiteNick: "@Bob" })
            }
        }
        Keys.onReturnPressed: {
            if (event.modifiers & Qt.ShiftModifier) {
                event.accepted = false
                return
            }
            view.sent(content, aiteData)
            clear()
        }
    }
}
