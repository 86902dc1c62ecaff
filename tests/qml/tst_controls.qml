// The documents that the module carries, as a client loads them, with a real pointer.

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Window 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

Item {
    id: stage
    width: 600
    height: 400

    // Stands in for a window: it only notes what is asked of it.
    QtObject {
        id: fakeWindow
        property int windowState: Qt.WindowNoState
        property var calls: []
        function showMinimized() { calls.push("showMinimized") }
        function showMaximized() { calls.push("showMaximized") }
        function showNormal() { calls.push("showNormal") }
        function close() { calls.push("close") }
    }

    // Without a size, so that documents keep their own.
    Loader {
        id: loader
    }

    SignalSpy {
        id: actions
        signalName: "action"
    }

    TestCase {
        id: test
        name: "Controls"
        when: windowShown

        function cleanup() {
            actions.target = null
            actions.clear()
            loader.source = ""
            fakeWindow.calls = []
            fakeWindow.windowState = Qt.WindowNoState
            mouseMove(stage, 599, 399)
        }

        function load(name) {
            loader.source = "qrc:/qml/" + name + ".qml"
            compare(loader.status, Loader.Ready)
            return loader.item
        }

        // The visible buttons of a row of them, by their place.
        function buttonsOf(item) {
            const row = item.spacing === 4 || item.children[0] === undefined ? item : item
            let rectangles = []
            const visit = function(parent) {
                for (let i = 0; i < parent.children.length; ++i) {
                    const child = parent.children[i]
                    if (child.radius !== undefined && child.border !== undefined)
                        rectangles.push(child)
                    else
                        visit(child)
                }
            }
            visit(row)
            return rectangles
        }

        function glyphsOf(rectangle) {
            let glyphs = []
            for (let i = 0; i < rectangle.children.length; ++i) {
                const child = rectangle.children[i]
                if (child.text !== undefined && child.visible)
                    glyphs.push(child.text.charCodeAt(0).toString(16))
            }
            return glyphs
        }

        function test_aDoubleSlashFindsTheSameDocument() {
            loader.source = "qrc:/qml//ToolTip.qml"
            compare(loader.status, Loader.Ready)
            compare(loader.item.children.length, 0)
        }

        function test_windowButtonsHaveTheirDefaults() {
            const buttons = load("WindowButtons")
            compare(buttons.window, null)
            compare(buttons.enableMenu, false)
            compare(buttons.enableMinimize, true)
            compare(buttons.enableMaximize, true)
            compare(buttons.enableClose, true)
            compare(buttons.iconColor, "#333333")
            compare(buttons.iconSize, 16)
            compare(buttons.menuColor, "#20000000")
            compare(buttons.minimizeColor, "#20000000")
            compare(buttons.maximizeColor, "#20000000")
            compare(buttons.closeColor, "#ff5454")
            compare(buttons.z, 1)
        }

        function test_macButtonsHaveTheirDefaults() {
            const buttons = load("MacWindowButtons")
            compare(buttons.window, null)
            compare(buttons.enableMenu, false)
            compare(buttons.enableMinimize, true)
            compare(buttons.enableMaximize, true)
            compare(buttons.enableClose, true)
            compare(buttons.iconColor, "#333333")
            compare(buttons.iconSize, 10)
            compare(buttons.menuColor, "#22000000")
            compare(buttons.closeColor, "#ff0000")
            compare(buttons.width, 3 * 14 + 2 * 4)
            compare(buttons.height, 14)
        }

        function test_windowButtonsShowTheirGlyphsInOrder() {
            const buttons = load("WindowButtons")
            buttons.enableMenu = true
            const places = buttonsOf(buttons)
            compare(places.map(place => glyphsOf(place)[0]), ["e61a", "e8a7", "ebc1", "e93c"])
            compare(places.map(place => place.width), [30, 30, 30, 30])
            compare(places.map(place => place.height), [30, 30, 30, 30])
        }

        function test_withoutAWindowOnlyTheMenuAnswers() {
            const buttons = load("WindowButtons")
            buttons.enableMenu = true
            actions.target = buttons
            const places = buttonsOf(buttons)
            tryCompare(buttons, "width", 120)
            for (const place of places)
                mouseClick(place, 15, 15)
            compare(actions.count, 1)
            compare(actions.signalArguments[0][0], "menu")
            // The mouse area, for a menu to stand beside.
            verify(actions.signalArguments[0][1].containsMouse !== undefined)
        }

        function test_windowButtonsAct_data() {
            return [
                { tag: "minimise", index: 1, state: Qt.WindowNoState, call: "showMinimized" },
                { tag: "maximise", index: 2, state: Qt.WindowNoState, call: "showMaximized" },
                { tag: "restore", index: 2, state: Qt.WindowMaximized, call: "showNormal" },
                { tag: "close", index: 3, state: Qt.WindowNoState, call: "close" }
            ]
        }
        function test_windowButtonsAct(row) {
            const buttons = load("WindowButtons")
            buttons.enableMenu = true
            buttons.window = fakeWindow
            tryCompare(buttons, "width", 120)
            fakeWindow.windowState = row.state
            actions.target = buttons
            let callsBefore = -1
            const note = function() { callsBefore = fakeWindow.calls.length }
            buttons.action.connect(note)
            mouseClick(buttonsOf(buttons)[row.index])
            compare(actions.count, 1)
            compare(actions.signalArguments[0][0], row.call)
            compare(fakeWindow.calls, [row.call])
            compare(callsBefore, 0, "the signal comes before the window changes")
        }

        function test_maximizedWindowShowsTheRestoreGlyph() {
            const buttons = load("WindowButtons")
            buttons.window = fakeWindow
            const maximize = buttonsOf(buttons)[2]
            compare(glyphsOf(maximize), ["ebc1"])
            fakeWindow.windowState = Qt.WindowMaximized
            compare(glyphsOf(maximize), ["ebb0"])
        }

        function test_hoverOnCloseIsRedWithAWhiteGlyph() {
            const buttons = load("WindowButtons")
            const close = buttonsOf(buttons)[3]
            compare(close.color, "#00000000")
            mouseMove(close, 15, 15)
            tryCompare(close, "color", "#ff5454")
            compare(close.children[0].color, "#ffffff")
            mouseMove(stage, 599, 399)
            tryCompare(close, "color", "#00000000")
            compare(close.children[0].color, "#333333")
        }

        function test_macButtonsShowTheirGlyphsWhileHovered() {
            const buttons = load("MacWindowButtons")
            const places = buttonsOf(buttons)
            compare(places.length, 3)
            compare(places.map(place => glyphsOf(place).length), [0, 0, 0])
            mouseMove(buttons, 7, 7)
            tryVerify(() => buttons.hovered)
            compare(places.map(place => glyphsOf(place)[0]), ["e93c", "e8a7", "e628"])
            compare(places.map(place => String(place.color)), ["#f36058", "#ffcc33", "#30cc40"])
        }

        function test_macButtonsAct_data() {
            return [
                { tag: "close", index: 0, call: "close" },
                { tag: "minimise", index: 1, call: "showMinimized" },
                { tag: "maximise", index: 2, call: "showMaximized" }
            ]
        }
        function test_macButtonsAct(row) {
            const buttons = load("MacWindowButtons")
            actions.target = buttons
            mouseClick(buttonsOf(buttons)[row.index])
            compare(actions.count, 0, "without a window nothing happens")
            buttons.window = fakeWindow
            mouseClick(buttonsOf(buttons)[row.index])
            compare(actions.count, 1)
            compare(actions.signalArguments[0][0], row.call)
            compare(fakeWindow.calls, [row.call])
        }

        function test_clickEffectGrowsFromTheTouchAndFades() {
            const effect = load("ButtonClickEffect")
            compare(effect.width, 512)
            compare(effect.height, 128)
            compare(effect.opacity, 0)
            compare(effect.backgroundColor, "#20000000")
            compare(effect.spreadColor, "#20000000")
            compare(effect.widthToHeightRatio, 0.25)
            effect.touchStart(128, 32)
            compare(effect.normTouchPos.x, 0.25)
            compare(effect.normTouchPos.y, 0.25)
            tryCompare(effect, "opacity", 1)
            effect.touchEnd()
            tryCompare(effect, "opacity", 0)
            compare(effect.spread, 1)
        }

        // The formula of the ripple, worked out again.
        function isCovered(effect, x, y) {
            const touch = effect.normTouchPos
            const radius = (0.5 + Math.abs(0.5 - touch.x)) * effect.spread
            const centerX = touch.x + (0.5 - touch.x) * radius * 2
            const centerY = touch.y + (0.5 - touch.y) * radius * 2
            const dx = x / effect.width - centerX
            const dy = (y / effect.height - centerY) * effect.height / effect.width
            return dx * dx + dy * dy - radius * radius
        }

        function test_clickEffectDrawsItsFormula_data() {
            return [{ tag: "small", spread: 0.25 }, { tag: "half", spread: 0.5 }, { tag: "full", spread: 1 }]
        }
        function test_clickEffectDrawsItsFormula(row) {
            const effect = load("ButtonClickEffect")
            effect.width = 200
            effect.height = 100
            effect.backgroundColor = "#ff0000ff"
            effect.spreadColor = "#ffff0000"
            effect.normTouchPos = Qt.point(0.2, 0.5)
            effect.spread = row.spread
            effect.opacity = 1
            const picture = grabImage(effect)
            let looked = 0
            for (let y = 4; y < 100; y += 12) {
                for (let x = 4; x < 200; x += 12) {
                    const distance = isCovered(effect, x + 0.5, y + 0.5)
                    if (Math.abs(distance) < 0.01)
                        continue // the edge
                    ++looked
                    compare(picture.red(x, y) > 128, distance < 0, x + ", " + y)
                    compare(picture.blue(x, y), 255)
                }
            }
            verify(looked > 80)
        }

        function test_touchAtTheLeftEdgeReachesTheRightOneAtTheEnd() {
            const effect = load("ButtonClickEffect")
            effect.width = 200
            effect.height = 100
            effect.backgroundColor = "#ff0000ff"
            effect.spreadColor = "#ffff0000"
            effect.normTouchPos = Qt.point(0, 0.5)
            effect.spread = 1
            effect.opacity = 1
            const picture = grabImage(effect)
            for (let x = 2; x < 198; x += 7)
                verify(picture.red(x, 50) > 128, x)
        }

        function addContent(area, width, height) {
            const item = Qt.createQmlObject("import QtQuick 2.15; Rectangle { color: 'teal' }", area.container)
            item.width = width
            item.height = height
            item.parent = area.container.contentItem.children[0]
            return item
        }

        function test_scrollAreaOfSmallContentShowsNoBars() {
            const area = load("ScrollArea")
            compare(area.width, 500)
            compare(area.height, 100)
            compare(area.padding, 0)
            addContent(area, 100, 50)
            tryCompare(area.verticalScrollBar, "visible", false)
            compare(area.horizontalScrollBar.visible, false)
            compare(area.container.width, 500)
            compare(area.container.height, 100)
        }

        function test_scrollAreaOfLargeContentMakesRoomForItsBars() {
            const area = load("ScrollArea")
            addContent(area, 1000, 400)
            tryCompare(area.verticalScrollBar, "visible", true)
            compare(area.horizontalScrollBar.visible, true)
            compare(area.verticalScrollBar.width, 6)
            compare(area.horizontalScrollBar.height, 6)
            compare(area.container.width, 494)
            compare(area.container.height, 94)
            compare(area.container.contentWidth, 1000)
            compare(area.container.contentHeight, 400)
        }

        function test_theBarMovesTheView() {
            const area = load("ScrollArea")
            addContent(area, 1000, 400)
            tryCompare(area.verticalScrollBar, "visible", true)
            area.verticalScrollBar.position = 0.5
            compare(area.container.contentY, 200)
            area.horizontalScrollBar.position = 0.25
            compare(area.container.contentX, 250)
        }

        function test_theBarIsDraggedByHand() {
            const area = load("ScrollArea")
            addContent(area, 400, 1000)
            const bar = area.verticalScrollBar
            tryCompare(bar, "visible", true)
            mousePress(bar, 3, 4)
            mouseMove(bar, 3, 20)
            mouseMove(bar, 3, 40)
            verify(bar.pressed)
            verify(area.container.contentY > 100)
            fuzzyCompare(area.container.contentY, bar.position * 1000, 0.5)
            mouseRelease(bar, 3, 40)
        }

        function test_flickingMovesTheBar() {
            const area = load("ScrollArea")
            addContent(area, 400, 1000)
            tryCompare(area.verticalScrollBar, "visible", true)
            area.container.flick(0, -800)
            tryVerify(() => area.container.contentY > 50)
            fuzzyCompare(area.verticalScrollBar.position, area.container.visibleArea.yPosition, 0.05)
            tryCompare(area.container, "moving", false)
            const y = area.container.contentY
            verify(y > 50, "the view stays where the flick took it")
            fuzzyCompare(area.verticalScrollBar.position, y / 1000, 0.001)
            // And the bar is the master again.
            area.verticalScrollBar.position = 0.1
            fuzzyCompare(area.container.contentY, 100, 0.001)
        }

        readonly property var tree: ({
            text: "root",
            elements: [{ text: "branch", elements: [{ text: "leaf of the branch" }] }, { text: "leaf" }]
        })

        function loadTree(model) {
            const view = load("TreeView")
            view.width = 200
            view.height = 300
            view.model = model
            waitForRows(view, Array.isArray(model) ? model.length : model.count || 1)
            return view
        }

        // All visible texts, top to bottom.
        function texts(item) {
            let found = []
            const visit = function(parent) {
                for (let i = 0; i < parent.children.length; ++i) {
                    const child = parent.children[i]
                    if (child.text !== undefined && child.font !== undefined && child.visible)
                        found.push({ text: child.text, y: child.mapToItem(item, 0, 0).y, item: child })
                    visit(child)
                }
            }
            visit(item)
            return found.sort((a, b) => a.y - b.y)
        }

        // Rows take their places when a frame is made, which may be later than they come.
        function waitForRows(view, count) {
            tryVerify(() => {
                const rows = texts(view)
                return rows.length === count && rows.every((row, i) => i === 0 || row.y > rows[i - 1].y)
            })
        }

        function test_treeOfNothingShowsNothing() {
            const view = load("TreeView")
            view.model = null
            wait(0)
            compare(texts(view).length, 0)
        }

        function test_treeShowsItsRootAsOneRowAndAnArrayAsSeveral() {
            const view = loadTree(tree)
            compare(texts(view).map(row => row.text), ["root"])
            view.model = tree.elements
            compare(texts(view).map(row => row.text), ["branch", "leaf"])
        }

        function test_expandingOpensOnlyRowsThatExist() {
            const view = loadTree(tree)
            view.expanded = true
            tryVerify(() => texts(view).length === 3)
            compare(texts(view).map(row => row.text), ["root", "branch", "leaf"])
            view.expanded = false
            tryVerify(() => texts(view).length === 1)
            view.expanded = true
            view.expanded = false
            view.expanded = true
            compare(texts(view).map(row => row.text), ["root", "branch", "leaf"])
        }

        function test_aPressSelectsARowOverTheFullWidth() {
            const view = loadTree(tree.elements)
            const row = texts(view)[1]
            mouseClick(view, 150, row.y + 10)
            compare(view.currentNode, tree.elements[1])
            verify(view.currentNode === tree.elements[1])
            compare(row.item.color, "#ffffff")
            // Right of the text, where the content has ended long since; on a busy machine not yet in the next frame.
            const shown = () => Qt.colorEqual(grabImage(view).pixel(190, row.y + 12), "#4682b4")
            tryVerify(shown)
        }

        function test_aNestedRowIsSelectedFromEdgeToEdge() {
            const view = loadTree(tree.elements)
            mouseDoubleClickSequence(view, 150, texts(view)[0].y + 10)
            waitForRows(view, 3)
            const row = texts(view)[1]
            compare(row.text, "leaf of the branch")
            mouseClick(view, 150, row.y + 10)
            verify(view.currentNode === tree.elements[0].elements[0])
            for (const x of [1, 190])
                tryVerify(() => Qt.colorEqual(grabImage(view).pixel(x, row.y + 12), "#4682b4"))
        }

        function test_aDoubleClickOpensABranchAndCreatesNothingBelowALeaf() {
            const view = loadTree(tree.elements)
            let rows = texts(view)
            mouseDoubleClickSequence(view, 150, rows[1].y + 10)
            verify(view.currentItem.expanded)
            compare(view.currentItem.item, null)
            compare(texts(view).length, 2)
            rows = texts(view)
            mouseDoubleClickSequence(view, 150, rows[0].y + 10)
            waitForRows(view, 3)
            compare(texts(view).map(row => row.text), ["branch", "leaf of the branch", "leaf"])
        }

        ListModel {
            id: listModel
            ListElement { text: "first" }
            ListElement { text: "second" }
        }

        function test_aListModelGivesItsRows() {
            const view = loadTree(listModel)
            compare(texts(view).map(row => row.text), ["first", "second"])
        }
    }
}
