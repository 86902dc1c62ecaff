#pragma once

#include "textspan.h"

#include <QRectF>

/// What a hit test found. -1 means "none" everywhere.
struct TextHit
{
    int paragraph = -1; ///< index of the paragraph's layout
    int line = -1;      ///< line within that layout
    int position = -1;  ///< character position in the layout's text
    QChar character;    ///< the character there; null at or past the end of the text
    QRectF rect;        ///< the character's cell, in item coordinates
    TextSpan span;      ///< the span that contains `position`
};

/// `rect` takes no part: the same character of the same span is the same hit after a new layout.
[[nodiscard]] inline bool operator==(const TextHit &a, const TextHit &b)
{
    return a.paragraph == b.paragraph && a.line == b.line && a.position == b.position &&
           a.character == b.character && a.span == b.span;
}

[[nodiscard]] inline bool operator!=(const TextHit &a, const TextHit &b)
{
    return !(a == b);
}
