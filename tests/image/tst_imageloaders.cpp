// The workers of the image items: what they make of a source, and what their caches keep.

#include "image/imagecaches.h"
#include "image/imagepreviewerloader.h"
#include "image/imagerender.h"
#include "image/imagerenderloader.h"
#include "image/quadraticblur.h"
#include "image/roundedimageloader.h"
#include "testpictures.h"

#include <QMutexLocker>
#include <QPainter>
#include <QtConcurrentRun>
#include <QtTest>

#include <qwidget.h>

QT_BEGIN_NAMESPACE
Q_WIDGETS_EXPORT void qt_blurImage(QPainter *painter, QImage &image, qreal radius, bool quality,
                                   bool alphaOnly, int transposed);
QT_END_NAMESPACE

using namespace testpictures;

namespace {

constexpr auto anyFillMode = RoundedImage::Stretch;

QImage cachedRounded(const QString &source)
{
    const QMutexLocker locker(&roundedImageCacheMutex);
    const QImage *image = roundedImageCache.object(imageCacheKey(source));
    return image ? *image : QImage();
}

bool isInRoundedCache(const QString &source)
{
    const QMutexLocker locker(&roundedImageCacheMutex);
    return roundedImageCache.contains(imageCacheKey(source));
}

bool isInRenderCache(const QString &source)
{
    const QMutexLocker locker(&renderImageCacheMutex);
    return renderImageCache.contains(imageCacheKey(source));
}

/// What a fill mode means, with nothing but Qt's own scaling.
QImage filled(const QImage &image, const QSize &size, int mode)
{
    if (mode == RoundedImage::Stretch)
        return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (mode == RoundedImage::PreserveAspectCrop) {
        const QImage scaled = image.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
        return scaled.copy((scaled.width() - size.width()) / 2, (scaled.height() - size.height()) / 2,
                           size.width(), size.height());
    }
    if (mode != RoundedImage::PreserveAspectFit)
        return image;
    const QImage scaled = image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage canvas(size, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(0);
    QPainter painter(&canvas);
    painter.drawImage((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2, scaled);
    painter.end();
    return canvas;
}

QImage thumbnail(QImage image, int radius)
{
    image = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (image.width() > 32)
        image = image.scaledToWidth(32, Qt::SmoothTransformation);
    quadraticBlur(image.bits(), image.width(), image.height(), 4, radius);
    return image;
}

QString base64Of(const QImage &image)
{
    return QString::fromLatin1(encoded(image, "png").toBase64());
}

} // namespace

class TestImageLoaders : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        roundedImageCache.clear();
        renderImageCache.clear();
    }

    // ---- caches

    void cacheKeyIsTheHashOfTheSource()
    {
        QCOMPARE(imageCacheKey(QString()), QStringLiteral("d41d8cd98f00b204e9800998ecf8427e"));
        QCOMPARE(imageCacheKey(QStringLiteral("abc")), QStringLiteral("900150983cd24fb0d6963f7d28e17f72"));
    }

    void cachesHoldFiftyMebibytesOfPixels()
    {
        QCOMPARE(roundedImageCache.maxCost(), 52428800);
        QCOMPARE(renderImageCache.maxCost(), 52428800);
        QCOMPARE(imageCacheCost(QImage(30, 20, QImage::Format_Grayscale8)), 2400);
        QCOMPARE(imageCacheCost(QImage()), 0);
    }

    void poolOfTheRendererHasFourThreadsAtMost()
    {
        renderThreadPool.setMaxThreadCount(16);
        const ImageRender first;
        QCOMPARE(renderThreadPool.maxThreadCount(), 4);
        renderThreadPool.setMaxThreadCount(2);
        const ImageRender second;
        QCOMPARE(renderThreadPool.maxThreadCount(), 2);
        renderThreadPool.setMaxThreadCount(4);
    }

    // ---- RoundedImage

    void roundedPictureFillsItsSize_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("mode");

