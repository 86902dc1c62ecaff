#include "hittest.h"

#include "drawabletextprivate.h"

#include <QFontMetricsF>

#include <private/qtextengine_p.h>

namespace drawabletext {
namespace {

/// How far a line reaches to the right of its paragraph for a drag or a hover.
constexpr double farRight = 9999.0;
/// How far below the text a hover still finds the last line.
constexpr double bottomReach = 2.0;

/// The line under a point.
struct Place
{
    int paragraph = -1;
    int line = -1;
    bool pastEnd = false; ///< the point lies to the right of the paragraph
    double x = 0.0;       ///< of the point, once moved to the text
};

QPointF movedToText(const DrawableTextPrivate &state, double itemWidth, QPointF point, bool bottomSlack)
{
    const double left = state.effectiveLeftPadding();
    const double top = state.effectiveTopPadding();
    if (point.x() < left)
        point.setX(left);
    else if (point.x() > itemWidth)
        point.setX(itemWidth);

    if (point.y() < top) {
        point.setY(top);
    } else if (!state.layouts.isEmpty() && state.layouts.constLast()) {
        const QTextLayout *last = state.layouts.constLast();
        const double bottom = last->position().y() + last->boundingRect().height();
        if (point.y() > bottom && (!bottomSlack || point.y() < bottom + bottomReach))
            point.setY(bottom - 1.0);
    }
    return point;
}

/// The first line whose rectangle, made `width` wide, contains `point`; -1 for none.
int lineAt(const QTextLayout &layout, QPointF point, double width)
{
    for (int i = 0; i < layout.lineCount(); ++i) {
        QRectF rect = layout.lineAt(i).rect().translated(layout.position());
        rect.setWidth(width);
        if (rect.contains(point))
            return i;
    }
    return -1;
}

Place placeAt(const DrawableTextPrivate &state, double itemWidth, QPointF point, HitOptions options)
{
    point = movedToText(state, itemWidth, point, options.bottomSlack);
    Place place;
    place.x = point.x();
    for (int i = 0; i < state.layouts.size(); ++i) {
        const QTextLayout *layout = state.layouts.at(i);
        if (!layout)
            continue;
        QRectF bounds = layout->boundingRect();
        bounds.moveTo(layout->position());
        const bool inside = bounds.contains(point);
        // The width, not the right edge: with a left padding the end of the line reaches a little into it.
        const bool beside = !inside && options.extendRight && point.x() > bounds.width() &&
                            bounds.top() < point.y() && point.y() < bounds.bottom();
        if (!inside && !beside)
            continue;
        place.paragraph = i;
        place.pastEnd = beside;
        if (options.flags & hitLine)
            place.line = lineAt(*layout, point, beside ? farRight : bounds.width());
        break;
    }
    return place;
}

/// Width of `text` as one run in the item's font. A stack engine shapes it without laying out anything, which
/// is what makes a hit test cheap enough for every hover event.
double measuredWidth(const DrawableTextPrivate &state, const QString &text)
{
    if (text.isEmpty())
        return 0.0;
    QStackTextEngine engine(text, state.layoutFont);
    engine.option.setTabStopDistance(state.tabWidth);
    engine.itemize();
    return engine.width(0, text.size()).toReal();
}

double cellWidth(const DrawableTextPrivate &state, const TextHit &hit, int lineStart)
{
    if (hit.character == QLatin1Char('\t'))
        return hit.position == lineStart ? state.tabWidth : state.tabWidth * 0.5;
    return QFontMetricsF(state.layoutFont).horizontalAdvance(hit.character);
}

/// Fills in what follows from `paragraph`, `line` and `position`.
void describe(const DrawableTextPrivate &state, TextHit &hit, int flags)
{
    const QTextLayout &layout = *state.layouts.at(hit.paragraph);
    const QTextLine line = layout.lineAt(hit.line);
    const QString text = layout.text();
    if (hit.position < text.size())
        hit.character = text.at(hit.position);

    // The line's own x is left out, so alignment and indent do not move the cell; selections of such lines
    // have always been drawn from the edge, and clients place their menus by that.
    const int start = line.textStart();
    const double left = measuredWidth(state, text.mid(start, qMax(0, hit.position - start)));
    hit.rect = QRectF(layout.position().x() + left, layout.position().y() + line.y(),
                      cellWidth(state, hit, start), line.height());

    if (!(flags & hitSpan) || hit.paragraph >= state.spans.size())
        return;
    for (const TextSpan &span : state.spans.at(hit.paragraph)) {
        if (span.contains(hit.position)) {
            hit.span = span;
            return;
        }
    }
}

} // namespace

TextHit hitTest(const DrawableTextPrivate &state, double itemWidth, QPointF point, HitOptions options)
{
    const Place place = placeAt(state, itemWidth, point, options);
    TextHit hit;
    hit.paragraph = place.paragraph;
    hit.line = place.line;
    if (place.line == -1 || !(options.flags & hitCharacter))
        return hit;

    const QTextLayout &layout = *state.layouts.at(place.paragraph);
    const QTextLine line = layout.lineAt(place.line);
    hit.position = place.pastEnd
                       ? line.textStart() - 1 + line.textLength()
                       : line.xToCursor(place.x - layout.position().x(), QTextLine::CursorOnCharacter);
    if (hit.position >= 0)
        describe(state, hit, options.flags);
    return hit;
}

TextHit hitAtPosition(const DrawableTextPrivate &state, int paragraph, int position, int flags)
{
    if (paragraph < 0 || paragraph >= state.layouts.size())
        return {};
    const QTextLayout *layout = state.layouts.at(paragraph);
    if (!layout || !layout->isValidCursorPosition(position))
        return {};
    const QTextLine line = layout->lineForTextPosition(position);
    if (!line.isValid())
        return {};

    TextHit hit;
    hit.paragraph = paragraph;
    if (flags & hitLine)
        hit.line = line.lineNumber();
    if (hit.line == -1 || !(flags & hitCharacter))
        return hit;
    hit.position = position;
    describe(state, hit, flags);
    return hit;
}

double lineRightEdge(const DrawableTextPrivate &state, double itemWidth, QPointF point, bool bottomSlack)
{
    const Place place = placeAt(state, itemWidth, point, {hitLine, true, bottomSlack});
    if (place.line == -1)
        return -1.0;
    const QTextLayout &layout = *state.layouts.at(place.paragraph);
    return layout.position().x() + layout.lineAt(place.line).naturalTextWidth();
}

} // namespace drawabletext
