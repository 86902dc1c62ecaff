#pragma once

#include <QColor>
#include <QImage>
#include <QRgba64>

#include <algorithm>

/// Visits a grid of an image's pixels: each `rowStep`-th row, and in it each n-th column, where n grows with
/// the image's height over its width, so that a tall image is sampled more thinly along its rows. `visit`
/// gets each pixel as an unpremultiplied QRgb, equal to what QImage::pixelColor() tells of it.
template <typename Visitor>
void visitSamples(const QImage &image, int rowStep, Visitor visit)
{
    const int width = image.width();
    const int height = image.height();
    const int columnStep = int(std::max(2.0, rowStep * (double(height) / width)));

    for (int y = 0; y < height; y += rowStep) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        switch (image.format()) {
        case QImage::Format_RGB32:
        case QImage::Format_ARGB32:
            for (int x = 0; x < width; x += columnStep)
                visit(line[x]);
            break;
        case QImage::Format_ARGB32_Premultiplied:
            for (int x = 0; x < width; x += columnStep) {
                const QRgb pixel = line[x];
                visit(qAlpha(pixel) == 255 ? pixel
                                           : QColor(QRgba64::fromArgb32(pixel).unpremultiplied()).rgba());
            }
            break;
        default:
            for (int x = 0; x < width; x += columnStep)
                visit(image.pixelColor(x, y).rgba());
        }
    }
}
