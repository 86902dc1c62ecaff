// DrawableText beside Qt Quick's Text, which knows no emoji and no selection, and its TextEdit, which can be
// made to know them.

#include "corpus.h"
#include "measure.h"
#include "peers.h"
#include "stage.h"
#include "text/drawabletext.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QScopeGuard>
#include <QStringList>
#include <QtConcurrentRun>

#include <ctime>
#include <malloc.h>

namespace {

constexpr quint32 seed = 20200517;
constexpr double bubbleWidth = 320.0;

using Items = std::vector<std::unique_ptr<QQuickItem>>;

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

/// Time in milliseconds.
double wallTime()
{
    timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/// Time in milliseconds that this thread has run.
double threadTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

const char *nameOf(Peers::Kind kind)
{
    static const char *const names[] = {"DrawableText", "Text", "TextEdit"};
    return names[kind];
}

Contender contender(Peers::Kind kind, std::function<double()> once)
{
    return {QString::fromLatin1(nameOf(kind)), std::move(once)};
}

class TextBenchmarks
{
public:
    /// Measures the rows whose titles hold `filter`, in `rounds` rounds where that is positive; false when a
    /// target is missed.
    bool run(const QString &filter, int rounds)
    {
        QVector<Row> rows = {creation(),
                             widthChange(),
                             widthChangeWithFrame(),
                             memory(),
                             memoryWithEmoji(),
                             longTextReturn(),
                             longTextGap(),
                             longTextTurn(),
                             selectionDrag(),
                             selectionDragWithFrame(),
                             firstFrameUntilSynchronised(),
                             firstFrame()};
        bool allMet = true;
        printHead();
        for (Row &row : rows) {
            if (rounds > 0)
                row.rounds = rounds;
            if (row.title.contains(filter, Qt::CaseInsensitive) && !measure(row))
                allMet = false;
        }
        return allMet;
    }

private:
    [[nodiscard]] QStringList contents(Peers::Kind kind, const QStringList &messages) const
    {
        QStringList result;
        for (const QString &message : messages)
            result.append(peers.content(kind, message));
        return result;
    }

    [[nodiscard]] Items createAll(Peers::Kind kind, const QStringList &contents)
    {
        Items items;
        items.reserve(std::size_t(contents.size()));
        for (const QString &content : contents)
            items.push_back(peers.create(kind, content, bubbleWidth));
        return items;
    }

    /// Sum of the items' heights: a layout that nobody looks at is not made by everyone.
    static double totalHeight(const Items &items)
    {
        double height = 0.0;
        for (const auto &item : items)
            height += item->height();
        return height;
    }

    /// Items in two columns in the window, each below the one before.
    void show(const Items &items)
    {
        double bottoms[] = {0.0, 0.0};
        int column = 0;
        for (const auto &item : items) {
            item->setParentItem(stage.contentItem());
            item->setPosition(QPointF(column * (stage.view().width() / 2), bottoms[column]));
            bottoms[column] += item->height() + 4.0;
            column = 1 - column;
        }
    }

    Row creation()
    {
        Row row{
            QStringLiteral("Create, lay out and size 1,000 mixed messages"), QStringLiteral("ms"), {}, {}};
        row.rounds = 21;
        const QStringList messages = Corpus(seed).messages(1000);
        for (const auto kind : {Peers::Ours, Peers::PlainText, Peers::RichText}) {
            row.contenders.append(contender(kind, [=, texts = contents(kind, messages)] {
                QElapsedTimer timer;
                timer.start();
                const Items items = createAll(kind, texts);
                checksum += totalHeight(items);
                return milliseconds(timer);
            }));
        }
        row.targets = {{Peers::PlainText, 1.2}, {Peers::RichText, 0.3}};
        return row;
    }

    Row widthChangeRow(const QString &title, bool withFrame)
    {
        Row row{title, QStringLiteral("ms"), {}, {}};
        row.rounds = 25;
        const QStringList messages = Corpus(seed + 1).messages(20);
        for (const auto kind : {Peers::Ours, Peers::PlainText, Peers::RichText}) {
            row.contenders.append(contender(kind, [=, texts = contents(kind, messages)] {
                const Items items = createAll(kind, texts);
                show(items);
                stage.drawFrame();
                QElapsedTimer timer;
                timer.start();
                for (const auto &item : items)
                    Peers::setWidth(kind, *item, 240.0);
                checksum += totalHeight(items);
                if (withFrame)
                    stage.drawFrame();
                return milliseconds(timer);
            }));
        }
        row.targets = {{Peers::PlainText, 1.2}};
        return row;
    }

    Row widthChange()
    {
        return widthChangeRow(QStringLiteral("Change the width of 20 visible messages"), false);
    }

    Row widthChangeWithFrame()
    {
        return widthChangeRow(QStringLiteral("Change the width of 20 visible messages, and the next frame"),
                              true);
    }

    /// Ours keeps a picture of a message's emoji, which plain text has no counterpart of: with emoji there is
    /// no target against it.
    Row memoryRow(const QString &title, int emojiEvery, const QVector<Target> &targets)
    {
        Row row{title, QStringLiteral("MB"), {}, targets};
        row.rounds = 3;
        const QStringList messages = Corpus(seed + 2).shortMessages(10000, emojiEvery);
        for (const auto kind : {Peers::Ours, Peers::PlainText, Peers::RichText}) {
            row.contenders.append(contender(kind, [=, texts = contents(kind, messages)] {
                const auto used = [] {
                    const struct mallinfo2 info = mallinfo2();
                    return double(info.uordblks) + double(info.hblkhd);
                };
                const double before = used();
                const Items items = createAll(kind, texts);
                checksum += totalHeight(items);
                return (used() - before) / 1e6;
            }));
        }
        return row;
    }

    Row memory()
    {
        return memoryRow(QStringLiteral("Memory of 10,000 laid-out short messages"), 0,
                         {{Peers::PlainText, 1.5}});
    }

    Row memoryWithEmoji()
    {
        return memoryRow(
            QStringLiteral("Memory of 10,000 laid-out short messages, one out of four with an emoji"), 4, {});
    }

    Row longTextReturn()
    {
        Row row{QStringLiteral("Set a text of 100,000 characters: time in the setter"),
                QStringLiteral("ms"),
                {},
                {}};
        const QString text = Corpus(seed + 3).longMessage(100000);
        for (const auto kind : {Peers::Ours, Peers::PlainText}) {
            row.contenders.append(contender(kind, [=] {
                const auto item = peers.create(kind, QString(), bubbleWidth);
                QElapsedTimer timer;
                timer.start();
                item->setProperty("text", text);
                checksum += item->height();
                return milliseconds(timer);
            }));
        }
        row.targets = {{Peers::PlainText, 0.01}};
        return row;
    }

    /// The longest time by `clock` between two turns of the event loop until `isDone`.
    template <typename Clock, typename Condition>
    static double longestGap(Clock clock, Condition isDone)
    {
        double gap = 0.0;
        double before = clock();
        while (!isDone()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents);
            const double now = clock();
            gap = qMax(gap, now - before);
            before = now;
        }
        return gap;
    }

    Contender longTextGapBy(double (*clock)())
    {
        return contender(Peers::Ours, [=, text = Corpus(seed + 3).longMessage(100000)] {
            const auto item = peers.create(Peers::Ours, QString(), bubbleWidth);
            item->setProperty("text", text);
            return longestGap(clock, [&item] { return item->property("lineCount").toInt() > 0; });
        });
    }

    Row longTextGap()
    {
        Row row{
            QStringLiteral("Set a text of 100,000 characters: longest time without events until it is there"),
            QStringLiteral("ms"),
            {longTextGapBy(wallTime)},
            {},
            8.0,
            1,
            15};
        // What the machine does to an event loop that has nothing to do, beside a busy thread.
        row.contenders.append({QStringLiteral("idle event loop"), [] {
                                   const QFuture<void> busy = QtConcurrent::run([] {
                                       const double end = wallTime() + 250.0;
                                       while (wallTime() < end) {
                                       }
                                   });
                                   return longestGap(wallTime, [&busy] { return busy.isFinished(); });
                               }});
        return row;
    }

    Row longTextTurn()
    {
        return {QStringLiteral("Set a text of 100,000 characters: longest turn of the event loop until it is "
                               "there, in processor time"),
                QStringLiteral("ms"),
                {longTextGapBy(threadTime)},
                {},
                8.0,
                -1,
                15};
    }

    /// How far something is followed. TextEdit leaves most of its work to the next frame, so the event alone
    /// says nothing.
    enum class Until { Synchronised, Shown };

    /// What drawing the window costs while nothing in it changes: the part of a frame that no item can spare.
    double redrawing()
    {
        constexpr int frames = 10;
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < frames; ++i)
            stage.drawFrame();
        return milliseconds(timer) / frames;
    }

