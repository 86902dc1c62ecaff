#include "analysis.h"

#include "drawabletextprivate.h"

namespace drawabletext {

void stripBlocksForElide(DrawableTextPrivate &) {}

void applyUserBlocks(DrawableTextPrivate &) {}

void mergeTextBlocks(DrawableTextPrivate &) {}

} // namespace drawabletext
