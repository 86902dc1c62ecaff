// ImageColorTheme as an object: sources, the order of its signals, workers that are overtaken.

#include "colortheme/imagecolortheme.h"

#include "palettereference.h"
#include "testpictures.h"
#include "themerecord.h"

#include <QUrl>
#include <QtTest>

#include <messageguard.h>

#include <memory>

class TestImageColorTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void startsWithoutPicture();
    void settersNotifyOnceAndComputeNothing();

    void signalsComeInOrder();
    void palettesEqualTheirRules_data();
    void palettesEqualTheirRules();
    void sourcesBecomePaths_data();
    void sourcesBecomePaths();
    void anotherSpellingOfTheSamePathIsNoChange();
    void resourcesAreReadThroughQrc();
    void plainResourcePathsResolveToNothing();
    void clearedSourceLeavesThemeColorAndState();
    void unreadableFilesStayAtIniting_data();
    void unreadableFilesStayAtIniting();
    void colorCountsOutOfRangeStayAtIniting_data();
    void colorCountsOutOfRangeStayAtIniting();
    void sameThemeColorIsNotAnnouncedAgain();
    void oldPaletteStaysUntilTheNextIsThere();
    void initComputesAnew();
    void colorsAreClampedToThePalette();
    void themeColorSetByHandIsReplaced();

private:
    [[nodiscard]] QString path(const char *name) const { return folder.filePath(QString::fromLatin1(name)); }

    QTemporaryDir folder;
    std::unique_ptr<MessageGuard> guard;
};

void TestImageColorTheme::initTestCase()
{
    QVERIFY(folder.isValid());
    const auto photographs = testpictures::photographs();
    QVERIFY(photographs.at(0).image.save(path("beach.png")));
    QVERIFY(photographs.at(2).image.save(path("portrait.png")));
    QVERIFY(photographs.at(4).image.scaled(1000, 600).save(path("large.jpg")));
    QVERIFY(testpictures::inFormat(photographs.at(3).image.scaled(600, 800), QImage::Format_ARGB32)
                .save(path("transparent.png")));
    QVERIFY(testpictures::flat(QColor(200, 30, 30), 30, 30).save(path("red.png")));
    QVERIFY(testpictures::flat(QColor(200, 30, 30), 30, 30).save(path("a name.png")));
    QVERIFY(testpictures::flat(QColor(30, 30, 200), 30, 30).save(path("blue.png")));
    QFile text(path("text.png"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("This is not a picture.");
    QFile cut(path("cut.png"));
    QVERIFY(cut.open(QIODevice::WriteOnly));
    cut.write(QByteArray::fromHex("89504e470d0a1a0a0000000d49484452"));
}

void TestImageColorTheme::init()
{
    guard = std::make_unique<MessageGuard>();
}

void TestImageColorTheme::cleanup()
{
    settle();
    const QStringList unexpected = guard->unexpected();
    guard.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestImageColorTheme::startsWithoutPicture()
{
    const ImageColorTheme theme;
    QCOMPARE(theme.source(), QString());
    QVERIFY(!theme.themeColor().isValid());
    QCOMPARE(theme.colorCount(), 10);
    QCOMPARE(theme.state(), ImageColorTheme::UnInit);
    QCOMPARE(theme.algorithm(), ImageColorTheme::CUBE);
    QCOMPARE(theme.getPalette(), QList<QColor>());
    QCOMPARE(theme.getColor(0), QColor(Qt::white));
}

void TestImageColorTheme::settersNotifyOnceAndComputeNothing()
{
    ImageColorTheme theme;
    theme.setSource(path("beach.png"));
    settle();
    const QList<QColor> palette = theme.getPalette();
    QVERIFY(!palette.isEmpty());

    QStringList log;
    record(theme, &log);
    for (int i = 0; i < 2; ++i) {
        theme.setColorCount(4);
        theme.setAlgorithm(ImageColorTheme::MMCQ);
        theme.setThemeColor(Qt::green);
        theme.setState(ImageColorTheme::UnInit);
    }
    settle();
    QCOMPARE(log, QStringList({QStringLiteral("colorCount 4"), QStringLiteral("algorithm 0"),
                               QStringLiteral("themeColor #00ff00"), QStringLiteral("state 0")}));
    QCOMPARE(theme.getPalette(), palette);
}

void TestImageColorTheme::signalsComeInOrder()
{
    ImageColorTheme theme;
    QStringList log;
    record(theme, &log);
    theme.setSource(path("red.png"));
    QCOMPARE(log, QStringList({QStringLiteral("state 1"), QStringLiteral("source ") + path("red.png")}));
    log.clear();
    settle();
    QCOMPARE(log, QStringList({QStringLiteral("themeColor #c81e1e"), QStringLiteral("ready"),
                               QStringLiteral("state 2")}));
    log.clear();

    theme.setSource(path("blue.png"));
    settle();
    QCOMPARE(log, QStringList({QStringLiteral("state 1"), QStringLiteral("source ") + path("blue.png"),
                               QStringLiteral("themeColor #1e1ec8"), QStringLiteral("ready"),
                               QStringLiteral("state 2")}));
}

void TestImageColorTheme::palettesEqualTheirRules_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("colorCount");

    for (const char *file : {"beach.png", "portrait.png", "large.jpg", "transparent.png"}) {
        for (const int colorCount : {2, 10, 256})
            QTest::addRow("%s, %d", file, colorCount) << path(file) << colorCount;
    }
}

void TestImageColorTheme::palettesEqualTheirRules()
{
    QFETCH(QString, file);
    QFETCH(int, colorCount);

    const QImage image = reference::readPicture(file);
    QVERIFY(!image.isNull());
    ImageColorTheme theme;
    theme.setColorCount(colorCount);
    theme.setSource(file);
    settle();
    QCOMPARE(theme.getPalette(), reference::cubePalette(image, colorCount));
    QCOMPARE(theme.themeColor(), theme.getPalette().constFirst());

    theme.setAlgorithm(ImageColorTheme::MMCQ);
    theme.init();
    settle();
    QCOMPARE(theme.getPalette(), reference::mmcqPalette(image, colorCount));
    QCOMPARE(theme.themeColor(), theme.getPalette().constFirst());
}

void TestImageColorTheme::sourcesBecomePaths_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("resolved");

    QTest::newRow("plain path") << path("red.png") << path("red.png");
    QTest::newRow("file URL") << QUrl::fromLocalFile(path("red.png")).toString() << path("red.png");
    QTest::newRow("file URL with a space")
        << QUrl::fromLocalFile(path("a name.png")).toString(QUrl::FullyEncoded) << path("a name.png");
    QTest::newRow("path with a space") << path("a name.png") << path("a name.png");
    QTest::newRow("resource") << QStringLiteral("qrc:/qml/image/transparent.png")
                              << QStringLiteral(":/qml/image/transparent.png");
    QTest::newRow("resource with two slashes") << QStringLiteral("qrc://a.png") << QStringLiteral("://a.png");
    QTest::newRow("file that is named like a resource")
        << QStringLiteral("qrcodes.png") << QStringLiteral("odes.png");
    QTest::newRow("URL of the network")
        << QStringLiteral("https://example.org/a.png") << QStringLiteral("https://example.org/a.png");
    QTest::newRow("resource scheme in capitals")
        << QStringLiteral("QRC:/a.png") << QStringLiteral("qrc:/a.png");
}

void TestImageColorTheme::sourcesBecomePaths()
{
    QFETCH(QString, source);
    QFETCH(QString, resolved);

    ImageColorTheme theme;
    QSignalSpy changed(&theme, &ImageColorTheme::sourceChanged);
    theme.setSource(source);
    QCOMPARE(theme.source(), resolved);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toString(), resolved);
}

