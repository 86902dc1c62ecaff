#include "selectiondrag.h"

#include "fuzzy.h"
#include "hittest.h"
#include "selection.h"
#include "selectiontext.h"

#include <utility>

namespace drawabletext {
namespace {

/// Whether a drag from `press` to `move` stays within one half of the character at `cell`. The middle itself
/// belongs to both halves.
bool staysInHalf(const QRectF &cell, QPointF press, QPointF move)
{
    if (!cell.contains(press) || !cell.contains(move))
        return false;
    const double middle = cell.x() + cell.width() * 0.5;
    const bool crossed =
        (press.x() < middle && middle < move.x()) || (move.x() < middle && middle < press.x());
    return !crossed;
}

bool isForward(const TextHit &anchor, const TextHit &end, double pressX, double moveX)
{
    if (anchor.paragraph != end.paragraph)
        return anchor.paragraph < end.paragraph;
    if (anchor.position != end.position)
        return anchor.position < end.position;
    return !(pressX > moveX);
}

} // namespace

DragOutcome dragSelection(DrawableTextPrivate &state, double itemWidth)
{
    QPointF &press = state.pressPosition;
    const QPointF move = state.movePosition;
    if (isFuzzyEqual(press.x(), move.x()) && isFuzzyEqual(press.y(), move.y()))
        return DragOutcome::Collapsed;

    const auto hitAt = [&state, itemWidth](QPointF point) {
        return hitTest(state, itemWidth, point, {hitCharacter, true, false});
    };
    TextHit anchor = hitAt(press);
    if (staysInHalf(anchor.rect, press, move))
        return DragOutcome::Unchanged;
    TextHit end = hitAt(move);
    if (anchor.line == -1 || end.line == -1)
        return DragOutcome::Unchanged;
    if (state.selectionEndHit == end && state.selectionAnchorHit == anchor)
        return DragOutcome::Unchanged;
    state.selectionEndHit = end;
    state.selectionAnchorHit = anchor;

    // A press at the very end of a character that moves on to the next one meant the next one.
    if (anchor.paragraph == end.paragraph && move.x() > press.x() && end.position - anchor.position == 1) {
        const QPointF corrected(press.x() + state.selectionDragThreshold, press.y());
        const TextHit next = hitAt(corrected);
        if (next == end) {
            anchor = next;
            state.selectionAnchorHit = next;
            press = corrected;
        }
    }

    if (isForward(anchor, end, press.x(), move.x())) {
        state.selectionDirection = SelectionDirection::Forward;
        if (press.x() > anchor.rect.center().x())
            ++anchor.position;
    } else {
        std::swap(anchor, end);
        state.selectionDirection = SelectionDirection::Backward;
        if (end.rect.center().x() > press.x())
            --end.position;
    }

    selectRanges(state, anchor, end);
    rebuildSelectionRects(state);
    state.selectType = SpanText;
    state.selectedText = withPlainSpaces(takeSelectionText(state, anchor, end));
    return DragOutcome::Selected;
}

} // namespace drawabletext
