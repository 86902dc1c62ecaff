#include "areadocument.h"

#include "text/placeholders.h"

#include <QHash>
#include <QSet>
#include <QTextCharFormat>
#include <QTextDocument>

#include <private/qtextdocument_p.h>

#include <algorithm>

namespace areadocument {
namespace {

constexpr int mentionType = 3; ///< user block type of a mention

QTextCharFormat formatOfIndex(const QTextDocument &document, int index)
{
    return document.docHandle()->formatCollection()->charFormat(index);
}

Style styleOf(const QTextCharFormat &format)
{
    Style style;
    style.emoji = emojiOf(format);
    style.serial = serialOf(format);
    if (style.serial)
        style.mention = format.property(MentionProperty).toMap();
    return style;
}

/// The styles that one walk meets, by the index of their format: emoji repeat, and properties of a format are
/// slow to look up. Not kept longer, because clearing a document gives its indexes to other formats.
class Styles
{
public:
    explicit Styles(const QTextDocument &document)
        : document(document)
    {}

    const Style &at(int formatIndex)
    {
        if (!known.contains(formatIndex))
            known.insert(formatIndex, styleOf(formatOfIndex(document, formatIndex)));
        return *known.constFind(formatIndex);
    }

private:
    const QTextDocument &document;
    QHash<int, Style> known;
};

/// A mention of the message while it is being read.
struct FoundMention
{
    int start = 0;
    int length = 0;
    QVariant userId;
};

} // namespace

int length(const QTextDocument &document)
{
    return std::max(document.characterCount() - 1, 0);
}

QTextCharFormat formatAt(const QTextDocument &document, int position)
{
    if (position < 0 || position >= length(document))
        return {};
    return formatOfIndex(document, document.docHandle()->find(position).value()->format);
}

std::optional<Emoji> emojiOf(const QTextCharFormat &format)
{
    const QStringList entry = format.property(EmojiProperty).toStringList();
    if (entry.size() != 2)
        return std::nullopt;
    return Emoji{entry.at(0), entry.at(1)};
}

std::optional<uint> serialOf(const QTextCharFormat &format)
{
    if (!format.hasProperty(SerialProperty))
        return std::nullopt;
    return format.property(SerialProperty).toUInt();
}

std::optional<uint> serialAt(const QTextDocument &document, int position)
{
    return serialOf(formatAt(document, position));
}

bool isLineEnd(QChar c)
{
    return c == QChar::ParagraphSeparator || c == QChar::LineSeparator;
}

void Run::appendSource(QString &to) const
{
    for (const QChar c : text) {
        if (style.emoji && c == emojiPlaceholder)
            to += style.emoji->source;
        else
            to += isLineEnd(c) ? QChar(QLatin1Char('\n')) : c;
    }
}

QString Run::source() const
{
    QString source;
    source.reserve(int(text.size()));
    appendSource(source);
    return source;
}

// Goes through the document's own table of fragments, which has line ends in it too: the public iterators
// leave them out, and a cursor per character is far too slow for a key press.
void visitRuns(const QTextDocument &document, int from, int to,
               const std::function<void(const Run &)> &visitor)
{
    const QTextDocumentPrivate *pieces = document.docHandle();
    const QString buffer = pieces->buffer();
    const int end = std::min(to, length(document));
    Styles styles(document);
    int position = std::max(from, 0);
    if (position >= end)
        return;
    for (auto fragment = pieces->find(position); position < end; ++fragment) {
        const int offset = position - fragment.position();
        const int size = std::min(end - position, int(fragment.size()) - offset);
        visitor({position, QStringView(buffer).mid(fragment.value()->stringPosition + offset, size),
                 styles.at(fragment.value()->format)});
        position += size;
    }
}

Message read(const QTextDocument &document)
{
    Message message;
    message.text.reserve(length(document));
    QSet<uint> serials;
    // A run of a number that was seen before belongs to the last mention, wherever it stands.
    QVector<FoundMention> found;
    QSet<uint> foundSerials;

    visitRuns(document, 0, length(document), [&](const Run &run) {
        const int start = message.text.size();
        run.appendSource(message.text);
        if (!run.style.serial)
            return;
        serials.insert(*run.style.serial);
        const auto first = std::find_if_not(run.text.begin(), run.text.end(), isLineEnd);
        if (first == run.text.end())
            return;
        if (!foundSerials.contains(*run.style.serial)) {
            foundSerials.insert(*run.style.serial);
            const int lineEnds = int(first - run.text.begin());
            found.append({start + lineEnds, 0, run.style.mention.value(QStringLiteral("userId"))});
        }
        const auto lineEnds = std::count_if(run.text.begin(), run.text.end(), isLineEnd);
        found.last().length += message.text.size() - start - int(lineEnds);
    });
    // A mention of line ends alone is one of the list without a place in the message: then none has a place.
    if (found.size() == serials.size()) {
        for (const FoundMention &mention : qAsConst(found))
            message.blocks.append({mention.start, mention.length, mentionType, mention.userId});
    }
    message.text = withPlainSpaces(message.text);
    return message;
}

QVariantList mentions(const QTextDocument &document)
{
    QVariantList list;
    QSet<uint> seen;
    visitRuns(document, 0, length(document), [&](const Run &run) {
        if (run.style.serial && !seen.contains(*run.style.serial)) {
            seen.insert(*run.style.serial);
            list.append(run.style.mention);
        }
    });
    return list;
}

QVariantList latestEmojis(const QTextDocument &document)
{
    QVector<Emoji> emojis;
    visitRuns(document, 0, length(document), [&](const Run &run) {
        if (run.style.emoji)
            emojis.append(*run.style.emoji);
    });
    QVariantList list;
    QSet<QString> seen;
    for (auto emoji = emojis.crbegin(); emoji != emojis.crend(); ++emoji) {
        if (seen.contains(emoji->source))
            continue;
        seen.insert(emoji->source);
        list.append(
            QVariantMap{{QStringLiteral("unicode"), emoji->key}, {QStringLiteral("emoji"), emoji->source}});
    }
    return list;
}

QString sourceText(const QTextDocument &document, int from, int to)
{
    QString text;
    visitRuns(document, from, to, [&text](const Run &run) { run.appendSource(text); });
    return text;
}

QString withPlainSpaces(QString text)
{
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' ')).replace(tabPlaceholder, QLatin1Char('\t'));
}

} // namespace areadocument
