#include "imagerender.h"

#include "displayareas.h"
#include "imagecaches.h"
#include "imagerenderloader.h"
#include "imagerendernode.h"
#include "imageresult.h"
#include "valuestore.h"

#include <QQuickWindow>
#include <QtConcurrentRun>

#include <algorithm>

ImageRender::ImageRender(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(QQuickItem::ItemHasContents);
    // Scripts get the areas as an array only if their type is known by name; moc sees to that for parameters,
    // and not for results.
    qRegisterMetaType<QList<QRectF>>();
    if (renderThreadPool.maxThreadCount() > maximumRenderThreads)
        renderThreadPool.setMaxThreadCount(maximumRenderThreads);
    connect(&sourceWatcher, &QFutureWatcher<QImage>::finished, this, &ImageRender::takeSource);
    connect(&backgroundWatcher, &QFutureWatcher<QImage>::finished, this, &ImageRender::takeBackground);
}

ImageRender::~ImageRender()
{
    QObject::disconnect(&sourceWatcher, nullptr, nullptr, nullptr);
    QObject::disconnect(&backgroundWatcher, nullptr, nullptr, nullptr);
    sourceWatcher.waitForFinished();
    backgroundWatcher.waitForFinished();
}

// ---- properties

QString ImageRender::source() const
{
    return values.source;
}

void ImageRender::setSource(const QString &source)
{
    if (!storeIfChanged(values.source, source))
        return;
    Q_EMIT sourceChanged(source);
    if (!isComponentComplete())
        return;
    stopLoading(sourceWatcher);
    if (values.source.isEmpty()) {
        // What was shown stays until something else asks for a frame.
        setStatusSource(Null);
        return;
    }
    startSource(values.cache);
    setStatusSource(Loading);
}

QString ImageRender::backgroundSource() const
{
    return values.backgroundSource;
}

void ImageRender::setBackgroundSource(const QString &backgroundSource)
{
    if (!storeIfChanged(values.backgroundSource, backgroundSource))
        return;
    Q_EMIT backgroundSourceChanged(backgroundSource);
    if (!isComponentComplete())
        return;
    stopLoading(backgroundWatcher);
    if (values.backgroundSource.isEmpty()) {
        setStatusBackground(Null);
        return;
    }
    setStatusBackground(Loading);
    startBackground();
}

double ImageRender::blurRadius() const
{
    return values.blurRadius;
}

void ImageRender::setBlurRadius(double blurRadius)
{
    if (!storeIfChanged(values.blurRadius, blurRadius))
        return;
    Q_EMIT blurRadiusChanged(blurRadius);
    if (!isComponentComplete() || values.backgroundSource.isEmpty())
        return;
    stopLoading(backgroundWatcher);
    setStatusBackground(Loading);
    startBackground();
}

bool ImageRender::cache() const
{
    return values.cache;
}

void ImageRender::setCache(bool cache)
{
    if (storeIfChanged(values.cache, cache))
        Q_EMIT cacheChanged(cache);
}

ImageRender::FillMode ImageRender::sourceFillMode() const
{
    return values.sourceFillMode;
}

void ImageRender::setSourceFillMode(FillMode sourceFillMode)
{
    if (!storeIfChanged(values.sourceFillMode, sourceFillMode))
        return;
    Q_EMIT sourceFillModeChanged(sourceFillMode);
    updateWhenComplete();
}

ImageRender::FillMode ImageRender::backgroundFillMode() const
{
    return values.backgroundFillMode;
}

void ImageRender::setBackgroundFillMode(FillMode backgroundFillMode)
{
    if (!storeIfChanged(values.backgroundFillMode, backgroundFillMode))
        return;
    Q_EMIT backgroundFillModeChanged(backgroundFillMode);
    updateWhenComplete();
}

ImageRender::Status ImageRender::statusSource() const
{
    return values.statusSource;
}

void ImageRender::setStatusSource(Status statusSource)
{
    if (storeIfChanged(values.statusSource, statusSource))
        Q_EMIT statusSourceChanged(statusSource);
}

ImageRender::Status ImageRender::statusBackground() const
{
    return values.statusBackground;
}

void ImageRender::setStatusBackground(Status statusBackground)
{
    if (storeIfChanged(values.statusBackground, statusBackground))
        Q_EMIT statusBackgroundChanged(statusBackground);
}

QSize ImageRender::sourceSize() const
{
    return values.sourceSize;
}

void ImageRender::setSourceSize(const QSize &sourceSize)
{
    if (!storeIfChanged(values.sourceSize, sourceSize))
        return;
    Q_EMIT sourceSizeChanged(sourceSize);
    updatePainterData();
}

double ImageRender::topLeftRadius() const
{
    return values.topLeftRadius;
}

void ImageRender::setTopLeftRadius(double topLeftRadius)
{
    storeRadius(&Values::topLeftRadius, topLeftRadius, &ImageRender::topLeftRadiusChanged);
}

double ImageRender::topRightRadius() const
{
    return values.topRightRadius;
}

void ImageRender::setTopRightRadius(double topRightRadius)
{
    storeRadius(&Values::topRightRadius, topRightRadius, &ImageRender::topRightRadiusChanged);
}

double ImageRender::bottomLeftRadius() const
{
    return values.bottomLeftRadius;
}

void ImageRender::setBottomLeftRadius(double bottomLeftRadius)
{
    storeRadius(&Values::bottomLeftRadius, bottomLeftRadius, &ImageRender::bottomLeftRadiusChanged);
}

double ImageRender::bottomRightRadius() const
{
    return values.bottomRightRadius;
}

void ImageRender::setBottomRightRadius(double bottomRightRadius)
{
    storeRadius(&Values::bottomRightRadius, bottomRightRadius, &ImageRender::bottomRightRadiusChanged);
}

