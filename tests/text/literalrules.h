#pragma once

#include "text/emojirecord.h"
#include "text/emojitext.h"
#include "text/textspan.h"
#include "text/userblocks.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojiparser.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QString>
#include <QVector>

/// Rules of the text engine, followed word by word: each replacement in place, each prefix parsed anew. Slow,
/// and plain enough to compare the engine with.
namespace literalrules {

[[nodiscard]] inline QString flattened(QString text)
{
    static const QRegularExpression pattern(
        QStringLiteral(R"x(\x01[^\x02]*"displayName"[^:]*:[^"]*"([^"]*)"[^\x02]*\x02)x"));
    return text.replace(pattern, QStringLiteral("\\1"));
}

/// Expands the in-band blocks of `text`; `invalid` counts those that stay.
inline QVector<TextSpan> expand(QString &text, drawabletext::LineEnds lineEnds, int *invalid = nullptr)
{
    const QChar begin = QChar(0x0001);
    const QChar end = QChar(0x0002);
    QVector<TextSpan> spans;
    int i = text.indexOf(begin);
    while (i != -1) {
        const int j = text.indexOf(end, i);
        if (j == -1)
            break;
        const QString block = text.mid(i, j - i + 1);
        if (block.size() <= 2) {
            i = text.indexOf(begin, j);
            continue;
        }
        const QJsonObject object = QJsonDocument::fromJson(block.mid(1, block.size() - 2).toUtf8()).object();
        if (!object.contains(QStringLiteral("displayName")) || !object.contains(QStringLiteral("data"))) {
            if (invalid)
                ++*invalid;
            i = text.indexOf(begin, j + 1);
            continue;
        }
        QString name = object.value(QStringLiteral("displayName")).toString();
        if (lineEnds == drawabletext::LineEnds::BecomeSpaces)
            name.replace(QLatin1Char('\n'), QLatin1Char(' '));
        text.replace(i, block.size(), name);
        const int e = i + name.size();
        TextSpan span;
        span.kind = drawabletext::typeToKind(object.value(QStringLiteral("type")).toInt());
        span.from = i - drawabletext::emojiExcess(text.mid(0, i + 1));
        span.to = e - 1 - drawabletext::emojiExcess(text.mid(0, e));
        span.data = span.kind == SpanAite || span.kind == SpanTextBlock
                        ? object.value(QStringLiteral("data")).toVariant()
                        : QVariant(name);
        spans.append(span);
        i = text.indexOf(begin, e);
    }
    return spans;
}

/// Collapses the emoji of `paragraph`; the records have no rectangles.
inline QVector<EmojiRecord> collapse(QString &paragraph)
{
    const EmojiConvert *convert = EmojiConvert::instance();
    QVector<EmojiRecord> records;
    int shift = 0;
    const auto candidates = EmojiParser().emojiIndexes(paragraph);
    for (const auto &candidate : candidates) {
        const int position = candidate.first + shift;
        const QString emoji = paragraph.mid(position, candidate.second);
        QString known = emoji;
        if (!convert->containsEmoji(known))
            known.remove(QChar(0xFE0F));
        if (!convert->containsEmoji(known))
            known.remove(QChar(0x200D));
        if (!convert->containsEmoji(known))
            known = emoji + QChar(0xFE0F);
        if (!convert->containsEmoji(known))
            continue;
        paragraph.replace(position, candidate.second, QChar(0xEEEE));
        EmojiRecord record;
        record.pos = position;
        record.text = emoji;
        record.unicode = convert->emojiUnicode(known);
        records.append(record);
        shift += 1 - candidate.second;
    }
    return records;
}

} // namespace literalrules
