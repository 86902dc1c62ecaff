#pragma once

#include "roundedimage.h"

#include <QImage>
#include <QSize>
#include <QString>

/// The worker of `RoundedImage`: the picture of `source` brought to exactly `size` by `fillMode`.
///
/// A picture of `roundedImageCache` that is at least as large comes back as it is, whatever its fill mode.
/// With `cache` set, what was loaded goes there, a failure (a null picture) included.
[[nodiscard]] QImage loadRoundedImage(const QString &source, const QSize &size,
                                      RoundedImage::FillMode fillMode, bool cache);
