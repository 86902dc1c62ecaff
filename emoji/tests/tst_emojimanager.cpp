// The pictures of emoji: complete, right, the same for all threads, and absent without harm.

#include "emojitestfile.h"

#include <emoji/emojilist.h>
#include <emoji/emojimanager.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr int cell = 72;

QByteArray installedPictures()
{
    QFile file(QStringLiteral(PICTURE_FILE));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage pictureOf(const EmojiManager::EmojiInfo &info)
{
    return info.pixmap->toImage()
        .copy(info.x, info.y, info.width, info.height)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// `data` with the 32 bits at `offset` replaced.
QByteArray with(QByteArray data, int offset, quint32 value)
{
    for (int byte = 0; byte < 4; ++byte)
        data[offset + byte] = char(value >> 8 * byte);
    return data;
}

quint32 number(const QByteArray &data, int offset)
{
    return qFromLittleEndian<quint32>(data.constData() + offset);
}

/// How much of the picture is covered, 0 to 1.
double coverage(const QImage &picture)
{
    double sum = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            sum += qAlpha(picture.pixel(x, y)) / 255.0;
    }
    return sum / (picture.width() * picture.height());
}

/// The average of each area that one pixel of the result covers, the reference for scaling.
QImage averaged(const QImage &source, int side)
{
    QImage result(side, side, QImage::Format_ARGB32_Premultiplied);
    const double step = double(source.width()) / side;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            double sums[4] = {};
            for (int sy = int(y * step); sy < (y + 1) * step && sy < source.height(); ++sy) {
                for (int sx = int(x * step); sx < (x + 1) * step && sx < source.width(); ++sx) {
                    const double area = (qMin((y + 1) * step, sy + 1.0) - qMax(y * step, double(sy))) *
                                        (qMin((x + 1) * step, sx + 1.0) - qMax(x * step, double(sx)));
                    const QRgb pixel = reinterpret_cast<const QRgb *>(source.constScanLine(sy))[sx];
                    sums[0] += area * qRed(pixel);
                    sums[1] += area * qGreen(pixel);
                    sums[2] += area * qBlue(pixel);
                    sums[3] += area * qAlpha(pixel);
                }
            }
            const double all = step * step;
            reinterpret_cast<QRgb *>(result.scanLine(y))[x] = qRgba(
                qRound(sums[0] / all), qRound(sums[1] / all), qRound(sums[2] / all), qRound(sums[3] / all));
        }
    }
    return result;
}

} // namespace

class TestEmojiManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { warnings.clear(); }

    void everyEmojiHasAPicture()
    {
        for (const emoji::Entry &entry : emoji::allEmoji()) {
            EmojiManager::EmojiInfo info;
            QVERIFY2(EmojiManager::instance()->emoji(entry.key, info), qPrintable(entry.name));
            QVERIFY(info.pixmap);
            QCOMPARE(QRect(info.x, info.y, info.width, info.height), QRect(0, 0, cell, cell));
            QVERIFY2(coverage(pictureOf(info)) > 0.02, qPrintable(entry.name));
        }
    }

    void pictureIsTheScaledMiddleOfTheFontsOwn()
    {
        const QByteArray file = installedPictures();
        for (const int index : {0, 100, 1500, 3000, 3500}) {
            const int entry = 16 + 8 * index;
            QImage source =
                QImage::fromData(file.mid(int(number(file, entry)), int(number(file, entry + 4))), "PNG");
            QCOMPARE(source.size(), QSize(136, 128));
            source = source.copy(4, 0, 128, 128).convertToFormat(QImage::Format_ARGB32_Premultiplied);
            const QImage expected = averaged(source, cell);

            EmojiManager::EmojiInfo info;
            QVERIFY(EmojiManager::instance()->emoji(emoji::allEmoji().at(index).key, info));
            const QImage actual = pictureOf(info);
            double error = 0;
            for (int y = 0; y < cell; ++y) {
                for (int x = 0; x < cell; ++x) {
                    const QRgb a = reinterpret_cast<const QRgb *>(actual.constScanLine(y))[x];
                    const QRgb b = reinterpret_cast<const QRgb *>(expected.constScanLine(y))[x];
                    error += qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) +
                             qAbs(qBlue(a) - qBlue(b)) + qAbs(qAlpha(a) - qAlpha(b));
                }
            }
            QVERIFY2(error / (cell * cell * 4) < 3, qPrintable(QString::number(error / (cell * cell * 4))));
        }
    }

    void picturesShowTheRightEmoji()
    {
        // Colours that tell these apart, so that a list and a file that are out of step are seen.
        const auto middle = [](const char *key) {
            EmojiManager::EmojiInfo info;
            if (!EmojiManager::instance()->emoji(QString::fromLatin1(key), info))
                return QColor();
            const QImage picture = pictureOf(info);
            return QColor::fromRgba(picture.pixel(cell / 2, cell / 2));
        };
        const QColor red = middle("1f534"), green = middle("1f7e2"), blue = middle("1f535"),
                     yellow = middle("1f7e1");
        QVERIFY(red.red() > 180 && red.green() < 110 && red.blue() < 110);
        QVERIFY(green.green() > 120 && green.red() < green.green() && green.blue() < green.green());
        QVERIFY(blue.blue() > 150 && blue.red() < 100);
        QVERIFY(yellow.red() > 200 && yellow.green() > 150 && yellow.blue() < 120);
        const QColor china = middle("1f1e8-1f1f3"), light = middle("1f44d-1f3fb"),
                     dark = middle("1f44d-1f3ff");
        QVERIFY(china.red() > 180 && china.blue() < 90);
        QVERIFY(light.lightness() > dark.lightness() + 60);
    }

    void keysAreTakenInAnySpelling()
    {
        EmojiManager::EmojiInfo canonical;
        QVERIFY(EmojiManager::instance()->emoji(QStringLiteral("2764"), canonical));
        for (const char *key : {"2764-fe0f", "002764", "2764-FE0F"}) {
            EmojiManager::EmojiInfo info;
            QVERIFY(EmojiManager::instance()->emoji(QString::fromLatin1(key), info));
            QCOMPARE(info.pixmap, canonical.pixmap);
        }
    }

    void unknownKeysGiveNothing()
    {
        QPixmap dirty;
        for (const char *key : {"", "41", "zz", "d83d", "110000", "1f3fb", "1f1e8", "1f469-200d-1f697"}) {
            EmojiManager::EmojiInfo info{&dirty, 1, 2, 3, 4};
            QVERIFY(!EmojiManager::instance()->emoji(QString::fromLatin1(key), info));
            QVERIFY(!info.pixmap);
            QCOMPARE(QRect(info.x, info.y, info.width, info.height), QRect(0, 0, 0, 0));
        }
    }

    void threadsShareOnePictureEach()
    {
        // A manager of its own, so that all pictures are decoded here, by whichever thread comes first.
        EmojiManager manager(QStringLiteral(PICTURE_FILE));
        constexpr int threadCount = 8;
        const int stride = 23;
        std::vector<std::vector<QPixmap *>> seen(threadCount);
        std::atomic<int> failures{0};
        std::vector<std::thread> threads;
        threads.reserve(seen.size());
        for (auto &pixmaps : seen)
            threads.emplace_back([&] {
                QImage canvas(cell, cell, QImage::Format_ARGB32_Premultiplied);
                for (int index = 0; index < emoji::allEmoji().size(); index += stride) {
                    EmojiManager::EmojiInfo info;
                    if (!manager.emoji(emoji::allEmoji().at(index).key, info)) {
                        ++failures;
                        continue;
                    }
                    canvas.fill(Qt::transparent);
                    QPainter painter(&canvas);
                    painter.drawPixmap(QRectF(canvas.rect()), *info.pixmap,
                                       QRectF(info.x, info.y, info.width, info.height));
                    painter.end();
                    if (canvas != pictureOf(info))
                        ++failures;
                    pixmaps.push_back(info.pixmap);
                }
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(failures.load(), 0);
        for (const auto &pixmaps : seen)
            QVERIFY(pixmaps == seen.front());

        std::size_t position = 0;
        for (int index = 0; index < emoji::allEmoji().size(); index += stride) {
            EmojiManager::EmojiInfo info;
            QVERIFY(EmojiManager::instance()->emoji(emoji::allEmoji().at(index).key, info));
            const EmojiManager::EmojiInfo other{seen.front().at(position++), 0, 0, cell, cell};
            QCOMPARE(pictureOf(other), pictureOf(info));
        }
    }

    void unusableFilesGiveOneWarningAndNoPictures_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("complaint");
        const QByteArray whole = installedPictures();
        const auto changed = [&whole](int offset) {
            QByteArray copy = whole;
            copy[offset] = char(copy.at(offset) ^ 1);
            return copy;
        };
        QTest::newRow("absent") << QByteArray() << "can not be read";
        QTest::newRow("a few bytes") << whole.left(7) << "is too short";
        QTest::newRow("cut in the table") << whole.left(16 + 8 * 3655 - 1) << "is too short";
        QTest::newRow("cut in the pictures") << whole.left(whole.size() / 2) << "is cut off";
        QTest::newRow("last byte missing") << whole.chopped(1) << "is cut off";
        QTest::newRow("other magic") << changed(3) << "is no picture file";
        QTest::newRow("other count") << changed(4) << "belongs to another list";
        QTest::newRow("other list") << changed(15) << "belongs to another list";
        QTest::newRow("offset outside") << with(whole, 16, 0xFFFFFFFF) << "is cut off";
        QTest::newRow("length outside") << with(whole, 20, 0xFFFFFFFF) << "is cut off";
    }

    void unusableFilesGiveOneWarningAndNoPictures()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, complaint);
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("pictures.pak"));
        if (!content.isEmpty())
            write(path, content);
        const MessageCatcher catcher;
        EmojiManager manager(path);
        for (int round = 0; round < 3; ++round) {
            EmojiManager::EmojiInfo info;
            QVERIFY(!manager.emoji(QStringLiteral("1f600"), info));
            QVERIFY(!info.pixmap);
        }
        QCOMPARE(warnings.size(), 1);
        QVERIFY2(warnings.front().contains(complaint), qPrintable(warnings.front()));
        QVERIFY(warnings.front().contains(QLatin1String("pictures.pak")));
    }

    void damagedOrMissingPictureLeavesTheOthers()
    {
        constexpr int lengthOfSecond = 16 + 8 + 4;
        QByteArray content = with(installedPictures(), lengthOfSecond, 0);
        for (quint32 at = 0; at < 64; ++at)
            content[int(number(content, 16) + at)] = '?';
        QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("pictures.pak"));
        write(path, content);
        EmojiManager manager(path);
        for (int index = 0; index < 3; ++index) {
            for (int round = 0; round < 2; ++round) {
                EmojiManager::EmojiInfo info;
                QCOMPARE(manager.emoji(emoji::allEmoji().at(index).key, info), index == 2);
                QCOMPARE(info.pixmap != nullptr, index == 2);
            }
        }
    }

private:
    static void write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), qint64(content.size()));
    }

    /// Collects warnings while it lives.
    class MessageCatcher
    {
        Q_DISABLE_COPY(MessageCatcher)

    public:
        MessageCatcher()
        {
            qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &message) {
                if (type == QtWarningMsg)
                    warnings.append(message);
            });
        }
        ~MessageCatcher() { qInstallMessageHandler(nullptr); }
    };

    static inline QStringList warnings;
};

QTEST_MAIN(TestEmojiManager)
#include "tst_emojimanager.moc"
