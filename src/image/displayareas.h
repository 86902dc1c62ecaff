#pragma once

#include <QRectF>
#include <QSizeF>

/// How a picture lies on an item, both measured from 0 to 1.
struct DisplayAreas
{
    QRectF display{0, 0, 1, 1}; ///< part of the item that the picture covers
    QRectF source{0, 0, 1, 1};  ///< part of the picture that is seen
};

/// The whole picture, as large as fits into the item, in its middle.
[[nodiscard]] DisplayAreas fittedAreas(const QSizeF &item, const QSizeF &picture);

/// The whole item, covered by the middle of the picture.
[[nodiscard]] DisplayAreas croppedAreas(const QSizeF &item, const QSizeF &picture);
