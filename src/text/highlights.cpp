#include "highlights.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void matchHighlights(DrawableTextPrivate &) {}

} // namespace drawabletext
