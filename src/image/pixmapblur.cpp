#include "pixmapblur.h"

#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>

#include <algorithm>

namespace {

/// The effect works on a picture that is larger by two and a half radii on each side. Beyond this radius it
/// would take gigabytes, for a picture that is an even haze already.
constexpr double greatestRadius = 1000.0;

} // namespace

QPixmap blurPixmap(const QPixmap &pixmap, double radius)
{
    if (pixmap.isNull())
        return QPixmap();
    QGraphicsScene scene;
    auto *item = new QGraphicsPixmapItem(pixmap);
    auto *effect = new QGraphicsBlurEffect;
    effect->setBlurRadius(std::min(radius, greatestRadius));
    effect->setBlurHints(QGraphicsBlurEffect::AnimationHint);
    item->setGraphicsEffect(effect);
    scene.addItem(item);

    QPixmap result(pixmap.size());
    result.fill(Qt::transparent);
    QPainter painter(&result);
    scene.render(&painter, QRectF(result.rect()), QRectF(pixmap.rect()), Qt::KeepAspectRatio);
    return result;
}
