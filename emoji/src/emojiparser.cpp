#include "emoji/emojiparser.h"

#include "emojitrie.h"

#include <QThread>

EmojiParser::EmojiParser(QObject *parent)
    : QObject(parent && parent->thread() == QThread::currentThread() ? parent : nullptr)
{}

EmojiParser::~EmojiParser() = default;

QVector<QPair<int, int>> EmojiParser::emojiIndexes(const QString &text) const
{
    return emoji::candidates(text);
}

QString EmojiParser::unicodeToEmoji(const QString &key)
{
    const QVector<uint> codePoints = emoji::codePointsOfKey(key);
    const int index = emoji::indexOfCodePoints(codePoints);
    if (index >= 0)
        return emoji::textOf(index).toString();
    return QString::fromUcs4(codePoints.constData(), codePoints.size());
}
