#pragma once

#include <QImage>
#include <QSize>
#include <QString>

/// The worker of an `ImagePreviewer`'s picture: the one of `source`, scaled down into `size` where it is
/// larger. An empty `size` keeps it whole.
[[nodiscard]] QImage loadPreviewSource(const QString &source, const QSize &size);

/// The worker of an `ImagePreviewer`'s background. A `source` with a ":" is a file or resource, read as
/// `loadPreviewSource()` does; any other is base64 picture data. A `blurRadius` above 1 blurs a file's
/// picture at its own size, and inline data at 50 pixels of its shorter side.
[[nodiscard]] QImage loadPreviewBackground(const QString &source, const QSize &size, double blurRadius);
