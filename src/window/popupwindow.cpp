#include "popupwindow.h"

#include "currentscreen.h"
#include "popupplacement.h"

#include <QCursor>
#include <QDebug>
#include <QRegion>
#include <QScreen>

#include <algorithm>

PopupWindow::PopupWindow(QWindow *parent)
    : QQuickWindow(parent)
    , openTimer(new QTimer(this))
    , closeTimer(new QTimer(this))
{
    QScreen *screen = currentscreen::get();
    if (screen && screen != this->screen())
        setScreen(screen);
    setColor(Qt::transparent);
    setFlags(Qt::ToolTip | Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);

    openTimer->setSingleShot(true);
    openTimer->setInterval(openDelay);
    connect(openTimer, &QTimer::timeout, this, &PopupWindow::openTimerExpired);
    closeTimer->setSingleShot(true);
    closeTimer->setInterval(closeTimeout);
    connect(closeTimer, &QTimer::timeout, this, &PopupWindow::close);
}

void PopupWindow::open()
{
    closeTimer->stop();
    if (!isVisible())
        openTimer->start();
}

void PopupWindow::fade()
{
    openTimer->stop();
    if (isVisible())
        closeTimer->start();
}

void PopupWindow::openTimerExpired()
{
    if (shownByTimer)
        show();
    else
        shownByTimer = true; // the first expiry only lets the scene come up
    setMask(QRegion(0, 0, width(), height()));
}

void PopupWindow::show()
{
    if (QScreen *screen = currentscreen::get())
        place(screen);
    QQuickWindow::show();
}

void PopupWindow::place(QScreen *screen)
{
    if (screen != this->screen())
        setScreen(screen);
    if (!movedOnShow)
        return;

    const QRect available = screen->availableGeometry();
    const QPoint pointer = QCursor::pos();
    std::optional<popupplacement::Place> place;
    if (anchorItem) {
        const popupplacement::Anchor anchor{anchorItem->mapToGlobal(QPointF(0, 0)).toPoint(),
                                            anchorItem->width(), anchorItem->height()};
        qDebug() << "pop-up: pointer" << pointer << "item" << anchor.position << "work area" << available;
        place = popupplacement::atAnchor(anchorEdge, anchor, size(), available);
    } else {
        place = popupplacement::atPointer(pointer, size(), available);
    }
    if (place && place->verticalFirst) {
        setY(place->y);
        setX(place->x);
    } else if (place) {
        setX(place->x);
        setY(place->y);
    }
    setCursorPos({std::max(pointer.x() - x(), 0), std::max(pointer.y() - y(), 0)});
}

bool PopupWindow::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
        Q_EMIT focusIn();
        break;
    case QEvent::FocusOut:
        Q_EMIT focusOut();
        break;
    case QEvent::Enter:
        Q_EMIT enter();
        open();
        break;
    case QEvent::Leave:
        Q_EMIT leave();
        fade();
        break;
    case QEvent::Close:
        if (deletedOnClose)
            deleteLater();
        break;
    default:
        break;
    }
    return QQuickWindow::event(event);
}

void PopupWindow::deleteLater()
{
    QObject::deleteLater();
}

int PopupWindow::delay() const
{
    return openDelay;
}

void PopupWindow::setDelay(int delay)
{
    if (openDelay == delay)
        return;
    openDelay = delay;
    openTimer->setInterval(delay);
    Q_EMIT delayChanged(delay);
}

int PopupWindow::timeout() const
{
    return closeTimeout;
}

void PopupWindow::setTimeout(int timeout)
{
    if (closeTimeout == timeout)
        return;
    closeTimeout = timeout;
    closeTimer->setInterval(timeout);
    Q_EMIT timeoutChanged(timeout);
}

QQuickItem *PopupWindow::attachItem() const
{
    return anchorItem;
}

void PopupWindow::setAttachItem(QQuickItem *attachItem)
{
    if (anchorItem == attachItem)
        return;
    anchorItem = attachItem;
    Q_EMIT attachItemChanged(attachItem);
}

QString PopupWindow::edge() const
{
    return anchorEdge;
}

void PopupWindow::setEdge(const QString &edge)
{
    if (anchorEdge == edge)
        return;
    anchorEdge = edge;
    Q_EMIT edgeChanged(edge);
}

bool PopupWindow::deleteOnClose() const
{
    return deletedOnClose;
}

void PopupWindow::setDeleteOnClose(bool deleteOnClose)
{
    if (deletedOnClose == deleteOnClose)
        return;
    deletedOnClose = deleteOnClose;
    Q_EMIT deleteOnCloseChanged(deleteOnClose);
}

QPoint PopupWindow::cursorPos() const
{
    return pointerPosition;
}

void PopupWindow::setCursorPos(QPoint cursorPos)
{
    if (pointerPosition == cursorPos)
        return;
    pointerPosition = cursorPos;
    Q_EMIT cursorPosChanged(cursorPos);
}

bool PopupWindow::autoMove() const
{
    return movedOnShow;
}

void PopupWindow::setAutoMove(bool autoMove)
{
    if (movedOnShow == autoMove)
        return;
    movedOnShow = autoMove;
    Q_EMIT autoMoveChanged(autoMove);
}

QWindow *PopupWindow::parentWindow() const
{
    return QWindow::parent();
}

void PopupWindow::setParent(QWindow *parentWindow)
{
    QQuickWindow::setParent(parentWindow);
    Q_EMIT parentWindowChanged(parentWindow);
}

bool PopupWindow::initAndShow() const
{
    return shownByTimer;
}

void PopupWindow::setInitAndShow(bool initAndShow)
{
    if (shownByTimer == initAndShow)
        return;
    shownByTimer = initAndShow;
    Q_EMIT initAndShowChanged(initAndShow);
}

QRect PopupWindow::maskArea() const
{
    const QRegion region = mask();
    return region.isEmpty() ? QRect(0, 0, width(), height()) : *region.begin();
}

void PopupWindow::setMaskArea(const QRect &maskArea)
{
    setMask(QRegion(maskArea));
    Q_EMIT maskAreaChanged(maskArea);
}
