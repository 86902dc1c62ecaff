// When a text is laid out, on which thread, and what becomes of results that come late.

#include "layoutreference.h"
#include "text/liveitems.h"
#include "text/pipeline.h"
#include "textengine.h"

#include <QReadWriteLock>
#include <QSemaphore>
#include <QSignalSpy>
#include <QThreadPool>
#include <QtTest>

#include <atomic>

using namespace textengine;

namespace {

constexpr int patience = 30000; ///< ms; other programs may keep the machine busy

/// `count` units of words.
QString words(int count, QChar letter = QLatin1Char('w'))
{
    QString text = (QString(4, letter) + QLatin1Char(' ')).repeated(count / 5 + 1).left(count);
    text[count - 1] = letter;
    return text;
}

/// Holds the workers of an item where they announce their elided text, so that a test decides who goes on and
/// when. While one is held no `DrawableText` may be made or deleted.
class Workers : public QObject
{
public:
    explicit Workers(DrawableText &item)
    {
        const QThread *gui = QThread::currentThread();
        connection = connect(
            &item, &DrawableText::elidedTextChanged, this,
            [this, gui](const QString &text) {
                if (QThread::currentThread() == gui)
                    return;
                ++begun;
                if (text.startsWith(QLatin1Char('a')))
                    a.acquire();
                else if (text.startsWith(QLatin1Char('b')))
                    b.acquire();
            },
            Qt::DirectConnection);
    }
    ~Workers() override
    {
        a.release(100);
        b.release(100);
        QThreadPool::globalInstance()->waitForDone();
        disconnect(connection);
    }

    std::atomic_int begun{0}; ///< workers that have announced their text
    QSemaphore a;             ///< lets a worker go on whose text begins with "a"
    QSemaphore b;

private:
    QMetaObject::Connection connection;
};

/// Sets a long text and has a worker begin with it at once, with no timer left running that would start
/// another.
void setWithoutWait(DrawableText &item, const QString &text)
{
    parserStatus(item).classBegin();
    item.setText(text);
    parserStatus(item).componentComplete();
}

QStringList shownText(const DrawableText &item)
{
    QStringList texts;
    for (const QTextLayout *layout : item.state()->layouts)
        texts.append(layout->text());
    return texts;
}

/// Where the format ranges are and what they say, apart from the order of their properties.
QVector<QPair<QPoint, QMap<int, QVariant>>> formats(const DrawableText &item)
{
    QVector<QPair<QPoint, QMap<int, QVariant>>> result;
    for (const auto &ranges : item.state()->paragraphFormats) {
        for (const QTextLayout::FormatRange &range : ranges)
            result.append({QPoint(range.start, range.length), range.format.properties()});
    }
    return result;
}

} // namespace

