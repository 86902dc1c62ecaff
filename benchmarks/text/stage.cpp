#include "stage.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMouseEvent>

namespace {

constexpr int patience = 10000; // ms

} // namespace

Stage::Stage()
{
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &window, [this] { frames.fetchAndAddOrdered(1); },
        Qt::DirectConnection);
    QObject::connect(
        &window, &QQuickWindow::beforeSynchronizing, &window, [this] { synchronisation.start(); },
        Qt::DirectConnection);
    QObject::connect(
        &window, &QQuickWindow::afterSynchronizing, &window,
        [this] { synchronised.fetchAndAddOrdered(synchronisation.nsecsElapsed()); }, Qt::DirectConnection);
    window.setGeometry(0, 0, 800, 900);
    window.show();
    drawFrame();
}

void Stage::drawFrame()
{
    const int before = frames.loadAcquire();
    window.update();
    QElapsedTimer timer;
    timer.start();
    while (frames.loadAcquire() == before) {
        QCoreApplication::processEvents(QEventLoop::AllEvents);
        if (timer.elapsed() > patience)
            qFatal("The window draws no frames");
    }
}

double Stage::synchronisationTime() const
{
    return double(synchronised.loadAcquire()) / 1e6;
}

void Stage::sendMouse(QEvent::Type type, QPointF position)
{
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, position, position, position, button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(&window, &event);
}
