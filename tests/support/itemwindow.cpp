#include "itemwindow.h"

#include <QCoreApplication>
#include <QCursor>
#include <QQuickItem>
#include <QScreen>
#include <QtTest>

namespace {

constexpr int patience = 10'000; // ms; the machine may be busy with builds

} // namespace

ItemWindow::ItemWindow(QSize size, const QColor &background)
{
    setColor(background);
    setGeometry(QRect(QPoint(40, 60), size));
    setMinimumSize(size);
    setMaximumSize(size);
}

bool ItemWindow::open()
{
    // A pointer over the new window would hover what lies there.
    const QRect desk = screen()->virtualGeometry();
    QCursor::setPos(desk.bottomRight() - QPoint(2, 2));
    show();
    if (!QTest::qWaitForWindowExposed(this, patience))
        return false;
    requestActivate();
    return QTest::qWaitForWindowActive(this, patience);
}

QImage ItemWindow::picture()
{
    // What is only queued yet, such as a worker's result, belongs to the picture too.
    QCoreApplication::processEvents();
    return grabWindow().convertToFormat(QImage::Format_RGB32);
}

QImage ItemWindow::picture(const QQuickItem *item, const QRectF &rect)
{
    return picture().copy(item->mapRectToScene(rect).toAlignedRect());
}

QImage ItemWindow::picture(const QQuickItem *item)
{
    return picture(item, QRectF(0, 0, item->width(), item->height()));
}
