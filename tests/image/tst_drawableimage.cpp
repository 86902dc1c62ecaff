// DrawableImage painted on a picture: background, fill modes, border, dark mode, and its setters.

#include "image/drawableimage.h"
#include "messageguard.h"
#include "testpictures.h"

#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QPainter>
#include <QPainterPath>
#include <QSignalSpy>
#include <QtTest>

using namespace testpictures;

Q_DECLARE_METATYPE(Qt::PenStyle)

namespace {

/// The item as it paints itself, on nothing.
QImage painted(DrawableImage &item)
{
    QImage image(int(item.width()), int(item.height()), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item.paint(&painter);
    return image;
}

QImage filledWith(const QColor &color, const QSize &size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(color);
    return image;
}

/// The picture as it is on a canvas of `size`, at `rect`.
QImage placed(const QImage &image, const QSize &size, const QRect &rect, const QColor &background)
{
    QImage canvas = filledWith(background, size);
    QPainter painter(&canvas);
    painter.drawImage(rect.topLeft(),
                      image.scaled(rect.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    return canvas;
}

/// What Qt's own blur effect makes of the picture on `background`.
QImage blurred(const QImage &image, double radius, const QColor &background)
{
    QGraphicsScene scene;
    QGraphicsPixmapItem *item = scene.addPixmap(QPixmap::fromImage(image));
    auto *effect = new QGraphicsBlurEffect;
    effect->setBlurRadius(radius);
    effect->setBlurHints(QGraphicsBlurEffect::AnimationHint);
    item->setGraphicsEffect(effect);
    QImage canvas = filledWith(background, image.size());
    QPainter painter(&canvas);
    scene.render(&painter, QRectF(canvas.rect()), QRectF(image.rect()), Qt::KeepAspectRatio);
    return canvas;
}

} // namespace

class TestDrawableImage : public QObject
{
    Q_OBJECT

    QScopedPointer<MessageGuard> guard;
    QScopedPointer<Folder> folder;

    void load(DrawableImage &item, const QImage &image)
    {
        item.setSource(folder->add(QStringLiteral("picture.png"), image));
    }

private Q_SLOTS:
    void init()
    {
        folder.reset(new Folder);
        guard.reset(); // one at a time
        guard.reset(new MessageGuard);
    }

    void cleanup() { QCOMPARE(guard->unexpected(), QStringList()); }

    // ---- properties

    void resourceUrlIsStoredWithoutItsScheme()
    {
        DrawableImage item;
        QSignalSpy spy(&item, &DrawableImage::sourceChanged);
        item.setSource(QStringLiteral("qrc:/qml/image/transparent.png"));
        QCOMPARE(item.source(), QStringLiteral(":/qml/image/transparent.png"));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), QStringLiteral(":/qml/image/transparent.png"));
        item.setSource(QStringLiteral(":/qml/image/transparent.png"));
        QCOMPARE(spy.count(), 1);
        item.setSize(QSizeF(16, 16));
        QCOMPARE(painted(item).convertToFormat(QImage::Format_RGB32),
                 QImage(QStringLiteral(":/qml/image/transparent.png")).convertToFormat(QImage::Format_RGB32));
    }

    void fileUrlIsDecoded()
    {
        const QString path = folder->add(QStringLiteral("a b.png"), filledWith(Qt::red, QSize(4, 4)));
        DrawableImage item;
        item.setSize(QSizeF(4, 4));
        item.setSource(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
        QCOMPARE(painted(item).pixelColor(2, 2), QColor(Qt::red));
    }

    void clearedSourceIsWarnedOfAndHasNoPicture()
    {
        DrawableImage item;
        item.setSize(QSizeF(4, 4));
        load(item, filledWith(Qt::red, QSize(4, 4)));
        guard->allow(QStringLiteral("^background image path is invalid"));
        QTest::ignoreMessage(QtWarningMsg, "background image path is invalid, path: \"\"");
        item.setSource(QString());
        QCOMPARE(painted(item).pixelColor(2, 2), QColor(Qt::white));
    }

    void badFilesHaveNoPicture_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("nothing");
        QTest::newRow("60,000 by 60,000") << pngHeader(QSize(60000, 60000));
    }

    void badFilesHaveNoPicture()
    {
        QFETCH(QByteArray, content);
        DrawableImage item;
        item.setSize(QSizeF(4, 4));
        item.setFillMode(DrawableImage::Stretch);
        item.setDizzyBackground(true);
        item.setBlurRatio(5);
        item.setSource(folder->add(QStringLiteral("bad.png"), content));
        QCOMPARE(painted(item), filledWith(Qt::white, QSize(4, 4)));
        item.setSource(folder->path(QStringLiteral("missing.png")));
        QCOMPARE(painted(item), filledWith(Qt::white, QSize(4, 4)));
    }

    void negativeRadiusIsZero()
    {
        DrawableImage item;
        QSignalSpy spy(&item, &DrawableImage::radiusChanged);
        item.setRadius(-3);
        QCOMPARE(item.radius(), 0);
        QCOMPARE(spy.count(), 0); // as before
        item.setRadius(5);
        item.setRadius(-3);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy.at(1).at(0).toInt(), 0);
    }

