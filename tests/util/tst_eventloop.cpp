// Nested event loops: how they end, what they answer, and who deletes them when.

#include "util/eventloop.h"

#include <QPointer>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

class TestEventLoop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void deletingOnQuitIsOffUntilAskedFor()
    {
        EventLoop loop;
        QVERIFY(!loop.deleteOnQuit());
        QSignalSpy spy(&loop, &EventLoop::deleteOnQuitChanged);
        loop.setDeleteOnQuit(false);
        QCOMPARE(spy.count(), 0);
        loop.setDeleteOnQuit(true);
        loop.setDeleteOnQuit(true);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toBool(), true);
        QVERIFY(loop.deleteOnQuit());
    }

    void onlyACodeOtherThanZeroIsTrue_data()
    {
        QTest::addColumn<int>("code"); // -100 for quit()
        QTest::addColumn<bool>("answer");
        QTest::newRow("quit") << -100 << false;
        QTest::newRow("exit 0") << 0 << false;
        QTest::newRow("exit 3") << 3 << true;
        QTest::newRow("exit -1") << -1 << true;
    }
    void onlyACodeOtherThanZeroIsTrue()
    {
        QFETCH(int, code);
        QFETCH(bool, answer);
        EventLoop loop;
        const auto end = [&loop, code] {
            if (code == -100)
                loop.quit();
            else
                loop.exit(code);
        };
        QTimer::singleShot(0, &loop, end);
        QCOMPARE(loop.start(), answer);
        QTimer::singleShot(0, &loop, end);
        QCOMPARE(loop.start(QEventLoop::ExcludeUserInputEvents), answer);
        QVERIFY(!loop.isRunning());
    }

    void everythingElseGoesOnMeanwhile()
    {
        EventLoop loop;
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, &loop, [&] {
            if (++ticks == 5)
                loop.quit();
        });
        timer.start(1);
        loop.start();
        QCOMPARE(ticks, 5);
    }

    void aQuittingLoopLivesUntilTheLoopOutside()
    {
        EventLoopCreator creator;
        const QPointer<EventLoop> loop = creator.create();
        QVERIFY(loop->deleteOnQuit());
        QVERIFY(!loop->parent());
        bool wasAliveInside = false;
        QTimer::singleShot(0, this, [&] {
            loop->quit();
            // Even an inner round of events leaves it alone.
            QCoreApplication::processEvents();
            wasAliveInside = !loop.isNull();
        });
        QTimer::singleShot(0, this, [] {});
        loop->start();
        QVERIFY(wasAliveInside);
        QVERIFY(!loop.isNull());
        QTRY_VERIFY(loop.isNull());
    }

    void aLoopThatIsKeptCanStartAgain()
    {
        EventLoopCreator creator;
        const QScopedPointer<EventLoop> loop(creator.create(false));
        QVERIFY(!loop->deleteOnQuit());
        for (int round = 0; round < 3; ++round) {
            QTimer::singleShot(0, loop.data(), &EventLoop::quit);
            QVERIFY(!loop->start());
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    void aLoopThatNeverStartedIsDeletedOnQuit()
    {
        EventLoopCreator creator;
        const QPointer<EventLoop> loop = creator.create(true);
        loop->quit();
        QVERIFY(!loop.isNull());
        QTRY_VERIFY(loop.isNull());
    }

    void aLoopOutlivesItsCreator()
    {
        auto *creator = new EventLoopCreator;
        const QPointer<EventLoop> loop = creator->create();
        QTimer::singleShot(0, this, [creator] { delete creator; });
        QTimer::singleShot(20, loop.data(), &EventLoop::quit);
        QVERIFY(!loop->start());
        QVERIFY(!loop.isNull());
        QTRY_VERIFY(loop.isNull());
    }

    void loopsNest()
    {
        EventLoop outer;
        EventLoop inner;
        QStringList order;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(0, this, [&] {
                // The outer one is told first, and still ends last.
                outer.exit(1);
                inner.quit();
            });
            order += inner.start() ? QStringLiteral("inner true") : QStringLiteral("inner false");
        });
        order += outer.start() ? QStringLiteral("outer true") : QStringLiteral("outer false");
        QCOMPARE(order, (QStringList{QStringLiteral("inner false"), QStringLiteral("outer true")}));
    }
};

QTEST_GUILESS_MAIN(TestEventLoop)
#include "tst_eventloop.moc"
