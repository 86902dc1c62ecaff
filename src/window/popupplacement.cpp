#include "popupplacement.h"

#include <algorithm>

namespace popupplacement {
namespace {

constexpr double bottomLeftGap = 16.0;

/// The edges of the work area as sums: one past what QRect::right() and QRect::bottom() say.
struct Area
{
    explicit Area(const QRect &rect)
        : left(rect.x())
        , top(rect.y())
        , right(rect.x() + rect.width())
        , bottom(rect.y() + rect.height())
        , width(rect.width())
    {}

    int left;
    int top;
    int right;
    int bottom;
    int width;
};

int horizontalFit(const Anchor &anchor, int width, const Area &area)
{
    const int x = anchor.position.x();
    return x + width <= area.right ? std::max(x, area.left) : area.right - width;
}

int verticalFit(const Anchor &anchor, int height, const Area &area)
{
    const int y = anchor.position.y();
    return y + height <= area.bottom ? std::max(y, area.top) : area.bottom - height;
}

} // namespace

Place atPointer(QPoint pointer, QSize window, const QRect &available)
{
    const Area area(available);
    const int width = window.width();
    const int height = window.height();
    Place place;
    place.y = pointer.y() + height <= area.bottom ? pointer.y() : std::max(pointer.y() - height, area.top);
    place.x = pointer.x() + width <= area.right ? std::max(pointer.x(), area.left) : area.right - width;
    return place;
}

std::optional<Place> atAnchor(const QString &edge, const Anchor &anchor, QSize window, const QRect &available)
{
    const Area area(available);
    const int width = window.width();
    const int height = window.height();
    const int x = anchor.position.x();
    const int y = anchor.position.y();
    const double below = y + anchor.height;
    const double beside = x + anchor.width;

    Place place;
    if (edge == QLatin1String("bottom")) {
        place.y = below + height <= area.bottom ? int(below) : std::max(y - height, area.top);
        place.x = horizontalFit(anchor, width, area);
    } else if (edge == QLatin1String("top")) {
        // Tested against 0 and not against the work area, as clients with a single screen expect.
        place.y = y - height >= 0 ? y - height : std::min(area.bottom - height, int(below));
        place.x = horizontalFit(anchor, width, area);
    } else if (edge == QLatin1String("left")) {
        place.verticalFirst = false;
        place.x = x - width >= 0 ? x - width : area.left + std::min(int(beside), area.width - width);
        place.y = verticalFit(anchor, height, area);
    } else if (edge == QLatin1String("right")) {
        place.verticalFirst = false;
        place.x = beside + width <= area.right ? int(beside) : std::max(x - width, area.left);
        place.y = verticalFit(anchor, height, area);
    } else if (edge == QLatin1String("bottomLeft")) {
        // The gap is not part of the test, so a tight fit reaches below the work area by it.
        place.y = below + height <= area.bottom ? int(below + bottomLeftGap) : std::max(y - height, area.top);
        place.x =
            x + width > area.right ? area.right - width : int(std::max(x, area.left) - width + anchor.width);
    } else {
        return std::nullopt;
    }
    return place;
}

} // namespace popupplacement
