// ImagePreviewer: where it draws which slice, what it never draws, and that panning costs nothing.

#include "image/imagepreviewer.h"
#include "itemwindow.h"
#include "messageguard.h"
#include "pixels.h"
#include "testpictures.h"

#include <QPainter>
#include <QQuickItem>
#include <QSGImageNode>
#include <QSGRectangleNode>
#include <QSignalSpy>
#include <QtTest>

using namespace testpictures;

namespace {

constexpr int patience = 20'000;
const QColor desk(40, 120, 200);

QImage filledWith(const QColor &color, const QSize &size = QSize(60, 60))
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

/// What an image node of the item looks like.
struct NodeState
{
    QRectF rect;
    QRectF source;
    QSGTexture *texture = nullptr;
};

/// Tells what its nodes look like after each frame.
class WatchedPreviewer : public ImagePreviewer
{
    Q_OBJECT

public:
    using ImagePreviewer::ImagePreviewer;

    QRectF rootRect;
    QVector<NodeState> nodes;
    int frames = 0;
    bool showsChecker = false;
    /// The node that the checker goes to, as it was after each frame; the newest one last.
    QVector<NodeState> checkers;

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        QSGNode *root = ImagePreviewer::updatePaintNode(oldNode, data);
        ++frames;
        if (root && showsChecker)
            paintChecker(root);
        nodes.clear();
        if (!root)
            return root;
        rootRect = static_cast<QSGRectangleNode *>(root)->rect();
        for (QSGNode *child = root->firstChild(); child; child = child->nextSibling()) {
            if (child == checkerRoot)
                continue;
            const auto *node = static_cast<QSGImageNode *>(child);
            nodes.append({node->rect(), node->sourceRect(), node->texture()});
        }
        return root;
    }

private:
    QSGNode *checkerRoot = nullptr; ///< owned by the scene graph

    void paintChecker(QSGNode *root)
    {
        if (!checkerRoot) {
            QSGImageNode *image = window()->createImageNode();
            image->setTexture(window()->createTextureFromImage(filledWith(Qt::blue, QSize(4, 4))));
            image->setRect(0, 0, 4, 4);
            image->setOwnsTexture(true);
            checkerRoot = new QSGNode;
            checkerRoot->appendChildNode(image);
            root->appendChildNode(checkerRoot);
        }
        fillBackground(checkerRoot);
        auto *image = static_cast<QSGImageNode *>(checkerRoot->firstChild());
        image->setSourceRect(QRectF(QPointF(0, 0), image->texture()->textureSize()));
        checkers.append({image->rect(), image->sourceRect(), image->texture()});
    }
};

} // namespace

class TestImagePreviewer : public QObject
{
    Q_OBJECT

    QScopedPointer<ItemWindow> window;
    QScopedPointer<MessageGuard> guard;
    QScopedPointer<Folder> folder;
    QStringList log;

    QQuickItem *addBoundary(const QSizeF &size)
    {
        auto *boundary = new QQuickItem(window->contentItem());
        boundary->setPosition(QPointF(30, 20));
        boundary->setSize(size);
        return boundary;
    }

    /// In `boundary`, as a view that follows the picture's position would place it.
    WatchedPreviewer *add(QQuickItem *boundary)
    {
        auto *item = new WatchedPreviewer;
        item->setParentItem(boundary ? boundary : window->contentItem());
        item->setBoundaryItem(boundary);
        connect(item, &ImagePreviewer::statusSourceChanged, this,
                [this](ImagePreviewer::Status status) { log += QStringLiteral("source:%1").arg(status); });
        connect(item, &ImagePreviewer::statusBackgroundChanged, this, [this](ImagePreviewer::Status status) {
            log += QStringLiteral("background:%1").arg(status);
        });
        return item;
    }

    void load(ImagePreviewer *item, const QImage &image)
    {
        item->setSource(folder->add(QStringLiteral("a.png"), image));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusSource(), ImagePreviewer::Ready, patience);
        (void)window->picture();
    }

