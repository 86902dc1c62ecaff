#pragma once

class DrawableTextPrivate;

namespace drawabletext {

/// Paints all emoji of the layouts into one picture that lies over the text, and moves their records to where
/// they are painted. Without emoji there is no picture, nor where it would have more than 128 million pixels.
/// Stops once the state is abandoned.
void renderEmojiImage(DrawableTextPrivate &state);

} // namespace drawabletext
