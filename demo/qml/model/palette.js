.pragma library

// The colours that an ImageColorTheme has found; it answers white past the last one.
function colors(theme) {
    const found = []
    for (let i = 0; i < theme.colorCount; ++i) {
        const color = theme.getColor(i)
        if (Qt.colorEqual(color, "white"))
            break
        found.push(color)
    }
    return found
}
