.pragma library
.import "people.js" as People

// DrawableText searches for nothing but emoji and highlights; what is a link, a mention or a tag is told to it.
// This library finds them in what somebody typed.

const kind = { text: 0, link: 1, email: 2, mention: 3, userId: 4, phone: 5, tag: 6 }

const linkPattern = /(?:https?:\/\/|www\.)[^\s<>"'`，。！？；：、（）《》「」【】]+/gi
const emailPattern = /[A-Za-z0-9][A-Za-z0-9._%+-]*@[A-Za-z0-9-]+(?:\.[A-Za-z0-9-]+)*\.[A-Za-z]{2,}/g
// Words of any of these scripts, joined by hyphens.
const tagPattern = /#[A-Za-z0-9_\u00c0-\u024f\u0400-\u04ff\u0600-\u06ff\u3040-\u30ff\u4e00-\u9fff\uac00-\ud7af]+(?:-[A-Za-z0-9_\u00c0-\u024f\u0400-\u04ff\u0600-\u06ff\u3040-\u30ff\u4e00-\u9fff\uac00-\ud7af]+)*/g
const wordEnd = /[A-Za-z0-9_\u00c0-\u024f\u0600-\u06ff]$/
const wordStart = /^[A-Za-z0-9_\u00c0-\u024f]/

// The blocks of `text` in ascending order, without overlap, as `userBlocks` takes them. `known` blocks, which the
// author chose, come first.
function blocks(text, known) {
    const found = known ? known.slice() : []
    const add = (start, length, type, data) => {
        const taken = found.some(other => start < other.start + other.length && other.start < start + length)
        if (!taken)
            found.push({ start: start, length: length, type: type, data: data })
    }
    eachMatch(text, linkPattern, (word, at) => {
        const link = withoutTrailingMarks(word)
        add(at, link.length, kind.link, link)
    })
    eachMatch(text, emailPattern, (word, at) => add(at, word.length, kind.email, word))
    for (const person of People.everyone)
        addMentions(text, person, add)
    eachMatch(text, tagPattern, (word, at) => {
        // A keycap such as #️⃣ begins with the same character, and "a#b" is no tag.
        if (!wordEnd.test(text.slice(0, at)))
            add(at, word.length, kind.tag, word)
    })
    return found.sort((a, b) => a.start - b.start)
}

// The tags of `messages`, each once.
function tags(messages) {
    const found = []
    for (const message of messages) {
        for (const block of message.blocks) {
            if (block.type === kind.tag && found.indexOf(block.data) === -1)
                found.push(block.data)
        }
    }
    return found.sort()
}

function addMentions(text, person, add) {
    const mention = "@" + person.name
    for (let at = text.indexOf(mention); at !== -1; at = text.indexOf(mention, at + 1)) {
        const free = !wordEnd.test(text.slice(0, at)) && !wordStart.test(text.slice(at + mention.length))
        if (free)
            add(at, mention.length, kind.mention, person.id)
    }
}

function eachMatch(text, pattern, visit) {
    pattern.lastIndex = 0
    for (let match = pattern.exec(text); match; match = pattern.exec(text))
        visit(match[0], match.index)
}

// "See https://example.org/a." ends a sentence, not an address; "(https://example.org/a_(b))" keeps its pair.
function withoutTrailingMarks(link) {
    let end = link.length
    for (; end > 0; --end) {
        const last = link[end - 1]
        if (last === ")") {
            const head = link.slice(0, end)
            if (head.split("(").length >= head.split(")").length)
                break
        } else if (!/[.,!?;:\]}*_~…]/.test(last)) {
            break
        }
    }
    return link.slice(0, end)
}

// A block inside the text itself, as services write it into notices: the reader sees `name`.
function inBand(name, data, type) {
    return "\u0001" + JSON.stringify({ displayName: name, data: data, type: type }) + "\u0002"
}

// What a reader sees of `text`, on one line and short enough to measure at once.
function preview(text) {
    const shown = text.slice(0, 2000).replace(/\u0001[^\u0002]*"displayName"\s*:\s*"([^"]*)"[^\u0002]*\u0002/g, "$1")
    const line = shown.slice(0, 200)
    const cut = /[\ud800-\udbff]$/.test(line) ? line.slice(0, -1) : line
    return cut.replace(/\s+/g, " ").trim()
}
