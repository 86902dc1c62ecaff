#include "paintprobe.h"

#include <QMutexLocker>
#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>
#include <private/qquicktextnode_p.h>
#include <private/qsgadaptationlayer_p.h>

namespace {

QRectF boundsOf(const QSGGeometry &geometry)
{
    QRectF bounds;
    const auto *vertex = static_cast<const char *>(geometry.vertexData());
    for (int i = 0; i < geometry.vertexCount(); ++i, vertex += geometry.sizeOfVertex()) {
        const auto *point = reinterpret_cast<const float *>(vertex);
        const QRectF spot(point[0], point[1], 1e-9, 1e-9);
        bounds = bounds.isNull() ? spot : bounds.united(spot);
    }
    return bounds;
}

bool ownsEverything(const QSGNode &node)
{
    const QSGNode::Flags wanted = QSGNode::OwnedByParent | QSGNode::OwnsGeometry | QSGNode::OwnsMaterial;
    return (node.flags() & wanted) == wanted;
}

PaintedNodes::Polygon readPolygon(const QSGGeometryNode &node)
{
    PaintedNodes::Polygon polygon;
    const QSGGeometry &geometry = *node.geometry();
    for (int i = 0; i < geometry.vertexCount(); ++i) {
        const QSGGeometry::Point2D &point = geometry.vertexDataAsPoint2D()[i];
        polygon.points.append(QPointF(point.x, point.y));
    }
    polygon.drawingMode = geometry.drawingMode();
    polygon.ownsEverything = ownsEverything(node);
    polygon.children = node.childCount();
    if (const auto *material = dynamic_cast<const QSGFlatColorMaterial *>(node.material()))
        polygon.color = material->color();
    return polygon;
}

/// The parent of a selection has one vertex at the origin; nothing else in a text node is like that.
const QSGGeometryNode *selectionParent(const QSGNode *child)
{
    const auto *node = dynamic_cast<const QSGGeometryNode *>(child);
    if (!node || !node->geometry() || node->geometry()->vertexCount() != 1)
        return nullptr;
    const QSGGeometry::Point2D &vertex = node->geometry()->vertexDataAsPoint2D()[0];
    const bool isOrigin = qFuzzyIsNull(vertex.x) && qFuzzyIsNull(vertex.y);
    return isOrigin ? node : nullptr;
}

void read(const QSGNode *root, PaintedNodes &nodes)
{
    nodes.isTextNode = dynamic_cast<const QQuickTextNode *>(root) != nullptr;
    nodes.children = root->childCount();
    for (const QSGNode *child = root->firstChild(); child; child = child->nextSibling()) {
        if (const auto *image = dynamic_cast<const QSGInternalImageNode *>(child)) {
            nodes.images.append(boundsOf(*image->geometry()));
            continue;
        }
        if (!nodes.images.isEmpty())
            nodes.imagesAreLast = false;
        if (dynamic_cast<const QSGGlyphNode *>(child)) {
            ++nodes.glyphNodes;
            continue;
        }
        const QSGGeometryNode *parent = selectionParent(child);
        if (!parent)
            continue;
        nodes.hasSelection = true;
        if (child != root->firstChild())
            nodes.glyphsFollowSelection = false;
        const auto *material = dynamic_cast<const QSGFlatColorMaterial *>(parent->material());
        nodes.selectionDrawsNothing = material && material->color().alpha() == 0 && ownsEverything(*parent);
        for (const QSGNode *polygon = parent->firstChild(); polygon; polygon = polygon->nextSibling())
            nodes.polygons.append(readPolygon(*static_cast<const QSGGeometryNode *>(polygon)));
    }
}

} // namespace

PaintedNodes PaintProbe::painted() const
{
    const QMutexLocker locker(&mutex);
    return nodes;
}

QSGNode *PaintProbe::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data)
{
    QSGNode *root = ProbeText::updatePaintNode(oldNode, data);
    const QMutexLocker locker(&mutex);
    PaintedNodes fresh;
    fresh.frames = nodes.frames + 1;
    if (root)
        read(root, fresh);
    nodes = fresh;
    return root;
}
