// The picture methods on pictures whose every pixel tells where it stood.

#include "util/imutil.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QPixmapCache>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// A picture in which the pixel at x, y has red x and green y.
[[nodiscard]] QImage coordinates(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x % 256, y % 256, 7));
    }
    return image;
}

[[nodiscard]] QImage plain(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::darkCyan);
    return image;
}

/// A JPEG whose EXIF block asks for `orientation`, 1 to 8.
[[nodiscard]] QByteArray jpegWithOrientation(const QImage &image, char orientation)
{
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    image.save(&buffer, "JPEG", 100);
    QByteArray exif("Exif\0\0", 6);
    exif += QByteArray("MM\0\x2a\0\0\0\x08", 8);         // big-endian, directory at 8
    exif += QByteArray("\0\x01", 2);                     // one entry
    exif += QByteArray("\x01\x12\0\x03\0\0\0\x01\0", 9); // orientation, a short, one of them
    exif += orientation;
    exif += QByteArray("\0\0\0\0\0\0", 6); // rest of the value, no further directory
    QByteArray segment("\xff\xe1", 2);
    segment += char((exif.size() + 2) >> 8);
    segment += char((exif.size() + 2) & 0xff);
    return jpeg.insert(2, segment + exif);
}

using Pixel = QPoint (*)(int x, int y, const QSize &size);

/// The picture whose pixel at x, y is that of `source` at `from(x, y)`.
[[nodiscard]] QImage rearranged(const QImage &source, const QSize &size, Pixel from)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, source.pixel(from(x, y, source.size())));
    }
    return image;
}

const QRect wholeAvatar(5, 10, 20, 20);

} // namespace

Q_DECLARE_METATYPE(Pixel)

class TestPictures : public QObject
{
    Q_OBJECT

private:
    QScopedPointer<QTemporaryDir> temporary;
    ImUtil util;

