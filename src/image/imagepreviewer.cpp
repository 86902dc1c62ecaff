#include "imagepreviewer.h"

#include "imagepreviewerloader.h"
#include "imagereading.h"
#include "imageresult.h"
#include "valuestore.h"
#include "viewslice.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QtConcurrentRun>

#include <algorithm>

namespace {

bool isUnchangedRect(const QRectF &a, const QRectF &b)
{
    return isUnchanged(a.x(), b.x()) && isUnchanged(a.y(), b.y()) && isUnchanged(a.width(), b.width()) &&
           isUnchanged(a.height(), b.height());
}

} // namespace

ImagePreviewer::ImagePreviewer(QQuickItem *parent)
    : QQuickItem(parent)
    , brush(QImage(QStringLiteral(":/qml/image/transparent.png")))
{
    setFlag(QQuickItem::ItemHasContents);
    connect(&sourceWatcher, &QFutureWatcher<QImage>::finished, this, &ImagePreviewer::takeSource);
    connect(&backgroundWatcher, &QFutureWatcher<QImage>::finished, this, &ImagePreviewer::takeBackground);
}

// Workers never see the item, so one that still runs may outlive it.
ImagePreviewer::~ImagePreviewer() = default;

// ---- properties

QString ImagePreviewer::source() const
{
    return values.source;
}

void ImagePreviewer::setSource(const QString &source)
{
    if (!storeIfChanged(values.source, source))
        return;
    Q_EMIT sourceChanged(source);
    stopLoading(sourceWatcher);
    if (values.source.isEmpty()) {
        // What was shown stays until something else asks for a frame.
        setStatusSource(Null);
    } else if (isComponentComplete()) {
        startSource();
        setStatusSource(Loading);
    }
}

QString ImagePreviewer::backgroundSource() const
{
    return values.backgroundSource;
}

void ImagePreviewer::setBackgroundSource(const QString &backgroundSource)
{
    if (!storeIfChanged(values.backgroundSource, backgroundSource))
        return;
    Q_EMIT backgroundSourceChanged(backgroundSource);
    stopLoading(backgroundWatcher);
    if (values.backgroundSource.isEmpty()) {
        setStatusBackground(Null);
    } else if (isComponentComplete()) {
        startBackground();
        setStatusBackground(Loading);
    }
}

ImagePreviewer::Status ImagePreviewer::statusSource() const
{
    return values.statusSource;
}

void ImagePreviewer::setStatusSource(Status statusSource)
{
    if (storeIfChanged(values.statusSource, statusSource))
        Q_EMIT statusSourceChanged(statusSource);
}

ImagePreviewer::Status ImagePreviewer::statusBackground() const
{
    return values.statusBackground;
}

void ImagePreviewer::setStatusBackground(Status statusBackground)
{
    if (storeIfChanged(values.statusBackground, statusBackground))
        Q_EMIT statusBackgroundChanged(statusBackground);
}

QSize ImagePreviewer::sourceSize() const
{
    return values.sourceSize;
}

void ImagePreviewer::setSourceSize(const QSize &sourceSize)
{
    if (!storeIfChanged(values.sourceSize, sourceSize))
        return;
    Q_EMIT sourceSizeChanged(sourceSize);
    updatePainterData();
}

double ImagePreviewer::blurRadius() const
{
    return values.blurRadius;
}

void ImagePreviewer::setBlurRadius(double blurRadius)
{
    if (!storeIfChanged(values.blurRadius, blurRadius))
        return;
    Q_EMIT blurRadiusChanged(blurRadius);
    if (!isComponentComplete() || values.backgroundSource.isEmpty())
        return;
    stopLoading(backgroundWatcher);
    startBackground();
    setStatusBackground(Loading);
}

QQuickItem *ImagePreviewer::boundaryItem() const
{
    return boundary;
}

void ImagePreviewer::setBoundaryItem(QQuickItem *boundaryItem)
{
    if (boundary == boundaryItem)
        return;
    boundary = boundaryItem;
    Q_EMIT boundaryItemChanged(boundaryItem);
    if (isComponentComplete())
        update();
}

QRectF ImagePreviewer::viewGeometry() const
{
    return values.viewGeometry;
}

void ImagePreviewer::setViewGeometry(const QRectF &viewGeometry)
{
    if (isUnchangedRect(values.viewGeometry, viewGeometry))
        return;
    values.viewGeometry = viewGeometry;
    Q_EMIT viewGeometryChanged(viewGeometry);
    setX(std::max(0.0, -viewGeometry.x()));
    setY(std::max(0.0, -viewGeometry.y()));
    if (isComponentComplete())
        update();
}

// ---- loading

void ImagePreviewer::componentComplete()
{
    QQuickItem::componentComplete();
    updatePainterData();
}

void ImagePreviewer::startSource()
{
    sourceWatcher.setFuture(QtConcurrent::run(QThreadPool::globalInstance(), loadPreviewSource, values.source,
                                              values.sourceSize));
}

void ImagePreviewer::startBackground()
{
    backgroundWatcher.setFuture(QtConcurrent::run(QThreadPool::globalInstance(), loadPreviewBackground,
                                                  values.backgroundSource, values.sourceSize,
                                                  values.blurRadius));
}

