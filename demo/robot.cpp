#include "robot.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QStandardPaths>
#include <QWheelEvent>

namespace {

constexpr int dragSteps = 12;
constexpr ulong eventInterval = 20;
// Longer than any double-click time, so that two clicks never become one gesture.
constexpr ulong clickInterval = 2000;

} // namespace

Robot::Robot(const QString &folder, QObject *parent)
    : QObject(parent)
    , folder(folder)
{}

void Robot::mouse(QEvent::Type type, QQuickWindow *window, QPointF position, Qt::MouseButton button,
                  Qt::MouseButtons buttons)
{
    time += eventInterval;
    QMouseEvent event(type, position, position, QPointF(window->position()) + position, button, buttons,
                      Qt::NoModifier);
    event.setTimestamp(time);
    QCoreApplication::sendEvent(window, &event);
}

void Robot::hover(QQuickItem *item, qreal x, qreal y)
{
    if (item && item->window())
        mouse(QEvent::MouseMove, item->window(), item->mapToScene({x, y}), Qt::NoButton, Qt::NoButton);
}

void Robot::click(QQuickItem *item, qreal x, qreal y, int button)
{
    if (!item || !item->window())
        return;
    QQuickWindow *window = item->window();
    const QPointF position = item->mapToScene({x, y});
    const auto pressed = static_cast<Qt::MouseButton>(button);
    time += clickInterval;
    mouse(QEvent::MouseMove, window, position, Qt::NoButton, Qt::NoButton);
    mouse(QEvent::MouseButtonPress, window, position, pressed, pressed);
    mouse(QEvent::MouseButtonRelease, window, position, pressed, Qt::NoButton);
}

void Robot::drag(QQuickItem *item, qreal fromX, qreal fromY, qreal toX, qreal toY)
{
    if (!item || !item->window())
        return;
    QQuickWindow *window = item->window();
    const QPointF from = item->mapToScene({fromX, fromY});
    const QPointF to = item->mapToScene({toX, toY});
    time += clickInterval;
    mouse(QEvent::MouseMove, window, from, Qt::NoButton, Qt::NoButton);
    mouse(QEvent::MouseButtonPress, window, from, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= dragSteps; ++step)
        mouse(QEvent::MouseMove, window, from + (to - from) * step / dragSteps, Qt::NoButton, Qt::LeftButton);
    mouse(QEvent::MouseButtonRelease, window, to, Qt::LeftButton, Qt::NoButton);
}

void Robot::wheel(QQuickItem *item, qreal x, qreal y, int angleDelta)
{
    if (!item || !item->window())
        return;
    QQuickWindow *window = item->window();
    const QPointF position = item->mapToScene({x, y});
    time += eventInterval;
    QWheelEvent event(position, QPointF(window->position()) + position, QPoint(), QPoint(0, angleDelta),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    event.setTimestamp(time);
    QCoreApplication::sendEvent(window, &event);
}

void Robot::key(QQuickWindow *window, int key, int modifiers)
{
    if (!window)
        return;
    const auto held = static_cast<Qt::KeyboardModifiers>(modifiers);
    const QString text = key == Qt::Key_Return ? QStringLiteral("\r") : QString();
    QKeyEvent press(QEvent::KeyPress, key, held, text);
    QCoreApplication::sendEvent(window, &press);
    QKeyEvent release(QEvent::KeyRelease, key, held, text);
    QCoreApplication::sendEvent(window, &release);
}

void Robot::type(QQuickWindow *window, const QString &text)
{
    if (!window)
        return;
    // One event for each code point, as an input method would commit it: half a surrogate pair is no text.
    const QVector<uint> codePoints = text.toUcs4();
    for (uint codePoint : codePoints) {
        const QString typed = QString::fromUcs4(&codePoint, 1);
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, typed);
        QCoreApplication::sendEvent(window, &press);
        QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, typed);
        QCoreApplication::sendEvent(window, &release);
    }
}

void Robot::drop(QQuickItem *item, qreal x, qreal y, const QStringList &paths)
{
    if (!item || !item->window())
        return;
    QList<QUrl> urls;
    for (const QString &path : paths)
        urls.append(QUrl::fromLocalFile(path));
    QMimeData data;
    data.setUrls(urls);
    const QPoint position = item->mapToScene({x, y}).toPoint();
    QDragEnterEvent enter(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &enter);
    QDragMoveEvent move(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &move);
    QDropEvent event(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(item->window(), &event);
}

QString Robot::clipboardText() const
{
    return QGuiApplication::clipboard()->text();
}

void Robot::copyPicture() const
{
    QImage picture(480, 320, QImage::Format_RGB32);
    QPainter painter(&picture);
    QLinearGradient sky(0, 0, 0, 320);
    sky.setColorAt(0, QColor(0x2b, 0x4b, 0x9b));
    sky.setColorAt(0.65, QColor(0xf4, 0xa2, 0x6b));
    sky.setColorAt(0.66, QColor(0x21, 0x3a, 0x5e));
    sky.setColorAt(1, QColor(0x10, 0x1d, 0x33));
    painter.fillRect(picture.rect(), sky);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0xff, 0xe3, 0xa8));
    painter.drawEllipse(QPoint(330, 190), 36, 36);
    painter.end();
    QGuiApplication::clipboard()->setImage(picture);
}

QString Robot::makeFile(const QString &name, const QString &text) const
{
    QFile file(files.filePath(name));
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
}

int Robot::countStartEntries() const
{
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return QDir(config + QStringLiteral("/autostart")).entryList(QDir::Files).size();
}

bool Robot::takePicture(QQuickWindow *window, const QString &name) const
{
    if (!window)
        return false;
    if (folder.isEmpty())
        return true;
    QImage picture = window->grabWindow();
    QPainter painter(&picture);
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *other : windows) {
        auto *card = qobject_cast<QQuickWindow *>(other);
        if (card && card->isVisible() && (card->flags() & Qt::WindowType_Mask) == Qt::ToolTip)
            painter.drawImage(card->position() - window->position(), card->grabWindow());
    }
    painter.end();
    // Without a compositor the shadow around the window is black.
    const int margin = window->property("margin").toInt();
    picture = picture.copy(picture.rect().adjusted(margin, margin, -margin, -margin));
    return save(picture, name);
}

bool Robot::takeScreen(const QString &name) const
{
    return folder.isEmpty() || save(QGuiApplication::primaryScreen()->grabWindow(0).toImage(), name);
}

bool Robot::save(const QImage &picture, const QString &name) const
{
    return !picture.isNull() && QDir().mkpath(folder) &&
           picture.save(QDir(folder).filePath(name + QStringLiteral(".png")));
}
