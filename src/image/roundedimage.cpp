#include "roundedimage.h"

#include "imagecaches.h"
#include "imageresult.h"
#include "roundedimageloader.h"
#include "roundedimagenode.h"
#include "valuestore.h"

#include <QMutexLocker>
#include <QQuickWindow>
#include <QtConcurrentRun>

#include <algorithm>

RoundedImage::RoundedImage(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(QQuickItem::ItemHasContents);
    connect(&watcher, &QFutureWatcher<QImage>::finished, this, &RoundedImage::takeResult);
}

RoundedImage::~RoundedImage()
{
    QObject::disconnect(&watcher, nullptr, nullptr, nullptr);
    watcher.waitForFinished();
}

QString RoundedImage::source() const
{
    return values.source;
}

void RoundedImage::setSource(const QString &source)
{
    if (!storeIfChanged(values.source, source))
        return;
    cacheKey = imageCacheKey(source);
    Q_EMIT sourceChanged(source);
    updatePainterData();
}

double RoundedImage::radius() const
{
    return values.radius;
}

void RoundedImage::setRadius(double radius)
{
    storeRadius(&Values::radius, radius, &RoundedImage::radiusChanged);
}

double RoundedImage::radiusTopLeft() const
{
    return values.radiusTopLeft;
}

void RoundedImage::setRadiusTopLeft(double radiusTopLeft)
{
    storeRadius(&Values::radiusTopLeft, radiusTopLeft, &RoundedImage::radiusTopLeftChanged);
}

double RoundedImage::radiusTopRight() const
{
    return values.radiusTopRight;
}

void RoundedImage::setRadiusTopRight(double radiusTopRight)
{
    storeRadius(&Values::radiusTopRight, radiusTopRight, &RoundedImage::radiusTopRightChanged);
}

double RoundedImage::radiusBottomLeft() const
{
    return values.radiusBottomLeft;
}

void RoundedImage::setRadiusBottomLeft(double radiusBottomLeft)
{
    storeRadius(&Values::radiusBottomLeft, radiusBottomLeft, &RoundedImage::radiusBottomLeftChanged);
}

double RoundedImage::radiusBottomRight() const
{
    return values.radiusBottomRight;
}

void RoundedImage::setRadiusBottomRight(double radiusBottomRight)
{
    storeRadius(&Values::radiusBottomRight, radiusBottomRight, &RoundedImage::radiusBottomRightChanged);
}

void RoundedImage::storeRadius(double Values::*radius, double value, void (RoundedImage::*changed)(double))
{
    if (!storeIfChanged(values.*radius, value))
        return;
    Q_EMIT(this->*changed)(value);
    radiusDirty = true;
    update();
}

RoundedImage::FillMode RoundedImage::fillMode() const
{
    return values.fillMode;
}

void RoundedImage::setFillMode(FillMode fillMode)
{
    if (!storeIfChanged(values.fillMode, fillMode))
        return;
    Q_EMIT fillModeChanged(fillMode);
    updatePainterData();
}

bool RoundedImage::cache() const
{
    return values.cache;
}

void RoundedImage::setCache(bool cache)
{
    if (storeIfChanged(values.cache, cache))
        Q_EMIT cacheChanged(cache);
}

QSize RoundedImage::sourceSize() const
{
    return values.sourceSize;
}

void RoundedImage::setSourceSize(const QSize &sourceSize)
{
    if (!storeIfChanged(values.sourceSize, sourceSize))
        return;
    Q_EMIT sourceSizeChanged(sourceSize);
    updatePainterData();
}

void RoundedImage::componentComplete()
{
    QQuickItem::componentComplete();
    updatePainterData();
}

// Only under the mutex of the cache.
bool RoundedImage::isCached() const
{
    return values.cache && !cacheKey.isEmpty() && roundedImageCache.contains(cacheKey);
}

QSize RoundedImage::loadSize() const
{
    if (values.sourceSize.isValid())
        return values.sourceSize;
    const QSize size = boundingRect().size().toSize();
    // Outside a window nobody knows the ratio yet.
    const double ratio = window() ? window()->devicePixelRatio() : 1.0;
    return QSize(qRound(size.width() * ratio), qRound(size.height() * ratio));
}

void RoundedImage::updatePainterData()
{
    if (!isComponentComplete())
        return;
    {
        const QMutexLocker locker(&roundedImageCacheMutex);
        if (isCached() && !watcher.isRunning()) {
            const QImage *image = roundedImageCache.object(cacheKey);
            if (image->width() >= width() && image->height() >= height()) {
                textureDirty = true;
                update();
                return;
            }
        }
    }
    if (values.source.isEmpty()) {
        update();
        return;
    }
    stopLoading(watcher);
    watcher.setFuture(QtConcurrent::run(QThreadPool::globalInstance(), loadRoundedImage, values.source,
                                        loadSize(), values.fillMode, values.cache));
}

void RoundedImage::takeResult()
{
    if (finishedImage(watcher).isNull())
        return;
    textureDirty = true;
    update();
}

QSGNode *RoundedImage::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    if (values.source.isEmpty() && oldNode) {
        delete oldNode;
        return nullptr;
    }
    if (!isComponentComplete())
        return oldNode;

    QImage image;
    {
        const QMutexLocker locker(&roundedImageCacheMutex);
        // The cache comes first, so that a picture shows while a newer load of it still runs.
        if (isCached())
            image = *roundedImageCache.object(cacheKey);
        else if (watcher.isCanceled() || !watcher.isFinished())
            return oldNode;
        else
            image = watcher.result();
    }
    if (image.isNull()) {
        delete oldNode;
        return nullptr;
    }

    auto *node = static_cast<roundedimage::RoundedImageNode *>(oldNode);
    if (!node) {
        node = new roundedimage::RoundedImageNode;
        textureDirty = true;
        radiusDirty = true;
    }
    if (textureDirty) {
        textureDirty = false;
        node->setTexture(window()->createTextureFromImage(image));
    }
    if (radiusDirty) {
        radiusDirty = false;
        const double side = std::min(width(), height());
        const auto fraction = [side](double radius) {
            return side > 0 ? float(std::max(0.0, std::min(radius, side * 0.5)) / side) : 0.0F;
        };
        roundedimage::RoundedImageState *state = node->state();
        state->radius = fraction(values.radius);
        state->radiusTopLeft = fraction(values.radiusTopLeft);
        state->radiusTopRight = fraction(values.radiusTopRight);
        state->radiusBottomLeft = fraction(values.radiusBottomLeft);
        state->radiusBottomRight = fraction(values.radiusBottomRight);
    }
    node->setRect(boundingRect());
    return node;
}
