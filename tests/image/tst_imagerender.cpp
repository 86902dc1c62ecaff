// ImageRender on the screen: the blend pixel by pixel, and the statuses with the order of their signals.

#include "image/imagecaches.h"
#include "image/imagerender.h"
#include "itemwindow.h"
#include "messageguard.h"
#include "pixels.h"
#include "shaderreference.h"
#include "testpictures.h"

#include <QPainter>
#include <QSignalSpy>
#include <QtTest>

using namespace testpictures;
using shaderreference::Corners;
using shaderreference::Layer;

Q_DECLARE_METATYPE(QVector<double>)

namespace {

constexpr int patience = 20'000;
const QColor desk(40, 120, 200);
const pixels::Tolerance closely{3, 0.0};

QImage filledWith(const QColor &color, const QSize &size = QSize(60, 60))
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

Layer placed(const QImage &image, const QSize &item, int mode)
{
    if (mode == ImageRender::PreserveAspectFit)
        return shaderreference::fitted(image, item);
    if (mode == ImageRender::PreserveAspectCrop)
        return shaderreference::cropped(image, item);
    return Layer{image};
}

} // namespace

class TestImageRender : public QObject
{
    Q_OBJECT

    QScopedPointer<ItemWindow> window;
    QScopedPointer<MessageGuard> guard;
    QScopedPointer<Folder> folder;
    QStringList log;

    ImageRender *add(const QSize &size)
    {
        auto *item = new ImageRender;
        item->setParentItem(window->contentItem());
        item->setPosition(QPointF(20, 10));
        item->setSize(size);
        connect(item, &ImageRender::sourceChanged, this, [this] { log += QStringLiteral("source"); });
        connect(item, &ImageRender::backgroundSourceChanged, this,
                [this] { log += QStringLiteral("background"); });
        connect(item, &ImageRender::blurRadiusChanged, this, [this] { log += QStringLiteral("blur"); });
        connect(item, &ImageRender::sourceSizeChanged, this, [this] { log += QStringLiteral("size"); });
        connect(item, &ImageRender::statusSourceChanged, this,
                [this](ImageRender::Status status) { log += QStringLiteral("source:%1").arg(status); });
        connect(item, &ImageRender::statusBackgroundChanged, this,
                [this](ImageRender::Status status) { log += QStringLiteral("background:%1").arg(status); });
        return item;
    }

    QColor middle(const QQuickItem *item)
    {
        const QImage picture = window->picture(item);
        return picture.pixelColor(picture.width() / 2, picture.height() / 2);
    }

    [[nodiscard]] static bool isReady(const ImageRender *item)
    {
        return item->statusSource() == ImageRender::Ready && item->statusBackground() == ImageRender::Ready;
    }

private Q_SLOTS:
    void init()
    {
        renderImageCache.clear();
        log.clear();
        folder.reset(new Folder);
        guard.reset(); // one at a time
        guard.reset(new MessageGuard);
        window.reset(new ItemWindow(QSize(480, 320), desk));
        QVERIFY(window->open());
    }

    void cleanup()
    {
        window.reset();
        QCOMPARE(guard->unexpected(), QStringList());
    }

