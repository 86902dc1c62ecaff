// RoundedImage on the screen: its corners pixel by pixel, when it loads, and what it shows meanwhile.

#include "image/imagecaches.h"
#include "image/roundedimage.h"
#include "itemwindow.h"
#include "messageguard.h"
#include "pixels.h"
#include "shaderreference.h"
#include "testpictures.h"

#include <QSignalSpy>
#include <QtTest>

using namespace testpictures;
using shaderreference::Corners;

namespace {

constexpr int patience = 20'000;
const QColor desk(40, 120, 200);
// The GPU works with other rounding than the reference.
const pixels::Tolerance closely{3, 0.0};

QImage filledWith(const QColor &color, const QSize &size = QSize(100, 100))
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

} // namespace

class TestRoundedImage : public QObject
{
    Q_OBJECT

    QScopedPointer<ItemWindow> window;
    QScopedPointer<MessageGuard> guard;
    QScopedPointer<Folder> folder;

    RoundedImage *add(const QSize &size)
    {
        auto *item = new RoundedImage;
        item->setParentItem(window->contentItem());
        item->setPosition(QPointF(20, 10));
        item->setSize(size);
        return item;
    }

    QColor middle(const QQuickItem *item)
    {
        const QImage picture = window->picture(item);
        return picture.pixelColor(picture.width() / 2, picture.height() / 2);
    }

private Q_SLOTS:
    void init()
    {
        roundedImageCache.clear();
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

    void cornersFollowTheFormula_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("radius");
        QTest::addColumn<QVector<double>>("corners");
        QTest::addColumn<bool>("alpha");
        QTest::addColumn<double>("common");
        QTest::addColumn<QVector<double>>("fractions");

        const QVector<double> none(4, 0.0);
        QTest::newRow("square corners") << QSize(100, 100) << 0.0 << none << false << 0.0 << none;
        QTest::newRow("all corners") << QSize(100, 100) << 20.0 << none << false << 0.2 << none;
        QTest::newRow("half transparent") << QSize(100, 100) << 20.0 << none << true << 0.2 << none;
        QTest::newRow("elliptical in a wide item") << QSize(200, 100) << 20.0 << none << false << 0.2 << none;
        QTest::newRow("elliptical in a tall item") << QSize(60, 180) << 30.0 << none << true << 0.5 << none;
        QTest::newRow("circle") << QSize(101, 101) << 50.5 << none << false << 0.5 << none;
        QTest::newRow("radius beyond half the side")
            << QSize(120, 90) << 1000.0 << none << false << 0.5 << none;
        QTest::newRow("enormous radius") << QSize(90, 90) << 1e300 << none << false << 0.5 << none;
        QTest::newRow("negative radius") << QSize(90, 90) << -10.0 << none << false << 0.0 << none;
        QTest::newRow("radius that is not a number")
            << QSize(90, 90) << qQNaN() << none << false << 0.0 << none;
        QTest::newRow("one corner") << QSize(100, 100) << 0.0 << QVector<double>{20, 0, 0, 0} << false << 0.0
                                    << QVector<double>{0.2, 0, 0, 0};
        // An odd size has pixels whose middle lies on a centre line, where no corner reaches.
        QTest::newRow("four corners on an odd size")
            << QSize(101, 81) << 0.0 << QVector<double>{81, 10, 20, 40.5} << true << 0.0
            << QVector<double>{0.5, 10 / 81.0, 20 / 81.0, 0.5};
        QTest::newRow("common radius wins") << QSize(100, 100) << 10.0 << QVector<double>{20, 0, 40, 5}
                                            << false << 0.1 << QVector<double>{0.2, 0, 0.4, 0.05};
        QTest::newRow("negative radius leaves the corners their own")
            << QSize(100, 100) << -3.0 << QVector<double>{20, -7, 0, 5} << false << 0.0
            << QVector<double>{0.2, 0, 0, 0.05};
        QTest::newRow("radius too small to count") << QSize(100, 100) << 0.09 << QVector<double>{20, 0, 0, 0}
                                                   << false << 0.0009 << QVector<double>{0.2, 0, 0, 0};
    }

