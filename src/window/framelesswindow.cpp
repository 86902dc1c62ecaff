// Behaviour: construction, hits, resizing, events. The property surface is in framelesswindow_properties.cpp.

#include "framelesswindow.h"

#include "bandgeometry.h"
#include "clientframe.h"
#include "currentscreen.h"
#include "framehittest.h"
#include "platform/nativeframe.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QRubberBand>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

using namespace framehittest;

namespace {

QRect sceneRect(const QQuickItem &item)
{
    return QRect(item.mapToScene(QPointF(0, 0)).toPoint(), QSize(int(item.width()), int(item.height())));
}

bool isResizeShape(Qt::CursorShape shape)
{
    return shape == Qt::SizeHorCursor || shape == Qt::SizeVerCursor || shape == Qt::SizeBDiagCursor ||
           shape == Qt::SizeFDiagCursor;
}

/// Other desktops' styles fill a band that is a window of its own, which hides what is being resized.
void drawAsOutline(QRubberBand *band)
{
    QStyle *style = QStyleFactory::create(QStringLiteral("Windows"));
    if (!style)
        return;
    style->setParent(band);
    band->setStyle(style);
}

} // namespace

FramelessWindow::FramelessWindow(QWindow *parent)
    : QQuickView(parent)
{
    qRegisterMetaType<QEvent *>("QEvent*");
    if (!nativeframe::asksForHits())
        clientFrame.reset(new ClientFrame(this));

    // A new window opens where the user's last one was.
    if (QScreen *current = currentscreen::get(); current && current != screen())
        setScreen(current);
    connect(this, &QWindow::windowStateChanged, this, &FramelessWindow::stateChanged);
    // Not Qt::FramelessWindowHint: to the system this is a full window, only its frame is taken away.
    setFlags(Qt::Window | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint);
    setColor(Qt::transparent);
    setEnableResize(true);
    setEnableWindowShadow(false);
    connect(this, &QWindow::screenChanged, this, &currentscreen::set);
    // After the scene has been built, so that a script can still ask for it.
    QTimer::singleShot(0, this, [this] {
        if (centersLater)
            centerWindow();
    });
}

FramelessWindow::~FramelessWindow() = default;

void FramelessWindow::updateNativeWindowFlag()
{
    nativeframe::apply(this, resizable);
}

int FramelessWindow::hitTest(QPoint nativePoint)
{
    if (!hasNCArea) {
        lastHit = HitClient;
        return HitClient;
    }
    const double ratio = devicePixelRatio();
    if (resizable) {
        ResizeBand resizeBand;
        resizeBand.window = nativeframe::rectOf(this);
        resizeBand.canResizeWidth = minimumWidth() != maximumWidth();
        resizeBand.canResizeHeight = minimumHeight() != maximumHeight();
        resizeBand.borderWidth = border;
        resizeBand.shadowWidth = shadow;
        resizeBand.devicePixelRatio = ratio;
        lastHit = edgeAt(resizeBand, nativePoint);
        if (lastHit != HitClient)
            return HitClient;
    }

    const QScreen *screen = this->screen();
    const QPoint global = toLogicalPoint(nativePoint, ratio, screen ? screen->geometry().topLeft() : QPoint(),
                                         screen ? screen->devicePixelRatio() : 1.0);
    TitleAreas areas;
    areas.excluded = excludedItems.visibleSceneRects();
    areas.extra = extraItems.visibleSceneRects();
    if (titleItem)
        areas.title = sceneRect(*titleItem);
    const std::optional<HitKind> area = areaAt(areas, contentItem()->mapFromGlobal(global).toPoint());
    // Without an area the kind stays: with resizing off it is the one of the hit before.
    if (!area)
        return HitClient;
    lastHit = *area;
    return lastHit;
}

bool FramelessWindow::nativeEvent(const QByteArray &eventType, void *message, long *result)
{
    const nativeframe::Message decoded = nativeframe::decode(eventType, message);
    switch (decoded.kind) {
    case nativeframe::Message::FrameSize:
        *result = 0; // the client area is the whole window
        return true;
    case nativeframe::Message::HitTest:
        *result = hitTest(decoded.point);
        return true;
    case nativeframe::Message::Press:
        Q_EMIT mousePressed();
        break;
    case nativeframe::Message::Other:
        break;
    }
    return QQuickView::nativeEvent(eventType, message, result);
}

bool FramelessWindow::event(QEvent *event)
{
    if (clientFrame && clientFrame->handle(event))
        return true;
    switch (event->type()) {
    case QEvent::Enter:
        Q_EMIT enter();
        break;
    case QEvent::Leave:
        Q_EMIT leave();
        break;
    case QEvent::Close:
        if (minimizes) {
            QTimer::singleShot(0, this, &QWindow::showMinimized);
            return true;
        }
        break;
    default:
        break;
    }
    return QQuickView::event(event);
}

