.pragma library

// Everyone whom the demo knows. The numbers are what mentions carry.
const everyone = [
    { id: 1, name: "Alice", role: "Interface design" },
    { id: 2, name: "Bob", role: "Desktop client" },
    { id: 3, name: "李梅", role: "Text engine" },
    { id: 4, name: "عمر", role: "Localisation" },
    { id: 5, name: "Jonas", role: "Release manager" },
    { id: 6, name: "Priya", role: "Quality" },
]

// The same by team, as a tree: branches have `elements`, leaves a `person`.
function teams() {
    const leaf = id => ({ text: nameOf(id), person: id })
    return [
        { text: "Design", elements: [leaf(1)] },
        { text: "Engineering", elements: [
            { text: "Desktop", elements: [leaf(2)] },
            { text: "Text", elements: [leaf(3), leaf(4)] },
        ] },
        { text: "Release", elements: [leaf(5), leaf(6)] },
    ]
}

function exists(id) {
    return everyone.some(person => person.id === id)
}

function byId(id) {
    return everyone.find(person => person.id === id) || { id: id, name: "Someone", role: "" }
}

function nameOf(id) {
    return byId(id).name
}

// Two letters at most; one character of a script that has no capitals.
function initials(name) {
    const words = name.trim().split(/\s+/).filter(word => /[^\u0000-\u002f]/.test(word))
    if (words.length === 0)
        return "?"
    const first = Array.from(words[0])[0]
    if (first > "\u024f" || words.length === 1)
        return first.toUpperCase()
    const second = Array.from(words[1])[0]
    return (first + (second > "\u024f" ? "" : second)).toUpperCase()
}
