#pragma once

#include "probetext.h"

#include <QMutex>

/// What one pass of painting left in the scene graph.
struct PaintedNodes
{
    struct Polygon
    {
        QVector<QPointF> points;
        QColor color;
        unsigned drawingMode = 0;
        bool ownsEverything = false; ///< owned by its parent, owner of its geometry and its material
        int children = 0;
    };

    int frames = 0;                     ///< passes so far
    bool isTextNode = false;            ///< the root is the scene graph's text node
    int children = 0;                   ///< of the root
    bool hasSelection = false;          ///< the first child is the parent of the selection
    bool selectionDrawsNothing = false; ///< that parent is transparent
    QVector<Polygon> polygons;          ///< of the selection, in their order
    int glyphNodes = 0;
    bool glyphsFollowSelection = true; ///< no glyphs lie beneath the selection
    QVector<QRectF> images;            ///< where pictures are laid; they lie above everything else
    bool imagesAreLast = true;
};

/// An item that writes down its nodes each time it is painted.
class PaintProbe : public ProbeText
{
public:
    using ProbeText::ProbeText;

    [[nodiscard]] PaintedNodes painted() const;

    /// The item's state, for tests that bring it into a shape that takes a race to reach otherwise.
    [[nodiscard]] DrawableTextPrivate &editableState() { return const_cast<DrawableTextPrivate &>(*state()); }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    mutable QMutex mutex; // The render thread writes, the test reads.
    PaintedNodes nodes;
};