void FramelessWindow::showEvent(QShowEvent *event)
{
    QQuickView::showEvent(event);
    updateNativeWindowFlag();
}

void FramelessWindow::focusOutEvent(QFocusEvent *event)
{
    if (band)
        band->close();
    QQuickView::focusOutEvent(event);
}

void FramelessWindow::keyPressEvent(QKeyEvent *event)
{
    Q_EMIT keyPressed(event->key(), int(event->modifiers()), event->text(), event);
    if (event->isAccepted())
        QQuickView::keyPressEvent(event);
}

void FramelessWindow::wheelEvent(QWheelEvent *event)
{
    QQuickView::wheelEvent(event);
}

void FramelessWindow::mousePressEvent(QMouseEvent *event)
{
    if (lastHit == HitClient || lastHit == HitCaption)
        QQuickView::mousePressEvent(event);
    else
        showBand(event->globalPos());
}

void FramelessWindow::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->globalPos();
    if (resizable) {
        updateResizeCursor();
        moveBand(position);
    }
    if (grabbed && lastGrabY != 0)
        Q_EMIT mouseMoved(position, position.y() - lastGrabY);
    lastGrabY = position.y();
    QQuickView::mouseMoveEvent(event);
}

void FramelessWindow::mouseReleaseEvent(QMouseEvent *event)
{
    if (band && band->isVisible())
        applyBand();
    if (grabbed) {
        lastGrabY = 0;
        grabbed = false;
        Q_EMIT mouseReleased(event->globalPos());
    }
    QQuickView::mouseReleaseEvent(event);
}

void FramelessWindow::updateResizeCursor()
{
    if (isEdge(lastHit))
        setCursor(cursorShapeOf(lastHit));
    else if (isResizeShape(cursor().shape()))
        setCursor(Qt::ArrowCursor); // a shape of the script's own stays
}

void FramelessWindow::showBand(QPoint globalPosition)
{
    pressPosition = globalPosition;
    if (!band) {
        // The band is a widget, and widgets end a program without a widget application.
        if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
            qWarning("FramelessWindow: resizing needs a QApplication");
            return;
        }
        band.reset(new QRubberBand(QRubberBand::Rectangle));
        if (clientFrame)
            drawAsOutline(band.data());
        band->setMinimumSize(minimumSize());
        band->setMaximumSize(maximumSize());
    }
    bandStart = bandgeometry::withoutShadow(geometry(), shadow, availableScreenGeometry().size());
    band->setGeometry(bandStart);
    band->show();
}

void FramelessWindow::moveBand(QPoint globalPosition)
{
    if (!band || !band->isVisible())
        return;
    band->setGeometry(
        bandgeometry::moved(bandStart, lastHit, pressPosition, globalPosition, band->minimumSize()));
}

void FramelessWindow::applyBand()
{
    band->hide();
    setCursor(Qt::ArrowCursor);
    setGeometry(bandgeometry::withShadow(band->geometry(), shadow, availableScreenGeometry().size()));
}

void FramelessWindow::centerWindow()
{
    setPosition(position() + availableScreenGeometry().center() - geometry().center());
}

QRect FramelessWindow::availableScreenGeometry()
{
    return screen() ? screen()->availableGeometry() : QRect();
}

void FramelessWindow::setGrabMouseState(bool state)
{
    grabbed = state;
}

void FramelessWindow::setCursor(Qt::CursorShape shape)
{
    QQuickView::setCursor(QCursor(shape));
}

void FramelessWindow::acceptEvent(QEvent *event)
{
    if (event)
        event->accept();
}

void FramelessWindow::ignoreEvent(QEvent *event)
{
    if (event)
        event->ignore();
}

void FramelessWindow::deleteLater()
{
    QObject::deleteLater();
}

void FramelessWindow::ItemList::set(const QVariantList &list)
{
    entries.clear();
    for (const QVariant &value : list) {
        auto *item = value.value<QQuickItem *>();
        entries.append({value, item, item != nullptr});
    }
}

QVariantList FramelessWindow::ItemList::livingValues() const
{
    QVariantList living;
    for (const Entry &entry : entries) {
        const bool isGone = entry.heldItem && !entry.item;
        living.append(isGone ? QVariant::fromValue<QQuickItem *>(nullptr) : entry.value);
    }
    return living;
}

QVector<QRect> FramelessWindow::ItemList::visibleSceneRects() const
{
    QVector<QRect> rects;
    for (const Entry &entry : entries) {
        if (entry.item && entry.item->isVisible())
            rects.append(sceneRect(*entry.item));
    }
    return rects;
}
