#include "emojioverlay.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void renderEmojiImage(DrawableTextPrivate &) {}

} // namespace drawabletext
