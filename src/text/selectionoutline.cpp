#include "selectionoutline.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace drawabletext {
namespace {

constexpr int arcStep = 5;   // degrees
constexpr int arcSweep = 90; // degrees
constexpr double pi = 3.141592653589793;

// Start angles of the corners of a rectangle.
constexpr int topLeftAngle = 180;
constexpr int topRightAngle = 270;
constexpr int bottomRightAngle = 360;
constexpr int bottomLeftAngle = 450;

/// Rounds and cuts `rect`, and adds it to the group unless it is empty.
void addToGroup(QVector<QRectF> &group, QRectF &rect, double rightLimit)
{
    rect.setWidth(std::ceil(rect.width()));
    if (!(rect.width() > 0.0))
        return;
    if (rect.right() > rightLimit)
        rect.setRight(rightLimit);
    group.append(rect);
}

using UnitCircle = std::array<QPointF, 360 / arcStep>;

/// Computed once: a selection of many lines has hundreds of arcs, and is outlined anew with each step of a
/// drag.
UnitCircle makeUnitCircle()
{
    UnitCircle points;
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double angle = double(i) * arcStep * pi / 180.0;
        points[i] = {std::cos(angle), std::sin(angle)};
    }
    return points;
}

bool touch(const QRectF &a, const QRectF &b)
{
    const bool inOrder = !(a.top() > b.top());
    const QRectF &upper = inOrder ? a : b;
    const QRectF &lower = inOrder ? b : a;
    return lower.right() > upper.left() && qFuzzyCompare(upper.bottom(), lower.top());
}

/// Builds the polygons of one rectangle among its neighbours. `above` and `below` are null at the ends of the
/// group. The left side is not symmetric to the right on purpose: a selection starts inside a line only in
/// its first line, so below that all lines begin at the same edge.
class RectangleOutline
{
public:
    RectangleOutline(const QRectF &rect, const QRectF *above, const QRectF *below, double radius)
        : rect(rect)
        , above(above)
        , below(below)
        , radius(radius)
    {}

    /// Fillets first: they lie beneath the rectangle.
    void appendTo(QVector<FanPolygon> &polygons)
    {
        addTopLeft();
        addTopRight();
        addBottomRight(polygons);
        addBottomLeft(polygons);
        polygons.append(main);
    }

private:
    void addTopLeft()
    {
        if (!above || above->left() > rect.left())
            main += cornerArc(rect.left() + radius, rect.top() + radius, topLeftAngle);
        else
            main.append(rect.topLeft());
    }

    void addTopRight()
    {
        if (!above || rect.right() > above->right())
            main += cornerArc(rect.right() - radius, rect.top() + radius, topRightAngle);
        else if (above->right() > rect.right())
            main += cornerArc(rect.right() + radius, rect.top() + radius, topLeftAngle, true);
        else
            main.append(rect.topRight());
    }

    void addBottomRight(QVector<FanPolygon> &polygons)
    {
        if (!below || rect.right() > below->right()) {
            main += cornerArc(rect.right() - radius, rect.bottom() - radius, bottomRightAngle);
            return;
        }
        if (below->right() > rect.right())
            polygons.append(FanPolygon{rect.bottomRight()} +
                            cornerArc(rect.right() + radius, rect.bottom() - radius, bottomLeftAngle, true));
        main.append(rect.bottomRight());
    }

    void addBottomLeft(QVector<FanPolygon> &polygons)
    {
        if (!below) {
            main += cornerArc(rect.left() + radius, rect.bottom() - radius, bottomLeftAngle);
            return;
        }
        const auto inner = [this] {
            return cornerArc(rect.left() - radius, rect.bottom() - radius, bottomRightAngle, true);
        };
        if (!above && rect.left() > below->right()) {
            main += inner();
            return;
        }
        main.append(rect.bottomLeft());
        if (!above && !qFuzzyCompare(below->left(), rect.left()))
            polygons.append(FanPolygon{rect.bottomLeft()} + inner());
    }

    [[nodiscard]] FanPolygon cornerArc(double x, double y, int startAngle, bool reversed = false) const
    {
        return arc(QPointF(x, y), radius, startAngle, reversed);
    }

    const QRectF &rect;
    const QRectF *above;
    const QRectF *below;
    double radius;
    FanPolygon main;
};

} // namespace

FanPolygon arc(QPointF centre, double radius, int startAngle, bool reversed)
{
    static const UnitCircle circle = makeUnitCircle();
    FanPolygon points;
    points.reserve(arcSweep / arcStep);
    for (int turned = 0; turned < arcSweep; turned += arcStep) {
        const QPointF direction = circle[std::size_t((startAngle + turned) / arcStep) % circle.size()];
        points.append(centre + direction * radius);
    }
    if (reversed)
        std::reverse(points.begin(), points.end());
    return points;
}

FanPolygon roundedRectangle(const QRectF &rect, double radius)
{
    return arc({rect.left() + radius, rect.top() + radius}, radius, topLeftAngle) +
           arc({rect.right() - radius, rect.top() + radius}, radius, topRightAngle) +
           arc({rect.right() - radius, rect.bottom() - radius}, radius, bottomRightAngle) +
           arc({rect.left() + radius, rect.bottom() - radius}, radius, bottomLeftAngle);
}

QVector<QVector<QRectF>> groupSelectionRects(QVector<QRectF> &rects, double rightLimit)
{
    QVector<QVector<QRectF>> groups;
    for (int i = 0; i < rects.size(); ++i) {
        if (i == 0 || !touch(rects.at(i - 1), rects.at(i)))
            groups.append(QVector<QRectF>());
        addToGroup(groups.last(), rects[i], rightLimit);
    }
    return groups;
}

QVector<FanPolygon> outlineGroup(const QVector<QRectF> &group, double radius)
{
    if (group.size() == 1)
        return {roundedRectangle(group.constFirst(), radius)};
    QVector<FanPolygon> polygons;
    for (int i = 0; i < group.size(); ++i) {
        const QRectF *above = i > 0 ? &group.at(i - 1) : nullptr;
        const QRectF *below = i + 1 < group.size() ? &group.at(i + 1) : nullptr;
        RectangleOutline(group.at(i), above, below, radius).appendTo(polygons);
    }
    return polygons;
}

} // namespace drawabletext
