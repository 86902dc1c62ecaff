// Palettes of ten colours: of a photograph's file beside Kirigami's ImageColors, of pixels in memory beside
// libimagequant at its fastest and OpenCV's k-means.

#include "colortheme/cube.h"
#include "colortheme/imagecolortheme.h"
#include "colortheme/mmcq.h"
#include "measure.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextStream>

#include <memory>

#ifdef COMPONENT_BENCH_IMAGEQUANT
#include <libimagequant.h>
#endif
#ifdef COMPONENT_BENCH_OPENCV
#include <opencv2/core.hpp>
#endif

namespace {

constexpr int colorCount = 10;
constexpr int patience = 60'000; ///< ms

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// Sky, sea and sand with the grain of a sensor.
QImage photograph(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    QLinearGradient gradient(0, 0, 0, size.height());
    gradient.setStops({{0.0, QColor(86, 150, 214)},
                       {0.45, QColor(186, 216, 238)},
                       {0.46, QColor(24, 92, 128)},
                       {0.65, QColor(92, 170, 178)},
                       {0.68, QColor(226, 204, 160)},
                       {1.0, QColor(196, 168, 120)}});
    QPainter painter(&image);
    painter.fillRect(image.rect(), gradient);
    QRandomGenerator random(7);
    for (int i = 0; i < 300; ++i) {
        const int side = size.width() / 100 + int(random.bounded(size.width() / 20));
        painter.setBrush(QColor::fromHsl(int(random.bounded(360)), 120, 60 + int(random.bounded(140)), 180));
        painter.drawEllipse(int(random.bounded(size.width())), int(random.bounded(size.height())), side,
                            side);
    }
    painter.end();
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            // Three values of noise from one number.
            const quint32 noise = random.generate();
            const auto grainy = [](int value, quint32 bits) {
                return qBound(0, value + int(bits % 17) - 8, 255);
            };
            line[x] = qRgb(grainy(qRed(line[x]), noise & 0xff), grainy(qGreen(line[x]), (noise >> 8) & 0xff),
                           grainy(qBlue(line[x]), (noise >> 16) & 0xff));
        }
    }
    return image;
}

class PaletteBenchmarks
{
public:
    bool run(const QString &filter)
    {
        if (!photograph(QSize(4000, 3000)).save(file(), "JPEG", 90))
            qFatal("The photograph could not be written");
        printHead();
        bool isMet = true;
        for (const Row &row : {fileRow(), memoryRow()}) {
            if (row.title.contains(filter, Qt::CaseInsensitive))
                isMet = measure(row) && isMet;
        }
        return isMet;
    }

private:
    [[nodiscard]] QString file() const { return folder.filePath(QStringLiteral("photograph.jpg")); }

    static void skip(const char *peer)
    {
        QTextStream(stderr) << "Skipped: " << peer << " is not installed\n";
    }

    Contender ours(const char *name, ImageColorTheme::Algorithm algorithm)
    {
        return {QString::fromLatin1(name), [=] {
                    ImageColorTheme theme;
                    theme.setAlgorithm(algorithm);
                    theme.setColorCount(colorCount);
                    QSignalSpy ready(&theme, &ImageColorTheme::ready);
                    QElapsedTimer timer;
                    timer.start();
                    theme.setSource(file());
                    if (ready.isEmpty() && !ready.wait(patience))
                        qFatal("The palette did not come");
                    return milliseconds(timer);
                }};
    }

    Row fileRow()
    {
        Row row{QStringLiteral("A palette of ten colours from the file of a 12-megapixel JPEG"),
                QStringLiteral("ms"),
                {},
                {},
                -1.0,
                9};
        row.contenders = {ours("CUBE", ImageColorTheme::CUBE), ours("MMCQ", ImageColorTheme::MMCQ)};

        kirigami = std::make_unique<QQmlComponent>(&engine);
        // Its worker asks for the attached theme, which must be made on this thread.
        kirigami->setData("import org.kde.kirigami 2.13\nImageColors { Theme.inherit: false }", QUrl());
        if (!kirigami->isReady()) {
            skip("Kirigami");
            return row;
        }
        // It takes pictures, not files, so reading one is its user's part of the work.
        row.contenders.append({QStringLiteral("Kirigami ImageColors"), [this] {
                                   const std::unique_ptr<QObject> colors(kirigami->create());
                                   QSignalSpy changed(colors.get(), SIGNAL(paletteChanged()));
                                   QElapsedTimer timer;
                                   timer.start();
                                   colors->setProperty("source", QImage(file()));
                                   while (colors->property("palette").toList().isEmpty()) {
                                       if (!changed.wait(patience))
                                           qFatal("Kirigami's palette did not come");
                                   }
                                   return milliseconds(timer);
                               }});
        row.targets = {{2, 0.5}};
        return row;
    }

