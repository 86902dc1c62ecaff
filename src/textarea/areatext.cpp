#include "areatext.h"

#include "text/emojitext.h"
#include "text/placeholders.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojiparser.h>

#include <algorithm>
#include <iterator>

namespace areatext {
namespace {

const QLatin1Char lineEnd('\n');

int leadingReturns(const QString &text)
{
    int count = 0;
    while (count < text.size() && text.at(count) == lineEnd)
        ++count;
    return count;
}

int trailingReturns(const QString &text)
{
    int count = 0;
    while (count < text.size() && text.at(text.size() - 1 - count) == lineEnd)
        ++count;
    return count;
}

/// A text with each emoji as one placeholder, and where its parts stand in the text itself.
class CollapsedText
{
public:
    explicit CollapsedText(const QString &source)
        : source(source)
    {
        const EmojiParser parser(nullptr);
        for (const QPair<int, int> &emoji : parser.emojiIndexes(source)) {
            emojis.append({emoji.first - excess, excess});
            excess += emoji.second - 1;
        }
    }

    [[nodiscard]] int length() const { return source.size() - excess; }

    /// The text from `from` to `to`, the latter excluded; both in the text.
    [[nodiscard]] QString part(int from, int to) const
    {
        const int start = sourcePosition(from);
        return source.mid(start, sourcePosition(to) - start);
    }

private:
    struct Emoji
    {
        int position = 0;     ///< with each emoji as one
        int excessBefore = 0; ///< of all emoji before it
    };

    [[nodiscard]] int sourcePosition(int position) const
    {
        const auto next =
            std::lower_bound(emojis.cbegin(), emojis.cend(), position,
                             [](const Emoji &emoji, int position) { return emoji.position < position; });
        return position + (next == emojis.cend() ? excess : next->excessBefore);
    }

