// Image items that come and go: during loads, between windows, by the thousand, with numbers that no client
// should send. What counts is that nothing crashes, hangs or warns.

#include "image/circleprogress.h"
#include "image/drawableimage.h"
#include "image/imagecaches.h"
#include "image/imagepreviewer.h"
#include "image/imagerender.h"
#include "image/roundedimage.h"
#include "image/roundedrectitem.h"
#include "itemwindow.h"
#include "messageguard.h"
#include "pixels.h"
#include "testpictures.h"

#include <QElapsedTimer>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QPointer>
#include <QSGNode>
#include <QtTest>

#include <functional>
#include <limits>

using namespace testpictures;

using Maker = std::function<QQuickItem *(const QString &source)>;
Q_DECLARE_METATYPE(Maker)

namespace {

constexpr int patience = 30'000;
const QColor desk(40, 120, 200);

/// Counts the frames that an item asks for by its timer.
class CountedProgress : public CircleProgress
{
    Q_OBJECT

public:
    int frames = 0;

    void paint(QPainter *painter) override
    {
        ++frames;
        CircleProgress::paint(painter);
    }
};

/// Counts what the scene graph of a window holds.
class Census : public QQuickItem
{
    Q_OBJECT

public:
    struct Counts
    {
        int nodes = 0;
        int textures = 0;
    };

    explicit Census(ItemWindow *window)
        : QQuickItem(window->contentItem())
        , view(window)
    {
        setFlag(QQuickItem::ItemHasContents);
        // With the window's own OpenGL context, which belongs to the render thread.
        connect(
            window, &QQuickWindow::afterRendering, this, [this] { counts.textures = textureCount(); },
            Qt::DirectConnection);
    }

    [[nodiscard]] Counts take()
    {
        // The first frame lets the nodes of dead items go, the second one counts.
        for (int frame = 0; frame < 2; ++frame) {
            update();
            (void)view->picture();
        }
        return counts;
    }

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *) override
    {
        if (!oldNode)
            return new QSGNode;
        const QSGNode *root = oldNode;
        while (root->parent())
            root = root->parent();
        counts.nodes = nodeCount(root);
        return oldNode;
    }

private:
    static int nodeCount(const QSGNode *node)
    {
        int count = 1;
        for (const QSGNode *child = node->firstChild(); child; child = child->nextSibling())
            count += nodeCount(child);
        return count;
    }

    /// Textures get the lowest free names.
    static int textureCount()
    {
        constexpr GLuint highestName = 20'000;
        QOpenGLFunctions *gl = QOpenGLContext::currentContext()->functions();
        int count = 0;
        for (GLuint name = 1; name <= highestName; ++name)
            count += gl->glIsTexture(name) ? 1 : 0;
        return count;
    }

    ItemWindow *view;
    Counts counts; ///< written while the GUI thread waits for the frame
};

QQuickItem *makeRounded(const QString &source)
{
    auto *item = new RoundedImage;
    item->setSize(QSizeF(20, 20));
    item->setRadius(5);
    item->setCache(source.size() % 2 == 0);
    item->setSource(source);
    return item;
}

QQuickItem *makeRender(const QString &source)
{
    auto *item = new ImageRender;
    item->setSize(QSizeF(20, 20));
    item->setTopLeftRadius(5);
    item->setBlurRadius(3);
    item->setSource(source);
    item->setBackgroundSource(source);
    return item;
}

QQuickItem *makePreviewer(const QString &source)
{
    auto *item = new ImagePreviewer;
    item->setViewGeometry(QRectF(0, 0, 20, 20));
    item->setSource(source);
    item->setBackgroundSource(source);
    return item;
}

QQuickItem *makeDrawable(const QString &source)
{
    auto *item = new DrawableImage;
    item->setSize(QSizeF(20, 20));
    item->setRadius(5);
    item->setSource(source);
    return item;
}

QQuickItem *makeRect(const QString &)
{
    auto *item = new RoundedRectItem;
    item->setSize(QSizeF(20, 20));
    item->setTopLeftRadius(5);
    return item;
}

QQuickItem *makeProgress(const QString &)
{
    auto *item = new CircleProgress;
    item->setRadius(10);
    item->setProgress(0.5);
    return item;
}

} // namespace

class TestImageItemsLifetime : public QObject
{
    Q_OBJECT

    QScopedPointer<ItemWindow> window;
    QScopedPointer<MessageGuard> guard;
    QScopedPointer<Folder> folder;
    QStringList sources;

