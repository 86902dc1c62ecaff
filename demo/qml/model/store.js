.pragma library
.import QtQuick.LocalStorage 2.15 as Sql

// The history of one user, in a SQLite file of its own.

function open(user) {
    const database = Sql.LocalStorage.openDatabaseSync("chat-" + user, "", "Messages of user " + user, 4000000)
    database.transaction(tx => {
        tx.executeSql("CREATE TABLE IF NOT EXISTS messages (id TEXT PRIMARY KEY, conversation TEXT NOT NULL, "
                      + "author INTEGER NOT NULL, text TEXT NOT NULL, blocks TEXT NOT NULL, kind TEXT NOT NULL, "
                      + "time REAL NOT NULL, attachment TEXT NOT NULL DEFAULT '')")
        // Histories of earlier versions have no attachments.
        const made = tx.executeSql("SELECT sql FROM sqlite_master WHERE name = 'messages'").rows.item(0).sql
        if (made.indexOf("attachment") === -1)
            tx.executeSql("ALTER TABLE messages ADD COLUMN attachment TEXT NOT NULL DEFAULT ''")
        tx.executeSql("CREATE INDEX IF NOT EXISTS messages_by_time ON messages (conversation, time)")
        tx.executeSql("CREATE TABLE IF NOT EXISTS settings (name TEXT PRIMARY KEY, value TEXT NOT NULL)")
    })
    return database
}

// The settings as an object, each as it was kept.
function settings(database) {
    const found = {}
    database.readTransaction(tx => {
        const rows = tx.executeSql("SELECT * FROM settings").rows
        for (let i = 0; i < rows.length; ++i)
            found[rows.item(i).name] = JSON.parse(rows.item(i).value)
    })
    return found
}

function keepSetting(database, name, value) {
    database.transaction(tx => tx.executeSql("INSERT OR REPLACE INTO settings VALUES (?, ?)", [name, JSON.stringify(value)]))
}

function isEmpty(database) {
    let count = 0
    database.readTransaction(tx => {
        count = tx.executeSql("SELECT COUNT(*) AS count FROM messages").rows.item(0).count
    })
    return count === 0
}

function clearConversation(database, conversation) {
    database.transaction(tx => tx.executeSql("DELETE FROM messages WHERE conversation = ?", [conversation]))
}

function clear(database) {
    database.transaction(tx => tx.executeSql("DELETE FROM messages"))
}

// A message that is already there is replaced: the service may deliver twice.
function save(database, messages) {
    database.transaction(tx => {
        for (const message of messages) {
            tx.executeSql("INSERT OR REPLACE INTO messages VALUES (?, ?, ?, ?, ?, ?, ?, ?)",
                          [message.id, message.conversation, message.author, message.text,
                           JSON.stringify(message.blocks), message.kind, message.time,
                           message.attachment ? JSON.stringify(message.attachment) : ""])
        }
    })
}

// Oldest first.
function load(database, conversation) {
    const messages = []
    database.readTransaction(tx => {
        const rows = tx.executeSql("SELECT * FROM messages WHERE conversation = ? ORDER BY time, rowid",
                                   [conversation]).rows
        for (let i = 0; i < rows.length; ++i)
            messages.push(fromRow(rows.item(i)))
    })
    return messages
}

function last(database, conversation) {
    let message = null
    database.readTransaction(tx => {
        const rows = tx.executeSql("SELECT * FROM messages WHERE conversation = ? ORDER BY time DESC, rowid DESC "
                                   + "LIMIT 1", [conversation]).rows
        if (rows.length > 0)
            message = fromRow(rows.item(0))
    })
    return message
}

function fromRow(row) {
    return { id: row.id, conversation: row.conversation, author: row.author, text: row.text,
             blocks: JSON.parse(row.blocks), kind: row.kind, time: row.time,
             attachment: row.attachment ? JSON.parse(row.attachment) : null }
}
