// The image items beside Qt Quick's Image, with the mask that rounds its corners, and Kirigami's
// ShadowedImage.

#include "image/imagepreviewer.h"
#include "image/roundedimage.h"
#include "measure.h"
#include "stage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>
#include <QtConcurrentRun>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

namespace {

using Items = std::vector<std::unique_ptr<QQuickItem>>;

constexpr int avatarCount = 100;
constexpr int avatarSide = 56;
constexpr int scrolledFrames = 300;
constexpr int photoCount = 40;
constexpr int patience = 60'000; // ms

const char plainImage[] = R"(
import QtQuick 2.15
Image { asynchronous: true; cache: false; sourceSize: Qt.size(320, 240); width: 320; height: 240 }
)";

const char maskedImage[] = R"(
import QtQuick 2.15
import QtGraphicalEffects 1.15
Item {
    id: avatar
    property alias source: picture.source
    property alias status: picture.status
    width: 56
    height: 56
    Image { id: picture; anchors.fill: parent; visible: false; asynchronous: true; sourceSize: Qt.size(56, 56) }
    Rectangle { id: mask; anchors.fill: parent; radius: 28; visible: false }
    OpacityMask { anchors.fill: parent; source: picture; maskSource: mask }
}
)";

const char shadowedImage[] = R"(
import QtQuick 2.15
import org.kde.kirigami 2.20 as Kirigami
Kirigami.ShadowedImage { width: 56; height: 56; radius: 28; asynchronous: true; sourceSize: Qt.size(56, 56) }
)";

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

/// Turns the event loop, asleep in between, until `isDone`. Returns the longest turn by `clock`.
double longestTurn(double (*clock)(), const std::function<bool()> &isDone)
{
    QTimer ticks; // so that a turn without events lasts a millisecond
    ticks.setTimerType(Qt::PreciseTimer);
    ticks.start(1);
    const double end = wallTime() + patience;
    double longest = 0.0;
    double before = clock();
    while (!isDone()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents);
        const double now = clock();
        longest = std::max(longest, now - before);
        before = now;
        if (wallTime() > end)
            qFatal("the pictures do not come");
    }
    return longest;
}

void say(const QString &line)
{
    QTextStream(stdout) << line << '\n' << Qt::flush;
}

/// A picture with detail at all sizes, as a camera takes it.
QImage photo(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            noise = noise * 1664525 + 1013904223;
            const int grain = int(noise >> 28);
            line[x] = qRgb(int(120 + 100 * std::sin(x * 0.004)) + grain,
                           int(120 + 100 * std::cos(y * 0.006)) + grain, (x ^ y) & 0x7f);
        }
    }
    return image;
}