    static void addMakers()
    {
        QTest::addColumn<Maker>("make");
        QTest::newRow("RoundedImage") << Maker(makeRounded);
        QTest::newRow("ImageRender") << Maker(makeRender);
        QTest::newRow("ImagePreviewer") << Maker(makePreviewer);
        QTest::newRow("DrawableImage") << Maker(makeDrawable);
        QTest::newRow("RoundedRectItem") << Maker(makeRect);
        QTest::newRow("CircleProgress") << Maker(makeProgress);
    }

private Q_SLOTS:
    void initTestCase()
    {
        folder.reset(new Folder);
        sources = QStringList{folder->add(QStringLiteral("a.png"), smooth(QSize(300, 200))),
                              folder->add(QStringLiteral("bb.jpg"), smooth(QSize(640, 480)), "jpeg"),
                              folder->add(QStringLiteral("c.png"), smooth(QSize(40, 40), true)),
                              folder->add(QStringLiteral("dd.png"), QByteArray("no picture")),
                              folder->path(QStringLiteral("missing.png"))};
    }

    void init()
    {
        roundedImageCache.clear();
        renderImageCache.clear();
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

    void thousandItemsDieWhileTheyLoad_data() { addMakers(); }

    void thousandItemsDieWhileTheyLoad()
    {
        QFETCH(Maker, make);
        const auto makeAndDelete = [&](int count) {
            QVector<QPointer<QQuickItem>> alive;
            for (int i = 0; i < count; ++i) {
                QQuickItem *item = make(sources.at(i % sources.size()));
                item->setParentItem(window->contentItem());
                item->setPosition(QPointF(i % 20 * 22, i / 20 % 14 * 22));
                alive.append(item);
                if (alive.size() > 40)
                    delete alive.takeFirst();
                if (i % 50 == 0)
                    (void)window->picture();
            }
            (void)window->picture();
            qDeleteAll(alive);
        };
        auto *census = new Census(window.data());
        const Census::Counts empty = census->take();
        QScopedPointer<QQuickItem> first(make(sources.first()));
        first->setParentItem(window->contentItem());
        QTRY_VERIFY_WITH_TIMEOUT(!pixels::inkRect(window->picture(), desk).isNull(), patience);
        const Census::Counts shown = census->take();
        QVERIFY(shown.nodes > empty.nodes);
        QVERIFY(shown.textures > empty.textures);
        first.reset();

        // Qt's OpenGL painter keeps a few textures of what it painted last, whoever painted.
        makeAndDelete(100);
        const Census::Counts before = census->take();
        QCOMPARE(before.nodes, empty.nodes);
        makeAndDelete(1000);
        QVERIFY(pixels::inkRect(window->picture(), desk).isNull());
        const Census::Counts after = census->take();
        QCOMPARE(after.nodes, before.nodes);
        QCOMPARE(after.textures, before.textures);
    }

    void replacedPicturesLeaveNoTexture_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::newRow("RoundedImage") << Maker(makeRounded);
        QTest::newRow("ImageRender") << Maker(makeRender);
        QTest::newRow("ImagePreviewer") << Maker(makePreviewer);
    }

    void replacedPicturesLeaveNoTexture()
    {
        QFETCH(Maker, make);
        const QColor colours[] = {Qt::red, Qt::green};
        QStringList pictures;
        for (const QColor &colour : colours) {
            QImage image(20, 20, QImage::Format_RGB32);
            image.fill(colour);
            pictures += folder->add(colour.name(), image);
        }
        QScopedPointer<QQuickItem> item(make(pictures.first()));
        item->setParentItem(window->contentItem());
        item->setSize(QSizeF(20, 20));
        auto *census = new Census(window.data());
        Census::Counts before;
        for (int i = 0; i < 20; ++i) {
            item->setProperty("source", pictures.at(i % 2));
            const auto middle = [&] { return window->picture(item.data()).pixelColor(10, 10); };
            QTRY_COMPARE_WITH_TIMEOUT(middle(), colours[i % 2], patience);
            if (i == 1)
                before = census->take();
        }
        const Census::Counts after = census->take();
        QCOMPARE(after.nodes, before.nodes);
        QCOMPARE(after.textures, before.textures);
    }

    void itemsMoveBetweenWindows_data() { addMakers(); }

