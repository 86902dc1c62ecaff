// What DrawableText draws besides its selection: text and emoji.

#include "paintstage.h"
#include "pixels.h"
#include "textfixture.h"
#include "textreference.h"

#include <QApplication>
#include <QPainter>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

class TestPaint : public QObject
{
    Q_OBJECT

    PaintStage stage;

private Q_SLOTS:
    void initTestCase() { QVERIFY2(stage.open(), "no window with OpenGL"); }
    void init() { stage.guard = std::make_unique<MessageGuard>(); }
    void cleanup() { QCOMPARE(stage.guard->unexpected(), QStringList()); }
    void cleanupTestCase() { stage.window.reset(); }

    // ---- emoji

    void emojiPictureCoversTheItemAboveTheText()
    {
        const auto item = stage.show(QStringLiteral("ab \U0001F600 cd"));
        (void)stage.window->picture();
        const PaintedNodes nodes = item->painted();
        QCOMPARE(nodes.images.size(), 1);
        QVERIFY(nodes.imagesAreLast);
        const QRectF image = nodes.images.first();
        const QRectF bounds = item->boundingRect();
        QVERIFY(qAbs(image.left()) < 0.01 && qAbs(image.top()) < 0.01);
        QVERIFY(qAbs(image.width() - bounds.width()) < 0.01);
        QVERIFY(qAbs(image.height() - bounds.height()) < 0.01);
    }

    void emojiAreDrawnInTheirPlaces()
    {
        const auto item = stage.show(QStringLiteral("\U0001F600 \U0001F602\n\u2764\uFE0F"));
        QCOMPARE(item->state()->emojiCount, 3);
        const QImage picture = stage.window->picture(item.get());

        // There is nothing but emoji, so all ink lies inside their places, and each place has some.
        QImage rest = picture;
        int places = 0;
        for (int paragraph = 0; paragraph < 2; ++paragraph) {
            const QTextLayout *layout = item->state()->layouts.at(paragraph);
            for (const EmojiRecord &record : item->state()->emojis.at(paragraph)) {
                const QTextLine line = layout->lineForTextPosition(record.pos);
                const QPointF corner = layout->position() + QPointF(line.cursorToX(record.pos), line.y());
                const double side = item->state()->emojiSize;
                const QRect place = QRectF(corner, QSizeF(side, side)).toAlignedRect();
                QVERIFY(pixels::inkRect(picture.copy(place), Qt::white).isValid());
                QPainter(&rest).fillRect(place, Qt::white);
                ++places;
            }
        }
        QCOMPARE(places, 3);
        QVERIFY2(!pixels::inkRect(rest, Qt::white).isValid(),
                 qPrintable(pixels::saveFailure(rest, QStringLiteral("rest"))));

        // And it is the overlay that is drawn.
        QImage expected(picture.size(), QImage::Format_RGB32);
        expected.fill(Qt::white);
        QPainter painter(&expected);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(item->boundingRect(), item->state()->emojiImage);
        painter.end();
        QCOMPARE(pixels::pictureDifference(picture, expected, {48, 0.03}), QString());
    }

    void staleEmojiPictureIsNotDrawn()
    {
        const auto item = stage.show(QStringLiteral("\U0001F600"));
        QVERIFY(pixels::inkRect(stage.window->picture(), Qt::white).isValid());
        QVERIFY(!item->state()->emojiImage.isNull());
        item->editableState().hasEmoji = false;
        item->update();
        QVERIFY(!pixels::inkRect(stage.window->picture(), Qt::white).isValid());
        QCOMPARE(item->painted().images.size(), 0);
    }

    void nullEmojiPictureIsNotDrawn()
    {
        const auto item = stage.show(QStringLiteral("\U0001F600"));
        item->editableState().emojiImage = QImage();
        item->update();
        QVERIFY(!pixels::inkRect(stage.window->picture(), Qt::white).isValid());
        QCOMPARE(item->painted().images.size(), 0);
    }

