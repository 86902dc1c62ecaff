// DrawableText as a client's document meets it: properties, enumerations, bindings, lists of blocks.

import QtQuick 2.15
import QtTest 1.2
import com.ostrel.im.component 1.0

Item {
    id: scene

    width: 400
    height: 300

    Component {
        id: plain

        DrawableText {}
    }

    Component {
        id: message

        DrawableText {
            maxWidth: 200
            text: "a message"
        }
    }

    Component {
        id: configured

        DrawableText {
            text: "many words that need more than one line\nand one more"
            font.pixelSize: 20
            font.family: "serif"
            color: "red"
            linkColor: "#00ff00"
            elide: Text.ElideRight
            wrapMode: DrawableText.WordWrap
            alignment: Qt.AlignRight
            maximumLineCount: 2
            maxWidth: 150
            padding: 4
            previewSize: "30x40"
            textCursorShape: Qt.IBeamCursor
            userBlocks: [{ "start": 0, "length": 4, "type": 1, "data": "https://example.org" }]
        }
    }

    Component {
        id: bound

        Item {
            property alias text: inner.text
            property alias item: inner
            property int layouts: 0
            property string elided

            DrawableText {
                id: inner

                maxWidth: parent.width - 20
                maximumLineCount: 1
                elide: Text.ElideRight
                font.bold: true
                onLineCountChanged: parent.layouts += 1
                onElidedTextChanged: parent.elided = elidedText
            }
        }
    }

    SignalSpy {
        id: spy
    }

    TestCase {
        name: "DrawableTextEngine"
        when: windowShown

        function test_propertyHasItsDefault_data() {
            return [
                { tag: "text", value: "" },
                { tag: "color", value: "#000000" },
                { tag: "linkColor", value: "#0000ff" },
                { tag: "textBlockColor", value: "#0000ff" },
                { tag: "bubbleColor", value: "#00000000" },
                { tag: "highlightColor", value: "#00000000" },
                { tag: "highlightBgColor", value: "#00000000" },
                { tag: "selectionColor", value: "#0000ff" },
                { tag: "selectedTextColor", value: "#ffffff" },
                { tag: "elide", value: Text.ElideNone },
                { tag: "elideText", value: "\u2026" },
                { tag: "elidedText", value: "" },
                { tag: "wrapMode", value: DrawableText.WrapAtWordBoundaryOrAnywhere },
                { tag: "alignment", value: Qt.AlignLeft },
                { tag: "maximumLineCount", value: -1 },
                { tag: "lineCount", value: 0 },
                { tag: "reservedWidth", value: 0 },
                { tag: "fixedWidth", value: -1 },
                { tag: "maxWidth", value: -1 },
                { tag: "multilineMinWidth", value: -1 },
                { tag: "textIndent", value: 0 },
                { tag: "leading", value: 0 },
                { tag: "tabWidth", value: 30 },
                { tag: "padding", value: 0 },
                { tag: "leftPadding", value: 0 },
                { tag: "topPadding", value: 0 },
                { tag: "rightPadding", value: 0 },
                { tag: "bottomPadding", value: 0 },
                { tag: "textHeight", value: 0 },
                { tag: "selectionCornerRadius", value: 2 },
                { tag: "highlightText", value: "" },
                { tag: "onlyHighlightFirstMatchedEnabled", value: false },
                { tag: "userBlockBold", value: false },
                { tag: "reserveSpace", value: false },
                { tag: "willChangeLineMode", value: false },
                { tag: "treatReturnAsSpace", value: false },
                { tag: "emojiEnabled", value: true },
                { tag: "linkEnabled", value: false },
                { tag: "aiteEnabled", value: false },
                { tag: "hashTagEnabled", value: false },
                { tag: "mouseEnabled", value: false },
                { tag: "selectByMouse", value: false },
                { tag: "dragEnabled", value: false },
                { tag: "doubleClickEnabled", value: true },
                { tag: "selectionStart", value: -1 },
                { tag: "selectionEnd", value: -1 },
                { tag: "selectType", value: 1 },
                { tag: "selectedText", value: "" },
                { tag: "textCursorShape", value: 0 },
                { tag: "previewSize", value: Qt.size(0, 0) }
            ];
        }

        function test_propertyHasItsDefault(row) {
            const item = createTemporaryObject(plain, scene);
            verify(item);
            // Colours are values of their own kind; as text they compare.
            if (typeof row.value === "string")
                compare(item[row.tag].toString(), row.value);
            else
                compare(item[row.tag], row.value);
        }

        function test_wrapModesAreNamed() {
            compare(DrawableText.NoWrap, 0);
            compare(DrawableText.WordWrap, 1);
            compare(DrawableText.ManualWrap, 2);
            compare(DrawableText.WrapAnywhere, 3);
            compare(DrawableText.WrapAtWordBoundaryOrAnywhere, 4);
            compare(DrawableText.WrapAtWordBoundaryOrAnywhere, Text.WrapAtWordBoundaryOrAnywhere);
        }

        function test_everythingCanBeSetInADocument() {
            const item = createTemporaryObject(configured, scene);
            verify(item);
            compare(item.font.pixelSize, 20);
            compare(item.font.family, "serif");
            compare(item.color.toString(), "#ff0000");
            compare(item.linkColor.toString(), "#00ff00");
            compare(item.elide, Text.ElideRight);
            compare(item.wrapMode, DrawableText.WordWrap);
            compare(item.alignment, Qt.AlignRight);
            compare(item.maximumLineCount, 2);
            compare(item.maxWidth, 150);
            compare(item.padding, 4);
            compare(item.previewSize, Qt.size(30, 40));
            compare(item.textCursorShape, Qt.IBeamCursor);
            compare(item.lineCount, 2);
            verify(item.elidedText.endsWith("\u2026"));
        }

        function test_itemIsAsLargeAsItsTextOnceItIsMade() {
            const item = createTemporaryObject(message, scene);
            compare(item.lineCount, 1);
            verify(item.width > 0 && item.width <= 200);
            compare(item.height, item.textHeight);
            compare(item.implicitWidth, item.width);
            compare(item.implicitHeight, item.height);
            compare(item.text, "a message");
            compare(item.plainText(), "a message");
        }

        function test_withoutAWidthNothingIsLaidOut() {
            const item = createTemporaryObject(plain, scene, { text: "a\nb", color: "red" });
            compare(item.lineCount, 0);
            compare(item.width, 0);
            compare(item.height, 0);
            item.maxWidth = -5;
            compare(item.maxWidth, 0);
            compare(item.lineCount, 0);
            item.maxWidth = 100;
            compare(item.lineCount, 2);
        }

        function test_changeIsAnnouncedWithTheNewValue_data() {
            return [
                { tag: "text", value: "other" },
                { tag: "color", value: "#ff0000" },
                { tag: "elide", value: Text.ElideRight },
                { tag: "alignment", value: Qt.AlignHCenter },
                { tag: "maximumLineCount", value: 3 },
                { tag: "maxWidth", value: 99.5 },
                { tag: "leading", value: 2.5 },
                { tag: "highlightText", value: "mess" },
                { tag: "mouseEnabled", value: true },
                { tag: "doubleClickEnabled", value: false },
                { tag: "previewSize", value: Qt.size(3, 4) }
            ];
        }

        function test_changeIsAnnouncedWithTheNewValue(row) {
            const item = createTemporaryObject(message, scene);
            spy.target = item;
            spy.signalName = row.tag + "Changed";
            spy.clear();
            item[row.tag] = row.value;
            compare(spy.count, 1);
            if (typeof row.value === "string")
                compare(spy.signalArguments[0][0].toString(), row.value);
            else
                compare(spy.signalArguments[0][0], row.value);
            item[row.tag] = row.value;
            compare(spy.count, 1);
            spy.target = null;
        }

        function test_bindingsFollowTheItemAndTheItemFollowsThem() {
            const holder = createTemporaryObject(bound, scene, { width: 120, text: "some words that do not fit there" });
            verify(holder.item.elidedText.endsWith("\u2026"));
            const narrow = holder.item.elidedText;
            tryCompare(holder, "elided", narrow);
            holder.width = 1000;
            compare(holder.item.elidedText, "some words that do not fit there");
            tryCompare(holder, "elided", "some words that do not fit there");
            verify(holder.item.width < 1000);
            holder.width = 120;
            compare(holder.item.elidedText, narrow);
            const layouts = holder.layouts;
            holder.item.font.pixelSize = 31;
            compare(holder.layouts, layouts + 1);
            verify(holder.item.font.bold);
        }

        function test_blocksAreGivenAsAListOfMaps() {
            const item = createTemporaryObject(message, scene);
            spy.target = item;
            spy.signalName = "userBlocksChanged";
            spy.clear();
            item.userBlocks = [
                { "start": 2, "length": 7, "type": 3, "data": { "id": 7, "name": "Ann" } },
                { "start": 0, "length": 1, "type": 1, "data": "https://example.org" }
            ];
            compare(spy.count, 1);
            item.userBlocks = [];
            compare(spy.count, 2);
            item.userBlocks = "no list";
            compare(spy.count, 2);
            item.userBlocks = undefined;
            compare(spy.count, 2);
            spy.target = null;
        }

        function test_blocksGoFromItemToItem() {
            const first = createTemporaryObject(message, scene, {
                userBlocks: [{ "start": 2, "length": 7, "type": 1, "data": "x" }]
            });
            const second = createTemporaryObject(message, scene);
            spy.target = second;
            spy.signalName = "userBlocksChanged";
            spy.clear();
            second.userBlocks = first.userBlocks;
            compare(spy.count, 1);
            second.userBlocks = first.userBlocks;
            compare(spy.count, 1);
            spy.target = null;
        }

        function test_pointerShapeIsAnnouncedAtEachSetting() {
            const item = createTemporaryObject(message, scene);
            spy.target = item;
            spy.signalName = "textCursorShapeChanged";
            spy.clear();
            item.textCursorShape = Qt.IBeamCursor;
            item.textCursorShape = Qt.IBeamCursor;
            compare(spy.count, 2);
            compare(item.textCursorShape, Qt.IBeamCursor);
            spy.target = null;
        }

        function test_methodsCanBeCalled() {
            const item = createTemporaryObject(message, scene);
            item.addTextBlock(0, 0, "data");
            item.addTextBlock(0, 0, { "id": 7 }, 3);
            item.setText("set by its slot");
            compare(item.text, "set by its slot");
            item.deselect();
            item.recalculateAllAiteInfos();
            compare(item.aiteClipboardData(), "");
            compare(item.plainText(), "set by its slot");
        }

        function test_tabsAndLineEndsReadBackAsTheyAreStored() {
            const item = createTemporaryObject(message, scene);
            item.text = "a\tb\r\nc";
            compare(item.text, "a\tb\n\nc");
            compare(item.lineCount, 3);
        }

        function test_longTextKeepsThePreviewSizeUntilItIsLaidOut() {
            const item = createTemporaryObject(message, scene, { previewSize: Qt.size(50, 60) });
            item.text = "word ".repeat(200);
            compare(item.width, 50);
            compare(item.height, 60);
            compare(item.implicitWidth, 50);
            tryVerify(() => item.lineCount > 10, 30000);
            verify(item.width > 150 && item.width <= 200);
        }

        function test_longTextOfANewItemIsLaidOutAtOnce() {
            const item = createTemporaryObject(message, scene, { text: "word ".repeat(200) });
            tryVerify(() => item.lineCount > 10, 30000);
            compare(item.text, "word ".repeat(200));
        }
    }
}
