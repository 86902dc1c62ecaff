#include "tourdesktop.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace {

constexpr int dragSteps = 10;
constexpr int enoughBlinks = 3;
constexpr int lookInterval = 100; // ms, a fifth of a tick of a flashing icon
const QPoint resting(5, 995);     // on the panel, where nothing is

QString goTo(const QPoint &point)
{
    // The pause lets the program see each step of a way.
    return QStringLiteral("mousemove %1 %2 sleep 0.03 ").arg(point.x()).arg(point.y());
}

} // namespace

TourDesktop::TourDesktop(QObject *parent)
    : QObject(parent)
{
    connect(&look, &QTimer::timeout, this, &TourDesktop::lookAtTray);
    look.start(lookInterval);
}

void TourDesktop::move(const QString &commands)
{
    hand.start(QStringLiteral("xdotool"), commands.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

void TourDesktop::pressKeys(const QString &keys)
{
    move(QLatin1String("key ") + keys);
}

void TourDesktop::click(const QPoint &point, int times)
{
    move(goTo(point) + QStringLiteral("click --repeat %1 --delay 60 1 ").arg(times) + goTo(resting));
}

void TourDesktop::drag(const QPoint &from, const QPoint &to, bool holds)
{
    QString commands = goTo(from) + QLatin1String("mousedown 1 ");
    for (int step = 1; step <= dragSteps; ++step)
        commands += goTo(from + (to - from) * step / dragSteps);
    if (!holds)
        commands += QLatin1String("mouseup 1 ") + goTo(resting);
    move(commands);
}

void TourDesktop::letGo()
{
    move(QLatin1String("mouseup 1 ") + goTo(resting));
}

QPoint TourDesktop::pointOf(QQuickItem *item, qreal x, qreal y) const
{
    return item ? item->mapToGlobal({x, y}).toPoint() : QPoint();
}

QPoint TourDesktop::trayPoint() const
{
    return panel.iconArea(0).center();
}

QImage TourDesktop::trayPicture() const
{
    const QRect area = panel.iconArea(0);
    if (area.isEmpty())
        return QImage();
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .toImage();
}

int TourDesktop::redInTray() const
{
    const QImage icon = trayPicture();
    int red = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x)
            red += icon.pixelColor(x, y) == QColor(Qt::red);
    }
    return red;
}

void TourDesktop::lookAtTray()
{
    const QImage icon = trayPicture();
    if (icon.isNull())
        return;
    QImage empty = icon.copy();
    empty.fill(icon.pixelColor(0, 0));
    const bool isThere = icon != empty;
    blinks += iconWasThere && !isThere;
    iconWasThere = isThere;
    if (blinks == enoughBlinks)
        look.stop();
}
