#pragma once

#include "drawabletextprivate.h"

/// Selection as ranges, rectangles and text. Pure functions on the state: no signal, no item.
namespace drawabletext {

/// One empty range per paragraph, no rectangles.
void resetSelection(DrawableTextPrivate &state);

/// Computes the rectangles of the selected lines from the ranges.
void rebuildSelectionRects(DrawableTextPrivate &state);

} // namespace drawabletext
