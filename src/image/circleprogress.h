#pragma once

#include <QColor>
#include <QPainterPath>
#include <QQuickPaintedItem>
#include <QTimer>

/// Progress as a round vessel that fills up, with a moving wave as its surface.
///
/// The wave moves, and the item repaints 20 times a second, while the item is enabled, visible and not fully
/// transparent and `progress` lies between 0 and 1.
class CircleProgress : public QQuickPaintedItem
{
    Q_OBJECT
    /// How full the vessel is, 0 to 1. From 1 on it is filled with the opaque colour. Default: 0.
    Q_PROPERTY(double progress READ progress WRITE setProgress NOTIFY progressChanged)
    /// Default: black.
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Radius in pixels; sets the item's width and height. Default: 20.
    Q_PROPERTY(int radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// Kept for clients that set it. Default: 1.
    Q_PROPERTY(int quality READ quality WRITE setQuality NOTIFY qualityChanged)

public:
    explicit CircleProgress(QQuickItem *parent = nullptr);

    [[nodiscard]] double progress() const;
    [[nodiscard]] QColor color() const;
    [[nodiscard]] int radius() const;
    [[nodiscard]] int quality() const;

    void paint(QPainter *painter) override;

public Q_SLOTS:
    void setProgress(double progress);
    void setColor(const QColor &color);
    void setRadius(int radius);
    void setQuality(int quality);

Q_SIGNALS:
    void progressChanged(double progress);
    void colorChanged(QColor color);
    void radiusChanged(int radius);
    void qualityChanged(int quality);

private Q_SLOTS:
    void updateTimer();

private:
    struct Values
    {
        double progress = 0;
        QColor color = Qt::black;
        int radius = 20;
        int quality = 1;
    };

    void takeRadius();
    [[nodiscard]] double diameter() const;

    Values values;
    QPainterPath clipPath;
    QTimer timer;
};
