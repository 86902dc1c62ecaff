#include "emojitrie.h"

#include "emojidata.h"

#include <QChar>

#include <algorithm>

namespace emoji {
namespace {

constexpr ushort combiningKeycap = 0x20E3;
constexpr uint firstRegionalIndicator = 0x1F1E6;
constexpr uint lastRegionalIndicator = 0x1F1FF;
constexpr uint rootsEnd = 0x20000;
constexpr int none = 0;

/// The units of a text; reading behind its end gives zero, which is part of no emoji.
class Units
{
public:
    explicit Units(QStringView text)
        : begin(text.utf16())
        , count(int(text.size()))
    {}

    [[nodiscard]] int size() const { return count; }
    [[nodiscard]] ushort at(int position) const
    {
        return position < count ? ushort(begin[position]) : ushort(0);
    }

    /// A lone surrogate is a code point of its own.
    [[nodiscard]] uint codePointAt(int position) const
    {
        const ushort unit = at(position);
        if (QChar::isHighSurrogate(unit) && QChar::isLowSurrogate(at(position + 1)))
            return QChar::surrogateToUcs4(unit, at(position + 1));
        return unit;
    }

private:
    const char16_t *begin;
    int count;
};

int widthOf(uint codePoint)
{
    return QChar::requiresSurrogates(codePoint) ? 2 : 1;
}

bool isRegionalIndicator(uint codePoint)
{
    return codePoint >= firstRegionalIndicator && codePoint <= lastRegionalIndicator;
}

int rootOf(uint codePoint)
{
    return codePoint < rootsEnd ? rootNodes[rootPages[codePoint >> 8]][codePoint & 0xFF] : none;
}

int childOf(const TrieNode &node, uint codePoint)
{
    const TrieNode *first = nodes + node.firstChild;
    const TrieNode *last = first + node.childCount;
    const TrieNode *child = std::lower_bound(
        first, last, codePoint, [](const TrieNode &left, uint right) { return left.codePoint < right; });
    return child != last && child->codePoint == codePoint ? int(child - nodes) : none;
}

/// The end of the longest emoji whose first code point led to `node` and ended before `position`, or -1.
int longestMatch(const Units &units, int node, int position)
{
    int end = -1;
    while (true) {
        const TrieNode &current = nodes[node];
        const int selectors = position;
        while (units.at(position) == emojiSelector)
            ++position;
        if (units.at(position) == textSelector)
            return end;
        if (current.emoji >= 0 && (current.bare || position > selectors))
            end = position;
        if (current.childCount == 0)
            return end;
        const uint codePoint = units.codePointAt(position);
        node = childOf(current, codePoint);
        if (node == none)
            return end;
        position += widthOf(codePoint);
    }
}

/// The node at the end of the path that the code points describe, U+FE0F not counted.
template <typename NextCodePoint>
int indexAtEndOf(NextCodePoint next)
{
    int node = none;
    uint codePoint = 0;
    bool first = true;
    while (next(codePoint)) {
        if (codePoint == emojiSelector)
            continue;
        node = first ? rootOf(codePoint) : childOf(nodes[node], codePoint);
        first = false;
        if (node == none)
            return -1;
    }
    return first ? -1 : nodes[node].emoji;
}

int hexDigit(ushort unit)
{
    if (unit >= '0' && unit <= '9')
        return unit - '0';
    const ushort lower = unit | 0x20;
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

QVector<QPair<int, int>> candidates(QStringView text)
{
    const Units units(text);
    QVector<QPair<int, int>> found;
    int position = 0;
    while (position < units.size()) {
        // Nearly all of a Chinese text ends here.
        const ushort unit = units.at(position);
        if (rootPages[unit >> 8] == 0 && !QChar::isHighSurrogate(unit)) {
            ++position;
            continue;
        }
        const uint codePoint = units.codePointAt(position);
        const int behind = position + widthOf(codePoint);
        const int root = rootOf(codePoint);
        if (root == none) {
            position = behind;
            continue;
        }
        if (codePoint < 0x80) {
            // Digits are common in text and begin an emoji only in keycaps, which the next unit tells.
            const ushort next = units.at(behind);
            if (next != emojiSelector && next != combiningKeycap) {
                position = behind;
                continue;
            }
        }
        int skip = behind;
        if (isRegionalIndicator(codePoint)) {
            // Indicators pair up from the left. One without a partner is text; a pair that is no flag is text
            // as a whole, or its second half would take away the first half of the flag behind it.
            if (!isRegionalIndicator(units.codePointAt(behind))) {
                position = behind;
                continue;
            }
            skip = behind + 2;
        }
        const int end = longestMatch(units, root, behind);
        if (end < 0) {
            position = skip;
            continue;
        }
        found.append(qMakePair(position, end - position));
        position = end;
    }
    return found;
}

int indexOfText(QStringView text)
{
    const Units units(text);
    int position = 0;
    const int index = indexAtEndOf([&](uint &codePoint) {
        if (position >= units.size())
            return false;
        codePoint = units.codePointAt(position);
        position += widthOf(codePoint);
        return true;
    });
    if (index < 0)
        return -1;
    // But for U+FE0F the two texts are the same. What is left to find out is whether `text` has one where the
    // full text has none, that is, whether it can not be had from the full text by leaving out units.
    int at = 0;
    for (const QChar unit : textOf(index)) {
        if (unit == units.at(at))
            ++at;
    }
    return at == units.size() ? index : -1;
}

int indexOfKey(QStringView key)
{
    return indexOfCodePoints(codePointsOfKey(key));
}

QVector<uint> codePointsOfKey(QStringView key)
{
    QVector<uint> codePoints;
    uint value = 0;
    bool empty = true;
    for (const QChar unit : key) {
        if (unit == QLatin1Char('-')) {
            if (empty || QChar::isSurrogate(value))
                return {};
            codePoints.append(value);
            value = 0;
            empty = true;
            continue;
        }
        const int digit = hexDigit(unit.unicode());
        value = value << 4 | uint(digit);
        if (digit < 0 || value > QChar::LastValidCodePoint)
            return {};
        empty = false;
    }
    if (empty || QChar::isSurrogate(value))
        return {};
    codePoints.append(value);
    return codePoints;
}

int indexOfCodePoints(const QVector<uint> &codePoints)
{
    auto at = codePoints.cbegin();
    return indexAtEndOf([&](uint &codePoint) {
        if (at == codePoints.cend())
            return false;
        codePoint = *at++;
        return true;
    });
}

QStringView textOf(int index)
{
    return {textUnits + textOffsets[index], textOffsets[index + 1] - textOffsets[index]};
}

QString keyOf(int index)
{
    const Units units(textOf(index));
    QString key;
    for (int position = 0; position < units.size();) {
        const uint codePoint = units.codePointAt(position);
        position += widthOf(codePoint);
        if (codePoint == emojiSelector)
            continue;
        if (!key.isEmpty())
            key += QLatin1Char('-');
        key += QString::number(codePoint, 16);
    }
    return key;
}

} // namespace emoji
