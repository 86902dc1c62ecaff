#include "drawabletext.h"

void DrawableText::keyPressEvent(QKeyEvent *event)
{
    QQuickItem::keyPressEvent(event);
}
void DrawableText::mousePressEvent(QMouseEvent *event)
{
    QQuickItem::mousePressEvent(event);
}
void DrawableText::mouseMoveEvent(QMouseEvent *event)
{
    QQuickItem::mouseMoveEvent(event);
}
void DrawableText::mouseReleaseEvent(QMouseEvent *event)
{
    QQuickItem::mouseReleaseEvent(event);
}
void DrawableText::mouseDoubleClickEvent(QMouseEvent *event)
{
    QQuickItem::mouseDoubleClickEvent(event);
}
void DrawableText::hoverEnterEvent(QHoverEvent *event)
{
    QQuickItem::hoverEnterEvent(event);
}
void DrawableText::hoverMoveEvent(QHoverEvent *event)
{
    QQuickItem::hoverMoveEvent(event);
}
void DrawableText::hoverLeaveEvent(QHoverEvent *event)
{
    QQuickItem::hoverLeaveEvent(event);
}
