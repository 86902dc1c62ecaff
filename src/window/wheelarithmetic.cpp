#include "wheelarithmetic.h"

#include <algorithm>
#include <cstdlib>

namespace wheel {
namespace {

constexpr double eighthsPerDegree = 8.0;
constexpr int pixelsPerDegree = 3;

int distanceOfAngle(int angle)
{
    return qRound(angle / eighthsPerDegree) * pixelsPerDegree;
}

} // namespace

QPoint distanceOfAngle(QPoint angleDelta)
{
    return {distanceOfAngle(angleDelta.x()), distanceOfAngle(angleDelta.y())};
}

QPoint alongOrientation(QPoint distance, Qt::Orientation orientation)
{
    const int dx = std::abs(distance.x());
    const int dy = std::abs(distance.y());
    const int signX = distance.x() < 0 ? -1 : 1;
    const int signY = distance.y() < 0 ? -1 : 1;

    const bool vertical = orientation == Qt::Vertical;
    const int x = vertical ? std::min(dx, dy) : std::max(dx, dy);
    const int y = vertical ? std::max(dx, dy) : std::min(dx, dy);
    return {x * (x == dx ? signX : signY), y * (y == dy ? signY : signX)};
}

} // namespace wheel
