#pragma once

#include <QColor>
#include <QImage>
#include <QRectF>

/// What the image items' shaders paint, worked out pixel by pixel from their formulas.
namespace shaderreference {

/// Radii in the unit that the item's formula uses: fractions of the shorter side, or pixels.
struct Corners
{
    double topLeft = 0;
    double topRight = 0;
    double bottomLeft = 0;
    double bottomRight = 0;
};

/// A picture and how it lies on the item, both areas from 0 to 1.
struct Layer
{
    QImage image;
    QRectF display{0, 0, 1, 1};
    QRectF source{0, 0, 1, 1};
};

/// `image` clipped to corners of `common`, or of `corners` where `common` is below 0.001, over `background`.
[[nodiscard]] QImage rounded(const QImage &image, const QSize &item, double common, const Corners &corners,
                             const QColor &background);

/// `source` blended over `back`, clipped to `corners` in pixels, over `background`.
[[nodiscard]] QImage blended(const Layer &source, const Layer &back, const QSize &item,
                             const Corners &corners, const QColor &background);

/// The layer of a picture that is fitted into the item, or cropped to cover it.
[[nodiscard]] Layer fitted(const QImage &image, const QSizeF &item);
[[nodiscard]] Layer cropped(const QImage &image, const QSizeF &item);

} // namespace shaderreference
