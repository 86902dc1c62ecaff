#include "imagereading.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace {

/// The JPEG decoder computes pictures of so many eighths of the full size out of fewer coefficients.
constexpr int decoderFractions = 8;
/// Each pixel of the result is the mean of at least four decoded ones.
constexpr int oversampling = 2;

bool isPictureWithinLimit(const QImageReader &reader)
{
    const QSize size = reader.size();
    // Formats that tell no size beforehand are small ones, and Qt's own checks have to do.
    if (!size.isValid())
        return true;
    const QImage::Format format = reader.imageFormat();
    const int depth = format == QImage::Format_Invalid ? 32 : QImage::toPixelFormat(format).bitsPerPixel();
    return isWithinPictureLimit(size, std::max(4, depth / 8));
}

void configure(QImageReader &reader)
{
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAutoDetectImageFormat(true);
    reader.setQuality(100);
}

/// The reduced size at which to decode a picture of `size` on the way to `target`; `size` for none.
///
/// Only fractions that come out even: the decoder rounds up, and the picture would be shifted by what it
/// added.
QSize decodingSize(const QSize &size, const QSize &target)
{
    for (int eighths = 1; eighths < decoderFractions; ++eighths) {
        const qint64 width = qint64(size.width()) * eighths;
        const qint64 height = qint64(size.height()) * eighths;
        if (width % decoderFractions == 0 && height % decoderFractions == 0 &&
            width >= qint64(target.width()) * oversampling * decoderFractions &&
            height >= qint64(target.height()) * oversampling * decoderFractions)
            return QSize(int(width / decoderFractions), int(height / decoderFractions));
    }
    return size;
}

} // namespace

bool isWithinPictureLimit(const QSize &size, int bytesPerPixel)
{
    return !size.isEmpty() && qint64(size.width()) * size.height() <= maximumPictureBytes / bytesPerPixel;
}

bool isFileWithinPictureLimit(const QString &path)
{
    return path.isEmpty() || isPictureWithinLimit(QImageReader(path));
}

QImage readImage(const QString &source)
{
    if (source.isEmpty())
        return QImage();
    QImageReader reader(source, QByteArray());
    configure(reader);
    return isPictureWithinLimit(reader) ? reader.read() : QImage();
}

QImage imageFromData(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, QByteArray());
    return isPictureWithinLimit(reader) ? reader.read() : QImage();
}

DecodedImage readImageFor(const QString &source, const std::function<QSize(const QSize &)> &targetSize)
{
    if (source.isEmpty())
        return {};
    QImageReader reader(source, QByteArray());
    configure(reader);
    if (!isPictureWithinLimit(reader))
        return {};
    const QSize size = reader.size();
    if (size.isValid() && reader.format() == "jpeg") {
        const bool isTurned = reader.transformation() & QImageIOHandler::TransformationRotate90;
        const QSize fullSize = isTurned ? size.transposed() : size;
        const QSize target = targetSize(fullSize);
        if (!target.isEmpty()) {
            reader.setScaledSize(decodingSize(size, isTurned ? target.transposed() : target));
            return {reader.read(), fullSize};
        }
    }
    const QImage image = reader.read();
    return {image, image.size()};
}

QImage scaledSmoothly(const DecodedImage &decoded, const QSize &size)
{
    if (decoded.image.isNull() || !isWithinPictureLimit(size))
        return QImage();
    return decoded.image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QSize sizeScaledInto(const QSize &size, const QSize &bounds, Qt::AspectRatioMode mode)
{
    return size.scaled(bounds, mode).expandedTo(QSize(1, 1));
}

bool isLarger(const QSize &size, const QSize &limit)
{
    return size.width() > limit.width() || size.height() > limit.height();
}

QSize sizeWithin(const QSize &size, const QSize &limit)
{
    return isLarger(size, limit) ? sizeScaledInto(size, limit, Qt::KeepAspectRatio) : size;
}

QSize sizeScaledToWidth(const QSize &size, int width)
{
    const double factor = double(width) / size.width();
    return QSize(width, int(factor * size.height() + 0.9999));
}
