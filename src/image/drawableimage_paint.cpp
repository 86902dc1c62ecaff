// How the item paints. Runs on the render thread while the GUI thread waits.

#include "drawableimage.h"

#include "imagereading.h"
#include "pixmapblur.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double dizzyRadius = 10.0;
constexpr int fadedTileAlpha = 100;

QPainterPath roundedPath(const QRectF &rect, double radius)
{
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius, Qt::AbsoluteSize);
    return path;
}

void drawRect(QPainter *painter, const QRectF &rect)
{
    painter->drawRects(&rect, 1);
}

/// The line of a gradient over `size`. Only full eighths of a turn have one; the rest get Qt's line from (0,
/// 0) to (1, 1), on which the whole item but its corner has the end colour.
QLinearGradient gradientLine(int rotation, const QSizeF &size)
{
    const double w = size.width();
    const double h = size.height();
    switch (rotation) {
    case 0:
        return QLinearGradient(w / 2, 0, w / 2, h);
    case 45:
        return QLinearGradient(w, 0, 0, h);
    case 90:
        return QLinearGradient(w, h / 2, 0, h / 2);
    case 135:
        return QLinearGradient(w, h, 0, 0);
    case 180:
        return QLinearGradient(w / 2, h, w / 2, 0);
    case 225:
        return QLinearGradient(0, h, w, 0);
    case 270:
        return QLinearGradient(0, h / 2, w, h / 2);
    case 315:
        return QLinearGradient(0, 0, w, h);
    default:
        return QLinearGradient();
    }
}

// The sizes that `QPixmap::scaledToWidth()` and `scaledToHeight()` arrive at.
QSizeF scaledToWidth(const QSizeF &size, int width)
{
    return QSizeF(width, int(double(width) / size.width() * size.height() + 0.9999));
}

QSizeF scaledToHeight(const QSizeF &size, int height)
{
    return QSizeF(int(double(height) / size.height() * size.width() + 0.9999), height);
}

/// The sizes through which a picture of `picture` size goes on its way to the item, the last one for the
/// screen. A picture that fits looks at the shape of the item alone, so only pictures of the same shape fit;
/// clients rely on the others filling the item.
QVector<QSizeF> fittingSizes(const QSizeF &picture, const QSizeF &item)
{
    return {item.width() > item.height() ? scaledToHeight(picture, int(item.height()))
                                         : scaledToWidth(picture, int(item.width()))};
}

QVector<QSizeF> coveringSizes(const QSizeF &picture, const QSizeF &item)
{
    if (picture.width() > picture.height()) {
        const QSizeF size = scaledToHeight(picture, int(item.height()));
        if (item.width() > size.width())
            return {size, scaledToWidth(size, int(item.width()))};
        return {size};
    }
    const QSizeF size = scaledToWidth(picture, int(item.width()));
    if (item.height() > size.height())
        return {size, scaledToHeight(size, int(item.height()))};
    return {size};
}

bool isWithinLimit(const QSizeF &size)
{
    return size.width() * size.height() * 4 <= double(maximumPictureBytes);
}

} // namespace

void DrawableImage::paint(QPainter *painter)
{
    if (!isComponentComplete())
        return;
    painter->fillRect(boundingRect(), Qt::transparent);
    if (values.radius > 0)
        painter->setClipPath(roundedPath(boundingRect(), values.radius), Qt::ReplaceClip);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::NoBrush);
    painter->setRenderHints(
        QPainter::Antialiasing | QPainter::TextAntialiasing | QPainter::SmoothPixmapTransform, true);
    paintBackground(painter);
    if (values.dizzyBackground) {
        // Made once, and kept when the source changes: a blur behind a changing picture must not flicker.
        if (dizzyPixmap.isNull())
            dizzyPixmap = blurPixmap(picture, dizzyRadius);
        painter->save();
        painter->drawPixmap(boundingRect(), dizzyPixmap, QRectF(dizzyPixmap.rect()));
        painter->restore();
    }
    if (!values.source.isEmpty() && !picture.isNull()) {
        painter->save();
        paintImage(painter);
        painter->restore();
    }
    if (values.borderWidth > 0 && values.borderStyle != Qt::NoPen)
        paintBorder(painter);
}