    void itemsMoveBetweenWindows()
    {
        QFETCH(Maker, make);
        ItemWindow other(QSize(200, 200), desk);
        QVERIFY(other.open());
        QVector<QQuickItem *> items;
        for (int i = 0; i < 10; ++i) {
            items.append(make(sources.at(i % 3)));
            items.last()->setParentItem(window->contentItem());
            items.last()->setPosition(QPointF(i % 5 * 30, i / 5 * 30));
        }
        for (int round = 0; round < 6; ++round) {
            for (QQuickItem *item : qAsConst(items)) {
                if (round % 3 == 2)
                    item->setParentItem(nullptr);
                item->setParentItem(round % 2 == 0 ? other.contentItem() : window->contentItem());
            }
            (void)window->picture();
            (void)other.picture();
        }
        qDeleteAll(items);
    }

    void itemsComeBackAfterTheirWindowWasHidden_data() { addMakers(); }

    void itemsComeBackAfterTheirWindowWasHidden()
    {
        QFETCH(Maker, make);
        window->setPersistentSceneGraph(false);
        window->setPersistentOpenGLContext(false);
        const QScopedPointer<QQuickItem> item(make(sources.first()));
        item->setParentItem(window->contentItem());
        item->setPosition(QPointF(50, 50));
        QTRY_VERIFY_WITH_TIMEOUT(!pixels::inkRect(window->picture(), desk).isNull(), patience);
        for (int i = 0; i < 3; ++i) {
            window->hide();
            QTest::qWait(20);
            QVERIFY(window->open());
            item->update();
            QTRY_VERIFY_WITH_TIMEOUT(!pixels::inkRect(window->picture(), desk).isNull(), patience);
        }
    }

    void sourcesSwitchAThousandTimes()
    {
        RoundedImage rounded;
        ImageRender render;
        ImagePreviewer previewer;
        DrawableImage drawable;
        for (QQuickItem *item :
             {static_cast<QQuickItem *>(&rounded), static_cast<QQuickItem *>(&render),
              static_cast<QQuickItem *>(&previewer), static_cast<QQuickItem *>(&drawable)}) {
            item->setParentItem(window->contentItem());
            item->setSize(QSizeF(30, 30));
        }
        render.setX(40);
        for (int i = 0; i < 1000; ++i) {
            const QString &source = sources.at(i % sources.size());
            rounded.setSource(source);
            rounded.setFillMode(RoundedImage::FillMode(i % 3));
            render.setSource(source);
            render.setBackgroundSource(sources.at((i + 1) % sources.size()));
            render.setBlurRadius(i % 7);
            previewer.setSource(source);
            previewer.setBackgroundSource(i % 4 == 0 ? QString() : source);
            drawable.setSource(source);
            if (i % 100 == 0)
                (void)window->picture();
        }
        render.setSource(sources.first());
        QTRY_COMPARE_WITH_TIMEOUT(render.statusSource(), ImageRender::Ready, patience);
    }

    void handlersMaySetTheSourceAgain()
    {
        ImageRender render;
        render.setParentItem(window->contentItem());
        render.setSize(QSizeF(30, 30));
        connect(&render, &ImageRender::statusSourceChanged, &render, [&](ImageRender::Status status) {
            if (status == ImageRender::Error)
                render.setSource(sources.first());
        });
        connect(&render, &ImageRender::sourceChanged, &render, [&](const QString &source) {
            if (source == sources.at(1))
                render.setSource(QString());
        });
        render.setSource(sources.last());
        QTRY_COMPARE_WITH_TIMEOUT(render.statusSource(), ImageRender::Ready, patience);
        QCOMPARE(render.source(), sources.first());
        render.setSource(sources.at(1));
        QCOMPARE(render.source(), QString());
        QCOMPARE(render.statusSource(), ImageRender::Null);
    }

    void numbersThatNoClientShouldSendAreSurvived()
    {
        const double numbers[] = {0.0, -1.0, -1e9, 1e9, 1e300, qInf(), -qInf(), qQNaN()};
        RoundedImage rounded;
        ImageRender render;
        ImagePreviewer previewer;
        rounded.setParentItem(window->contentItem());
        render.setParentItem(window->contentItem());
        previewer.setParentItem(window->contentItem());
        rounded.setSourceSize(QSize(20, 20));
        rounded.setSource(sources.first());
        render.setSource(sources.first());
        render.setBackgroundSource(sources.at(2));
        render.setSourceFillMode(ImageRender::PreserveAspectFit);
        render.setBackgroundFillMode(ImageRender::PreserveAspectCrop);
        previewer.setSource(sources.first());
        for (const double number : numbers) {
            rounded.setRadius(number);
            rounded.setRadiusTopLeft(number);
            render.setTopRightRadius(number);
            render.setBlurRadius(number);
            previewer.setBlurRadius(number);
            previewer.setViewGeometry(QRectF(number, 0, 100, number));
            const double side = std::isfinite(number) ? qBound(-1e9, number, 1e9) : 0.0;
            for (QQuickItem *item : {static_cast<QQuickItem *>(&rounded), static_cast<QQuickItem *>(&render),
                                     static_cast<QQuickItem *>(&previewer)})
                item->setSize(QSizeF(side, 30));
            (void)window->picture();
        }
        const QSize sizes[] = {QSize(0, 0), QSize(-5, 5), QSize(1, 1),
                               QSize(std::numeric_limits<int>::max(), 1),
                               QSize(std::numeric_limits<int>::max(), std::numeric_limits<int>::max())};
        for (const QSize &size : sizes) {
            rounded.setSourceSize(size);
            render.setSourceSize(size);
            previewer.setSourceSize(size);
            QTest::qWait(20);
            (void)window->picture();
        }
    }

