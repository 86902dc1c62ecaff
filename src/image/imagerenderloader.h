#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// The worker of an `ImageRender`'s foreground: the picture of `source`, scaled down to twice `size` where it
/// is larger, so that the foreground stays sharp when the item grows. An empty `size` keeps it whole. The
/// last argument is the item's `cache`; foregrounds are not cached.
[[nodiscard]] QImage loadRenderSource(const QString &source, const QSize &size, bool cache);

/// The worker of an `ImageRender`'s background. A `source` with a ":" is a file or resource, any other is
/// base64 picture data.
///
/// With a `blurRadius` above 1 the result is a blurred thumbnail, at most 32 wide, whatever `size`. Without
/// it a file's picture is scaled down into `size`, and base64 data comes as it is. What took work is kept in
/// `renderImageCache`, and an entry answers every later request, whatever its `size` and `blurRadius`.
[[nodiscard]] QImage loadRenderBackground(const QString &source, const QSize &size, double blurRadius);
