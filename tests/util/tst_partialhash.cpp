// The partial SHA-1 of files and pictures, against hashes of bytes that the test reads itself and against the
// system's own tool.

#include "util/imutil.h"

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int mebibyte = 1024 * 1024;

[[nodiscard]] QString sha1(const QByteArray &bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex());
}

[[nodiscard]] QByteArray randomBytes(int size)
{
    QRandomGenerator random(size);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random.bounded(256));
    return bytes;
}

/// The bytes that this process has asked the system to read so far.
[[nodiscard]] qint64 bytesReadByProcess()
{
    QFile io(QStringLiteral("/proc/self/io"));
    if (!io.open(QIODevice::ReadOnly))
        return -1;
    return io.readLine().split(' ').last().trimmed().toLongLong();
}

} // namespace

class TestPartialHash : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir temporary;
    ImUtil util;

    [[nodiscard]] QString fileOf(const QByteArray &content)
    {
        const QString path = temporary.path() + QStringLiteral("/a file");
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return {};
        return path;
    }

private Q_SLOTS:
    void firstAndLastBlockOfALargeFileAreHashed_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("block");
        QTest::addColumn<bool>("whole");
        QTest::newRow("nothing") << 0 << 2 << true;
        QTest::newRow("one byte") << 1 << 2 << true;
        QTest::newRow("4 MiB less one") << 4 * mebibyte - 1 << 2 << true;
        QTest::newRow("4 MiB") << 4 * mebibyte << 2 << true;
        QTest::newRow("4 MiB and one") << 4 * mebibyte + 1 << 2 << false;
        QTest::newRow("7 MiB") << 7 * mebibyte << 2 << false;
        QTest::newRow("block of one") << 2 * mebibyte + 1 << 1 << false;
        QTest::newRow("block of one, two fit") << 2 * mebibyte << 1 << true;
        QTest::newRow("block of three") << 7 * mebibyte << 3 << false;
        QTest::newRow("block of 0") << 5 * mebibyte << 0 << true;
        QTest::newRow("negative block") << 5 * mebibyte << -1 << true;
        QTest::newRow("least block") << 5 * mebibyte << std::numeric_limits<int>::min() << true;
        QTest::newRow("block beyond the file") << 5 * mebibyte << std::numeric_limits<int>::max() << true;
        QTest::newRow("block of 2048 MiB") << 5 * mebibyte << 2048 << true;
    }
    void firstAndLastBlockOfALargeFileAreHashed()
    {
        QFETCH(int, size);
        QFETCH(int, block);
        QFETCH(bool, whole);
        const QByteArray bytes = randomBytes(size);
        const QString path = fileOf(bytes);
        QVERIFY(!path.isEmpty());
        const QByteArray hashed =
            whole ? bytes : bytes.left(block * mebibyte) + bytes.right(block * mebibyte);
        QCOMPARE(util.sha1UpgradeFile(path, block), sha1(hashed));
        QCOMPARE(util.sha1UpgradeFile(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded), block),
                 sha1(hashed));
    }

    void defaultBlockIsTwoMebibytes()
    {
        const QByteArray bytes = randomBytes(4 * mebibyte + 3);
        const QString path = fileOf(bytes);
        QCOMPARE(util.sha1UpgradeFile(path), util.sha1UpgradeFile(path, 2));
        QVERIFY(util.sha1UpgradeFile(path) != util.sha1UpgradeFile(path, 0));
    }

    void theSystemsToolAgrees()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("sha1sum")).isEmpty())
            QSKIP("needs sha1sum");
        const QString path = fileOf(randomBytes(5 * mebibyte + 77));
        const auto shell = [&path](const QString &command) {
            QProcess process;
            process.start(QStringLiteral("sh"), {QStringLiteral("-c"), command + QStringLiteral(" | sha1sum"),
                                                 QStringLiteral("sh"), path});
            process.waitForFinished();
            return QString::fromLatin1(process.readAllStandardOutput().left(40));
        };
        QCOMPARE(util.sha1UpgradeFile(path, 0), shell(QStringLiteral("cat \"$1\"")));
        QCOMPARE(util.sha1UpgradeFile(path, 2),
                 shell(QStringLiteral("{ head -c 2097152 \"$1\"; tail -c 2097152 \"$1\"; }")));
    }

    void bytesInBetweenAreNotLookedAt()
    {
        QByteArray bytes = randomBytes(5 * mebibyte);
        const QString before = util.sha1UpgradeFile(fileOf(bytes));
        bytes[2 * mebibyte] = char(bytes[2 * mebibyte] + 1);
        bytes[3 * mebibyte - 1] = char(bytes[3 * mebibyte - 1] + 1);
        QCOMPARE(util.sha1UpgradeFile(fileOf(bytes)), before);
        bytes[2 * mebibyte - 1] = char(bytes[2 * mebibyte - 1] + 1);
        QVERIFY(util.sha1UpgradeFile(fileOf(bytes)) != before);
    }

    void aFileOf4GiBCostsNoMoreThanOneOf5MiB()
    {
        if (bytesReadByProcess() < 0)
            QSKIP("needs the count of bytes read");
        const QString path = temporary.path() + QStringLiteral("/sparse");
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(Q_INT64_C(4) << 30));
        file.close();

        const qint64 before = bytesReadByProcess();
        QElapsedTimer timer;
        timer.start();
        const QString hash = util.sha1UpgradeFile(path);
        const qint64 elapsed = timer.nsecsElapsed();
        const qint64 bytesRead = bytesReadByProcess() - before;
        QCOMPARE(hash, sha1(QByteArray(4 * mebibyte, '\0')));
        QVERIFY2(bytesRead <= 5 * mebibyte, qPrintable(QString::number(bytesRead)));

        const QString small = fileOf(QByteArray(5 * mebibyte, '\0'));
        timer.restart();
        QCOMPARE(util.sha1UpgradeFile(small), hash);
        qInfo("4 GiB: %lld us and %lld bytes read; 5 MiB: %lld us", elapsed / 1000, bytesRead,
              timer.nsecsElapsed() / 1000);
    }

    void whatCanNotBeReadHasNoHash()
    {
        QCOMPARE(util.sha1UpgradeFile(temporary.path() + QStringLiteral("/missing")), QString());
        QCOMPARE(util.sha1UpgradeFile(temporary.path()), QString());
        QCOMPARE(util.sha1UpgradeFile(fileOf("x") + QStringLiteral("/below")), QString());
        QCOMPARE(util.sha1UpgradeFile(QString()), QString());
    }

    void aFileThatDoesNotKnowItsSizeIsReadToItsEnd()
    {
        QFile version(QStringLiteral("/proc/version"));
        if (!version.open(QIODevice::ReadOnly))
            QSKIP("needs /proc");
        QCOMPARE(version.size(), qint64(0));
        QCOMPARE(util.sha1UpgradeFile(QStringLiteral("/proc/version")), sha1(version.readAll()));
    }

    void picturesAreHashedByTheirRows_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QImage::Format>("format");
        QTest::addColumn<int>("block");
        QTest::newRow("small") << QSize(10, 10) << QImage::Format_ARGB32 << 2;
        QTest::newRow("padded rows") << QSize(5, 7) << QImage::Format_RGB888 << 2;
        QTest::newRow("4 MiB") << QSize(1024, 1024) << QImage::Format_ARGB32 << 2;
        QTest::newRow("one row above 4 MiB") << QSize(1024, 1025) << QImage::Format_ARGB32 << 2;
        QTest::newRow("block of one") << QSize(1024, 600) << QImage::Format_ARGB32 << 1;
        QTest::newRow("block of 0") << QSize(1024, 1200) << QImage::Format_ARGB32 << 0;
        QTest::newRow("negative block") << QSize(1024, 1200) << QImage::Format_ARGB32 << -5;
    }
    void picturesAreHashedByTheirRows()
    {
        QFETCH(QSize, size);
        QFETCH(QImage::Format, format);
        QFETCH(int, block);
        QImage image(size, format);
        QByteArray bytes = randomBytes(image.bytesPerLine() * image.height());
        memcpy(image.bits(), bytes.constData(), size_t(bytes.size()));
        const int length = block * mebibyte;
        if (length > 0 && bytes.size() > 2 * length)
            bytes = bytes.left(length) + bytes.right(length);
        QCOMPARE(util.sha1Image(image, block), sha1(bytes));
    }

    void hashingAPictureDoesNotCopyIt()
    {
        const QImage image(10, 10, QImage::Format_RGB32);
        const QImage shared = image;
        QVERIFY(!util.sha1Image(image).isEmpty());
        QCOMPARE(image.constBits(), shared.constBits());
    }

    void noPictureHasTheHashOfNothing() { QCOMPARE(util.sha1Image(QImage()), sha1(QByteArray())); }
};

QTEST_MAIN(TestPartialHash)
#include "tst_partialhash.moc"
