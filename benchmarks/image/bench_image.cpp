// The image items beside Qt Quick's Image, with the mask that rounds its corners, and Kirigami's
// ShadowedImage.

#include "image/imagepreviewer.h"
#include "image/roundedimage.h"
#include "measure.h"
#include "stage.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryDir>
#include <QTextStream>
#include <QThreadPool>
#include <QTimer>
#include <QUrl>

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
                               &ImageBenchmarks::longestGap, &ImageBenchmarks::panStep}) {
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

    void waitUntil(const std::function<bool()> &isDone)
    {
        QElapsedTimer timer;
        timer.start();
        while (!isDone()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 5);
            if (timer.elapsed() > patience)
                qFatal("the pictures do not come");
        }
    }

    // ---- avatars

    [[nodiscard]] Contender scrolling(const QString &name,
                                      const std::function<std::unique_ptr<QQuickItem>()> &make)
    {
        return {name, [=] {
                    auto page = std::make_unique<QQuickItem>();
                    Items avatars;
                    for (int i = 0; i < avatarCount; ++i) {
                        avatars.push_back(make());
                        avatars.back()->setParentItem(page.get());
                        avatars.back()->setPosition(QPointF(i % 10 * 60, i / 10 * 60));
                    }
                    page->setParentItem(stage.contentItem());
                    for (int i = 0; i < 20; ++i)
                        stage.drawFrame(); // until every picture is there
                    QThreadPool::globalInstance()->waitForDone();
                    for (int i = 0; i < 20; ++i)
                        stage.drawFrame();
                    const auto scroll = [this](QQuickItem &moved) {
                        const std::clock_t start = std::clock();
                        for (int frame = 0; frame < scrolledFrames; ++frame) {
                            moved.setY(-(frame % 100));
                            stage.drawFrame();
                        }
                        return 1000.0 * double(std::clock() - start) / CLOCKS_PER_SEC;
                    };
                    // Without a GPU, showing an empty window costs more than the avatars do.
                    page->setVisible(false);
                    const double empty = scroll(*page);
                    page->setVisible(true);
                    stage.drawFrame();
                    const double cost = scroll(*page) - empty;
                    avatars.clear();
                    page.reset();
                    stage.drawFrame();
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
        const QString path = add(QStringLiteral("avatar.png"), photo(QSize(112, 112)), "png");
        row.contenders.append(scrolling(QStringLiteral("RoundedImage"), [=] {
            auto item = std::make_unique<RoundedImage>();
            item->setSize(QSizeF(avatarSide, avatarSide));
            item->setRadius(avatarSide / 2.0);
            item->setCache(true);
            item->setSourceSize(QSize(avatarSide, avatarSide));
            item->setSource(path);
            return item;
        }));
        const auto addPeer = [&](const QString &name, const char *document, double share) {
            if (!create(document)) {
                say(QStringLiteral("%1 is not installed: left out").arg(name));
                return;
            }
            row.contenders.append(scrolling(name, [=] {
                std::unique_ptr<QQuickItem> item = create(document);
                item->setProperty("source", QUrl::fromLocalFile(path));
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
            return item->property("status").toInt() == 1;
        });
    }

    /// Time until all are shown; with `gap`, the longest time in which the event loop did not turn.
    [[nodiscard]] double showPhotos(Items (ImageBenchmarks::*start)(), bool (*areLoaded)(const Items &),
                                    bool gap)
    {
        double longest = 0;
        QElapsedTimer beat;
        QTimer ticks;
        ticks.setTimerType(Qt::PreciseTimer);
        QObject::connect(&ticks, &QTimer::timeout, &ticks, [&] {
            longest = std::max(longest, milliseconds(beat));
            beat.restart();
        });
        QElapsedTimer timer;
        timer.start();
        Items items = (this->*start)();
        beat.start();
        if (gap)
            ticks.start(1);
        waitUntil([&] { return areLoaded(items); });
        ticks.stop();
        stage.drawFrame();
        const double cost = gap ? longest : milliseconds(timer);
        items.clear();
        stage.drawFrame();
        return cost;
    }

    Row photoRow(const QString &title, const QString &filter, bool gap)
    {
        Row row{title, QStringLiteral("ms"), {}, {}};
        if (!row.title.contains(filter, Qt::CaseInsensitive))
            return row;
        row.rounds = 3;
        makePhotos();
        row.contenders.append({QStringLiteral("RoundedImage"), [=] {
                                   return showPhotos(&ImageBenchmarks::startRounded, areRoundedLoaded, gap);
                               }});
        row.contenders.append({QStringLiteral("Image"), [=] {
                                   return showPhotos(&ImageBenchmarks::startPlain, arePlainLoaded, gap);
                               }});
        return row;
    }

    Row photosUntilShown(const QString &filter)
    {
        Row row = photoRow(QStringLiteral("40 photos of 12 megapixels at 320 pixels, until all are shown"),
                           filter, false);
        row.targets = {{1, 0.7}};
        return row;
    }

    Row longestGap(const QString &filter)
    {
        Row row = photoRow(QStringLiteral("The longest gap of the GUI thread meanwhile"), filter, true);
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
    QStringList photos;
    std::unique_ptr<ImagePreviewer> viewer;
};

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return ImageBenchmarks().run(application.arguments().value(1)) ? 0 : 1;
}