    void darkModeChangesWhatIsReadAndNotWhatIsStored()
    {
        DrawableImage item;
        const QColor border(60, 20, 10);
        const QColor back(200, 100, 40);
        const QColor end(120, 240, 80);
        item.setBorderColor(border);
        item.setBackgroundColor(back);
        item.setDarkMode(true);
        QCOMPARE(item.borderColor(), border.lighter(400));
        QCOMPARE(item.backgroundColor(), back); // plain
        item.setBackgroundGradientColor(end);
        QCOMPARE(item.backgroundColor(), back.darker(400));
        QCOMPARE(item.backgroundGradientColor(), end.darker(400));
        item.setDarkMode(false);
        QCOMPARE(item.borderColor(), border);
        QCOMPARE(item.backgroundColor(), back);
        QCOMPARE(item.backgroundGradientColor(), end);
    }

    void setterSignalsCarryTheStoredValue()
    {
        DrawableImage item;
        item.setDarkMode(true);
        QSignalSpy spy(&item, &DrawableImage::borderColorChanged);
        item.setBorderColor(QColor(60, 20, 10));
        QCOMPARE(spy.at(0).at(0).value<QColor>(), QColor(60, 20, 10));
    }

    void opacityAndScaleAreNotThoseOfOtherItems()
    {
        DrawableImage item;
        item.setOpacity(0.5);
        item.setScale(2.0);
        QCOMPARE(item.QQuickItem::opacity(), 1.0);
        QCOMPARE(item.QQuickItem::scale(), 1.0);
        QCOMPARE(item.property("opacity").toDouble(), 0.5);
        QCOMPARE(item.property("scale").toDouble(), 2.0);
    }

    // ---- background and border

    void gradientRunsByItsRotation_data()
    {
        QTest::addColumn<int>("rotation");
        QTest::addColumn<QPoint>("start");
        QTest::addColumn<QPoint>("end");

        // In an item of 81 by 41.
        QTest::newRow("0") << 0 << QPoint(40, 0) << QPoint(40, 40);
        QTest::newRow("45") << 45 << QPoint(80, 0) << QPoint(0, 40);
        QTest::newRow("90") << 90 << QPoint(80, 20) << QPoint(0, 20);
        QTest::newRow("135") << 135 << QPoint(80, 40) << QPoint(0, 0);
        QTest::newRow("180") << 180 << QPoint(40, 40) << QPoint(40, 0);
        QTest::newRow("225") << 225 << QPoint(0, 40) << QPoint(80, 0);
        QTest::newRow("270") << 270 << QPoint(0, 20) << QPoint(80, 20);
        QTest::newRow("315") << 315 << QPoint(0, 0) << QPoint(80, 40);
    }

