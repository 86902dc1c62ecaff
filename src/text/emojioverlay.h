#pragma once

class DrawableTextPrivate;

namespace drawabletext {

/// Paints all emoji of the layouts into one picture that lies over the text. Stops once the state is
/// abandoned.
void renderEmojiImage(DrawableTextPrivate &state);

} // namespace drawabletext