void DrawableImage::paintBackground(QPainter *painter)
{
    QBrush brush(Qt::SolidPattern);
    if (values.backgroundGradientColor.isValid()) {
        QLinearGradient gradient = gradientLine(values.gradientRotation, QSizeF(width(), height()));
        // The getters darken as the mode wants.
        gradient.setColorAt(0, backgroundColor());
        gradient.setColorAt(1, backgroundGradientColor());
        brush = QBrush(gradient);
    } else {
        brush.setColor(values.backgroundColor);
    }
    painter->save();
    painter->setBrush(brush);
    drawRect(painter, boundingRect());
    painter->restore();
}

QPixmap DrawableImage::preparedPicture() const
{
    QPixmap pixmap = picture;
    if (values.scale != 1.0) {
        const double w = pixmap.width() * values.scale;
        const double h = pixmap.height() * values.scale;
        const double longest = std::numeric_limits<int>::max();
        if (!(w > 0 && h > 0 && w < longest && h < longest && isWithinLimit(QSizeF(w, h))))
            return QPixmap();
        pixmap = picture.scaled(QSize(qRound(w), qRound(h)), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }
    const int radius = values.blurRatio / 2;
    return values.blurRatio > 0 ? blurPixmap(pixmap, radius) : pixmap;
}

void DrawableImage::paintImage(QPainter *painter)
{
    painter->setOpacity(values.opacity);
    const QPixmap pixmap = preparedPicture();
    if (pixmap.isNull())
        return;
    const QSizeF item(width(), height());
    switch (values.fillMode) {
    case Stretch:
        painter->drawPixmap(boundingRect(), pixmap, QRectF(pixmap.rect()));
        break;
    case PreserveAspectFit:
        paintScaled(painter, pixmap, fittingSizes(pixmap.size(), item));
        break;
    case PreserveAspectCrop:
        paintScaled(painter, pixmap, coveringSizes(pixmap.size(), item));
        break;
    case Tile:
        if (values.scale != 1.0 && values.darkMode)
            paintFadedTiles(painter, pixmap);
        else
            painter->drawTiledPixmap(boundingRect(), pixmap, QPointF(0, 0));
        break;
    case TileVertically:
    case TileHorizontally:
        break; // never had a picture; clients that store them show the background alone
    case Pad:
        painter->drawPixmap(QPointF(0, 0), pixmap);
        break;
    }
}

/// Scales `pixmap` through `sizes` and paints it in the middle of the item; the clip cuts what sticks out.
void DrawableImage::paintScaled(QPainter *painter, const QPixmap &pixmap, const QVector<QSizeF> &sizes)
{
    const bool isEmpty = std::any_of(sizes.cbegin(), sizes.cend(), [](const QSizeF &size) {
        return !(size.width() >= 1 && size.height() >= 1);
    });
    if (isEmpty)
        return;
    const QSizeF last = sizes.last();
    const QPointF corner(std::trunc((width() - last.width()) * 0.5),
                         std::trunc((height() - last.height()) * 0.5));
    // A strip of one by thirty thousand grows to gigabytes; the painter then scales the part that is seen.
    if (!std::all_of(sizes.cbegin(), sizes.cend(), isWithinLimit)) {
        painter->drawPixmap(QRectF(corner, last), pixmap, QRectF(pixmap.rect()));
        return;
    }
    QPixmap scaled = pixmap;
    for (const QSizeF &size : sizes)
        scaled = scaled.scaled(size.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter->drawPixmap(corner, scaled);
}

/// Tiles of translucent white in the shape of the picture: a pattern on a dark background.
void DrawableImage::paintFadedTiles(QPainter *painter, const QPixmap &pixmap)
{
    QPixmap tiles(QSize{int(width()), int(height())});
    if (tiles.isNull())
        return;
    tiles.fill(Qt::transparent);
    QPainter tilePainter(&tiles);
    tilePainter.drawTiledPixmap(boundingRect(), pixmap, QPointF(0, 0));
    tilePainter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    tilePainter.setBrush(QColor(255, 255, 255, fadedTileAlpha));
    tilePainter.drawPath(roundedPath(boundingRect(), values.radius));
    tilePainter.end();
    painter->drawPixmap(boundingRect(), tiles, QRectF(tiles.rect()));
}

void DrawableImage::paintBorder(QPainter *painter)
{
    QPen pen(values.borderStyle);
    pen.setWidth(values.borderWidth);
    pen.setColor(borderColor());
    painter->save();
    painter->setPen(pen);
    if (values.radius > 0) {
        const QPainterPath path = roundedPath(boundingRect(), values.radius);
        painter->setClipPath(path, Qt::ReplaceClip);
        painter->drawPath(path);
    } else {
        drawRect(painter, boundingRect());
    }
    painter->restore();
}
