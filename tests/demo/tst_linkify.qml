import QtQuick 2.15
import QtTest 1.15
import "../../demo/qml/model/linkify.js" as Linkify
import "../../demo/qml/model/people.js" as People

TestCase {
    name: "linkify"

    // Each block as its type and the words that it covers.
    function found(text) {
        return Linkify.blocks(text).map(block => block.type + ":" + text.substr(block.start, block.length)).join(" | ")
    }

    function test_blocksCoverWhatAReaderWouldPress_data() {
        return [
            { tag: "nothing", text: "plain words, 3 # 4 @ 5", blocks: "" },
            { tag: "link", text: "see https://example.org/a?b=1#c now", blocks: "1:https://example.org/a?b=1#c" },
            { tag: "link at the end of a sentence", text: "see https://example.org/a.", blocks: "1:https://example.org/a" },
            { tag: "link in parentheses", text: "(http://example.org/a)", blocks: "1:http://example.org/a" },
            { tag: "link with a pair of its own", text: "https://example.org/K_(t)", blocks: "1:https://example.org/K_(t)" },
            { tag: "link without scheme", text: "www.example.org, yes", blocks: "1:www.example.org" },
            { tag: "link before a full-width comma", text: "看 https://example.org/路\uff0c好", blocks: "1:https://example.org/路" },
            { tag: "link before an ideographic stop", text: "看 https://example.org/路。好", blocks: "1:https://example.org/路" },
            { tag: "e-mail", text: "write to a.b+c@mail.example.org.", blocks: "2:a.b+c@mail.example.org" },
            { tag: "mention", text: "hi @Bob!", blocks: "3:@Bob" },
            { tag: "mention of a longer word", text: "@Bobby", blocks: "" },
            { tag: "mention inside a word", text: "x@Bob", blocks: "" },
            { tag: "mention of a name without spaces around", text: "请@李梅看", blocks: "3:@李梅" },
            { tag: "two mentions", text: "@Bob @Alice", blocks: "3:@Bob | 3:@Alice" },
            { tag: "tag", text: "#aurora-2, then", blocks: "6:#aurora-2" },
            { tag: "tag of another script", text: "见 #文档", blocks: "6:#文档" },
            { tag: "hash inside a word", text: "a#b", blocks: "" },
            { tag: "keycap emoji", text: "#️⃣ 1", blocks: "" },
            { tag: "tag inside a link", text: "https://example.org/#top", blocks: "1:https://example.org/#top" },
            { tag: "behind an emoji", text: "🎉 #yes", blocks: "6:#yes" },
            { tag: "on a second line", text: "a\n@Bob", blocks: "3:@Bob" },
        ]
    }

    function test_blocksCoverWhatAReaderWouldPress(data) {
        compare(found(data.text), data.blocks)
    }

    function test_aMentionCarriesTheNumberOfThePerson() {
        compare(Linkify.blocks("@Bob")[0].data, People.everyone.find(person => person.name === "Bob").id)
    }

    function test_inBandBlockIsMarkedJson() {
        const block = Linkify.inBand("Ann", 7, Linkify.kind.mention)
        compare(block[0], "\u0001")
        compare(block[block.length - 1], "\u0002")
        const content = JSON.parse(block.slice(1, -1))
        compare(content.displayName, "Ann")
        compare(content.data, 7)
        compare(content.type, 3)
    }

    function test_previewIsOneShortLine_data() {
        return [
            { tag: "line ends", text: " a\n\nb\tc ", preview: "a b c" },
            { tag: "in-band block", text: Linkify.inBand("Ann", 7, 3) + " came", preview: "Ann came" },
            { tag: "long", text: "x".repeat(5000), preview: "x".repeat(200) },
            { tag: "cut inside a pair", text: "x".repeat(199) + "🎉", preview: "x".repeat(199) },
        ]
    }

    function test_previewIsOneShortLine(data) {
        compare(Linkify.preview(data.text), data.preview)
    }

    function test_initials_data() {
        return [
            { tag: "one word", name: "Alice", initials: "A" },
            { tag: "two words", name: "Aurora design", initials: "AD" },
            { tag: "word and emoji", name: "Hiking 🥾", initials: "H" },
            { tag: "ideographs", name: "李梅", initials: "李" },
            { tag: "empty", name: " ", initials: "?" },
        ]
    }

    function test_initials(data) {
        compare(People.initials(data.name), data.initials)
    }
}
