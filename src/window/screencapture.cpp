#include "screencapture.h"

#include "currentscreen.h"
#include "platform/desktopwindows.h"

#include <QBuffer>
#include <QDateTime>
#include <QDebug>
#include <QGuiApplication>
#include <QScreen>

ScreenCapture::ScreenCapture(QWindow *parent)
    : QQuickWindow(parent)
    , captureName(QString::number(QDateTime::currentMSecsSinceEpoch()))
{
    if (QScreen *current = currentscreen::get(); current && current != screen())
        setScreen(current);
    setColor(Qt::transparent);
    setFlags(Qt::Popup | Qt::NoDropShadowWindowHint);
    // The whole screen, task bar included.
    if (screen())
        setGeometry(screen()->geometry());
    setModality(Qt::WindowModal);
    // Before this window is shown: the list holds what is on the desktop now.
    desktopWindowList();
}

ScreenCapture::~ScreenCapture()
{
    qDebug() << "delete ScreenCapture";
}

QString ScreenCapture::screenId() const
{
    return captureName;
}

QRect ScreenCapture::region() const
{
    return selection;
}

void ScreenCapture::init() {}

void ScreenCapture::setRegion(const QRect &region)
{
    if (selection == region)
        return;
    selection = region;
    Q_EMIT regionChanged(region);
}

QVariantList ScreenCapture::desktopWindowList()
{
    // Rectangles of other screens can't be related to this window's scene.
    if (!windows.isEmpty() || QGuiApplication::screens().size() != 1)
        return windows;
    const double ratio = screen()->devicePixelRatio();
    for (const desktopwindows::DesktopWindow &window : desktopwindows::visibleWindows(winId())) {
        const QRect rect = toLogicalRect(window.rect, ratio);
        if (!window.isChild || rect.isValid())
            windows.append(rect);
    }
    return windows;
}

void ScreenCapture::save()
{
    qDebug() << "save";
}

void ScreenCapture::windowRegion(int x, int y)
{
    for (const QVariant &entry : qAsConst(windows)) {
        const QRect rect = entry.toRect();
        const bool inside =
            rect.x() < x && x < rect.x() + rect.width() && rect.y() < y && y < rect.y() + rect.height();
        if (inside) {
            setRegion(rect);
            return;
        }
    }
}

QString ScreenCapture::imageToBase64(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png", -1);
    return QString::fromLatin1(bytes.toBase64());
}

void ScreenCapture::resizeEvent(QResizeEvent *event)
{
    // Takes the keyboard as soon as it has its size.
    requestActivate();
    QQuickWindow::resizeEvent(event);
}

void ScreenCapture::hideEvent(QHideEvent *event)
{
    QQuickWindow::hideEvent(event);
    deleteLater();
}

void ScreenCapture::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    QQuickWindow::keyPressEvent(event);
}