        const std::pair<const char *, QSize> pictures[] = {{"wide", QSize(90, 40)},
                                                           {"tall", QSize(31, 77)},
                                                           {"square", QSize(64, 64)},
                                                           {"dot", QSize(1, 1)},
                                                           {"strip", QSize(1, 500)}};
        const std::pair<const char *, QSize> sizes[] = {{"square", QSize(50, 50)},
                                                        {"wide", QSize(121, 33)},
                                                        {"tall", QSize(17, 200)},
                                                        {"dot", QSize(1, 1)}};
        const std::pair<const char *, int> modes[] = {
            {"stretch", 0}, {"fit", 1}, {"crop", 2}, {"unknown", 9}};
        for (const auto &picture : pictures) {
            for (const auto &size : sizes) {
                for (const auto &mode : modes)
                    QTest::addRow("%s picture, %s size, %s", picture.first, size.first, mode.first)
                        << picture.second << size.second << mode.second;
            }
        }
    }

    void roundedPictureFillsItsSize()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, size);
        QFETCH(int, mode);
        Folder folder;
        const QImage image = smooth(picture, true);
        const QString path = folder.add(QStringLiteral("a.png"), image);
        const QImage loaded = loadRoundedImage(path, size, RoundedImage::FillMode(mode), false);
        QCOMPARE(loaded, filled(QImage(path), size, mode));
        QVERIFY(!isInRoundedCache(path));
    }

    void roundedPhotoFillsItsSize_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("stretch") << 0;
        QTest::newRow("fit") << 1;
        QTest::newRow("crop") << 2;
    }

    void roundedPhotoFillsItsSize()
    {
        QFETCH(int, mode);
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.jpg"), smooth(QSize(1600, 1208)), "jpeg", 92);
        const QSize size(111, 95);
        const QImage loaded = loadRoundedImage(path, size, RoundedImage::FillMode(mode), false);
        const int difference = greatestDifference(loaded, filled(QImage(path), size, mode));
        QVERIFY2(difference <= 4, qPrintable(QString::number(difference)));
    }

    void letterboxIsTransparent()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), quadrants(QSize(100, 50)));
        const QImage loaded = loadRoundedImage(path, QSize(100, 100), RoundedImage::PreserveAspectFit, false);
        QCOMPARE(loaded.pixel(50, 24), qRgba(0, 0, 0, 0));
        QCOMPARE(loaded.pixel(10, 26), qRgb(255, 0, 0));
        QCOMPARE(loaded.pixel(10, 73), qRgb(255, 255, 0));
        QCOMPARE(loaded.pixel(50, 76), qRgba(0, 0, 0, 0));
    }

    void withoutAValidSizeNothingIsRead()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), quadrants(QSize(10, 10)));
        QVERIFY(loadRoundedImage(path, QSize(), anyFillMode, false).isNull());
        QVERIFY(loadRoundedImage(path, QSize(-1, 5), anyFillMode, false).isNull());
    }

    void emptyAndGiganticSizesGiveNoPicture_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("mode");
        for (int mode = 0; mode < 3; ++mode) {
            QTest::addRow("empty, mode %d", mode) << QSize(0, 0) << mode;
            QTest::addRow("flat, mode %d", mode) << QSize(10, 0) << mode;
            QTest::addRow("gigantic, mode %d", mode) << QSize(100000, 100000) << mode;
            QTest::addRow("largest, mode %d", mode) << QSize(0x7fffffff, 0x7fffffff) << mode;
        }
    }

    void emptyAndGiganticSizesGiveNoPicture()
    {
        QFETCH(QSize, size);
        QFETCH(int, mode);
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), quadrants(QSize(10, 10)));
        QVERIFY(loadRoundedImage(path, size, RoundedImage::FillMode(mode), false).isNull());
    }

    /// Scaled until it covers an avatar, such a strip would take gigabytes.
    void stripsAreCutBeforeTheyGrowBeyondTheLimit()
    {
        Folder folder;
        QImage strip(1, 30000, QImage::Format_RGB32);
        strip.fill(Qt::red);
        for (int y = 14990; y < 15010; ++y)
            strip.setPixel(0, y, qRgb(0, 0, 255));
        const QString path = folder.add(QStringLiteral("strip.png"), strip);
        const QImage loaded =
            loadRoundedImage(path, QSize(200, 150), RoundedImage::PreserveAspectCrop, false);
        QCOMPARE(loaded.size(), QSize(200, 150));
        QCOMPARE(loaded.pixel(0, 0), qRgb(0, 0, 255));
        QCOMPARE(loaded.pixel(199, 149), qRgb(0, 0, 255));
    }

    void largerEntryAnswersSmallerRequestWithItsOldFillMode()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), smooth(QSize(90, 40)));
        const QImage first = loadRoundedImage(path, QSize(100, 100), RoundedImage::PreserveAspectFit, true);
        QCOMPARE(cachedRounded(path), first);
        QCOMPARE(loadRoundedImage(path, QSize(50, 50), RoundedImage::Stretch, true), first);
        QCOMPARE(loadRoundedImage(path, QSize(100, 100), RoundedImage::Stretch, false), first);
        // An invalid size is smaller than anything.
        QCOMPARE(loadRoundedImage(path, QSize(), RoundedImage::Stretch, false), first);

        const QImage second = loadRoundedImage(path, QSize(200, 200), RoundedImage::Stretch, true);
        QCOMPARE(second, filled(QImage(path), QSize(200, 200), RoundedImage::Stretch));
        QCOMPARE(cachedRounded(path), second);
    }

    void entryThatIsTooSmallInOneDirectionIsNoAnswer()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), smooth(QSize(90, 40)));
        (void)loadRoundedImage(path, QSize(100, 50), RoundedImage::Stretch, true);
        QCOMPARE(loadRoundedImage(path, QSize(100, 51), RoundedImage::Stretch, false).size(), QSize(100, 51));
        QCOMPARE(loadRoundedImage(path, QSize(101, 50), RoundedImage::Stretch, false).size(), QSize(101, 50));
        QCOMPARE(cachedRounded(path).size(), QSize(100, 50));
    }

    void failedLoadIsCachedAsAPictureWithoutCost()
    {
        const QString path = QStringLiteral(":/nothing.png");
        QVERIFY(loadRoundedImage(path, QSize(10, 10), anyFillMode, true).isNull());
        QVERIFY(isInRoundedCache(path));
        QCOMPARE(roundedImageCache.totalCost(), 0);
    }

    void pictureLargerThanTheCacheIsNotKept()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), quadrants(QSize(4, 4)));
        (void)loadRoundedImage(path, QSize(100, 100), anyFillMode, true);
        QVERIFY(isInRoundedCache(path));
        // 3,700 by 3,600 pixels are 53 million bytes.
        QCOMPARE(loadRoundedImage(path, QSize(3700, 3600), anyFillMode, true).size(), QSize(3700, 3600));
        QVERIFY(!isInRoundedCache(path));
    }

    void leastRecentlyUsedPictureGoesFirst()
    {
        Folder folder;
        QStringList paths;
        for (int i = 0; i < 3; ++i)
            paths += folder.add(QString::number(i), quadrants(QSize(4, 4)));
        const QSize size(2500, 2000); // 20 million bytes, so two fit
        (void)loadRoundedImage(paths.at(0), size, anyFillMode, true);
        (void)loadRoundedImage(paths.at(1), size, anyFillMode, true);
        (void)loadRoundedImage(paths.at(0), size, anyFillMode, true);
        (void)loadRoundedImage(paths.at(2), size, anyFillMode, true);
        QVERIFY(isInRoundedCache(paths.at(0)));
        QVERIFY(!isInRoundedCache(paths.at(1)));
        QVERIFY(isInRoundedCache(paths.at(2)));
    }

    // ---- ImageRender

    void foregroundKeepsTwiceTheSize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("expected");

        QTest::newRow("larger") << QSize(50, 50) << QSize(100, 50);
        QTest::newRow("higher alone") << QSize(500, 20) << QSize(80, 40);
        QTest::newRow("wider alone") << QSize(20, 500) << QSize(40, 20);
        QTest::newRow("exactly twice") << QSize(100, 50) << QSize(200, 100);
        QTest::newRow("smaller") << QSize(150, 150) << QSize(200, 100);
        QTest::newRow("empty size") << QSize(0, 10) << QSize(200, 100);
        QTest::newRow("no size") << QSize() << QSize(200, 100);
    }

    void foregroundKeepsTwiceTheSize()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, expected);
        Folder folder;
        const QImage image = smooth(QSize(200, 100), true);
        const QString path = folder.add(QStringLiteral("a.png"), image);
        for (const bool cache : {false, true}) {
            const QImage loaded = loadRenderSource(path, size, cache);
            QCOMPARE(loaded, expected == image.size()
                                 ? image
                                 : image.scaled(expected, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            QVERIFY(!isInRenderCache(path));
        }
    }

    void failedForegroundIsNull()
    {
        QVERIFY(loadRenderSource(QStringLiteral(":/nothing.png"), QSize(10, 10), false).isNull());
        QVERIFY(loadRenderSource(QString(), QSize(10, 10), false).isNull());
    }

    void blurredBackgroundIsAThumbnail_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<double>("blurRadius");
        QTest::addColumn<int>("radius");

        QTest::newRow("wide") << QSize(200, 100) << 3.0 << 3;
        QTest::newRow("the fraction is cut off") << QSize(200, 100) << 4.9 << 4;
        QTest::newRow("1.5 is a radius of 1, which changes the size alone") << QSize(64, 64) << 1.5 << 1;
        QTest::newRow("as narrow as the thumbnail") << QSize(32, 200) << 5.0 << 5;
        QTest::newRow("narrower") << QSize(9, 200) << 5.0 << 5;
        QTest::newRow("enormous radius") << QSize(200, 100) << 1e300 << 248;
    }

    void blurredBackgroundIsAThumbnail()
    {
        QFETCH(QSize, picture);
        QFETCH(double, blurRadius);
        QFETCH(int, radius);
        Folder folder;
        const QImage image = smooth(picture, true);
        const QString path = folder.add(QStringLiteral("a.png"), image);
        const QImage expected = thumbnail(QImage(path), radius);

        QCOMPARE(loadRenderBackground(path, QSize(5, 5), blurRadius), expected);
        QVERIFY(isInRenderCache(path));
        const QString data = base64Of(image);
        QCOMPARE(loadRenderBackground(data, QSize(5, 5), blurRadius), expected);
        QVERIFY(isInRenderCache(data));
    }

    void blurredPhotoIsAThumbnail()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.jpg"), smooth(QSize(1608, 904)), "jpeg", 92);
        const QImage loaded = loadRenderBackground(path, QSize(), 3);
        QCOMPARE(loaded.size(), QImage(path).scaledToWidth(32, Qt::SmoothTransformation).size());
        QVERIFY(greatestDifference(loaded, thumbnail(QImage(path), 3)) <= 4);
    }

    void backgroundWithoutBlurIsCachedOnlyIfItWasScaled()
    {
        Folder folder;
        const QImage image = smooth(QSize(200, 100));
        const QString kept = folder.add(QStringLiteral("a.png"), image);
        QCOMPARE(loadRenderBackground(kept, QSize(50, 50), 1.0),
                 QImage(kept).scaled(QSize(50, 50), Qt::KeepAspectRatio, Qt::SmoothTransformation));
        QVERIFY(isInRenderCache(kept));

        for (const QSize &size : {QSize(200, 100), QSize(300, 300), QSize(), QSize(0, 10)}) {
            const QString path = folder.add(QStringLiteral("b.png"), image);
            QCOMPARE(loadRenderBackground(path, size, 1.0), image);
            QVERIFY(!isInRenderCache(path));
        }
    }

    void failedBackgroundFileIsNotCached()
    {
        const QString path = QStringLiteral(":/nothing.png");
        QVERIFY(loadRenderBackground(path, QSize(10, 10), 0).isNull());
        QVERIFY(loadRenderBackground(path, QSize(10, 10), 5).isNull());
        QVERIFY(!isInRenderCache(path));
    }

    void cachedBackgroundAnswersWhateverIsAsked()
    {
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), smooth(QSize(200, 100)));
        const QImage first = loadRenderBackground(path, QSize(50, 50), 3);
        QCOMPARE(loadRenderBackground(path, QSize(10, 10), 20), first);
        QCOMPARE(loadRenderBackground(path, QSize(10, 10), 0), first);
        renderImageCache.clear();
        QVERIFY(loadRenderBackground(path, QSize(50, 50), 20) != first);
    }

    void sourceWithoutColonIsPictureData()
    {
        const QImage image = smooth(QSize(60, 30), true);
        const QString data = base64Of(image);
        // The size plays no part.
        QCOMPARE(loadRenderBackground(data, QSize(5, 5), 1.0), image);
        QVERIFY(isInRenderCache(data));
        QCOMPARE(loadPreviewBackground(data, QSize(5, 5), 1.0), image);
    }

    void relativePathIsPictureDataAlsoWhereAFileHasThatName()
    {
        Folder folder;
        (void)folder.add(QStringLiteral("name.png"), smooth(QSize(6, 6)));
        const QString old = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder.path(QString())));
        const bool exists = QFile::exists(QStringLiteral("name.png"));
        const QImage render = loadRenderBackground(QStringLiteral("name.png"), QSize(5, 5), 3);
        const QImage preview = loadPreviewBackground(QStringLiteral("name.png"), QSize(5, 5), 3);
        QDir::setCurrent(old);
        QVERIFY(exists);
        QVERIFY(render.isNull());
        QVERIFY(preview.isNull());
    }

    void brokenPictureDataIsCachedAsAPictureWithoutCost_data()
    {
        QTest::addColumn<QString>("data");
        QTest::newRow("empty") << QString();
        QTest::newRow("no base64") << QStringLiteral("%%%%");
        QTest::newRow("no picture") << QStringLiteral("aGVsbG8=");
        QTest::newRow("cut off") << base64Of(smooth(QSize(60, 30))).left(30);
        QTest::newRow("bomb") << QString::fromLatin1(pngHeader(QSize(60000, 60000)).toBase64());
    }

    void brokenPictureDataIsCachedAsAPictureWithoutCost()
    {
        QFETCH(QString, data);
        for (const double radius : {0.0, 5.0}) {
            renderImageCache.clear();
            QVERIFY(loadRenderBackground(data, QSize(5, 5), radius).isNull());
            QVERIFY(isInRenderCache(data));
            QCOMPARE(renderImageCache.totalCost(), 0);
            QVERIFY(loadPreviewBackground(data, QSize(5, 5), radius).isNull());
        }
    }

    // ---- ImagePreviewer

    void previewedPictureIsScaledDownIntoItsSize_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("expected");

        QTest::newRow("larger") << QSize(50, 50) << QSize(50, 25);
        QTest::newRow("higher alone") << QSize(500, 20) << QSize(40, 20);
        QTest::newRow("exactly that") << QSize(200, 100) << QSize(200, 100);
        QTest::newRow("smaller") << QSize(300, 300) << QSize(200, 100);
        QTest::newRow("empty size") << QSize(0, 10) << QSize(200, 100);
        QTest::newRow("no size") << QSize() << QSize(200, 100);
    }

    void previewedPictureIsScaledDownIntoItsSize()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, expected);
        Folder folder;
        const QImage image = smooth(QSize(200, 100));
        const QString path = folder.add(QStringLiteral("a.png"), image);
        const QImage wanted = expected == image.size()
                                  ? image
                                  : image.scaled(expected, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        QCOMPARE(loadPreviewSource(path, size), wanted);
        QCOMPARE(loadPreviewBackground(path, size, 1.0), wanted);
        QCOMPARE(loadPreviewBackground(path, size, 5).size(), expected);
    }

    void previewedDataIsBlurredAtFiftyPixelsOfItsShorterSide_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("expected");

        QTest::newRow("wide") << QSize(200, 100) << QSize(100, 50);
        QTest::newRow("tall") << QSize(100, 200) << QSize(50, 100);
        QTest::newRow("square") << QSize(80, 80) << QSize(50, 50);
        QTest::newRow("small ones grow") << QSize(10, 20) << QSize(50, 100);
        QTest::newRow("dot") << QSize(1, 1) << QSize(50, 50);
    }

    void previewedDataIsBlurredAtFiftyPixelsOfItsShorterSide()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, expected);
        QCOMPARE(loadPreviewBackground(base64Of(smooth(picture)), QSize(7, 7), 2.0).size(), expected);
    }

    /// The blur is Qt's own, at the picture's own size.
    void fileBackgroundIsBlurredAtItsSize()
    {
        Folder folder;
        QImage image(200, 100, QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter(&image).fillRect(100, 0, 100, 100, Qt::white);
        const QString path = folder.add(QStringLiteral("a.png"), image);
        QImage expected(image.size(), QImage::Format_ARGB32_Premultiplied);
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
            QImage copy = image;
            qt_blurImage(&painter, copy, 12.0, true, false, 0);
        }
        const QImage blurred = loadPreviewBackground(path, QSize(), 12);
        QCOMPARE(blurred, expected);
        const int step = qRed(blurred.pixel(100, 50)) - qRed(blurred.pixel(99, 50));
        QVERIFY2(step < 128, qPrintable(QString::number(step)));
        QVERIFY(qRed(blurred.pixel(40, 50)) < 3);
        QVERIFY(qRed(blurred.pixel(160, 50)) > 252);
    }

    // ---- threads

    void workersShareTheCachesSafely()
    {
        Folder folder;
        QStringList paths;
        for (int i = 0; i < 8; ++i)
            paths += folder.add(QString::number(i), smooth(QSize(40 + i, 30)));
        QThreadPool pool;
        pool.setMaxThreadCount(8);
        QVector<QFuture<QImage>> futures;
        for (int i = 0; i < 400; ++i) {
            const QString path = paths.at(i % paths.size());
            const QSize size(20 + i % 7, 20);
            futures += QtConcurrent::run(&pool, loadRoundedImage, path, size, RoundedImage::FillMode(i % 3),
                                         i / 8 % 2 == 0);
            futures += QtConcurrent::run(&pool, loadRenderBackground, path, size, i % 5 * 1.0);
        }
        for (QFuture<QImage> &future : futures)
            QVERIFY(!future.result().isNull());
        for (const QString &path : qAsConst(paths))
            QVERIFY(isInRoundedCache(path));
    }
};

QTEST_MAIN(TestImageLoaders)
#include "tst_imageloaders.moc"
