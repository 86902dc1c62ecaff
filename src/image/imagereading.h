#pragma once

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include <functional>

/// Largest picture that is decoded or made, in bytes of its pixels: 16,384 by 16,384 at 32 bits, the largest
/// texture of common graphics hardware. A file of a few bytes can claim far more, and must not get it.
constexpr qint64 maximumPictureBytes = 1'073'741'824;

/// Whether a picture of `size` with `bytesPerPixel` keeps to `maximumPictureBytes`. False for an empty size.
[[nodiscard]] bool isWithinPictureLimit(const QSize &size, int bytesPerPixel = 4);

/// Whether the picture that the file or resource `path` claims to hold keeps to the limit. True also for
/// files that hold none.
[[nodiscard]] bool isFileWithinPictureLimit(const QString &path);

/// Reads the picture in the file or resource `source`, by its content whatever its name, turned as the file
/// says. Null when it can't be read or is too large. No URL is understood.
[[nodiscard]] QImage readImage(const QString &source);

/// The picture in `data`, in any format that Qt reads. Null as above. Orientations are not applied.
[[nodiscard]] QImage imageFromData(const QByteArray &data);

/// A picture that a reader may have reduced on the way.
struct DecodedImage
{
    QImage image;
    QSize fullSize; ///< what `image` would measure without a reduction
};

/// As `readImage()`, for a caller who scales the picture to `targetSize(full size)` afterwards. A picture of
/// a format that decodes much faster at a fraction of its size is read at the least fraction that keeps twice
/// the target in both directions, which leaves the smoothing to the scaling. An empty target asks for the
/// full size.
[[nodiscard]] DecodedImage readImageFor(const QString &source,
                                        const std::function<QSize(const QSize &)> &targetSize);

/// `decoded.image` smoothly scaled to exactly `size`.
[[nodiscard]] QImage scaledSmoothly(const DecodedImage &decoded, const QSize &size);

/// The size that `QImage::scaled(bounds, mode)` gives a picture of `size`.
[[nodiscard]] QSize sizeScaledInto(const QSize &size, const QSize &bounds, Qt::AspectRatioMode mode);

/// Whether a picture of `size` exceeds `limit` in one direction or both.
[[nodiscard]] bool isLarger(const QSize &size, const QSize &limit);

/// `size`, or what it becomes when it is scaled down into `limit` because it exceeds that.
[[nodiscard]] QSize sizeWithin(const QSize &size, const QSize &limit);

/// The size that `QImage::scaledToWidth(width, Qt::SmoothTransformation)` gives a picture of `size`.
[[nodiscard]] QSize sizeScaledToWidth(const QSize &size, int width);
