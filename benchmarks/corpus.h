#pragma once

#include <QRandomGenerator>
#include <QStringList>

/// Chat messages as people write them: short for the most part, in Chinese, English, Arabic or a mix, with
/// emoji here and there. The same seed gives the same messages.
class Corpus
{
public:
    explicit Corpus(quint32 seed);

    /// `count` messages of 1 to some 300 characters, four out of ten with emoji.
    [[nodiscard]] QStringList messages(int count);
    /// `count` messages of at most some 40 characters, one out of `emojiEvery` with an emoji; 0 for none.
    [[nodiscard]] QStringList shortMessages(int count, int emojiEvery);
    /// `count` messages of a few lines with `emoji` emoji each.
    [[nodiscard]] QStringList messagesWithEmoji(int count, int emoji);
    /// One message of `length` UTF-16 units at least, in paragraphs of a few lines, with `emoji` emoji spread
    /// over it.
    [[nodiscard]] QString longMessage(int length, int emoji = 0);

    /// The emoji that occur.
    [[nodiscard]] static const QStringList &emoji();

private:
    enum class Language { Chinese, English, Arabic, Mixed };

    [[nodiscard]] Language anyLanguage();
    [[nodiscard]] QString anyEmoji();
    [[nodiscard]] QString word(Language language);
    [[nodiscard]] QString sentence(Language language, int length);
    [[nodiscard]] QString withEmoji(const QString &text, int count);

    QRandomGenerator random;
};
