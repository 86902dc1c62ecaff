// What the pointer and the keyboard do to the item.

#include "drawabletext.h"

#include "aiteclipboard.h"
#include "fuzzy.h"
#include "hittest.h"

#include <QApplication>
#include <QCursor>
#include <QDrag>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

namespace {

/// A release this close to the press, sideways, still clicks what lies beneath it.
constexpr double clickDistance = 5.0;

/// Kinds that a right click selects whole.
constexpr int selectableKinds =
    SpanLink | SpanEmail | SpanSharp | SpanTextBlock | SpanAite | SpanOstrelId | SpanPlainAite;
/// Kinds that a release reports as hit when no press on the text went before it. A mention of nobody takes a
/// click, but is not reported here: clients tell a click on plain text by this.
constexpr int reportedKinds = selectableKinds & ~SpanPlainAite;

/// What the pointer does over a span.
struct HoverBehaviour
{
    int cursorKind = 0; ///< key of `spanCursors`; 0: the span is not interactive
    bool isLink = false;
};

HoverBehaviour hoverBehaviour(int kind)
{
    switch (kind) {
    case SpanText:
    case SpanEmoji:
        return {SpanText, false};
    case SpanLink:
    case SpanEmail:
    case SpanSharp:
        return {SpanLink, true};
    case SpanAite:
    case SpanPlainAite:
    case SpanOstrelId:
    case SpanTextBlock:
        return {SpanTextBlock, false};
    default:
        return {};
    }
}

QString withScheme(const QString &link)
{
    const QUrl url(link);
    const bool isComplete = url.isLocalFile() || !url.scheme().isEmpty();
    return isComplete ? link : QLatin1String("http://") + link;
}

QString withMailScheme(const QString &address)
{
    const QLatin1String scheme("mailto:");
    return address.startsWith(scheme) ? address : scheme + address;
}

bool hasEdge(double rightEdge)
{
    return !isFuzzyEqual(rightEdge, -1.0);
}

} // namespace

// ---- hover

bool DrawableText::isOnText(QPointF point, double rightEdge) const
{
    return hasEdge(rightEdge) && rightEdge + d->effectiveRightPadding() >= point.x();
}

void DrawableText::hover(QPointF point)
{
    if (d->mousePressed)
        return;
    if (isOnText(point, lineRightEdge(point, true)))
        updateHover(point);
    else
        clearHover();
}

void DrawableText::updateHover(QPointF point)
{
    const TextHit hit = hitTest(point, drawabletext::hitSpan, true, true);
    TextSpan span = hit.span;
    // In the line, but not on a character.
    if (!hit.rect.contains(point))
        span.kind = SpanText;
    const HoverBehaviour behaviour = hoverBehaviour(span.kind);
    if (hit.position == -1 || behaviour.cursorKind == 0) {
        clearHover();
        return;
    }
    QCursor shaped = cursor();
    shaped.setShape(d->spanCursors.value(behaviour.cursorKind, Qt::ArrowCursor));
    setCursor(shaped);
    d->hoverSpan = span;
    // With every move over the span; nothing is said when the pointer leaves it.
    if (behaviour.isLink)
        Q_EMIT linkHovered(span.data.toString());
}

void DrawableText::clearHover()
{
    unsetCursor();
    d->hoverSpan = TextSpan();
}

void DrawableText::hoverEnterEvent(QHoverEvent *event)
{
    hover(event->posF());
    QQuickItem::hoverEnterEvent(event);
}

void DrawableText::hoverMoveEvent(QHoverEvent *event)
{
    if (!d->mousePressed)
        event->ignore();
    hover(event->posF());
    QQuickItem::hoverMoveEvent(event);
}

void DrawableText::hoverLeaveEvent(QHoverEvent *event)
{
    clearHover();
    QQuickItem::hoverLeaveEvent(event);
}

// ---- buttons

bool DrawableText::isInSelection(QPointF point) const
{
    if (d->selectedText.isEmpty())
        return false;
    const TextHit hit = hitTest(point, drawabletext::hitCharacter, false, false);
    if (hit.paragraph < 0)
        return false;
    const SelectionRange range = d->selectionRanges.value(hit.paragraph);
    return !range.isEmpty() && range.from <= hit.position && hit.position <= range.to;
}

void DrawableText::mousePressEvent(QMouseEvent *event)
{
    const QPointF point = event->localPos();
    const double right = lineRightEdge(point, false);
    if (event->button() == Qt::LeftButton && d->mouseEnabled &&
        right + d->effectiveRightPadding() >= point.x()) {
        d->movePosition = QPointF(-1, -1);
        d->mousePressed = true;
        d->pressPosition = point;
        if (!d->selectByMouse)
            return;
        d->selectionDirection = SelectionDirection::None;
        forceActiveFocus();
        setKeepMouseGrab(true);
        event->accept();
        if (d->dragEnabled)
            d->pressedInSelection = isInSelection(point);
    } else if (event->button() == Qt::RightButton && d->mouseEnabled && d->selectByMouse &&
               right >= point.x()) {
        // A menu on a link acts on the whole link.
        const TextHit hit = hitTest(point, drawabletext::hitSpan, false, false);
        if (hit.span.kind & selectableKinds)
            selectSpanAt(hit);
        forceActiveFocus();
        setKeepMouseGrab(true);
        QQuickItem::mousePressEvent(event);
    } else {
        // Beside the text the press belongs to what lies beneath.
        event->ignore();
        deselect();
    }
}

