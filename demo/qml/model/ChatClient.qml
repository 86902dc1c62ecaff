import QtQuick 2.15
import com.ostrel.im.component 1.0
import "linkify.js" as Linkify
import "people.js" as People
import "sampledata.js" as SampleData
import "store.js" as Store

// One signed-in user: the connection to the service, the history and the lists that the pages show.
Item {
    id: client

    property int user
    property url serverUrl
    property bool fresh: false
    property string startWith // the conversation to open first
    property QtObject pictureDesk: null

    readonly property string userName: People.nameOf(user)
    readonly property bool connected: socket.isConnected
    property var onlineUsers: []
    readonly property alias conversations: conversationModel
    property string currentId: ""
    property var tags: [] // of the open conversation
    readonly property var current: conversation(currentId)
    readonly property alias messages: messageModel
    readonly property alias settings: settings
    property int unreadTotal: 0

    signal received(string conversationId, string messageId)

    property var database: null
    property int serial: 0
    property var uploads: ({}) // messages that wait for their files
    readonly property int pieceSize: 16384

    Component.onCompleted: {
        database = Store.open(user)
        if (fresh)
            Store.clear(database)
        settings.load(database)
        if (Store.isEmpty(database))
            Store.save(database, SampleData.history(Date.now()))
        for (const entry of SampleData.conversations.filter(entry => entry.members.indexOf(user) !== -1))
            conversationModel.append(rowOf(entry))
        sortConversations()
        open(startWith)
        socket.open()
    }

    function conversation(id) {
        return SampleData.conversations.find(entry => entry.id === id) || null
    }

    function titleOf(entry) {
        return entry.title || People.nameOf(entry.members.find(member => member !== user))
    }

    function isOnline(person) {
        return onlineUsers.indexOf(person) !== -1
    }

    function open(id) {
        if (id === currentId)
            return
        currentId = id
        const history = Store.load(database, id)
        messageModel.fill(history)
        tags = Linkify.tags(history)
        conversationModel.setProperty(indexOf(id), "unread", 0)
        countUnread()
    }

    function countUnread() {
        let total = 0
        for (let i = 0; i < conversationModel.count; ++i)
            total += conversationModel.get(i).unread
        unreadTotal = total
    }

    // Forgets what was said in the open conversation, in this window only.
    function forget() {
        Store.clearConversation(database, currentId)
        messageModel.clear()
        conversationModel.set(indexOf(currentId), { preview: "", time: 0 })
    }

    // Sends what somebody wrote: the text with its mentions, then each file. A text between two lines of "```" is a
    // piece of code.
    function send(text, mentions, files) {
        const body = text.replace(/\r\n?/g, "\n")
        const code = /^```\n?([^]*?)\n?```$/.exec(body)
        if (code)
            post({ text: code[1], blocks: [], kind: "code" })
        else if (body.trim() !== "")
            post({ text: body, blocks: Linkify.blocks(body, mentions), kind: "text" })
        for (const file of files || [])
            post(fileMessage(file))
    }

    // Both windows are on one machine, so that the path is all that a receiver needs.
    function fileMessage(path) {
        const info = ImUtil.getFileInfo(path)
        const size = ImUtil.imageSize(path)
        const isPicture = ImUtil.isImageFormat(path)
        return { text: info.fileName, blocks: [], kind: isPicture ? "picture" : "file",
                 attachment: { path: info.filePath, bytes: info.size, changed: Number(info.lastModified),
                               thumbnail: isPicture ? pictureDesk.thumbnail(path) : "",
                               width: isPicture ? size.width : 0, height: isPicture ? size.height : 0 } }
    }

    // The history has a message at once, the tick follows when the service has it.
    function post(content) {
        if (currentId === "")
            return
        const message = Object.assign({ id: [user, Date.now(), ++serial].join("-"), conversation: currentId, author: user,
                                        time: Date.now() }, content)
        keep(message, connected ? "sending" : "failed")
        if (connected)
            upload(message)
    }

    // A file goes ahead of its message, piece by piece; the service asks for the next one when it has the last.
    function upload(message) {
        const bytes = message.attachment ? message.attachment.bytes : 0
        uploads[message.id] = { message: message, pieces: Math.min(60, Math.ceil(bytes / pieceSize)) }
        sendPiece(message.id, 0)
    }

    function sendPiece(id, index) {
        const entry = uploads[id]
        if (!entry)
            return
        messageModel.setProgress(id, entry.pieces > 0 ? index / entry.pieces : 1)
        if (index < entry.pieces) {
            socket.sendTextMessage(JSON.stringify({ type: "piece", id: id, index: index }))
        } else {
            delete uploads[id]
            socket.sendTextMessage(JSON.stringify(Object.assign({ type: "message" }, entry.message)))
        }
    }

    // The conversations with that person, newest first.
    function sharedWith(person) {
        const found = []
        for (let i = 0; i < conversationModel.count; ++i) {
            const row = conversationModel.get(i)
            if (conversation(row.conversationId).members.indexOf(person) !== -1)
                found.push({ conversationId: row.conversationId, title: row.title, preview: row.preview, time: row.time,
                             peer: row.peer })
        }
        return found
    }

    function keep(message, delivery) {
        const index = indexOf(message.conversation)
        if (index === -1)
            return
        Store.save(database, [message])
        if (message.conversation === currentId)
            messageModel.addNewest(message, delivery)
        conversationModel.set(index, { preview: previewOf(message), time: message.time })
        if (message.conversation !== currentId)
            conversationModel.setProperty(index, "unread", conversationModel.get(index).unread + 1)
        conversationModel.move(index, 0, 1)
        countUnread()
    }

    function rowOf(entry) {
        const newest = Store.last(database, entry.id)
        return { conversationId: entry.id, title: titleOf(entry), preview: newest ? previewOf(newest) : "",
                 time: newest ? newest.time : 0, unread: ({ emoji: 3, mei: 12, release: 1 })[entry.id] || 0,
                 peer: entry.members.length === 2 ? entry.members.find(member => member !== user) : 0 }
    }

    function previewOf(message) {
        const text = (({ picture: "🖼️ ", file: "📎 ", code: "💻 " })[message.kind] || "") + Linkify.preview(message.text)
        if (message.kind === "notice")
            return text
        return (message.author === user ? "You" : People.nameOf(message.author)) + ": " + text
    }

    function sortConversations() {
        for (let to = 0; to < conversationModel.count; ++to) {
            let newest = to
            for (let i = to + 1; i < conversationModel.count; ++i) {
                if (conversationModel.get(i).time > conversationModel.get(newest).time)
                    newest = i
            }
            if (newest !== to)
                conversationModel.move(newest, to, 1)
        }
    }

    function indexOf(id) {
        for (let i = 0; i < conversationModel.count; ++i) {
            if (conversationModel.get(i).conversationId === id)
                return i
        }
        return -1
    }

    function receive(frame) {
        switch (frame.type) {
        case "online":
            onlineUsers = frame.users
            break
        case "accepted":
            messageModel.setDelivery(frame.id, "sent")
            break
        case "piece":
            sendPiece(frame.id, frame.index + 1)
            break
        case "message":
            keep({ id: frame.id, conversation: frame.conversation, author: frame.author, text: frame.text,
                   blocks: frame.blocks || [], kind: frame.kind || "text", time: frame.time,
                   attachment: frame.attachment || null }, "sent")
            client.received(frame.conversation, frame.id)
            break
        }
    }

    ListModel {
        id: conversationModel
    }

    MessageModel {
        id: messageModel
    }

    Settings {
        id: settings
    }

    WebSocket {
        id: socket

        url: client.serverUrl
        onIsConnectedChanged: {
            if (isConnected)
                sendTextMessage(JSON.stringify({ type: "hello", user: client.user }))
        }
        onTextMessageReceived: client.receive(JSON.parse(message))
    }
}
