// Both palettes of a picture in memory, against the slow form of their rules and against what a person
// expects.

#include "colortheme/cube.h"
#include "colortheme/mmcq.h"

#include "palettereference.h"
#include "testpictures.h"

#include <QtTest>

#include <numeric>

using testpictures::flat;
using testpictures::inFormat;
using testpictures::Picture;

namespace {

QList<QColor> mmcqPalette(const QImage &image, int colorCount)
{
    mmcq::PQueue boxes = mmcq::quantise(image, colorCount);
    QList<QColor> palette;
    for (int i = 0; i < boxes.size(); ++i)
        palette.append(boxes.peek(i)->average());
    return palette;
}

QList<QColor> cubePalette(const QImage &image, int colorCount)
{
    return cube::paletteFromCubes(cube::collectCubes(image)).mid(0, colorCount);
}

QStringList names(const QList<QColor> &palette)
{
    QStringList names;
    for (const QColor &color : palette)
        names.append(color.name(QColor::HexArgb));
    return names;
}

QVector<int> allColorCounts()
{
    QVector<int> counts(255);
    std::iota(counts.begin(), counts.end(), 2);
    return counts;
}

/// Left half in one colour, right half in the other.
QImage halves(const QColor &left, const QColor &right, int rightColumns)
{
    QImage image = flat(left, 60, 60);
    for (int y = 0; y < 60; ++y)
        for (int x = 60 - rightColumns; x < 60; ++x)
            image.setPixelColor(x, y, right);
    return image;
}

/// Columns of the given colours, as wide as the number beside each says.
QImage columns(const QVector<std::pair<QColor, int>> &parts)
{
    int width = 0;
    for (const auto &part : parts)
        width += part.second;
    QImage image(width, 30, QImage::Format_RGB32);
    int x = 0;
    for (const auto &part : parts) {
        for (int i = 0; i < part.second; ++i, ++x)
            for (int y = 0; y < 30; ++y)
                image.setPixelColor(x, y, part.first);
    }
    return image;
}

} // namespace

class TestQuantisers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void palettesEqualTheirRulesLiterally_data();
    void palettesEqualTheirRulesLiterally();
    void palettesEqualTheirRulesForEveryColorCount_data();
    void palettesEqualTheirRulesForEveryColorCount();

    void medianCutFindsNineOfTenColors();
    void medianCutFindsThreeOfTwoColors();
    void medianCutOfOneSampleGivesTheMiddleOfItsEmptyBox();
    void medianCutOfOneBlackSampleFindsIt();
    void medianCutOfAFlatPictureGivesItsColorAndEmptyBoxes();
    void medianCutCountsTransparentPixels();
    void boxesForgetWhatTheyComputedWhenTheyAreCopied();
    void queueKeepsTheOldSortsOrder();
    void lowerSampleDoesNotRaiseTheMaximum();

    void cubeKeyMixesHslWithHsvSaturation_data();
    void cubeKeyMixesHslWithHsvSaturation();
    void cubeKeyLeavesOutOnlyTheDarkestAndTheLightest();
    void averageOfAnEmptyCubeIsItsMiddle_data();
    void averageOfAnEmptyCubeIsItsMiddle();
    void mixTruncates();
    void whiteAndBlackPicturesGiveWhiteBlackAndTheMixes_data();
    void whiteAndBlackPicturesGiveWhiteBlackAndTheMixes();
    void flatGreyPictureGivesOneColor();
    void nearDuplicatesCountOnce();
    void farthestColorComesSecond();
    void nothingMovesWhenTheSecondColorIsTheFarthest();
    void twoColorsAreTheDominantOneAndTheFarthest();
    void cubesNeverGiveMoreThanWasAskedFor();
    void cubeKeySeesAllBitsOfAColor();
};

void TestQuantisers::palettesEqualTheirRulesLiterally_data()
{
    QTest::addColumn<QImage>("image");

    for (const Picture &figure : testpictures::figures())
        QTest::newRow(figure.name) << figure.image;

    const std::pair<QImage::Format, const char *> formats[] = {
        {QImage::Format_RGB32, "RGB32"},
        {QImage::Format_ARGB32, "ARGB32"},
        {QImage::Format_ARGB32_Premultiplied, "ARGB32_Premultiplied"},
        {QImage::Format_Grayscale8, "Grayscale8"},
        {QImage::Format_Indexed8, "Indexed8"},
        {QImage::Format_RGB888, "RGB888"},
        {QImage::Format_RGBA64, "RGBA64"},
        {QImage::Format_RGBA64_Premultiplied, "RGBA64_Premultiplied"},
        {QImage::Format_Grayscale16, "Grayscale16"},
        {QImage::Format_Mono, "Mono"},
    };
    for (const Picture &photograph : testpictures::photographs()) {
        for (const auto &[format, name] : formats)
            QTest::addRow("%s, %s", photograph.name, name) << inFormat(photograph.image, format);
    }
}

