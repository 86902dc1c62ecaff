#pragma once

#include <QPointF>
#include <QPointer>
#include <QQuickItem>

/// A mouse for tests: sends real events to the window of an item, at points in the item's coordinates rounded
/// to whole window pixels. It remembers its buttons as a real mouse does. Does nothing once the item is gone,
/// except `releaseAnywhere()`.
class Pointer
{
public:
    explicit Pointer(QQuickItem *item);

    void hover(QPointF point);
    void press(QPointF point, Qt::MouseButton button = Qt::LeftButton);
    void move(QPointF point);
    void release(QPointF point, Qt::MouseButton button = Qt::LeftButton);
    void click(QPointF point, Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(QPointF point);
    /// Presses at `from`, moves to `to` in a few steps and releases there.
    void drag(QPointF from, QPointF to);
    /// Releases the left button in the middle of the window, also when the item is gone.
    void releaseAnywhere();

private:
    [[nodiscard]] QPoint inWindow(QPointF point) const;

    QPointer<QQuickItem> item;
    QPointer<QWindow> window;
};