private Q_SLOTS:
    void init()
    {
        log.clear();
        folder.reset(new Folder);
        guard.reset(); // one at a time
        guard.reset(new MessageGuard);
        window.reset(new ItemWindow(QSize(480, 320), desk));
        QVERIFY(window->open());
    }

    void cleanup()
    {
        window.reset();
        QCOMPARE(guard->unexpected(), QStringList());
    }

    // ---- geometry

    void onlyTheVisibleSliceIsDrawn_data()
    {
        QTest::addColumn<QRectF>("view");
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<QRectF>("slice");

        // The boundary is 150 by 100.
        QTest::newRow("scrolled") << QRectF(-100, -50, 300, 200) << QPointF(100, 50)
                                  << QRectF(100, 50, 150, 100);
        QTest::newRow("inside") << QRectF(30, 20, 60, 40) << QPointF(0, 0) << QRectF(0, 0, 60, 40);
        QTest::newRow("fills") << QRectF(0, 0, 150, 100) << QPointF(0, 0) << QRectF(0, 0, 150, 100);
        QTest::newRow("over the right edge")
            << QRectF(100, 0, 100, 50) << QPointF(0, 0) << QRectF(0, 0, 50, 50);
        QTest::newRow("over the left edge")
            << QRectF(-60.5, 0, 100, 50) << QPointF(60.5, 0) << QRectF(60.5, 0, 39.5, 50);
        QTest::newRow("enormous") << QRectF(-50000, -50000, 1e5, 1e5) << QPointF(50000, 50000)
                                  << QRectF(50000, 50000, 150, 100);
    }

    void onlyTheVisibleSliceIsDrawn()
    {
        QFETCH(QRectF, view);
        QFETCH(QPointF, position);
        QFETCH(QRectF, slice);
        const QSizeF picture(600, 400);
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        load(item, smooth(picture.toSize()));
        item->setViewGeometry(view);
        (void)window->picture();
        QCOMPARE(item->position(), position);
        QCOMPARE(item->nodes.size(), 1);
        QCOMPARE(item->nodes.first().rect, QRectF(QPointF(0, 0), slice.size()));
        const double sx = picture.width() / view.width();
        const double sy = picture.height() / view.height();
        const QRectF source(slice.x() * sx, slice.y() * sy, slice.width() * sx, slice.height() * sy);
        const QRectF actual = item->nodes.first().source;
        QVERIFY(qAbs(actual.x() - source.x()) < 1e-6 && qAbs(actual.y() - source.y()) < 1e-6 &&
                qAbs(actual.width() - source.width()) < 1e-6 &&
                qAbs(actual.height() - source.height()) < 1e-6);
    }

    void sliceShowsItsPartOfThePicture()
    {
        QQuickItem *boundary = addBoundary(QSizeF(150, 100));
        // The item's parent follows the picture, so that the item stays inside the boundary.
        auto *follower = new QQuickItem(boundary);
        follower->setPosition(QPointF(-100, -50));
        WatchedPreviewer *item = add(boundary);
        item->setParentItem(follower);
        const QImage image = smooth(QSize(300, 200));
        load(item, image);
        item->setViewGeometry(QRectF(-100, -50, 300, 200));
        QCOMPARE(pixels::pictureDifference(window->picture(boundary), image.copy(100, 50, 150, 100), {2, 0}),
                 QString());
        QCOMPARE(pixels::inkRect(window->picture(), desk), QRect(30, 20, 150, 100));

        // Twice as large: each picture pixel covers two by two.
        follower->setPosition(QPointF(-200, -100));
        item->setViewGeometry(QRectF(-200, -100, 600, 400));
        const QImage shown = window->picture(boundary);
        for (const QPoint &point : {QPoint(10, 10), QPoint(75, 50), QPoint(140, 90)}) {
            const QRgb wanted = image.pixel((point.x() + 200) / 2, (point.y() + 100) / 2);
            QVERIFY(pixels::isAlike(shown.pixel(point), wanted, 6));
        }
    }

    /// Without a boundary the node has the view's whole size, and its source starts at the view's own corner.
    void withoutABoundaryTheWholeViewIsDrawn()
    {
        WatchedPreviewer *item = add(nullptr);
        load(item, smooth(QSize(600, 400)));
        item->setViewGeometry(QRectF(20, 10, 300, 200));
        (void)window->picture();
        QCOMPARE(item->nodes.first().rect, QRectF(0, 0, 300, 200));
        QCOMPARE(item->nodes.first().source, QRectF(40, 20, 600, 400));
    }

    void invisibleViewLeavesTheNodeAsItWas_data()
    {
        QTest::addColumn<QRectF>("view");
        QTest::newRow("empty") << QRectF(0, 0, 0, 0);
        QTest::newRow("without height") << QRectF(0, 0, 50, 0);
        QTest::newRow("negative size") << QRectF(0, 0, -50, -20);
        QTest::newRow("right of the boundary") << QRectF(400, 0, 50, 50);
        QTest::newRow("above the boundary") << QRectF(0, -90, 50, 50);
    }

    void invisibleViewLeavesTheNodeAsItWas()
    {
        QFETCH(QRectF, view);
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        load(item, smooth(QSize(60, 40)));
        item->setViewGeometry(QRectF(10, 10, 30, 20));
        (void)window->picture();
        const int frames = item->frames;
        item->setViewGeometry(view);
        (void)window->picture();
        QVERIFY(item->frames > frames);
        QCOMPARE(item->nodes.first().rect, QRectF(0, 0, 30, 20));
    }

    void viewThatIsNotANumberDoesNoHarm()
    {
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        load(item, smooth(QSize(60, 40)));
        for (const double value : {qQNaN(), qInf(), -qInf(), 1e300, -1e300}) {
            item->setViewGeometry(QRectF(value, value, value, value));
            (void)window->picture();
        }
        item->setViewGeometry(QRectF(0, 0, 60, 40));
        (void)window->picture();
        QCOMPARE(item->nodes.first().rect, QRectF(0, 0, 60, 40));
    }

    void viewIsComparedPartByPart()
    {
        ImagePreviewer item;
        QSignalSpy spy(&item, &ImagePreviewer::viewGeometryChanged);
        item.setViewGeometry(QRectF(1, 2, 3, 4));
        item.setViewGeometry(QRectF(1 + 1e-14, 2, 3, 4));
        QCOMPARE(spy.count(), 1);
        item.setViewGeometry(QRectF(1, 2, 3, 5));
        QCOMPARE(spy.count(), 2);
    }

    void boundaryThatDiesNoLongerBounds()
    {
        QQuickItem *boundary = addBoundary(QSizeF(50, 50));
        WatchedPreviewer *item = add(nullptr);
        item->setBoundaryItem(boundary);
        load(item, smooth(QSize(100, 100)));
        item->setViewGeometry(QRectF(0, 0, 100, 100));
        (void)window->picture();
        QCOMPARE(item->nodes.first().rect, QRectF(0, 0, 50, 50));
        delete boundary;
        QCOMPARE(item->boundaryItem(), nullptr);
        item->update();
        (void)window->picture();
        QCOMPARE(item->nodes.first().rect, QRectF(0, 0, 100, 100));
    }

    // ---- what a pan costs

    void panningChangesTwoRectanglesAndNoTexture()
    {
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        load(item, smooth(QSize(3000, 2000)));
        item->setViewGeometry(QRectF(0, 0, 3000, 2000));
        (void)window->picture();
        const QSGTexture *texture = item->nodes.first().texture;
        log.clear();
        for (int step = 1; step <= 20; ++step) {
            item->setViewGeometry(QRectF(-40 * step, -30 * step, 3000, 2000));
            (void)window->picture();
            QCOMPARE(item->nodes.first().texture, const_cast<QSGTexture *>(texture));
            QCOMPARE(item->nodes.first().source.topLeft(), QPointF(40 * step, 30 * step));
        }
        QCOMPARE(log, QStringList());
    }

    void newPictureReplacesTheTexture()
    {
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        load(item, filledWith(Qt::red));
        item->setViewGeometry(QRectF(0, 0, 150, 100));
        QCOMPARE(window->picture(item, QRectF(10, 10, 1, 1)).pixelColor(0, 0), QColor(Qt::red));
        item->setSource(folder->add(QStringLiteral("b.png"), filledWith(Qt::green, QSize(30, 30))));
        QTRY_COMPARE_WITH_TIMEOUT(window->picture(item, QRectF(10, 10, 1, 1)).pixelColor(0, 0),
                                  QColor(Qt::green), patience);
        QCOMPARE(item->nodes.size(), 1);
    }

    // ---- statuses

    void statusesComeInOrder()
    {
        WatchedPreviewer *item = add(nullptr);
        const QString good = folder->add(QStringLiteral("a.png"), filledWith(Qt::red));
        item->setSource(good);
        item->setBackgroundSource(good);
        QTRY_COMPARE_WITH_TIMEOUT(log.size(), 4, patience);
        QCOMPARE(log.mid(0, 2), (QStringList{QStringLiteral("source:2"), QStringLiteral("background:2")}));
        log.clear();
        item->setBlurRadius(3);
        QTRY_COMPARE_WITH_TIMEOUT(
            log, (QStringList{QStringLiteral("background:2"), QStringLiteral("background:1")}), patience);
        log.clear();
        item->setSource(QStringLiteral(":/nothing.png"));
        QTRY_COMPARE_WITH_TIMEOUT(log, (QStringList{QStringLiteral("source:2"), QStringLiteral("source:3")}),
                                  patience);
        log.clear();
        item->setBackgroundSource(QString());
        QCOMPARE(log, QStringList{QStringLiteral("background:0")});
        log.clear();
        item->setSourceSize(QSize(5, 5)); // the background is empty and keeps its status
        QTRY_COMPARE_WITH_TIMEOUT(log, (QStringList{QStringLiteral("source:2"), QStringLiteral("source:3")}),
                                  patience);
    }

    void emptySourceLeavesThePictureOnScreen()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setViewGeometry(QRectF(0, 0, 60, 60));
        load(item, filledWith(Qt::red));
        item->setSource(QString());
        QCOMPARE(item->statusSource(), ImagePreviewer::Null);
        QCOMPARE(window->picture(item, QRectF(10, 10, 1, 1)).pixelColor(0, 0), QColor(Qt::red));
    }

    void backgroundAloneIsReadyAndInvisible()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setViewGeometry(QRectF(0, 0, 60, 60));
        item->setBackgroundSource(folder->add(QStringLiteral("a.png"), filledWith(Qt::red)));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusBackground(), ImagePreviewer::Ready, patience);
        QVERIFY(pixels::inkRect(window->picture(), desk).isNull());
        QCOMPARE(item->nodes.size(), 0);
    }

    void backgroundBesideTheSourceHasNoSize()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setViewGeometry(QRectF(0, 0, 60, 60));
        item->setBackgroundSource(folder->add(QStringLiteral("b.png"), filledWith(Qt::green)));
        load(item, filledWith(Qt::red));
        QTRY_COMPARE_WITH_TIMEOUT(item->statusBackground(), ImagePreviewer::Ready, patience);
        // The background's node waits for a frame in which the source's is there already.
        item->update();
        (void)window->picture();
        item->update();
        QCOMPARE(pixels::count(window->picture(), Qt::green), 0);
        QCOMPARE(item->nodes.size(), 2);
        QCOMPARE(item->nodes.at(0).rect, QRectF(0, 0, 60, 60));
        QVERIFY(item->nodes.at(1).rect.isEmpty());
        QCOMPARE(pixels::count(window->picture(), Qt::red), 3600);
    }

    void statusWithoutAPictureDoesNoHarm()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setStatusSource(ImagePreviewer::Ready);
        item->setStatusBackground(ImagePreviewer::Ready);
        item->setViewGeometry(QRectF(0, 0, 60, 60));
        QVERIFY(pixels::inkRect(window->picture(), desk).isNull());
    }

    void rootCoversTheItem()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setSize(QSizeF(70, 30));
        (void)window->picture();
        QCOMPARE(item->rootRect, QRectF(0, 0, 70, 30));
    }

    // ---- the checker

    void checkerFillsTheVisibleSlice()
    {
        QQuickItem *boundary = addBoundary(QSizeF(150, 100));
        WatchedPreviewer *item = add(boundary);
        item->setViewGeometry(QRectF(0, 0, 64, 48));
        load(item, filledWith(Qt::red, QSize(20, 20)));
        item->showsChecker = true;
        item->setViewGeometry(QRectF(0, 0, 60, 40));
        const QImage shown = window->picture(boundary, QRectF(0, 0, 60, 40));
        QCOMPARE(item->checkers.last().rect, QRectF(0, 0, 60, 40));
        QCOMPARE(item->checkers.last().source, QRectF(0, 0, 60, 40));
        const QImage tile(QStringLiteral(":/qml/image/transparent.png"));
        QImage expected(60, 40, QImage::Format_RGB32);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 60; ++x) {
                const int grey = qGray(tile.pixel(x % tile.width(), y % tile.height()));
                expected.setPixel(x, y, qRgb(grey, grey, grey));
            }
        }
        QCOMPARE(pixels::pictureDifference(shown, expected, {1, 0}), QString());
    }

    void checkerIsPaintedAnewOnlyForANewSize()
    {
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        item->setViewGeometry(QRectF(0, 0, 60, 40));
        load(item, filledWith(Qt::red, QSize(20, 20)));
        item->showsChecker = true;
        item->update();
        (void)window->picture();
        const QSGTexture *texture = item->checkers.last().texture;
        item->setViewGeometry(QRectF(10, 5, 60, 40)); // a pan
        (void)window->picture();
        QCOMPARE(item->checkers.last().texture, const_cast<QSGTexture *>(texture));
        item->setViewGeometry(QRectF(10, 5, 70, 40));
        (void)window->picture();
        QCOMPARE(item->checkers.last().rect, QRectF(0, 0, 70, 40));
        QCOMPARE(item->checkers.last().source, QRectF(0, 0, 70, 40));
    }

    void checkerHasNoSizeWithoutAPictureOrASlice()
    {
        WatchedPreviewer *item = add(addBoundary(QSizeF(150, 100)));
        item->setViewGeometry(QRectF(0, 0, 60, 40));
        item->showsChecker = true;
        (void)window->picture();
        QVERIFY(item->checkers.last().rect.isEmpty()); // nothing is loaded
        load(item, filledWith(Qt::red, QSize(20, 20)));
        QCOMPARE(item->checkers.last().rect, QRectF(0, 0, 60, 40));
        item->setViewGeometry(QRectF(400, 0, 60, 40)); // outside the boundary
        (void)window->picture();
        QVERIFY(item->checkers.last().rect.isEmpty());
        item->fillBackground(nullptr); // nothing to fill
    }

    // ---- leaving

    void itemThatLeftItsWindowHearsNoResults()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setViewGeometry(QRectF(0, 0, 60, 60));
        load(item, filledWith(Qt::red));
        item->setParentItem(nullptr);
        item->setParentItem(window->contentItem());
        // The picture that was there comes along.
        QCOMPARE(pixels::count(window->picture(), Qt::red), 3600);
        log.clear();
        item->setSource(folder->add(QStringLiteral("b.png"), filledWith(Qt::green)));
        (void)window->picture();
        const int frames = item->frames;
        QTest::qWait(300);
        QCOMPARE(log, QStringList{QStringLiteral("source:2")});
        QCOMPARE(item->statusSource(), ImagePreviewer::Loading);
        QCOMPARE(item->frames, frames);
    }

    void leavingWaitsForTheWorkers()
    {
        WatchedPreviewer *item = add(nullptr);
        item->setSource(folder->add(QStringLiteral("a.png"), smooth(QSize(2000, 2000))));
        item->setParentItem(nullptr);
        QCOMPARE(item->statusSource(), ImagePreviewer::Loading);
        QTRY_COMPARE_WITH_TIMEOUT(QThreadPool::globalInstance()->activeThreadCount(), 0, patience);
        QCOMPARE(log, QStringList{QStringLiteral("source:2")});
        delete item;
    }
};

QTEST_MAIN(TestImagePreviewer)
#include "tst_imagepreviewer.moc"
