#include "imagerenderloader.h"

#include "imagecaches.h"
#include "imagereading.h"
#include "quadraticblur.h"

#include <QMutexLocker>

#include <algorithm>

namespace {

constexpr double foregroundScale = 2.0;
/// Blurred backgrounds are computed at this width, and the texture's filtering stretches them.
constexpr int blurredWidth = 32;
/// Not blurred up to here.
constexpr double leastBlurRadius = 1.0;
constexpr double greatestBlurRadius = 1000.0; // beyond what the blur tells apart, within what an int holds

QSize thumbnailSize(const QSize &full)
{
    return full.width() > blurredWidth ? sizeScaledToWidth(full, blurredWidth) : full;
}

QImage blurredThumbnail(DecodedImage decoded, double blurRadius)
{
    decoded.image.convertTo(QImage::Format_ARGB32_Premultiplied);
    QImage image = scaledSmoothly(decoded, thumbnailSize(decoded.fullSize));
    if (image.isNull())
        return image;
    const int radius = int(std::min(blurRadius, greatestBlurRadius));
    quadraticBlur(image.bits(), image.width(), image.height(), 4, radius);
    return image;
}

/// Keeps `image`, unless another worker was first.
void keep(const QString &key, const QImage &image)
{
    const QMutexLocker locker(&renderImageCacheMutex);
    if (!renderImageCache.contains(key))
        renderImageCache.insert(key, new QImage(image), imageCacheCost(image));
}

QImage loadFileBackground(const QString &source, const QString &key, const QSize &size, double blurRadius)
{
    if (blurRadius > leastBlurRadius) {
        const DecodedImage decoded = readImageFor(source, thumbnailSize);
        if (decoded.image.isNull())
            return QImage();
        const QImage image = blurredThumbnail(decoded, blurRadius);
        keep(key, image);
        return image;
    }
    if (size.isEmpty())
        return readImage(source);
    const DecodedImage decoded =
        readImageFor(source, [size](const QSize &full) { return sizeWithin(full, size); });
    if (decoded.image.isNull() || !isLarger(decoded.fullSize, size))
        return decoded.image; // reading it again costs what the cache would save elsewhere
    const QImage image = scaledSmoothly(decoded, sizeWithin(decoded.fullSize, size));
    keep(key, image);
    return image;
}

QImage loadInlineBackground(const QString &source, const QString &key, double blurRadius)
{
    const QImage whole = imageFromData(QByteArray::fromBase64(source.toUtf8()));
    const QImage image = blurRadius > leastBlurRadius && !whole.isNull()
                             ? blurredThumbnail({whole, whole.size()}, blurRadius)
                             : whole;
    // Broken data is kept, too: it stays broken.
    keep(key, image);
    return image;
}

} // namespace

QImage loadRenderSource(const QString &source, const QSize &size, bool)
{
    if (size.isEmpty())
        return readImage(source);
    const QSize limit(qRound(foregroundScale * size.width()), qRound(foregroundScale * size.height()));
    const auto target = [limit](const QSize &full) { return sizeWithin(full, limit); };
    const DecodedImage decoded = readImageFor(source, target);
    return decoded.image.isNull() ? QImage() : scaledSmoothly(decoded, target(decoded.fullSize));
}

QImage loadRenderBackground(const QString &source, const QSize &size, double blurRadius)
{
    const QString key = imageCacheKey(source);
    {
        const QMutexLocker locker(&renderImageCacheMutex);
        if (const QImage *cached = renderImageCache.object(key))
            return *cached;
    }
    if (source.contains(QLatin1Char(':')))
        return loadFileBackground(source, key, size, blurRadius);
    return loadInlineBackground(source, key, blurRadius);
}
