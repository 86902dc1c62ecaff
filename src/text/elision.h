#pragma once

class DrawableTextPrivate;

namespace drawabletext {

/// Decides what text is shown under a line limit: the lines that fit whole, and one line with an ellipsis
/// into which the rest is squeezed.
void computeElidedText(DrawableTextPrivate &state);

} // namespace drawabletext