    void bombsGiveAnErrorAtOnce()
    {
        const QString bomb = folder->add(QStringLiteral("bomb.png"), pngHeader(QSize(60000, 60000)));
        ImageRender render;
        ImagePreviewer previewer;
        render.setSource(bomb);
        render.setBackgroundSource(bomb);
        previewer.setSource(bomb);
        QTRY_COMPARE_WITH_TIMEOUT(render.statusSource(), ImageRender::Error, patience);
        QTRY_COMPARE_WITH_TIMEOUT(render.statusBackground(), ImageRender::Error, patience);
        QTRY_COMPARE_WITH_TIMEOUT(previewer.statusSource(), ImagePreviewer::Error, patience);
    }

    void stripsAndSinglePixelsAreShown_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("a pixel") << QSize(1, 1);
        QTest::newRow("1 by 30,000") << QSize(1, 30'000);
        QTest::newRow("30,000 by 1") << QSize(30'000, 1);
    }

    void stripsAndSinglePixelsAreShown()
    {
        QFETCH(QSize, size);
        QImage strip(size, QImage::Format_RGB32);
        strip.fill(Qt::red);
        const QString path = folder->add(QStringLiteral("strip.png"), strip);
        RoundedImage rounded;
        ImageRender render;
        ImagePreviewer previewer;
        DrawableImage drawable;
        rounded.setFillMode(RoundedImage::PreserveAspectCrop);
        render.setSourceFillMode(ImageRender::PreserveAspectCrop);
        render.setBlurRadius(3);
        render.setBackgroundSource(path);
        previewer.setViewGeometry(QRectF(0, 0, 30, 30));
        drawable.setFillMode(DrawableImage::PreserveAspectCrop);
        QQuickItem *items[] = {&rounded, &render, &previewer, &drawable};
        double x = 0;
        for (QQuickItem *item : items) {
            auto *place = new QQuickItem(window->contentItem());
            place->setX(x);
            x += 40;
            item->setParentItem(place);
            item->setSize(QSizeF(30, 30));
            item->setProperty("source", path);
        }
        for (const QQuickItem *item : items) {
            const auto middle = [this, item] {
                return window->picture(item->parentItem(), QRectF(15, 15, 1, 1)).pixelColor(0, 0);
            };
            QTRY_COMPARE_WITH_TIMEOUT(middle(), QColor(Qt::red), patience);
        }
    }

    void waveMovesOnlyWhileItIsSeenAndUnderWay()
    {
        CountedProgress item;
        item.setParentItem(window->contentItem());
        const auto framesIn = [&](int milliseconds) {
            (void)window->picture();
            const int before = item.frames;
            QTest::qWait(milliseconds);
            return item.frames - before;
        };
        // From the start, until something is set on which it depends.
        QVERIFY(framesIn(1000) > 3);
        item.setProgress(0.5);
        QVERIFY(framesIn(1000) > 3);
        item.setProgress(1.5);
        QCOMPARE(framesIn(300), 0);
        item.setProgress(0.5);
        QVERIFY(framesIn(1000) > 3);
        item.setVisible(false);
        QCOMPARE(framesIn(300), 0);
        item.setProgress(0);
        item.setVisible(true);
        QCOMPARE(framesIn(300), 0); // nothing under way
        item.setProgress(0.5);
        QVERIFY(framesIn(1000) > 3);
        item.setEnabled(false);
        QCOMPARE(framesIn(300), 0);
        item.setEnabled(true);
        QVERIFY(framesIn(1000) > 3);
        item.QQuickItem::setOpacity(0);
        QCOMPARE(framesIn(300), 0);
    }
};

QTEST_MAIN(TestImageItemsLifetime)
#include "tst_imageitems_lifetime.moc"
