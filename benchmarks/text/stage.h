#pragma once

#include <QElapsedTimer>
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

    /// For how many milliseconds the items of the frames so far held the GUI thread up to hand their nodes to
    /// the scene graph.
    [[nodiscard]] double synchronisationTime() const;

    /// Sends a mouse event to the items, as the window system would.
    void sendMouse(QEvent::Type type, QPointF position);

private:
    QQuickWindow window;
    QAtomicInt frames;
    QElapsedTimer synchronisation;       ///< render thread only
    QAtomicInteger<qint64> synchronised; ///< nanoseconds
};
