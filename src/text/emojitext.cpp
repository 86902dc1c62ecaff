#include "emojitext.h"

#include "drawabletextprivate.h"
#include "perparagraph.h"
#include "placeholders.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojiparser.h>

#include <algorithm>

namespace drawabletext {
namespace {

using EmojiIndexes = QVector<QPair<int, int>>;

const QChar zeroWidthJoiner = QChar(0x200D);
const QChar keycap = QChar(0x20E3);
const QChar textSelector = QChar(0xFE0E);
const QChar emojiSelector = QChar(0xFE0F);

int totalExcess(const EmojiIndexes &emojis)
{
    int excess = 0;
    for (const auto &emoji : emojis)
        excess += emoji.second - 1;
    return excess;
}

/// The code point at `position`; a lone surrogate stands for itself.
uint codePointAt(const QString &text, int position)
{
    const QChar unit = text.at(position);
    if (unit.isHighSurrogate() && position + 1 < text.size() && text.at(position + 1).isLowSurrogate())
        return QChar::surrogateToUcs4(unit, text.at(position + 1));
    return unit.unicode();
}

bool isFlagLetter(uint codePoint)
{
    return codePoint >= 0x1F1E6 && codePoint <= 0x1F1FF;
}

bool isSkinTone(uint codePoint)
{
    return codePoint >= 0x1F3FB && codePoint <= 0x1F3FF;
}

bool isTag(uint codePoint)
{
    return codePoint >= 0xE0020 && codePoint <= 0xE007F;
}

/// Whether no emoji reaches over `position`, now or with anything cut off behind it: then the text in front
/// of it and the text behind it parse apart as they do together. May deny where it is so.
bool partsParseAlone(const QString &text, int position)
{
    if (position <= 0 || position >= text.size())
        return true;
    const QChar next = text.at(position);
    if (next.isLowSurrogate() || next == zeroWidthJoiner || next == keycap || next == textSelector ||
        next == emojiSelector) {
        return false;
    }
    if (next.isHighSurrogate()) {
        const uint codePoint = codePointAt(text, position);
        if (isFlagLetter(codePoint) || isSkinTone(codePoint) || isTag(codePoint))
            return false;
    }
    int previous = position - 1;
    while (previous >= 0 && text.at(previous) == emojiSelector)
        --previous;
    return previous < 0 || text.at(previous) != zeroWidthJoiner;
}

/// Replaces each known emoji of `text` by one placeholder and tells `found` its position then, its text and
/// its known form.
template <typename Found>
void collapse(QString &text, const EmojiParser &parser, Found found)
{
    const EmojiIndexes candidates = parser.emojiIndexes(text);
    if (candidates.isEmpty())
        return;
    QString collapsed;
    int copied = 0;
    for (const auto &candidate : candidates) {
        const QString emoji = text.mid(candidate.first, candidate.second);
        const QString known = knownEmojiForm(emoji);
        if (known.isEmpty())
            continue;
        collapsed += text.midRef(copied, candidate.first - copied);
        found(collapsed.size(), emoji, known);
        collapsed += emojiPlaceholder;
        copied = candidate.first + candidate.second;
    }
    if (copied == 0)
        return;
    collapsed += text.midRef(copied);
    text = collapsed;
}

} // namespace

int emojiExcess(const QString &text)
{
    return totalExcess(EmojiParser(nullptr).emojiIndexes(text));
}

EmojiPrefixes::EmojiPrefixes(const QString &text)
    : text(text)
    , emojis(EmojiParser(nullptr).emojiIndexes(text))
{
    excessBefore.reserve(emojis.size() + 1);
    int excess = 0;
    for (const auto &emoji : qAsConst(emojis)) {
        excessBefore.append(excess);
        excess += emoji.second - 1;
    }
    excessBefore.append(excess);
}

int EmojiPrefixes::excess(int length) const
{
    const int end = length < 0 ? text.size() : qMin(length, text.size());
    const auto firstBehind =
        std::lower_bound(emojis.cbegin(), emojis.cend(), end,
                         [](const QPair<int, int> &emoji, int position) { return emoji.first < position; });

    // The parser takes the letters of flags in pairs, from the left: a run of flags comes apart where it
    // found one, though no letter tells by itself.
    int leastCut = 0;
    if (firstBehind != emojis.cbegin()) {
        const int start = std::prev(firstBehind)->first;
        if (isFlagLetter(codePointAt(text, start)))
            leastCut = start;
    }
    int cut = end;
    while (cut > leastCut && !partsParseAlone(text, cut))
        --cut;

    const auto firstBehindCut =
        std::lower_bound(emojis.cbegin(), firstBehind, cut,
                         [](const QPair<int, int> &emoji, int position) { return emoji.first < position; });
    const int settled = excessBefore.at(int(firstBehindCut - emojis.cbegin()));
    return cut == end ? settled : settled + emojiExcess(text.mid(cut, end - cut));
}

QString knownEmojiForm(const QString &emoji)
{
    const EmojiConvert *convert = EmojiConvert::instance();
    if (convert->containsEmoji(emoji))
        return emoji;
    QString form = emoji;
    form.remove(emojiSelector);
    if (convert->containsEmoji(form))
        return form;
    form.remove(zeroWidthJoiner);
    if (convert->containsEmoji(form))
        return form;
    form = emoji + emojiSelector;
    if (convert->containsEmoji(form))
        return form;
    return {};
}

void collapseEmoji(DrawableTextPrivate &state)
{
    removeSpans(state.spans, SpanEmoji);
    state.emojis = defaultPerParagraph<QVector<EmojiRecord>>(state.paragraphs.size());
    state.emojiCount = 0;

    const EmojiParser parser(nullptr);
    const QRectF rect(0.0, 0.0, state.emojiSize, state.emojiSize);
    for (int paragraph = 0; paragraph < state.paragraphs.size(); ++paragraph) {
        QVector<EmojiRecord> records;
        QString text = state.paragraphs.at(paragraph);
        collapse(text, parser, [&](int position, const QString &emoji, const QString &known) {
            records.append({position, state.emojiCharLength, rect, emoji,
                            EmojiConvert::instance()->emojiUnicode(known)});
        });
        if (records.isEmpty())
            continue;
        state.hasEmoji = true;
        state.emojiCount += records.size();
        state.paragraphs[paragraph] = text;
        QVector<TextSpan> &spans = state.spans[paragraph];
        spans.reserve(spans.size() + records.size());
        for (const EmojiRecord &record : qAsConst(records))
            spans.append({record.pos, record.pos + record.length - 1, QVariant(), SpanEmoji});
        state.emojis[paragraph] = records;
    }
}

QStringList collapseForElide(QString &text)
{
    QStringList emojis;
    collapse(text, EmojiParser(nullptr),
             [&emojis](int, const QString &, const QString &known) { emojis.append(known); });
    return emojis;
}

} // namespace drawabletext