void TestImageColorTheme::anotherSpellingOfTheSamePathIsNoChange()
{
    ImageColorTheme theme;
    theme.setSource(path("red.png"));
    settle();
    QStringList log;
    record(theme, &log);
    theme.setSource(QUrl::fromLocalFile(path("red.png")).toString());
    settle();
    QCOMPARE(log, QStringList());
    // The same file, but not the same path.
    theme.setSource(folder.path() + QStringLiteral("/./red.png"));
    settle();
    QCOMPARE(log.count(QStringLiteral("ready")), 1);
}

void TestImageColorTheme::resourcesAreReadThroughQrc()
{
    ImageColorTheme theme;
    theme.setSource(QStringLiteral("qrc:/palettes/red.ppm"));
    settle();
    QCOMPARE(theme.state(), ImageColorTheme::Ready);
    QCOMPARE(theme.themeColor(), QColor(200, 30, 30));
}

void TestImageColorTheme::plainResourcePathsResolveToNothing()
{
    // QUrl takes the text before the first colon for a scheme, and finds it empty.
    ImageColorTheme theme;
    QStringList log;
    record(theme, &log);
    theme.setSource(QStringLiteral(":/palettes/red.ppm"));
    settle();
    QCOMPARE(log, QStringList());
    QCOMPARE(theme.source(), QString());
    QCOMPARE(theme.state(), ImageColorTheme::UnInit);

    theme.setSource(path("blue.png"));
    settle();
    theme.setSource(QStringLiteral(":/palettes/red.ppm"));
    QCOMPARE(theme.getPalette(), QList<QColor>());
}

void TestImageColorTheme::clearedSourceLeavesThemeColorAndState()
{
    ImageColorTheme theme;
    theme.setSource(path("red.png"));
    settle();
    QVERIFY(!theme.getPalette().isEmpty());
    QStringList log;
    record(theme, &log);
    theme.setSource(QString());
    settle();
    QCOMPARE(log, QStringList({QStringLiteral("source ")}));
    QCOMPARE(theme.getPalette(), QList<QColor>());
    QCOMPARE(theme.getColor(0), QColor(Qt::white));
    QCOMPARE(theme.themeColor(), QColor(200, 30, 30));
    QCOMPARE(theme.state(), ImageColorTheme::Ready);
}

