#pragma once

#include <QQuickWindow>

/// A window with OpenGL whose frames can be waited for.
class Stage
{
public:
    Stage();

    [[nodiscard]] QQuickItem *contentItem() { return window.contentItem(); }
    [[nodiscard]] QQuickWindow &view() { return window; }

    /// Draws what has changed and returns once the frame is on the screen.
    void drawFrame();

    /// Sends a mouse event to the items, as the window system would.
    void sendMouse(QEvent::Type type, QPointF position);

private:
    QQuickWindow window;
    QAtomicInt frames;
};
