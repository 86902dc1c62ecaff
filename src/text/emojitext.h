#pragma once

#include <QPair>
#include <QString>
#include <QStringList>
#include <QVector>

class DrawableTextPrivate;

/// Emoji as the text engine counts them: one placeholder character each.
namespace drawabletext {

/// How many positions `text` loses when each emoji collapses to one character.
[[nodiscard]] int emojiExcess(const QString &text);

/// Answers `emojiExcess(text.mid(0, length))` for many prefixes of one text from one parse of it, with equal
/// results: a prefix that cuts an emoji in two counts what the parser finds in the cut text. Only such a
/// prefix costs a further parse, of the piece around the cut.
class EmojiPrefixes
{
public:
    explicit EmojiPrefixes(const QString &text);
    /// Any `length` that `QString::mid(0, length)` takes: negative ones and those past the end mean the whole
    /// text.
    [[nodiscard]] int excess(int length) const;

private:
    QString text;
    QVector<QPair<int, int>> emojis; ///< (start, length)
    QVector<int> excessBefore; ///< excess of all emoji before the one with the same index; one more, of all
};

/// The form of `emoji` that the library knows: itself, or without variation selectors, or without joiners as
/// well, or with a variation selector behind it. Empty when it knows none.
[[nodiscard]] QString knownEmojiForm(const QString &emoji);

/// Replaces each known emoji of the paragraphs by one placeholder, with a record and a span.
void collapseEmoji(DrawableTextPrivate &state);

/// Replaces each known emoji of `text` by one placeholder and returns their known forms, in order. Where
/// there are any, it is the caller's to note `hasEmoji` in its state.
QStringList collapseForElide(QString &text);

} // namespace drawabletext
