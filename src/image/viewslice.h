#pragma once

#include <QRectF>
#include <QSizeF>

/// The visible slice of a picture that is shown at `view`, in the coordinates of a boundary of that size
/// whose top left corner is (0, 0). The slice is measured from the corner of the scaled picture; it has no or
/// negative size when the picture lies outside.
[[nodiscard]] QRectF visibleSlice(const QRectF &view, const QSizeF &boundary);

/// The part of a texture of `texture` pixels that shows in `slice` of a picture scaled to `view`.
[[nodiscard]] QRectF texturePart(const QRectF &slice, const QSizeF &view, const QSizeF &texture);
