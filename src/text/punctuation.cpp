#include "punctuation.h"

#include "drawabletextprivate.h"
#include "fuzzy.h"
#include "perparagraph.h"

#include <QFontMetricsF>

#include <algorithm>

namespace drawabletext {
namespace {

/// Longer runs of punctuation are drawings, not writing: they break where they break.
constexpr int longestKeptRun = 10;

/// Up to here a script has spaces to break at, and a letter does not leave its word for a punctuation mark.
constexpr ushort lastLatinCharacter = 0x00ff;

bool mustNotStartLine(QChar character)
{
    switch (character.category()) {
    case QChar::Punctuation_Close:
    case QChar::Punctuation_FinalQuote:
    case QChar::Punctuation_Other:
        return true;
    default:
        return false;
    }
}

QVector<int> closePositions(const QString &paragraph)
{
    QVector<int> positions;
    for (int i = 0; i < paragraph.size(); ++i) {
        if (mustNotStartLine(paragraph.at(i)))
            positions.append(i);
    }
    return positions;
}

bool holds(const QVector<int> &positions, int position)
{
    return std::binary_search(positions.cbegin(), positions.cend(), position);
}

/// Length of the run of punctuation whose first mark is at `first`. Runs too long to be kept are not counted
/// to their end.
int punctuationRun(const QString &text, int first)
{
    int length = 1;
    while (length <= longestKeptRun && first + length < text.size() && text.at(first + length).isPunct())
        ++length;
    return length;
}

} // namespace

void scanClosePunctuation(DrawableTextPrivate &state)
{
    const int count = state.paragraphs.size();
    state.closePunctuation = defaultPerParagraph<QVector<int>>(count);
    for (int i = 0; i < count; ++i) {
        const QVector<int> positions = closePositions(state.paragraphs.at(i));
        if (!positions.isEmpty())
            state.closePunctuation[i] = positions;
    }
    // No mark has been found that must not end a line in any language of the client.
    state.openPunctuation = defaultPerParagraph<QVector<int>>(count);
}

std::optional<double> widthRespectingPunctuation(const QString &text, const BrokenLine &line,
                                                 const PunctuationPositions &positions,
                                                 const QFontMetricsF &metrics)
{
    const double natural = line.naturalTextWidth;
    const int last = line.lastPosition;
    const int next = last + 1;
    const int afterNext = last + 2;
    if (last < 0 || last >= text.size())
        return std::nullopt;
    const QChar lastCharacter = text.at(last);

    // The break stands one character ahead of a closing mark: that character would go down with its mark
    // alone. The one before it goes along.
    if (!lastCharacter.isPunct() && !lastCharacter.isSpace() && afterNext < text.size() &&
        holds(positions.close, afterNext)) {
        if (lastCharacter.unicode() <= lastLatinCharacter)
            return std::nullopt;
        const double shorter = natural - metrics.horizontalAdvance(lastCharacter);
        if (isFuzzyZero(shorter) || punctuationRun(text, afterNext) > longestKeptRun)
            return std::nullopt;
        return shorter;
    }
    if (holds(positions.open, last))
        return natural - metrics.horizontalAdvance(lastCharacter);
    if (next < text.size() && holds(positions.close, next))
        return natural + metrics.horizontalAdvance(text.at(next));
    return std::nullopt;
}

} // namespace drawabletext
