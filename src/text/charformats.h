#pragma once

class DrawableTextPrivate;

namespace drawabletext {

/// Rebuilds the character format of each kind of span from the colours and the font.
void buildCharFormats(DrawableTextPrivate &state);

/// Rebuilds the format ranges of each paragraph from its spans.
void buildParagraphFormats(DrawableTextPrivate &state);

} // namespace drawabletext
