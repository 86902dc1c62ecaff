#include "roundedimageloader.h"

#include "imagecaches.h"
#include "imagereading.h"

#include <QMutexLocker>
#include <QPainter>

#include <algorithm>

namespace {

/// The rectangle of `inner` size in the middle of `outer`, on whole pixels.
QRect centredRect(const QSize &outer, const QSize &inner)
{
    return QRect(QPoint((outer.width() - inner.width()) / 2, (outer.height() - inner.height()) / 2), inner);
}

QImage stretched(const QString &source, const QSize &size)
{
    const DecodedImage decoded = readImageFor(source, [size](const QSize &) { return size; });
    return scaledSmoothly(decoded, size);
}

QImage fitted(const QString &source, const QSize &size)
{
    const DecodedImage decoded = readImageFor(
        source, [size](const QSize &full) { return sizeScaledInto(full, size, Qt::KeepAspectRatio); });
    if (decoded.image.isNull())
        return QImage();
    const QImage scaled =
        scaledSmoothly(decoded, sizeScaledInto(decoded.fullSize, size, Qt::KeepAspectRatio));
    QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
    if (canvas.isNull())
        return QImage();
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    painter.drawImage(centredRect(size, scaled.size()), scaled);
    return canvas;
}

/// Whether a picture of `full` size, scaled until it covers `size`, keeps to the limit.
bool isCoverWithinLimit(const QSize &full, const QSize &size)
{
    const double factor =
        std::max(double(size.width()) / full.width(), double(size.height()) / full.height());
    const double pixels = factor * full.width() * factor * full.height();
    return pixels * 4 <= double(maximumPictureBytes);
}

QSize coverSize(const QSize &full, const QSize &size)
{
    return isCoverWithinLimit(full, size) ? sizeScaledInto(full, size, Qt::KeepAspectRatioByExpanding)
                                          : QSize();
}

QImage cropped(const QString &source, const QSize &size)
{
    const DecodedImage decoded =
        readImageFor(source, [size](const QSize &full) { return coverSize(full, size); });
    if (decoded.image.isNull())
        return QImage();
    const QSize cover = coverSize(decoded.fullSize, size);
    if (cover.isValid()) {
        const QImage scaled = scaledSmoothly(decoded, cover);
        return scaled.copy(centredRect(scaled.size(), size));
    }
    // A strip of one by thirty thousand would take gigabytes before it is cut: cut it first.
    const QSize part = sizeScaledInto(size, decoded.image.size(), Qt::KeepAspectRatio);
    return decoded.image.copy(centredRect(decoded.image.size(), part))
        .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage load(const QString &source, const QSize &size, RoundedImage::FillMode fillMode)
{
    switch (fillMode) {
    case RoundedImage::Stretch:
        return isWithinPictureLimit(size) ? stretched(source, size) : QImage();
    case RoundedImage::PreserveAspectFit:
        return isWithinPictureLimit(size) ? fitted(source, size) : QImage();
    case RoundedImage::PreserveAspectCrop:
        return isWithinPictureLimit(size) ? cropped(source, size) : QImage();
    }
    // A script can store any number as a fill mode: the picture stays as it is.
    return readImage(source);
}

} // namespace

QImage loadRoundedImage(const QString &source, const QSize &size, RoundedImage::FillMode fillMode, bool cache)
{
    const QString key = imageCacheKey(source);
    {
        const QMutexLocker locker(&roundedImageCacheMutex);
        const QImage *cached = roundedImageCache.object(key);
        // The entry wins over the fill mode that is asked for: a list that shows one avatar in two ways
        // decodes it once.
        if (cached && cached->width() >= size.width() && cached->height() >= size.height())
            return *cached;
    }
    const QImage image = size.isValid() ? load(source, size, fillMode) : QImage();
    if (cache) {
        const QMutexLocker locker(&roundedImageCacheMutex);
        roundedImageCache.insert(key, new QImage(image), imageCacheCost(image));
    }
    return image;
}
