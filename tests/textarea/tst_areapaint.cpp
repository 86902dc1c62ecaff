// The emoji over the text of the input box, in pixels.

#include "box.h"

#include "itemwindow.h"
#include "messageguard.h"
#include "pixels.h"

#include <emoji/emojimanager.h>
#include <emoji/placeholderfont.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QSGSimpleTextureNode>
#include <QSGTexture>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <memory>

using namespace fixture;

namespace {

constexpr int patience = 10'000; // ms

/// `text` of a box, and where its emoji are expected: positions and keys.
struct ExpectedEmoji
{
    int position;
    QString key;
};

/// What lies over the text of a box, as it was painted last.
struct Overlay
{
    QRectF rect;
    QSize pixels;
    bool isOverText = false; ///< nothing but other overlays lies behind it in the list
};

/// A box that tells its overlays: the pictures among the children of its node.
class ProbedBox : public Box
{
    Q_OBJECT

public:
    using Box::Box;
    QVector<Overlay> overlays; ///< written by the render thread while this one waits for it

protected:
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override
    {
        QSGNode *node = Box::updatePaintNode(oldNode, data);
        overlays.clear();
        bool isOverText = true;
        for (QSGNode *child = node ? node->lastChild() : nullptr; child; child = child->previousSibling()) {
            // Those of the text are nodes of text, and rectangles of one colour.
            auto *picture = dynamic_cast<QSGSimpleTextureNode *>(child);
            isOverText = isOverText && picture;
            if (picture)
                overlays.prepend({picture->rect(), picture->texture()->textureSize(), isOverText});
        }
        return node;
    }
};

} // namespace

