#include "elision.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void computeElidedText(DrawableTextPrivate &) {}

} // namespace drawabletext
