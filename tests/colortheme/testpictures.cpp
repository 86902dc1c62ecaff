#include "testpictures.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QRandomGenerator>
#include <QRgba64>

namespace testpictures {
namespace {

/// Grain of a sensor: up to `strength` brighter or darker.
void addGrain(QImage &image, int strength, quint32 seed)
{
    QRandomGenerator random(seed);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            const auto grainy = [&](int value) {
                return qBound(0, value + int(random.bounded(2 * strength + 1)) - strength, 255);
            };
            const int red = grainy(qRed(pixel));
            const int green = grainy(qGreen(pixel));
            image.setPixel(x, y, qRgb(red, green, grainy(qBlue(pixel))));
        }
    }
}

QImage verticalGradient(const QGradientStops &stops, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    QLinearGradient gradient(0, 0, 0, height);
    gradient.setStops(stops);
    QPainter painter(&image);
    painter.fillRect(image.rect(), gradient);
    return image;
}

void glow(QPainter &painter, QPointF center, double radius, const QColor &color)
{
    QRadialGradient gradient(center, radius);
    gradient.setColorAt(0, color);
    gradient.setColorAt(1, QColor(color.red(), color.green(), color.blue(), 0));
    painter.fillRect(QRectF(center.x() - radius, center.y() - radius, 2 * radius, 2 * radius), gradient);
}

QImage beach()
{
    QImage image = verticalGradient({{0, QColor(86, 150, 214)},
                                     {0.45, QColor(186, 216, 238)},
                                     {0.46, QColor(24, 92, 128)},
                                     {0.65, QColor(92, 170, 178)},
                                     {0.68, QColor(226, 204, 160)},
                                     {1, QColor(196, 168, 120)}},
                                    160, 120);
    QPainter painter(&image);
    glow(painter, QPointF(120, 18), 40, QColor(255, 250, 220));
    painter.end();
    addGrain(image, 6, 11);
    return image;
}

QImage nightStreet()
{
    QImage image = verticalGradient(
        {{0, QColor(4, 6, 22)}, {0.6, QColor(28, 24, 46)}, {1, QColor(12, 10, 14)}}, 120, 160);
    QPainter painter(&image);
    QRandomGenerator random(21);
    for (int i = 0; i < 40; ++i) {
        const QPointF center(random.bounded(120), 40 + random.bounded(110));
        glow(painter, center, 3 + random.bounded(14),
             i % 3 == 0   ? QColor(255, 190, 90, 220)
             : i % 3 == 1 ? QColor(255, 90, 60, 160)
                          : QColor(150, 200, 255, 180));
    }
    painter.end();
    addGrain(image, 9, 22);
    return image;
}

QImage portrait()
{
    QImage image = verticalGradient({{0, QColor(70, 96, 74)}, {1, QColor(38, 52, 44)}}, 96, 128);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(40, 60, 130));
    painter.drawEllipse(QRectF(4, 92, 88, 80));
    painter.setBrush(QColor(60, 36, 22));
    painter.drawEllipse(QRectF(22, 14, 52, 66));
    QRadialGradient skin(QPointF(42, 48), 40);
    skin.setColorAt(0, QColor(244, 208, 182));
    skin.setColorAt(1, QColor(176, 116, 88));
    painter.setBrush(skin);
    painter.drawEllipse(QRectF(28, 26, 40, 56));
    painter.end();
    addGrain(image, 5, 31);
    return image;
}

QImage forest()
{
    QImage image = verticalGradient({{0, QColor(160, 190, 110)}, {1, QColor(30, 46, 18)}}, 150, 150);
    QPainter painter(&image);
    QRandomGenerator random(41);
    for (int i = 0; i < 500; ++i) {
        painter.fillRect(
            QRect(random.bounded(150), random.bounded(150), 1 + random.bounded(6), 1 + random.bounded(6)),
            QColor::fromHsl(70 + random.bounded(60), 90 + random.bounded(120), 20 + random.bounded(130),
                            150));
    }
    for (int i = 0; i < 9; ++i)
        painter.fillRect(QRect(random.bounded(150), 20, 3 + random.bounded(5), 130), QColor(66, 48, 34));
    painter.end();
    addGrain(image, 12, 42);
    return image;
}

QImage sunset()
{
    QImage image = verticalGradient({{0, QColor(48, 30, 84)},
                                     {0.4, QColor(206, 84, 70)},
                                     {0.55, QColor(252, 190, 90)},
                                     {0.56, QColor(70, 40, 60)},
                                     {1, QColor(10, 8, 20)}},
                                    200, 90);
    QPainter painter(&image);
    glow(painter, QPointF(100, 48), 50, QColor(255, 236, 180));
    painter.end();
    addGrain(image, 4, 51);
    return image;
}