class TestPipeline : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Two workers must be able to run side by side, also on a machine with one core.
        QThreadPool::globalInstance()->setMaxThreadCount(4);
    }

    void cleanup()
    {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
    }

    // ---- here or there

    void textBelowTheThresholdIsLaidOutAtOnce()
    {
        DrawableText item;
        item.setPreviewSize({11, 12});
        item.setMaxWidth(200);
        item.setText(words(499));
        QVERIFY(!item.isLayoutPending());
        QVERIFY(item.lineCount() > 10);
        QVERIFY(item.height() > 100);
        QCOMPARE(layoutreference::difference(*item.state(), item.font()), QString());
    }

    void textFromTheThresholdOnIsLaidOutByAWorker()
    {
        DrawableText item;
        item.setPreviewSize({120, 34});
        item.setMaxWidth(200);
        item.setText(words(500));
        QCOMPARE(item.width(), 120.0);
        QCOMPARE(item.height(), 34.0);
        QCOMPARE(item.implicitWidth(), 120.0);
        QCOMPARE(item.implicitHeight(), 34.0);
        QCOMPARE(item.lineCount(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(item.lineCount() > 10, patience);
        QVERIFY(!item.isLayoutPending());
        QCOMPARE(layoutreference::difference(*item.state(), item.font()), QString());
        QCOMPARE(item.width(), qMin(200.0, item.state()->contentWidth));
        QCOMPARE(item.implicitWidth(), item.width());
        QCOMPARE(item.height(), item.state()->contentHeight);
        QCOMPARE(item.implicitHeight(), item.height());
    }

    void lengthIsThatOfTheStoredTextInUnits()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(grinning().repeated(249) + QLatin1Char('a'));
        QVERIFY(item.lineCount() > 0); // 499
        const int lines = item.lineCount();
        item.setPreviewSize({7, 7});
        item.setText(grinning().repeated(250)); // 500, though they show as 250
        QCOMPARE(item.width(), 7.0);
        QTRY_VERIFY_WITH_TIMEOUT(item.width() > 7, patience);
        QVERIFY(item.lineCount() >= lines);
    }

    void lineLimitKeepsALongTextHere()
    {
        DrawableText item;
        item.setPreviewSize({7, 7});
        item.setMaximumLineCount(3);
        item.setMaxWidth(200);
        item.setText(words(5000));
        QVERIFY(!item.isLayoutPending());
        QVERIFY(item.lineCount() > 100);
        item.setElide(Qt::ElideRight);
        QCOMPARE(item.lineCount(), 3);
        item.setElide(Qt::ElideNone);
        item.setMaximumLineCount(-1); // from here on a worker's
        QCOMPARE(item.width(), 7.0);
        QTRY_VERIFY_WITH_TIMEOUT(item.width() > 7, patience);
    }

    void workerGivesWhatTheSetterWouldGive()
    {
        const QString text = (words(90) + QLatin1Char('\n') + grinning() + words(20)).repeated(8);
        const auto prepare = [](DrawableText &item) {
            item.setUserBlocks(QVariant::fromValue(UserTextBlocks({block(0, 3, 1, 7), block(100, 4, 3, 8)})));
            item.setHighlightText(QStringLiteral("wwww"));
            item.setLinkColor(Qt::red);
            item.setMaxWidth(150);
        };
        DrawableText here;
        prepare(here);
        here.setMaximumLineCount(10000);
        here.setText(text);
        DrawableText there;
        prepare(there);
        there.setText(text);
        QTRY_VERIFY_WITH_TIMEOUT(there.lineCount() > 0, patience);
        QVERIFY(formats(here).size() > 100);
        QCOMPARE(there.lineCount(), here.lineCount());
        QCOMPARE(there.width(), here.width());
        QCOMPARE(there.height(), here.height());
        QCOMPARE(there.textHeight(), here.textHeight());
        QCOMPARE(there.state()->paragraphs, here.state()->paragraphs);
        QCOMPARE(there.state()->spans, here.state()->spans);
        QCOMPARE(formats(there), formats(here));
        QCOMPARE(there.state()->emojiImage, here.state()->emojiImage);
        QCOMPARE(there.state()->layouts.size(), here.state()->layouts.size());
    }

    void completionStartsAWorkerWithoutTheWait()
    {
        DrawableText item;
        parserStatus(item).classBegin();
        item.setMaxWidth(200);
        item.setText(words(600));
        QVERIFY(!item.isLayoutPending());
        parserStatus(item).componentComplete();
        QVERIFY(item.isLayoutPending());
        QTRY_VERIFY_WITH_TIMEOUT(!item.isLayoutPending(), patience);
        QVERIFY(item.lineCount() > 10);
    }

    void completionStopsATimerThatRuns()
    {
        DrawableText item;
        item.setMaxWidth(200);
        QSignalSpy layouts(&item, &DrawableText::lineCountChanged);
        item.setText(words(600)); // starts the timer
        parserStatus(item).classBegin();
        parserStatus(item).componentComplete(); // starts a worker
        QTRY_COMPARE_WITH_TIMEOUT(layouts.count(), 1, patience);
        QTest::qWait(500);
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(layouts.count(), 1);
    }

    void setterWaitsBeforeItStartsAWorker()
    {
        DrawableText item;
        item.setMaxWidth(200);
        QElapsedTimer timer;
        timer.start();
        qint64 started = -1;
        connect(
            &item, &DrawableText::elidedTextChanged, this, [&] { started = timer.elapsed(); },
            Qt::DirectConnection);
        item.setText(words(600));
        QVERIFY(!item.isLayoutPending());
        QTRY_VERIFY_WITH_TIMEOUT(item.lineCount() > 0, patience);
        QVERIFY2(started >= 180, qPrintable(QString::number(started)));
    }

    void burstOfChangesStartsOneWorker()
    {
        DrawableText item;
        item.setMaxWidth(200);
        std::atomic_int workers{0};
        std::atomic<qint64> started{0};
        QElapsedTimer timer;
        timer.start();
        connect(
            &item, &DrawableText::elidedTextChanged, this,
            [&] {
                ++workers;
                started = timer.elapsed();
            },
            Qt::DirectConnection);
        // Timers of one thread fire in the order of their deadlines, so a stall of the machine spoils
        // nothing.
        int changes = 0;
        qint64 last = 0;
        QTimer pulse;
        connect(&pulse, &QTimer::timeout, this, [&] {
            item.setText(words(600 + changes));
            last = timer.elapsed();
            if (++changes == 10)
                pulse.stop();
        });
        pulse.start(50);
        QTRY_COMPARE_WITH_TIMEOUT(changes, 10, patience);
        QTRY_VERIFY_WITH_TIMEOUT(item.lineCount() > 0, patience);
        QTest::qWait(300);
        QCOMPARE(workers.load(), 1);
        QCOMPARE(item.text(), words(609));
        QVERIFY2(started - last >= 180, qPrintable(QString::number(started - last)));
    }

    // ---- what is told

    void everyLayoutTellsItsLinesAndItsHeight()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("a\nb"));
        QSignalSpy lines(&item, &DrawableText::lineCountChanged);
        QSignalSpy heights(&item, &DrawableText::textHeightChanged);
        item.setColor(Qt::red);
        QCOMPARE(lines.count(), 1); // though it is the same
        QCOMPARE(lines.at(0).at(0).toInt(), 2);
        QCOMPARE(heights.count(), 1);
        QCOMPARE(heights.at(0).at(0).toDouble(), item.textHeight());

        item.setText(words(600));
        QCOMPARE(lines.count(), 1); // nothing is laid out yet
        QTRY_COMPARE_WITH_TIMEOUT(lines.count(), 2, patience);
        QCOMPARE(heights.count(), 2);
        QCOMPARE(lines.at(1).at(0).toInt(), item.lineCount());
    }

    void sizeThatIsAssignedLastsUntilTheNextLayout()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("abc"));
        const QSizeF size = item.size();
        item.setSize({77, 88});
        item.setColor(Qt::red);
        QCOMPARE(item.size(), size);
    }

    void eachGateIsClosedByItsStep()
    {
        DrawableText item;
        item.setHighlightColor(Qt::red);
        item.setAlignment(Qt::AlignRight);
        QCOMPARE(item.state()->dirtyFlags, 0xeff);
        item.setMaxWidth(200);
        QCOMPARE(item.state()->dirtyFlags, 0xeff & ~(0x1 | 0x2 | 0x4 | 0x10 | 0x80 | 0x800));
    }

    // ---- snapshots

    void snapshotIsACopyWithoutTheLayouts()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(grinning() + QStringLiteral("abc"));
        item.setSelectionStart(3);
        const DrawableTextPrivate *state = item.state();
        const QSharedPointer<DrawableTextPrivate> copy = state->snapshot();
        QCOMPARE(state->layouts.size(), 1);
        QCOMPARE(copy->layouts.size(), 0);
        QCOMPARE(copy->item, &item);
        QCOMPARE(copy->itemId, state->itemId);
        QCOMPARE(copy->text, state->text);
        QCOMPARE(copy->paragraphs, state->paragraphs);
        QCOMPARE(copy->spans, state->spans);
        QCOMPARE(copy->dirtyFlags, state->dirtyFlags);
        QCOMPARE(copy->selectionStart, 3);
        QCOMPARE(copy->contentWidth, state->contentWidth);
        QCOMPARE(copy->emojiImage, state->emojiImage);
        QCOMPARE(copy->spanCursors, state->spanCursors);
        QVERIFY(!copy->isAbandoned());
        copy->abandon();
        QVERIFY(copy->isAbandoned());
        QVERIFY(copy->snapshot()->isAbandoned()); // copied like everything else
    }

    void snapshotOfADeletedItemIsAbandonedAndNotLaidOut()
    {
        QSharedPointer<DrawableTextPrivate> snapshot;
        {
            DrawableText item;
            item.setMaxWidth(200);
            item.setText(words(499));
            item.setReserveSpace(true);
            snapshot = item.state()->snapshot();
        }
        QVERIFY(!snapshot->isAbandoned());
        drawabletext::layOutSnapshot(snapshot); // every gate is closed: only the delivery asks for the item
        QVERIFY(snapshot->isAbandoned());

        DrawableText *item = new DrawableText;
        item->setText(words(499));
        item->setMaxWidth(200);
        const_cast<DrawableTextPrivate *>(item->state())->dirtyFlags = DirtyElide | DirtyEmojiImage;
        snapshot = item->state()->snapshot();
        delete item;
        const qint64 picture = snapshot->emojiImage.cacheKey();
        drawabletext::layOutSnapshot(snapshot); // the elision asks already, and no line is laid out then
        QVERIFY(snapshot->isAbandoned());
        QVERIFY(snapshot->layouts.isEmpty());
        QCOMPARE(snapshot->emojiImage.cacheKey(), picture);
    }

    void abandonedSnapshotIsNotDelivered()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("abc"));
        const QSharedPointer<DrawableTextPrivate> snapshot = item.state()->snapshot();
        snapshot->abandon();
        QSignalSpy lines(&item, &DrawableText::lineCountChanged);
        drawabletext::layOutSnapshot(snapshot);
        QCoreApplication::processEvents();
        QCOMPARE(lines.count(), 0);
    }

    // ---- while a worker is busy

    void itemPaintsTheOldTextUntilTheWorkerIsDone()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("old"));
        item.setPreviewSize({50, 60});
        Workers workers(item);
        setWithoutWait(item, words(600, QLatin1Char('a')));
        QVERIFY(item.isLayoutPending());
        QTRY_COMPARE_WITH_TIMEOUT(workers.begun.load(), 1, patience);
        QCOMPARE(item.size(), QSizeF(50, 60));
        QCOMPARE(shownText(item), QStringList({QStringLiteral("old")}));
        QCOMPARE(item.lineCount(), 1);
        QCOMPARE(item.text(), words(600, QLatin1Char('a')));
        workers.a.release();
        QTRY_VERIFY_WITH_TIMEOUT(!item.isLayoutPending(), patience);
        QCOMPARE(shownText(item), QStringList({words(600, QLatin1Char('a'))}));
        QVERIFY(item.size() != QSizeF(50, 60));
    }

    void whatWasSetMeanwhileIsLostWithTheAdoption()
    {
        DrawableText item;
        item.setMaxWidth(200);
        Workers workers(item);
        item.setSelectionStart(1);
        setWithoutWait(item, words(600, QLatin1Char('a')));
        item.setSelectionStart(4);
        item.setLeading(9);
        QCOMPARE(item.selectionStart(), 4);
        workers.a.release();
        QTRY_VERIFY_WITH_TIMEOUT(!item.isLayoutPending(), patience);
        QCOMPARE(item.selectionStart(), 1);
        QCOMPARE(item.leading(), 0.0);
    }

    void changeThatStartsANewSnapshotIsKept()
    {
        DrawableText item;
        item.setMaxWidth(200);
        Workers workers(item);
        setWithoutWait(item, words(600, QLatin1Char('a')));
        item.setLinkColor(Qt::red);
        item.threadUpdateTimeout();
        workers.a.release(3); // both workers, and the one of the timer that the colour started
        QTRY_VERIFY_WITH_TIMEOUT(!item.isLayoutPending() && item.lineCount() > 0, patience);
        QCOMPARE(item.linkColor(), QColor(Qt::red));
    }

    void shortTextSetMeanwhileIsOverwrittenByTheLateResult()
    {
        DrawableText item;
        item.setMaxWidth(200);
        Workers workers(item);
        const QString text = words(600, QLatin1Char('a'));
        setWithoutWait(item, text);
        QTRY_COMPARE_WITH_TIMEOUT(workers.begun.load(), 1, patience);
        item.setText(QStringLiteral("short"));
        QCOMPARE(item.lineCount(), 1); // it shows at once
        QCOMPARE(item.text(), QStringLiteral("short"));
        workers.a.release();
        QTRY_VERIFY_WITH_TIMEOUT(!item.isLayoutPending(), patience);
        QCOMPARE(item.text(), text);
        QCOMPARE(shownText(item), QStringList({text}));
        QVERIFY(item.lineCount() > 10);
    }

    void timerOfALongTextRunsOnBehindAShortOne()
    {
        DrawableText item;
        item.setMaxWidth(200);
        QSignalSpy lines(&item, &DrawableText::lineCountChanged);
        item.setText(words(600));
        item.setText(QStringLiteral("short"));
        QCOMPARE(lines.count(), 1);
        QVERIFY(!item.isLayoutPending());
        const DrawableTextPrivate *state = item.state();
        QTRY_COMPARE_WITH_TIMEOUT(lines.count(), 2, patience); // and lays the short one out once more
        QVERIFY(item.state() != state);
        QCOMPARE(item.text(), QStringLiteral("short"));
        QCOMPARE(item.lineCount(), 1);
    }

    void newerWorkerThatIsDoneFirstWins()
    {
        DrawableText item;
        item.setMaxWidth(200);
        Workers workers(item);
        setWithoutWait(item, words(600, QLatin1Char('a')));
        setWithoutWait(item, words(700, QLatin1Char('b')));
        QTRY_COMPARE_WITH_TIMEOUT(workers.begun.load(), 2, patience);
        QSignalSpy lines(&item, &DrawableText::lineCountChanged);
        workers.b.release();
        QTRY_COMPARE_WITH_TIMEOUT(lines.count(), 1, patience);
        QCOMPARE(shownText(item), QStringList({words(700, QLatin1Char('b'))}));
        QVERIFY(!item.isLayoutPending());
        const DrawableTextPrivate *state = item.state();
        workers.a.release();
        QTRY_COMPARE_WITH_TIMEOUT(lines.count(), 2,
                                  patience); // the older one delivers, and finds nothing to adopt
        QCOMPARE(item.state(), state);
        QCOMPARE(shownText(item), QStringList({words(700, QLatin1Char('b'))}));
        QCOMPARE(item.text(), words(700, QLatin1Char('b')));
    }

    void olderWorkerThatIsDoneFirstDoesNotShow()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("old"));
        Workers workers(item);
        setWithoutWait(item, words(600, QLatin1Char('a')));
        setWithoutWait(item, words(700, QLatin1Char('b')));
        QTRY_COMPARE_WITH_TIMEOUT(workers.begun.load(), 2, patience);
        QSignalSpy lines(&item, &DrawableText::lineCountChanged);
        workers.a.release();
        QTRY_COMPARE_WITH_TIMEOUT(lines.count(), 1, patience);
        // The newer snapshot is still being written to: the old text goes on showing.
        QVERIFY(item.isLayoutPending());
        QCOMPARE(shownText(item), QStringList({QStringLiteral("old")}));
        QCOMPARE(item.text(), words(700, QLatin1Char('b')));
        workers.b.release();
        QTRY_VERIFY_WITH_TIMEOUT(!item.isLayoutPending(), patience);
        QCOMPARE(shownText(item), QStringList({words(700, QLatin1Char('b'))}));
        QCOMPARE(lines.count(), 2);
    }

    void announcementWithoutASnapshotKeepsTheState()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("abc"));
        const DrawableTextPrivate *state = item.state();
        const QSizeF size = item.size();
        item.setSize({1, 1});
        QSignalSpy lines(&item, &DrawableText::lineCountChanged);
        QSignalSpy heights(&item, &DrawableText::textHeightChanged);
        item.updateData(nullptr);
        QCOMPARE(item.state(), state);
        QCOMPARE(item.text(), QStringLiteral("abc"));
        QCOMPARE(lines.count(), 1);
        QCOMPARE(heights.count(), 1);
        QCOMPARE(item.size(), size);
    }

    // ---- deletion

    void itemThatDiesWithItsWorkerOnTheWayIsNotTouched()
    {
        const int before = liveitems::count();
        for (int round = 0; round < 20; ++round) {
            auto item = std::make_unique<DrawableText>();
            parserStatus(*item).classBegin();
            item->setMaxWidth(200);
            item->setText(words(20000) + grinning().repeated(50));
            parserStatus(*item).componentComplete();
            QVERIFY(item->isLayoutPending());
            QCOMPARE(liveitems::count(), before + 1);
            if (round % 2 == 0)
                QThread::yieldCurrentThread();
            item.reset();
            QCOMPARE(liveitems::count(), before);
        }
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patience));
        QCoreApplication::processEvents();
    }

    void itemThatDiesBeforeItsResultIsTakenIsNotTouched()
    {
        for (int round = 0; round < 20; ++round) {
            auto item = std::make_unique<DrawableText>();
            item->setMaxWidth(200);
            item->setText(words(600));
            item->threadUpdateTimeout();
            QVERIFY(QThreadPool::globalInstance()->waitForDone(patience)); // the result lies in the queue
            item.reset();
            QCoreApplication::processEvents();
        }
    }

    void timerThatRunsDiesWithItsItem()
    {
        auto item = std::make_unique<DrawableText>();
        item->setMaxWidth(200);
        item->setText(words(600));
        item.reset();
        QTest::qWait(300);
    }

    void thousandItemsComeAndGoWhileWorkersRun()
    {
        const int before = liveitems::count();
        std::vector<std::unique_ptr<DrawableText>> items;
        int adopted = 0;
        for (int round = 0; round < 1000; ++round) {
            auto item = std::make_unique<DrawableText>();
            connect(item.get(), &DrawableText::lineCountChanged, this, [&adopted] { ++adopted; });
            item->setUserBlocks(QVariant::fromValue(UserTextBlocks({block(0, 3, 1, 7)})));
            item->setMaxWidth(150 + round % 50);
            item->setText(words(500 + round % 400) + (round % 3 == 0 ? grinning() : QString()));
            item->threadUpdateTimeout();
            if (round % 5 == 0)
                item->threadUpdateTimeout(); // two at once
            items.push_back(std::move(item));
            if (items.size() > 25)
                items.erase(items.begin() + (round * 7) % 20);
            if (round % 10 == 0)
                QCoreApplication::processEvents();
        }
        QCOMPARE(liveitems::count(), before + int(items.size()));
        for (const auto &item : items)
            QTRY_VERIFY_WITH_TIMEOUT(!item->isLayoutPending() && item->lineCount() > 0, patience);
        items.clear();
        QVERIFY(QThreadPool::globalInstance()->waitForDone(patience));
        QCoreApplication::processEvents();
        QCOMPARE(liveitems::count(), before);
        QVERIFY(adopted > 0);
    }

    // ---- size

    void hundredThousandCharactersAreShown()
    {
        DrawableText item;
        item.setMaxWidth(400);
        const QString text = (words(99) + QLatin1Char('\n')).repeated(1000);
        item.setText(text);
        QTRY_VERIFY_WITH_TIMEOUT(item.lineCount() >= 1000, 4 * patience);
        QCOMPARE(item.state()->layouts.size(), 1000);
        QCOMPARE(item.height(), item.state()->contentHeight);
    }

    void workerOfADeletedItemStopsBeforeItsEnd()
    {
        const QString text = (words(99) + QLatin1Char('\n')).repeated(50000); // five million
        // Times how long a worker goes on behind the elision, the last step that asks for the item.
        const auto layoutTime = [&text](bool deletes) {
            auto item = std::make_unique<DrawableText>();
            item->setMaxWidth(400);
            QSemaphore elided;
            connect(
                item.get(), &DrawableText::elidedTextChanged, item.get(), [&elided] { elided.release(); },
                Qt::DirectConnection);
            setWithoutWait(*item, text);
            elided.acquire();
            QElapsedTimer timer;
            timer.start();
            if (deletes)
                item.reset();
            const bool done = QThreadPool::globalInstance()->waitForDone(8 * patience);
            return done ? timer.elapsed() : -1;
        };
        const qint64 whole = layoutTime(false);
        QVERIFY(whole > 0);
        // Times on a busy machine vary: one of a few tries has to be clearly shorter.
        qint64 shortest = whole;
        for (int attempt = 0; attempt < 5 && shortest > whole / 4; ++attempt) {
            const qint64 cut = layoutTime(true);
            QVERIFY(cut >= 0);
            shortest = qMin(shortest, cut);
        }
        QVERIFY2(shortest <= whole / 4, qPrintable(QStringLiteral("%1 of %2").arg(shortest).arg(whole)));
    }
};

QTEST_MAIN(TestPipeline)
#include "tst_pipeline.moc"