    void picturesBlendByTheFormula_data()
    {
        QTest::addColumn<QSize>("item");
        QTest::addColumn<QSize>("source");
        QTest::addColumn<bool>("alpha");
        QTest::addColumn<int>("sourceMode");
        QTest::addColumn<QSize>("background");
        QTest::addColumn<int>("backgroundMode");
        QTest::addColumn<QVector<double>>("corners");
        QTest::addColumn<QVector<double>>("clamped");

        const QVector<double> square(4, 0.0);
        const std::pair<const char *, int> modes[] = {{"stretched", 0}, {"fitted", 1}, {"cropped", 2}};
        for (const auto &mode : modes) {
            QTest::addRow("wide source %s", mode.first)
                << QSize(100, 80) << QSize(120, 50) << true << mode.second << QSize(30, 20) << 0 << square
                << square;
            QTest::addRow("tall source %s", mode.first)
                << QSize(100, 80) << QSize(40, 90) << true << mode.second << QSize(30, 20) << 0 << square
                << square;
            QTest::addRow("background %s", mode.first) << QSize(100, 80) << QSize(40, 90) << true << 1
                                                       << QSize(20, 40) << mode.second << square << square;
        }
        // Beyond a hundredth on one side a crop is a crop, up to there the picture is stretched.
        QTest::newRow("crop of 0.98 hundredths is none")
            << QSize(100, 100) << QSize(102, 100) << false << 2 << QSize(30, 20) << 0 << square << square;
        QTest::newRow("crop of 1.9 hundredths")
            << QSize(100, 100) << QSize(104, 100) << false << 2 << QSize(30, 20) << 0 << square << square;
        QTest::newRow("corners are circles")
            << QSize(120, 80) << QSize(120, 80) << false << 0 << QSize(30, 20) << 0
            << QVector<double>{30, 20, 10, 5} << QVector<double>{30, 20, 10, 5};
        // The odd size has pixels in the middle of which the centre lines run.
        QTest::newRow("corners beyond half the side, and odd ones")
            << QSize(101, 81) << QSize(101, 81) << true << 0 << QSize(30, 20) << 0
            << QVector<double>{1000, -5, 0.0005, 40.5} << QVector<double>{40.5, 0, 0, 40.5};
        QTest::newRow("corners of bars")
            << QSize(100, 80) << QSize(100, 40) << true << 1 << QSize(20, 40) << 1
            << QVector<double>{20, 20, 20, 20} << QVector<double>{20, 20, 20, 20};
    }

    void picturesBlendByTheFormula()
    {
        QFETCH(QSize, item);
        QFETCH(QSize, source);
        QFETCH(bool, alpha);
        QFETCH(int, sourceMode);
        QFETCH(QSize, background);
        QFETCH(int, backgroundMode);
        QFETCH(QVector<double>, corners);
        QFETCH(QVector<double>, clamped);
        const QImage front = smooth(source, alpha);
        const QImage back = smooth(background, false).mirrored(true, true);
        ImageRender *render = add(item);
        render->setSourceFillMode(ImageRender::FillMode(sourceMode));
        render->setBackgroundFillMode(ImageRender::FillMode(backgroundMode));
        render->setTopLeftRadius(corners.at(0));
        render->setTopRightRadius(corners.at(1));
        render->setBottomLeftRadius(corners.at(2));
        render->setBottomRightRadius(corners.at(3));
        render->setSourceSize(QSize(500, 500));
        render->setSource(folder->add(QStringLiteral("a.png"), front));
        render->setBackgroundSource(folder->add(QStringLiteral("b.png"), back));
        QTRY_VERIFY_WITH_TIMEOUT(isReady(render), patience);
        const QImage expected = shaderreference::blended(
            placed(front, item, sourceMode), placed(back, item, backgroundMode), item,
            Corners{clamped.at(0), clamped.at(1), clamped.at(2), clamped.at(3)}, desk);
        // A pixel whose middle lies on the edge of a picture may fall on either side of it.
        QCOMPARE(pixels::pictureDifference(window->picture(render), expected, {4, 0.002}), QString());
    }

