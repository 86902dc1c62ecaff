#include "robot.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QDir>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
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

QString Robot::clipboardText() const
{
    return QGuiApplication::clipboard()->text();
}

bool Robot::takePicture(QQuickWindow *window, const QString &name) const
{
    if (!window)
        return false;
    if (folder.isEmpty())
        return true;
    const QImage picture = window->grabWindow();
    return !picture.isNull() && QDir().mkpath(folder) &&
           picture.save(QDir(folder).filePath(name + QStringLiteral(".png")));
}
