#include "bandgeometry.h"

#include "framehittest.h"

#include <algorithm>

namespace bandgeometry {
namespace {

QRect grown(const QRect &rect, int by, QSize available)
{
    QRect result = rect;
    if (rect.height() < available.height())
        result.adjust(0, -by, 0, by);
    if (rect.width() < available.width())
        result.adjust(-by, 0, by, 0);
    return result;
}

} // namespace

QRect withoutShadow(const QRect &window, int shadowWidth, QSize available)
{
    return grown(window, -shadowWidth, available);
}

QRect withShadow(const QRect &visible, int shadowWidth, QSize available)
{
    return grown(visible, shadowWidth, available);
}

QRect moved(const QRect &start, int edgeKind, QPoint press, QPoint now, QSize minimum)
{
    using namespace framehittest;

    const int left = std::min(now.x(), start.right() - minimum.width()) - press.x();
    const int top = std::min(now.y(), start.bottom() - minimum.height()) - press.y();
    const int right = now.x() - press.x();
    const int bottom = now.y() - press.y();

    switch (edgeKind) {
    case HitLeft:
        return start.adjusted(left, 0, 0, 0);
    case HitRight:
        return start.adjusted(0, 0, right, 0);
    case HitTop:
        return start.adjusted(0, top, 0, 0);
    case HitTopLeft:
        return start.adjusted(left, top, 0, 0);
    case HitTopRight:
        return start.adjusted(0, top, right, 0);
    case HitBottom:
        return start.adjusted(0, 0, 0, bottom);
    case HitBottomLeft:
        return start.adjusted(left, 0, 0, bottom);
    case HitBottomRight:
        return start.adjusted(0, 0, right, bottom);
    default:
        return start;
    }
}

} // namespace bandgeometry
