#include "systemtrayicon.h"

#include "traybadge.h"

#include <QApplication>
#include <QDebug>
#include <QTimerEvent>

namespace {

constexpr int iconExtent = 32;
constexpr int flashInterval = 500; // ms
constexpr int flashTickCount = 11; // ends on the icon, after 5.5 seconds

QIcon disabledIcon(const QIcon &icon)
{
    return QIcon(icon.pixmap(iconExtent, QIcon::Disabled, QIcon::Off));
}

} // namespace

SystemTrayIcon::SystemTrayIcon(QObject *parent)
    : QObject(parent)
    , baseIcon(QStringLiteral(":/ui/image/icon.ico"))
    , currentIcon(baseIcon)
    , theme(QStringLiteral("#008080"))
{
    tray.reset(new QSystemTrayIcon(baseIcon));
    connect(tray.data(), &QSystemTrayIcon::activated, this, &SystemTrayIcon::onActivated);
    connect(tray.data(), &QSystemTrayIcon::messageClicked, this, &SystemTrayIcon::messageClick);
}

SystemTrayIcon::~SystemTrayIcon() = default;

void SystemTrayIcon::onActivated(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::Context:
        Q_EMIT context();
        break;
    case QSystemTrayIcon::DoubleClick:
        Q_EMIT doubleClick();
        break;
    case QSystemTrayIcon::Trigger:
        Q_EMIT trigger();
        break;
    case QSystemTrayIcon::MiddleClick:
        Q_EMIT middleClick();
        break;
    case QSystemTrayIcon::Unknown:
        break;
    }
}

void SystemTrayIcon::showMessage(const QString &title, const QString &message, const QString &iconSoure,
                                 int millisecondsTimeoutHint)
{
    tray->showMessage(title, message, QIcon(iconSoure), millisecondsTimeoutHint);
}

QString SystemTrayIcon::toolTip() const
{
    return tray->toolTip();
}

void SystemTrayIcon::setToolTip(const QString &toolTip)
{
    if (tray->toolTip() == toolTip)
        return;
    tray->setToolTip(toolTip);
    Q_EMIT toolTipChanged(toolTip);
}

QString SystemTrayIcon::iconSoure() const
{
    return tray->icon().name();
}

void SystemTrayIcon::setIconSource(const QString &source)
{
    if (tray->icon().name() == source)
        return;
    this->source = source;
    // Only the tray gets it: base and current icon stay, and the next badge or flash goes back to them.
    tray->setIcon(QIcon(source));
    Q_EMIT iconSoureChanged(source);
}

bool SystemTrayIcon::visible() const
{
    return tray->isVisible();
}

void SystemTrayIcon::setVisible(bool visible)
{
    if (tray->isVisible() == visible)
        return;
    if (!qobject_cast<QApplication *>(QCoreApplication::instance())) {
        qWarning("SystemTrayIcon: a tray icon needs a QApplication");
        return;
    }
    tray->setVisible(visible);
    Q_EMIT visibleChanged(visible);
}

bool SystemTrayIcon::flashing() const
{
    return isFlashing;
}

void SystemTrayIcon::startFlashTimer()
{
    // The id of a finished timer is never cleared: an object flashes through one sequence, and clients make a
    // new object, or use a timer of their own, for the next.
    if (flashTimer == -1)
        flashTimer = startTimer(flashInterval, Qt::CoarseTimer);
    flashTicks = 0;
}

void SystemTrayIcon::setFlashing(bool flashing)
{
    if (flashing)
        startFlashTimer();
    if (isFlashing == flashing)
        return;
    isFlashing = flashing;
    Q_EMIT flashingChanged(flashing);
}

void SystemTrayIcon::flash()
{
    setFlashing(true);
}

void SystemTrayIcon::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != flashTimer) {
        event->ignore();
        return;
    }
    tray->setIcon(flashTicks % 2 == 1 ? QIcon() : currentIcon);
    ++flashTicks;
    if (flashTicks == flashTickCount) {
        killTimer(flashTimer);
        setFlashing(false);
    }
}

int SystemTrayIcon::messageCount() const
{
    return count;
}

void SystemTrayIcon::setMessageCount(int messageCount)
{
    count = messageCount;
    if (count >= 1) {
        const QIcon::Mode mode = currentState == Online ? QIcon::Normal : QIcon::Disabled;
        currentIcon = QIcon(traybadge::paintedOn(baseIcon.pixmap(iconExtent, mode, QIcon::Off), count));
    } else {
        currentIcon = currentState == Online ? baseIcon : disabledIcon(baseIcon);
    }
    tray->setIcon(currentIcon);
    Q_EMIT messageCountChanged(messageCount);
}

SystemTrayIcon::State SystemTrayIcon::state() const
{
    return currentState;
}

void SystemTrayIcon::setState(State state)
{
    if (currentState == state)
        return;
    currentState = state;
    // The offline look is the tray's alone; a flash shows the current icon as it is.
    tray->setIcon(state == Online ? currentIcon : disabledIcon(currentIcon));
    Q_EMIT stateChanged(state);
}

QColor SystemTrayIcon::themeColor() const
{
    return theme;
}

void SystemTrayIcon::setThemeColor(const QColor &themeColor)
{
    if (theme == themeColor)
        return;
    theme = themeColor;
    Q_EMIT themeColorChanged(themeColor);
}
