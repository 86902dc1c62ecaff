#include "selectiontext.h"

#include "drawabletextprivate.h"
#include "placeholders.h"
#include "userblocks.h"

#include <algorithm>
#include <limits>

namespace drawabletext {
namespace {

/// Farther than any text reaches, and far enough from the ends of `int` to calculate with. Blocks come from
/// the client with any number in them.
constexpr int farPosition = 1 << 28;

int moved(int position, qint64 offset)
{
    return int(
        qBound<qint64>(std::numeric_limits<int>::min(), position + offset, std::numeric_limits<int>::max()));
}

/// Adds the mentions of a paragraph that lie inside `first` to `last`, in order, moved by `offset`.
void collectAites(DrawableTextPrivate &state, int paragraph, int first, int last, qint64 offset)
{
    QVector<TextSpan> found;
    for (const SpanKind kind : {SpanAite, SpanPlainAite}) {
        for (const TextSpan &span : state.spans.value(paragraph)) {
            if (span.kind == kind && span.from >= first && span.to <= last)
                found.append(span);
        }
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const TextSpan &a, const TextSpan &b) { return a.from < b.from; });
    for (TextSpan &span : found) {
        span.from = moved(span.from, offset);
        span.to = moved(span.to, offset);
    }
    state.aiteInfos += found;
}

} // namespace

QString sourceSlice(const DrawableTextPrivate &state, int paragraph, int from, int to)
{
    from = qBound(-farPosition, from, farPosition);
    to = qBound(-farPosition, to, farPosition);
    // To `mid` a negative length means the whole rest.
    if (to < from)
        return {};
    const QVector<EmojiRecord> emojis = state.emojis.value(paragraph);
    if (emojis.isEmpty())
        return state.paragraphs.value(paragraph).mid(from, to - from + 1);

    int lead = 0;  // what the emoji before the slice are longer in the source
    int total = 0; // the same with those inside the slice
    for (const EmojiRecord &emoji : emojis) {
        const int excess = emoji.text.size() - emoji.length;
        if (emoji.pos < from)
            lead += excess;
        else if (emoji.pos - 1 + emoji.length > to)
            break;
        total += excess;
    }
    return flattenUserBlocks(state.sourceParagraphs.value(paragraph))
        .mid(from + lead, to + 1 + total - lead - from);
}

QString takeSelectionText(DrawableTextPrivate &state, const TextHit &start, const TextHit &end)
{
    state.aiteInfos.clear();
    QString text;
    qint64 offset = -qint64(start.position);
    for (int i = start.paragraph; i <= end.paragraph; ++i) {
        const int length = state.paragraphs.value(i).size();
        const int first = i == start.paragraph ? start.position : 0;
        const int last = i == end.paragraph ? end.position : length - 1;
        collectAites(state, i, first, last, offset);
        offset += length + 1;
        text += sourceSlice(state, i, first, last);
        if (i != end.paragraph)
            text += QLatin1Char('\n');
    }
    return text;
}

void collectAllAites(DrawableTextPrivate &state)
{
    state.aiteInfos.clear();
    qint64 offset = 0;
    for (int i = 0; i < state.paragraphs.size(); ++i) {
        collectAites(state, i, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), offset);
        offset += state.paragraphs.at(i).size() + 1;
    }
}

QString withPlainSpaces(QString text)
{
    return text.replace(QChar(QChar::Nbsp), QLatin1Char(' ')).replace(tabPlaceholder, QLatin1Char('\t'));
}

} // namespace drawabletext