    /// What a crop would cut off by a hundredth or less is squeezed in instead, on either axis.
    void cropUpToAHundredthIsNone_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<bool>("isCropped");
        QTest::newRow("0.98 hundredths in width") << QSize(1020, 1000) << false;
        QTest::newRow("1.03 hundredths in width") << QSize(1021, 1000) << true;
        QTest::newRow("0.98 hundredths in height") << QSize(1000, 1020) << false;
        QTest::newRow("1.03 hundredths in height") << QSize(1000, 1021) << true;
    }

    void cropUpToAHundredthIsNone()
    {
        QFETCH(QSize, size);
        QFETCH(bool, isCropped);
        // Eight red columns or rows at the edge, which a crop of ten would cut off. The item's first pixel
        // shows the sixth.
        const bool isWide = size.width() > size.height();
        QImage image = filledWith(Qt::green, size);
        QPainter(&image).fillRect(0, 0, isWide ? 8 : size.width(), isWide ? size.height() : 8, Qt::red);
        ImageRender *item = add(QSize(100, 100));
        item->setSourceFillMode(ImageRender::PreserveAspectCrop);
        item->setSourceSize(size);
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusSource(), ImageRender::Ready, patience);
        const QColor edge = window->picture(item).pixelColor(isWide ? 0 : 50, isWide ? 50 : 0);
        QCOMPARE(edge, QColor(isCropped ? Qt::green : Qt::red));
    }

    void alphaOfTheBlendIsTheLargerOne()
    {
        ImageRender *item = add(QSize(60, 60));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(QColor(255, 0, 0, 51))));
        item->setBackgroundSource(folder->add(QStringLiteral("b.png"), filledWith(QColor(0, 0, 255, 102))));
        QTRY_VERIFY_WITH_TIMEOUT(isReady(item), patience);
        // Premultiplied: red 0.2 with alpha 0.2, blue 0.4 with alpha 0.4.
        const double red = 0.2 * 0.2 + desk.redF() * (1 - 0.4);
        const double green = desk.greenF() * (1 - 0.4);
        const double blue = 0.4 * (1 - 0.2) + desk.blueF() * (1 - 0.4);
        const QColor shown = middle(item);
        QVERIFY2(qAbs(shown.redF() - red) < 0.02 && qAbs(shown.greenF() - green) < 0.02 &&
                     qAbs(shown.blueF() - blue) < 0.02,
                 qPrintable(shown.name()));
    }

    void singlePictureStandsInForTheOther_data()
    {
        QTest::addColumn<bool>("isSource");
        QTest::newRow("source alone") << true;
        QTest::newRow("background alone") << false;
    }

    void singlePictureStandsInForTheOther()
    {
        QFETCH(bool, isSource);
        const QSize size(100, 80);
        const QImage image = smooth(QSize(50, 80), true);
        ImageRender *item = add(size);
        const QString path = folder->add(QStringLiteral("a.png"), image);
        // The other one's fill mode must not matter.
        item->setSourceFillMode(isSource ? ImageRender::PreserveAspectFit : ImageRender::Stretch);
        item->setBackgroundFillMode(isSource ? ImageRender::Stretch : ImageRender::PreserveAspectFit);
        item->setSourceSize(QSize(500, 500));
        if (isSource)
            item->setSource(path);
        else
            item->setBackgroundSource(path);
        QTRY_VERIFY_WITH_TIMEOUT(item->statusSource() == ImageRender::Ready ||
                                     item->statusBackground() == ImageRender::Ready,
                                 patience);
        const Layer layer = shaderreference::fitted(image, size);
        QCOMPARE(pixels::pictureDifference(window->picture(item),
                                           shaderreference::blended(layer, layer, size, {}, desk),
                                           {4, 0.002}),
                 QString());
    }

    void fillModeNeedsNoLoad()
    {
        const QSize size(100, 80);
        const QImage image = smooth(QSize(50, 80));
        ImageRender *item = add(size);
        item->setSourceSize(QSize(500, 500));
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusSource(), ImageRender::Ready, patience);
        (void)window->picture();
        log.clear();
        item->setSourceFillMode(ImageRender::PreserveAspectFit);
        const Layer layer = shaderreference::fitted(image, size);
        QCOMPARE(pixels::pictureDifference(window->picture(item),
                                           shaderreference::blended(layer, layer, size, {}, desk),
                                           {4, 0.002}),
                 QString());
        QCOMPARE(log, QStringList());
    }

    void newItemSizeLoadsNothing()
    {
        ImageRender *item = add(QSize(60, 60));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusSource(), ImageRender::Ready, patience);
        log.clear();
        item->setSize(QSizeF(200, 200));
        QCOMPARE(middle(item), QColor(Qt::red));
        QCOMPARE(log, QStringList());
        item->setSourceSize(QSize(10, 10));
        QTRY_COMPARE_WITH_TIMEOUT(log.size(), 3, patience);
        QCOMPARE(log, (QStringList{QStringLiteral("size"), QStringLiteral("source:2"),
                                   QStringLiteral("source:1")}));
    }

    // ---- statuses

    void statusesComeInOrder()
    {
        ImageRender *item = add(QSize(60, 60));
        const QString good = folder->add(QStringLiteral("a.png"), filledWith(Qt::red));
        const QString bad = folder->add(QStringLiteral("b.png"), QByteArray("nothing"));
        const auto expect = [this](const char *text) {
            return log == QString::fromLatin1(text).split(QLatin1Char(' '));
        };
        item->setSource(good);
        QTRY_VERIFY_WITH_TIMEOUT(expect("source source:2 source:1"), patience);
        item->setSource(good);
        item->setSource(bad);
        QTRY_VERIFY_WITH_TIMEOUT(expect("source source:2 source:1 source source:2 source:3"), patience);
        log.clear();
        item->setSource(QString());
        QVERIFY(expect("source source:0"));

        log.clear();
        item->setBackgroundSource(good);
        QTRY_VERIFY_WITH_TIMEOUT(expect("background background:2 background:1"), patience);
        log.clear();
        item->setBlurRadius(3);
        QTRY_VERIFY_WITH_TIMEOUT(expect("blur background:2 background:1"), patience);
        log.clear();
        item->setBackgroundSource(bad);
        QTRY_VERIFY_WITH_TIMEOUT(expect("background background:2 background:3"), patience);
        log.clear();
        item->setBackgroundSource(QString());
        QVERIFY(expect("background background:0"));
        log.clear();
        item->setBlurRadius(4); // without a background there is nothing to do
        QVERIFY(expect("blur"));
    }

    void newSourceWhileLoadingGivesTheOldOneUp()
    {
        ImageRender *item = add(QSize(60, 60));
        const QString large = folder->add(QStringLiteral("a.png"), filledWith(Qt::green, QSize(5000, 4000)));
        item->setSource(large);
        item->setSource(folder->add(QStringLiteral("b.png"), filledWith(Qt::red)));
        QCOMPARE(log.mid(0, 3), (QStringList{QStringLiteral("source"), QStringLiteral("source:2"),
                                             QStringLiteral("source")}));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusSource(), ImageRender::Ready, patience);
        QCOMPARE(log.size(), 4);
        QCOMPARE(middle(item), QColor(Qt::red));
    }

    void clearedWhileLoadingStaysNull()
    {
        ImageRender *item = add(QSize(60, 60));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::green, QSize(5000, 4000))));
        item->setSource(QString());
        QTest::qWait(200);
        QCOMPARE(item->statusSource(), ImageRender::Null);
        QCOMPARE(log, (QStringList{QStringLiteral("source"), QStringLiteral("source:2"),
                                   QStringLiteral("source"), QStringLiteral("source:0")}));
        QCOMPARE(middle(item), desk);
    }

    void clearedPicturesStayOnScreen()
    {
        ImageRender *item = add(QSize(60, 60));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
        item->setSource(QString());
        QCOMPARE(middle(item), QColor(Qt::red));
        item->setTopLeftRadius(5); // a frame changes nothing
        QCOMPARE(middle(item), QColor(Qt::red));
    }

    void loadingAgainKeepsTheTexturesAndChangesTheAreas()
    {
        const QSize size(100, 100);
        ImageRender *item = add(size);
        const QImage front = filledWith(Qt::red, QSize(100, 50));
        const QImage back = filledWith(Qt::green, QSize(20, 20));
        item->setSourceSize(QSize(500, 500));
        item->setSourceFillMode(ImageRender::PreserveAspectFit);
        item->setSource(folder->add(QStringLiteral("a.png"), front));
        item->setBackgroundSource(folder->add(QStringLiteral("b.png"), back));
        QTRY_VERIFY_WITH_TIMEOUT(isReady(item), patience);
        QCOMPARE(window->picture(item).pixelColor(50, 5), QColor(Qt::green));
        item->setStatusSource(ImageRender::Loading);
        item->update();
        // The background's areas now place the old source texture, too.
        QCOMPARE(window->picture(item).pixelColor(50, 5), QColor(Qt::red));
    }

    void statusWithoutAPictureDoesNoHarm()
    {
        ImageRender *item = add(QSize(60, 60));
        item->setStatusSource(ImageRender::Ready);
        item->setStatusBackground(ImageRender::Ready);
        item->update();
        QCOMPARE(middle(item), desk);
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
    }

    void blurOfACachedBackgroundStays()
    {
        const QString path = folder->add(QStringLiteral("b.png"), quadrants(QSize(200, 200)));
        ImageRender *item = add(QSize(100, 100));
        item->setBlurRadius(2);
        item->setBackgroundSource(path);
        QTRY_COMPARE_WITH_TIMEOUT(item->statusBackground(), ImageRender::Ready, patience);
        const QImage before = window->picture(item);
        item->setBlurRadius(60);
        QTRY_COMPARE_WITH_TIMEOUT(log.count(QStringLiteral("background:1")), 2, patience);
        QCOMPARE(pixels::pictureDifference(window->picture(item), before, {0, 0}), QString());
        renderImageCache.clear();
        item->setBlurRadius(61);
        QTRY_COMPARE_WITH_TIMEOUT(log.count(QStringLiteral("background:1")), 3, patience);
        QVERIFY(greatestDifference(window->picture(item), before) > 40);
    }

    void inlineDataIsABackground()
    {
        ImageRender *item = add(QSize(60, 60));
        item->setBackgroundSource(QString::fromLatin1(encoded(filledWith(Qt::red), "png").toBase64()));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusBackground(), ImageRender::Ready, patience);
        QCOMPARE(middle(item), QColor(Qt::red));
        item->setBackgroundSource(QStringLiteral("no picture"));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusBackground(), ImageRender::Error, patience);
    }

    // ---- areas

    void displayAreasOfAPicture_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<int>("mode");
        QTest::addColumn<QRectF>("display");
        QTest::addColumn<QRectF>("source");

        const QRectF unit(0, 0, 1, 1);
        // The item is 200 by 100.
        QTest::newRow("stretch") << QSize(10, 90) << 0 << unit << unit;
        QTest::newRow("fit, wider") << QSize(400, 100) << 1 << QRectF(0, 0.25, 1, 0.5) << unit;
        QTest::newRow("fit, higher") << QSize(50, 50) << 1 << QRectF(0.25, 0, 0.5, 1) << unit;
        QTest::newRow("fit, same shape") << QSize(20, 10) << 1 << unit << unit;
        QTest::newRow("crop, wider") << QSize(400, 100) << 2 << unit << QRectF(0.25, 0, 0.5, 1);
        QTest::newRow("crop, higher") << QSize(50, 50) << 2 << unit << QRectF(0, 0.25, 1, 0.5);
        QTest::newRow("unknown mode") << QSize(50, 50) << 7 << unit << unit;
        QTest::newRow("no picture") << QSize() << 1 << unit << unit;
    }

    void displayAreasOfAPicture()
    {
        QFETCH(QSize, picture);
        QFETCH(int, mode);
        QFETCH(QRectF, display);
        QFETCH(QRectF, source);
        ImageRender item;
        item.setSize(QSizeF(200, 100));
        const QImage image = picture.isValid() ? QImage(picture, QImage::Format_RGB32) : QImage();
        QCOMPARE(item.calcImageDisplayArea(image, ImageRender::FillMode(mode)),
                 (QList<QRectF>{display, source}));
    }

    void outlineOfAnySizeCanBeRebuilt()
    {
        ImageRender item;
        item.updatePath();
        item.setSize(QSizeF(100, 50));
        item.setTopLeftRadius(-1e300);
        item.setBottomRightRadius(1e300);
        item.updatePath();
    }

    // ---- windows

    /// The pictures come along. The corners do not: they are set again by the next change of a radius.
    void movedItemKeepsItsPicturesAndLosesItsCorners()
    {
        const QSize size(100, 100);
        ImageRender *item = add(size);
        item->setTopLeftRadius(30);
        item->setSourceSize(QSize(500, 500));
        const QImage image = smooth(size);
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusSource(), ImageRender::Ready, patience);
        const Layer layer{image};
        QCOMPARE(pixels::pictureDifference(window->picture(item),
                                           shaderreference::blended(layer, layer, size, {30, 0, 0, 0}, desk),
                                           closely),
                 QString());
        ItemWindow other(QSize(200, 200), desk);
        QVERIFY(other.open());
        item->setParentItem(other.contentItem());
        QCOMPARE(pixels::pictureDifference(other.picture(item),
                                           shaderreference::blended(layer, layer, size, {}, desk), closely),
                 QString());
        item->setTopRightRadius(10);
        QCOMPARE(pixels::pictureDifference(other.picture(item),
                                           shaderreference::blended(layer, layer, size, {30, 10, 0, 0}, desk),
                                           closely),
                 QString());
        item->setParentItem(window->contentItem());
    }
};

QTEST_MAIN(TestImageRender)
#include "tst_imagerender.moc"