class TestAreaPaint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        window = std::make_unique<ItemWindow>();
        QVERIFY(window->open());
    }
    void cleanupTestCase() { window.reset(); }

    void init()
    {
        guard = std::make_unique<MessageGuard>();
        box = std::make_unique<ProbedBox>(window->contentItem());
        box->setPosition(QPointF(20, 20));
        box->setVisualWidth(400);
        box->setVisualHeight(200);
        box->setCursorVisible(false);
        box->setSelectionColor(Qt::yellow);
        box->setColor(Qt::black);
    }
    void cleanup()
    {
        box.reset();
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    void emojiStandOnTheirPlaceholders_data()
    {
        QTest::addColumn<QString>("lead");
        QTest::newRow("first") << QString();
        QTest::newRow("behind text") << QStringLiteral("ab ");
        QTest::newRow("second line") << QStringLiteral("ab\n");
        QTest::newRow("chinese") << QStringLiteral("\u4F60\u597D");
        QTest::newRow("right to left") << QStringLiteral("\u05D0\u05D1 ");
    }
    void emojiStandOnTheirPlaceholders()
    {
        QFETCH(QString, lead);
        box->insertText(lead + grin + family);
        const int at = lead.size();
        QCOMPARE(overlayDifference({{at, QStringLiteral("1f600")},
                                    {at + 1, QStringLiteral("1f468-200d-1f469-200d-1f467-200d-1f466")}}),
                 QString());
    }

    void aSelectionDoesNotCoverTheEmoji()
    {
        box->insertText(QStringLiteral("a") + grin + QStringLiteral("b"));
        draw();
        box->selectAll();
        QCOMPARE(overlayDifference({{1, QStringLiteral("1f600")}}, Qt::yellow), QString());
        box->deselect();
        draw();
        box->setCursorPosition(3);
        QSignalSpy repainted(box.get(), &DrawableTextArea::needUpdateEmojiChanged);
        for (int i = 0; i < 2; ++i) {
            box->key(Qt::Key_Left, Qt::ShiftModifier);
            draw();
        }
        QCOMPARE(repainted.count(), 0);
        QCOMPARE(overlayDifference({{1, QStringLiteral("1f600")}}, Qt::yellow), QString());
    }

    // Also when the base class makes text anew, with the background of the selection.
    void theOverlaysLieOverAllText()
    {
        box->setSpellcheckEnabled(true);
        box->insertText(QStringLiteral("a") + grin + QStringLiteral("b\nsecond line\nthird"));
        draw();
        for (int i = 0; i < 12; ++i) {
            box->key(i % 3 == 0 ? Qt::Key_Up : Qt::Key_Left, Qt::ShiftModifier);
            draw();
            QCOMPARE(box->overlays.size(), 2);
            QVERIFY(box->overlays.at(0).isOverText);
        }
        box->setCursorPosition(0);
        box->key(Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
        draw();
        QCOMPARE(box->overlays.size(), 2);
        QVERIFY(box->overlays.at(0).isOverText);
    }

    void theEmojiPictureCoversWhatIsVisible()
    {
        const double ratio = qGuiApp->devicePixelRatio();
        box->insertText(grin);
        box->setVisualX(3);
        box->setVisualY(5);
        box->setVisualWidth(100.25);
        box->setVisualHeight(60.5);
        draw();
        QCOMPARE(box->overlays.size(), 1);
        QCOMPARE(box->overlays.first().rect, QRectF(3, 5, 100.25, 60.5));
        QCOMPARE(box->overlays.first().pixels,
                 QSize(int(std::ceil(100.25 * ratio)), int(std::ceil(60.5 * ratio))));
    }

    void anEmptyBoxHasAPictureOfOnePixel()
    {
        const int side = int(std::ceil(qGuiApp->devicePixelRatio()));
        box->insertText(grin);
        draw();
        QCOMPARE(box->overlays.first().pixels.width(), 400 * side);
        box->key(Qt::Key_Backspace);
        draw();
        QCOMPARE(box->overlays.size(), 1);
        QCOMPARE(box->overlays.first().pixels, QSize(side, side));
    }

    void theSpellingPictureGoesWithTheSetting()
    {
        box->insertText(QStringLiteral("abc"));
        draw();
        QCOMPARE(box->overlays.size(), 1);
        box->setSpellcheckEnabled(true);
        draw();
        QCOMPARE(box->overlays.size(), 2);
        box->setSpellcheckEnabled(false);
        draw();
        QCOMPARE(box->overlays.size(), 1);
    }

    void anUnchangedBoxKeepsItsPicture()
    {
        box->insertText(grin);
        draw();
        QSignalSpy marked(box.get(), &DrawableTextArea::needUpdateEmojiChanged);
        box->update();
        draw();
        QVERIFY(!box->needUpdateEmoji());
        QCOMPARE(marked.count(), 0);
    }

    void removedEmojiVanish()
    {
        box->insertText(grin);
        QVERIFY(hasInk());
        box->key(Qt::Key_Backspace);
        QVERIFY(!hasInk());
    }

    void emojiFollowAnEditInFrontOfThem()
    {
        box->insertText(grin);
        draw();
        box->setCursorPosition(0);
        box->insertText(QStringLiteral("abc"));
        QCOMPARE(overlayDifference({{3, QStringLiteral("1f600")}}), QString());
    }

    void emojiFollowTheFontAndTheWidth()
    {
        box->insertText(QStringLiteral("aaa aaa aaa ") + grin);
        draw();
        QFont font = box->font();
        font.setPixelSize(32);
        box->setFont(font);
        QCOMPARE(overlayDifference({{12, QStringLiteral("1f600")}}), QString());
        box->setWidth(150);
        QVERIFY(box->positionToRectangle(12).top() > 20);
        QCOMPARE(overlayDifference({{12, QStringLiteral("1f600")}}), QString());
        box->setTopPadding(30);
        QCOMPARE(overlayDifference({{12, QStringLiteral("1f600")}}), QString());
    }

    void emojiFollowTheAlignment()
    {
        box->insertText(grin);
        draw();
        box->setHAlign(QQuickTextEdit::AlignRight);
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
        box->setWidth(300);
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
        box->setVAlign(QQuickTextEdit::AlignBottom);
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
        box->setHeight(150);
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
    }

    void emojiFollowAPreedit()
    {
        box->insertText(grin);
        draw();
        box->setCursorPosition(0);
        box->compose(QStringLiteral("ni"));
        QVERIFY(box->positionToRectangle(1).left() > 20);
        box->compose(QString());
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
    }

    void theVisiblePartIsToldAndPainted()
    {
        for (int i = 0; i < 40; ++i)
            box->insertText(QStringLiteral("line ") + grin + QStringLiteral("\n"));
        // As tall as its text, as a box in a flickable is.
        box->setHeight(box->contentHeight());
        QSignalSpy from(box.get(), &DrawableTextArea::visualFromChanged);
        QSignalSpy to(box.get(), &DrawableTextArea::visualToChanged);
        draw();
        QTRY_VERIFY_WITH_TIMEOUT(to.count() > 0, patience);
        QCOMPARE(box->visualFrom(), 0);
        QCOMPARE(box->visualTo(), box->positionAt(box->contentWidth(), box->height()));

        // The client scrolls the box up by ten lines.
        const double scrolled = box->positionToRectangle(70).top() + 2;
        box->setY(20 - scrolled);
        box->setVisualY(scrolled);
        draw();
        QTRY_COMPARE_WITH_TIMEOUT(box->visualFrom(), 70, patience);
        QVERIFY(from.count() > 0);
        QCOMPARE(overlayDifference({{75, QStringLiteral("1f600")}, {82, QStringLiteral("1f600")}}),
                 QString());
    }

    void withoutASizeNothingIsPainted()
    {
        box->insertText(grin);
        box->setWidth(0);
        box->setNeedUpdateEmoji(true);
        draw();
        QVERIFY(box->needUpdateEmoji());
        box->setWidth(400);
        draw();
        QVERIFY(!box->needUpdateEmoji());
    }

    void visibleSizesOfNoSenseKeepTheWindowAlive()
    {
        box->insertText(grin);
        for (const double value : {qQNaN(), qInf(), 1e30, -5.0, 0.0}) {
            box->setVisualWidth(value);
            box->setVisualHeight(value);
            box->setVisualX(value);
            draw();
            box->setContent(QString());
            draw();
            box->insertText(grin);
        }
        box->setVisualX(0);
        box->setVisualWidth(400);
        box->setVisualHeight(200);
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
    }

    void spellingMarksComeAndGoWithoutAWord()
    {
        box->insertText(QStringLiteral("abc ") + grin);
        box->setSpellcheckEnabled(true);
        QCOMPARE(overlayDifference({{4, QStringLiteral("1f600")}}), QString());
        box->setSpellcheckEnabled(false);
        QCOMPARE(overlayDifference({{4, QStringLiteral("1f600")}}), QString());
    }

    void aBoxMayMoveToAnotherWindow()
    {
        box->insertText(grin);
        draw();
        ItemWindow other;
        QVERIFY(other.open());
        box->setParentItem(other.contentItem());
        QVERIFY(!other.picture().isNull());
        box->setParentItem(window->contentItem());
        QCOMPARE(overlayDifference({{0, QStringLiteral("1f600")}}), QString());
    }

private:
    /// Draws a frame, after which the overlays are those of the text until now.
    void draw() { QVERIFY(!window->picture().isNull()); }

    [[nodiscard]] bool hasInk() { return !pixels::inkRect(window->picture(box.get()), Qt::white).isNull(); }

    /// Compares the box around the places where emoji are expected with these, painted by a painter.
    [[nodiscard]] QString overlayDifference(const QVector<ExpectedEmoji> &emojis,
                                            const QColor &background = Qt::white)
    {
        // A second frame follows the first where that finds another visible part.
        draw();
        const QImage actual = window->picture();
        const double side =
            QFontMetricsF(emoji::withPlaceholders(box->font())).horizontalAdvance(QChar(0xEEEE));
        for (const ExpectedEmoji &expected : emojis) {
            EmojiManager::EmojiInfo info;
            if (!EmojiManager::instance()->emoji(expected.key, info))
                return QStringLiteral("no picture of ") + expected.key;
            const QPointF corner =
                box->mapToScene(box->positionToRectangle(expected.position).topLeft()) + QPointF(1, 1);
            const QRectF place(corner, QSizeF(side - 2, side - 2));
            QImage reference(actual.size(), QImage::Format_RGB32);
            reference.fill(background);
            QPainter painter(&reference);
            painter.setRenderHint(QPainter::SmoothPixmapTransform);
            painter.drawPixmap(place, *info.pixmap, QRectF(info.x, info.y, info.width, info.height));
            painter.end();
            // Its middle: the edges blend with what is around.
            const QRect middle = place.toAlignedRect().adjusted(3, 3, -3, -3);
            const QString difference =
                pixels::pictureDifference(actual.copy(middle), reference.copy(middle), {24, 0.05});
            if (!difference.isEmpty())
                return difference;
        }
        return {};
    }

    std::unique_ptr<ItemWindow> window;
    std::unique_ptr<ProbedBox> box;
    std::unique_ptr<MessageGuard> guard;
};

QTEST_MAIN(TestAreaPaint)
#include "tst_areapaint.moc"
