#pragma once

#include <QColor>
#include <QImage>

#include <algorithm>

/// Visits a grid of an image's pixels: each `rowStep`-th row, and in it each n-th column, where n grows with
/// the image's height over its width, so that a tall image is sampled more thinly along its rows. `visit`
/// gets each pixel as QImage::pixelColor() tells it, but for the alpha, which may be left out: all bits of
/// it, since hue and saturation of a pixel with transparency or of 16 bits lie between those of 8-bit
/// colours.
template <typename Visitor>
void visitSamples(const QImage &image, int rowStep, Visitor visit)
{
    const int width = image.width();
    const int height = image.height();
    const int columnStep = int(std::max(2.0, rowStep * (double(height) / width)));
    const bool isPlain = image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32;

    for (int y = 0; y < height; y += rowStep) {
        if (isPlain) {
            const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
            for (int x = 0; x < width; x += columnStep)
                visit(QColor(line[x]));
        } else {
            for (int x = 0; x < width; x += columnStep)
                visit(image.pixelColor(x, y));
        }
    }
}
