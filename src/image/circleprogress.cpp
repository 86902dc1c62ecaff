#include "circleprogress.h"

#include "valuestore.h"

#include <QPainter>
#include <QTime>

#include <algorithm>
#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int frameInterval = 50;       // ms
constexpr double phaseInterval = 20.0;  // ms per pixel that the wave moves
constexpr double waveParts = 20.0;      // of the diameter, for the height of the wave
constexpr int waterAlpha = 100;         // 0 to 255
constexpr double widestWave = 16'384.0; // pixels; no texture is wider, so nothing beyond is seen

} // namespace

CircleProgress::CircleProgress(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    connect(this, &QQuickItem::enabledChanged, this, &CircleProgress::updateTimer);
    connect(this, &QQuickItem::visibleChanged, this, &CircleProgress::updateTimer);
    connect(this, &QQuickItem::opacityChanged, this, &CircleProgress::updateTimer);
    connect(&timer, &QTimer::timeout, this, [this] { update(QRect()); });
    timer.setInterval(frameInterval);
    // Runs until the first property that it depends on is set.
    if (isEnabled())
        timer.start();
    takeRadius();
    setRenderTarget(QQuickPaintedItem::FramebufferObject);
}

double CircleProgress::diameter() const
{
    return 2.0 * values.radius;
}

void CircleProgress::takeRadius()
{
    setWidth(diameter());
    setHeight(diameter());
    clipPath = QPainterPath();
    clipPath.addEllipse(0, 0, diameter(), diameter());
}

double CircleProgress::progress() const
{
    return values.progress;
}

void CircleProgress::setProgress(double progress)
{
    if (!storeIfChanged(values.progress, progress))
        return;
    updateTimer();
    update(QRect());
    Q_EMIT progressChanged(progress);
}

QColor CircleProgress::color() const
{
    return values.color;
}

void CircleProgress::setColor(const QColor &color)
{
    if (!storeIfChanged(values.color, color))
        return;
    update(QRect());
    Q_EMIT colorChanged(color);
}

int CircleProgress::radius() const
{
    return values.radius;
}

void CircleProgress::setRadius(int radius)
{
    if (!storeIfChanged(values.radius, radius))
        return;
    takeRadius();
    update(QRect());
    Q_EMIT radiusChanged(radius);
}

int CircleProgress::quality() const
{
    return values.quality;
}

void CircleProgress::setQuality(int quality)
{
    if (storeIfChanged(values.quality, quality))
        Q_EMIT qualityChanged(quality);
}

void CircleProgress::updateTimer()
{
    const bool shouldRun =
        isEnabled() && isVisible() && opacity() > 0 && values.progress > 0 && values.progress < 1;
    if (shouldRun && !timer.isActive())
        timer.start();
    else if (!shouldRun && timer.isActive())
        timer.stop();
}

void CircleProgress::paint(QPainter *painter)
{
    if (!isComponentComplete())
        return;
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setClipPath(clipPath, Qt::ReplaceClip);
    if (values.progress >= 1) {
        painter->fillRect(boundingRect().toRect(), values.color);
        return;
    }
    QColor water = values.color;
    water.setAlpha(waterAlpha);

    const double edge = diameter();
    const double angle = pi / 2 / values.radius; // per pixel: a wave is four radii long
    const QTime now = QTime::currentTime();
    const double phase = now.isValid() ? now.msecsSinceStartOfDay() / phaseInterval : 0.0;
    QPainterPath surface;
    surface.moveTo(0, edge);
    for (int x = 0; x <= std::min(edge, widestWave); ++x) {
        const double wave = std::sin((x + phase) * angle) * edge / waveParts;
        surface.lineTo(x, wave + (1.0 - values.progress) * edge);
    }
    surface.lineTo(edge, edge);
    surface.closeSubpath();
    painter->fillPath(surface, QBrush(water, Qt::SolidPattern));
}
