#pragma once

#include <QPointF>
#include <QRectF>
#include <QVector>

/// From the rectangles of selected lines to the polygons that are filled. Points in, points out.
namespace drawabletext {

/// The points of a triangle fan; the first one is the hub.
using FanPolygon = QVector<QPointF>;

/// A quarter circle: 18 points from `startAngle` on, 5 degrees apart, the end of the quarter left out. Angles
/// are degrees, run clockwise because y points down, and are multiples of 5 and not negative. `reversed`
/// gives the same points in opposite order.
[[nodiscard]] FanPolygon arc(QPointF centre, double radius, int startAngle, bool reversed = false);

/// A rectangle with four round corners, clockwise from the left end of its top-left corner: 72 points.
[[nodiscard]] FanPolygon roundedRectangle(const QRectF &rect, double radius);

/// Splits the rectangles into groups of neighbours that touch, each of which gets one outline. Rounds their
/// widths up and cuts them at `rightLimit` in place, so that neighbours are compared as they are drawn. A
/// rectangle without width is left out of its group but does not end it. Groups may be empty.
[[nodiscard]] QVector<QVector<QRectF>> groupSelectionRects(QVector<QRectF> &rects, double rightLimit);

/// The polygons of one group: one for each rectangle, and in front of it the small fillets of the inner
/// corners at its lower edge.
[[nodiscard]] QVector<FanPolygon> outlineGroup(const QVector<QRectF> &group, double radius);

} // namespace drawabletext
