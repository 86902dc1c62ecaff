#include "selection.h"

#include "fuzzy.h"
#include "hittest.h"
#include "perparagraph.h"

namespace drawabletext {
namespace {

void setRange(DrawableTextPrivate &state, int paragraph, SelectionRange range)
{
    if (paragraph >= 0 && paragraph < state.selectionRanges.size())
        state.selectionRanges[paragraph] = range;
}

/// The layout text of `paragraph`; empty where there is none.
QString layoutText(const DrawableTextPrivate &state, int paragraph)
{
    const QTextLayout *layout = state.layouts.value(paragraph);
    return layout ? layout->text() : QString();
}

/// The ends of the selection that the ranges describe. A hit without a paragraph where there is none.
void findEnds(const DrawableTextPrivate &state, TextHit &start, TextHit &end)
{
    const auto endOf = [&state](int paragraph) {
        return hitAtPosition(state, paragraph, state.selectionRanges.at(paragraph).to, hitCharacter);
    };
    int last = -1;
    for (int i = 0; i < state.selectionRanges.size(); ++i) {
        const SelectionRange range = state.selectionRanges.at(i);
        if (range.isEmpty()) {
            if (last != -1 && endOf(last).position != -1)
                break;
            continue;
        }
        if (start.position == -1)
            start = hitAtPosition(state, i, range.from, hitCharacter);
        // Only the last one counts, and finding it means shaping a line.
        last = i;
    }
    if (last != -1)
        end = endOf(last);
}

/// To the full width of the line, not to the end of its text.
QRectF startLineRect(const QTextLayout &layout, const QTextLine &line, const TextHit &start)
{
    return {start.rect.topLeft(),
            QPointF(layout.position().x() + line.width(), start.rect.top() + line.height())};
}

QRectF endLineRect(const DrawableTextPrivate &state, const QTextLayout &layout, const QTextLine &line,
                   const TextHit &start, const TextHit &end)
{
    QRectF rect(QPointF(layout.position().x(), end.rect.top()), end.rect.bottomRight());
    const bool isEmptyParagraph =
        layout.text().midRef(line.textStart(), line.textLength()) == QLatin1String("\n");
    if (start.paragraph != end.paragraph && isEmptyParagraph)
        rect.setWidth(state.emptySelectionWidth);
    return rect;
}

QRectF wholeLineRect(const DrawableTextPrivate &state, const QTextLayout &layout, const QTextLine &line)
{
    QRectF rect = line.rect().translated(layout.position());
    if (isFuzzyZero(rect.width()))
        rect.setWidth(state.emptySelectionWidth);
    return rect;
}

} // namespace

void resetSelection(DrawableTextPrivate &state)
{
    state.selectionRects.clear();
    state.selectionRanges = defaultPerParagraph<SelectionRange>(state.paragraphs.size());
}

void selectRanges(DrawableTextPrivate &state, const TextHit &start, const TextHit &end)
{
    resetSelection(state);
    if (start.paragraph == end.paragraph) {
        setRange(state, start.paragraph, {start.position, end.position});
        return;
    }
    for (int i = start.paragraph; i <= end.paragraph; ++i) {
        const int from = i == start.paragraph ? start.position : 0;
        const int to = i == end.paragraph ? end.position : layoutText(state, i).size() - 1;
        setRange(state, i, {from, to});
    }
}

void selectEverything(DrawableTextPrivate &state)
{
    state.selectionRanges.clear();
    for (int i = 0; i < state.paragraphs.size(); ++i)
        state.selectionRanges.append({0, layoutText(state, i).size() - 1});
}

void rebuildSelectionRects(DrawableTextPrivate &state)
{
    TextHit start;
    TextHit end;
    findEnds(state, start, end);
    if (start.paragraph == -1 || end.paragraph == -1)
        return;

    QVector<QRectF> &rects = state.selectionRects;
    rects.clear();
    if (start.paragraph == end.paragraph && start.line == end.line) {
        rects.append(QRectF(start.rect.topLeft(), end.rect.bottomRight()));
        return;
    }
    for (int i = start.paragraph; i <= end.paragraph; ++i) {
        const QTextLayout *layout = state.layouts.at(i);
        if (!layout)
            continue;
        const int firstLine = i == start.paragraph ? start.line : 0;
        const int lastLine = i == end.paragraph ? end.line : layout->lineCount() - 1;
        for (int j = firstLine; j <= lastLine; ++j) {
            const QTextLine line = layout->lineAt(j);
            if (i == start.paragraph && j == start.line) {
                rects.append(startLineRect(*layout, line, start));
                continue;
            }
            const bool isEnd = i == end.paragraph && j == end.line;
            QRectF rect =
                isEnd ? endLineRect(state, *layout, line, start, end) : wholeLineRect(state, *layout, line);
            rect.setHeight(qMax(line.height(), rect.height()));
            // Up to the line above, over the leading between them: the outline joins only what touches.
            if (!rects.isEmpty())
                rect.setTop(rects.constLast().bottom());
            rects.append(rect);
        }
    }
}

SelectionRange wordAt(const DrawableTextPrivate &state, const TextHit &hit)
{
    const QString text = layoutText(state, hit.paragraph);
    if (hit.position < 0 || hit.position >= text.size())
        return {};
    const auto isInWord = [&text](int position) {
        const QChar character = text.at(position);
        return !character.isSpace() && !character.isPunct() && character != QLatin1Char('\n');
    };
    // The character itself is taken whatever it is, so a double click on a comma selects the comma.
    SelectionRange word{hit.position, hit.position};
    while (word.to + 1 < text.size() && isInWord(word.to + 1))
        ++word.to;
    while (word.from > 0 && isInWord(word.from - 1))
        --word.from;
    return word;
}

SelectionRange spanAt(const DrawableTextPrivate &state, const TextHit &hit, int ignoredKinds)
{
    if (hit.position < 0 || hit.position >= layoutText(state, hit.paragraph).size())
        return {};
    SelectionRange range{hit.position, hit.position};
    for (const TextSpan &span : state.spans.value(hit.paragraph)) {
        if (!(span.kind & ignoredKinds) && span.contains(hit.position))
            range = {span.from, span.to};
    }
    return range;
}

} // namespace drawabletext