class ImageBenchmarks
{
public:
    /// Measures the rows whose titles hold `filter`; false when a target is missed.
    bool run(const QString &filter)
    {
        printHead();
        bool allMet = true;
        for (const auto row : {&ImageBenchmarks::scrolledAvatars, &ImageBenchmarks::photosUntilShown,
                               &ImageBenchmarks::workOfPhotos, &ImageBenchmarks::longestGap,
                               &ImageBenchmarks::longestTurnOfPhotos, &ImageBenchmarks::panStep}) {
            // A row makes its pictures when it is its turn.
            const Row made = (this->*row)(filter);
            if (!made.contenders.isEmpty() && !measure(made))
                allMet = false;
        }
        return allMet;
    }

private:
    [[nodiscard]] std::unique_ptr<QQuickItem> create(const char *document)
    {
        QQmlComponent component(&engine);
        component.setData(document, QUrl());
        std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem *>(component.create()));
        return item;
    }

    [[nodiscard]] QString add(const QString &name, const QImage &image, const char *format)
    {
        const QString path = folder.filePath(name);
        if (!image.save(path, format, 88))
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    static void waitUntil(const std::function<bool()> &isDone) { longestTurn(wallTime, isDone); }

    /// Draws a frame and sleeps until it is on the screen: a loop that spins would count as work.
    void drawFrame()
    {
        QEventLoop loop;
        const QMetaObject::Connection swapped = QObject::connect(
            &stage.view(), &QQuickWindow::frameSwapped, &loop, &QEventLoop::quit, Qt::QueuedConnection);
        stage.view().update();
        QTimer::singleShot(patience, &loop, [] { qFatal("The window draws no frames"); });
        loop.exec();
        QObject::disconnect(swapped);
    }

    // ---- avatars

    /// Processor time in milliseconds, of all threads, of scrolling `page` one step per frame.
    double scroll(QQuickItem &page)
    {
        const std::clock_t start = std::clock();
        for (int frame = 0; frame < scrolledFrames; ++frame) {
            page.setY(-(frame % 100));
            drawFrame();
        }
        return 1000.0 * double(std::clock() - start) / CLOCKS_PER_SEC;
    }

    [[nodiscard]] Contender scrolling(const QString &name,
                                      const std::function<std::unique_ptr<QQuickItem>(int)> &make)
    {
        return {name, [=] {
                    auto page = std::make_unique<QQuickItem>();
                    Items avatars;
                    for (int i = 0; i < avatarCount; ++i) {
                        avatars.push_back(make(i));
                        avatars.back()->setParentItem(page.get());
                        avatars.back()->setPosition(QPointF(i % 10 * 60, i / 10 * 60));
                    }
                    page->setParentItem(stage.contentItem());
                    waitUntil([&avatars] { return areRoundedLoaded(avatars) && arePlainLoaded(avatars); });
                    for (int i = 0; i < 20; ++i)
                        drawFrame(); // until every texture is there
                    // Without a GPU, showing an empty window costs more than the avatars do.
                    page->setVisible(false);
                    const double empty = scroll(*page);
                    page->setVisible(true);
                    drawFrame();
                    const double cost = scroll(*page) - empty;
                    avatars.clear();
                    page.reset();
                    drawFrame();
                    return cost;
                }};
    }

    Row scrolledAvatars(const QString &filter)
    {
        Row row{QStringLiteral("100 round avatars, scrolled for 300 frames, beyond an empty window"),
                QStringLiteral("CPU ms"),
                {},
                {}};
        if (!row.title.contains(filter, Qt::CaseInsensitive))
            return row;
        row.rounds = 3;
        // A hundred people, so a hundred pictures: nobody can draw them from one texture.
        for (int i = 0; i < avatarCount; ++i) {
            QImage face = photo(QSize(112, 112));
            face.setPixelColor(i, i, Qt::white);
            faces.append(add(QStringLiteral("avatar%1.png").arg(i), face, "png"));
        }
        row.contenders.append(scrolling(QStringLiteral("RoundedImage"), [this](int index) {
            auto item = std::make_unique<RoundedImage>();
            item->setSize(QSizeF(avatarSide, avatarSide));
            item->setRadius(avatarSide / 2.0);
            item->setCache(true);
            item->setSourceSize(QSize(avatarSide, avatarSide));
            item->setSource(faces.at(index));
            return item;
        }));
        const auto addPeer = [&](const QString &name, const char *document, double share) {
            if (!create(document)) {
                say(QStringLiteral("%1 is not installed: left out").arg(name));
                return;
            }
            row.contenders.append(scrolling(name, [=](int index) {
                std::unique_ptr<QQuickItem> item = create(document);
                item->setProperty("source", QUrl::fromLocalFile(faces.at(index)));
                return item;
            }));
            row.targets.append({row.contenders.size() - 1, share});
        };
        addPeer(QStringLiteral("Image with OpacityMask"), maskedImage, 0.35);
        addPeer(QStringLiteral("ShadowedImage"), shadowedImage, 1.0);
        return row;
    }

    // ---- photos

    void makePhotos()
    {
        if (!photos.isEmpty())
            return;
        const QString first = add(QStringLiteral("photo.jpg"), photo(QSize(4000, 3000)), "jpeg");
        for (int i = 0; i < photoCount; ++i) {
            photos.append(folder.filePath(QStringLiteral("photo%1.jpg").arg(i)));
            if (!QFile::copy(first, photos.last()))
                qFatal("cannot write %s", qPrintable(photos.last()));
        }
    }

    /// Two columns, as in a chat's gallery.
    static QPointF placeOf(std::size_t index) { return QPointF(index % 2 * 330.0, index / 2 * 250.0); }

    [[nodiscard]] Items startRounded()
    {
        Items items;
        for (const QString &path : qAsConst(photos)) {
            auto item = std::make_unique<RoundedImage>();
            item->setParentItem(stage.contentItem());
            item->setPosition(placeOf(items.size()));
            item->setSize(QSizeF(320, 240));
            item->setSourceSize(QSize(320, 240));
            item->setSource(path);
            items.push_back(std::move(item));
        }
        return items;
    }

    [[nodiscard]] Items startPlain()
    {
        Items items;
        for (const QString &path : qAsConst(photos)) {
            items.push_back(create(plainImage));
            items.back()->setParentItem(stage.contentItem());
            items.back()->setPosition(placeOf(items.size() - 1));
            items.back()->setProperty("source", QUrl::fromLocalFile(path));
        }
        return items;
    }

    static bool areRoundedLoaded(const Items &)
    {
        return QThreadPool::globalInstance()->activeThreadCount() == 0;
    }

    static bool arePlainLoaded(const Items &items)
    {
        return std::all_of(items.cbegin(), items.cend(), [](const std::unique_ptr<QQuickItem> &item) {
            const QVariant status = item->property("status");
            return !status.isValid() || status.toInt() == 1; // no property: not one of theirs
        });
    }

    enum class Measure { UntilShown, WorkUntilShown, LongestGap, LongestTurn };

    [[nodiscard]] double showPhotos(Items (ImageBenchmarks::*start)(), bool (*areLoaded)(const Items &),
                                    Measure what)
    {
        const std::clock_t started = std::clock();
        QElapsedTimer timer;
        timer.start();
        Items items = (this->*start)();
        const double longest = longestTurn(what == Measure::LongestTurn ? threadTime : wallTime,
                                           [&] { return areLoaded(items); });
        drawFrame();
        const double shown = milliseconds(timer);
        const double work = 1000.0 * double(std::clock() - started) / CLOCKS_PER_SEC;
        items.clear();
        drawFrame();
        switch (what) {
        case Measure::UntilShown:
            return shown;
        case Measure::WorkUntilShown:
            return work;
        case Measure::LongestGap:
        case Measure::LongestTurn:
            break;
        }
        return longest;
    }

    Row photoRow(const QString &title, const QString &filter, Measure what)
    {
        Row row{title, QStringLiteral("ms"), {}, {}};
        if (!row.title.contains(filter, Qt::CaseInsensitive))
            return row;
        row.rounds = 5;
        makePhotos();
        row.contenders.append({QStringLiteral("RoundedImage"), [=] {
                                   return showPhotos(&ImageBenchmarks::startRounded, areRoundedLoaded, what);
                               }});
        row.contenders.append({QStringLiteral("Image"), [=] {
                                   return showPhotos(&ImageBenchmarks::startPlain, arePlainLoaded, what);
                               }});
        return row;
    }

    Row photosUntilShown(const QString &filter)
    {
        Row row = photoRow(QStringLiteral("40 photos of 12 megapixels at 320 pixels, until all are shown"),
                           filter, Measure::UntilShown);
        row.targets = {{1, 0.7}};
        return row;
    }

    Row workOfPhotos(const QString &filter)
    {
        return photoRow(QStringLiteral("40 photos: processor time of it"), filter, Measure::WorkUntilShown);
    }

    Row longestGap(const QString &filter)
    {
        Row row = photoRow(QStringLiteral("40 photos: longest time without events meanwhile"), filter,
                           Measure::LongestGap);
        row.limit = 8.0;
        if (row.contenders.isEmpty())
            return row;
        // What the machine does to an event loop that has nothing to do, beside as many busy threads.
        row.control = row.contenders.size();
        row.contenders.append({QStringLiteral("idle event loop"), [] {
                                   QThreadPool *pool = QThreadPool::globalInstance();
                                   for (int i = 0; i < pool->maxThreadCount(); ++i) {
                                       QtConcurrent::run(pool, [] {
                                           const double end = wallTime() + 1000.0;
                                           while (wallTime() < end) {
                                           }
                                       });
                                   }
                                   return longestTurn(wallTime,
                                                      [pool] { return pool->activeThreadCount() == 0; });
                               }});
        return row;
    }

    Row longestTurnOfPhotos(const QString &filter)
    {
        Row row =
            photoRow(QStringLiteral("40 photos: longest turn of the event loop meanwhile, in processor time"),
                     filter, Measure::LongestTurn);
        row.limit = 8.0;
        return row;
    }

    // ---- the viewer

    Row panStep(const QString &filter)
    {
        Row row{QStringLiteral("A pan step over a picture of 12,000 by 9,000, up to the frame's drawing"),
                QStringLiteral("ms"),
                {},
                {}};
        if (!row.title.contains(filter, Qt::CaseInsensitive))
            return row;
        const QString path = add(QStringLiteral("large.jpg"), photo(QSize(12000, 9000)), "jpeg");
        viewer = std::make_unique<ImagePreviewer>();
        viewer->setParentItem(stage.contentItem());
        viewer->setBoundaryItem(stage.contentItem());
        viewer->setSource(path);
        waitUntil([this] { return viewer->statusSource() == ImagePreviewer::Ready; });
        viewer->setViewGeometry(QRectF(0, 0, 12000, 9000));
        stage.drawFrame();
        row.rounds = 30;
        row.limit = 2.0;
        row.contenders.append({QStringLiteral("ImagePreviewer"), [this, step = 0]() mutable {
                                   QElapsedTimer sync;
                                   double synchronising = 0;
                                   QObject context;
                                   QObject::connect(
                                       &stage.view(), &QQuickWindow::beforeSynchronizing, &context,
                                       [&] { sync.start(); }, Qt::DirectConnection);
                                   QObject::connect(
                                       &stage.view(), &QQuickWindow::afterSynchronizing, &context,
                                       [&] { synchronising = milliseconds(sync); }, Qt::DirectConnection);
                                   ++step;
                                   QElapsedTimer timer;
                                   timer.start();
                                   viewer->setViewGeometry(QRectF(-37 * step, -29 * step, 12000, 9000));
                                   const double setting = milliseconds(timer);
                                   stage.drawFrame();
                                   return setting + synchronising;
                               }});
        return row;
    }

    QQmlEngine engine;
    Stage stage;
    QTemporaryDir folder;
    QStringList faces;
    QStringList photos;
    std::unique_ptr<ImagePreviewer> viewer;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return ImageBenchmarks().run(application.arguments().value(1)) ? 0 : 1;
}