    void gradientRunsByItsRotation()
    {
        QFETCH(int, rotation);
        QFETCH(QPoint, start);
        QFETCH(QPoint, end);
        for (const bool dark : {false, true}) {
            DrawableImage item;
            item.setSize(QSizeF(81, 41));
            item.setDarkMode(dark);
            item.setBackgroundColor(QColor(240, 0, 0));
            item.setBackgroundGradientColor(QColor(0, 0, 240));
            item.setGradientRotation(rotation);
            const QImage image = painted(item);
            const int full = dark ? 60 : 240;
            QVERIFY(qAbs(qRed(image.pixel(start)) - full) < 8 && qBlue(image.pixel(start)) < 8);
            QVERIFY(qAbs(qBlue(image.pixel(end)) - full) < 8 && qRed(image.pixel(end)) < 8);
            QVERIFY(qAbs(qRed(image.pixel(40, 20)) - full / 2) < 6);
            QVERIFY(qAbs(qBlue(image.pixel(40, 20)) - full / 2) < 6);
        }
    }

    void otherRotationsShowTheEndColourAlone_data()
    {
        QTest::addColumn<int>("rotation");
        for (const int rotation : {30, 1, -45, 360, 2147483647})
            QTest::addRow("%d", rotation) << rotation;
    }

    void otherRotationsShowTheEndColourAlone()
    {
        QFETCH(int, rotation);
        DrawableImage item;
        item.setSize(QSizeF(40, 20));
        item.setBackgroundColor(Qt::red);
        item.setBackgroundGradientColor(Qt::blue);
        item.setGradientRotation(rotation);
        const QImage image = painted(item);
        for (const QPoint &point :
             {QPoint(2, 0), QPoint(39, 0), QPoint(0, 19), QPoint(20, 10), QPoint(39, 19)})
            QCOMPARE(image.pixelColor(point), QColor(Qt::blue));
    }

    void plainBackgroundKeepsItsColourInTheDark()
    {
        DrawableImage item;
        item.setSize(QSizeF(20, 20));
        item.setBackgroundColor(QColor(200, 100, 40));
        item.setBorderColor(QColor(40, 30, 20));
        item.setBorderWidth(4);
        item.setDarkMode(true);
        const QImage image = painted(item);
        QCOMPARE(image.pixelColor(10, 10), QColor(200, 100, 40));
        QCOMPARE(image.pixelColor(0, 10), QColor(40, 30, 20).lighter(400));
    }

