#pragma once

#include <QFutureWatcher>
#include <QImage>
#include <QList>
#include <QPainterPath>
#include <QQuickItem>

/// Shows a picture over a blurred background picture, blended and with rounded corners in one pass on the
/// GPU.
///
/// Both pictures are loaded on workers. While one of them is missing, the other stands in for it; while both
/// are, the item keeps what it last showed. A new size of the item loads nothing anew.
class ImageRender : public QQuickItem
{
    Q_OBJECT
    /// Path of a file or resource, without a scheme. Empty for none.
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    /// A path that holds a ":", or base64 picture data. Empty for none.
    Q_PROPERTY(QString backgroundSource READ backgroundSource WRITE setBackgroundSource NOTIFY
                   backgroundSourceChanged)
    /// Radius of the blur on a background 32 pixels wide; no blur up to 1. A background that is in the cache
    /// keeps the radius it was made with. Default: 0.
    Q_PROPERTY(double blurRadius READ blurRadius WRITE setBlurRadius NOTIFY blurRadiusChanged)
    /// Kept for clients that set it; backgrounds are always cached, foregrounds never.
    Q_PROPERTY(bool cache READ cache WRITE setCache NOTIFY cacheChanged)
    /// How `source` lies on the item. Default: `Stretch`.
    Q_PROPERTY(
        FillMode sourceFillMode READ sourceFillMode WRITE setSourceFillMode NOTIFY sourceFillModeChanged)
    /// How `backgroundSource` lies on the item. Default: `Stretch`.
    Q_PROPERTY(FillMode backgroundFillMode READ backgroundFillMode WRITE setBackgroundFillMode NOTIFY
                   backgroundFillModeChanged)
    /// Where the loading of `source` stands.
    Q_PROPERTY(Status statusSource READ statusSource NOTIFY statusSourceChanged)
    /// Where the loading of `backgroundSource` stands.
    Q_PROPERTY(Status statusBackground READ statusBackground NOTIFY statusBackgroundChanged)
    /// Half the size that a picture may have in memory; while invalid (-1 by -1, the default), the item's
    /// size at the start of the load.
    Q_PROPERTY(QSize sourceSize READ sourceSize WRITE setSourceSize NOTIFY sourceSizeChanged)
    /// Radius of the corner at the top left in pixels, 0 to half the item's shorter side at the time of the
    /// change.
    Q_PROPERTY(double topLeftRadius READ topLeftRadius WRITE setTopLeftRadius NOTIFY topLeftRadiusChanged)
    /// The same for the corner at the top right.
    Q_PROPERTY(double topRightRadius READ topRightRadius WRITE setTopRightRadius NOTIFY topRightRadiusChanged)
    /// The same for the corner at the bottom left.
    Q_PROPERTY(double bottomLeftRadius READ bottomLeftRadius WRITE setBottomLeftRadius NOTIFY
                   bottomLeftRadiusChanged)
    /// The same for the corner at the bottom right.
    Q_PROPERTY(double bottomRightRadius READ bottomRightRadius WRITE setBottomRightRadius NOTIFY
                   bottomRightRadiusChanged)

public:
    /// How a picture lies on its area: stretched to it, whole inside it, or covering it with what juts out
    /// cut off.
    enum FillMode : int { Stretch, PreserveAspectFit, PreserveAspectCrop };
    Q_ENUM(FillMode)
    /// Where the loading of a picture stands: no source, shown or ready to be, on its way, or failed.
    enum Status : int { Null, Ready, Loading, Error };
    Q_ENUM(Status)

    explicit ImageRender(QQuickItem *parent = nullptr);
    ~ImageRender() override;

    [[nodiscard]] QString source() const;
    [[nodiscard]] QString backgroundSource() const;
    [[nodiscard]] double blurRadius() const;
    [[nodiscard]] bool cache() const;
    [[nodiscard]] FillMode sourceFillMode() const;
    [[nodiscard]] FillMode backgroundFillMode() const;
    [[nodiscard]] Status statusSource() const;
    [[nodiscard]] Status statusBackground() const;
    [[nodiscard]] QSize sourceSize() const;
    [[nodiscard]] double topLeftRadius() const;
    [[nodiscard]] double topRightRadius() const;
    [[nodiscard]] double bottomLeftRadius() const;
    [[nodiscard]] double bottomRightRadius() const;

public Q_SLOTS:
    void setSource(const QString &source);
    void setBackgroundSource(const QString &backgroundSource);
    void setBlurRadius(double blurRadius);
    void setCache(bool cache);
    void setSourceFillMode(ImageRender::FillMode sourceFillMode);
    void setBackgroundFillMode(ImageRender::FillMode backgroundFillMode);
    void setStatusSource(ImageRender::Status statusSource);
    void setStatusBackground(ImageRender::Status statusBackground);
    void setSourceSize(const QSize &sourceSize);
    void setTopLeftRadius(double topLeftRadius);
    void setTopRightRadius(double topRightRadius);
    void setBottomLeftRadius(double bottomLeftRadius);
    void setBottomRightRadius(double bottomRightRadius);

    /// Loads both pictures anew, as far as they have a source.
    void updatePainterData();
    /// Rebuilds the item's outline from its radii and its size. Kept for clients that call it; the clipping
    /// is the shader's.
    void updatePath();
    /// The part of the item that `image` covers in `mode`, and the part of the image that is seen, in
    /// fractions of their sizes.
    QList<QRectF> calcImageDisplayArea(const QImage &image, ImageRender::FillMode mode);

Q_SIGNALS:
    void sourceChanged(QString source);
    void backgroundSourceChanged(QString backgroundSource);
    void blurRadiusChanged(double blurRadius);
    void cacheChanged(bool cache);
    void sourceFillModeChanged(ImageRender::FillMode sourceFillMode);
    void backgroundFillModeChanged(ImageRender::FillMode backgroundFillMode);
    void statusSourceChanged(ImageRender::Status statusSource);
    void statusBackgroundChanged(ImageRender::Status statusBackground);
    void sourceSizeChanged(QSize sourceSize);
    void topLeftRadiusChanged(double topLeftRadius);
    void topRightRadiusChanged(double topRightRadius);
    void bottomLeftRadiusChanged(double bottomLeftRadius);
    void bottomRightRadiusChanged(double bottomRightRadius);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void componentComplete() override;

private:
    /// What the properties hold. Radii as they came, clamped on their way to the GPU only.
    struct Values
    {
        double topLeftRadius = 0;
        double topRightRadius = 0;
        double bottomLeftRadius = 0;
        double bottomRightRadius = 0;
        QString source;
        QString backgroundSource;
        bool cache = false;
        double blurRadius = 0;
        FillMode sourceFillMode = Stretch;
        FillMode backgroundFillMode = Stretch;
        Status statusSource = Null;
        Status statusBackground = Null;
        QSize sourceSize;
    };

    void takeSource();
    void takeBackground();
    void startSource(bool cache);
    void startBackground();
    void updateWhenComplete();
    void storeRadius(double Values::*radius, double value, void (ImageRender::*changed)(double));
    [[nodiscard]] QSize loadSize() const;

    QFutureWatcher<QImage> sourceWatcher;
    QFutureWatcher<QImage> backgroundWatcher;
    Values values;
    QPainterPath path;
    // Set on the GUI thread, cleared on the render thread while the GUI thread waits for it.
    bool radiusDirty = false;
    bool textureDirty = false;
};
