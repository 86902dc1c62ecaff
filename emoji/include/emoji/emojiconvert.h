#pragma once

#include "emojiglobal.h"

#include <QString>

/// Tells emoji from other text and gives their keys. Stateless and usable from any thread.
class EMOJI_EXPORT EmojiConvert
{
    Q_DISABLE_COPY(EmojiConvert)

public:
    static EmojiConvert *instance();

    /// `text` with its emoji in the library's own code points. These are Unicode's, so the text comes back as
    /// it is: positions that callers hold into it must stay true.
    [[nodiscard]] QString toLocalUnicode(const QString &text) const;

    /// Whether `emoji` is exactly one known emoji, fully qualified or with some or all U+FE0F left out. A
    /// U+FE0F too many is not known.
    [[nodiscard]] bool containsEmoji(const QString &emoji) const;

    /// The key under which `EmojiManager` knows `emoji`, the same for all its forms: lower-case hexadecimal
    /// code points without U+FE0F, joined by "-". Empty for anything that `containsEmoji` denies.
    [[nodiscard]] QString emojiUnicode(const QString &emoji) const;

private:
    EmojiConvert() = default;
};
