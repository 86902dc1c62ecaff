#pragma once

#include "emojiglobal.h"

#include <QFont>
#include <QString>

/// The blank font for the characters that stand for emoji (U+EEEE, 1.25 em wide) and tabs (U+EEEF, 2 em wide)
/// in laid out text. Without it they would show as the missing-glyph boxes of whatever font is at hand.
namespace emoji {

/// Adds the font to the application's fonts. Call it as early as possible: fall-back lists that Qt resolved
/// before do not learn of it. Does nothing when it has been done for this application object or when there is
/// no `QGuiApplication`. Usable from any thread.
EMOJI_EXPORT void registerPlaceholderFont();

/// The family name of the font.
[[nodiscard]] EMOJI_EXPORT QString placeholderFamily();

/// `font` with the placeholder family behind its own families, so that the two characters come from there and
/// all others look and measure as before. Usable from any thread; cheap from the second call per family on.
[[nodiscard]] EMOJI_EXPORT QFont withPlaceholders(const QFont &font);

} // namespace emoji
