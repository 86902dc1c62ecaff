import QtQuick 2.15
import QtQuick.Controls 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/emoji.js" as Emoji
import "../model/people.js" as People

// Where messages are written. Return sends, Shift+Return breaks the line, "@" and "#" offer people and tags, Ctrl+E
// opens the emoji, and Tab goes on to the buttons.
Item {
    id: composer

    property string placeholder
    property var people: [] // numbers of those who can be mentioned
    property var tags: []
    property var recentEmoji: []
    readonly property alias input: input
    readonly property alias picker: picker
    readonly property alias completion: completion
    readonly property alias emojiButton: emojiButton
    readonly property alias shotButton: shotButton
    readonly property alias sendButton: sendButton
    readonly property alias counter: counter
    readonly property alias attachments: attachmentModel
    readonly property bool empty: input.content === "" && attachmentModel.count === 0

    // `mentions` are user blocks of `text`, `files` are local paths.
    signal sent(string text, var mentions, var files)
    signal refused(string why)
    signal screenshotRequested()

    implicitHeight: frame.height + 28

    function insert(emoji) {
        input.insertEmojiByUnicode(Emoji.keyOf(emoji))
    }

    function takeFocus() {
        input.forceActiveFocus()
    }

    function send() {
        if (empty)
            return
        const text = input.content
        const mentions = plainBlocks(input.aiteData)
        const files = []
        for (let i = 0; i < attachmentModel.count; ++i)
            files.push(attachmentModel.get(i).path)
        const used = input.latestEmojis().map(entry => entry.emoji)
        recentEmoji = used.concat(recentEmoji.filter(emoji => used.indexOf(emoji) === -1)).slice(0, 8)
        clear()
        composer.sent(text, mentions, files)
    }

    function clear() {
        input.clear()
        attachmentModel.clear()
    }

    // What is being written, to be put back by restore().
    function draft() {
        const files = []
        for (let i = 0; i < attachmentModel.count; ++i)
            files.push(attachmentModel.get(i).path)
        return { text: input.content, mentions: plainBlocks(input.aiteData), files: files }
    }

    function restore(draft) {
        clear()
        if (!draft)
            return
        input.userBlocks = draft.mentions
        input.content = draft.text
        input.cursorPosition = input.length
        attach(draft.files)
    }

    function attach(files) {
        for (const file of files) {
            const info = ImUtil.getFileInfo(file)
            if (!info.isFile) {
                composer.refused(qsTr("Only files can be sent"))
                continue
            }
            attachmentModel.append({ path: info.filePath, name: info.fileName, bytes: info.size,
                                     isPicture: ImUtil.isImageFormat(info.filePath) })
        }
    }

    // The module's block list as a script's own, which lives on and goes through JSON.
    function plainBlocks(blocks) {
        return Array.from(blocks, block => ({ start: block.start, length: block.length, type: block.type, data: block.data }))
    }

    function offerPeople(word, detected) {
        const letters = word.slice(1).toLowerCase()
        offer(!detected ? [] : people.map(People.byId).filter(person => person.name.toLowerCase().startsWith(letters))
              .map(person => ({ title: person.name, detail: person.role, value: person.id })), true)
    }

    function offerTags(word, detected) {
        const letters = word.toLowerCase()
        offer(!detected ? [] : tags.filter(tag => tag.toLowerCase().startsWith(letters) && tag !== word).slice(0, 6)
              .map(tag => ({ title: tag, detail: "", value: tag })), false)
    }

    // People and tags share the list; a word that is none of one kind leaves the other kind's offer alone.
    function offer(entries, people) {
        if (entries.length === 0 && completion.withAvatars !== people)
            return
        completion.withAvatars = people
        completion.entries = entries
        completion.visible = entries.length > 0
    }

    function complete(value) {
        completion.visible = false
        if (completion.withAvatars) {
            const name = "@" + People.nameOf(value)
            input.select(input.aiteFrom, input.aiteFrom + input.aiteLen)
            input.insertAite(name, { userId: value, aiteNick: name })
        } else {
            input.select(input.hashTagFrom, input.hashTagFrom + input.hashTagLen)
            input.insertText(value + " ")
        }
    }

    ListModel {
        id: attachmentModel
    }

    Rectangle {
        id: frame

        anchors { left: parent.left; right: parent.right; leftMargin: 20; rightMargin: 20 }
        y: 8
        height: strip.height + Math.max(48, Math.min(150, input.contentHeight + 26))
        radius: Theme.bubbleRadius
        color: Theme.panel
        border { width: dropMark.visible ? 2 : 1; color: input.activeFocus ? Theme.accent : Theme.line }

        Behavior on border.color { ColorAnimation { duration: Theme.quick } }

        AttachmentStrip {
            id: strip

            width: parent.width
            height: implicitHeight
            model: attachmentModel
            onRemoved: attachmentModel.remove(index)
        }

        IconButton {
            id: emojiButton

            anchors { left: parent.left; bottom: parent.bottom; margins: 6 }
            iconName: "smile"
            hint: qsTr("Emoji (Ctrl+E)")
            onClicked: picker.open()
        }

        IconButton {
            id: shotButton

            anchors { left: emojiButton.right; bottom: parent.bottom; bottomMargin: 6 }
            iconName: "scissors"
            hint: qsTr("Take a piece of the screen")
            onClicked: composer.screenshotRequested()
        }

        Flickable {
            id: flick

            anchors { left: shotButton.right; right: counter.left; top: strip.bottom; bottom: parent.bottom }
            anchors { leftMargin: 2; rightMargin: 6; topMargin: 4; bottomMargin: 4 }
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: ThinScrollBar {}
            // A text that arrives in one go moves the cursor before the box has grown.
            onHeightChanged: Qt.callLater(flick.showCursor)
            onContentHeightChanged: Qt.callLater(flick.showCursor)

            function showCursor() {
                const cursor = input.cursorRectangle
                const lowest = cursor.y - input.topPadding
                const highest = cursor.y + cursor.height + input.bottomPadding - height
                contentY = Math.max(0, Math.min(contentHeight - height, Math.max(highest, Math.min(contentY, lowest))))
            }

            TextArea.flickable: DrawableTextArea {
                id: input

                leftPadding: 4
                rightPadding: 4
                topPadding: 9
                bottomPadding: 9
                wrapMode: TextEdit.Wrap
                color: Theme.ink
                aiteColor: Theme.mention
                selectionColor: Theme.selection
                selectedTextColor: Theme.ink
                selectByMouse: true
                font: Theme.messageFont
                aiteEnabled: true
                hashTagEnabled: true
                dropEnabled: true
                upDownKeyEnabled: true
                maxCharacterCount: 4000
                visualX: flick.contentX
                visualY: flick.contentY
                visualWidth: flick.width
                visualHeight: flick.height
                // Pasted and restored mentions keep to people who still exist.
                aiteNameFunction: data => {
                    const user = JSON.parse(data).userId
                    return People.exists(user) ? "@" + People.nameOf(user) : ""
                }

                Keys.onPressed: {
                    if (completion.takeKey(event.key)) {
                        event.accepted = true
                    } else if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
                               && !(event.modifiers & Qt.ShiftModifier)) {
                        event.accepted = true
                        composer.send()
                    } else if (event.key === Qt.Key_E && event.modifiers === Qt.ControlModifier) {
                        event.accepted = true
                        picker.open()
                    } else if (event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab) {
                        event.accepted = true
                        const forward = event.key === Qt.Key_Tab
                        input.nextItemInFocusChain(forward).forceActiveFocus(forward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
                    }
                }
                onAiteDetected: composer.offerPeople(aiteString, detected)
                onHashTagDetected: composer.offerTags(tagString, detected)
                onActiveFocusChanged: {
                    if (!activeFocus)
                        completion.visible = false
                }
                onPastContent: composer.attach(Array.from(Clipboard.filterContent(), entry => ImUtil.toLocalFile(String(entry))))
                onDropFiles: {
                    dropMark.visible = false
                    composer.attach(urls.map(url => ImUtil.toLocalFile(String(url))))
                }
                onDragDetect: dropMark.visible = true
                onMaxCharacterCountReached: composer.refused(qsTr("A message has %1 characters at most").arg(maxCharacterCount))

                Text {
                    x: 4
                    y: input.topPadding
                    visible: input.length === 0 && input.preeditText === ""
                    text: composer.placeholder
                    color: Theme.inkFaint
                    font: input.font
                }
            }
        }

        // The box tells when something is dragged in, and the window when it left again.
        Timer {
            id: dropMark

            property bool visible: false

            interval: 1500
            running: visible
            onTriggered: visible = false
        }

        Text {
            id: counter

            readonly property int remaining: input.maxCharacterCount - input.length

            anchors { right: sendButton.left; rightMargin: 6; verticalCenter: sendButton.verticalCenter }
            width: visible ? implicitWidth : 0
            visible: remaining <= 200
            text: remaining
            color: remaining > 20 ? Theme.inkFaint : Theme.warning
            font.pixelSize: 12
        }

        IconButton {
            id: sendButton

            anchors { right: parent.right; bottom: parent.bottom; margins: 6 }
            enabled: !composer.empty
            iconName: "send"
            iconColor: "white"
            fill: enabled ? Theme.accent : Theme.field
            hint: qsTr("Send")
            onClicked: composer.send()
        }
    }

    CompletionList {
        id: completion

        x: Math.max(20, Math.min(composer.width - width - 20,
                                 frame.x + flick.x + input.cursorRectangle.x - flick.contentX - 20))
        y: frame.y + flick.y + input.cursorRectangle.y - flick.contentY - height - 8
        onChosen: composer.complete(value)
        onDismissed: visible = false
    }

    EmojiPicker {
        id: picker

        x: 20
        y: -height
        recent: composer.recentEmoji
        onPicked: {
            composer.insert(emoji)
            picker.close()
        }
        onClosed: composer.takeFocus()
    }
}
