#include "charformats.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void buildCharFormats(DrawableTextPrivate &) {}

void buildParagraphFormats(DrawableTextPrivate &) {}

} // namespace drawabletext
