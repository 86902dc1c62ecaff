#include "userblocks.h"

#include "emojitext.h"
#include "placeholders.h"
#include "usertextblock.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

namespace drawabletext {
namespace {

const QLatin1String nameKey("displayName");
const QLatin1String dataKey("data");
const QLatin1String typeKey("type");

/// The object of an in-band block; empty when it is none.
QJsonObject blockObject(const QStringRef &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json.toUtf8()).object();
    return object.contains(nameKey) && object.contains(dataKey) ? object : QJsonObject();
}

int saturated(qint64 position)
{
    return int(qBound<qint64>(std::numeric_limits<int>::min(), position, std::numeric_limits<int>::max()));
}

/// A span whose ends are not yet corrected for the emoji in front of them.
struct ExpandedBlock
{
    TextSpan span;
    int prefixLength = 0; ///< how much of the text counts for the span's begin
};

} // namespace

int typeToKind(int type)
{
    switch (type) {
    case 1:
        return SpanLink;
    case 2:
        return SpanEmail;
    case 3:
        return SpanAite;
    case 4:
        return SpanOstrelId;
    case 5:
        return SpanPhone;
    case 6:
        return SpanSharp;
    default:
        return SpanTextBlock;
    }
}

QVector<TextSpan> expandInBandBlocks(QString &text, LineEnds lineEnds)
{
    QString expanded;
    QVector<ExpandedBlock> blocks;
    int copied = 0;
    int begin = text.indexOf(userBlockBegin);
    while (begin != -1) {
        const int end = text.indexOf(userBlockEnd, begin);
        if (end == -1)
            break;
        const int behind = end + 1;
        const int nextBegin = text.indexOf(userBlockBegin, behind);
        // Two marks with nothing between them are no block, not even an invalid one.
        if (end > begin + 1) {
            const QJsonObject object = blockObject(text.midRef(begin + 1, end - begin - 1));
            if (object.isEmpty()) {
                qDebug("Invalid user block data");
            } else {
                QString name = object.value(nameKey).toString();
                if (lineEnds == LineEnds::BecomeSpaces)
                    name.replace(QLatin1Char('\n'), QLatin1Char(' '));
                const int kind = typeToKind(object.value(typeKey).toInt());
                const bool hasData = kind == SpanAite || kind == SpanTextBlock;

                expanded += text.midRef(copied, begin - copied);
                ExpandedBlock block;
                block.span.from = expanded.size();
                expanded += name;
                block.span.to = expanded.size() - 1;
                block.span.data = hasData ? object.value(dataKey).toVariant() : QVariant(name);
                block.span.kind = kind;
                // The first character of the block counts with what is in front of it. Where the name is
                // empty that is the one behind the block, unless it is the mark of another block, which is
                // gone by the time the emoji are counted and never was part of one.
                block.prefixLength =
                    name.isEmpty() && nextBegin == behind ? block.span.from : block.span.from + 1;
                blocks.append(block);
                copied = behind;
            }
        }
        begin = nextBegin;
    }
    if (blocks.isEmpty())
        return {};

    expanded += text.midRef(copied);
    text = expanded;

    const EmojiPrefixes prefixes(text);
    QVector<TextSpan> spans;
    spans.reserve(blocks.size());
    for (const ExpandedBlock &block : qAsConst(blocks)) {
        TextSpan span = block.span;
        span.from -= prefixes.excess(block.prefixLength);
        span.to -= prefixes.excess(block.span.to + 1);
        spans.append(span);
    }
    return spans;
}

TextSpan lineSpan(const UserTextBlock &block, qint64 lineStart, const EmojiPrefixes &line)
{
    const qint64 first = block.start - lineStart;
    const qint64 behind = first + block.length;
    TextSpan span;
    span.from = saturated(first - line.excess(saturated(first + 1)));
    span.to = saturated(behind - 1 - line.excess(saturated(behind)));
    span.data = block.data;
    span.kind = typeToKind(block.type);
    return span;
}

} // namespace drawabletext

// A regular expression would do, but its engine goes back and forth for every opening mark, which a text of
// marks turns into minutes. Going back has one purpose only: to find the last key in front of the closing
// mark. All behind the key is forced, because each part ends at the first character that it may not hold.
QString flattenUserBlocks(const QString &text)
{
    int begin = text.indexOf(userBlockBegin);
    if (begin == -1)
        return text;
    const QLatin1String key("\"displayName\"");
    const QChar quote = QLatin1Char('"');
    const QChar colon = QLatin1Char(':');

    // What has to follow a key, from the end of the text: no key behind `keysEnd` can match.
    const auto lastBefore = [&text](QChar character, int position) {
        return position > 0 ? text.lastIndexOf(character, position - 1) : -1;
    };
    const int lastMark = text.lastIndexOf(userBlockEnd);
    const int keysEnd = lastBefore(colon, lastBefore(quote, lastBefore(quote, lastMark)));

    QString flat;
    int copied = 0;
    while (begin != -1 && begin < keysEnd) {
        const int mark = text.indexOf(userBlockEnd, begin);
        const int offset = text.midRef(begin + 1, qMin(mark, keysEnd) - begin - 1).lastIndexOf(key);
        if (offset == -1) {
            begin = text.indexOf(userBlockBegin, mark);
            continue;
        }
        const int keyEnd = begin + 1 + offset + key.size();
        const int nameBegin = text.indexOf(quote, text.indexOf(colon, keyEnd) + 1) + 1;
        const int nameEnd = text.indexOf(quote, nameBegin);
        flat += text.midRef(copied, begin - copied);
        flat += text.midRef(nameBegin, nameEnd - nameBegin);
        copied = text.indexOf(userBlockEnd, nameEnd) + 1;
        begin = text.indexOf(userBlockBegin, copied);
    }
    if (copied == 0)
        return text;
    flat += text.midRef(copied);
    return flat;
}