void DrawableText::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF point = event->localPos();
    const bool isSelecting = d->mousePressed && d->mouseEnabled && d->selectByMouse;
    // A drag that starts beside the text selects nothing until it reaches some.
    if (!isSelecting || (!isOnText(point, lineRightEdge(point, false)) && d->selectedText.isEmpty())) {
        event->ignore();
        QQuickItem::mouseMoveEvent(event);
        return;
    }

    const double distance = (QPointF(event->pos()) - d->pressPosition).manhattanLength();
    if (d->pressedInSelection) {
        if (distance >= QApplication::startDragDistance())
            dragSelectedText();
        return;
    }
    if (distance >= d->selectionDragThreshold) {
        event->accept();
        d->movePosition = point;
        update();
        updateDragSelection();
    }
}

void DrawableText::dragSelectedText()
{
    // The drag runs an event loop, in which this item may be deleted, and the drag with it, or its state
    // replaced.
    const QPointer<DrawableText> self(this);
    const QPointer<QDrag> drag(new QDrag(this));
    drag->setMimeData(aiteclipboard::createMimeData(d->selectedText, aiteClipboardData()));
    Q_EMIT dragStart();
    if (drag)
        drag->exec(Qt::CopyAction);
    if (self) {
        d->pressedInSelection = false;
        d->mousePressed = false;
    }
    if (drag)
        drag->deleteLater();
}

void DrawableText::mouseReleaseEvent(QMouseEvent *event)
{
    const QPointF point = event->localPos();
    const double right = lineRightEdge(point, false);
    // Within an "X" behind the text, where the press had to be within the padding.
    const bool isClick = event->button() == Qt::LeftButton && d->mouseEnabled && d->mousePressed &&
                         hasEdge(right) && right + d->xWidth >= point.x();
    if (!isClick) {
        bool onUserBlock = false;
        if (!d->mousePressed) {
            const TextHit hit = hitTest(point, drawabletext::hitSpan, false, false);
            onUserBlock = hit.span.kind & reportedKinds;
        }
        event->ignore();
        QQuickItem::mouseReleaseEvent(event);
        Q_EMIT mouseRelease(onUserBlock);
        return;
    }

    event->accept();
    setKeepMouseGrab(false);
    // Handlers of the signals may run an event loop, for a menu or a question, that outlives the item.
    const QPointer<DrawableText> self(this);
    bool onUserBlock = false;
    if (d->selectByMouse && point != d->pressPosition) {
        d->mousePressed = false;
        d->movePosition = point;
        update();
        updateDragSelection();
        // A tiny drag on a link both selects and opens it.
        if (self && qAbs(d->movePosition.x() - d->pressPosition.x()) < clickDistance)
            onUserBlock = activateAt(point);
    } else if (d->wordJustSelected) {
        d->wordJustSelected = false;
        selectAll();
    } else {
        deselect();
        if (self)
            onUserBlock = activateAt(point);
    }
    if (self)
        Q_EMIT mouseRelease(onUserBlock);
}

void DrawableText::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!d->selectByMouse || !d->doubleClickEnabled)
        return;
    const QPointer<DrawableText> self(this);
    const TextHit hit = hitTest(event->localPos(), drawabletext::hitCharacter, false, false);
    if (hit.paragraph == -1)
        selectAll();
    else
        selectWordAt(hit);
    event->ignore();
    if (self)
        QQuickItem::mouseDoubleClickEvent(event);
}

bool DrawableText::activateAt(QPointF point)
{
    const TextHit hit = hitTest(point, drawabletext::hitSpan, false, false);
    if (hit.position == -1 || !hit.rect.contains(point))
        return false;
    switch (hit.span.kind) {
    case SpanLink:
        Q_EMIT linkActivated(withScheme(spanText(hit)));
        return true;
    case SpanEmail:
        Q_EMIT linkActivated(withMailScheme(spanText(hit)));
        return true;
    case SpanAite:
    case SpanPlainAite:
        Q_EMIT aiteClick(hit.span.data);
        return true;
    case SpanTextBlock:
        Q_EMIT textBlockClick(hit.span.data);
        return true;
    case SpanOstrelId: {
        const QString id = spanText(hit);
        Q_EMIT ostrelIdClick(id.startsWith(QLatin1Char('@')) ? id.mid(1) : id);
        return true;
    }
    case SpanSharp:
        Q_EMIT sharpClick(spanText(hit));
        return true;
    default:
        return false;
    }
}

// ---- keyboard

void DrawableText::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else if (event->matches(QKeySequence::Copy))
        copy();
    // Also for the keys above: the base class ignores the event, so it travels on to the parents, which may
    // select or copy in theirs.
    QQuickItem::keyPressEvent(event);
}
