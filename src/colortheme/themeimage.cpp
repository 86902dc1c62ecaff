#include "themeimage.h"

#include <QImageReader>

namespace {

constexpr int longestSide = 400;
/// A header of a few bytes can promise any size, and most formats are decoded whole before they are scaled.
/// A 16-bit picture of 12,000 by 10,000 pixels still passes.
constexpr qint64 mostDecodedBytes = qint64(1) << 30;
constexpr int fewestColors = 2;
constexpr int mostColors = 256;

/// Whether the picture, decoded whole, stays within bounds. One that doesn't tell its size or format does.
bool fitsInMemory(const QImageReader &reader, const QSize &size)
{
    const QImage::Format format = reader.imageFormat();
    const int bitsPerPixel =
        format == QImage::Format_Invalid ? 32 : QImage::toPixelFormat(format).bitsPerPixel();
    return !size.isValid() || qint64(size.width()) * size.height() <= mostDecodedBytes * 8 / bitsPerPixel;
}

} // namespace

QImage readThemeImage(const QString &path)
{
    QImageReader reader;
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAutoDetectImageFormat(true);
    reader.setFileName(path);

    const QSize size = reader.size();
    if (!fitsInMemory(reader, size))
        return {};
    if (size.isValid() && (size.width() > longestSide || size.height() > longestSide)) {
        const double ratio = double(size.height()) / size.width();
        // One side is scaled from its own length, not from 400: 800 by 600 reads as 400 by 450. The sampling
        // grids of the quantisers were tuned on these pictures, so the shape stays.
        if (ratio < 1)
            reader.setScaledSize(QSize(longestSide, int(size.height() * ratio)));
        else
            reader.setScaledSize(QSize(int(size.width() / ratio), longestSide));
    }
    return reader.read();
}

bool isValidColorCount(int colorCount)
{
    return colorCount >= fewestColors && colorCount <= mostColors;
}