void TestQuantisers::palettesEqualTheirRulesLiterally()
{
    QFETCH(QImage, image);

    for (const int colorCount : {2, 3, 4, 5, 7, 8, 9, 10, 11, 16, 33, 100, 128, 255, 256}) {
        QCOMPARE(names(mmcqPalette(image, colorCount)), names(reference::mmcqPalette(image, colorCount)));
        QCOMPARE(names(cubePalette(image, colorCount)), names(reference::cubePalette(image, colorCount)));
    }
}

void TestQuantisers::palettesEqualTheirRulesForEveryColorCount_data()
{
    QTest::addColumn<QImage>("image");

    QTest::newRow("noise") << testpictures::noise(48, 40, 99);
    QTest::newRow("photograph") << testpictures::photographs().constFirst().image.copy(20, 20, 80, 80);
}

void TestQuantisers::palettesEqualTheirRulesForEveryColorCount()
{
    QFETCH(QImage, image);

    for (const int colorCount : allColorCounts()) {
        QCOMPARE(names(mmcqPalette(image, colorCount)), names(reference::mmcqPalette(image, colorCount)));
        QCOMPARE(names(cubePalette(image, colorCount)), names(reference::cubePalette(image, colorCount)));
    }
}

void TestQuantisers::medianCutFindsNineOfTenColors()
{
    // The first phase stops at eight boxes; the second counts from one again and splits once.
    QCOMPARE(mmcqPalette(testpictures::noise(80, 80, 5), 10).size(), 9);
}

void TestQuantisers::medianCutFindsThreeOfTwoColors()
{
    // Each phase splits once before it looks at its target.
    QCOMPARE(mmcqPalette(testpictures::noise(80, 80, 5), 2).size(), 3);
}

void TestQuantisers::medianCutOfOneSampleGivesTheMiddleOfItsEmptyBox()
{
    // The only sample sets the lower bounds and leaves the upper ones at 0.
    for (const int colorCount : {2, 10, 256}) {
        const QList<QColor> palette = mmcqPalette(flat(QColor(240, 140, 20), 1, 1), colorCount);
        QCOMPARE(names(palette),
                 names({QColor(8 * (30 + 0 + 1) / 2, 8 * (17 + 0 + 1) / 2, 8 * (2 + 0 + 1) / 2)}));
    }
}

void TestQuantisers::medianCutOfOneBlackSampleFindsIt()
{
    // With bounds of 0 on both ends its box is not empty, and one sample can't be cut.
    QCOMPARE(names(mmcqPalette(flat(Qt::black, 1, 1), 10)), names({QColor(4, 4, 4)}));
}

void TestQuantisers::medianCutOfAFlatPictureGivesItsColorAndEmptyBoxes()
{
    const QColor color(200, 100, 40);
    const QList<QColor> palette = mmcqPalette(flat(color, 40, 40), 10);
    // The middles of the buckets 25, 12 and 5, and of the empty box that is cut off behind them on the red
    // axis.
    const QColor own(25 * 8 + 4, 12 * 8 + 4, 5 * 8 + 4);
    const QColor empty(8 * (26 + 25 + 1) / 2, 12 * 8 + 4, 5 * 8 + 4);
    QCOMPARE(palette.count(own), 1);
    QVERIFY(palette.contains(empty));
    QCOMPARE(palette.count(own) + palette.count(empty), palette.size());
}

void TestQuantisers::medianCutCountsTransparentPixels()
{
    QImage image(20, 20, QImage::Format_ARGB32);
    image.fill(qRgba(200, 100, 40, 0));
    const mmcq::Histogram histogram = mmcq::histogramOf(image);
    QCOMPARE(histogram.at(mmcq::colorIndex(25, 12, 5)), qint64(100));
    QCOMPARE(std::accumulate(histogram.cbegin(), histogram.cend(), qint64(0)), qint64(100));
}

void TestQuantisers::boxesForgetWhatTheyComputedWhenTheyAreCopied()
{
    const QImage image = testpictures::noise(40, 40, 8);
    const mmcq::Histogram histogram = mmcq::histogramOf(image);
    const mmcq::Box box = mmcq::vboxFromPixels(image, histogram);
    QCOMPARE(box->count(), 400);
    const int volume = box->volume();
    const QColor average = box->average();

    mmcq::VBox copy(*box);
    copy.r2 = copy.r1;
    QVERIFY(copy.count() < 400);
    QVERIFY(copy.volume() < volume);
    QVERIFY(copy.average() != average);
    QCOMPARE(box->volume(), volume);
}

