// DrawableText as a client's QML meets it: clicks, selections, copies, lists, and items that go away.

import QtQuick 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

Item {
    id: root

    width: 400
    height: 300

    Component {
        id: messageComponent

        DrawableText {
            font.pixelSize: 20
            mouseEnabled: true
            selectByMouse: true
            maxWidth: 360
        }
    }

    Component {
        id: listComponent

        ListView {
            id: list

            property bool selectable: true

            width: 400
            height: 200
            clip: true
            model: 40
            delegate: DrawableText {
                text: "message number " + index
                font.pixelSize: 20
                mouseEnabled: list.selectable
                selectByMouse: list.selectable
                maxWidth: 360
            }
        }
    }

    Component {
        id: editorComponent

        TextEdit {}
    }

    SignalSpy {
        id: spy
    }

    TextMetrics {
        id: metrics

        font.pixelSize: 20
    }

    TestCase {
        id: test

        name: "DrawableTextView"
        when: windowShown

        function make(properties) {
            const item = createTemporaryObject(messageComponent, root, properties);
            verify(item);
            return item;
        }

        // The middle of the character at `index` of a text's first line.
        function spot(item, index) {
            metrics.font = item.font;
            metrics.text = item.plainText().slice(0, index);
            const left = metrics.advanceWidth;
            metrics.text = item.plainText().slice(0, index + 1);
            return Qt.point((left + metrics.advanceWidth) / 2, 10);
        }

        function watch(item, signalName) {
            spy.target = null;
            spy.signalName = "";
            spy.target = item;
            spy.signalName = signalName;
            spy.clear();
        }

        function clipboardText() {
            const editor = createTemporaryObject(editorComponent, root);
            editor.paste();
            return editor.text;
        }

        function test_clickOnABlockSendsItsSignal_data() {
            return [
                {tag: "link", type: 1, data: "x", word: "a.org", signal: "linkActivated", value: "http://a.org"},
                {tag: "e-mail", type: 2, data: "x", word: "b@a.org", signal: "linkActivated",
                 value: "mailto:b@a.org"},
                {tag: "mention", type: 3, data: 42, word: "@Ann", signal: "aiteClick", value: 42},
                {tag: "user id", type: 4, data: "x", word: "@ann", signal: "ostrelIdClick", value: "ann"},
                {tag: "tag", type: 6, data: "x", word: "#fun", signal: "sharpClick", value: "#fun"},
                {tag: "text block", type: 0, data: "more", word: "...", signal: "textBlockClick", value: "more"}
            ];
        }

        function test_clickOnABlockSendsItsSignal(row) {
            const item = make({text: "see " + row.word + " now"});
            item.userBlocks = [{start: 4, length: row.word.length, type: row.type, data: row.data}];
            watch(item, row.signal);
            const inside = spot(item, 5);
            mouseClick(item, inside.x, inside.y);
            compare(spy.count, 1);
            compare(spy.signalArguments[0][0], row.value);
            const outside = spot(item, 1);
            mouseClick(item, outside.x, outside.y);
            compare(spy.count, 1);
        }

        function test_mapOfAMentionComesBackAsAMap() {
            const item = make({text: "@Ann"});
            item.userBlocks = [{start: 0, length: 4, type: 3, data: {userId: "u1", aiteNick: "@Ann"}}];
            watch(item, "aiteClick");
            const inside = spot(item, 1);
            mouseClick(item, inside.x, inside.y);
            compare(spy.count, 1);
            compare(spy.signalArguments[0][0].userId, "u1");
        }

        function test_releaseTellsWhetherABlockTookTheClick() {
            const item = make({text: "see a.org"});
            item.userBlocks = [{start: 4, length: 5, type: 1, data: "x"}];
            watch(item, "mouseRelease");
            let point = spot(item, 1);
            mouseClick(item, point.x, point.y);
            point = spot(item, 5);
            mouseClick(item, point.x, point.y);
            compare(spy.count, 2);
            compare(spy.signalArguments[0][0], false);
            compare(spy.signalArguments[1][0], true);
        }

        function test_dragSelectsAndCopyPutsItOnTheClipboard() {
            const item = make({text: "hello world"});
            const from = spot(item, 6);
            const to = spot(item, 10);
            mouseDrag(item, from.x - 3, from.y, to.x - from.x + 6, 0);
            compare(item.selectedText, "world");
            compare(item.selectionStart, -1);
            compare(item.selectionEnd, -1);
            item.copy();
            compare(clipboardText(), "world");
            item.deselect();
            compare(item.selectedText, "");
            item.copy();
            compare(clipboardText(), "world");
        }

        function test_doubleClickSelectsAWordAndAThirdOneEverything() {
            const item = make({text: "hello world"});
            const point = spot(item, 7);
            mouseDoubleClickSequence(item, point.x, point.y);
            compare(item.selectedText, "world");
            mouseClick(item, point.x, point.y);
            compare(item.selectedText, "hello world");
        }

        function test_rightClickSelectsALinkAndNamesItsKind() {
            const item = make({text: "see a.org now"});
            item.userBlocks = [{start: 4, length: 5, type: 1, data: "x"}];
            let point = spot(item, 6);
            mouseClick(item, point.x, point.y, Qt.RightButton);
            compare(item.selectedText, "a.org");
            compare(item.selectType, 4);
            point = spot(item, 1);
            mouseClick(item, point.x, point.y, Qt.RightButton);
            compare(item.selectedText, "a.org");
        }

        function test_keysSelectAndCopy() {
            const item = make({text: "hello world"});
            item.forceActiveFocus();
            keyClick(Qt.Key_A, Qt.ControlModifier);
            compare(item.selectedText, "hello world");
            keyClick(Qt.Key_C, Qt.ControlModifier);
            compare(clipboardText(), "hello world");
        }

        function test_selectAllTellsDisplayNamesOfBlocksInsideTheText() {
            const item = make({text: "hi \u0001{\"displayName\":\"Ann\",\"data\":7,\"type\":3}\u0002!"});
            watch(item, "selectedTextChanged");
            item.selectAll();
            compare(spy.count, 1);
            compare(spy.signalArguments[0][0], "hi Ann!");
            verify(item.aiteClipboardData() !== "");
        }

        function test_selectionDragDoesNotScrollTheList() {
            const list = createTemporaryObject(listComponent, root);
            waitForRendering(list);
            const item = list.itemAtIndex(5);
            verify(item);
            mouseDrag(item, 10, 10, 60, -90, Qt.LeftButton, Qt.NoModifier, 20);
            compare(list.contentY, 0);
            verify(item.selectedText !== "");
            // The same drag scrolls where the text takes no presses.
            list.selectable = false;
            mouseDrag(item, 10, 10, 60, -90, Qt.LeftButton, Qt.NoModifier, 20);
            tryVerify(() => list.contentY > 0);
        }

        function test_dragBesideTheTextScrollsTheList() {
            const list = createTemporaryObject(listComponent, root);
            waitForRendering(list);
            const item = list.itemAtIndex(5);
            verify(item.width < 300);
            mouseDrag(list, 350, 180, 0, -120, Qt.LeftButton, Qt.NoModifier, 20);
            tryVerify(() => list.contentY > 0);
        }

        function test_reusedItemStartsWithoutASelection() {
            const item = make({text: "hello world"});
            item.selectAll();
            item.text = "another message";
            const reused = grabImage(item);
            item.visible = false;
            const clean = make({text: "another message"});
            verify(reused.equals(grabImage(clean)));
            clean.selectAll();
            verify(!reused.equals(grabImage(clean)));
        }

        function test_handlerMayDestroyTheItem_data() {
            return [{tag: "link", signal: "linkActivated"}, {tag: "release", signal: "mouseRelease"},
                    {tag: "selection", signal: "selectedTextChanged"}];
        }

        function test_handlerMayDestroyTheItem(row) {
            const item = messageComponent.createObject(root, {text: "a.org"});
            item.userBlocks = [{start: 0, length: 5, type: 1, data: "x"}];
            item.selectAll();
            let destroyed = false;
            item.Component.destruction.connect(() => destroyed = true);
            item[row.signal].connect(() => item.destroy());
            const point = spot(item, 2);
            mouseClick(item, point.x, point.y);
            tryVerify(() => destroyed);
            // What comes next in the window still gets the mouse.
            const next = make({text: "hello world"});
            mouseDoubleClickSequence(next, 10, 10);
            compare(next.selectedText, "hello");
        }

        function test_itemMayBeDestroyedDuringASelectionDrag() {
            const item = messageComponent.createObject(root, {text: "hello world"});
            mousePress(item, 5, 10);
            mouseMove(item, 30, 10);
            mouseMove(item, 60, 10);
            item.destroy();
            wait(0);
            mouseRelease(root, 60, 10);
            const next = make({text: "hello world"});
            mouseDoubleClickSequence(next, 10, 10);
            compare(next.selectedText, "hello");
        }

        function test_longTextAnswersToClicksOnceItIsLaidOut() {
            const item = messageComponent.createObject(root);
            item.userBlocks = [{start: 0, length: 5, type: 1, data: "x"}];
            item.text = "a.org" + " word".repeat(200);
            tryVerify(() => item.lineCount > 5, 10000);
            watch(item, "linkActivated");
            mouseClick(item, 20, 10);
            compare(spy.count, 1);
            item.selectAll();
            compare(item.selectedText, item.text);
            item.destroy();
        }
    }
}
