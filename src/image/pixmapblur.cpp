#include "pixmapblur.h"

#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>

QPixmap blurPixmap(const QPixmap &pixmap, double radius)
{
    if (pixmap.isNull())
        return QPixmap();
    QGraphicsScene scene;
    auto *item = new QGraphicsPixmapItem(pixmap);
    auto *effect = new QGraphicsBlurEffect;
    effect->setBlurRadius(radius);
    effect->setBlurHints(QGraphicsBlurEffect::AnimationHint);
    item->setGraphicsEffect(effect);
    scene.addItem(item);

    QPixmap result(pixmap.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    scene.render(&painter, QRectF(result.rect()), QRectF(pixmap.rect()), Qt::KeepAspectRatio);
    return result;
}
