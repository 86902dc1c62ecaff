#pragma once

#include <QString>

class DrawableTextPrivate;

namespace drawabletext {

/// `text` of the state in at most `maximumLineCount` (2 or more) lines: all but one of them whole, and on the
/// remaining one all the rest with an ellipsis.
[[nodiscard]] QString elideLines(DrawableTextPrivate &state);

} // namespace drawabletext