    QString source;
    QVector<Emoji> emojis;
    int excess = 0;
};

/// Marks are none, whatever they stand on: a message never starts or ends with one that belongs to a blank.
bool isContent(QChar c)
{
    constexpr ushort privateLogo = 0xF8FF;
    return (c.isPrint() || c == QChar(privateLogo)) && !c.isSpace() && !c.isMark() &&
           c != QChar(QChar::ObjectReplacementCharacter);
}

/// Whether the code point at `index` counts as content, and its length.
bool isContentAt(const QString &text, int index, int *length)
{
    const QChar c = text.at(index);
    *length = 1;
    if (c.isHighSurrogate() && index + 1 < text.size() && text.at(index + 1).isLowSurrogate()) {
        *length = 2;
        const uint codePoint = QChar::surrogateToUcs4(c, text.at(index + 1));
        return QChar::isPrint(codePoint) && !QChar::isSpace(codePoint);
    }
    return isContent(c);
}

} // namespace

QString normalised(QString text)
{
    return text.replace(QLatin1Char('\f'), lineEnd)
        .replace(QChar(QChar::ObjectReplacementCharacter), QChar(QChar::Nbsp))
        .replace(QLatin1Char(' '), QChar(QChar::Nbsp))
        .replace(QLatin1Char('\t'), tabPlaceholder);
}

Prepared prepared(const QString &text)
{
    Prepared result;
    const auto appendPlain = [&result](const QString &plain) {
        for (int i = plain.count(emojiPlaceholder); i > 0; --i)
            result.emojis.append(std::nullopt);
        result.text += plain;
    };

    const EmojiParser parser(nullptr);
    int done = 0;
    for (const QPair<int, int> &candidate : parser.emojiIndexes(text)) {
        const QString source = text.mid(candidate.first, candidate.second);
        const QString known = drawabletext::knownEmojiForm(source);
        if (known.isEmpty())
            continue;
        appendPlain(text.mid(done, candidate.first - done));
        result.text += emojiPlaceholder;
        result.emojis.append(areadocument::Emoji{EmojiConvert::instance()->emojiUnicode(known), source});
        done = candidate.first + candidate.second;
    }
    appendPlain(text.mid(done));
    return result;
}

QVector<Piece> pieces(const QString &text, const QVector<TextSpan> &mentions)
{
    const CollapsedText collapsed(text);
    const qint64 length = collapsed.length();
    QVector<Piece> result;
    int end = 0;
    for (const TextSpan &mention : mentions) {
        const int from = int(qBound<qint64>(end, mention.from, length));
        const int to = int(qBound<qint64>(from, qint64(mention.to) + 1, length));
        if (from == to)
            continue;
        if (from > end)
            result.append({collapsed.part(end, from), false, {}});
        result.append({collapsed.part(from, to), true, mention.data});
        end = to;
    }
    if (end < length)
        result.append({collapsed.part(end, int(length)), false, {}});
    return result;
}

QString withLimitedReturns(const QString &text, int limit)
{
    if (limit < 0)
        return text;
    QString result;
    result.reserve(text.size());
    int run = 0;
    for (const QChar c : text) {
        run = c == lineEnd ? run + 1 : 0;
        if (run <= limit)
            result += c;
    }
    return result;
}

std::optional<QString> fittingReturns(const QString &text, int limit, int before, int after)
{
    const int leading = leadingReturns(text);
    if (leading == text.size()) {
        const int allowed = limit - after - before;
        if (allowed <= 0)
            return std::nullopt;
        return withLimitedReturns(text, allowed);
    }
    // Only the runs at the edges are looked at: those inside came in with a text that was limited as a whole.
    const int head = std::min(leading, std::max(limit - before, 0));
    const int trailing = trailingReturns(text);
    const int tail = std::min(trailing, std::max(limit - after, 0));
    return text.mid(leading - head, text.size() - (leading - head) - (trailing - tail));
}

Trimmed trimmed(const QString &text)
{
    const EmojiParser parser(nullptr);
    int from = 0;
    int to = text.size();
    // Parsed only when an edge is not content by itself: an emoji can begin or end with a mark or a joiner.
    QVector<QPair<int, int>> emojis;
    bool parsed = false;
    const auto isEmojiEdge = [&](int position, bool atStart) {
        if (!parsed) {
            emojis = parser.emojiIndexes(text);
            parsed = true;
        }
        const auto next = std::lower_bound(
            emojis.cbegin(), emojis.cend(), position,
            [](const QPair<int, int> &emoji, int position) { return emoji.first < position; });
        if (atStart)
            return next != emojis.cend() && next->first == position;
        return next != emojis.cbegin() && std::prev(next)->first + std::prev(next)->second == position;
    };

    while (from < to) {
        int length = 1;
        if (isContentAt(text, from, &length) || isEmojiEdge(from, true))
            break;
        from += length;
    }
    while (to > from) {
        const bool pair =
            to - from >= 2 && text.at(to - 1).isLowSurrogate() && text.at(to - 2).isHighSurrogate();
        int length = 1;
        if (isContentAt(text, to - (pair ? 2 : 1), &length) || isEmojiEdge(to, false))
            break;
        to -= pair ? 2 : 1;
    }
    return {text.mid(from, to - from), from};
}

int wordHeadLength(const QString &text)
{
    const auto isWordCharacter = [](QChar c) { return c.isDigit() || c.isLower() || c.isUpper(); };
    int length = 0;
    while (length < text.size()) {
        ++length;
        const QChar c = text.at(text.size() - length);
        if (c.isPunct())
            return length > 1 ? length - 1 : length; // punctuation stays unless it is all there is
        if (c.isUpper()) {
            const QString selected = text.right(length);
            const bool isPart = std::all_of(selected.cbegin(), selected.cend(), isWordCharacter);
            return isPart ? length : length - 1; // one part of a camel-case word at a time
        }
        if (c.isSpace())
            return length;
    }
    return length;
}

} // namespace areatext