void TestQuantisers::queueKeepsTheOldSortsOrder()
{
    // Boxes of known counts, told apart by their bound b1.
    mmcq::Histogram histogram(1 << 15, 0);
    const int counts[] = {5, 3, 9, 3, 1, 7, 5, 2};
    mmcq::PQueue queue(mmcq::compareByCount);
    QList<int> expected;
    for (int i = 0; i < 8; ++i) {
        histogram[mmcq::colorIndex(0, 0, i)] = counts[i];
        expected.append(i);
    }
    for (int i = 0; i < 8; ++i)
        queue.push(mmcq::Box::create(0, 0, 0, 0, i, i, histogram));
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    qSort(expected.begin(), expected.end(), [&](int a, int b) { return counts[a] != counts[b]; });
    QT_WARNING_POP

    QList<int> order;
    while (!queue.isEmpty())
        order.prepend(queue.pop()->b1);
    QCOMPARE(order, expected);
    QVERIFY(queue.pop().isNull());
}

void TestQuantisers::lowerSampleDoesNotRaiseTheMaximum()
{
    const QImage image = columns({{QColor(248, 0, 0), 2}, {QColor(80, 0, 0), 2}, {QColor(160, 0, 0), 2}});
    const mmcq::Box box = mmcq::vboxFromPixels(image.copy(0, 0, 6, 1), mmcq::histogramOf(image));
    QCOMPARE(box->r1, 10);
    QCOMPARE(box->r2, 20);
}

void TestQuantisers::cubeKeyMixesHslWithHsvSaturation_data()
{
    QTest::addColumn<QColor>("color");
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("saturation");
    QTest::addColumn<int>("lightness");

    QTest::newRow("white") << QColor(Qt::white) << 0 << 0 << 3;
    QTest::newRow("black") << QColor(Qt::black) << 0 << 0 << 0;
    QTest::newRow("grey has no hue") << QColor(128, 128, 128) << 0 << 0 << 1;
    QTest::newRow("red") << QColor(255, 0, 0) << 0 << 3 << 1;
    QTest::newRow("violet") << QColor(255, 0, 254) << 5 << 3 << 1;
    // HSL's saturation is 255 here, HSV's 51.
    QTest::newRow("pink") << QColor(255, 204, 204) << 0 << 0 << 2;
    // The other way round: HSL's is 128, HSV's 170.
    QTest::newRow("brown") << QColor(120, 40, 40) << 0 << 2 << 0;
}

void TestQuantisers::cubeKeyMixesHslWithHsvSaturation()
{
    QFETCH(QColor, color);
    QFETCH(int, hue);
    QFETCH(int, saturation);
    QFETCH(int, lightness);

    const auto key = cube::cubeKey(color, false);
    QVERIFY(key.has_value());
    QCOMPARE(key->hue, hue);
    QCOMPARE(key->saturation, saturation);
    QCOMPARE(key->lightness, lightness);
}

void TestQuantisers::cubeKeyLeavesOutOnlyTheDarkestAndTheLightest()
{
    QVERIFY(!cube::cubeKey(QColor(4, 4, 4), true).has_value());
    QVERIFY(cube::cubeKey(QColor(5, 5, 5), true).has_value());
    QVERIFY(cube::cubeKey(QColor(250, 250, 250), true).has_value());
    QVERIFY(!cube::cubeKey(QColor(251, 251, 251), true).has_value());
    QVERIFY(cube::cubeKey(QColor(4, 4, 4), false).has_value());
    QVERIFY(cube::cubeKey(QColor(251, 251, 251), false).has_value());
}

void TestQuantisers::averageOfAnEmptyCubeIsItsMiddle_data()
{
    QTest::addColumn<int>("hue");
    QTest::addColumn<int>("saturation");
    QTest::addColumn<int>("lightness");
    QTest::addColumn<QColor>("middle");

    QTest::newRow("lowest") << 0 << 0 << 0 << QColor::fromHsl(30, 42, 42);
    QTest::newRow("between") << 3 << 1 << 2 << QColor::fromHsl(210, 127, 212);
    QTest::newRow("highest, cut off at the scales' ends") << 5 << 3 << 3 << QColor::fromHsl(330, 255, 255);
    QTest::newRow("hue cut off") << 6 << 0 << 0 << QColor::fromHsl(359, 42, 42);
}

void TestQuantisers::averageOfAnEmptyCubeIsItsMiddle()
{
    QFETCH(int, hue);
    QFETCH(int, saturation);
    QFETCH(int, lightness);
    QFETCH(QColor, middle);

    cube::Cube cell;
    cell.key = {hue, saturation, lightness};
    QCOMPARE(cube::cubeAverage(cell), middle);
}

