#pragma once

#include <QVector>

#include <optional>

class DrawableTextPrivate;
class QFontMetricsF;
class QString;

namespace drawabletext {

/// Collects the positions of the characters that must not start a line.
void scanClosePunctuation(DrawableTextPrivate &state);

/// Where a paragraph has punctuation that a line break must respect; positions ascend.
struct PunctuationPositions
{
    QVector<int> close; ///< must not start a line
    QVector<int> open;  ///< must not end a line
};

/// A line as it broke by itself.
struct BrokenLine
{
    int lastPosition = -1;         ///< its last character in the paragraph
    double naturalTextWidth = 0.0; ///< width of its text
};

/// The width to break `line` at once more so that punctuation stays with the text it belongs to; nothing
/// where the break is good as it is. `text` is the paragraph as it is laid out.
[[nodiscard]] std::optional<double> widthRespectingPunctuation(const QString &text, const BrokenLine &line,
                                                               const PunctuationPositions &positions,
                                                               const QFontMetricsF &metrics);

} // namespace drawabletext
