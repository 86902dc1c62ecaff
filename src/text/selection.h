#pragma once

#include "drawabletextprivate.h"

/// Selection as ranges and rectangles. Pure functions on the state: no signal, no item.
namespace drawabletext {

/// One empty range per paragraph, no rectangles.
void resetSelection(DrawableTextPrivate &state);

/// Selects from `start` to `end` and nothing else. The rectangles are left empty.
void selectRanges(DrawableTextPrivate &state, const TextHit &start, const TextHit &end);

/// Selects all of every paragraph. The rectangles stay as they are.
void selectEverything(DrawableTextPrivate &state);

/// Computes the rectangles of the selected lines from the ranges. Where an end of the selection is at no
/// position that a cursor may take, they stay as they are.
void rebuildSelectionRects(DrawableTextPrivate &state);

/// The word around `hit`, or the one character that separates words there. Empty outside the text.
[[nodiscard]] SelectionRange wordAt(const DrawableTextPrivate &state, const TextHit &hit);

/// The last span around `hit` of none of `ignoredKinds`, or just the hit's position where there is none.
/// Empty outside the text.
[[nodiscard]] SelectionRange spanAt(const DrawableTextPrivate &state, const TextHit &hit, int ignoredKinds);

} // namespace drawabletext
