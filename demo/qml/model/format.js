.pragma library

function startOfDay(time) {
    const date = new Date(time)
    return new Date(date.getFullYear(), date.getMonth(), date.getDate()).getTime()
}

// Plain text as a paragraph of HTML.
function html(text) {
    const escaped = text.replace(/&/g, "&amp;").replace(/</g, "&lt;").replace(/>/g, "&gt;")
    return "<p>" + escaped.replace(/\n/g, "<br/>") + "</p>"
}

function clock(time) {
    return Qt.formatTime(new Date(time), "HH:mm")
}

function day(time) {
    const days = Math.round((startOfDay(Date.now()) - startOfDay(time)) / 86400000)
    if (days === 0)
        return "Today"
    if (days === 1)
        return "Yesterday"
    return new Date(time).toLocaleDateString(Qt.locale("en"), days < 7 ? "dddd" : "d MMMM yyyy")
}

// As short as the conversation list wants it.
function recent(time) {
    const days = Math.round((startOfDay(Date.now()) - startOfDay(time)) / 86400000)
    if (days === 0)
        return clock(time)
    if (days === 1)
        return "Yesterday"
    return new Date(time).toLocaleDateString(Qt.locale("en"), days < 7 ? "ddd" : "d MMM")
}
