#pragma once

class DrawableTextPrivate;

namespace drawabletext {

/// Collects the positions of the characters that must not start a line.
void scanClosePunctuation(DrawableTextPrivate &state);

} // namespace drawabletext
