#pragma once

#include <QPixmap>

/// `pixmap` blurred by `radius`, at its own size; what the blur spreads beyond its edges is cut off. Null for
/// a null pixmap. For the GUI thread, or one that it waits for.
[[nodiscard]] QPixmap blurPixmap(const QPixmap &pixmap, double radius);
