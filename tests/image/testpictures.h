#pragma once

#include <QByteArray>
#include <QDir>
#include <QImage>
#include <QString>
#include <QTemporaryDir>

/// Pictures and picture files for the tests of the image items.
namespace testpictures {

/// A picture of which no two neighbouring pixels are alike, smooth enough to be scaled. Fully opaque unless
/// `alpha` is set; then the alpha falls from left to right.
[[nodiscard]] QImage smooth(const QSize &size, bool alpha = false);

/// Four quadrants, from the top left clockwise: red, green, blue, yellow.
[[nodiscard]] QImage quadrants(const QSize &size);

/// The start of a PNG file that claims to hold a picture of `size`, and the beginning of its data.
[[nodiscard]] QByteArray pngHeader(const QSize &size);

/// A JPEG file with `image` in which the camera says how it was held: `orientation` is 1 to 8.
[[nodiscard]] QByteArray orientedJpeg(const QImage &image, int orientation);

/// `image` as a file in memory.
[[nodiscard]] QByteArray encoded(const QImage &image, const char *format, int quality = -1);

/// A folder of picture files that goes away with the test. Its path holds a ":", so that every item takes it
/// for a path and not for picture data.
class Folder
{
public:
    /// Writes a file and returns its path.
    QString add(const QString &name, const QByteArray &content);
    QString add(const QString &name, const QImage &image, const char *format = "png", int quality = -1);

    [[nodiscard]] QString path(const QString &name) const;

private:
    QTemporaryDir folder{QDir::tempPath() + QStringLiteral("/component:XXXXXX")};
};

/// How far two pictures of the same size differ in any channel of any pixel; 256 when the sizes differ.
[[nodiscard]] int greatestDifference(const QImage &a, const QImage &b);

} // namespace testpictures
