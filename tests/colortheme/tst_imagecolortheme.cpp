// ImageColorTheme as an object: what it declares, sources, the order of its signals, workers that are
// overtaken.

#include "colortheme/imagecolortheme.h"

#include "../util/interface.h"
#include "gateimage.h"
#include "palettereference.h"
#include "testpictures.h"

#include <QSemaphore>
#include <QThreadPool>
#include <QUrl>
#include <QtTest>

#include <messageguard.h>

#include <memory>
#include <thread>

namespace {

constexpr int patience = 20'000; ///< ms

const std::initializer_list<const char *> declaredMembers = {
    "property QString source writable notify sourceChanged",
    "property QColor themeColor writable notify themeColorChanged",
    "property int colorCount writable notify colorCountChanged",
    "property State state writable notify stateChanged",
    "property Algorithm algorithm writable notify algorithmChanged",
    "signal void ready()",
    "signal void sourceChanged(QString)",
    "signal void themeColorChanged(QColor)",
    "signal void colorCountChanged(int)",
    "signal void stateChanged(State)",
    "signal void algorithmChanged(Algorithm)",
    "slot void processFinished()",
    "slot void init()",
    "slot QList<QColor> getPalette()",
    "slot QColor getColor(int)",
    "slot void setSource(QString)",
    "slot void setThemeColor(QColor)",
    "slot void setColorCount(int)",
    "slot void setState(State)",
    "slot void setAlgorithm(Algorithm)",
};

/// Writes down the signals of a theme in the order in which they come.
QStringList *record(ImageColorTheme &theme, QStringList *log)
{
    QObject::connect(&theme, &ImageColorTheme::ready, [log] { log->append(QStringLiteral("ready")); });
    QObject::connect(&theme, &ImageColorTheme::sourceChanged,
                     [log](const QString &source) { log->append(QStringLiteral("source ") + source); });
    QObject::connect(&theme, &ImageColorTheme::themeColorChanged, [log](const QColor &color) {
        log->append(QStringLiteral("themeColor ") + color.name());
    });
    QObject::connect(&theme, &ImageColorTheme::colorCountChanged,
                     [log](int count) { log->append(QStringLiteral("colorCount %1").arg(count)); });
    QObject::connect(&theme, &ImageColorTheme::stateChanged, [log](ImageColorTheme::State state) {
        log->append(QStringLiteral("state %1").arg(int(state)));
    });
    QObject::connect(&theme, &ImageColorTheme::algorithmChanged, [log](ImageColorTheme::Algorithm algorithm) {
        log->append(QStringLiteral("algorithm %1").arg(int(algorithm)));
    });
    return log;
}

/// Lets workers end and delivers what they queued.
void settle()
{
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

} // namespace

class TestImageColorTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void declaresExactlyItsInterface();
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