    Contender redrawingContender(Peers::Kind kind, const QStringList &messages, double width)
    {
        return {QStringLiteral("%1, nothing changed").arg(QString::fromLatin1(nameOf(kind))),
                [=, texts = contents(kind, messages)] {
                    Items items;
                    for (const QString &text : texts)
                        items.push_back(peers.create(kind, text, width));
                    show(items);
                    while (items.front()->height() < 1.0)
                        QCoreApplication::processEvents(QEventLoop::AllEvents);
                    stage.drawFrame();
                    return redrawing();
                }};
    }

    Row selectionDragRow(const QString &title, Until until)
    {
        Row row{title, QStringLiteral("ms"), {}, {}};
        const QString message = Corpus(seed + 4).longMessage(5000, 200);
        for (const auto kind : {Peers::Ours, Peers::RichText}) {
            row.contenders.append(contender(kind, [=, text = peers.content(kind, message)] {
                const auto item = peers.create(kind, text, 780.0);
                item->setParentItem(stage.contentItem());
                while (item->height() < 100.0)
                    QCoreApplication::processEvents(QEventLoop::AllEvents);
                stage.drawFrame();
                constexpr int steps = 40;
                stage.sendMouse(QEvent::MouseButtonPress, QPointF(5.0, 5.0));
                double handled = 0.0;
                const double synchronisedBefore = stage.synchronisationTime();
                QElapsedTimer total;
                total.start();
                for (int i = 0; i < steps; ++i) {
                    QElapsedTimer step;
                    step.start();
                    stage.sendMouse(QEvent::MouseMove, QPointF(20.0 + 11.0 * i, 20.0 + 15.0 * i));
                    handled += milliseconds(step);
                    stage.drawFrame();
                }
                const double synchronised = stage.synchronisationTime() - synchronisedBefore;
                const double cost = until == Until::Shown ? milliseconds(total) : handled + synchronised;
                stage.sendMouse(QEvent::MouseButtonRelease, QPointF(440.0, 605.0));
                if (item->property("selectedText").toString().size() < 1000)
                    qFatal("%s selects nothing", nameOf(kind));
                return cost / steps;
            }));
        }
        row.targets = {{1, 0.5}};
        if (until == Until::Shown) {
            for (const auto kind : {Peers::Ours, Peers::RichText})
                row.contenders.append(redrawingContender(kind, {message}, 780.0));
        }
        return row;
    }

