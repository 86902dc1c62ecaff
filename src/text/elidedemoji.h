#pragma once

#include <QString>
#include <QStringList>

/// Emoji count as one placeholder while text is measured, and come back whole afterwards.
namespace drawabletext {

/// Replaces the placeholders of `text` by `emojis`, the first by the first. Placeholders beyond them stay.
[[nodiscard]] QString restoreEmojiFromStart(const QString &text, const QStringList &emojis);

/// Replaces the placeholders of `text` by `emojis`, the last by the last. Placeholders beyond them stay.
[[nodiscard]] QString restoreEmojiFromEnd(const QString &text, const QStringList &emojis);

/// Replaces `emojis` in `text` by placeholders, each where it is found next behind the one before. An emoji's
/// characters that stand there already, without being one, are taken for it.
[[nodiscard]] QString collapseKnownEmoji(const QString &text, const QStringList &emojis);

} // namespace drawabletext
