// ImageColorTheme's workers: overtaken, waited for, outlived by nobody.

#include "colortheme/imagecolortheme.h"

#include "gateimage.h"
#include "palettereference.h"
#include "testpictures.h"
#include "themerecord.h"

#include <QSemaphore>
#include <QThreadPool>
#include <QtTest>

#include <messageguard.h>

#include <memory>
#include <thread>

namespace {

constexpr int patience = 20'000; ///< ms

} // namespace

class TestThemeWorkers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

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

void TestThemeWorkers::initTestCase()
{
    QVERIFY(folder.isValid());
    QVERIFY(testpictures::photographs().constFirst().image.save(path("beach.png")));
    QVERIFY(testpictures::flat(QColor(200, 30, 30), 30, 30).save(path("red.png")));
    QVERIFY(testpictures::flat(QColor(30, 30, 200), 30, 30).save(path("blue.png")));
    QVERIFY(gateimage::write(path("gate.gate")));
}

void TestThemeWorkers::init()
{
    guard = std::make_unique<MessageGuard>();
}

void TestThemeWorkers::cleanup()
{
    gateimage::open();
    settle();
    const QStringList unexpected = guard->unexpected();
    guard.reset();
    QCOMPARE(unexpected, QStringList());
}

void TestThemeWorkers::overtakenWorkerAnnouncesTheNextPaletteTwice()
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

void TestThemeWorkers::initWaitsForARunningWorker()
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

void TestThemeWorkers::destructionWaitsForARunningWorker()
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

void TestThemeWorkers::destructionRunsAWorkerThatNeverStarted()
{
#ifdef __SANITIZE_THREAD__
    QSKIP("The pool's tasks are wrapped for ThreadSanitizer, so nobody can take his own back");
#endif
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

void TestThemeWorkers::clearedSourceDoesNotStopARunningWorker()
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

void TestThemeWorkers::unknownAlgorithmRunsNothing()
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

void TestThemeWorkers::processFinishedWithoutWorkerIsHarmless()
{
    ImageColorTheme theme;
    QSignalSpy ready(&theme, &ImageColorTheme::ready);
    theme.processFinished();
    QCOMPARE(ready.size(), 1);
    QCOMPARE(theme.getPalette(), QList<QColor>());
    QVERIFY(!theme.themeColor().isValid());
}

void TestThemeWorkers::workersNeedNoTarget()
{
    const QImage image = reference::readPicture(path("beach.png"));
    QCOMPARE(processMmcq(path("beach.png"), 10, nullptr), reference::mmcqPalette(image, 10));
    QCOMPARE(processCube(path("beach.png"), 10, nullptr), reference::cubePalette(image, 10));
    QCOMPARE(processMmcq(path("missing.png"), 10, nullptr), QList<QColor>());
    QCOMPARE(processCube(path("beach.png"), 1, nullptr), QList<QColor>());
}

QTEST_GUILESS_MAIN(TestThemeWorkers)
#include "tst_themeworkers.moc"
