#include "shaderreference.h"

#include <algorithm>
#include <cmath>

namespace shaderreference {

namespace {

struct Texel
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;
};

Texel operator+(const Texel &a, const Texel &b)
{
    return {a.red + b.red, a.green + b.green, a.blue + b.blue, a.alpha + b.alpha};
}

Texel operator*(const Texel &a, double factor)
{
    return {a.red * factor, a.green * factor, a.blue * factor, a.alpha * factor};
}

QImage uploaded(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

Texel texelAt(const QImage &image, int x, int y)
{
    const int column = std::clamp(x, 0, image.width() - 1);
    const int row = std::clamp(y, 0, image.height() - 1);
    const QRgb pixel = reinterpret_cast<const QRgb *>(image.constScanLine(row))[column];
    return {qRed(pixel) / 255.0, qGreen(pixel) / 255.0, qBlue(pixel) / 255.0, qAlpha(pixel) / 255.0};
}

/// Linear filtering, clamped to the edge.
Texel sample(const QImage &image, double x, double y)
{
    const double u = x * image.width() - 0.5;
    const double v = y * image.height() - 0.5;
    const int left = int(std::floor(u));
    const int top = int(std::floor(v));
    const double right = u - left;
    const double bottom = v - top;
    return (texelAt(image, left, top) * (1 - right) + texelAt(image, left + 1, top) * right) * (1 - bottom) +
           (texelAt(image, left, top + 1) * (1 - right) + texelAt(image, left + 1, top + 1) * right) * bottom;
}

double smoothstep(double from, double to, double value)
{
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double distanceToRoundBox(double x, double y, double halfWidth, double halfHeight, double radius)
{
    const double dx = std::max(std::abs(x) - halfWidth + radius, 0.0);
    const double dy = std::max(std::abs(y) - halfHeight + radius, 0.0);
    return std::hypot(dx, dy) - radius;
}

/// The radius of the quadrant of (x, y); none on the centre lines.
double cornerAt(const Corners &corners, double x, double y)
{
    if (x < 0.5 && y < 0.5)
        return corners.topLeft;
    if (x > 0.5 && y < 0.5)
        return corners.topRight;
    if (x < 0.5 && y > 0.5)
        return corners.bottomLeft;
    return x > 0.5 && y > 0.5 ? corners.bottomRight : 0.0;
}

QRgb over(const Texel &texel, const QColor &background)
{
    const auto channel = [&texel](double value, double behind) {
        return int(std::lround(255 * std::clamp(value + behind * (1 - texel.alpha), 0.0, 1.0)));
    };
    return qRgb(channel(texel.red, background.redF()), channel(texel.green, background.greenF()),
                channel(texel.blue, background.blueF()));
}

Texel layerAt(const Layer &layer, const QImage &texture, double x, double y)
{
    const QRectF &display = layer.display;
    if (x < display.left() || y < display.top() || x > display.left() + display.width() ||
        y > display.top() + display.height())
        return {};
    const QRectF &source = layer.source;
    if (source.x() > 0.01 || source.y() > 0.01)
        return sample(texture, x * source.width() + source.x(), y * source.height() + source.y());
    return sample(texture, (x - display.x()) / display.width(), (y - display.y()) / display.height());
}

} // namespace

QImage rounded(const QImage &image, const QSize &item, double common, const Corners &corners,
               const QColor &background)
{
    const QImage texture = uploaded(image);
    QImage result(item, QImage::Format_RGB32);
    for (int row = 0; row < item.height(); ++row) {
        for (int column = 0; column < item.width(); ++column) {
            const double x = (column + 0.5) / item.width();
            const double y = (row + 0.5) / item.height();
            const double radius = common < 0.001 ? cornerAt(corners, x, y) : common;
            double shown = 1;
            if (radius >= 0.001)
                shown -= smoothstep(-0.01, 0.01, distanceToRoundBox(x - 0.5, y - 0.5, 0.5, 0.5, radius));
            result.setPixel(column, row, over(sample(texture, x, y) * shown, background));
        }
    }
    return result;
}

QImage blended(const Layer &source, const Layer &back, const QSize &item, const Corners &corners,
               const QColor &background)
{
    const QImage sourceTexture = uploaded(source.image);
    const QImage backTexture = uploaded(back.image);
    QImage result(item, QImage::Format_RGB32);
    for (int row = 0; row < item.height(); ++row) {
        for (int column = 0; column < item.width(); ++column) {
            const double x = (column + 0.5) / item.width();
            const double y = (row + 0.5) / item.height();
            const Texel front = layerAt(source, sourceTexture, x, y);
            const Texel behind = layerAt(back, backTexture, x, y);
            Texel pixel = behind * (1 - front.alpha) + front * front.alpha;
            pixel.alpha = std::max(front.alpha, behind.alpha);
            const double radius = cornerAt(corners, x, y);
            double shown = 1;
            if (radius >= 0.001) {
                const double w = item.width();
                const double h = item.height();
                shown -=
                    smoothstep(-1, 1, distanceToRoundBox((x - 0.5) * w, (y - 0.5) * h, w / 2, h / 2, radius));
            }
            result.setPixel(column, row, over(pixel * shown, background));
        }
    }
    return result;
}

Layer fitted(const QImage &image, const QSizeF &item)
{
    const double scale = std::min(item.width() / image.width(), item.height() / image.height());
    const double width = image.width() * scale / item.width();
    const double height = image.height() * scale / item.height();
    return {image, QRectF((1 - width) / 2, (1 - height) / 2, width, height), QRectF(0, 0, 1, 1)};
}

Layer cropped(const QImage &image, const QSizeF &item)
{
    const double scale = std::max(item.width() / image.width(), item.height() / image.height());
    const double width = item.width() / scale / image.width();
    const double height = item.height() / scale / image.height();
    return {image, QRectF(0, 0, 1, 1), QRectF((1 - width) / 2, (1 - height) / 2, width, height)};
}

} // namespace shaderreference
