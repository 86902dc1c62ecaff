#include "elidedlines.h"

#include "drawabletextprivate.h"
#include "elidedemoji.h"
#include "emojitext.h"
#include "layout.h"
#include "linebreaker.h"
#include "paragraphs.h"
#include "placeholders.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <algorithm>
#include <limits>

namespace drawabletext {
namespace {

constexpr int noLimit = std::numeric_limits<int>::max();

/// What the elided line may take more than the area, as lines of the layout may.
constexpr double widthTolerance = 0.1;

/// A paragraph while it is measured: each emoji is one placeholder.
struct Paragraph
{
    QString text;
    QStringList emojis;
    bool isFirst = false; ///< its first line is indented
    bool isLast = false;  ///< no line end follows
};

/// A visual line with its emoji whole, or, unbroken, all that is left of a paragraph.
struct Line
{
    QString text;
    QStringList emojis; ///< those that stand in `text`, in order
    QString collapsed;  ///< `text` with its emoji collapsed
    bool unbroken = false;
};

/// Breaks paragraphs into visual lines.
class LineSource
{
public:
    explicit LineSource(DrawableTextPrivate &state)
        : state(state)
    {
        const QStringList lines = readLines(state.text);
        paragraphs.reserve(lines.size());
        for (QString line : lines) {
            const QStringList emojis = collapseForElide(line);
            state.hasEmoji = state.hasEmoji || !emojis.isEmpty();
            paragraphs.append({line, emojis, paragraphs.isEmpty(), paragraphs.size() + 1 == lines.size()});
        }
    }

    /// The lines of the whole text. Once there are `count` of them, counted from the start, the rest of each
    /// paragraph comes as one unbroken line.
    [[nodiscard]] QVector<Line> firstLines(int count) const
    {
        QVector<Line> lines;
        for (const Paragraph &paragraph : paragraphs)
            lines += breakParagraph(paragraph, qMax(0, count - lines.size()));
        return lines;
    }

    /// The lines of the whole text. Once there are `count` of them, counted from the end, the paragraphs
    /// ahead come as one unbroken line each.
    [[nodiscard]] QVector<Line> lastLines(int count) const
    {
        QVector<QVector<Line>> blocks(paragraphs.size());
        int found = 0;
        for (int i = paragraphs.size() - 1; i >= 0; --i) {
            blocks[i] = breakParagraph(paragraphs.at(i), found < count ? noLimit : 0);
            found += blocks.at(i).size();
        }
        QVector<Line> lines;
        lines.reserve(found);
        for (const QVector<Line> &block : qAsConst(blocks))
            lines += block;
        return lines;
    }

private:
    [[nodiscard]] QVector<Line> breakParagraph(const Paragraph &paragraph, int limit) const;
    [[nodiscard]] QVector<int> lineEnds(QTextLayout &layout, const Paragraph &paragraph, int limit) const;

