#include "imagecaches.h"

#include <QCryptographicHash>

namespace {

constexpr int maximumCacheCost = 50 * 1024 * 1024; // bytes, for each of the two

} // namespace

// The pool stands last, so that it goes first and waits for the workers that use the rest.
QMutex roundedImageCacheMutex;
QCache<QString, QImage> roundedImageCache(maximumCacheCost);
QMutex renderImageCacheMutex;
QCache<QString, QImage> renderImageCache(maximumCacheCost);
QThreadPool renderThreadPool;

QString imageCacheKey(const QString &source)
{
    const QByteArray hash = QCryptographicHash::hash(source.toLocal8Bit(), QCryptographicHash::Md5);
    return QString::fromLatin1(hash.toHex());
}

int imageCacheCost(const QImage &image)
{
    return image.height() * image.width() * 4;
}
