#pragma once

#include "texthit.h"

#include <QPointF>

class DrawableTextPrivate;

/// From a point to the character under it. Pure functions on the state.
namespace drawabletext {

/// What a hit test is asked for, as masks: any bit of a mask is enough to have its fields filled in.
constexpr int hitLine = 0x3;      ///< `paragraph` and the scan of its lines
constexpr int hitCharacter = 0x7; ///< `line`, `position`, `character` and `rect`
constexpr int hitSpan = 0x15;     ///< `span`

struct HitOptions
{
    int flags = hitCharacter;
    bool extendRight = false; ///< a point to the right of a paragraph hits the end of its line
    bool bottomSlack = false; ///< a point more than 2 below the text hits nothing, instead of the last line
};

/// The character under `point`, in item coordinates of an item that is `itemWidth` wide. A point left of or
/// above the text, or right of the item, is moved to the edge first. Fields that are not found stay at their
/// defaults.
[[nodiscard]] TextHit hitTest(const DrawableTextPrivate &state, double itemWidth, QPointF point,
                              HitOptions options);

/// The same record for a known position. A paragraph that does not exist, or a position inside a grapheme or
/// outside the text, gives the default record.
[[nodiscard]] TextHit hitAtPosition(const DrawableTextPrivate &state, int paragraph, int position, int flags);

/// The x of the right end of the text on the line under `point`, or -1 where there is no line.
[[nodiscard]] double lineRightEdge(const DrawableTextPrivate &state, double itemWidth, QPointF point,
                                   bool bottomSlack);

} // namespace drawabletext
