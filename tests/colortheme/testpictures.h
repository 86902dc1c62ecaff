#pragma once

#include <QImage>
#include <QVector>

/// Pictures that the tests of the palettes draw for themselves; the same in every run.
namespace testpictures {

struct Picture
{
    const char *name;
    QImage image;
};

/// Noise, gradients, flat colours, single pixels, strips; RGB32.
[[nodiscard]] QVector<Picture> figures();

/// Pictures with the light, the blur and the grain of photographs; RGB32.
[[nodiscard]] QVector<Picture> photographs();

/// `image` in `format`: with transparency that grows to the right where there is an alpha channel, with
/// values between the 8-bit ones where there are more bits.
[[nodiscard]] QImage inFormat(const QImage &image, QImage::Format format);

[[nodiscard]] QImage flat(const QColor &color, int width, int height);
[[nodiscard]] QImage noise(int width, int height, quint32 seed);

} // namespace testpictures
