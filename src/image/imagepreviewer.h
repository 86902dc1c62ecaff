#pragma once

#include <QBrush>
#include <QFutureWatcher>
#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QRectF>

class QSGImageNode;
class QSGNode;
class QSGRectangleNode;

/// Shows the visible slice of one large picture that a view moves and scales.
///
/// The view computes zoom and pan and gives the result as `viewGeometry`; the item draws only what lies
/// inside `boundaryItem`. Moving the view loads nothing and uploads nothing. The picture is loaded on a
/// worker; once the item has left a window, nothing that is loaded afterwards reaches it.
class ImagePreviewer : public QQuickItem
{
    Q_OBJECT
    /// Path of a file or resource, without a scheme. Empty for none; what was shown stays then.
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    /// A path that holds a ":", or base64 picture data. It is loaded and has a status, and is never visible.
    Q_PROPERTY(QString backgroundSource READ backgroundSource WRITE setBackgroundSource NOTIFY
                   backgroundSourceChanged)
    /// Where the loading of `source` stands.
    Q_PROPERTY(Status statusSource READ statusSource NOTIFY statusSourceChanged)
    /// Where the loading of `backgroundSource` stands.
    Q_PROPERTY(Status statusBackground READ statusBackground NOTIFY statusBackgroundChanged)
    /// Size that a picture may have in memory; without limit while invalid (-1 by -1, the default) or empty.
    Q_PROPERTY(QSize sourceSize READ sourceSize WRITE setSourceSize NOTIFY sourceSizeChanged)
    /// Radius of the background's blur; no blur up to 1. Default: 0.
    Q_PROPERTY(double blurRadius READ blurRadius WRITE setBlurRadius NOTIFY blurRadiusChanged)
    /// The viewport; null for none. Becomes null when the item dies.
    Q_PROPERTY(QQuickItem *boundaryItem READ boundaryItem WRITE setBoundaryItem NOTIFY boundaryItemChanged)
    /// Where the whole scaled picture lies in the coordinates of `boundaryItem`: a picture scrolled to the
    /// left has a negative x. Moves the item to the visible corner within its parent, which follows the view.
    Q_PROPERTY(QRectF viewGeometry READ viewGeometry WRITE setViewGeometry NOTIFY viewGeometryChanged)

public:
    /// Where the loading of a picture stands: no source, shown or ready to be, on its way, or failed.
    enum Status : int { Null, Ready, Loading, Error };
    Q_ENUM(Status)

    explicit ImagePreviewer(QQuickItem *parent = nullptr);
    ~ImagePreviewer() override;

    [[nodiscard]] QString source() const;
    [[nodiscard]] QString backgroundSource() const;
    [[nodiscard]] Status statusSource() const;
    [[nodiscard]] Status statusBackground() const;
    [[nodiscard]] QSize sourceSize() const;
    [[nodiscard]] double blurRadius() const;
    [[nodiscard]] QQuickItem *boundaryItem() const;
    [[nodiscard]] QRectF viewGeometry() const;

public Q_SLOTS:
    void setSource(const QString &source);
    void setBackgroundSource(const QString &backgroundSource);
    void setStatusSource(ImagePreviewer::Status statusSource);
    void setStatusBackground(ImagePreviewer::Status statusBackground);
    void setSourceSize(const QSize &sourceSize);
    void setBlurRadius(double blurRadius);
    void setBoundaryItem(QQuickItem *boundaryItem);
    void setViewGeometry(const QRectF &viewGeometry);

    /// Loads both pictures anew, as far as they have a source.
    void updatePainterData();
    /// Gives `node` the visible slice. Does nothing for null, for a node without a texture, or while nothing
    /// is visible. Render thread only.
    void updateRenderRect(QSGImageNode *node);
    /// Covers the first child of `node`, an image node, with the checker that shows through transparent
    /// pictures. The item itself paints none. Render thread only.
    void fillBackground(QSGNode *node);
    /// Works out the visible slice.
    void calcRenderRect();

Q_SIGNALS:
    void sourceChanged(QString source);
    void backgroundSourceChanged(QString backgroundSource);
    void statusSourceChanged(ImagePreviewer::Status statusSource);
    void statusBackgroundChanged(ImagePreviewer::Status statusBackground);
    void sourceSizeChanged(QSize sourceSize);
    void blurRadiusChanged(double blurRadius);
    void boundaryItemChanged(QQuickItem *boundaryItem);
    void viewGeometryChanged(QRectF viewGeometry);

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void releaseResources() override;
    void componentComplete() override;

private:
    struct Values
    {
        QString source;
        QString backgroundSource;
        Status statusSource = Null;
        Status statusBackground = Null;
        QSize sourceSize;
        double blurRadius = 0;
        QRectF viewGeometry;
    };

    void takeSource();
    void takeBackground();
    void startSource();
    void startBackground();
    [[nodiscard]] QSGImageNode *createImageNode(const QImage &image);

    QFutureWatcher<QImage> sourceWatcher;
    QFutureWatcher<QImage> backgroundWatcher;
    Values values;
    QPointer<QQuickItem> boundary;
    QBrush brush; ///< the checker
    // The scene graph owns the nodes, and the nodes their textures; all of them die on the render thread.
    QSGRectangleNode *rootNode = nullptr;
    QSGImageNode *backgroundNode = nullptr;
    QSGImageNode *sourceNode = nullptr;
    bool backgroundDirty = true;
    bool sourceDirty = true;
    QRectF renderRect;     ///< the visible slice, from the corner of the scaled picture
    bool released = false; ///< has left a window, and gets no results any more
};