void ImageRender::storeRadius(double Values::*radius, double value, void (ImageRender::*changed)(double))
{
    if (!storeIfChanged(values.*radius, value))
        return;
    Q_EMIT(this->*changed)(value);
    radiusDirty = true;
    updateWhenComplete();
}

void ImageRender::updateWhenComplete()
{
    if (isComponentComplete())
        update();
}

// ---- loading

void ImageRender::componentComplete()
{
    QQuickItem::componentComplete();
    updatePainterData();
}

QSize ImageRender::loadSize() const
{
    return values.sourceSize.isValid() ? values.sourceSize : boundingRect().size().toSize();
}

void ImageRender::startSource(bool cache)
{
    sourceWatcher.setFuture(
        QtConcurrent::run(&renderThreadPool, loadRenderSource, values.source, loadSize(), cache));
}

void ImageRender::startBackground()
{
    backgroundWatcher.setFuture(QtConcurrent::run(&renderThreadPool, loadRenderBackground,
                                                  values.backgroundSource, loadSize(), values.blurRadius));
}

void ImageRender::updatePainterData()
{
    if (!isComponentComplete())
        return;
    if (!values.source.isEmpty()) {
        stopLoading(sourceWatcher);
        setStatusSource(Loading);
        startSource(false);
    }
    if (!values.backgroundSource.isEmpty()) {
        stopLoading(backgroundWatcher);
        setStatusBackground(Loading);
        startBackground();
    }
}

void ImageRender::takeSource()
{
    if (sourceWatcher.isCanceled())
        return;
    if (finishedImage(sourceWatcher).isNull()) {
        setStatusSource(Error);
        return;
    }
    textureDirty = true;
    setStatusSource(Ready);
    update();
}

void ImageRender::takeBackground()
{
    if (backgroundWatcher.isCanceled())
        return;
    if (finishedImage(backgroundWatcher).isNull()) {
        setStatusBackground(Error);
        return;
    }
    textureDirty = true;
    setStatusBackground(Ready);
    update();
}

// ---- painting

QList<QRectF> ImageRender::calcImageDisplayArea(const QImage &image, FillMode mode)
{
    DisplayAreas areas;
    if (!image.isNull() && mode == PreserveAspectFit)
        areas = fittedAreas(QSizeF(width(), height()), image.size());
    else if (!image.isNull() && mode == PreserveAspectCrop)
        areas = croppedAreas(QSizeF(width(), height()), image.size());
    return {areas.display, areas.source};
}

void ImageRender::updatePath()
{
    const double w = width();
    const double h = height();
    const double tl = values.topLeftRadius;
    const double tr = values.topRightRadius;
    const double bl = values.bottomLeftRadius;
    const double br = values.bottomRightRadius;
    path = QPainterPath();
    path.moveTo(tl, 0);
    path.arcTo(0, 0, 2 * tl, 2 * tl, 90, 90);
    path.lineTo(0, h - bl);
    path.arcTo(0, h - 2 * bl, 2 * bl, 2 * bl, 180, 90);
    path.lineTo(w - br, h);
    path.arcTo(w - 2 * br, h - 2 * br, 2 * br, 2 * br, 270, 90);
    path.lineTo(w, tr);
    path.arcTo(w - 2 * tr, 0, 2 * tr, 2 * tr, 0, 90);
    path.lineTo(tl, 0);
    path.closeSubpath();
}

QSGNode *ImageRender::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    if (!isComponentComplete())
        return oldNode;
    // A client can set a status; what counts for the pictures is whether they are there.
    const bool hasSource = values.statusSource == Ready;
    const bool hasBackground = values.statusBackground == Ready;
    if (!hasSource && !hasBackground)
        return oldNode;
    const QImage source = hasSource ? finishedImage(sourceWatcher) : QImage();
    const QImage background = hasBackground ? finishedImage(backgroundWatcher) : QImage();
    if (source.isNull() && background.isNull())
        return oldNode;

    auto *node = static_cast<component_imagerender::ImageRenderNode *>(oldNode);
    if (!node) {
        node = new component_imagerender::ImageRenderNode;
        // The shader samples both textures, also in a node that a move to another window brought about.
        textureDirty = true;
    }
    if (textureDirty) {
        textureDirty = false;
        // The picture that is there stands in for the other one.
        node->setBackgroundTexture(
            window()->createTextureFromImage(background.isNull() ? source : background));
        node->setSourceTexture(window()->createTextureFromImage(source.isNull() ? background : source));
    }
    component_imagerender::ImageRenderState *state = node->state();
    if (radiusDirty) {
        radiusDirty = false;
        const double longest = std::min(width(), height()) * 0.5;
        const auto clamped = [longest](double radius) {
            return float(std::max(0.0, std::min(radius, longest)));
        };
        state->radiusTopLeft = clamped(values.topLeftRadius);
        state->radiusTopRight = clamped(values.topRightRadius);
        state->radiusBottomLeft = clamped(values.bottomLeftRadius);
        state->radiusBottomRight = clamped(values.bottomRightRadius);
    }
    node->setRect(boundingRect());
    state->viewSize = boundingRect().size();

    const bool sourceCounts = !source.isNull();
    const QList<QRectF> first = sourceCounts ? calcImageDisplayArea(source, values.sourceFillMode)
                                             : calcImageDisplayArea(background, values.backgroundFillMode);
    const QList<QRectF> second = sourceCounts && !background.isNull()
                                     ? calcImageDisplayArea(background, values.backgroundFillMode)
                                     : first;
    state->areaDisplaySource = first.at(0);
    state->areaSource = first.at(1);
    state->areaDisplayBackground = second.at(0);
    state->areaBackground = second.at(1);
    node->markChanged();
    return node;
}
