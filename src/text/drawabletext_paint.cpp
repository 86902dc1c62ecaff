// The item's scene graph: text, emoji picture and, beneath them, the outline of the selection.

#include "drawabletext.h"

#include "selectionoutline.h"

#include <QSGFlatColorMaterial>
#include <QSGGeometryNode>

#include <private/qquicktextnode_p.h>
#include <private/qtextengine_p.h>

namespace {

/// What every OpenGL driver of today takes, in pixels.
constexpr int tallestTexture = 4096;

/// The text node colours selected glyphs only together with a valid background. The visible one is drawn
/// beneath by the outline, so this one is as close to nothing as a valid colour gets.
const QColor &hiddenSelectionColor()
{
    static const QColor color(0, 0, 0, 1);
    return color;
}

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

QSGGeometryNode *createPolygonNode(const drawabletext::FanPolygon &polygon, const QColor &color)
{
    QSGGeometryNode *node = createFanNode(polygon.size(), color);
    QSGGeometry::Point2D *vertex = node->geometry()->vertexDataAsPoint2D();
    for (const QPointF &point : polygon)
        (vertex++)->set(float(point.x()), float(point.y()));
    return node;
}

/// A node of one transparent vertex: it draws nothing and holds the polygons.
QSGGeometryNode *createSelectionRoot()
{
    QSGGeometryNode *node = createFanNode(1, Qt::transparent);
    node->geometry()->vertexDataAsPoint2D()->set(0.0F, 0.0F);
    return node;
}

/// The selection's nodes, or null when no line is selected. Leaves the rectangles in the state as they are
/// drawn.
QSGGeometryNode *buildSelectionNodes(DrawableTextPrivate &state)
{
    if (state.selectionRects.isEmpty())
        return nullptr;
    if (!state.selectionRootNode)
        state.selectionRootNode = createSelectionRoot();
    while (QSGNode *child = state.selectionRootNode->firstChild())
        delete child;
    const double rightLimit = state.textAreaWidth() + state.effectiveRightPadding();
    const auto groups = drawabletext::groupSelectionRects(state.selectionRects, rightLimit);
    for (const QVector<QRectF> &group : groups) {
        for (const auto &polygon : drawabletext::outlineGroup(group, state.selectionCornerRadius))
            state.selectionRootNode->appendChildNode(createPolygonNode(polygon, state.selectionColor));
    }
    return state.selectionRootNode;
}

/// Lays `picture` over `rect`. The picture of a very long message is taller than textures get, and would be
/// shrunk to fit and blurred: it goes in slices.
void addPicture(QQuickTextNode *node, const QRectF &rect, const QImage &picture)
{
    if (picture.height() <= tallestTexture) {
        node->addImage(rect, picture);
        return;
    }
    const double scale = rect.height() / picture.height();
    for (int y = 0; y < picture.height(); y += tallestTexture) {
        const QImage slice = picture.copy(0, y, picture.width(), qMin(tallestTexture, picture.height() - y));
        node->addImage(QRectF(rect.x(), rect.y() + y * scale, rect.width(), slice.height() * scale), slice);
    }
}

} // namespace

// Runs on the render thread, with the GUI thread waiting.
QSGNode *DrawableText::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    auto *node = static_cast<QQuickTextNode *>(oldNode);
    if (node)
        node->deleteContent();
    else
        node = new QQuickTextNode(this);
    // Gone with the content, or with an older text node that the scene graph has thrown away.
    d->selectionRootNode = nullptr;

    // A state that is still being prepared is not painted.
    if (d->layouts.size() != d->selectionRanges.size())
        return node;

    if (QSGGeometryNode *selection = buildSelectionNodes(*d)) {
        if (node->childCount() < 1)
            node->appendChildNode(selection);
    }

    for (int i = 0; i < d->layouts.size(); ++i) {
        QTextLayout *layout = d->layouts.at(i);
        if (!layout)
            continue;
        const SelectionRange range = d->selectionRanges.at(i);
        // Font engines belong to the thread that made them, and this layout has seen the GUI thread and
        // perhaps a worker. For the same reason none of ours is left behind for the next hit test.
        layout->engine()->resetFontEngineCache();
        node->addTextLayout(layout->position(), layout, d->color, QQuickText::Normal, QColor(), QColor(),
                            hiddenSelectionColor(), d->selectedTextColor, range.from, range.to, 0, -1);
        layout->engine()->resetFontEngineCache();
    }

    if (d->hasEmoji && !d->emojiImage.isNull() && !boundingRect().isEmpty())
        addPicture(node, boundingRect(), d->emojiImage);
    node->markDirty(QSGNode::DirtyGeometry);
    return node;
}
