#pragma once

#include <QSGGeometryNode>
#include <QSGTexture>
#include <qsgsimplematerial.h>

namespace roundedimage {

/// The vertex shader of the rounded items: passes texture coordinates on.
extern const char vertexShaderText[];

/// What the shader needs. Radii are fractions, 0 to 0.5, of the item's shorter side. Owns the texture.
struct RoundedImageState
{
    RoundedImageState() = default;
    ~RoundedImageState();
    RoundedImageState(const RoundedImageState &) = delete;
    RoundedImageState &operator=(const RoundedImageState &) = delete;

    float radius = 0;
    float radiusTopLeft = 0;
    float radiusTopRight = 0;
    float radiusBottomLeft = 0;
    float radiusBottomRight = 0;
    QSGTexture *texture = nullptr;
};

/// One textured rectangle. Lives and dies on the render thread.
class RoundedImageNode : public QSGGeometryNode
{
public:
    RoundedImageNode();

    [[nodiscard]] RoundedImageState *state();
    /// Takes the texture over; the one before dies.
    void setTexture(QSGTexture *texture);
    /// Covers `rect` with the whole texture, and has all of the state drawn anew.
    void setRect(const QRectF &rect);

private:
    QSGGeometry geometry;
    QSGSimpleMaterial<RoundedImageState> *material = nullptr; ///< owned by the node's base class
};

} // namespace roundedimage
