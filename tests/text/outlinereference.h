#pragma once

#include <QImage>
#include <QPointF>
#include <QRectF>
#include <QVector>

/// The outline of a selection, and what filling it must look like, computed apart from the module.
namespace outline {

using Polygon = QVector<QPointF>;

/// The polygons of the selected lines `rects` with corners of `radius`, each meant as a triangle fan, in the
/// order in which they are drawn. Nothing reaches further right than `rightLimit`.
[[nodiscard]] QVector<Polygon> polygons(QVector<QRectF> rects, double radius, double rightLimit);

/// Fills the triangle fans with `color`, pixel by pixel: a pixel belongs to a triangle that holds its middle.
void fillFans(QImage &picture, const QVector<Polygon> &fans, QPointF offset, QRgb color);

} // namespace outline
