#include "themeimage.h"

#include <QImageReader>

namespace {

constexpr int longestSide = 400;
constexpr int fewestColors = 2;
constexpr int mostColors = 256;

} // namespace

QImage readThemeImage(const QString &path)
{
    QImageReader reader;
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAutoDetectImageFormat(true);
    reader.setFileName(path);

    const QSize size = reader.size();
    if (size.isValid() && (size.width() > longestSide || size.height() > longestSide)) {
        const double ratio = double(size.height()) / size.width();
        // One side is scaled from its own length, not from 400: 800 by 600 reads as 400 by 450. The sampling
        // grids of the quantisers were tuned on these pictures, so the shape stays.
        if (ratio < 1)
            reader.setScaledSize(QSize(longestSide, int(size.height() * ratio)));
        else
            reader.setScaledSize(QSize(int(size.width() / ratio), longestSide));
    }
    return reader.read();
}

bool isValidColorCount(int colorCount)
{
    return colorCount >= fewestColors && colorCount <= mostColors;
}
