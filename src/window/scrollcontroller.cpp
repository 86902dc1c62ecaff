#include "scrollcontroller.h"

#include "wheelarithmetic.h"

ScrollController::ScrollController(QQuickItem *parent)
    : QQuickItem(parent)
{}

Qt::Orientation ScrollController::orientation() const
{
    return currentOrientation;
}

void ScrollController::setOrientation(Qt::Orientation orientation)
{
    if (currentOrientation == orientation)
        return;
    currentOrientation = orientation;
    Q_EMIT orientationChanged(orientation);
}

void ScrollController::wheelEvent(QWheelEvent *event)
{
    event->accept();
    const bool isWheel = event->source() == Qt::MouseEventNotSynthesized;
    const QPoint raw = isWheel ? ::wheel::distanceOfAngle(event->angleDelta()) : event->pixelDelta();
    const QPoint distance = ::wheel::alongOrientation(raw, currentOrientation);
    Q_EMIT wheel(distance.x(), distance.y());
}
