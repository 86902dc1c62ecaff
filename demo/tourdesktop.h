#pragma once

#include "traypanel.h"

#include <QImage>
#include <QObject>
#include <QPoint>
#include <QProcess>
#include <QTimer>

class QQuickItem;
class QQuickWindow;

/// What the guided tour needs of the desktop: a tray, where there is none, and a hand that moves the pointer
/// and presses keys from outside the program, so that the window system takes part. That hand is xdotool.
class TourDesktop : public QObject
{
    Q_OBJECT
    /// Whether the hand is still moving.
    Q_PROPERTY(bool busy READ isBusy)
    /// How often the first icon in the tray has vanished so far; not counted beyond three.
    Q_PROPERTY(int trayBlinks READ trayBlinks)

public:
    explicit TourDesktop(QObject *parent = nullptr);

    [[nodiscard]] bool isBusy() const { return hand.state() != QProcess::NotRunning; }
    [[nodiscard]] int trayBlinks() const { return blinks; }

    /// Presses and lets go of keys, for example "ctrl+alt+k", whatever window has the focus.
    Q_INVOKABLE void pressKeys(const QString &keys);
    /// Points are those of the desktop.
    Q_INVOKABLE void click(const QPoint &point, int times = 1);
    /// Presses at `from`, goes to `to` in small steps, and lets go there, unless `holds`.
    Q_INVOKABLE void drag(const QPoint &from, const QPoint &to, bool holds = false);
    Q_INVOKABLE void letGo();

    /// Where a point of the item is on the desktop.
    [[nodiscard]] Q_INVOKABLE QPoint pointOf(QQuickItem *item, qreal x, qreal y) const;
    /// The middle of the first icon in the tray.
    [[nodiscard]] Q_INVOKABLE QPoint trayPoint() const;
    /// How many pixels of that icon have the red of its badge, as the screen shows it.
    [[nodiscard]] Q_INVOKABLE int redInTray() const;

private:
    void move(const QString &commands);
    [[nodiscard]] QImage trayPicture() const;
    void lookAtTray();

    TrayPanel panel;
    QProcess hand;
    QTimer look;
    int blinks = 0;
    bool iconWasThere = false;
};
