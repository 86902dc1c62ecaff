#include "viewslice.h"

#include <algorithm>

QRectF visibleSlice(const QRectF &view, const QSizeF &boundary)
{
    const double left = std::max(0.0, -view.left());
    const double top = std::max(0.0, -view.top());
    const double cropX = left + std::max(0.0, view.right() - boundary.width());
    const double cropY = top + std::max(0.0, view.bottom() - boundary.height());
    return QRectF(left, top, view.width() - cropX, view.height() - cropY);
}

QRectF texturePart(const QRectF &slice, const QSizeF &view, const QSizeF &texture)
{
    const double scaleX = texture.width() / view.width();
    const double scaleY = texture.height() / view.height();
    return QRectF(QPointF(slice.left() * scaleX, slice.top() * scaleY),
                  QPointF(slice.right() * scaleX, slice.bottom() * scaleY));
}
