// DrawableTextArea as a client's QML meets it: bindings, keys, mentions, lists and items that go away.

import QtQuick 2.15
import QtTest 1.15
import com.ostrel.im.component 1.0

Item {
    id: root

    width: 400
    height: 300

    Component {
        id: boxComponent

        DrawableTextArea {
            width: 300
            height: 200
            font.pixelSize: 20
            aiteEnabled: true
            hashTagEnabled: true
            visualWidth: width
            visualHeight: height
            aiteNameFunction: (json, text) => "@" + JSON.parse(json).userId
        }
    }

    Component {
        id: draftComponent

        DrawableTextArea {
            content: "draft one"
            maxCharacterCount: 20
            maxContinuousReturn: 2
        }
    }

    Component {
        id: limitedComponent

        DrawableTextArea {
            validator: RegExpValidator {
                regExp: /[a-z\s]*/
            }
        }
    }

    Component {
        id: messageComponent

        DrawableText {
            maxWidth: 300
            mouseEnabled: true
        }
    }

    SignalSpy {
        id: spy
    }

    TestCase {
        name: "DrawableTextArea"
        when: windowShown

        function make(component, properties) {
            const item = createTemporaryObject(component, root, properties || {});
            verify(item);
            item.forceActiveFocus();
            return item;
        }

        function watch(item, signalName) {
            spy.target = null;
            spy.signalName = signalName;
            spy.target = item;
            spy.clear();
        }

        function type(text) {
            for (const letter of text)
                keyClick(letter);
        }

        function test_typedTextIsContent() {
            const box = make(boxComponent);
            watch(box, "contentChanged");
            type(" hi there ");
            compare(box.content, "hi there");
            compare(box.untrimmedContent, " hi there ");
            verify(spy.count >= 8);
        }

        function test_contentMayBeSetFromTheStart() {
            const box = make(draftComponent);
            compare(box.content, "draft one");
            compare(box.canUndo, false);
            box.content = "draft two";
            compare(box.content, "draft two");
        }

        function test_initialPropertiesInAnyOrder() {
            for (const properties of [{content: "a \u{1F600}", aiteEnabled: true, maxCharacterCount: 9},
                                      {maxCharacterCount: 9, aiteEnabled: true, content: "a \u{1F600}"},
                                      {visualWidth: NaN, content: "a \u{1F600}", visualTo: 99, aiteFrom: 99}]) {
                const box = make(boxComponent, properties);
                compare(box.content, "a \u{1F600}");
                compare(box.length, 3);
            }
        }

        function test_aMentionIsChosenFromTheWordInProgress() {
            const box = make(boxComponent);
            watch(box, "aiteDetected");
            type("hi @an");
            compare(spy.signalArguments[spy.count - 1][0], "@an");
            compare(spy.signalArguments[spy.count - 1][1], true);
            box.select(box.aiteFrom, box.aiteFrom + box.aiteLen);
            box.insertAite("@Ann", {userId: 7, aiteNick: "@Ann"});
            compare(box.untrimmedContent, "hi @Ann ");
            compare(box.aiteList().length, 1);
            compare(box.aiteList()[0].userId, 7);
            compare(spy.signalArguments[spy.count - 1][1], false);
            keyClick(Qt.Key_Backspace);
            keyClick(Qt.Key_Backspace);
            compare(box.untrimmedContent, "hi ");
        }

        function test_aMessageTravelsToTheView() {
            const box = make(boxComponent);
            box.insertText("\u{1F600} ");
            box.insertAite("@Ann", {userId: 7, aiteNick: "@Ann"});
            compare(box.aiteData.length, 1);
            compare(box.aiteData[0].start, 3);
            compare(box.aiteData[0].length, 4);
            compare(box.aiteData[0].type, 3);
            compare(box.aiteData[0].data, 7);
            const message = make(messageComponent, {text: box.content, userBlocks: box.aiteData});
            message.selectAll();
            message.copy();
            const answer = make(boxComponent);
            keySequence("Ctrl+V");
            compare(answer.content, "\u{1F600} @7");
            compare(answer.aiteList().length, 1);
        }

        function test_blocksOfAScriptRestoreAMessage() {
            const box = make(boxComponent);
            box.userBlocks = [{start: 3, length: 4, type: 3, data: 9}];
            box.content = "hi @Ann!";
            compare(box.content, "hi @9!");
            compare(box.aiteList()[0].aiteNick, "@9");
        }

        function test_aValidatorOfQmlRefusesSilently() {
            const box = make(limitedComponent);
            watch(box, "invalidInput");
            type("ab1 c");
            compare(box.content, "ab c");
            compare(spy.count, 0);
            box.validator = null;
            type("1");
            compare(box.content, "ab c1");
        }

        function test_aDestroyedValidatorRefusesNothing() {
            const box = make(limitedComponent);
            box.validator.destroy();
            wait(0);
            tryCompare(box, "validator", null);
            type("1");
            compare(box.content, "1");
        }

        function test_aNameFunctionMayDestroyTheBox() {
            const box = boxComponent.createObject(root);
            box.insertAite("@Ann", {userId: 7, aiteNick: "@Ann"});
            box.selectAll();
            box.copy();
            box.aiteNameFunction = (json, text) => { box.destroy(); return "@x"; };
            box.paste();
            compare(box.content, "@x");
            wait(0);
        }

        function test_emojiAreInsertedByKeyAndListed() {
            const box = make(boxComponent);
            box.insertEmojiByUnicode("1f600");
            box.insertEmojiByUnicode("1f44d");
            box.insertEmojiByUnicode("1f600");
            compare(box.content, "\u{1F600}\u{1F44D}\u{1F600}");
            compare(box.latestEmojis().map(emoji => emoji.unicode), ["1f600", "1f44d"]);
            compare(box.realCursorPos(), 6);
        }

        function test_theLimitIsSignalled() {
            const box = make(draftComponent, {content: ""});
            watch(box, "maxCharacterCountReached");
            box.insertText("0123456789012345678901234");
            compare(box.content.length, 20);
            compare(spy.count, 1);
            type("x");
            compare(spy.count, 2);
        }

        function test_aRightClickAsksForAMenu() {
            const box = make(boxComponent, {content: "abc"});
            watch(box, "customContextMenuRequested");
            mouseClick(box, 5, 5, Qt.RightButton);
            compare(spy.count, 1);
            compare(spy.signalArguments[0][0].length, 0);
            compare(spy.signalArguments[0][1], false);
        }

        function test_theTabKeyStaysInTheBox() {
            const box = make(boxComponent);
            const next = make(boxComponent);
            box.forceActiveFocus();
            keyClick(Qt.Key_Tab);
            verify(box.activeFocus);
            compare(box.content, "");
        }
    }
}