void ImagePreviewer::updatePainterData()
{
    if (!isComponentComplete())
        return;
    if (!values.source.isEmpty()) {
        stopLoading(sourceWatcher);
        setStatusSource(Loading);
        startSource();
    }
    if (!values.backgroundSource.isEmpty()) {
        stopLoading(backgroundWatcher);
        setStatusBackground(Loading);
        startBackground();
    }
}

void ImagePreviewer::takeSource()
{
    if (sourceWatcher.isCanceled())
        return;
    if (finishedImage(sourceWatcher).isNull()) {
        setStatusSource(Error);
    } else {
        setStatusSource(Ready);
        sourceDirty = true;
    }
    if (!released)
        update();
}

void ImagePreviewer::takeBackground()
{
    if (backgroundWatcher.isCanceled())
        return;
    if (finishedImage(backgroundWatcher).isNull()) {
        setStatusBackground(Error);
    } else {
        setStatusBackground(Ready);
        backgroundDirty = true;
    }
    if (!released)
        update();
}

// Called on the GUI thread when the item leaves its window. The nodes are about to be handed to the render
// thread, where they and their textures die; deleting them here would pull them out of a frame that is being
// drawn.
void ImagePreviewer::releaseResources()
{
    released = true;
    QObject::disconnect(&sourceWatcher, nullptr, nullptr, nullptr);
    QObject::disconnect(&backgroundWatcher, nullptr, nullptr, nullptr);
    sourceWatcher.waitForFinished();
    backgroundWatcher.waitForFinished();
    sourceNode = nullptr;
    backgroundNode = nullptr;
    rootNode = nullptr;
}

// ---- painting

void ImagePreviewer::calcRenderRect()
{
    renderRect = values.viewGeometry;
    if (boundary)
        renderRect = visibleSlice(values.viewGeometry, QSizeF(boundary->width(), boundary->height()));
}

void ImagePreviewer::updateRenderRect(QSGImageNode *node)
{
    if (!node || renderRect.isEmpty() || !node->texture())
        return;
    node->setRect(QRectF(QPointF(0, 0), renderRect.size()));
    node->setSourceRect(
        texturePart(renderRect, values.viewGeometry.size(), QSizeF(node->texture()->textureSize())));
}

void ImagePreviewer::fillBackground(QSGNode *node)
{
    auto *child = node ? dynamic_cast<QSGImageNode *>(node->childAtIndex(0)) : nullptr;
    if (!child)
        return;
    const bool isReady = values.statusSource == Ready || values.statusBackground == Ready;
    if (!isReady || renderRect.isEmpty()) {
        child->setRect(0, 0, 0, 0);
        return;
    }
    const QSize size = renderRect.size().toSize();
    if (child->rect().size() != renderRect.size() && isWithinPictureLimit(size) && window()) {
        QImage image(size, QImage::Format_Grayscale8);
        QPainter(&image).fillRect(image.rect(), brush);
        QSGTexture *old = child->ownsTexture() ? nullptr : child->texture();
        child->setTexture(window()->createTextureFromImage(image));
        delete old;
    }
    child->setRect(QRectF(QPointF(0, 0), renderRect.size()));
}

QSGImageNode *ImagePreviewer::createImageNode(const QImage &image)
{
    QSGImageNode *node = window()->createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window()->createTextureFromImage(image));
    node->setFiltering(QSGTexture::Linear);
    rootNode->appendChildNode(node);
    return node;
}

QSGNode *ImagePreviewer::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    if (!isComponentComplete())
        return oldNode;
    if (oldNode) {
        rootNode = static_cast<QSGRectangleNode *>(oldNode);
    } else {
        rootNode = window()->createRectangleNode();
        rootNode->setColor(Qt::transparent);
        // Also after the window dropped its scene graph, and the children with it.
        sourceNode = nullptr;
        backgroundNode = nullptr;
    }
    calcRenderRect();
    const QImage background = values.statusBackground == Ready ? finishedImage(backgroundWatcher) : QImage();
    const QImage source = values.statusSource == Ready ? finishedImage(sourceWatcher) : QImage();

    // The background may only stand beside the source, where it has no size of its own: clients count on
    // never seeing it, and on its status alone.
    if (!background.isNull() && !backgroundNode && rootNode->childCount() == 1) {
        backgroundNode = createImageNode(background);
        backgroundDirty = false;
    }
    if (backgroundNode && backgroundDirty && !background.isNull()) {
        backgroundDirty = false;
        backgroundNode->setTexture(window()->createTextureFromImage(background));
    }
    if (!source.isNull() && !sourceNode) {
        if (rootNode->childCount() > 1 && rootNode->childAtIndex(1) == backgroundNode)
            backgroundNode->setRect(0, 0, 0, 0);
        sourceNode = createImageNode(source);
        sourceDirty = false;
    }
    if (sourceNode && sourceDirty && !source.isNull()) {
        sourceDirty = false;
        sourceNode->setTexture(window()->createTextureFromImage(source));
    }
    rootNode->setRect(boundingRect());
    updateRenderRect(sourceNode ? sourceNode : backgroundNode);
    return rootNode;
}