void TestQuantisers::mixTruncates()
{
    QCOMPARE(cube::mixColors(QColor(255, 0, 10), QColor(0, 255, 20), 0.33),
             QColor(int(255 * 0.33), int(255 * (1.0 - 0.33)), int(10 * 0.33 + 20 * (1.0 - 0.33))));
    QCOMPARE(cube::mixColors(QColor(255, 255, 255), QColor(0, 0, 0), 0.66), QColor(168, 168, 168));
}

void TestQuantisers::whiteAndBlackPicturesGiveWhiteBlackAndTheMixes_data()
{
    QTest::addColumn<QColor>("color");

    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("black") << QColor(Qt::black);
    QTest::newRow("nearly black") << QColor(4, 3, 4);
}

void TestQuantisers::whiteAndBlackPicturesGiveWhiteBlackAndTheMixes()
{
    QFETCH(QColor, color);

    // All samples are left out, and white stands in. 255 * 0.67 is 170.85, 255 * 0.34 is 86.7.
    const QStringList expected =
        names({QColor(Qt::white), QColor(Qt::black), QColor(170, 170, 170), QColor(86, 86, 86)});
    QCOMPARE(names(cubePalette(flat(color, 50, 50), 10)), expected);
}

void TestQuantisers::flatGreyPictureGivesOneColor()
{
    QCOMPARE(names(cubePalette(flat(QColor(128, 128, 128), 50, 50), 10)), names({QColor(128, 128, 128)}));
}

void TestQuantisers::nearDuplicatesCountOnce()
{
    // Neighbours on both sides of the border between two lightness buckets: 84 and 85 to 99.
    const QImage within = halves(QColor(84, 84, 84), QColor(99, 99, 99), 20);
    QCOMPARE(names(cubePalette(within, 10)), names({QColor(84, 84, 84)}));
    const QImage beyond = halves(QColor(84, 84, 84), QColor(84, 100, 84), 20);
    QCOMPARE(names(cubePalette(beyond, 10)), names({QColor(84, 84, 84), QColor(84, 100, 84)}));
    const QImage swapped = halves(QColor(84, 84, 84), QColor(99, 99, 99), 40);
    QCOMPARE(names(cubePalette(swapped, 10)), names({QColor(99, 99, 99)}));
}

void TestQuantisers::farthestColorComesSecond()
{
    const QColor most(200, 30, 30);
    const QColor near(200, 30, 150);
    const QColor far(20, 220, 230);
    const QColor least(30, 30, 200);
    const QImage image = columns({{most, 60}, {near, 40}, {least, 8}, {far, 20}});
    QCOMPARE(names(cubePalette(image, 10)), names({most, far, near, least}));
}

void TestQuantisers::nothingMovesWhenTheSecondColorIsTheFarthest()
{
    const QColor most(200, 30, 30);
    const QColor near(200, 30, 150);
    const QColor far(20, 220, 230);
    const QImage image = columns({{most, 60}, {far, 40}, {near, 20}});
    QCOMPARE(names(cubePalette(image, 10)), names({most, far, near}));
}

void TestQuantisers::twoColorsAreTheDominantOneAndTheFarthest()
{
    const QColor most(200, 30, 30);
    const QColor near(200, 30, 150);
    const QColor far(20, 220, 230);
    const QImage image = columns({{most, 60}, {near, 40}, {far, 20}});
    QCOMPARE(names(cubePalette(image, 2)), names({most, far}));
}

void TestQuantisers::cubesNeverGiveMoreThanWasAskedFor()
{
    const QImage image = testpictures::noise(90, 90, 17);
    QVERIFY(cubePalette(image, 256).size() > 20);
    QCOMPARE(cubePalette(image, 7).size(), 7);
    QCOMPARE(cubePalette(image, 7), cubePalette(image, 256).mid(0, 7));
}

void TestQuantisers::cubeKeySeesAllBitsOfAColor()
{
    // In 8 bits this is a grey, which has no hue; in 16 it is a magenta of saturation 0.
    QImage image(30, 30, QImage::Format_RGBA64);
    image.fill(QColor::fromRgba64(qRgba64(0x8080, 0x8000, 0x80ff, 0xffff)));
    const cube::Cubes cubes = cube::collectCubes(image);
    QCOMPARE(cubes.size(), 1);
    QVERIFY(image.pixelColor(0, 0).hslHue() >= 240);
    QCOMPARE(cubes.first()->key.hue, image.pixelColor(0, 0).hslHue() / 60);
    QCOMPARE(cubes.first()->count, 100);
}

QTEST_GUILESS_MAIN(TestQuantisers)
#include "tst_quantisers.moc"
