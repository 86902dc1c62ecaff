// How a picture is read for its palette: the size it is read at, its turn, and pictures that would fill the
// memory.

#include "colortheme/themeimage.h"

#include "palettereference.h"
#include "testpictures.h"

#include <QFile>
#include <QtEndian>
#include <QtTest>

namespace {

/// Checksum of a PNG chunk, bit by bit.
quint32 crc32(const QByteArray &data)
{
    quint32 crc = 0xffffffff;
    for (const char byte : data) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xedb88320 : crc >> 1;
    }
    return ~crc;
}

QByteArray bigEndian(quint32 value)
{
    const quint32 swapped = qToBigEndian(value);
    return {reinterpret_cast<const char *>(&swapped), sizeof swapped};
}

QByteArray chunk(const QByteArray &type, const QByteArray &data)
{
    return bigEndian(quint32(data.size())) + type + data + bigEndian(crc32(type + data));
}

/// A PNG whose header promises `size` and whose rows are missing. `colorType` and `depth` as in PNG.
QByteArray promisingPng(const QSize &size, char depth, char colorType)
{
    const QByteArray header = bigEndian(quint32(size.width())) + bigEndian(quint32(size.height())) +
                              QByteArray(1, depth) + QByteArray(1, colorType) + QByteArray(3, '\0');
    // qCompress puts the length before the stream.
    return QByteArray::fromHex("89504e470d0a1a0a") + chunk("IHDR", header) +
           chunk("IDAT", qCompress(QByteArray(100'000, '\0')).mid(4)) + chunk("IEND", QByteArray());
}

/// Largest address space this process had, in KiB; 0 where the system doesn't tell.
qint64 peakAddressSpace()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> lines = status.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("VmPeak:"))
            return line.mid(7).simplified().split(' ').constFirst().toLongLong();
    }
    return 0;
}

} // namespace

class TestThemeImage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void largePicturesAreStretched_data();
    void largePicturesAreStretched();
    void contentDecidesOverTheName();
    void pixelsEqualTheReaders();
    void turnOfAPhotographIsApplied();
    void picturesThatWouldFillTheMemoryAreRefused_data();
    void picturesThatWouldFillTheMemoryAreRefused();
    void hugeJpegsAreReadSmall();
    void colorCountsAreBounded();

private:
    [[nodiscard]] QString write(const char *name, const QByteArray &data) const
    {
        const QString path = folder.filePath(QString::fromLatin1(name));
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(data) == data.size() ? path : QString();
    }

    QTemporaryDir folder;
};

void TestThemeImage::largePicturesAreStretched_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("readSize");

    QTest::newRow("small") << QSize(400, 400) << QSize(400, 400);
    QTest::newRow("1 by 1") << QSize(1, 1) << QSize(1, 1);
    QTest::newRow("one column too many") << QSize(401, 400) << QSize(400, 399);
    QTest::newRow("one row too many") << QSize(400, 401) << QSize(399, 400);
    QTest::newRow("1000 by 500") << QSize(1000, 500) << QSize(400, 250);
    QTest::newRow("800 by 600") << QSize(800, 600) << QSize(400, 450);
    QTest::newRow("500 by 1000") << QSize(500, 1000) << QSize(250, 400);
    QTest::newRow("square") << QSize(900, 900) << QSize(900, 400);
    QTest::newRow("so flat that no row is left") << QSize(1000, 20) << QSize();
    QTest::newRow("so narrow that no column is left") << QSize(20, 1000) << QSize();
}

void TestThemeImage::largePicturesAreStretched()
{
    QFETCH(QSize, size);
    QFETCH(QSize, readSize);

    const QString path = folder.filePath(QStringLiteral("sized.png"));
    QVERIFY(testpictures::noise(size.width(), size.height(), 1).save(path));
    const QImage image = readThemeImage(path);
    QCOMPARE(image.isNull(), readSize.isEmpty());
    if (!readSize.isEmpty())
        QCOMPARE(image.size(), readSize);
}

