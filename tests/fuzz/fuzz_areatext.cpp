// Texts on their way into the input box, with mentions wherever a clipboard may claim them.

#include "fuzzinput.h"

#include "text/placeholders.h"
#include "textarea/areatext.h"

namespace {

void cutIntoPieces(FuzzInput &input, const QString &text)
{
    QVector<TextSpan> mentions;
    for (int count = input.byte() % 8; count > 0; --count) {
        const int from = input.position();
        mentions.append({from, input.position(), QVariant(count), SpanAite});
    }
    QString whole;
    for (const areatext::Piece &piece : areatext::pieces(text, mentions)) {
        require(!piece.text.isEmpty(), "no piece is empty");
        whole += piece.text;
    }
    require(whole == text, "each character is in one piece");
}

void prepare(const QString &text)
{
    const QString normalised = areatext::normalised(text);
    require(normalised.size() == text.size(), "normalising changes characters one for one");
    const areatext::Prepared prepared = areatext::prepared(normalised);
    QString whole;
    int index = 0;
    for (const QChar c : prepared.text) {
        if (c != emojiPlaceholder) {
            whole += c;
            continue;
        }
        require(index < prepared.emojis.size(), "each placeholder has an entry");
        const auto &emoji = prepared.emojis.at(index++);
        whole += emoji ? emoji->source : QString(c);
    }
    require(index == prepared.emojis.size(), "each entry has a placeholder");
    require(whole == normalised, "emoji keep their sources");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzInput input(data, size);
    const QString text = input.shortText();
    cutIntoPieces(input, text);
    prepare(text);

    const int limit = input.byte() % 5;
    require(areatext::withLimitedReturns(text, limit).size() <= text.size(), "a limit adds nothing");
    const areatext::Trimmed trimmed = areatext::trimmed(text);
    require(text.mid(trimmed.leftCut, trimmed.text.size()) == trimmed.text, "what is left stood there");
    const int head = areatext::wordHeadLength(text);
    require(head <= text.size() && (head > 0 || text.isEmpty()), "some of a text goes, and no more than all");
    return 0;
}
