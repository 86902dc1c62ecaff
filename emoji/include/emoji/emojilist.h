#pragma once

#include "emojiglobal.h"

#include <QString>
#include <QVector>

namespace emoji {

/// One emoji for a picker.
struct Entry
{
    QString key;      ///< as `EmojiManager::emoji` takes it
    QString text;     ///< fully qualified
    QString name;     ///< English, "grinning face"
    QString group;    ///< "Smileys & Emotion"
    QString subgroup; ///< "face-smiling"
};

/// All emoji in the order that Unicode recommends for pickers, groups and subgroups one behind the other.
/// Built when first asked for, about a megabyte; usable from any thread.
[[nodiscard]] EMOJI_EXPORT const QVector<Entry> &allEmoji();

/// The English name of an emoji in any of its forms; empty for other text.
[[nodiscard]] EMOJI_EXPORT QString emojiName(const QString &text);

} // namespace emoji
