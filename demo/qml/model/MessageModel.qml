import QtQuick 2.15
import "format.js" as Format

// The messages of one conversation, newest first: the list grows from its bottom. What depends on the
// neighbours (the date above the first of a day, the name above the first of several) is decided here, once, so
// that scrolling computes nothing.
ListModel {
    id: model

    readonly property int groupSpan: 5 * 60000

    // `messages` come oldest first.
    function fill(messages) {
        clear()
        const rows = messages.map((message, i) => rowOf(message, i > 0 ? messages[i - 1] : null, "sent"))
        append(rows.reverse())
    }

    function addNewest(message, delivery) {
        insert(0, rowOf(message, count > 0 ? get(0) : null, delivery))
    }

    function setDelivery(messageId, delivery) {
        const index = find(messageId)
        if (index !== -1)
            setProperty(index, "delivery", delivery)
    }

    function setProgress(messageId, progress) {
        const index = find(messageId)
        if (index !== -1)
            setProperty(index, "progress", progress)
    }

    function find(messageId) {
        for (let i = 0; i < count; ++i) {
            if (get(i).messageId === messageId)
                return i
        }
        return -1
    }

    // Indexes of the messages that hold every word of `words`, newest first.
    function search(words) {
        const wanted = words.toLowerCase().split(" ").filter(word => word !== "")
        const found = []
        if (wanted.length === 0)
            return found
        for (let i = 0; i < count; ++i) {
            const text = get(i).body.toLowerCase()
            if (wanted.every(word => text.indexOf(word) !== -1))
                found.push(i)
        }
        return found
    }

    function rowOf(message, previous, delivery) {
        const newDay = !previous || Format.startOfDay(previous.time) !== Format.startOfDay(message.time)
        const follows = !newDay && previous.kind === message.kind && previous.author === message.author
                      && message.time - previous.time < groupSpan
        return { messageId: message.id, author: message.author, body: message.text,
                 blocks: JSON.stringify(message.blocks), kind: message.kind, time: message.time,
                 dayTitle: newDay ? Format.day(message.time) : "", follows: follows, delivery: delivery,
                 attachment: message.attachment ? JSON.stringify(message.attachment) : "",
                 progress: 0 }
    }
}
