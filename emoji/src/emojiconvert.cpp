#include "emoji/emojiconvert.h"

#include "emojitrie.h"

EmojiConvert *EmojiConvert::instance()
{
    static EmojiConvert convert;
    return &convert;
}

QString EmojiConvert::toLocalUnicode(const QString &text) const
{
    return text;
}

bool EmojiConvert::containsEmoji(const QString &emoji) const
{
    return emoji::indexOfText(emoji) >= 0;
}

QString EmojiConvert::emojiUnicode(const QString &emoji) const
{
    const int index = emoji::indexOfText(emoji);
    return index >= 0 ? emoji::keyOf(index) : QString();
}
