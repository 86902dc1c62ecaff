#pragma once

#include <QFont>
#include <QString>

namespace drawabletext {

/// What the layout has to know of a font.
struct FontMeasures
{
    QFont font;       ///< the font itself, sharing its data with others that ask for the same
    QFont layoutFont; ///< the font, falling back to blank glyphs for the placeholder characters
    double xWidth = 0.0;
    double spaceWidth = 0.0;
    double elideTextWidth = 0.0;
    double height = 0.0;
    double emojiSize = 0.0;
};

/// Measures `font`. On the GUI thread the answers for the fonts of the last few questions are remembered: a
/// chat has thousands of messages in two or three fonts, and items that share a `layoutFont` also share what
/// it resolves to.
[[nodiscard]] FontMeasures measureFont(const QFont &font, const QString &elideText);

} // namespace drawabletext
