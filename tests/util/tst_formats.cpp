// Times, sizes, colours and texts as scripts ask for them.

#include "util/imutil.h"
#include "util/times.h"

#include <QCollator>
#include <QDate>
#include <QRegularExpression>
#include <QTranslator>
#include <QtTest>

#include <messageguard.h>

#include <limits>

namespace {

[[nodiscard]] qint64 local(int year, int month, int day, int hour = 0, int minute = 0, int second = 0,
                           int msec = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second, msec)).toMSecsSinceEpoch();
}

/// The hash behind a name's colour, in the arithmetic of bytes.
[[nodiscard]] int hashOf(const QString &name)
{
    quint8 hash = 0;
    for (const QChar character : name)
        hash = quint8(131u * hash + character.unicode());
    return hash;
}

class TodayTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "ImUtil") == 0 && qstrcmp(source, "Today") == 0 ? QStringLiteral("Heute")
                                                                                : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestFormats : public QObject
{
    Q_OBJECT

private:
    ImUtil util;

private Q_SLOTS:
    void durationsInMilliseconds_data()
    {
        QTest::addColumn<qlonglong>("msecs");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("withMSecs");
        const auto row = [](qlonglong msecs, const char *text, const char *withMSecs) {
            QTest::newRow(qPrintable(QString::number(msecs)))
                << msecs << QString::fromLatin1(text) << QString::fromLatin1(withMSecs);
        };
        row(0, "00:00", "00:00.000");
        row(1, "00:00", "00:00.001");
        row(999, "00:00", "00:00.999");
        row(1000, "00:01", "00:01.000");
        row(61500, "01:01", "01:01.500");
        row(3599999, "59:59", "59:59.999");
        row(3600000, "01:00:00", "01:00:00.00");
        row(3661000, "01:01:01", "01:01:01.00");
        row(3661005, "01:01:01", "01:01:01.05");
        row(3661123, "01:01:01", "01:01:01.123");
        row(360000000, "100:00:00", "100:00:00.00");
        row(std::numeric_limits<qlonglong>::max(), "2562047788015:12:55", "2562047788015:12:55.807");
        row(-1, "00:00", "00:00.-01");
        row(-1500, "00:-1", "00:-1.-500");
        row(-3661000, "-1:-1", "-1:-1.000");
        row(std::numeric_limits<qlonglong>::min(), "-12:-55", "-12:-55.-808");
    }
    void durationsInMilliseconds()
    {
        QFETCH(qlonglong, msecs);
        QFETCH(QString, text);
        QFETCH(QString, withMSecs);
        QCOMPARE(util.fromTime(msecs), text);
        QCOMPARE(util.fromTime(msecs, true), withMSecs);
    }

    void durationsInSeconds_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::addColumn<QString>("text");
        const auto row = [](int seconds, const char *text) {
            QTest::newRow(qPrintable(QString::number(seconds))) << seconds << QString::fromLatin1(text);
        };
        row(0, "-:-");
        row(1, "00:01");
        row(9, "00:09");
        row(10, "00:10");
        row(65, "01:05");
        row(3599, "59:59");
        row(3600, "01:00:00");
        row(36000, "10:00:00");
        row(360000, "100:00:00");
        row(std::numeric_limits<int>::max(), "596523:14:07");
        // A sign makes a value smaller than 10, so it gets its zero.
        row(-65, "0-1:0-5");
        row(-3600, "0-1:00:00");
        row(std::numeric_limits<int>::min(), "0-596523:0-14:0-8");
    }
    void durationsInSeconds()
    {
        QFETCH(int, seconds);
        QFETCH(QString, text);
        QCOMPARE(util.secondsToString(seconds), text);
    }

    void timesOfDayWrap()
    {
        const QString format = QStringLiteral("HH:mm:ss");
        QCOMPARE(util.secondsToString(0, format), QStringLiteral("00:00:00"));
        QCOMPARE(util.secondsToString(3661, format), QStringLiteral("01:01:01"));
        QCOMPARE(util.secondsToString(3661, QStringLiteral("m 's'")), QStringLiteral("1 s"));
        QCOMPARE(util.secondsToString(86399, format), QStringLiteral("23:59:59"));
        QCOMPARE(util.secondsToString(86400, format), QStringLiteral("00:00:00"));
        QCOMPARE(util.secondsToString(-1, format), QStringLiteral("23:59:59"));
        QCOMPARE(util.secondsToString(5, QString()), QTime(0, 0, 5).toString(QString()));
    }

    void timesAreFormattedAsLocalTime()
    {
        const qint64 time = local(2024, 2, 29, 13, 14, 15, 16);
        QCOMPARE(util.toFormatTime(time, QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")),
                 QStringLiteral("2024-02-29 13:14:15.016"));
        QCOMPARE(util.toFormatTime(local(1965, 3, 4, 5), QStringLiteral("yyyyMMddHH")),
                 QStringLiteral("1965030405"));
        // The ends of the range are taken without harm.
        for (const qlonglong end :
             {std::numeric_limits<qlonglong>::max(), std::numeric_limits<qlonglong>::min()}) {
            QCOMPARE(util.toFormatTime(end, QStringLiteral("yyyy")),
                     QDateTime::fromMSecsSinceEpoch(end).toString(QStringLiteral("yyyy")));
            util.toFormatedDateTime(end);
        }
    }

    void listTimesDependOnToday_data()
    {
        QTest::addColumn<qint64>("time");
        QTest::addColumn<QString>("format"); // of the time itself; empty for an empty text
        const qint64 midnight = local(2024, 3, 20);
        const QString hours = QStringLiteral("HH:mm");
        const QString weekday = QStringLiteral("ddd");
        const QString day = QStringLiteral("MM/dd");
        const QString dayAndYear = QStringLiteral("MM/dd/yyyy");
        QTest::newRow("now") << local(2024, 3, 20, 15, 30) << hours;
        QTest::newRow("midnight") << midnight << hours;
        QTest::newRow("later today") << local(2024, 3, 20, 23, 59) << hours;
        QTest::newRow("next year") << local(2025, 1, 1) << hours;
        QTest::newRow("just before midnight") << midnight - 1 << weekday;
        QTest::newRow("six days before midnight") << midnight - 6 * 86400000 << weekday;
        QTest::newRow("one more millisecond") << midnight - 6 * 86400000 - 1 << day;
        QTest::newRow("seven days ago") << local(2024, 3, 13, 15, 30) << day;
        QTest::newRow("new year") << local(2024, 1, 1) << day;
        QTest::newRow("last year") << local(2023, 12, 31, 23, 59) << dayAndYear;
        QTest::newRow("before the epoch") << local(1960, 5, 6) << dayAndYear;
        QTest::newRow("none") << qint64(0) << QString();
    }
    void listTimesDependOnToday()
    {
        QFETCH(qint64, time);
        QFETCH(QString, format);
        const QDateTime now(QDate(2024, 3, 20), QTime(15, 30));
        const QString expected =
            format.isEmpty() ? QString() : QDateTime::fromMSecsSinceEpoch(time).toString(format);
        QCOMPARE(imutil::listTime(time, now), expected);
    }

    void aWeekAcrossNewYearShowsWeekdays()
    {
        const QDateTime now(QDate(2024, 1, 3), QTime(1, 2));
        const qint64 time = local(2023, 12, 29, 10);
        QCOMPARE(imutil::listTime(time, now),
                 QDateTime::fromMSecsSinceEpoch(time).toString(QStringLiteral("ddd")));
    }

    void listTimesOfTheToolboxAreReckonedFromTheClock()
    {
        QCOMPARE(util.toFormatedTimeType(0), QString());
        const QDateTime now = QDateTime::currentDateTime();
        QCOMPARE(util.toFormatedTimeType(now.toMSecsSinceEpoch() + 60000),
                 now.addSecs(60).toString(QStringLiteral("HH:mm")));
        const QDateTime threeDaysAgo = now.addDays(-3);
        QCOMPARE(util.toFormatedTimeType(threeDaysAgo.toMSecsSinceEpoch()),
                 threeDaysAgo.toString(QStringLiteral("ddd")));
        QCOMPARE(util.toFormatedTimeType(local(1999, 7, 8)), QStringLiteral("07/08/1999"));
        // The ends of the range are taken without harm.
        util.toFormatedTimeType(std::numeric_limits<qlonglong>::max());
        util.toFormatedTimeType(std::numeric_limits<qlonglong>::min());
    }

    void headingsSayTodayOrTheDay()
    {
        const QDateTime now(QDate(2024, 3, 20), QTime(15, 30));
        const qint64 midnight = local(2024, 3, 20);
        QCOMPARE(imutil::dayHeading(0, now), QString());
        QCOMPARE(imutil::dayHeading(midnight, now), QStringLiteral("Today"));
        QCOMPARE(imutil::dayHeading(local(2030, 1, 1), now), QStringLiteral("Today"));
        QCOMPARE(imutil::dayHeading(midnight - 1, now),
                 QStringLiteral("03/19/2024 ") + QDate(2024, 3, 19).toString(QStringLiteral("ddd")));
        QCOMPARE(util.toFormatedDateTime(0), QString());
        QCOMPARE(util.toFormatedDateTime(QDateTime::currentMSecsSinceEpoch() + 1000),
                 QStringLiteral("Today"));
        QCOMPARE(util.toFormatedDateTime(local(1999, 7, 8)),
                 QStringLiteral("07/08/1999 ") + QDate(1999, 7, 8).toString(QStringLiteral("ddd")));
    }

    void headingsAreTranslatedByTheClient()
    {
        TodayTranslator translator;
        QCoreApplication::installTranslator(&translator);
        const QString heading = util.toFormatedDateTime(QDateTime::currentMSecsSinceEpoch() + 1000);
        QCoreApplication::removeTranslator(&translator);
        QCOMPARE(heading, QStringLiteral("Heute"));
    }

    void todayIsALocalDay()
    {
        const QDateTime midnight(QDate::currentDate(), QTime(0, 0));
        QVERIFY(util.isToday(midnight.toMSecsSinceEpoch()));
        QVERIFY(util.isToday(midnight.addDays(1).toMSecsSinceEpoch() - 1));
        QVERIFY(!util.isToday(midnight.toMSecsSinceEpoch() - 1));
        QVERIFY(!util.isToday(midnight.addDays(1).toMSecsSinceEpoch()));
        QVERIFY(!util.isToday(0));
        QVERIFY(!util.isToday(std::numeric_limits<qlonglong>::max()));
        QVERIFY(!util.isToday(std::numeric_limits<qlonglong>::min()));
    }

    void sizesAreCutToTwoDecimals_data()
    {
        QTest::addColumn<double>("size");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, double size, const char *text) {
            QTest::newRow(name) << size << QString::fromLatin1(text);
        };
        row("none", 0, "0 Byte");
        row("bytes", 1023, "1023 Byte");
        row("fraction", 1023.5, "1023.5 Byte");
        row("negative", -5, "-5 Byte");
        row("1 KB", 1024, "1 KB");
        row("1.5 KB", 1536, "1.5 KB");
        row("one above 1 KB", 1025, "1 KB");
        row("last KB", 1048575, "1023.99 KB");
        row("1 MB", 1048576, "1 MB");
        row("12.34 MB", 12.349 * 1048576, "12.34 MB");
        row("last MB", 1073741823, "1023.99 MB");
        row("1 GB", 1073741824, "1 GB");
        row("20.5 GB", 20.5 * 1073741824, "20.5 GB");
        row("six digits", 1234.56 * 1073741824, "1234.56 GB");
        row("more than six digits", 12345.67 * 1073741824, "12345.7 GB");
        row("beyond integers", 1e300, "9.31323e+290 GB");
        row("infinite", qInf(), "inf GB");
        row("negative infinite", -qInf(), "-inf Byte");
        row("no number", qQNaN(), "nan GB");
    }
    void sizesAreCutToTwoDecimals()
    {
        QFETCH(double, size);
        QFETCH(QString, text);
        QCOMPARE(util.intToSizeStr(size), text);
    }

    void twoSizesShareTheUnitOfTheFirst()
    {
        const auto texts = [this](double reference, double size) {
            return util.intsToSizeStrs(reference, size).join(QLatin1Char('|'));
        };
        QCOMPARE(texts(40 * 1048576.0, 12.5 * 1048576), QStringLiteral("40 MB|12.5"));
        QCOMPARE(texts(1048576, 1024), QStringLiteral("1 MB|0"));
        QCOMPARE(texts(1023, 4096), QStringLiteral("1023 Byte|4096"));
        QCOMPARE(texts(1024, 1048576), QStringLiteral("1 KB|1024"));
        QCOMPARE(texts(2147483648.0, 1610612736), QStringLiteral("2 GB|1.5"));
        QCOMPARE(texts(1024, -1536), QStringLiteral("1 KB|-1.5"));
    }

    void aNameHasItsColour_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("letter") << QStringLiteral("a");
        QTest::newRow("word") << QStringLiteral("Ostrel");
        QTest::newRow("chinese") << QString::fromUtf8("\xE4\xBD\xA0\xE5\xA5\xBD");
        QTest::newRow("placeholders") << QStringLiteral("%1%2");
        QTest::newRow("long") << QString(100000, QLatin1Char('z'));
        QTest::newRow("hash of 255") << QString(QChar(0xFF));
        QTest::newRow("hash of 0") << QString(QChar(0x100));
    }
    void aNameHasItsColour()
    {
        QFETCH(QString, name);
        const double hue = hashOf(name) / 255.0;
        QCOMPARE(util.colorByStr(name), QColor::fromHslF(hue, 0.35, 0.35, 1.0));
        QCOMPARE(util.colorByStr(name, 0.8), QColor::fromHslF(hue, 0.35, 0.8, 1.0));
        QCOMPARE(util.colorByStr(name, 1), QColor::fromHslF(hue, 0.35, 1, 1.0));
        QCOMPARE(util.colorByStr(name), QColor::fromHslF(hue, 0.35, 0.35, 1.0));
        QCOMPARE(util.colorByStr(name, 0.35), util.colorByStr(name));
    }

    void everyHashGivesAValidColour()
    {
        for (ushort unit = 0; unit < 256; ++unit)
            QVERIFY(util.colorByStr(QString(QChar(unit))).isValid());
        QCOMPARE(hashOf(QString(QChar(0xFF))), 255);
        // A hue of 1.0 is the red at which the circle of hues began.
        QCOMPARE(util.colorByStr(QString(QChar(0xFF))).rgb(), QColor::fromHslF(0, 0.35, 0.35).rgb());
    }

    void noNameIsBlackAndAnImpossibleLightnessInvalid()
    {
        QCOMPARE(util.colorByStr(QString()), QColor(Qt::black));
        QCOMPARE(util.colorByStr(QString(), 0.8), QColor(Qt::black));
        for (double lightness : {-0.1, 1.1, qInf(), qQNaN()})
            QVERIFY(!util.colorByStr(QStringLiteral("a"), lightness).isValid());
    }

    void twoNamesWithOneKeyShareTheFirstColour()
    {
        // The key of the cache is the name followed by the lightness, so "a" with 10.5 reads as "a1" with
        // 0.5.
        const QColor first = util.colorByStr(QStringLiteral("b1"), 0.5);
        QVERIFY(first.isValid());
        QCOMPARE(util.colorByStr(QStringLiteral("b"), 10.5), first);
    }

    void idsHaveEightColours_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("color");
        const char *const colors[] = {"#ed4e4e", "#6c9dd9", "#eec74e", "#8576f2",
                                      "#7bcd59", "#be6cd9", "#63c9bf", "#ee6293"};
        const auto row = [&colors](int id, int index) {
            QTest::newRow(qPrintable(QString::number(id)))
                << id << (index < 0 ? QString() : QString::fromLatin1(colors[index]));
        };
        const int indices[] = {0, 1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6, 7, 7, 0, 0, 1};
        for (int id = 0; id < 18; ++id)
            row(id, indices[id]);
        row(std::numeric_limits<int>::max(), 0); // 1073741823 + 1 is a multiple of 8
        row(std::numeric_limits<int>::min(), 0); // -1073741824 is one, too
        row(-1, -1);
        row(-2, -1);
        row(-14, -1);
        row(-15, 0);
        row(-16, 0);
        row(-17, -1);
    }
    void idsHaveEightColours()
    {
        QFETCH(int, id);
        QFETCH(QString, color);
        for (int round = 0; round < 2; ++round) {
            const QColor found = util.colorById(id);
            QCOMPARE(found.isValid(), !color.isEmpty());
            if (found.isValid())
                QCOMPARE(found.name(), color);
        }
    }

    void coloursAreTakenApart()
    {
        const auto hsl = [this](const QColor &color) {
            const QVariantMap map = util.colorToHSL(color);
            return QStringLiteral("%1 %2 %3 of %4")
                .arg(map.value(QStringLiteral("h")).toInt())
                .arg(map.value(QStringLiteral("s")).toInt())
                .arg(map.value(QStringLiteral("l")).toInt())
                .arg(map.size());
        };
        QCOMPARE(hsl(QColor(255, 0, 0)), QStringLiteral("0 255 128 of 3"));
        QCOMPARE(hsl(QColor(0, 0, 255)), QStringLiteral("240 255 128 of 3"));
        QCOMPARE(hsl(Qt::white), QStringLiteral("-1 0 255 of 3"));
        QCOMPARE(hsl(Qt::black), QStringLiteral("-1 0 0 of 3"));
    }

    void alphaIsSetOnACopy()
    {
        const QColor color(1, 2, 3);
        QCOMPARE(util.setColorAlpha(color, 0.5).alpha(), 128);
        QCOMPARE(util.setColorAlpha(color, 0).alpha(), 0);
        QCOMPARE(util.setColorAlpha(color, 1), color);
        QCOMPARE(util.setColorAlpha(color, 0.5).rgb() & 0xFFFFFF, QRgb(0x010203));
        QCOMPARE(color.alpha(), 255);
    }

    void alphaStaysWithinItsRange()
    {
        const MessageGuard guard;
        const QColor color(1, 2, 3);
        QCOMPARE(util.setColorAlpha(color, -0.5).alpha(), 0);
        QCOMPARE(util.setColorAlpha(color, -qInf()).alpha(), 0);
        QCOMPARE(util.setColorAlpha(color, 1.5).alpha(), 255);
        QCOMPARE(util.setColorAlpha(color, qInf()).alpha(), 255);
        QCOMPARE(util.setColorAlpha(color, qQNaN()).alpha(), 0);
        QCOMPARE(util.setColorAlpha(color, qQNaN()).rgb() & 0xFFFFFF, QRgb(0x010203));
        QCOMPARE(guard.unexpected(), QStringList());
    }

    void aBubbleCoversItsPartOfTheGradient_data()
    {
        QTest::addColumn<double>("height");
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        QTest::addColumn<QString>("colors");
        const auto row = [](const char *name, double height, double from, double to, const char *colors) {
            QTest::newRow(name) << height << from << to << QString::fromLatin1(colors);
        };
        // From #0a141e at the bottom (start) to #fe0064 at the top (end).
        row("all", 100, 0, 100, "#fe0064 #0a141e");
        row("middle", 100, 50, 50, "#840a41 #840a41");  // 132, 10, 65
        row("quarter", 100, 25, 75, "#c10552 #470f2f"); // 193, 5, 82.5 and 71, 15, 47.5
        row("bottom to top", 100, 100, 0, "#0a141e #fe0064");
        row("so far outside that there is no colour", 100, -100, 300, "#000000 #000000");
        row("no container", 0, 10, 20, "#000000 #000000");
        row("nothing at all", 0, 0, 0, "#000000 #000000");
        row("no number", qQNaN(), 0, 0, "#000000 #000000");
        row("infinite container", qInf(), 10, 20, "#fe0064 #fe0064");
    }
    void aBubbleCoversItsPartOfTheGradient()
    {
        QFETCH(double, height);
        QFETCH(double, from);
        QFETCH(double, to);
        QFETCH(QString, colors);
        const QColor start(0x0a, 0x14, 0x1e, 50);
        const QColor end(0xfe, 0x00, 0x64, 100);
        QCOMPARE(util.bubleGradientColors(height, from, to, start, end).join(QLatin1Char(' ')), colors);
    }

    void textsAreTrimmed_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("trimmed");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("line end") << QStringLiteral(" a\nb ") << QStringLiteral("ab");
        QTest::newRow("all five") << QStringLiteral("a\rb\nc\td\fe\bf") << QStringLiteral("abcdef");
        QTest::newRow("blank stays inside") << QStringLiteral("\n a  b \n") << QStringLiteral("a  b");
        QTest::newRow("vertical tab stays inside") << QStringLiteral("\va\vb\v") << QStringLiteral("a\vb");
        QTest::newRow("no-break space inside")
            << QStringLiteral("\u00a0a\u00a0b\u00a0") << QStringLiteral("a\u00a0b");
        QTest::newRow("letters n, r, t stay") << QStringLiteral("nrtfb\\n") << QStringLiteral("nrtfb\\n");
        QTest::newRow("nothing left") << QStringLiteral("\r\n\t") << QString();
        QTest::newRow("null character stays")
            << QString(QChar(0)) + QLatin1Char('a') << QString(QChar(0)) + QLatin1Char('a');
    }
    void textsAreTrimmed()
    {
        QFETCH(QString, text);
        QFETCH(QString, trimmed);
        QCOMPARE(util.trimString(text), trimmed);
    }

    void identifiersAreRandomHexadecimalDigits()
    {
        const QRegularExpression digits(QStringLiteral("^[0-9a-f]*$"));
        const std::pair<int, int> lengths[] = {{0, 0}, {1, 1}, {16, 16}, {32, 32}, {40, 32}, {-1, 32}};
        for (const auto &[asked, given] : lengths) {
            const QString id = util.createTmpId(asked);
            QCOMPARE(id.size(), given);
            QVERIFY(digits.match(id).hasMatch());
        }
        QCOMPARE(util.createTmpId().size(), 16);
        QSet<QString> ids;
        for (int i = 0; i < 1000; ++i)
            ids.insert(util.createTmpId());
        QCOMPARE(ids.size(), 1000);
    }

    void textsCompareAsTheUsersLanguageSortsThem()
    {
        QStringList words{QStringLiteral("b"), QStringLiteral("a"),      QString(),
                          QStringLiteral("B"), QStringLiteral("\u00e4"), QStringLiteral("10"),
                          QStringLiteral("9")};
        const QCollator collator;
        const auto sign = [](int value) { return (value > 0) - (value < 0); };
        for (const QString &a : qAsConst(words)) {
            for (const QString &b : qAsConst(words))
                QCOMPARE(sign(util.compare(a, b)), sign(collator.compare(a, b)));
        }
        QCOMPARE(util.compare(QStringLiteral("a"), QStringLiteral("a")), 0);
        QVERIFY(util.compare(QStringLiteral("a"), QStringLiteral("b")) < 0);
        QVERIFY(util.compare(QStringLiteral("b"), QStringLiteral("a")) > 0);
    }

    void base64GoesBothWays()
    {
        const QByteArray bytes("\0\xff hi", 5);
        QCOMPARE(util.toBase64(bytes), QByteArray("AP8gaGk="));
        QCOMPARE(util.fromBase64("AP8gaGk="), bytes);
        QCOMPARE(util.fromBase64("AP8g!aGk"), bytes);
        QCOMPARE(util.toBase64(QByteArray()), QByteArray());
    }
};

QTEST_MAIN(TestFormats)
#include "tst_formats.moc"
