#pragma once

class DrawableTextPrivate;

namespace drawabletext {

/// Marks the words of `highlightText`.
void matchHighlights(DrawableTextPrivate &state);

} // namespace drawabletext
