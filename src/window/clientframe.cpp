#include "clientframe.h"

#include "framehittest.h"
#include "framelesswindow.h"
#include "platform/nativeframe.h"

#include <QGuiApplication>
#include <QMouseEvent>
#include <QStyleHints>

ClientFrame::ClientFrame(FramelessWindow *window)
    : window(window)
{}

bool ClientFrame::handle(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        return move(static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonRelease:
        return release(static_cast<QMouseEvent *>(event));
    case QEvent::MouseButtonDblClick:
        return doubleClick(static_cast<QMouseEvent *>(event));
    default:
        return false;
    }
}

void ClientFrame::test(const QMouseEvent *event)
{
    // With its fraction: on a scaled screen that is the native pixel.
    window->hitTest(nativeframe::toNative(event->screenPos(), window));
}

bool ClientFrame::press(const QMouseEvent *event)
{
    // During a press the hit stays what it was, as it does where the system asks.
    if (event->buttons() == event->button())
        test(event);
    Q_EMIT window->mousePressed();
    if (event->button() != Qt::LeftButton || window->hitKind() != framehittest::HitCaption)
        return false;
    captionPressed = true;
    movedByHand = false;
    pressPosition = event->globalPos();
    windowPosition = window->position();
    return true;
}

bool ClientFrame::move(const QMouseEvent *event)
{
    if (event->buttons() == Qt::NoButton) {
        captionPressed = false; // the window system kept the release of a move of its own
        test(event);
        return false;
    }
    if (!captionPressed)
        return false;
    const QPoint way = event->globalPos() - pressPosition;
    if (!movedByHand) {
        // Not on the press itself: a double click has to come through.
        if (way.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
            return true;
        if (window->startSystemMove()) {
            captionPressed = false;
            return true;
        }
        movedByHand = true;
    }
    window->setPosition(windowPosition + way);
    return true;
}

bool ClientFrame::release(const QMouseEvent *event)
{
    if (!captionPressed || event->button() != Qt::LeftButton)
        return false;
    captionPressed = false;
    return true;
}

bool ClientFrame::doubleClick(const QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || window->hitKind() != framehittest::HitCaption)
        return false;
    captionPressed = false;
    if (!window->enableResize())
        return true;
    if (window->windowState() == Qt::WindowMaximized)
        window->showNormal();
    else
        window->showMaximized();
    return true;
}
