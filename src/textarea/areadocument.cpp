#include "areadocument.h"

#include "text/placeholders.h"

#include <QSet>
#include <QTextCharFormat>
#include <QTextDocument>

#include <private/qtextdocument_p.h>

#include <algorithm>

namespace areadocument {
namespace {

constexpr int mentionType = 3; ///< user block type of a mention

/// Goes through the document's own table of fragments, which has line ends in it too: the public iterators
/// leave them out, and a cursor per character is far too slow for a key press.
template <typename Visitor>
void visitFragments(const QTextDocument &document, int from, int to, Visitor visit)
{
    const QTextDocumentPrivate *pieces = document.docHandle();
    const int end = std::min(to, length(document));
    int position = std::max(from, 0);
    while (position < end) {
        const QTextDocumentPrivate::FragmentIterator fragment = pieces->find(position);
        const int fragmentEnd = std::min(end, int(fragment.position() + fragment.size()));
        const int offset = position - fragment.position();
        visit(position,
              pieces->buffer().mid(fragment.value()->stringPosition + offset, fragmentEnd - position),
              fragment.value()->format);
        position = fragmentEnd;
    }
}

QTextCharFormat formatOfIndex(const QTextDocument &document, int index)
{
    return document.docHandle()->formatCollection()->charFormat(index);
}

} // namespace

int length(const QTextDocument &document)
{
    return std::max(document.characterCount() - 1, 0);
}

QTextCharFormat formatAt(const QTextDocument &document, int position)
{
    if (position < 0 || position >= length(document))
        return {};
    const QTextDocumentPrivate *pieces = document.docHandle();
    return formatOfIndex(document, pieces->find(position).value()->format);
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

QString Run::source() const
{
    if (!emoji)
        return text;
    QString source;
    for (const QChar c : text) {
        if (c == emojiPlaceholder)
            source += emoji->source;
        else
            source += c;
    }
    return source;
}

QVector<Run> runs(const QTextDocument &document, int from, int to)
{
    QVector<Run> result;
    visitFragments(document, from, to, [&](int position, QString text, int formatIndex) {
        Run run;
        run.position = position;
        run.text = std::move(text);
        std::replace_if(
            run.text.begin(), run.text.end(),
            [](QChar c) { return c == QChar::ParagraphSeparator || c == QChar::LineSeparator; },
            QLatin1Char('\n'));
        const QTextCharFormat format = formatOfIndex(document, formatIndex);
        run.emoji = emojiOf(format);
        run.serial = serialOf(format);
        if (run.serial)
            run.mention = format.property(MentionProperty).toMap();
        result.append(run);
    });
    return result;
}

Message read(const QTextDocument &document)
{
    Message message;
    QVector<uint> serials;
    QVariantList data;
    // Where each mention starts in the message, and its text. A run of a number that was seen before belongs
    // to the last mention, wherever it stands.
    QVector<QPair<int, QString>> found;

    const QVector<Run> all = runs(document, 0, length(document));
    for (const Run &run : all) {
        const QString source = run.source();
        if (run.serial) {
            if (!serials.contains(*run.serial)) {
                serials.append(*run.serial);
                data.append(run.mention);
                found.append({message.text.size(), source});
            } else {
                found.last().second += source;
            }
        }
        message.text += source;
    }
    for (int i = 0; i < found.size(); ++i) {
        const QVariantMap mention = data.at(i).toMap();
        message.blocks.append({found.at(i).first, found.at(i).second.size(), mentionType,
                               mention.value(QStringLiteral("userId"))});
    }
    message.text = withPlainSpaces(message.text);
    return message;
}

QVariantList mentions(const QTextDocument &document)
{
    QVariantList list;
    QSet<uint> seen;
    const QVector<Run> all = runs(document, 0, length(document));
    for (const Run &run : all) {
        if (run.serial && !seen.contains(*run.serial)) {
            seen.insert(*run.serial);
            list.append(run.mention);
        }
    }
    return list;
}

QVariantList latestEmojis(const QTextDocument &document)
{
    QVariantList list;
    QSet<QString> seen;
    const QVector<Run> all = runs(document, 0, length(document));
    for (auto run = all.crbegin(); run != all.crend(); ++run) {
        if (!run->emoji || seen.contains(run->emoji->source))
            continue;
        seen.insert(run->emoji->source);
        list.append(QVariantMap{{QStringLiteral("unicode"), run->emoji->key},
                                {QStringLiteral("emoji"), run->emoji->source}});
    }
    return list;
}

QString sourceText(const QTextDocument &document, int from, int to)
{
    QString text;
    const QVector<Run> all = runs(document, from, to);
    for (const Run &run : all)
        text += run.source();
    return text;
}

QString withPlainSpaces(QString text)
{
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' ')).replace(tabPlaceholder, QLatin1Char('\t'));
}

} // namespace areadocument
