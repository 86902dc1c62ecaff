#pragma once

#include <QRectF>
#include <QSGGeometryNode>
#include <QSGTexture>
#include <QSizeF>
#include <qsgsimplematerial.h>

namespace component_imagerender {

/// What the shader needs. Areas are fractions of the item and of the pictures, see `DisplayAreas`. Owns both
/// textures, which must differ.
struct ImageRenderState
{
    ImageRenderState() = default;
    ~ImageRenderState();
    ImageRenderState(const ImageRenderState &) = delete;
    ImageRenderState &operator=(const ImageRenderState &) = delete;

    // In item pixels.
    float radiusTopLeft = 0;
    float radiusTopRight = 0;
    float radiusBottomLeft = 0;
    float radiusBottomRight = 0;
    QRectF areaBackground{0, 0, 1, 1};
    QRectF areaSource{0, 0, 1, 1};
    QRectF areaDisplayBackground{0, 0, 1, 1};
    QRectF areaDisplaySource{0, 0, 1, 1};
    QSGTexture *textureBackground = nullptr;
    QSGTexture *textureSource = nullptr;
    QSizeF viewSize;
};

/// One rectangle with two textures. Lives and dies on the render thread.
class ImageRenderNode : public QSGGeometryNode
{
public:
    ImageRenderNode();

    [[nodiscard]] ImageRenderState *state();
    /// Take a texture over; the one before dies.
    void setBackgroundTexture(QSGTexture *texture);
    void setSourceTexture(QSGTexture *texture);
    /// Covers `rect`.
    void setRect(const QRectF &rect);
    /// Has all of the state drawn anew.
    void markChanged();

private:
    QSGGeometry geometry;
    QSGSimpleMaterial<ImageRenderState> *material = nullptr; ///< owned by the node's base class
};

} // namespace component_imagerender