    DrawableTextPrivate &state;
    QVector<Paragraph> paragraphs;
};

QVector<Line> LineSource::breakParagraph(const Paragraph &paragraph, int limit) const
{
    QTextLayout layout;
    prepareLayout(layout, state, paragraph.text, state.wrapMode);
    const QString text = layout.text();
    QVector<int> ends = lineEnds(layout, paragraph, limit);
    const int broken = ends.size();
    if (ends.isEmpty() || ends.constLast() < text.size())
        ends.append(text.size());

    QVector<Line> lines;
    lines.reserve(ends.size());
    int start = 0;
    int nextEmoji = 0;
    for (const int end : qAsConst(ends)) {
        Line line;
        line.unbroken = lines.size() >= broken;
        line.collapsed = text.mid(start, end - start);
        line.emojis = paragraph.emojis.mid(nextEmoji, line.collapsed.count(emojiPlaceholder));
        line.text = restoreEmojiFromStart(line.collapsed, line.emojis);
        nextEmoji += line.emojis.size();
        start = end;
        lines.append(line);
    }
    Line &last = lines.last();
    if (!paragraph.isLast && last.text != QLatin1Char('\n')) {
        last.text.append(QLatin1Char('\n'));
        last.collapsed.append(QLatin1Char('\n'));
    }
    return lines;
}

/// Ends of the first `limit` lines at most.
QVector<int> LineSource::lineEnds(QTextLayout &layout, const Paragraph &paragraph, int limit) const
{
    QVector<int> ends;
    if (limit == 0)
        return ends;
    const bool hasBlocks = !state.elidedSpans.isEmpty();
    if (hasBlocks)
        layout.setFormats({{0, layout.text().size(), state.charFormats.value(SpanTextBlock)}});
    layout.beginLayout();
    LineBreaker breaker(layout);
    while (ends.size() < limit) {
        QTextLine line = breaker.nextLine();
        if (!line.isValid())
            break;
        line.setLeadingIncluded(true);
        double width = state.textAreaWidth();
        if (paragraph.isFirst && ends.isEmpty())
            width -= state.textIndent;
        breaker.setLineWidth(width);
        width = qMin(width, line.naturalTextWidth());
        breaker.setLineWidth(width);
        // Blocks may be painted in a heavier face than they are measured in: a margin that grows with the
        // text makes up for it. Lines that would have fitted break anew for it, too.
        if (hasBlocks) {
            const int margin = line.textLength() / 3;
            breaker.setLineWidth(width - margin);
        }
        ends.append(line.textStart() + line.textLength());
    }
    layout.endLayout();
    return ends;
}

QString joined(const QVector<Line> &lines)
{
    QString text;
    for (const Line &line : lines)
        text += line.text;
    return text;
}

/// Whether each unbroken line among `lines` would collapse as its visual lines one by one do. Where it
/// collapses to what it was made from, no emoji was mistaken, and then none is in any part of it.
bool collapseFaithfully(const QVector<Line> &lines)
{
    return std::all_of(lines.cbegin(), lines.cend(), [](const Line &line) {
        return !line.unbroken || line.emojis.isEmpty() ||
               collapseKnownEmoji(line.text, line.emojis) == line.collapsed;
    });
}

/// `lines` squeezed into one, with an ellipsis.
QString squeezed(const DrawableTextPrivate &state, const QVector<Line> &lines, Qt::TextElideMode mode)
{
    QString text;
    QStringList emojis;
    for (const Line &line : lines) {
        text += line.emojis.isEmpty() ? line.text : collapseKnownEmoji(line.text, line.emojis);
        emojis += line.emojis;
    }
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QFontMetricsF metrics(state.layoutFont);
    const QString elided =
        metrics.elidedText(text, mode, boundedForText(state.textAreaWidth() + widthTolerance));
    return mode == Qt::ElideRight ? restoreEmojiFromStart(elided, emojis)
                                  : restoreEmojiFromEnd(elided, emojis);
}

} // namespace

QString elideLines(DrawableTextPrivate &state)
{
    const LineSource source(state);
    const int limit = state.maximumLineCount;
    const bool keepsEnd = state.elide == Qt::ElideLeft;
    const auto breakUpTo = [&](int count) {
        return keepsEnd ? source.lastLines(count) : source.firstLines(count);
    };

    // Where the lines beyond the limit break makes no difference to a remainder that is put together again.
    QVector<Line> lines = breakUpTo(limit);
    if (lines.size() <= limit)
        return joined(lines);
    if (!collapseFaithfully(lines))
        lines = breakUpTo(noLimit);

    const int kept = limit - 1;
    if (keepsEnd) {
        const int ahead = lines.size() - kept;
        return squeezed(state, lines.mid(0, ahead), Qt::ElideLeft) + joined(lines.mid(ahead));
    }
    // An ellipsis in the middle of several lines stands at the start of the last one.
    const auto mode = state.elide == Qt::ElideRight ? Qt::ElideRight : Qt::ElideLeft;
    return joined(lines.mid(0, kept)) + squeezed(state, lines.mid(kept), mode);
}

} // namespace drawabletext
