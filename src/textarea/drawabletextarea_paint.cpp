// The overlays for emoji and spelling marks.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "text/placeholders.h"

#include <emoji/emojimanager.h>
#include <emoji/placeholderfont.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QSGSimpleTextureNode>
#include <QTextDocument>

#include <cmath>

namespace {

/// Largest side of an overlay, in pixels: beyond what any screen shows and any texture holds.
constexpr double largestSide = 16384;
/// Half length and height of a wave of the spelling mark.
constexpr double waveLength = 2.0;
constexpr double waveHeight = 1.0;

/// An empty picture of the visible part; null when that has no sensible size.
QImage overlay(QSizeF size, bool isEmpty)
{
    const double ratio = qGuiApp->devicePixelRatio();
    const double width = std::ceil(isEmpty ? ratio : size.width() * ratio);
    const double height = std::ceil(isEmpty ? ratio : size.height() * ratio);
    if (!(width >= 1 && width <= largestSide && height >= 1 && height <= largestSide))
        return {};
    QImage image(int(width), int(height), QImage::Format_ARGB32);
    if (image.isNull())
        return image;
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    return image;
}

void replaceNode(QSGSimpleTextureNode *&node, QSGNode *parent, QQuickWindow *window, const QImage &image,
                 const QRectF &rect)
{
    if (node) {
        parent->removeChildNode(node);
        delete node;
    }
    node = new QSGSimpleTextureNode;
    node->setOwnsTexture(true);
    node->setTexture(window->createTextureFromImage(image));
    node->setRect(rect);
    parent->appendChildNode(node);
}

QPainterPath wave(const QRectF &word)
{
    QPainterPath path(word.bottomLeft());
    double x = word.left();
    const double y = word.bottom();
    while (x < word.right()) {
        path.cubicTo(x + waveHeight, y - waveLength, x + waveLength + waveHeight, y + waveLength,
                     x + 2 * waveLength, y);
        x += 2 * waveLength;
    }
    return path;
}

} // namespace

void DrawableTextArea::markOverlays()
{
    setNeedUpdateEmoji(true);
    d->needUpdateSpelling = true;
}

void DrawableTextArea::relayoutOverlays()
{
    markOverlays();
    update();
}

QRectF DrawableTextArea::visualRect() const
{
    return {d->visualX, d->visualY, d->visualWidth, d->visualHeight};
}

QSGNode *DrawableTextArea::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data)
{
    if (!oldNode) {
        // The base class makes a new tree: the overlays went with the old one.
        d->emojiNode = nullptr;
        d->spellingNode = nullptr;
        d->needUpdateEmoji = true;
        d->needUpdateSpelling = true;
    }
    // A clip with all of the text in its one child: what is appended lies over it.
    QSGNode *node = QQuickTextArea::updatePaintNode(oldNode, data);
    if (!node || !(width() > 0) || !(height() > 0))
        return node;

    setVisualFrom(positionAt(d->visualX, d->visualY));
    setVisualTo(positionAt(contentWidth() + d->visualX, height() + d->visualY));
    if (d->needUpdateEmoji) {
        d->needUpdateEmoji = false;
        const QImage image = renderEmoji();
        if (!image.isNull())
            replaceNode(d->emojiNode, node, window(), image, visualRect());
    }
    if (d->spellcheckEnabled) {
        if (d->needUpdateSpelling) {
            d->needUpdateSpelling = false;
            const QImage image = renderSpelling();
            if (!image.isNull())
                replaceNode(d->spellingNode, node, window(), image, visualRect());
        }
    } else if (d->spellingNode) {
        node->removeChildNode(d->spellingNode);
        delete d->spellingNode;
        d->spellingNode = nullptr;
    }
    return node;
}

QImage DrawableTextArea::renderEmoji() const
{
    QImage image = overlay(visualRect().size(), length() < 1);
    if (image.isNull())
        return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    painter.setRenderHint(
        QPainter::HighQualityAntialiasing); // without effect today, and part of the picture's look
    QT_WARNING_POP

    const double side = QFontMetricsF(emoji::withPlaceholders(font())).horizontalAdvance(emojiPlaceholder);
    const auto drawRun = [&](const areadocument::Run &run) {
        EmojiManager::EmojiInfo info;
        if (!run.style.emoji || !EmojiManager::instance()->emoji(run.style.emoji->key, info))
            return;
        for (int i = 0; i < run.text.size(); ++i) {
            if (run.text.at(i) != emojiPlaceholder)
                continue;
            const QPointF corner = positionToRectangle(run.position + i).topLeft() - visualRect().topLeft();
            painter.drawPixmap(QRectF(corner + QPointF(1.0, 1.0), QSizeF(side - 2.0, side - 2.0)),
                               *info.pixmap, QRectF(info.x, info.y, info.width, info.height));
        }
    };
    areadocument::visitRuns(*textDocumentOfItem(), d->visualFrom, d->visualTo, drawRun);
    return image;
}

QImage DrawableTextArea::renderSpelling() const
{
    QImage image = overlay(visualRect().size(), length() < 1);
    if (image.isNull())
        return image;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::red);
    const QFontMetricsF metrics(font());
    for (const SpellingError &error : qAsConst(d->spellingErrors)) {
        if (error.start + error.length < d->visualFrom || error.start > d->visualTo)
            continue;
        // One mark for each line that the word stands on.
        int from = error.start;
        const int end = error.start + error.length;
        while (from < end) {
            const QRectF start = positionToRectangle(from);
            int to = from + 1;
            while (to < end && positionToRectangle(to).top() == start.top())
                ++to;
            const double width = metrics.horizontalAdvance(error.text.mid(from - error.start, to - from));
            painter.drawPath(
                wave(QRectF(start.topLeft() - visualRect().topLeft(), QSizeF(width, metrics.height()))));
            from = to;
        }
    }
    return image;
}
