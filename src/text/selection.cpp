#include "selection.h"

namespace drawabletext {

void resetSelection(DrawableTextPrivate &) {}

void rebuildSelectionRects(DrawableTextPrivate &) {}

} // namespace drawabletext