    Row memoryRow()
    {
        const QImage image = photograph(QSize(400, 533));
        Row row{QStringLiteral("A palette of ten colours from 400 by 533 pixels in memory"),
                QStringLiteral("ms"),
                {},
                {},
                -1.0,
                25};
        row.contenders.append({QStringLiteral("MMCQ"), [=] {
                                   QElapsedTimer timer;
                                   timer.start();
                                   mmcq::PQueue boxes = mmcq::quantise(image, colorCount);
                                   for (int i = 0; i < boxes.size(); ++i)
                                       checksum += boxes.peek(i)->average().red();
                                   return milliseconds(timer);
                               }});
        row.contenders.append({QStringLiteral("CUBE"), [=] {
                                   QElapsedTimer timer;
                                   timer.start();
                                   const auto palette = cube::paletteFromCubes(cube::collectCubes(image));
                                   checksum += palette.constFirst().red();
                                   return milliseconds(timer);
                               }});
#ifdef COMPONENT_BENCH_IMAGEQUANT
        row.contenders.append({QStringLiteral("libimagequant, speed 10"), [=] {
                                   const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
                                   QElapsedTimer timer;
                                   timer.start();
                                   liq_attr *attributes = liq_attr_create();
                                   liq_set_speed(attributes, 10);
                                   liq_set_max_colors(attributes, colorCount);
                                   liq_image *input = liq_image_create_rgba(
                                       attributes, pixels.constBits(), pixels.width(), pixels.height(), 0);
                                   liq_result *result = nullptr;
                                   if (liq_image_quantize(input, attributes, &result) != LIQ_OK)
                                       qFatal("libimagequant found no palette");
                                   checksum += liq_get_palette(result)->entries[0].r;
                                   liq_result_destroy(result);
                                   liq_image_destroy(input);
                                   liq_attr_destroy(attributes);
                                   return milliseconds(timer);
                               }});
        row.targets = {{2, 1.0}};
#else
        skip("libimagequant");
#endif
#ifdef COMPONENT_BENCH_OPENCV
        row.contenders.append(
            {QStringLiteral("OpenCV k-means"), [=] {
                 QElapsedTimer timer;
                 timer.start();
                 const QImage pixels = image.convertToFormat(QImage::Format_RGB32);
                 cv::Mat points(pixels.width() * pixels.height(), 3, CV_32F);
                 int row = 0;
                 for (int y = 0; y < pixels.height(); ++y) {
                     const auto *line = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
                     for (int x = 0; x < pixels.width(); ++x) {
                         float *point = points.ptr<float>(row++);
                         point[0] = float(qRed(line[x]));
                         point[1] = float(qGreen(line[x]));
                         point[2] = float(qBlue(line[x]));
                     }
                 }
                 cv::Mat labels;
                 cv::Mat centres;
                 const cv::TermCriteria tenRounds(cv::TermCriteria::COUNT, 10, 0.0);
                 cv::kmeans(points, colorCount, labels, tenRounds, 1, cv::KMEANS_PP_CENTERS, centres);
                 checksum += double(centres.at<float>(0, 0));
                 return milliseconds(timer);
             }});
#else
        skip("OpenCV");
#endif
        return row;
    }

    QTemporaryDir folder;
    QQmlEngine engine;
    std::unique_ptr<QQmlComponent> kirigami;
    double checksum = 0.0;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return PaletteBenchmarks().run(application.arguments().value(1)) ? 0 : 1;
}