    void itemOfNoSizeDrawsNoEmojiPicture()
    {
        const auto item = stage.show(QStringLiteral("\U0001F600"));
        item->setSize(QSizeF(0, 10));
        item->update();
        (void)stage.window->picture();
        QCOMPARE(item->painted().images.size(), 0);
    }

    // ---- text

    void textLooksLikeQtQuicksText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QColor>("color");
        QTest::newRow("latin") << QStringLiteral("Hello, world") << QColor(Qt::black);
        QTest::newRow("coloured") << QStringLiteral("Hello, world") << QColor(200, 0, 40);
        QTest::newRow("accents") << QStringLiteral("na\u00EFve caf\u00E9") << QColor(Qt::black);
        QTest::newRow("ideographs") << QStringLiteral("\u4F60\u597D\u4E16\u754C") << QColor(Qt::black);
    }

    void textLooksLikeQtQuicksText()
    {
        QFETCH(QString, text);
        QFETCH(QColor, color);
        const auto item = stage.show(text);
        item->setColor(color);
        const QImage picture = stage.window->picture(item.get());
        QVERIFY(pixels::inkRect(picture, Qt::white).isValid());
        item->setVisible(false);
        const QImage expected = plainText(text, item->font(), color, picture.size());
        QCOMPARE(pixels::pictureDifference(picture, expected, {24, 0.01}), QString());
    }

    void selectedTextHasItsColorOnTheSelection()
    {
        const auto item = stage.show(QStringLiteral("Hello"));
        item->setSelectionCornerRadius(0);
        item->setSelectionColor(QColor(255, 255, 0));
        item->setSelectedTextColor(QColor(0, 90, 200));
        item->selectAll();
        QImage picture = stage.window->picture(item.get());
        item->setVisible(false);
        // The scene graph draws selected glyphs over the same glyphs in the text's own colour.
        QImage expected = selectedText(QStringLiteral("Hello"), item->font(), picture.size());
        // The last column may be covered in part only.
        picture = picture.copy(0, 0, picture.width() - 1, picture.height() - 1);
        expected = expected.copy(0, 0, expected.width() - 1, expected.height() - 1);
        QCOMPARE(pixels::pictureDifference(picture, expected, {24, 0.01}), QString());
    }

    void onlySelectedGlyphsChangeTheirColor()
    {
        const auto item = stage.show(QStringLiteral("WWWWWW"));
        item->setColor(Qt::black);
        item->setSelectedTextColor(Qt::red);
        item->setSelectionColor(Qt::white);
        const TextReference reference(item->state());
        item->drag(reference.leftHalf(0, 0), reference.rightHalf(0, 2));
        const QImage picture = stage.window->picture(item.get());
        const int middle = int(reference.cell(0, 3).left());
        const QImage left = picture.copy(0, 0, middle - 2, picture.height());
        const QImage right = picture.copy(middle + 3, 0, picture.width() - middle - 3, picture.height());
        QVERIFY(pixels::count(left, Qt::red, 40) > 10);
        QCOMPARE(pixels::count(left, Qt::black, 40), 0);
        QVERIFY(pixels::count(right, Qt::black, 40) > 10);
        QCOMPARE(pixels::count(right, Qt::red, 40), 0);
    }

    void linksAndMentionsHaveTheirColors()
    {
        const auto item = stage.show(QStringLiteral("WWW MMM"));
        item->setUserBlocks(blocks({block(0, 3, Link, QStringLiteral("x")), block(4, 3, Aite, 7)}));
        item->setLinkColor(Qt::red);
        item->setAiteColor(Qt::blue);
        const QImage picture = stage.window->picture(item.get());
        const int middle = int(TextReference(item->state()).cell(0, 3).center().x());
        const QImage left = picture.copy(0, 0, middle, picture.height());
        const QImage right = picture.copy(middle, 0, picture.width() - middle, picture.height());
        QVERIFY(pixels::count(left, Qt::red, 40) > 10);
        QCOMPARE(pixels::count(left, Qt::blue, 40), 0);
        QVERIFY(pixels::count(right, Qt::blue, 40) > 10);
        QCOMPARE(pixels::count(right, Qt::red, 40), 0);
    }

    void bubbleAndPhoneColorsChangeNothing()
    {
        const auto item = stage.show(QStringLiteral("call 12345"));
        item->setUserBlocks(blocks({block(5, 5, Phone, QStringLiteral("12345"))}));
        const QImage before = stage.window->picture();
        item->setPhoneColor(Qt::red);
        item->setBubbleColor(Qt::green);
        QCOMPARE(pixels::pictureDifference(stage.window->picture(), before, {0, 0}), QString());
    }

    void deletedItemLeavesThePictureClean()
    {
        auto item = stage.show(QStringLiteral("abc \U0001F600"));
        item->selectAll();
        (void)stage.window->picture();
        item.reset();
        QVERIFY(!pixels::inkRect(stage.window->picture(), Qt::white).isValid());
    }

    void itemMovesBetweenWindows()
    {
        ItemWindow other(QSize(480, 320));
        QVERIFY(other.open());
        const auto item = stage.show(QStringLiteral("abc \U0001F600"));
        item->selectAll();
        const QImage here = stage.window->picture();
        item->setParentItem(other.contentItem());
        const QImage there = other.picture();
        QCOMPARE(pixels::pictureDifference(there, here, {0, 0}), QString());
        QVERIFY(!pixels::inkRect(stage.window->picture(), Qt::white).isValid());
    }

    void sceneGraphThatIsBuiltAnewShowsTheSame()
    {
        ItemWindow other(QSize(300, 200));
        other.setPersistentOpenGLContext(false);
        other.setPersistentSceneGraph(false);
        QVERIFY(other.open());
        const auto item = stage.show(QStringLiteral("abc \U0001F600"));
        item->setParentItem(other.contentItem());
        item->selectAll();
        const QImage before = other.picture();
        QVERIFY(pixels::count(before, Qt::yellow) > 0);
        QSignalSpy invalidated(&other, &QQuickWindow::sceneGraphInvalidated);
        other.hide();
        QTRY_VERIFY_WITH_TIMEOUT(invalidated.count() > 0, 10'000);
        QVERIFY(other.open());
        QImage after;
        QTRY_VERIFY_WITH_TIMEOUT(!(after = other.picture()).isNull(), 10'000);
        QCOMPARE(pixels::pictureDifference(after, before, {0, 0}), QString());
    }

private:
    /// Qt Quick's own text at the place of `stage.show()`, as a picture of `size`.
    QImage plainText(const QString &text, const QFont &font, const QColor &color, QSize size)
    {
        return picture("import QtQuick 2.15\nText { width: 400 }", size,
                       {{"text", text}, {"font", font}, {"color", color}});
    }

    /// Text on a selection in the colours of the test: twice, one above the other.
    QImage selectedText(const QString &text, const QFont &font, QSize size)
    {
        return picture("import QtQuick 2.15\n"
                       "Rectangle { property alias text: under.text; property alias font: under.font\n"
                       "            color: \"#ffff00\"; width: 400; height: 100\n"
                       "            Text { id: under; color: \"black\" }\n"
                       "            Text { text: under.text; font: under.font; color: \"#005ac8\" } }",
                       size, {{"font", font}, {"text", text}});
    }

    QImage picture(const QByteArray &qml, QSize size,
                   const QVector<QPair<const char *, QVariant>> &properties)
    {
        QQmlEngine engine;
        QQmlComponent document(&engine);
        document.setData(qml, QUrl());
        const std::unique_ptr<QObject> object(document.create());
        auto *item = qobject_cast<QQuickItem *>(object.get());
        item->setParentItem(stage.window->contentItem());
        item->setPosition(QPointF(20, 20));
        for (const auto &property : properties)
            item->setProperty(property.first, property.second);
        return stage.window->picture(item, QRectF(QPointF(), size));
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    TestPaint test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_paint.moc"
