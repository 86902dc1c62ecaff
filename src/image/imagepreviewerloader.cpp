#include "imagepreviewerloader.h"

#include "imagereading.h"

#include <QPainter>
#include <qwidget.h>

QT_BEGIN_NAMESPACE
// Exported by Qt Widgets, where the graphics effects use it, but declared in no header.
Q_WIDGETS_EXPORT void qt_blurImage(QPainter *painter, QImage &image, qreal radius, bool quality,
                                   bool alphaOnly, int transposed);
QT_END_NAMESPACE

namespace {

/// Not blurred up to here.
constexpr double leastBlurRadius = 1.0;
/// Shorter side of blurred inline data, in pixels.
constexpr int blurredSide = 50;

/// `image` with its shorter side at 50 pixels, smaller pictures enlarged. Null if that is too large.
QImage thumbnail(const QImage &image)
{
    const int shorter = qMin(image.width(), image.height());
    const qint64 longer = qint64(blurredSide) * qMax(image.width(), image.height()) / shorter;
    if (longer * blurredSide * 4 > maximumPictureBytes)
        return QImage();
    return image.width() <= image.height() ? image.scaledToWidth(blurredSide, Qt::FastTransformation)
                                           : image.scaledToHeight(blurredSide, Qt::FastTransformation);
}

QImage blurred(QImage image, double radius)
{
    QImage out(image.size(), QImage::Format_ARGB32_Premultiplied);
    if (out.isNull())
        return QImage();
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    qt_blurImage(&painter, image, radius, true, false, 0);
    return out;
}

} // namespace

QImage loadPreviewSource(const QString &source, const QSize &size)
{
    if (size.isEmpty())
        return readImage(source);
    const auto target = [size](const QSize &full) { return sizeWithin(full, size); };
    const DecodedImage decoded = readImageFor(source, target);
    return decoded.image.isNull() ? QImage() : scaledSmoothly(decoded, target(decoded.fullSize));
}

QImage loadPreviewBackground(const QString &source, const QSize &size, double blurRadius)
{
    const bool isBlurred = blurRadius > leastBlurRadius;
    if (!source.contains(QLatin1Char(':'))) {
        const QImage image = imageFromData(QByteArray::fromBase64(source.toUtf8()));
        if (!isBlurred || image.isNull())
            return image;
        const QImage small = thumbnail(image);
        return small.isNull() ? QImage() : blurred(small, blurRadius);
    }
    const QImage image = loadPreviewSource(source, size);
    return isBlurred && !image.isNull() ? blurred(image, blurRadius) : image;
}