QImage snow()
{
    QImage image = verticalGradient(
        {{0, QColor(196, 214, 236)}, {0.5, QColor(240, 244, 250)}, {1, QColor(254, 254, 255)}}, 140, 100);
    QPainter painter(&image);
    QPainterPath ridge(QPointF(0, 60));
    ridge.lineTo(50, 24);
    ridge.lineTo(90, 58);
    ridge.lineTo(140, 34);
    ridge.lineTo(140, 70);
    ridge.lineTo(0, 80);
    painter.fillPath(ridge, QColor(132, 150, 180));
    painter.end();
    addGrain(image, 3, 61);
    return image;
}

QImage screenPhotograph()
{
    QImage image = flat(QColor(250, 250, 248), 180, 130);
    QPainter painter(&image);
    painter.fillRect(0, 0, 180, 14, QColor(52, 120, 220));
    QRandomGenerator random(71);
    for (int line = 0; line < 16; ++line)
        painter.fillRect(10, 22 + 6 * line, 60 + int(random.bounded(100)), 2, QColor(60, 60, 66));
    painter.fillRect(110, 70, 60, 40, QColor(220, 60, 70));
    painter.end();
    addGrain(image, 7, 72);
    return image;
}

QImage rainbow(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixelColor(
                x, y, QColor::fromHsv(x * 359 / width, 255 - y * 255 / height, 255 - y * 128 / height));
    return image;
}

QImage twoPixels(QRgb left, QRgb right)
{
    // Samples stand at least two columns apart, so two of them need three.
    QImage image(3, 1, QImage::Format_RGB32);
    image.setPixel(0, 0, left);
    image.setPixel(1, 0, left);
    image.setPixel(2, 0, right);
    return image;
}

} // namespace

QImage flat(const QColor &color, int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QImage noise(int width, int height, quint32 seed)
{
    QRandomGenerator random(seed);
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, random.generate() | 0xff000000U);
    return image;
}

QVector<Picture> figures()
{
    return {
        {"noise", noise(90, 70, 1)},
        {"noise of odd size", noise(61, 83, 2)},
        {"tall noise", noise(12, 100, 3)},
        {"very tall noise", noise(2, 399, 4)},
        {"column", noise(1, 300, 5)},
        {"row", noise(300, 1, 6)},
        {"wide noise", noise(399, 3, 7)},
        {"rainbow", rainbow(120, 60)},
        {"greys", verticalGradient({{0, Qt::black}, {1, Qt::white}}, 40, 256)},
        {"dark to red", verticalGradient({{0, QColor(0, 0, 0)}, {1, QColor(255, 0, 0)}}, 60, 90)},
        {"light to dark", verticalGradient({{0, QColor(250, 240, 230)}, {1, QColor(20, 10, 0)}}, 60, 90)},
        {"flat white", flat(Qt::white, 20, 20)},
        {"flat black", flat(Qt::black, 20, 20)},
        {"flat grey", flat(QColor(128, 128, 128), 20, 20)},
        {"flat red", flat(Qt::red, 20, 20)},
        {"flat teal", flat(QColor(20, 120, 110), 31, 17)},
        {"white pixel", flat(Qt::white, 1, 1)},
        {"black pixel", flat(Qt::black, 1, 1)},
        {"orange pixel", flat(QColor(240, 140, 20), 1, 1)},
        {"blue pixel of no red", flat(QColor(0, 0, 200), 1, 1)},
        {"two samples, the greater one last", twoPixels(qRgb(40, 50, 60), qRgb(140, 150, 160))},
        {"two samples, the greater one first", twoPixels(qRgb(140, 150, 160), qRgb(40, 50, 60))},
    };
}

QVector<Picture> photographs()
{
    return {{"beach", beach()},
            {"night street", nightStreet()},
            {"portrait", portrait()},
            {"forest", forest()},
            {"sunset", sunset()},
            {"snow", snow()},
            {"screen", screenPhotograph()}};
}

QImage inFormat(const QImage &image, QImage::Format format)
{
    QImage wide = image.convertToFormat(QImage::Format_RGBA64);
    const bool isTransparent = QImage(1, 1, format).hasAlphaChannel();
    for (int y = 0; y < wide.height(); ++y) {
        auto *line = reinterpret_cast<QRgba64 *>(wide.scanLine(y));
        for (int x = 0; x < wide.width(); ++x) {
            // Moves the low byte of each channel and leaves the high one: what an 8-bit reader does not see.
            const auto between = [&](quint16 value) { return quint16(value ^ ((x * 37 + y * 11) & 0xff)); };
            const quint16 alpha = isTransparent ? quint16(65535 - 65535 * x / wide.width()) : 65535;
            line[x] =
                qRgba64(between(line[x].red()), between(line[x].green()), between(line[x].blue()), alpha);
        }
    }
    return wide.convertToFormat(format);
}

} // namespace testpictures
