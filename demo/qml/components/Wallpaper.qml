import QtQuick 2.15
import com.ostrel.im.component 1.0
import "../theme"
import "../model/palette.js" as Palette

// The looks that a picture gives to the client: its liveliest colour becomes the accent.
ImageColorTheme {
    id: wallpaper

    property string path

    onPathChanged: {
        source = path
        if (path === "")
            Theme.accent = Theme.ownAccent
    }
    onReady: Theme.accent = liveliest(Palette.colors(wallpaper))

    // Dark enough for white letters on it, and as far from grey as there is.
    function liveliest(colors) {
        let best = Theme.ownAccent
        let bestChroma = 0
        for (const color of colors) {
            const dark = color.hslLightness > 0.5 ? Qt.hsla(color.hslHue, color.hslSaturation, 0.45, 1) : Qt.lighter(color, 1)
            const chroma = Math.max(dark.r, dark.g, dark.b) - Math.min(dark.r, dark.g, dark.b)
            if (chroma > bestChroma) {
                best = dark
                bestChroma = chroma
            }
        }
        return best
    }
}
