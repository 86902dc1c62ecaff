#include "punctuation.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void scanClosePunctuation(DrawableTextPrivate &) {}

} // namespace drawabletext