    [[nodiscard]] QString at(const QString &name) const
    {
        return temporary->path() + QLatin1Char('/') + name;
    }
    [[nodiscard]] static QString url(const QString &path)
    {
        return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    }
    [[nodiscard]] QString write(const QString &name, const QByteArray &content) const
    {
        QFile file(at(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? at(name)
                                                                                        : QString();
    }
    [[nodiscard]] QString save(const QString &name, const QImage &image) const
    {
        return image.save(at(name)) ? at(name) : QString();
    }
    [[nodiscard]] static QImage load(const QString &path)
    {
        return QImage(path).convertToFormat(QImage::Format_RGB32);
    }

private Q_SLOTS:
    void init()
    {
        temporary.reset(new QTemporaryDir);
        QVERIFY(temporary->isValid());
    }

    void onlyWideOrTallPicturesAreScaledForTheChat_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("sent");
        QTest::addColumn<bool>("scaled");
        QTest::newRow("tiny") << QSize(1, 1) << QSize(1, 1) << false;
        QTest::newRow("at both limits") << QSize(200, 799) << QSize(200, 799) << false;
        QTest::newRow("too tall") << QSize(200, 800) << QSize(50, 200) << true;
        QTest::newRow("too wide") << QSize(201, 100) << QSize(200, 99) << true;
        QTest::newRow("landscape") << QSize(1000, 500) << QSize(200, 100) << true;
        QTest::newRow("square") << QSize(600, 600) << QSize(200, 200) << true;
        QTest::newRow("portrait within its width") << QSize(300, 450) << QSize(200, 300) << true;
        QTest::newRow("portrait bounded by its width") << QSize(300, 600) << QSize(150, 300) << true;
        QTest::newRow("tall strip") << QSize(10, 1600) << QSize(0, 0) << true;
    }
    void onlyWideOrTallPicturesAreScaledForTheChat()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, sent);
        QFETCH(bool, scaled);
        const QString source = save(QStringLiteral("a b.png"), plain(size.width(), size.height()));
        QVERIFY(!source.isEmpty());
        const QString destination = at(QStringLiteral("new/folder/c d.png"));
        const QVariantMap result = util.scaleImage(url(source), url(destination));
        if (sent.isEmpty()) {
            // 10 by 10 is the box, so the width would be a fraction: Qt keeps one pixel.
            sent = QSize(1, 10);
        }
        const QImage saved(destination);
        QCOMPARE(saved.size(), sent);
        QCOMPARE(result.size(), 3);
        QCOMPARE(result.value(QStringLiteral("w")).toInt(), sent.width());
        QCOMPARE(result.value(QStringLiteral("h")).toInt(), sent.height());
        QCOMPARE(result.value(QStringLiteral("size")).toInt(), sent.width() * sent.height() * 4);
        const int type = scaled ? int(QMetaType::Int) : int(QMetaType::Float);
        QCOMPARE(result.value(QStringLiteral("w")).userType(), type);
        QCOMPARE(result.value(QStringLiteral("h")).userType(), type);
    }

    void aPictureThatFitsIsSentUnchanged()
    {
        const QImage image = coordinates(150, 200);
        const QString source = save(QStringLiteral("a.png"), image);
        QVERIFY(!util.scaleImage(source, at(QStringLiteral("b.png"))).isEmpty());
        QCOMPARE(load(at(QStringLiteral("b.png"))), image);
    }

    void aThumbnailShowsTheWholePicture()
    {
        QImage image = plain(1000, 500);
        QPainter(&image).fillRect(500, 0, 500, 500, Qt::yellow);
        const QString source = save(QStringLiteral("a.png"), image);
        QVERIFY(!util.scaleImage(source, at(QStringLiteral("b.png"))).isEmpty());
        QImage expected = plain(200, 100);
        QPainter(&expected).fillRect(100, 0, 100, 100, Qt::yellow);
        QCOMPARE(load(at(QStringLiteral("b.png"))), expected);
    }

    void aThumbnailOfNothingIsNotMade()
    {
        const QString text = write(QStringLiteral("text.png"), "not a picture");
        const QString good = save(QStringLiteral("good.png"), plain(300, 300));
        const QString small = save(QStringLiteral("small.png"), plain(30, 30));
        QVERIFY(util.scaleImage(at(QStringLiteral("missing.png")), at(QStringLiteral("x/b.png"))).isEmpty());
        QVERIFY(!QFileInfo::exists(at(QStringLiteral("x"))));
        QVERIFY(util.scaleImage(text, at(QStringLiteral("b.png"))).isEmpty());
        QVERIFY(util.scaleImage(QString(), at(QStringLiteral("b.png"))).isEmpty());
        for (const QString &source : {good, small}) {
            QVERIFY(util.scaleImage(source, text + QStringLiteral("/b.png")).isEmpty());
            QVERIFY(util.scaleImage(source, at(QStringLiteral("b.unknown"))).isEmpty());
        }
    }

    void aPictureIsOnlyEverReduced_data()
    {
        QTest::addColumn<int>("w");
        QTest::addColumn<int>("h");
        QTest::addColumn<QSize>("written"); // empty where the answer is false
        QTest::newRow("same size") << 100 << 50 << QSize(100, 50);
        QTest::newRow("half") << 50 << 25 << QSize(50, 25);
        QTest::newRow("box decides by width") << 50 << 50 << QSize(50, 25);
        QTest::newRow("box decides by height") << 100 << 10 << QSize(20, 10);
        QTest::newRow("wider") << 101 << 10 << QSize();
        QTest::newRow("taller") << 10 << 51 << QSize();
        QTest::newRow("both larger") << 200 << 100 << QSize();
    }
    void aPictureIsOnlyEverReduced()
    {
        QFETCH(int, w);
        QFETCH(int, h);
        QFETCH(QSize, written);
        const QString source = save(QStringLiteral("a b.png"), plain(100, 50));
        const QString destination = at(QStringLiteral("new/b.png"));
        QCOMPARE(util.reduceImage(url(source), url(destination), w, h), !written.isEmpty());
        QCOMPARE(QFileInfo::exists(destination), !written.isEmpty());
        if (!written.isEmpty())
            QCOMPARE(QImage(destination).size(), written);
    }

    void reducingNothingSucceedsUnlessANameIsMissing()
    {
        const QString missing = at(QStringLiteral("missing.png"));
        const QString destination = at(QStringLiteral("new/b.png"));
        QVERIFY(util.reduceImage(missing, destination, 10, 10));
        QVERIFY(!QFileInfo::exists(destination));
        QVERIFY(QFileInfo(at(QStringLiteral("new"))).isDir());
        QVERIFY(!util.reduceImage(QString(), destination, 10, 10));
        QVERIFY(!util.reduceImage(missing, QString(), 10, 10));
        const QString text = write(QStringLiteral("text.png"), "not a picture");
        QVERIFY(!util.reduceImage(text, destination, 10, 10));
        QVERIFY(!util.reduceImage(missing, text + QStringLiteral("/x/b.png"), 10, 10));
    }

    void infoOfAPictureIsThatOfItsFile()
    {
        const QString path = write(QStringLiteral("a b.png"), "12345");
        QCOMPARE(util.getImageInfo(url(path)),
                 (QVariantMap{{QStringLiteral("filePath"), path},
                              {QStringLiteral("size"), qlonglong(5)},
                              {QStringLiteral("name"), QStringLiteral("a b.png")}}));
        QCOMPARE(util.getImageInfo(at(QStringLiteral("missing"))),
                 (QVariantMap{{QStringLiteral("filePath"), QString()},
                              {QStringLiteral("size"), qlonglong(0)},
                              {QStringLiteral("name"), QString()}}));
    }

    void sizeFollowsTheOrientationOfTheFile_data()
    {
        QTest::addColumn<int>("orientation");
        for (int orientation = 1; orientation <= 8; ++orientation)
            QTest::newRow(qPrintable(QString::number(orientation))) << orientation;
    }
    void sizeFollowsTheOrientationOfTheFile()
    {
        QFETCH(int, orientation);
        const QString path =
            write(QStringLiteral("a b.jpg"), jpegWithOrientation(plain(64, 32), char(orientation)));
        // Orientations 5 to 8 lay the picture on its side.
        QCOMPARE(util.imageSize(url(path)), orientation >= 5 ? QSizeF(32, 64) : QSizeF(64, 32));
    }

    void sizeOfWhatIsNoPictureIsInvalid()
    {
        QCOMPARE(util.imageSize(save(QStringLiteral("a.png"), plain(3, 5))), QSizeF(3, 5));
        QVERIFY(!util.imageSize(write(QStringLiteral("b.png"), "text")).isValid());
        QVERIFY(!util.imageSize(at(QStringLiteral("missing"))).isValid());
        QVERIFY(!util.imageSize(temporary->path()).isValid());
        QVERIFY(!util.imageSize(QString()).isValid());
    }

    void theContentDecidesWhatIsAPicture()
    {
        const QString picture = save(QStringLiteral("a.png"), plain(3, 5));
        QVERIFY(QFile::rename(picture, at(QStringLiteral("a b.txt"))));
        QVERIFY(util.isImageFormat(at(QStringLiteral("a b.txt"))));
        QVERIFY(util.isImageFormat(url(at(QStringLiteral("a b.txt")))));
        QVERIFY(!util.isImageFormat(write(QStringLiteral("b.png"), "text")));
        QVERIFY(!util.isImageFormat(write(QStringLiteral("c.png"), "")));
        QVERIFY(!util.isImageFormat(at(QStringLiteral("missing.png"))));
        QVERIFY(!util.isImageFormat(temporary->path()));
    }

    void aPictureIsConvertedUnderTheFirstPartOfItsName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("converted");
        QTest::newRow("several dots") << QStringLiteral("imutil-x.tar.gz") << QStringLiteral("imutil-x.webp");
        QTest::newRow("one dot") << QStringLiteral("imutil y.png") << QStringLiteral("imutil y.webp");
        QTest::newRow("no dot") << QStringLiteral("imutil-z") << QStringLiteral("imutil-z.webp");
        QTest::newRow("large letters are another suffix")
            << QStringLiteral("imutil-a.WEBP") << QStringLiteral("imutil-a.webp");
        QTest::newRow("needs no conversion") << QStringLiteral("imutil-b.webp") << QString();
        QTest::newRow("nothing before the dot") << QStringLiteral(".imutil.png") << QString();
    }
    void aPictureIsConvertedUnderTheFirstPartOfItsName()
    {
        QFETCH(QString, name);
        QFETCH(QString, converted);
        const QString folder = QStandardPaths::standardLocations(QStandardPaths::TempLocation).constFirst();
        const QString out = converted.isEmpty() ? QString() : folder + QLatin1Char('/') + converted;
        if (!out.isEmpty())
            QFile::remove(out);
        QVERIFY(plain(20, 10).save(at(name), "PNG"));

        const QString result = util.imageSaveAsTmpWebp(at(name));
        if (!QImageWriter::supportedImageFormats().contains("webp")) {
            QCOMPARE(result, QString());
            QVERIFY(out.isEmpty() || !QFileInfo::exists(out));
            return;
        }
        QCOMPARE(result, out);
        if (!out.isEmpty()) {
            QImageReader reader(out);
            QCOMPARE(reader.format(), QByteArray("webp"));
            QCOMPARE(reader.read().size(), QSize(20, 10));
            QVERIFY(QFile::remove(out));
        }
    }

    void aNameWithoutAPictureIsNotConverted()
    {
        QCOMPARE(util.imageSaveAsTmpWebp(QString()), QString());
        QCOMPARE(util.imageSaveAsTmpWebp(QStringLiteral("a.webp")), QString());
        QCOMPARE(util.imageSaveAsTmpWebp(QStringLiteral("webp")), QString());
        QCOMPARE(util.imageSaveAsTmpWebp(QStringLiteral("C:/folder/")), QString());
        QCOMPARE(util.imageSaveAsTmpWebp(at(QStringLiteral("missing.png"))), QString());
        QCOMPARE(util.imageSaveAsTmpWebp(write(QStringLiteral("text.png"), "text")), QString());
    }

    void aCropThatFitsIsCutOut()
    {
        const QString source = save(QStringLiteral("a b.png"), coordinates(60, 40));
        const QString target = at(QStringLiteral("c d.png"));
        QVERIFY(util.copyPhoto(url(source), url(target), QRect(10, 5, 50, 35), QSize(1, 1)));
        QCOMPARE(load(target), coordinates(60, 40).copy(10, 5, 50, 35));
    }

    void aCropPastTheEdgeGivesTheTopLeftSquare_data()
    {
        QTest::addColumn<QRect>("rect");
        QTest::addColumn<bool>("fits");
        QTest::newRow("exact") << QRect(20, 0, 40, 40) << true;
        QTest::newRow("right edge") << QRect(21, 0, 40, 40) << false;
        QTest::newRow("lower edge") << QRect(20, 1, 40, 40) << false;
        QTest::newRow("far out") << QRect(1000, 1000, 10, 10) << false;
        QTest::newRow("as far out as can be") << QRect(2147483000, 0, 600, 10) << false;
    }
    void aCropPastTheEdgeGivesTheTopLeftSquare()
    {
        QFETCH(QRect, rect);
        QFETCH(bool, fits);
        const QString source = save(QStringLiteral("a.png"), coordinates(60, 40));
        const QString target = at(QStringLiteral("b.png"));
        QVERIFY(util.copyPhoto(source, target, rect, QSize()));
        QCOMPARE(load(target), coordinates(60, 40).copy(fits ? rect : QRect(0, 0, 40, 40)));
    }

    void aPictureIsScaledBeforeItIsCropped()
    {
        QImage image = plain(100, 100);
        QPainter(&image).fillRect(50, 0, 50, 100, Qt::yellow);
        const QString source = save(QStringLiteral("a.png"), image);
        const QString target = at(QStringLiteral("b.png"));
        QImage expected = plain(20, 30);
        QPainter(&expected).fillRect(10, 0, 10, 30, Qt::yellow);
        // 40 by 50 without proportions: the border between the colours lies at 20.
        QVERIFY(util.copyPhoto(source, target, QRect(10, 10, 20, 30), QSize(), QSize(40, 50)));
        QCOMPARE(load(target), expected);
        // One smaller side is enough, none is not.
        QVERIFY(util.copyPhoto(source, target, QRect(0, 0, 200, 50), QSize(), QSize(200, 50)));
        QCOMPARE(load(target).size(), QSize(200, 50));
        QVERIFY(util.copyPhoto(source, target, QRect(0, 0, 200, 100), QSize(), QSize(200, 100)));
        QCOMPARE(load(target).size(), QSize(100, 100));
    }

    void aTurnedPictureIsCroppedWhereTheFrameStood_data()
    {
        QTest::addColumn<double>("rotation");
        QTest::addColumn<QSize>("turned");
        QTest::addColumn<Pixel>("from");
        QTest::addColumn<QPoint>("origin"); // of the frame in the turned picture of 60 by 40
        QTest::newRow("right") << 90.0 << QSize(40, 60) << Pixel([](int x, int y, const QSize &size) {
            return QPoint(y, size.height() - 1 - x);
        }) << QPoint(40 - 10 - 20, 5);
        QTest::newRow("over") << 180.0 << QSize(60, 40) << Pixel([](int x, int y, const QSize &size) {
            return QPoint(size.width() - 1 - x, size.height() - 1 - y);
        }) << QPoint(60 - 5 - 20, 40 - 10 - 20);
        QTest::newRow("left") << 270.0 << QSize(40, 60) << Pixel([](int x, int y, const QSize &size) {
            return QPoint(size.width() - 1 - y, x);
        }) << QPoint(10, 60 - 5 - 20);
        QTest::newRow("left, negative")
            << -90.0 << QSize(40, 60)
            << Pixel([](int x, int y, const QSize &size) { return QPoint(size.width() - 1 - y, x); })
            << QPoint(10, 60 - 5 - 20);
    }
    void aTurnedPictureIsCroppedWhereTheFrameStood()
    {
        QFETCH(double, rotation);
        QFETCH(QSize, turned);
        QFETCH(Pixel, from);
        QFETCH(QPoint, origin);
        const QImage image = coordinates(60, 40);
        const QString source = save(QStringLiteral("a.png"), image);
        const QString target = at(QStringLiteral("b.png"));
        const QImage expected = rearranged(image, turned, from);

        QVERIFY(util.copyPhoto(source, target, wholeAvatar, QSize(), image.size(), rotation));
        QCOMPARE(load(target), expected.copy(QRect(origin, wholeAvatar.size())));
    }

    void mirroringFollowsTheTurn_data()
    {
        QTest::addColumn<double>("rotation");
        QTest::addColumn<bool>("horizontal");
        QTest::newRow("upright") << 0.0 << true;
        QTest::newRow("right") << 90.0 << false;
        QTest::newRow("over") << 180.0 << true;
        QTest::newRow("left") << -90.0 << false;
        QTest::newRow("full turn") << 360.0 << true;
    }
    void mirroringFollowsTheTurn()
    {
        QFETCH(double, rotation);
        QFETCH(bool, horizontal);
        const QImage image = coordinates(40, 40);
        const QString source = save(QStringLiteral("a.png"), image);
        const QRect all(0, 0, 40, 40);
        QVERIFY(util.copyPhoto(source, at(QStringLiteral("b.png")), all, QSize(), image.size(), rotation));
        QVERIFY(
            util.copyPhoto(source, at(QStringLiteral("c.png")), all, QSize(), image.size(), rotation, true));
        const Pixel leftRight = [](int x, int y, const QSize &size) {
            return QPoint(size.width() - 1 - x, y);
        };
        const Pixel upDown = [](int x, int y, const QSize &size) { return QPoint(x, size.height() - 1 - y); };
        QCOMPARE(
            load(at(QStringLiteral("c.png"))),
            rearranged(load(at(QStringLiteral("b.png"))), image.size(), horizontal ? leftRight : upDown));
    }

    void onlyAScaleOfMinusOneActs()
    {
        const QImage image = coordinates(60, 40);
        const QString source = save(QStringLiteral("a.png"), image);
        const QString target = at(QStringLiteral("b.png"));
        const auto crop = [&](int scale) {
            return util.copyPhoto(source, target, QRect(0, 0, 60, 40), QSize(), QSize(), 0, false, scale)
                       ? load(target)
                       : QImage();
        };
        for (int scale : {1, 0, 2, -2})
            QCOMPARE(crop(scale), image);
        QCOMPARE(crop(-1), rearranged(image, image.size(), [](int x, int y, const QSize &size) {
                     return QPoint(size.width() - 1 - x, size.height() - 1 - y);
                 }));
    }

    void anAvatarIsCutFromThePictureAsItIsShown()
    {
        const QImage image = plain(64, 32);
        const QString path = write(QStringLiteral("a.jpg"), jpegWithOrientation(image, 6));
        QVERIFY(util.copyPhoto(path, at(QStringLiteral("b.png")), QRect(0, 0, 32, 64), QSize()));
        QCOMPARE(QImage(at(QStringLiteral("b.png"))).size(), QSize(32, 64));
    }

    void aCropOfNothingFails()
    {
        const QString source = save(QStringLiteral("a.png"), plain(10, 10));
        const QRect all(0, 0, 10, 10);
        QVERIFY(!util.copyPhoto(QString(), at(QStringLiteral("b.png")), all, QSize()));
        QVERIFY(
            !util.copyPhoto(at(QStringLiteral("missing.png")), at(QStringLiteral("b.png")), all, QSize()));
        QVERIFY(!util.copyPhoto(write(QStringLiteral("text.png"), "text"), at(QStringLiteral("b.png")), all,
                                QSize()));
        QVERIFY(!util.copyPhoto(source, at(QStringLiteral("missing/b.png")), all, QSize()));
        QVERIFY(!util.copyPhoto(source, at(QStringLiteral("b.png")), all, QSize(), QSize(), qQNaN()));
        QVERIFY(!util.copyPhoto(source, at(QStringLiteral("b.png")), all, QSize(), QSize(), qInf()));
        QVERIFY(!QFileInfo::exists(at(QStringLiteral("b.png"))));
    }

    void aDataUrlIsCachedOnce()
    {
        const auto dataUrl = [](int side) {
            QByteArray png;
            QBuffer buffer(&png);
            plain(side, side).save(&buffer, "PNG");
            return QStringLiteral("data:image/png;base64,") + QString::fromLatin1(png.toBase64());
        };
        QPixmapCache::clear();
        QPixmap pixmap;
        util.base64DataToImageCache(QStringLiteral("key"), dataUrl(3));
        QVERIFY(QPixmapCache::find(QStringLiteral("key"), &pixmap));
        QCOMPARE(pixmap.size(), QSize(3, 3));
        util.base64DataToImageCache(QStringLiteral("key"), dataUrl(5));
        QVERIFY(QPixmapCache::find(QStringLiteral("key"), &pixmap));
        QCOMPARE(pixmap.size(), QSize(3, 3));

        const QString good = dataUrl(4);
        const QString base64 = good.section(QLatin1Char(','), 1);
        util.base64DataToImageCache(QStringLiteral("one part"), base64);
        QVERIFY(!QPixmapCache::find(QStringLiteral("one part"), &pixmap));
        util.base64DataToImageCache(QStringLiteral("three parts"), good + QStringLiteral(",x"));
        QVERIFY(!QPixmapCache::find(QStringLiteral("three parts"), &pixmap));
        util.base64DataToImageCache(QStringLiteral("empty parts"), QStringLiteral(",whatever,,") + base64);
        QVERIFY(QPixmapCache::find(QStringLiteral("empty parts"), &pixmap));
        util.base64DataToImageCache(QStringLiteral("nothing"), QString());
        QVERIFY(!QPixmapCache::find(QStringLiteral("nothing"), &pixmap));
    }

    void damagedDataDoesNotBarTheKeyToAGoodPicture()
    {
        QPixmapCache::clear();
        QPixmap pixmap;
        util.base64DataToImageCache(QStringLiteral("key"), QStringLiteral("data:image/png;base64,AAAA"));
        QVERIFY(!QPixmapCache::find(QStringLiteral("key"), &pixmap));
    }
};

QTEST_MAIN(TestPictures)
#include "tst_pictures.moc"