    void borderLiesHalfInside_data()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<Qt::PenStyle>("style");
        QTest::addColumn<int>("seen");
        QTest::newRow("none") << 0 << Qt::SolidLine << 0;
        QTest::newRow("negative") << -4 << Qt::SolidLine << 0;
        QTest::newRow("no pen") << 8 << Qt::NoPen << 0;
        QTest::newRow("two") << 2 << Qt::SolidLine << 1;
        QTest::newRow("eight") << 8 << Qt::SolidLine << 4;
    }

    void borderLiesHalfInside()
    {
        QFETCH(int, width);
        QFETCH(Qt::PenStyle, style);
        QFETCH(int, seen);
        for (const int radius : {0, 6}) {
            DrawableImage item;
            item.setSize(QSizeF(60, 60));
            item.setRadius(radius);
            item.setBorderColor(Qt::red);
            item.setBorderStyle(style);
            item.setBorderWidth(width);
            const QImage image = painted(item);
            int counted = 0;
            while (image.pixelColor(counted, 30) == QColor(Qt::red))
                ++counted;
            QCOMPARE(counted, seen);
            QCOMPARE(image.pixelColor(30, 30), QColor(Qt::white));
        }
    }

    void radiusClipsEverything()
    {
        DrawableImage item;
        item.setSize(QSizeF(60, 60));
        item.setRadius(30);
        item.setFillMode(DrawableImage::Stretch);
        load(item, filledWith(Qt::red, QSize(10, 10)));
        const QImage image = painted(item);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x) {
                const double distance = std::hypot(x + 0.5 - 30, y + 0.5 - 30);
                if (distance < 29)
                    QCOMPARE(image.pixelColor(x, y), QColor(Qt::red));
                else if (distance > 31)
                    QCOMPARE(qAlpha(image.pixel(x, y)), 0);
            }
        }
    }

    // ---- the picture

    void fillModesPlaceThePicture_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("item");
        QTest::addColumn<QRect>("rect");

        QTest::newRow("pad") << 6 << QSize(30, 20) << QSize(80, 60) << QRect(0, 0, 30, 20);
        QTest::newRow("pad, larger") << 6 << QSize(130, 120) << QSize(80, 60) << QRect(0, 0, 130, 120);
        QTest::newRow("fit, wide item") << 1 << QSize(40, 30) << QSize(80, 60) << QRect(0, 0, 80, 60);
        QTest::newRow("fit, wide item, tall picture")
            << 1 << QSize(30, 60) << QSize(80, 60) << QRect(25, 0, 30, 60);
        // The shape of the item decides, so a picture that is wider still sticks out.
        QTest::newRow("fit, wide item, wider picture")
            << 1 << QSize(90, 30) << QSize(80, 60) << QRect(-50, 0, 180, 60);
        QTest::newRow("fit, tall item, taller picture")
            << 1 << QSize(30, 90) << QSize(60, 80) << QRect(0, -50, 60, 180);
        QTest::newRow("fit, square item") << 1 << QSize(60, 30) << QSize(60, 60) << QRect(0, 15, 60, 30);
        QTest::newRow("crop, wide picture") << 2 << QSize(120, 60) << QSize(80, 60) << QRect(-20, 0, 120, 60);
        QTest::newRow("crop, square picture") << 2 << QSize(40, 40) << QSize(80, 60) << QRect(0, -10, 80, 80);
        QTest::newRow("crop, tall picture") << 2 << QSize(30, 60) << QSize(60, 80) << QRect(0, -20, 60, 120);
    }

    void fillModesPlaceThePicture()
    {
        QFETCH(int, mode);
        QFETCH(QSize, picture);
        QFETCH(QSize, item);
        QFETCH(QRect, rect);
        const QImage image = smooth(picture);
        DrawableImage drawable;
        drawable.setSize(item);
        drawable.setBackgroundColor(Qt::yellow);
        drawable.setFillMode(DrawableImage::FillMode(mode));
        load(drawable, image);
        const int difference = greatestDifference(painted(drawable), placed(image, item, rect, Qt::yellow));
        QVERIFY2(difference <= 1, qPrintable(QString::number(difference)));
    }

    /// A wide picture in a wider item is scaled twice, first to the height and then up to the width.
    void cropOfAWiderItemScalesTwice()
    {
        const QImage image = smooth(QSize(80, 60));
        DrawableImage item;
        item.setSize(QSizeF(90, 30));
        item.setFillMode(DrawableImage::PreserveAspectCrop);
        load(item, image);
        const QPixmap scaled = QPixmap::fromImage(image)
                                   .scaledToHeight(30, Qt::SmoothTransformation)
                                   .scaledToWidth(90, Qt::SmoothTransformation);
        QImage expected = filledWith(Qt::white, QSize(90, 30));
        QPainter(&expected).drawPixmap(QPointF(0, int((30 - scaled.height()) * 0.5)), scaled);
        QVERIFY(greatestDifference(painted(item), expected) <= 1);
    }

    void stretchedPictureCoversTheItem()
    {
        DrawableImage item;
        item.setSize(QSizeF(80, 40));
        item.setFillMode(DrawableImage::Stretch);
        load(item, quadrants(QSize(20, 20)));
        const QImage image = painted(item);
        QCOMPARE(image.pixelColor(5, 5), QColor(Qt::red));
        QCOMPARE(image.pixelColor(75, 5), QColor(Qt::green));
        QCOMPARE(image.pixelColor(75, 35), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(5, 35), QColor(Qt::yellow));
    }

    void tilesRepeatThePicture()
    {
        DrawableImage item;
        item.setSize(QSizeF(50, 30));
        item.setFillMode(DrawableImage::Tile);
        const QImage tile = quadrants(QSize(20, 20));
        load(item, tile);
        const QImage image = painted(item);
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 50; ++x)
                QCOMPARE(image.pixel(x, y), tile.pixel(x % 20, y % 20));
        }
    }

    void tilingInOneDirectionShowsNoPicture()
    {
        for (const auto mode : {DrawableImage::TileVertically, DrawableImage::TileHorizontally}) {
            DrawableImage item;
            item.setSize(QSizeF(50, 30));
            item.setFillMode(mode);
            load(item, quadrants(QSize(20, 20)));
            QCOMPARE(painted(item), filledWith(Qt::white, QSize(50, 30)));
        }
    }

    void scaledTilesFadeInTheDark_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<bool>("dark");
        QTest::addColumn<bool>("faded");
        QTest::newRow("scaled and dark") << 2.0 << true << true;
        QTest::newRow("scaled") << 2.0 << false << false;
        QTest::newRow("dark") << 1.0 << true << false;
    }

    void scaledTilesFadeInTheDark()
    {
        QFETCH(double, scale);
        QFETCH(bool, dark);
        QFETCH(bool, faded);
        DrawableImage item; // its radius is 0: the faded shape is the whole rectangle
        item.setSize(QSizeF(40, 40));
        item.setFillMode(DrawableImage::Tile);
        item.setBackgroundColor(Qt::black);
        item.setScale(scale);
        item.setDarkMode(dark);
        QImage tile(20, 20, QImage::Format_ARGB32);
        tile.fill(Qt::transparent);
        QPainter(&tile).fillRect(0, 0, 10, 20, Qt::red);
        load(item, tile);
        const QImage image = painted(item);
        const int opaque = int(4 * scale);
        const QColor there = image.pixelColor(opaque, 5);
        if (faded)
            QVERIFY(qAbs(there.red() - 100) <= 1 && there.red() == there.green());
        else
            QCOMPARE(there, QColor(Qt::red));
        QCOMPARE(image.pixelColor(int(15 * scale), 5), QColor(Qt::black));
    }

    void opacityActsOnThePictureAlone()
    {
        DrawableImage item;
        item.setSize(QSizeF(40, 40));
        item.setBackgroundColor(Qt::black);
        item.setBorderColor(Qt::green);
        item.setBorderWidth(4);
        item.setOpacity(0.5);
        load(item, filledWith(Qt::red, QSize(20, 40)));
        const QImage image = painted(item);
        QVERIFY(qAbs(qRed(image.pixel(10, 20)) - 128) <= 1);
        QCOMPARE(image.pixelColor(30, 20), QColor(Qt::black));
        QCOMPARE(image.pixelColor(0, 20), QColor(Qt::green));
    }

    void scaleResizesThePictureFirst()
    {
        DrawableImage item;
        item.setSize(QSizeF(60, 60));
        item.setScale(1.5);
        load(item, filledWith(Qt::red, QSize(20, 10)));
        const QImage image = painted(item);
        QCOMPARE(image.pixelColor(29, 14), QColor(Qt::red));
        QCOMPARE(image.pixelColor(31, 5), QColor(Qt::white));
        QCOMPARE(image.pixelColor(5, 16), QColor(Qt::white));
    }

    void impossibleScalesShowNoPicture()
    {
        DrawableImage item;
        item.setSize(QSizeF(20, 20));
        load(item, filledWith(Qt::red, QSize(20, 20)));
        for (const int mode : {0, 1, 2, 3, 6}) {
            item.setFillMode(DrawableImage::FillMode(mode));
            for (const double scale : {0.0, -1.0, 1e-9, 1e6, 1e300, qInf(), qQNaN()}) {
                item.setScale(scale);
                QCOMPARE(painted(item), filledWith(Qt::white, QSize(20, 20)));
            }
        }
    }

    void stripsOfAnyShapeArePainted()
    {
        for (const QSize &size : {QSize(1, 30000), QSize(30000, 1), QSize(1, 1)}) {
            DrawableImage item;
            item.setSize(QSizeF(300, 200));
            load(item, filledWith(Qt::red, size));
            for (const auto mode : {DrawableImage::PreserveAspectFit, DrawableImage::PreserveAspectCrop}) {
                item.setFillMode(mode);
                const QColor shown = painted(item).pixelColor(150, 100);
                // Fitted into a wide item, the tall strip is a hair of one pixel.
                if (size.height() <= size.width() || mode == DrawableImage::PreserveAspectCrop)
                    QCOMPARE(shown, QColor(Qt::red));
            }
        }
    }

    // ---- blur

    void blurRatioIsTwiceTheRadius_data()
    {
        QTest::addColumn<int>("ratio");
        QTest::addColumn<double>("radius");
        QTest::newRow("negative") << -9 << 0.0;
        QTest::newRow("zero") << 0 << 0.0;
        QTest::newRow("one is a radius of none") << 1 << 0.0;
        QTest::newRow("ten") << 10 << 5.0;
        QTest::newRow("eleven is ten") << 11 << 5.0;
        QTest::newRow("twelve") << 12 << 6.0;
    }

    void blurRatioIsTwiceTheRadius()
    {
        QFETCH(int, ratio);
        QFETCH(double, radius);
        QImage image = filledWith(Qt::black, QSize(40, 40));
        QPainter(&image).fillRect(20, 0, 20, 40, Qt::white);
        DrawableImage item;
        item.setSize(QSizeF(40, 40));
        item.setBackgroundColor(Qt::black);
        item.setBlurRatio(ratio);
        load(item, image);
        const QImage shown = painted(item);
        const QImage expected = radius > 0 ? blurred(image, radius, Qt::black) : image;
        QVERIFY(greatestDifference(shown, expected) <= 1);
    }

    void enormousBlurIsAHaze()
    {
        QImage image = filledWith(Qt::black, QSize(40, 40));
        QPainter(&image).fillRect(20, 0, 20, 40, Qt::white);
        DrawableImage item;
        item.setSize(QSizeF(40, 40));
        item.setBackgroundColor(Qt::black);
        item.setBlurRatio(2147483647);
        load(item, image);
        const QImage shown = painted(item);
        QVERIFY(qAbs(qRed(shown.pixel(20, 20)) - qRed(shown.pixel(19, 20))) < 10);
    }

    void blurBehindThePictureHasARadiusOfTen()
    {
        QImage image = filledWith(Qt::black, QSize(60, 60));
        QPainter(&image).fillRect(30, 0, 30, 60, Qt::white);
        DrawableImage item;
        item.setSize(QSizeF(60, 60));
        item.setBackgroundColor(Qt::black);
        item.setDizzyBackground(true);
        item.setFillMode(DrawableImage::TileVertically); // no picture in front
        load(item, image);
        QVERIFY(greatestDifference(painted(item), blurred(image, 10, Qt::black)) <= 1);
    }

    void blurredBackgroundIsStretchedAndStaysThatOfTheFirstPicture()
    {
        DrawableImage item;
        item.setSize(QSizeF(100, 50));
        item.setBackgroundColor(Qt::white);
        item.setDizzyBackground(true);
        item.setFillMode(DrawableImage::TileVertically); // no picture in front
        load(item, filledWith(Qt::red, QSize(60, 60)));
        const QColor first = painted(item).pixelColor(50, 25);
        QVERIFY(first.red() > 240 && first.green() < 40);
        item.setSource(folder->add(QStringLiteral("other.png"), filledWith(Qt::blue, QSize(60, 60))));
        QCOMPARE(painted(item).pixelColor(50, 25), first);
    }
};

QTEST_MAIN(TestDrawableImage)
#include "tst_drawableimage.moc"
