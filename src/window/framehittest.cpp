#include "framehittest.h"

#include <algorithm>

namespace framehittest {
namespace {

bool anyContains(const QVector<QRect> &rects, QPoint point)
{
    return std::any_of(rects.cbegin(), rects.cend(),
                       [point](const QRect &rect) { return rect.contains(point); });
}

} // namespace

Qt::CursorShape cursorShapeOf(int edgeKind)
{
    switch (edgeKind) {
    case HitLeft:
    case HitRight:
        return Qt::SizeHorCursor;
    case HitTop:
    case HitBottom:
        return Qt::SizeVerCursor;
    case HitTopLeft:
    case HitBottomRight:
        return Qt::SizeFDiagCursor;
    case HitTopRight:
    case HitBottomLeft:
        return Qt::SizeBDiagCursor;
    default:
        return Qt::ArrowCursor;
    }
}

HitKind edgeAt(const ResizeBand &band, QPoint point)
{
    const int half = band.borderWidth / 2;
    const int shadow = int(band.shadowWidth * band.devicePixelRatio);
    const int visibleLeft = band.window.left + shadow;
    const int visibleTop = band.window.top + shadow;
    const int visibleRight = band.window.right - shadow;
    const int visibleBottom = band.window.bottom - shadow;
    const auto near = [half](int value, int border) {
        return border - half <= value && value < border + half;
    };

    const int x = point.x();
    const int y = point.y();
    // The last column counts along x, the last row along y does not.
    const bool besideHeight = visibleTop <= y && y < visibleBottom;
    const bool besideWidth = visibleLeft <= x && x <= visibleRight;
    const bool left = near(x, visibleLeft) && besideHeight;
    const bool right = near(x, visibleRight) && besideHeight;
    const bool top = near(y, visibleTop) && besideWidth;
    const bool bottom = near(y, visibleBottom) && besideWidth;

    HitKind kind = HitClient;
    if (band.canResizeWidth) {
        if (left)
            kind = HitLeft;
        if (right)
            kind = HitRight;
    }
    if (band.canResizeHeight) {
        if (bottom)
            kind = HitBottom;
        if (top)
            kind = HitTop;
    }
    if (band.canResizeWidth && band.canResizeHeight) {
        if (left && bottom)
            kind = HitBottomLeft;
        if (right && bottom)
            kind = HitBottomRight;
        if (top && left)
            kind = HitTopLeft;
        if (top && right)
            kind = HitTopRight;
    }
    return kind;
}

QPoint toLogicalPoint(QPoint native, double windowRatio, QPoint screenOrigin, double screenRatio)
{
    const bool scaled = screenRatio != 1.0;
    const int offsetX = scaled ? int(screenOrigin.x() / screenRatio) : 0;
    const int offsetY = scaled ? int(screenOrigin.y() / screenRatio) : 0;
    return {int(native.x() / windowRatio + offsetX), int(native.y() / windowRatio + offsetY)};
}

std::optional<HitKind> areaAt(const TitleAreas &areas, QPoint scenePoint)
{
    if (anyContains(areas.excluded, scenePoint))
        return HitClient;
    if (anyContains(areas.extra, scenePoint))
        return HitCaption;
    if (areas.title && areas.title->contains(scenePoint))
        return HitCaption;
    return std::nullopt;
}

} // namespace framehittest
