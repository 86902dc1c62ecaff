#pragma once

#include <QImage>
#include <QString>

/// Reads the picture at `path` for a palette: at about 400 pixels a side where it is larger, turned as its
/// file says, by its content and not its name. The larger pictures are stretched on the way, and the palettes
/// rest on that. Null when it can't be read, or would take more than a gigabyte to decode.
[[nodiscard]] QImage readThemeImage(const QString &path);

/// Whether a palette of that many colours can be asked for: 2 to 256.
[[nodiscard]] bool isValidColorCount(int colorCount);
