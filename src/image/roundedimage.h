#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QQuickItem>

/// Shows one picture with rounded corners, clipped per pixel on the GPU.
///
/// The picture is loaded on a worker as soon as `source`, `fillMode` or `sourceSize` changes; the old one
/// stays until the new one is there. A failed load leaves no trace. Corners are circular in a square item and
/// elliptical in any other, and their edge fades over two hundredths of the item's sides. A radius counts at
/// the size that the item had when a radius was last set.
class RoundedImage : public QQuickItem
{
    Q_OBJECT
    /// Path of a file or resource, without a scheme. Empty for no picture.
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    /// Radius of all corners, at most half the shorter side; takes precedence over the four below unless it
    /// is 0 or less. Default: 0.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// Radius of the corner at the top left in pixels, at most half the shorter side. Default: 0.
    Q_PROPERTY(double radiusTopLeft READ radiusTopLeft WRITE setRadiusTopLeft NOTIFY radiusTopLeftChanged)
    /// The same for the corner at the top right.
    Q_PROPERTY(double radiusTopRight READ radiusTopRight WRITE setRadiusTopRight NOTIFY radiusTopRightChanged)
    /// The same for the corner at the bottom left.
    Q_PROPERTY(double radiusBottomLeft READ radiusBottomLeft WRITE setRadiusBottomLeft NOTIFY
                   radiusBottomLeftChanged)
    /// The same for the corner at the bottom right.
    Q_PROPERTY(double radiusBottomRight READ radiusBottomRight WRITE setRadiusBottomRight NOTIFY
                   radiusBottomRightChanged)
    /// How the picture fills `sourceSize` or the item. Default: `Stretch`.
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged)
    /// Whether loads go into the cache of all items with this property, and are answered from it. Takes
    /// effect with the next load. Default: false.
    Q_PROPERTY(bool cache READ cache WRITE setCache NOTIFY cacheChanged)
    /// Size of the picture in pixels; while invalid (-1 by -1, the default), the item's size at the start of
    /// the load, in device pixels.
    Q_PROPERTY(QSize sourceSize READ sourceSize WRITE setSourceSize NOTIFY sourceSizeChanged)

public:
    /// How a picture lies on its area: stretched to it, whole inside it, or covering it with what juts out
    /// cut off.
    enum FillMode : int { Stretch, PreserveAspectFit, PreserveAspectCrop };
    Q_ENUM(FillMode)

    explicit RoundedImage(QQuickItem *parent = nullptr);
    ~RoundedImage() override;

    [[nodiscard]] QString source() const;
    [[nodiscard]] double radius() const;
    [[nodiscard]] double radiusTopLeft() const;
    [[nodiscard]] double radiusTopRight() const;
    [[nodiscard]] double radiusBottomLeft() const;
    [[nodiscard]] double radiusBottomRight() const;
    [[nodiscard]] FillMode fillMode() const;
    [[nodiscard]] bool cache() const;
    [[nodiscard]] QSize sourceSize() const;

public Q_SLOTS:
    void setSource(const QString &source);
    void setRadius(double radius);
    void setRadiusTopLeft(double radiusTopLeft);
    void setRadiusTopRight(double radiusTopRight);
    void setRadiusBottomLeft(double radiusBottomLeft);
    void setRadiusBottomRight(double radiusBottomRight);
    void setFillMode(RoundedImage::FillMode fillMode);
    void setCache(bool cache);
    void setSourceSize(const QSize &sourceSize);

Q_SIGNALS:
    void sourceChanged(QString source);
    void radiusChanged(double radius);
    void radiusTopLeftChanged(double radiusTopLeft);
    void radiusTopRightChanged(double radiusTopRight);
    void radiusBottomLeftChanged(double radiusBottomLeft);
    void radiusBottomRightChanged(double radiusBottomRight);
    void fillModeChanged(RoundedImage::FillMode fillMode);
    void cacheChanged(bool cache);
    void sourceSizeChanged(QSize sourceSize);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void componentComplete() override;

private:
    /// What the properties hold. Radii as they came, clamped on their way to the GPU only.
    struct Values
    {
        QString source;
        double radius = 0;
        double radiusTopLeft = 0;
        double radiusTopRight = 0;
        double radiusBottomLeft = 0;
        double radiusBottomRight = 0;
        FillMode fillMode = Stretch;
        bool cache = false;
        QSize sourceSize;
    };

    void updatePainterData();
    void takeResult();
    void storeRadius(double Values::*radius, double value, void (RoundedImage::*changed)(double));
    [[nodiscard]] QSize loadSize() const;
    [[nodiscard]] bool isCached() const;

    QFutureWatcher<QImage> watcher;
    Values values;
    QString cacheKey; ///< of `source`, once one was set
    // Set on the GUI thread, cleared on the render thread while the GUI thread waits for it.
    bool textureDirty = false;
    bool radiusDirty = false;
};
