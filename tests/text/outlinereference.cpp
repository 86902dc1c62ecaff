#include "outlinereference.h"

#include <algorithm>
#include <cmath>

namespace outline {
namespace {

using Group = QVector<QRectF>;

bool isSame(double a, double b)
{
    return qAbs(a - b) * 1e12 <= qMin(qAbs(a), qAbs(b));
}

/// A quarter of a circle in steps of five degrees; the last step belongs to whatever follows.
Polygon quarter(double x, double y, double radius, int degrees)
{
    Polygon points;
    for (int step = 0; step < 18; ++step) {
        const double angle = (degrees + 5 * step) * 3.141592653589793 / 180.0;
        points.append(QPointF(x + radius * std::cos(angle), y + radius * std::sin(angle)));
    }
    return points;
}

Polygon backwards(Polygon points)
{
    std::reverse(points.begin(), points.end());
    return points;
}

QVector<Group> groups(QVector<QRectF> rects, double rightLimit)
{
    QVector<Group> result;
    for (int i = 0; i < rects.size(); ++i) {
        bool belongs = false;
        if (i > 0) {
            // The line before is already rounded and cut, this one is not.
            QRectF upper = rects.at(i - 1);
            QRectF lower = rects.at(i);
            if (upper.top() > lower.top())
                std::swap(upper, lower);
            belongs = lower.right() > upper.left() && isSame(upper.bottom(), lower.top());
        }
        if (!belongs)
            result.append(Group());
        QRectF &rect = rects[i];
        rect.setWidth(std::ceil(rect.width()));
        if (rect.width() > 0) {
            if (rect.right() > rightLimit)
                rect.setRight(rightLimit);
            result.last().append(rect);
        }
    }
    return result;
}

void append(QVector<Polygon> &result, const Group &group, double radius)
{
    const double R = radius;
    for (int k = 0; k < group.size(); ++k) {
        const QRectF &r = group.at(k);
        const QRectF *above = k > 0 ? &group.at(k - 1) : nullptr;
        const QRectF *below = k + 1 < group.size() ? &group.at(k + 1) : nullptr;
        Polygon main;

        if (!above || above->left() > r.left())
            main += quarter(r.left() + R, r.top() + R, R, 180);
        else
            main += r.topLeft();

        if (!above || r.right() > above->right())
            main += quarter(r.right() - R, r.top() + R, R, 270);
        else if (above->right() > r.right())
            main += backwards(quarter(r.right() + R, r.top() + R, R, 180));
        else
            main += r.topRight();

        if (!below || r.right() > below->right()) {
            main += quarter(r.right() - R, r.bottom() - R, R, 360);
        } else {
            main += r.bottomRight();
            if (below->right() > r.right())
                result.append(Polygon{r.bottomRight()} +
                              backwards(quarter(r.right() + R, r.bottom() - R, R, 450)));
        }

        if (!below) {
            main += quarter(r.left() + R, r.bottom() - R, R, 450);
        } else if (above) {
            main += r.bottomLeft();
        } else if (r.left() > below->right()) {
            main += backwards(quarter(r.left() - R, r.bottom() - R, R, 360));
        } else {
            main += r.bottomLeft();
            if (!isSame(below->left(), r.left()))
                result.append(Polygon{r.bottomLeft()} +
                              backwards(quarter(r.left() - R, r.bottom() - R, R, 360)));
        }
        result.append(main);
    }
}

double side(QPointF a, QPointF b, QPointF p)
{
    return (b.x() - a.x()) * (p.y() - a.y()) - (b.y() - a.y()) * (p.x() - a.x());
}

bool isInside(QPointF a, QPointF b, QPointF c, QPointF p)
{
    const double first = side(a, b, p);
    const double second = side(b, c, p);
    const double third = side(c, a, p);
    const bool hasNegative = first < 0 || second < 0 || third < 0;
    const bool hasPositive = first > 0 || second > 0 || third > 0;
    return !(hasNegative && hasPositive) && (hasNegative || hasPositive);
}

} // namespace

QVector<Polygon> polygons(QVector<QRectF> rects, double radius, double rightLimit)
{
    QVector<Polygon> result;
    const QVector<Group> all = groups(rects, rightLimit);
    for (const Group &group : all)
        append(result, group, radius);
    return result;
}

void fillFans(QImage &picture, const QVector<Polygon> &fans, QPointF offset, QRgb color)
{
    for (const Polygon &fan : fans) {
        for (int i = 2; i < fan.size(); ++i) {
            const Polygon triangle{fan.at(0) + offset, fan.at(i - 1) + offset, fan.at(i) + offset};
            double left = picture.width();
            double top = picture.height();
            double right = 0;
            double bottom = 0;
            for (const QPointF corner : triangle) {
                left = qMin(left, corner.x());
                top = qMin(top, corner.y());
                right = qMax(right, corner.x());
                bottom = qMax(bottom, corner.y());
            }
            for (int y = qMax(0, int(top)); y < qMin<double>(picture.height(), bottom); ++y) {
                for (int x = qMax(0, int(left)); x < qMin<double>(picture.width(), right); ++x) {
                    if (isInside(triangle.at(0), triangle.at(1), triangle.at(2), QPointF(x + 0.5, y + 0.5)))
                        picture.setPixel(x, y, color);
                }
            }
        }
    }
}

} // namespace outline
