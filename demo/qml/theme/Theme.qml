pragma Singleton
import QtQuick 2.15

// Every colour, font and distance of the client.
QtObject {
    property QtObject pictures: null // of people
    readonly property color window: "#f5f7fb"
    readonly property color panel: "#ffffff"
    readonly property color rail: "#eaeef6"
    readonly property color field: "#eef1f7"
    readonly property color line: "#e4e8f0"
    readonly property color hover: "#f0f3f9"
    readonly property color pressed: "#e4eaf5"

    readonly property color ink: "#1b2333"
    readonly property color inkSoft: "#66728a"
    readonly property color inkFaint: "#98a3b8"

    readonly property color ownAccent: "#3d6df2"
    property color accent: ownAccent // a picture can give another one
    readonly property color accentDark: Qt.darker(accent, 1.17)
    readonly property color accentSoft: paled(accent, 0.12)
    readonly property color online: "#25b36c"
    readonly property color warning: "#d64545"

    readonly property color bubble: "#ffffff"
    readonly property color ownBubble: paled(accent, 0.18)
    readonly property color link: "#2456d3"
    readonly property color mention: "#7b3fe4"
    readonly property color email: "#0e7490"
    readonly property color tag: "#0c8a63"
    readonly property color match: "#ffe08a"
    readonly property color selection: "#a8c5ff"

    readonly property var avatarColors: [
        "#5b7cfa", "#e4688c", "#2fa98c", "#e58f3c", "#8d67e8", "#3b9fd8", "#c95f9f", "#6a8f3c"
    ]

    readonly property string family: Qt.application.font.family
    readonly property string codeFamily: Qt.fontFamilies().indexOf("Noto Sans Mono") !== -1 ? "Noto Sans Mono" : "monospace"
    readonly property font messageFont: Qt.font({ family: family, pixelSize: 15 })
    readonly property font previewFont: Qt.font({ family: family, pixelSize: 13 })
    readonly property font noticeFont: Qt.font({ family: family, pixelSize: 12 })
    readonly property font emojiFont: Qt.font({ family: family, pixelSize: 27 })
    readonly property int smallText: 11
    readonly property int bodyText: 14
    readonly property int titleText: 16

    readonly property int gap: 8
    readonly property int radius: 10
    readonly property int bubbleRadius: 14
    readonly property int headerHeight: 64
    readonly property int quick: 120

    // What is left of a colour on white paper.
    function paled(color, share) {
        return Qt.rgba(1 - (1 - color.r) * share, 1 - (1 - color.g) * share, 1 - (1 - color.b) * share, 1)
    }

    function avatarColor(key) {
        let sum = 7
        for (let i = 0; i < key.length; ++i)
            sum = (sum * 31 + key.charCodeAt(i)) % 100003
        return avatarColors[sum % avatarColors.length]
    }
}