    Row selectionDrag()
    {
        return selectionDragRow(
            QStringLiteral(
                "A step of a selection drag over 5,000 characters with 200 emoji: time it takes from "
                "the GUI thread"),
            Until::Synchronised);
    }

    Row selectionDragWithFrame()
    {
        return selectionDragRow(
            QStringLiteral(
                "A step of a selection drag over 5,000 characters with 200 emoji: until it is seen"),
            Until::Shown);
    }

    Row firstFrameRow(const QString &title, Until until)
    {
        Row row{title, QStringLiteral("ms"), {}, {}};
        row.rounds = 15;
        const QStringList messages = Corpus(seed + 5).messagesWithEmoji(20, 8);
        for (const auto kind : {Peers::Ours, Peers::RichText}) {
            row.contenders.append(contender(kind, [=, texts = contents(kind, messages)] {
                const double synchronisedBefore = stage.synchronisationTime();
                QElapsedTimer timer;
                timer.start();
                const Items items = createAll(kind, texts);
                show(items);
                const double created = milliseconds(timer);
                stage.drawFrame();
                return until == Until::Shown ? milliseconds(timer)
                                             : created + stage.synchronisationTime() - synchronisedBefore;
            }));
        }
        row.targets = {{1, 0.5}};
        if (until == Until::Shown) {
            for (const auto kind : {Peers::Ours, Peers::RichText})
                row.contenders.append(redrawingContender(kind, messages, bubbleWidth));
        }
        return row;
    }

    Row firstFrameUntilSynchronised()
    {
        return firstFrameRow(QStringLiteral("20 messages with eight emoji each, from creation to the first "
                                            "frame: time it takes from the GUI thread"),
                             Until::Synchronised);
    }

    Row firstFrame()
    {
        return firstFrameRow(QStringLiteral("20 messages with eight emoji each, from creation to the first "
                                            "frame: until it is seen"),
                             Until::Shown);
    }

    Stage stage;
    Peers peers;
    double checksum = 0.0;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    return TextBenchmarks().run(arguments.value(1), arguments.value(2).toInt()) ? 0 : 1;
}