    void cornersFollowTheFormula()
    {
        QFETCH(QSize, size);
        QFETCH(double, radius);
        QFETCH(QVector<double>, corners);
        QFETCH(bool, alpha);
        QFETCH(double, common);
        QFETCH(QVector<double>, fractions);
        const QImage image = smooth(size, alpha);
        RoundedImage *item = add(size);
        item->setRadius(radius);
        item->setRadiusTopLeft(corners.at(0));
        item->setRadiusTopRight(corners.at(1));
        item->setRadiusBottomLeft(corners.at(2));
        item->setRadiusBottomRight(corners.at(3));
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        const QImage expected = shaderreference::rounded(
            image, size, common, Corners{fractions.at(0), fractions.at(1), fractions.at(2), fractions.at(3)},
            desk);
        QTRY_VERIFY_WITH_TIMEOUT(middle(item) != desk, patience);
        // A pixel in the middle of which a centre line runs may fall on either side of it.
        const pixels::Tolerance tolerance{3, size.width() % 2 == 0 ? 0.0 : 0.0005};
        QCOMPARE(pixels::pictureDifference(window->picture(item), expected, tolerance), QString());
    }

    void itemOpacityFadesThePicture()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setRadius(30);
        item->setOpacity(0.5);
        const QImage image = smooth(QSize(100, 100));
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_VERIFY_WITH_TIMEOUT(middle(item) != desk, patience);
        const QImage opaque = shaderreference::rounded(image, image.size(), 0.3, {}, desk);
        QImage expected = opaque;
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x) {
                const QColor pixel = opaque.pixelColor(x, y);
                expected.setPixelColor(x, y,
                                       QColor((pixel.red() + desk.red()) / 2,
                                              (pixel.green() + desk.green()) / 2,
                                              (pixel.blue() + desk.blue()) / 2));
            }
        }
        QCOMPARE(pixels::pictureDifference(window->picture(item), expected, closely), QString());
    }

    void fillModesReachTheScreen_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QColor>("corner");
        QTest::addColumn<QColor>("leftEdge");
        // A picture twice as wide as high, red on the left and green on the right, in a square item.
        QTest::newRow("stretch") << 0 << QColor(Qt::red) << QColor(Qt::red);
        QTest::newRow("fit") << 1 << desk << QColor(Qt::red);
        QTest::newRow("crop") << 2 << QColor(Qt::red) << QColor(Qt::red);
    }

    void fillModesReachTheScreen()
    {
        QFETCH(int, mode);
        QFETCH(QColor, corner);
        QFETCH(QColor, leftEdge);
        QImage image = filledWith(Qt::green, QSize(200, 100));
        for (int y = 0; y < 100; ++y) {
            for (int x = 0; x < 100; ++x)
                image.setPixelColor(x, y, Qt::red);
        }
        RoundedImage *item = add(QSize(100, 100));
        item->setFillMode(RoundedImage::FillMode(mode));
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_VERIFY_WITH_TIMEOUT(middle(item) != desk, patience);
        const QImage picture = window->picture(item);
        QVERIFY(pixels::isAlike(picture.pixel(2, 2), corner.rgb()));
        QVERIFY(pixels::isAlike(picture.pixel(2, 50), leftEdge.rgb()));
        QVERIFY(pixels::isAlike(picture.pixel(98, 50), QColor(Qt::green).rgb()));
    }

    void changedSourceSizeLoadsAnew()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setSourceSize(QSize(1, 1));
        item->setSource(folder->add(QStringLiteral("a.png"), quadrants(QSize(100, 100))));
        QTRY_VERIFY_WITH_TIMEOUT(middle(item) != desk, patience);
        QVERIFY(!pixels::isAlike(window->picture(item).pixel(10, 10), qRgb(255, 0, 0)));
        item->setSourceSize(QSize(100, 100));
        QTRY_VERIFY_WITH_TIMEOUT(pixels::isAlike(window->picture(item).pixel(10, 10), qRgb(255, 0, 0)),
                                 patience);
    }

    void radiusCountsAtTheSizeOfItsLastChange()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setRadius(20);
        item->setSourceSize(QSize(200, 200));
        const QImage image = smooth(QSize(200, 200));
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_VERIFY_WITH_TIMEOUT(middle(item) != desk, patience);
        item->setSize(QSizeF(200, 200));
        QCOMPARE(pixels::pictureDifference(window->picture(item),
                                           shaderreference::rounded(image, image.size(), 0.2, {}, desk),
                                           closely),
                 QString());
        item->setRadiusTopLeft(1); // any of the five brings all of them up to date
        QCOMPARE(pixels::pictureDifference(window->picture(item),
                                           shaderreference::rounded(image, image.size(), 0.1, {}, desk),
                                           closely),
                 QString());
    }

    void emptySourceRemovesThePictureAndTheNextFrameBringsTheLastLoadBack()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
        item->setSource(QString());
        QCOMPARE(middle(item), desk);
        item->setRadius(10);
        QCOMPARE(middle(item), QColor(Qt::red));
    }

    void emptySourceOfANewItemShowsNothing()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setRadius(10);
        QCOMPARE(middle(item), desk);
    }

    void oldPictureStaysWhileTheNextLoads()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
        // Large enough to be still loading in the next frame, also after a load that was given up.
        const QImage large = filledWith(Qt::green, QSize(8000, 6000));
        const QString first = folder->add(QStringLiteral("b.png"), large);
        const QString second = folder->add(QStringLiteral("c.png"), large);
        item->setSource(first);
        item->setSource(second);
        item->setRadius(1);
        QCOMPARE(middle(item), QColor(Qt::red));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::green), patience);
    }

    void failedLoadLeavesThePictureUntilTheNextFrame()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
        item->setSource(QStringLiteral(":/nothing.png"));
        QTest::qWait(300);
        QCOMPARE(middle(item), QColor(Qt::red));
        item->setRadius(1);
        QCOMPARE(middle(item), desk);
    }

    // ---- the cache

    void cachedPictureShowsWhileALargerOneLoads()
    {
        const QString path = folder->add(QStringLiteral("a.png"), filledWith(Qt::red, QSize(8000, 6000)));
        {
            const QMutexLocker locker(&roundedImageCacheMutex);
            roundedImageCache.insert(imageCacheKey(path), new QImage(filledWith(Qt::green, QSize(50, 50))));
        }
        RoundedImage *item = add(QSize(100, 100));
        item->setCache(true);
        item->setSource(path);
        QCOMPARE(middle(item), QColor(Qt::green));
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
    }

    void cachedPictureOfEnoughSizeStartsNoLoad()
    {
        const QString path = QStringLiteral(":/nothing.png");
        {
            const QMutexLocker locker(&roundedImageCacheMutex);
            roundedImageCache.insert(imageCacheKey(path), new QImage(filledWith(Qt::green)));
        }
        RoundedImage *item = add(QSize(100, 100));
        item->setCache(true);
        item->setSource(path);
        QCOMPARE(middle(item), QColor(Qt::green));
        // A load would have replaced nothing either; one that is started for a larger item replaces the
        // entry.
        QTest::qWait(100);
        {
            const QMutexLocker locker(&roundedImageCacheMutex);
            QVERIFY(!roundedImageCache.object(imageCacheKey(path))->isNull());
        }
        item->setSize(QSizeF(101, 100));
        item->setFillMode(RoundedImage::PreserveAspectCrop);
        const auto isNullEntry = [&path] {
            const QMutexLocker locker(&roundedImageCacheMutex);
            const QImage *image = roundedImageCache.object(imageCacheKey(path));
            return image && image->isNull();
        };
        QTRY_VERIFY_WITH_TIMEOUT(isNullEntry(), patience);
    }

    void turningTheCacheOnKeepsNothingBeforeTheNextLoad()
    {
        const auto isCached = [](const QString &path) {
            const QMutexLocker locker(&roundedImageCacheMutex);
            return roundedImageCache.contains(imageCacheKey(path));
        };
        RoundedImage *item = add(QSize(100, 100));
        const QString path = folder->add(QStringLiteral("a.png"), filledWith(Qt::red));
        item->setSource(path);
        QTRY_COMPARE_WITH_TIMEOUT(middle(item), QColor(Qt::red), patience);
        item->setCache(true);
        QTest::qWait(100);
        QVERIFY(!isCached(path));
        item->setFillMode(RoundedImage::PreserveAspectFit);
        QTRY_VERIFY_WITH_TIMEOUT(isCached(path), patience);
    }

    // ---- properties

    void settersNotifyOnceOfEachNewValue()
    {
        qRegisterMetaType<RoundedImage::FillMode>();
        RoundedImage item;
        QSignalSpy source(&item, &RoundedImage::sourceChanged);
        QSignalSpy radius(&item, &RoundedImage::radiusChanged);
        QSignalSpy fillMode(&item, &RoundedImage::fillModeChanged);
        QSignalSpy cache(&item, &RoundedImage::cacheChanged);
        QSignalSpy sourceSize(&item, &RoundedImage::sourceSizeChanged);
        for (int i = 0; i < 2; ++i) {
            item.setSource(QStringLiteral(":/x"));
            item.setRadius(-3.5);
            item.setFillMode(RoundedImage::PreserveAspectCrop);
            item.setCache(true);
            item.setSourceSize(QSize(3, 4));
        }
        item.setRadius(-3.5 * (1 + 1e-14));
        for (const QSignalSpy *spy : {&source, &radius, &fillMode, &cache, &sourceSize})
            QCOMPARE(spy->count(), 1);
        QCOMPARE(source.at(0).at(0).toString(), QStringLiteral(":/x"));
        QCOMPARE(radius.at(0).at(0).toDouble(), -3.5);
        QCOMPARE(cache.at(0).at(0).toBool(), true);
        QCOMPARE(sourceSize.at(0).at(0).toSize(), QSize(3, 4));
        QCOMPARE(item.radius(), -3.5); // stored as it came
    }

    void loadOutsideAWindowTakesTheItemsOwnSize()
    {
        RoundedImage item;
        item.setSize(QSizeF(30.4, 20.6));
        item.setCache(true);
        const QString path = folder->add(QStringLiteral("a.png"), filledWith(Qt::red));
        item.setSource(path);
        const auto size = [&path] {
            const QMutexLocker locker(&roundedImageCacheMutex);
            const QImage *image = roundedImageCache.object(imageCacheKey(path));
            return image ? image->size() : QSize();
        };
        QTRY_COMPARE_WITH_TIMEOUT(size(), QSize(30, 21), patience);
    }

    void pictureMovesToAnotherWindowWithItsItem()
    {
        RoundedImage *item = add(QSize(100, 100));
        item->setRadius(20);
        const QImage image = smooth(QSize(100, 100));
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_VERIFY_WITH_TIMEOUT(middle(item) != desk, patience);
        ItemWindow other(QSize(200, 200), desk);
        QVERIFY(other.open());
        item->setParentItem(other.contentItem());
        QCOMPARE(pixels::pictureDifference(other.picture(item),
                                           shaderreference::rounded(image, image.size(), 0.2, {}, desk),
                                           closely),
                 QString());
        item->setParentItem(window->contentItem());
        QCOMPARE(pixels::pictureDifference(window->picture(item),
                                           shaderreference::rounded(image, image.size(), 0.2, {}, desk),
                                           closely),
                 QString());
    }
};

QTEST_MAIN(TestRoundedImage)
#include "tst_roundedimage.moc"
