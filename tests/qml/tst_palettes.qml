// Palettes of pictures as scripts ask for them.

import QtQuick 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

TestCase {
    id: test
    name: "Palettes"
    when: windowShown
    width: 100
    height: 100

    readonly property url picture: Qt.resolvedUrl("palette.ppm")

    Component {
        id: themes
        ImageColorTheme {
            property var log: []
            onReady: log.push("ready")
            onThemeColorChanged: log.push("themeColor " + themeColor)
            onStateChanged: log.push("state " + state)
            onSourceChanged: log.push("source")
            onColorCountChanged: log.push("colorCount " + colorCount)
            onAlgorithmChanged: log.push("algorithm " + algorithm)
        }
    }

    function test_defaults() {
        const theme = createTemporaryObject(themes, test)
        compare(theme.source, "")
        compare(theme.colorCount, 10)
        compare(theme.state, ImageColorTheme.UnInit)
        compare(theme.algorithm, ImageColorTheme.CUBE)
        compare(theme.getPalette().length, 0)
        verify(Qt.colorEqual(theme.getColor(0), "white"))
        compare(theme.log, [])
    }

    function test_enumsHaveTheirValues() {
        compare([ImageColorTheme.UnInit, ImageColorTheme.Initing, ImageColorTheme.Ready], [0, 1, 2])
        compare([ImageColorTheme.MMCQ, ImageColorTheme.CUBE], [0, 1])
    }

    function test_aPictureGivesItsThemeColorAndItsPalette() {
        const theme = createTemporaryObject(themes, test, { "source": picture })
        compare(theme.log, ["state 1", "source"])
        tryCompare(theme, "state", ImageColorTheme.Ready)
        // The picture: six columns of red, four of blue-green.
        compare(theme.log, ["state 1", "source", "themeColor #c81e1e", "ready", "state 2"])
        verify(Qt.colorEqual(theme.themeColor, "#c81e1e"))
        verify(Qt.colorEqual(theme.getColor(0), "#c81e1e"))
        verify(Qt.colorEqual(theme.getColor(1), "#14dce6"))
        verify(Qt.colorEqual(theme.getColor(-5), theme.getColor(0)))
        verify(Qt.colorEqual(theme.getColor(99), "white"))
        const palette = theme.getPalette()
        compare(palette.length, 2)
        verify(Qt.colorEqual(palette[1], "#14dce6"))
    }

    function test_colorCountAndAlgorithmTakeEffectWithInit() {
        const theme = createTemporaryObject(themes, test, { "source": picture })
        tryCompare(theme, "state", ImageColorTheme.Ready)
        theme.log = []
        theme.algorithm = ImageColorTheme.MMCQ
        theme.colorCount = 2
        wait(50)
        compare(theme.log, ["algorithm 0", "colorCount 2"])
        theme.init()
        tryCompare(theme, "state", ImageColorTheme.Ready)
        // Each of the two phases splits a box before it looks at its target.
        compare(theme.getPalette().length, 3)
        compare(theme.log.filter(entry => entry === "ready").length, 1)
    }

    function test_badColorCountNeverGetsReady() {
        const theme = createTemporaryObject(themes, test, { "colorCount": 1, "source": picture })
        wait(200)
        compare(theme.state, ImageColorTheme.Initing)
        compare(theme.log.indexOf("ready"), -1)
    }

    function test_aResourceIsReadThroughItsUrl() {
        const theme = createTemporaryObject(themes, test, { "source": "qrc:/qml/image/transparent.png" })
        compare(theme.source, ":/qml/image/transparent.png")
        tryCompare(theme, "state", ImageColorTheme.Ready)
        verify(theme.getPalette().length > 0)
    }

    function test_clearedSourceClearsThePaletteAlone() {
        const theme = createTemporaryObject(themes, test, { "source": picture })
        tryCompare(theme, "state", ImageColorTheme.Ready)
        theme.source = ""
        compare(theme.getPalette().length, 0)
        verify(Qt.colorEqual(theme.getColor(0), "white"))
        verify(Qt.colorEqual(theme.themeColor, "#c81e1e"))
        compare(theme.state, ImageColorTheme.Ready)
    }

    function test_theLastOfManySourcesWins() {
        const theme = createTemporaryObject(themes, test)
        for (let i = 0; i < 20; ++i) {
            theme.source = i % 2 ? picture : "qrc:/qml/image/transparent.png"
            if (i % 3 === 0)
                theme.init()
        }
        tryCompare(theme, "state", ImageColorTheme.Ready)
        verify(Qt.colorEqual(theme.themeColor, "#c81e1e"))
    }

    function test_destroyedWhileItsWorkerRuns() {
        for (let i = 0; i < 20; ++i)
            themes.createObject(test, { "source": picture }).destroy()
        wait(50)
    }
}
