#include "elidedemoji.h"

#include "placeholders.h"

namespace drawabletext {
namespace {

/// Puts `emojis` from index `next` on in place of the placeholders of `text` behind the first `skipped` ones.
QString restoreEmoji(const QString &text, int skipped, const QStringList &emojis, int next)
{
    QString result;
    result.reserve(text.size() + 4 * emojis.size());
    for (const QChar character : text) {
        const bool isPlaceholder = character == emojiPlaceholder;
        if (isPlaceholder && skipped == 0 && next < emojis.size())
            result.append(emojis.at(next++));
        else
            result.append(character);
        if (isPlaceholder && skipped > 0)
            --skipped;
    }
    return result;
}

} // namespace

QString restoreEmojiFromStart(const QString &text, const QStringList &emojis)
{
    return emojis.isEmpty() ? text : restoreEmoji(text, 0, emojis, 0);
}

QString restoreEmojiFromEnd(const QString &text, const QStringList &emojis)
{
    if (emojis.isEmpty())
        return text;
    const int surplus = emojis.size() - text.count(emojiPlaceholder);
    return restoreEmoji(text, qMax(0, -surplus), emojis, qMax(0, surplus));
}

QString collapseKnownEmoji(const QString &text, const QStringList &emojis)
{
    QString result;
    result.reserve(text.size());
    int done = 0;
    for (const QString &emoji : emojis) {
        const int found = text.indexOf(emoji, done);
        if (found == -1)
            continue;
        result.append(text.midRef(done, found - done));
        result.append(emojiPlaceholder);
        done = found + emoji.size();
    }
    result.append(text.midRef(done));
    return result;
}

} // namespace drawabletext
