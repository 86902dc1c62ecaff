#include "selectionnodes.h"

#include "drawabletextprivate.h"
#include "selectionoutline.h"

#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>

namespace drawabletext {
namespace {

QSGGeometryNode *createFanNode(int vertexCount, const QColor &color)
{
    auto *geometry = new QSGGeometry(QSGGeometry::defaultAttributes_Point2D(), vertexCount, 0,
                                     QSGGeometry::UnsignedShortType);
    geometry->setDrawingMode(QSGGeometry::DrawTriangleFan);
    auto *material = new QSGFlatColorMaterial;
    material->setColor(color);
    auto *node = new QSGGeometryNode;
    node->setGeometry(geometry);
    node->setMaterial(material);
    node->setFlags(QSGNode::OwnedByParent | QSGNode::OwnsGeometry | QSGNode::OwnsMaterial);
    return node;
}

QSGGeometryNode *createPolygonNode(const FanPolygon &polygon, const QColor &color)
{
    QSGGeometryNode *node = createFanNode(polygon.size(), color);
    QSGGeometry::Point2D *vertex = node->geometry()->vertexDataAsPoint2D();
    for (const QPointF &point : polygon)
        (vertex++)->set(float(point.x()), float(point.y()));
    return node;
}

/// A node of one transparent vertex: it draws nothing and holds the polygons.
QSGGeometryNode *createRoot()
{
    QSGGeometryNode *node = createFanNode(1, Qt::transparent);
    node->geometry()->vertexDataAsPoint2D()->set(0.0F, 0.0F);
    return node;
}

} // namespace

QSGGeometryNode *buildSelectionNodes(DrawableTextPrivate &state)
{
    if (state.selectionRects.isEmpty())
        return nullptr;
    if (!state.selectionRootNode)
        state.selectionRootNode = createRoot();
    while (QSGNode *child = state.selectionRootNode->firstChild()) {
        state.selectionRootNode->removeChildNode(child);
        delete child;
    }
    const double rightLimit = state.textAreaWidth() + state.effectiveRightPadding();
    const auto groups = groupSelectionRects(state.selectionRects, rightLimit);
    for (const QVector<QRectF> &group : groups) {
        for (const FanPolygon &polygon : outlineGroup(group, state.selectionCornerRadius))
            state.selectionRootNode->appendChildNode(createPolygonNode(polygon, state.selectionColor));
    }
    return state.selectionRootNode;
}

} // namespace drawabletext