void TestThemeImage::contentDecidesOverTheName()
{
    const QString path = folder.filePath(QStringLiteral("really-a-png.jpg"));
    QVERIFY(testpictures::flat(Qt::red, 20, 10).save(path, "PNG"));
    QCOMPARE(readThemeImage(path).size(), QSize(20, 10));
}

void TestThemeImage::pixelsEqualTheReaders()
{
    for (const char *name : {"photo.jpg", "photo.png", "photo.bmp", "photo.ppm"}) {
        const QString path = folder.filePath(QString::fromLatin1(name));
        QVERIFY(testpictures::photographs().constFirst().image.scaled(700, 500).save(path));
        const QImage expected = reference::readPicture(path);
        QVERIFY(!expected.isNull());
        QCOMPARE(readThemeImage(path), expected);
    }
}

void TestThemeImage::turnOfAPhotographIsApplied()
{
    // An Exif block behind the start marker that says "turned by 90 degrees".
    const QString plain = folder.filePath(QStringLiteral("plain.jpg"));
    QVERIFY(testpictures::flat(Qt::red, 40, 20).save(plain));
    QFile file(plain);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QByteArray data = file.readAll();
    const QByteArray tiff = QByteArray::fromHex("4d4d002a00000008"
                                                "0001"
                                                "0112000300000001"
                                                "00060000"
                                                "00000000");
    const QByteArray exif = QByteArray("Exif\0\0", 6) + tiff;
    data.insert(2, QByteArray::fromHex("ffe1") + bigEndian(quint32(exif.size() + 2)).mid(2) + exif);
    QCOMPARE(readThemeImage(write("turned.jpg", data)).size(), QSize(20, 40));
}

void TestThemeImage::picturesThatWouldFillTheMemoryAreRefused_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("colorType");

    QTest::newRow("60,000 by 60,000, RGBA") << QSize(60000, 60000) << 8 << 6;
    QTest::newRow("60,000 by 60,000, RGB") << QSize(60000, 60000) << 8 << 2;
    QTest::newRow("60,000 by 60,000, 16-bit RGBA") << QSize(60000, 60000) << 16 << 6;
    QTest::newRow("60,000 by 60,000, grey") << QSize(60000, 60000) << 8 << 0;
    QTest::newRow("20,000 by 20,000, 16-bit RGBA") << QSize(20000, 20000) << 16 << 6;
    QTest::newRow("tall strip") << QSize(2000, 1'000'000) << 8 << 6;
}

void TestThemeImage::picturesThatWouldFillTheMemoryAreRefused()
{
    QFETCH(QSize, size);
    QFETCH(int, depth);
    QFETCH(int, colorType);

    const QString path = write("bomb.png", promisingPng(size, char(depth), char(colorType)));
    const qint64 before = peakAddressSpace();
    QVERIFY(readThemeImage(path).isNull());
    QVERIFY2(peakAddressSpace() - before < 1024 * 1024,
             qPrintable(QStringLiteral("%1 KiB more").arg(peakAddressSpace() - before)));
}

void TestThemeImage::hugeJpegsAreReadSmall()
{
    // Photographs of many megapixels are common, and the decoder shrinks them on the way.
    const QString path = folder.filePath(QStringLiteral("huge.jpg"));
    QVERIFY(testpictures::flat(QColor(30, 30, 200), 6000, 4000).save(path));
    QCOMPARE(readThemeImage(path).size(), QSize(400, 2666));
}

void TestThemeImage::colorCountsAreBounded()
{
    QVERIFY(!isValidColorCount(1));
    QVERIFY(isValidColorCount(2));
    QVERIFY(isValidColorCount(256));
    QVERIFY(!isValidColorCount(257));
}

QTEST_GUILESS_MAIN(TestThemeImage)
#include "tst_themeimage.moc"