void TestImageColorTheme::unreadableFilesStayAtIniting_data()
{
    QTest::addColumn<QString>("source");

    QTest::newRow("missing") << path("missing.png");
    QTest::newRow("folder") << folder.path();
    QTest::newRow("text") << path("text.png");
    QTest::newRow("cut") << path("cut.png");
    QTest::newRow("missing resource") << QStringLiteral("qrc:/palettes/missing.png");
}

void TestImageColorTheme::unreadableFilesStayAtIniting()
{
    QFETCH(QString, source);
    guard->allow(QStringLiteral("libpng"));

    for (const auto algorithm : {ImageColorTheme::MMCQ, ImageColorTheme::CUBE}) {
        ImageColorTheme theme;
        theme.setAlgorithm(algorithm);
        theme.setSource(path("red.png"));
        settle();
        const QList<QColor> palette = theme.getPalette();
        const QColor color = theme.themeColor();
        QStringList log;
        record(theme, &log);
        theme.setSource(source);
        settle();
        QCOMPARE(theme.state(), ImageColorTheme::Initing);
        QCOMPARE(log.count(QStringLiteral("ready")), 0);
        QCOMPARE(theme.getPalette(), palette);
        QCOMPARE(theme.themeColor(), color);
    }
}

void TestImageColorTheme::colorCountsOutOfRangeStayAtIniting_data()
{
    QTest::addColumn<int>("colorCount");
    QTest::addColumn<int>("state");

    const int initing = ImageColorTheme::Initing;
    const int ready = ImageColorTheme::Ready;
    QTest::newRow("-1") << -1 << initing;
    QTest::newRow("0") << 0 << initing;
    QTest::newRow("1") << 1 << initing;
    QTest::newRow("2") << 2 << ready;
    QTest::newRow("256") << 256 << ready;
    QTest::newRow("257") << 257 << initing;
}

void TestImageColorTheme::colorCountsOutOfRangeStayAtIniting()
{
    QFETCH(int, colorCount);
    QFETCH(int, state);

    for (const auto algorithm : {ImageColorTheme::MMCQ, ImageColorTheme::CUBE}) {
        ImageColorTheme theme;
        theme.setAlgorithm(algorithm);
        theme.setColorCount(colorCount);
        theme.setSource(path("beach.png"));
        settle();
        QCOMPARE(int(theme.state()), state);
        QCOMPARE(theme.getPalette().isEmpty(), state == ImageColorTheme::Initing);
    }
}

void TestImageColorTheme::sameThemeColorIsNotAnnouncedAgain()
{
    ImageColorTheme theme;
    theme.setSource(path("red.png"));
    settle();
    QStringList log;
    record(theme, &log);
    theme.init();
    settle();
    QCOMPARE(log,
             QStringList({QStringLiteral("state 1"), QStringLiteral("ready"), QStringLiteral("state 2")}));
}

void TestImageColorTheme::oldPaletteStaysUntilTheNextIsThere()
{
    ImageColorTheme theme;
    theme.setSource(path("blue.png"));
    settle();
    const QList<QColor> palette = theme.getPalette();
    theme.setSource(path("red.png"));
    QThreadPool::globalInstance()->waitForDone();
    QCOMPARE(theme.getPalette(), palette);
    QCOMPARE(theme.state(), ImageColorTheme::Initing);
    QCoreApplication::processEvents();
    QVERIFY(theme.getPalette() != palette);
}

void TestImageColorTheme::initComputesAnew()
{
    ImageColorTheme theme;
    theme.setSource(path("beach.png"));
    settle();
    QVERIFY(theme.getPalette().size() > 3);
    theme.setColorCount(3);
    theme.init();
    settle();
    QCOMPARE(theme.getPalette().size(), 3);

    // Also without a picture, which then never comes.
    guard->allow(QStringLiteral("No file name specified"));
    ImageColorTheme empty;
    empty.init();
    settle();
    QCOMPARE(empty.state(), ImageColorTheme::Initing);
}

void TestImageColorTheme::colorsAreClampedToThePalette()
{
    ImageColorTheme theme;
    theme.setSource(path("beach.png"));
    settle();
    const QList<QColor> palette = theme.getPalette();
    QVERIFY(palette.size() > 1);
    QCOMPARE(theme.getColor(-5), palette.constFirst());
    QCOMPARE(theme.getColor(0), palette.constFirst());
    QCOMPARE(theme.getColor(palette.size() - 1), palette.constLast());
    QCOMPARE(theme.getColor(palette.size()), QColor(Qt::white));
    QCOMPARE(theme.getColor(1'000'000), QColor(Qt::white));
}

void TestImageColorTheme::themeColorSetByHandIsReplaced()
{
    ImageColorTheme theme;
    theme.setThemeColor(Qt::green);
    theme.setSource(path("red.png"));
    QCOMPARE(theme.themeColor(), QColor(Qt::green));
    settle();
    QCOMPARE(theme.themeColor(), QColor(200, 30, 30));
}

QTEST_GUILESS_MAIN(TestImageColorTheme)
#include "tst_imagecolortheme.moc"
