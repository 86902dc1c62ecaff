#pragma once

#include <QColor>
#include <QImage>
#include <QList>

/// The palettes' rules once more, in their slow and literal form, to hold the module's own against.
namespace reference {

/// The picture as both palettes read it; null when it can't be read.
[[nodiscard]] QImage readPicture(const QString &path);

[[nodiscard]] QList<QColor> mmcqPalette(const QImage &image, int colorCount);
[[nodiscard]] QList<QColor> cubePalette(const QImage &image, int colorCount);

} // namespace reference
