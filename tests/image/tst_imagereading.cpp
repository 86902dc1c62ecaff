// Reading pictures: what is understood, what is turned down, what a reduction may change.

#include "image/imagereading.h"
#include "messageguard.h"
#include "testpictures.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

using namespace testpictures;

namespace {

// Eight by eight pixels in pure red, stored as inverted cyan, magenta, yellow and black.
const QByteArray cmykJpeg = QByteArray::fromBase64(
    "/9j/7gAOQWRvYmUAZAAAAAAA/9sAQwACAQEBAQECAQEBAgICAgIEAwICAgIFBAQDBAYFBgYGBQYGBgcJCAYH"
    "CQcGBggLCAkKCgoKCgYICwwLCgwJCgoK/8AAFAgACAAIBEMRAE0RAFkRAEsRAP/EABUAAQEAAAAAAAAAAAAA"
    "AAAAAAkK/8QAFBABAAAAAAAAAAAAAAAAAAAAAP/aAA4EQwBNAFkASwAAPwB/E/6f8/j/2Q==");

} // namespace

class TestImageReading : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pictureIsReadByItsContentWhateverItsName()
    {
        Folder folder;
        const QImage image = smooth(QSize(23, 17));
        const QString path = folder.add(QStringLiteral("photo.jpg"), image, "png");
        QCOMPARE(readImage(path), image);
    }

    void resourcePathsWorkAndUrlsDoNot()
    {
        QCOMPARE(readImage(QStringLiteral(":/qml/image/transparent.png")).size(), QSize(16, 16));
        QVERIFY(readImage(QStringLiteral("qrc:/qml/image/transparent.png")).isNull());
        Folder folder;
        const QString path = folder.add(QStringLiteral("a.png"), smooth(QSize(4, 4)));
        QVERIFY(readImage(QStringLiteral("file://") + path).isNull());
    }

    void pictureIsTurnedAsTheCameraWasHeld_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QRgb>("topLeft");
        QTest::addColumn<bool>("turned");

        QTest::newRow("upright") << 1 << qRgb(255, 0, 0) << false;
        QTest::newRow("upside down") << 3 << qRgb(0, 0, 255) << false;
        QTest::newRow("a quarter clockwise") << 6 << qRgb(255, 255, 0) << true;
        QTest::newRow("a quarter back") << 8 << qRgb(0, 255, 0) << true;
    }

    void pictureIsTurnedAsTheCameraWasHeld()
    {
        QFETCH(int, orientation);
        QFETCH(QRgb, topLeft);
        QFETCH(bool, turned);
        Folder folder;
        const QString path =
            folder.add(QStringLiteral("held.jpg"), orientedJpeg(quadrants(QSize(640, 320)), orientation));
        const QSize size = turned ? QSize(320, 640) : QSize(640, 320);
        const auto corner = [topLeft](const QImage &image) {
            const QRgb pixel = image.pixel(image.width() / 4, image.height() / 4);
            return qAbs(qRed(pixel) - qRed(topLeft)) < 12 && qAbs(qGreen(pixel) - qGreen(topLeft)) < 12 &&
                   qAbs(qBlue(pixel) - qBlue(topLeft)) < 12;
        };

        const QImage image = readImage(path);
        QCOMPARE(image.size(), size);
        QVERIFY(corner(image));

        const QSize target = size / 16;
        QSize asked;
        const DecodedImage decoded = readImageFor(path, [&asked, target](const QSize &full) {
            asked = full;
            return target;
        });
        QCOMPARE(asked, size);
        QCOMPARE(decoded.fullSize, size);
        QVERIFY(decoded.image.width() < size.width());
        QVERIFY(decoded.image.width() >= 2 * target.width() && decoded.image.height() >= 2 * target.height());
        QVERIFY(corner(decoded.image));
    }

    void everyPixelFormatIsRead_data()
    {
        QTest::addColumn<QByteArray>("content");

        const QImage red = [] {
            QImage image(8, 8, QImage::Format_RGB32);
            image.fill(Qt::red);
            return image;
        }();
        QTest::newRow("16 bits") << encoded(red.convertToFormat(QImage::Format_RGBA64), "png");
        QTest::newRow("palette") << encoded(red.convertToFormat(QImage::Format_Indexed8), "png");
        QTest::newRow("palette of a GIF's kind")
            << encoded(red.convertToFormat(QImage::Format_Indexed8), "bmp");
        QTest::newRow("CMYK") << cmykJpeg;
    }

    void everyPixelFormatIsRead()
    {
        QFETCH(QByteArray, content);
        Folder folder;
        const QString path = folder.add(QStringLiteral("picture"), content);
        for (const QImage &image : {readImage(path), imageFromData(content)}) {
            QCOMPARE(image.size(), QSize(8, 8));
            const QRgb pixel = image.pixel(3, 5);
            QVERIFY2(qRed(pixel) > 245 && qGreen(pixel) < 10 && qBlue(pixel) < 10,
                     qPrintable(QString::number(pixel, 16)));
        }
    }

    void whatIsNoPictureIsNull_data()
    {
        QTest::addColumn<QByteArray>("content");

        QByteArray random(5000, '\0');
        QRandomGenerator generator(7);
        for (char &byte : random)
            byte = char(generator.bounded(256));
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("not a picture");
        QTest::newRow("random") << random;
        QTest::newRow("PNG signature alone") << QByteArray("\x89PNG\r\n\x1a\n", 8);
        QTest::newRow("JPEG start alone") << QByteArray("\xff\xd8\xff\xe0", 4);
        QTest::newRow("BMP start alone") << QByteArray("BM\x7f\xff\xff\x7f", 6);
        QTest::newRow("60,000 by 60,000") << pngHeader(QSize(60000, 60000));
        QTest::newRow("as wide as an int") << pngHeader(QSize(0x7fffffff, 0x7fffffff));
    }

    void whatIsNoPictureIsNull()
    {
        QFETCH(QByteArray, content);
        Folder folder;
        const QString path = folder.add(QStringLiteral("picture.png"), content);
        QVERIFY(readImage(path).isNull());
        QVERIFY(imageFromData(content).isNull());
        QVERIFY(readImageFor(path, [](const QSize &) { return QSize(10, 10); }).image.isNull());
    }

    void missingFilesAndFoldersAreNull()
    {
        Folder folder;
        QVERIFY(readImage(folder.path(QStringLiteral("nothing.png"))).isNull());
        QVERIFY(readImage(folder.path(QString())).isNull());
        QVERIFY(readImage(QString()).isNull());
    }

    /// Every prefix of a file is a file that a broken download leaves behind.
    void truncatedFilesDoNoHarm_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("png") << QByteArray("png");
        QTest::newRow("jpeg") << QByteArray("jpeg");
        QTest::newRow("bmp") << QByteArray("bmp");
    }

    void truncatedFilesDoNoHarm()
    {
        QFETCH(QByteArray, format);
        Folder folder;
        const QByteArray whole = encoded(smooth(QSize(40, 30)), format.constData(), 80);
        QVERIFY(whole.size() > 100);
        for (int length = 0; length < whole.size(); length += qMax(1, whole.size() / 60)) {
            const QString path = folder.add(QStringLiteral("part"), whole.left(length));
            const QImage image = readImage(path);
            QVERIFY(image.isNull() || image.size() == QSize(40, 30));
            const DecodedImage reduced = readImageFor(path, [](const QSize &) { return QSize(4, 3); });
            QVERIFY(reduced.image.isNull() || reduced.fullSize == QSize(40, 30));
        }
    }

    void limitTakesLargePicturesAndNoBombs_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("bytes");
        QTest::addColumn<bool>("within");

        QTest::newRow("one pixel") << QSize(1, 1) << 4 << true;
        QTest::newRow("a strip") << QSize(1, 30000) << 4 << true;
        QTest::newRow("the viewer's largest") << QSize(12000, 9000) << 4 << true;
        QTest::newRow("the same with 16 bits") << QSize(12000, 9000) << 8 << true;
        QTest::newRow("the limit") << QSize(16384, 16384) << 4 << true;
        QTest::newRow("one row more") << QSize(16384, 16385) << 4 << false;
        QTest::newRow("the limit with 16 bits") << QSize(16384, 16384) << 8 << false;
        QTest::newRow("a bomb") << QSize(60000, 60000) << 4 << false;
        QTest::newRow("the largest number") << QSize(0x7fffffff, 0x7fffffff) << 8 << false;
        QTest::newRow("empty") << QSize(0, 5) << 4 << false;
        QTest::newRow("negative") << QSize(-1, -1) << 4 << false;
    }

    void limitTakesLargePicturesAndNoBombs()
    {
        QFETCH(QSize, size);
        QFETCH(int, bytes);
        QFETCH(bool, within);
        QCOMPARE(isWithinPictureLimit(size, bytes), within);
    }

    /// A photo that is reduced while it is decoded must look like the one that is reduced afterwards.
    void reducedPhotosLookLikeScaledOnes_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("target");
        QTest::addColumn<int>("decodedWidth");

        QTest::newRow("to a quarter") << QSize(1600, 1200) << QSize(400, 300) << 800;
        QTest::newRow("to a tenth") << QSize(1600, 1200) << QSize(160, 120) << 400;
        QTest::newRow("to a fiftieth") << QSize(1600, 1200) << QSize(32, 24) << 200;
        QTest::newRow("half of an even size") << QSize(1602, 1202) << QSize(97, 73) << 801;
        QTest::newRow("odd sizes, which are not reduced") << QSize(1601, 1199) << QSize(97, 73) << 1601;
        QTest::newRow("distorted") << QSize(1600, 1200) << QSize(50, 300) << 800;
        QTest::newRow("hardly smaller") << QSize(1600, 1200) << QSize(1500, 1100) << 1600;
        QTest::newRow("enlarged") << QSize(160, 120) << QSize(320, 240) << 160;
    }

    void reducedPhotosLookLikeScaledOnes()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, target);
        QFETCH(int, decodedWidth);
        Folder folder;
        const QString path = folder.add(QStringLiteral("photo.jpg"), smooth(size), "jpeg", 92);
        const DecodedImage decoded = readImageFor(path, [target](const QSize &) { return target; });
        QCOMPARE(decoded.fullSize, size);
        QCOMPARE(decoded.image.width(), decodedWidth);
        const QImage expected = QImage(path).scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        const int difference = greatestDifference(scaledSmoothly(decoded, target), expected);
        QVERIFY2(difference <= 4, qPrintable(QString::number(difference)));
    }

    void formatsWithoutLossAreReadAsTheyAre()
    {
        Folder folder;
        const QImage image = smooth(QSize(800, 600), true);
        const QString path = folder.add(QStringLiteral("a.png"), image);
        const DecodedImage decoded = readImageFor(path, [](const QSize &) { return QSize(8, 6); });
        QCOMPARE(decoded.image, image);
        QCOMPARE(decoded.fullSize, image.size());
    }

    void sizesAreThoseThatScalingGives_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("photo") << QSize(4000, 3000);
        QTest::newRow("odd") << QSize(33, 77);
        QTest::newRow("strip") << QSize(1, 3000);
        QTest::newRow("flat strip") << QSize(3000, 1);
        QTest::newRow("prime") << QSize(1009, 997);
    }

    void sizesAreThoseThatScalingGives()
    {
        QFETCH(QSize, size);
        const QImage image = QImage(size, QImage::Format_Grayscale8);
        for (const QSize &bounds : {QSize(32, 32), QSize(100, 7), QSize(3, 500)}) {
            for (const Qt::AspectRatioMode mode : {Qt::KeepAspectRatio, Qt::KeepAspectRatioByExpanding}) {
                if (mode == Qt::KeepAspectRatioByExpanding && size.width() * size.height() > 3'000'000)
                    continue;
                QCOMPARE(sizeScaledInto(size, bounds, mode),
                         image.scaled(bounds, mode, Qt::FastTransformation).size());
            }
        }
        QCOMPARE(sizeScaledToWidth(size, 32), image.scaledToWidth(32, Qt::SmoothTransformation).size());
    }
};

QTEST_MAIN(TestImageReading)
#include "tst_imagereading.moc"
