// Selection as the item's slots and the pointer change it, and its way to the clipboard.

#include "drawabletext.h"

#include "aiteclipboard.h"
#include "hittest.h"
#include "placeholders.h"
#include "selection.h"
#include "selectiondrag.h"
#include "selectiontext.h"
#include "userblocks.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

/// A click this soon after a double click is a triple click.
constexpr int tripleClickTime = 300; // ms

} // namespace

TextHit DrawableText::hitTest(QPointF point, int flags, bool extendRight, bool bottomSlack) const
{
    return drawabletext::hitTest(*d, width(), point, {flags, extendRight, bottomSlack});
}

double DrawableText::lineRightEdge(QPointF point, bool bottomSlack) const
{
    return drawabletext::lineRightEdge(*d, width(), point, bottomSlack);
}

void DrawableText::updateDragSelection()
{
    switch (drawabletext::dragSelection(*d, width())) {
    case drawabletext::DragOutcome::Unchanged:
        break;
    case drawabletext::DragOutcome::Collapsed:
        deselect();
        break;
    case drawabletext::DragOutcome::Selected:
        update();
        // With every accepted move, also when the text is the same.
        Q_EMIT selectedTextChanged(d->selectedText);
        break;
    }
}

void DrawableText::selectWordAt(const TextHit &hit)
{
    const SelectionRange word = drawabletext::wordAt(*d, hit);
    if (!selectWithin(hit, word, SpanText))
        return;
    d->wordJustSelected = true;
    QTimer::singleShot(tripleClickTime, this, [this] { d->wordJustSelected = false; });
}

void DrawableText::selectSpanAt(const TextHit &hit)
{
    selectWithin(hit, drawabletext::spanAt(*d, hit, SpanEmoji), hit.span.kind);
}

bool DrawableText::selectWithin(const TextHit &hit, SelectionRange range, int selectType)
{
    const bool found = !range.isEmpty();
    TextHit start = hit;
    TextHit end = hit;
    if (found) {
        start.position = range.from;
        end.position = range.to;
    }
    drawabletext::selectRanges(*d, start, end);
    if (!found)
        return false;
    d->mousePressed = false;
    drawabletext::rebuildSelectionRects(*d);
    d->selectType = selectType;
    d->selectedText = drawabletext::withPlainSpaces(drawabletext::takeSelectionText(*d, start, end));
    update();
    Q_EMIT selectedTextChanged(d->selectedText);
    return true;
}

QString DrawableText::spanText(const TextHit &hit)
{
    const SelectionRange range = drawabletext::spanAt(*d, hit, SpanEmoji | SpanHighlight);
    if (range.isEmpty())
        return {};
    TextHit start = hit;
    TextHit end = hit;
    start.position = range.from;
    end.position = range.to;
    return drawabletext::withPlainSpaces(drawabletext::takeSelectionText(*d, start, end));
}

void DrawableText::selectAll()
{
    d->mousePressed = false;
    drawabletext::collectAllAites(*d);
    drawabletext::selectEverything(*d);
    drawabletext::rebuildSelectionRects(*d);
    // From the text itself, not from the layouts: an elided text is selected and copied whole.
    d->selectedText = flattenUserBlocks(d->text).replace(tabPlaceholder, QLatin1Char('\t'));
    d->selectType = SpanText;
    update();
    Q_EMIT selectedTextChanged(d->selectedText);
}

void DrawableText::deselect()
{
    d->mousePressed = false;
    drawabletext::resetSelection(*d);
    d->selectionEndHit = TextHit();
    d->selectionAnchorHit = TextHit();
    if (d->selectedText.isEmpty())
        return;
    d->selectedText.clear();
    d->selectType = SpanText;
    update();
    Q_EMIT selectedTextChanged(d->selectedText);
}

void DrawableText::recalculateAllAiteInfos()
{
    drawabletext::collectAllAites(*d);
}

QString DrawableText::aiteClipboardData()
{
    return aiteclipboard::toBase64(d->aiteInfos);
}

void DrawableText::copy()
{
    if (d->selectedText.isEmpty())
        return;
    QGuiApplication::clipboard()->setMimeData(
        aiteclipboard::createMimeData(d->selectedText, aiteClipboardData()), QClipboard::Clipboard);
}
