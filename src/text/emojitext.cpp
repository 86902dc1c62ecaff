#include "emojitext.h"

#include "drawabletextprivate.h"

namespace drawabletext {
int emojiExcess(const QString &)
{
    return 0;
}
EmojiPrefixes::EmojiPrefixes(const QString &text)
    : text(text)
{}
int EmojiPrefixes::excess(int) const
{
    return 0;
}
QString knownEmojiForm(const QString &)
{
    return {};
}
void collapseEmoji(DrawableTextPrivate &) {}
QStringList collapseForElide(QString &)
{
    return {};
}
} // namespace drawabletext