    void overtakenWorkerAnnouncesTheNextPaletteTwice();
    void initWaitsForARunningWorker();
    void destructionWaitsForARunningWorker();
    void destructionRunsAWorkerThatNeverStarted();
    void clearedSourceDoesNotStopARunningWorker();
    void unknownAlgorithmRunsNothing();
    void processFinishedWithoutWorkerIsHarmless();
    void workersNeedNoTarget();

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
    QVERIFY(gateimage::write(path("gate.gate")));
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
    gateimage::open();
    settle();
    const QStringList unexpected = guard->unexpected();
    guard.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestImageColorTheme::declaresExactlyItsInterface()
{
    QCOMPARE(declaredInterface(ImageColorTheme::staticMetaObject), expectedInterface(declaredMembers));
    QCOMPARE(int(ImageColorTheme::UnInit), 0);
    QCOMPARE(int(ImageColorTheme::Initing), 1);
    QCOMPARE(int(ImageColorTheme::Ready), 2);
    QCOMPARE(int(ImageColorTheme::MMCQ), 0);
    QCOMPARE(int(ImageColorTheme::CUBE), 1);
    QCOMPARE(ImageColorTheme::staticMetaObject.superClass(), &QObject::staticMetaObject);
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

void TestImageColorTheme::overtakenWorkerAnnouncesTheNextPaletteTwice()
{
    ImageColorTheme theme;
    QStringList log;
    record(theme, &log);
    theme.setSource(path("red.png"));
    QThreadPool::globalInstance()->waitForDone();
    theme.setSource(path("blue.png"));
    settle();
    // The first worker's call takes the second one's palette: red is never seen.
    QCOMPARE(log,
             QStringList({QStringLiteral("state 1"), QStringLiteral("source ") + path("red.png"),
                          QStringLiteral("source ") + path("blue.png"), QStringLiteral("themeColor #1e1ec8"),
                          QStringLiteral("ready"), QStringLiteral("state 2"), QStringLiteral("ready")}));
}

void TestImageColorTheme::initWaitsForARunningWorker()
{
    for (const auto algorithm : {ImageColorTheme::MMCQ, ImageColorTheme::CUBE}) {
        ImageColorTheme theme;
        theme.setAlgorithm(algorithm);
        gateimage::close();
        theme.setSource(path("gate.gate"));
        QVERIFY(gateimage::waitForReader());
        std::thread opener([] {
            QThread::msleep(50);
            gateimage::open();
        });
        theme.setSource(path("blue.png"));
        QCOMPARE(gateimage::finishedReaders(), 1);
        opener.join();
        QTRY_COMPARE_WITH_TIMEOUT(theme.state(), ImageColorTheme::Ready, patience);
        QCOMPARE(theme.getPalette(),
                 algorithm == ImageColorTheme::CUBE
                     ? reference::cubePalette(reference::readPicture(path("blue.png")), 10)
                     : reference::mmcqPalette(reference::readPicture(path("blue.png")), 10));
    }
}

void TestImageColorTheme::destructionWaitsForARunningWorker()
{
    for (const auto algorithm : {ImageColorTheme::MMCQ, ImageColorTheme::CUBE}) {
        auto theme = std::make_unique<ImageColorTheme>();
        theme->setAlgorithm(algorithm);
        gateimage::close();
        theme->setSource(path("gate.gate"));
        QVERIFY(gateimage::waitForReader());
        std::thread opener([] {
            QThread::msleep(50);
            gateimage::open();
        });
        theme.reset();
        QCOMPARE(gateimage::finishedReaders(), 1);
        opener.join();
        settle();
    }
}

void TestImageColorTheme::destructionRunsAWorkerThatNeverStarted()
{
    // With every thread of the pool taken, the worker still waits in its queue.
    QThreadPool *pool = QThreadPool::globalInstance();
    QSemaphore taken;
    QSemaphore release;
    const int threads = pool->maxThreadCount();
    for (int i = 0; i < threads; ++i) {
        pool->start([&] {
            taken.release();
            release.acquire();
        });
    }
    QVERIFY(taken.tryAcquire(threads, patience));
    {
        ImageColorTheme theme;
        theme.setSource(path("beach.png"));
        theme.setSource(path("red.png"));
        theme.init();
    }
    {
        ImageColorTheme theme;
        theme.setSource(path("beach.png"));
        theme.setSource(path("red.png"));
        release.release(threads);
        settle();
        QCOMPARE(theme.themeColor(), QColor(200, 30, 30));
        QCOMPARE(theme.state(), ImageColorTheme::Ready);
    }
}

void TestImageColorTheme::clearedSourceDoesNotStopARunningWorker()
{
    ImageColorTheme theme;
    gateimage::close();
    theme.setSource(path("gate.gate"));
    QVERIFY(gateimage::waitForReader());
    theme.setSource(QString());
    QCOMPARE(theme.getPalette(), QList<QColor>());
    QCOMPARE(theme.state(), ImageColorTheme::Initing);
    gateimage::open();
    QTRY_COMPARE_WITH_TIMEOUT(theme.state(), ImageColorTheme::Ready, patience);
    QCOMPARE(theme.themeColor(), QColor(200, 30, 30));
    QVERIFY(!theme.getPalette().isEmpty());
}

void TestImageColorTheme::unknownAlgorithmRunsNothing()
{
    ImageColorTheme theme;
    theme.setAlgorithm(ImageColorTheme::Algorithm(7));
    theme.setSource(path("red.png"));
    settle();
    QCOMPARE(theme.state(), ImageColorTheme::Initing);

    // A cancelled worker's call then finds no worker behind it and no result, unless the worker was faster.
    ImageColorTheme other;
    gateimage::close();
    other.setSource(path("gate.gate"));
    QVERIFY(gateimage::waitForReader());
    other.setAlgorithm(ImageColorTheme::Algorithm(7));
    std::thread opener([] {
        QThread::msleep(100);
        gateimage::open();
    });
    other.init();
    opener.join();
    settle();
    QVERIFY(other.getPalette().isEmpty() || other.getColor(0) == QColor(200, 30, 30));
}

void TestImageColorTheme::processFinishedWithoutWorkerIsHarmless()
{
    ImageColorTheme theme;
    QSignalSpy ready(&theme, &ImageColorTheme::ready);
    theme.processFinished();
    QCOMPARE(ready.size(), 1);
    QCOMPARE(theme.getPalette(), QList<QColor>());
    QVERIFY(!theme.themeColor().isValid());
}

void TestImageColorTheme::workersNeedNoTarget()
{
    const QImage image = reference::readPicture(path("beach.png"));
    QCOMPARE(processMmcq(path("beach.png"), 10, nullptr), reference::mmcqPalette(image, 10));
    QCOMPARE(processCube(path("beach.png"), 10, nullptr), reference::cubePalette(image, 10));
    QCOMPARE(processMmcq(path("missing.png"), 10, nullptr), QList<QColor>());
    QCOMPARE(processCube(path("beach.png"), 1, nullptr), QList<QColor>());
}

QTEST_GUILESS_MAIN(TestImageColorTheme)
#include "tst_imagecolortheme.moc"
