#include "pointer.h"

#include <QQuickWindow>
#include <QtTest>

Pointer::Pointer(QQuickItem *item)
    : item(item)
    , window(item->window())
{
    Q_ASSERT(window);
}

QPoint Pointer::inWindow(QPointF point) const
{
    const QPoint spot = item->mapToScene(point).toPoint();
    // QTest takes the null point for "in the middle".
    return spot.isNull() ? QPoint(1, 1) : spot;
}

void Pointer::hover(QPointF point)
{
    move(point);
}

void Pointer::move(QPointF point)
{
    if (item)
        QTest::mouseMove(window, inWindow(point));
}

void Pointer::press(QPointF point, Qt::MouseButton button)
{
    if (item)
        QTest::mousePress(window, button, Qt::NoModifier, inWindow(point));
}

void Pointer::release(QPointF point, Qt::MouseButton button)
{
    if (item)
        QTest::mouseRelease(window, button, Qt::NoModifier, inWindow(point));
}

void Pointer::click(QPointF point, Qt::MouseButton button)
{
    if (item)
        QTest::mouseClick(window, button, Qt::NoModifier, inWindow(point));
}

void Pointer::doubleClick(QPointF point)
{
    if (item)
        QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, inWindow(point));
}

void Pointer::drag(QPointF from, QPointF to)
{
    constexpr int steps = 4;
    press(from);
    for (int step = 1; step <= steps; ++step)
        move(from + (to - from) * (double(step) / steps));
    release(to);
}

void Pointer::releaseAnywhere()
{
    if (window)
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier,
                            QPoint(window->width() / 2, window->height() / 2));
}
