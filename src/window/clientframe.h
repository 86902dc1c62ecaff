#pragma once

#include <QPoint>

class FramelessWindow;
class QEvent;
class QMouseEvent;

/// Plays the system's part for a frameless window where the system does not ask what lies under the pointer:
/// tests the hits from mouse events, moves the window by its title bar and maximises it on a double click
/// there.
class ClientFrame
{
public:
    explicit ClientFrame(FramelessWindow *window);

    /// True when the event was the frame's and must not reach the scene.
    bool handle(QEvent *event);

private:
    bool press(const QMouseEvent *event);
    bool move(const QMouseEvent *event);
    bool release(const QMouseEvent *event);
    bool doubleClick(const QMouseEvent *event);
    void test(const QMouseEvent *event);

    FramelessWindow *window;
    bool captionPressed = false; ///< a left press on the title bar is going on
    bool movedByHand = false;    ///< the window system does not move it, so the pointer's way does
    QPoint pressPosition;        ///< on the desktop
    QPoint windowPosition;       ///< at the press
};
