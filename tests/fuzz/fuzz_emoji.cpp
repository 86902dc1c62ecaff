// Emoji in any text: what the parser finds, what collapsing makes of it, and how prefixes count.

#include "fuzzinput.h"

#include "text/drawabletextprivate.h"
#include "text/emojitext.h"
#include "text/literalrules.h"

#include <emoji/emojiparser.h>

using namespace drawabletext;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = FuzzInput(data, size).text();

    int behind = 0;
    const auto candidates = EmojiParser().emojiIndexes(text);
    for (const auto &candidate : candidates) {
        require(candidate.first >= behind && candidate.second > 0, "emoji ascend without overlap");
        behind = candidate.first + candidate.second;
        require(behind <= text.size(), "emoji end within the text");
        const QString known = knownEmojiForm(text.mid(candidate.first, candidate.second));
        require(!known.isEmpty(), "what the parser finds is known in some form");
        require(!EmojiConvert::instance()->emojiUnicode(known).isEmpty(), "what is known has a key");
    }

    const EmojiPrefixes prefixes(text);
    for (int length = -1; length <= text.size() + 1; ++length)
        require(prefixes.excess(length) == emojiExcess(text.mid(0, length)),
                "prefixes count as parsed alone");

    DrawableTextPrivate state;
    state.paragraphs = QStringList{text};
    state.spans.resize(1);
    collapseEmoji(state);
    QString literal = text;
    const QVector<EmojiRecord> records = literalrules::collapse(literal);
    require(state.paragraphs.constFirst() == literal, "collapsing equals replacing one by one");
    require(state.emojis.constFirst().size() == records.size(), "each replacement has a record");
    for (int i = 0; i < records.size(); ++i) {
        require(state.emojis.constFirst().at(i).pos == records.at(i).pos, "records know their place");
        require(state.emojis.constFirst().at(i).text == records.at(i).text, "records know their text");
        require(state.emojis.constFirst().at(i).unicode == records.at(i).unicode, "records know their key");
    }
    return 0;
}
