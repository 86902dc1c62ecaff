// DrawableText under a real mouse, real keys and real drags in a window.

#include "itemwindow.h"
#include "messageguard.h"
#include "pointer.h"
#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>

using namespace fixture;

namespace {

constexpr int patience = 10'000; // ms

/// What lies beneath the text: writes down the presses and keys that come through.
class Ground : public QQuickItem
{
public:
    explicit Ground(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setAcceptedMouseButtons(Qt::AllButtons);
        setSize(parent->size());
    }

    QVector<Qt::MouseButton> presses;
    QVector<int> keys;

protected:
    void mousePressEvent(QMouseEvent *event) override { presses.append(event->button()); }
    void mouseReleaseEvent(QMouseEvent *) override {}
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() != Qt::Key_Control)
            keys.append(event->key());
    }
};

/// Takes what is dropped on it.
class Basket : public QQuickItem
{
public:
    explicit Basket(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFlag(ItemAcceptsDrops);
    }

    int drops = 0;
    QString text;
    QByteArray mentions;
    QStringList formats;
    Qt::DropAction action = Qt::IgnoreAction;

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { event->acceptProposedAction(); }
    void dragMoveEvent(QDragMoveEvent *event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent *event) override
    {
        ++drops;
        text = event->mimeData()->text();
        mentions = event->mimeData()->data(QStringLiteral("ostrel/aite"));
        formats = event->mimeData()->formats();
        action = event->proposedAction();
        event->acceptProposedAction();
    }
};

} // namespace

class TestPointer : public QObject
{
    Q_OBJECT

    std::unique_ptr<MessageGuard> guard;
    std::unique_ptr<ItemWindow> window;
    std::unique_ptr<Ground> ground;
    std::unique_ptr<ProbeText> item;

    void setText(const QString &text, const UserTextBlocks &list = {})
    {
        item->setText(text);
        item->setUserBlocks(blocks(list));
    }

    [[nodiscard]] TextReference reference() const { return TextReference(item->state()); }

    /// A point of the item on the same line as `point`, behind all text.
    [[nodiscard]] QPointF besideText(QPointF point) const { return QPointF(item->width() - 4, point.y()); }

private Q_SLOTS:
    void initTestCase()
    {
        window = std::make_unique<ItemWindow>(QSize(480, 320));
        QVERIFY2(window->open(), "no window with OpenGL");
    }

    void init()
    {
        guard = std::make_unique<MessageGuard>();
        ground = std::make_unique<Ground>(window->contentItem());
        item = std::make_unique<ProbeText>();
        item->setParentItem(ground.get());
        item->setPosition(QPointF(20, 20));
        Pointer(ground.get()).hover(QPointF(450, 300));
    }

    void cleanup()
    {
        item.reset();
        ground.reset();
        QCOMPARE(guard->unexpected(), QStringList());
    }

    void cleanupTestCase() { window.reset(); }

    // ---- what comes through

    void pressOnTheTextStaysWithIt()
    {
        setText(QStringLiteral("abcdef"));
        Pointer(item.get()).click(reference().center(0, 2));
        QVERIFY(ground->presses.isEmpty());
    }

    void pressThatTheTextDoesNotTakeReachesWhatLiesBeneath_data()
    {
        QTest::addColumn<bool>("mouseEnabled");
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("onText");
        QTest::newRow("beside the text") << true << int(Qt::LeftButton) << false;
        QTest::newRow("mouse disabled") << false << int(Qt::LeftButton) << true;
        QTest::newRow("right button on text") << true << int(Qt::RightButton) << true;
        QTest::newRow("right button, mouse disabled") << false << int(Qt::RightButton) << true;
    }

    void pressThatTheTextDoesNotTakeReachesWhatLiesBeneath()
    {
        QFETCH(bool, mouseEnabled);
        QFETCH(int, button);
        QFETCH(bool, onText);
        setText(QStringLiteral("ab\nabcdefgh"));
        item->setMouseEnabled(mouseEnabled);
        const QPointF point = reference().center(0, 1);
        Pointer(item.get()).click(onText ? point : besideText(point), Qt::MouseButton(button));
        QCOMPARE(ground->presses, QVector<Qt::MouseButton>{Qt::MouseButton(button)});
    }

    void pressWithoutSelectByMouseStaysWithTheTextForItsLinks()
    {
        setText(QStringLiteral("see example.com"), {block(4, 11, Link, QStringLiteral("x"))});
        item->setSelectByMouse(false);
        QSignalSpy links(item.get(), &DrawableText::linkActivated);
        Pointer pointer(item.get());
        pointer.click(reference().center(0, 6));
        QCOMPARE(links.count(), 1);
        QVERIFY(ground->presses.isEmpty());
        pointer.drag(reference().leftHalf(0, 0), reference().rightHalf(0, 3));
        QCOMPARE(item->selectedText(), QString());
    }

    // ---- selecting

    void dragSelects()
    {
        setText(QStringLiteral("abcdef\nabcdef"));
        Pointer(item.get()).drag(reference().leftHalf(0, 2), reference().rightHalf(1, 2));
        QCOMPARE(item->selectedText(), QStringLiteral("cdef\nabc"));
        QVERIFY(item->hasActiveFocus());
    }

    void dragThatLeavesTheItemGoesOn()
    {
        setText(QStringLiteral("abcdef\nabcdef"));
        Pointer pointer(item.get());
        pointer.press(reference().leftHalf(0, 2));
        pointer.move(reference().rightHalf(0, 3));
        pointer.move(QPointF(-15, item->height() + 60));
        QCOMPARE(item->selectedText(), QStringLiteral("cdef\na"));
        pointer.release(QPointF(-15, item->height() + 60));
        QCOMPARE(item->selectedText(), QStringLiteral("cdef\na"));
        QVERIFY(!item->state()->mousePressed);
    }

    void doubleClickSelectsAWordAndBesideTheTextEverything()
    {
        // Somebody beneath who takes the press beside the text would take the double click, too.
        ground->setAcceptedMouseButtons(Qt::NoButton);
        setText(QStringLiteral("one two\nthree four five"));
        Pointer pointer(item.get());
        pointer.doubleClick(reference().center(0, 5));
        QCOMPARE(item->selectedText(), QStringLiteral("two"));
        pointer.doubleClick(besideText(reference().center(0, 5)));
        QCOMPARE(item->selectedText(), QStringLiteral("one two\nthree four five"));
    }

    void tripleClickSelectsAll()
    {
        setText(QStringLiteral("one two\nthree"));
        Pointer pointer(item.get());
        const QPointF point = reference().center(0, 5);
        pointer.doubleClick(point);
        pointer.click(point);
        QCOMPARE(item->selectedText(), QStringLiteral("one two\nthree"));
    }

    void clickLongAfterADoubleClickClearsTheSelection()
    {
        setText(QStringLiteral("one two\nthree"));
        Pointer pointer(item.get());
        const QPointF point = reference().center(0, 5);
        pointer.doubleClick(point);
        QTRY_VERIFY_WITH_TIMEOUT(!item->state()->wordJustSelected, patience);
        pointer.click(point);
        QCOMPARE(item->selectedText(), QString());
    }

    void rightClickSelectsALinkAndTakesTheFocus()
    {
        setText(QStringLiteral("see example.com"), {block(4, 11, Link, QStringLiteral("x"))});
        Pointer(item.get()).click(reference().center(0, 6), Qt::RightButton);
        QCOMPARE(item->selectedText(), QStringLiteral("example.com"));
        QCOMPARE(item->selectType(), int(SpanLink));
        QVERIFY(item->hasActiveFocus());
    }

    void clickOutsideTheItemKeepsTheSelection()
    {
        setText(QStringLiteral("abc"));
        item->selectAll();
        Pointer(ground.get()).click(QPointF(400, 250));
        QCOMPARE(item->selectedText(), QStringLiteral("abc"));
    }

    // ---- hovering

    void cursorOfTheWindowFollowsTheText()
    {
        setText(QStringLiteral("ab cde f"), {block(3, 3, Link, QStringLiteral("there"))});
        item->setTextCursorShape(Qt::IBeamCursor);
        QSignalSpy links(item.get(), &DrawableText::linkHovered);
        Pointer pointer(item.get());
        pointer.hover(reference().center(0, 0));
        QTRY_COMPARE(window->cursor().shape(), Qt::IBeamCursor);
        QCOMPARE(links.count(), 0);
        pointer.hover(reference().center(0, 4));
        QTRY_COMPARE(window->cursor().shape(), Qt::PointingHandCursor);
        QVERIFY(links.count() > 0);
        QCOMPARE(links.first().first().toString(), QStringLiteral("there"));
        pointer.hover(QPointF(5, item->height() + 80));
        QTRY_COMPARE(window->cursor().shape(), Qt::ArrowCursor);
        QVERIFY(item->state()->hoverSpan == TextSpan());
    }

    // ---- keys

    void keysSelectAndCopyAndTravelOn()
    {
        setText(QStringLiteral("hi @Ann"), {block(3, 4, Aite, 42)});
        QGuiApplication::clipboard()->setText(QStringLiteral("untouched"));
        Pointer(item.get()).click(reference().center(0, 0));
        QVERIFY(item->hasActiveFocus());
        QTest::keyClick(window.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("untouched"));
        QTest::keyClick(window.get(), Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(item->selectedText(), QStringLiteral("hi @Ann"));
        QTest::keyClick(window.get(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("hi @Ann"));
        QCOMPARE(QByteArray::fromBase64(
                     QGuiApplication::clipboard()->mimeData()->data(QStringLiteral("ostrel/aite")))
                     .toHex(),
                 QByteArray("00000001000000030000000600000008"
                            "00000002000000002a"));
        QTest::keyClick(window.get(), Qt::Key_Escape);
        QCOMPARE(ground->keys, (QVector<int>{Qt::Key_C, Qt::Key_A, Qt::Key_C, Qt::Key_Escape}));
    }

    // ---- drags

    void selectedTextIsDraggedOutWithItsMentions()
    {
        setText(QStringLiteral("hi @Ann \U0001F600"), {block(3, 4, Aite, 42)});
        item->setDragEnabled(true);
        item->selectAll();
        Basket basket(ground.get());
        basket.setPosition(QPointF(20, 150));
        basket.setSize(QSizeF(300, 100));
        QSignalSpy starts(item.get(), &DrawableText::dragStart);

        dragTo(basket.mapToScene(QPointF(100, 50)).toPoint());
        QCOMPARE(starts.count(), 1);
        QCOMPARE(basket.drops, 1);
        QCOMPARE(basket.text, QStringLiteral("hi @Ann \U0001F600"));
        QCOMPARE(QByteArray::fromBase64(basket.mentions).toHex(),
                 QByteArray("00000001000000030000000600000008"
                            "00000002000000002a"));
        QCOMPARE(basket.action, Qt::CopyAction);
        QVERIFY(!item->state()->mousePressed);
        QVERIFY(!item->state()->pressedInSelection);
        QCOMPARE(item->selectedText(), QStringLiteral("hi @Ann \U0001F600"));
    }

    void textWithoutMentionsIsDraggedAsTextAlone()
    {
        setText(QStringLiteral("abc"));
        item->setDragEnabled(true);
        item->selectAll();
        Basket basket(ground.get());
        basket.setPosition(QPointF(20, 150));
        basket.setSize(QSizeF(300, 100));
        dragTo(basket.mapToScene(QPointF(100, 50)).toPoint());
        QCOMPARE(basket.drops, 1);
        QCOMPARE(basket.text, QStringLiteral("abc"));
        QVERIFY(!basket.formats.contains(QStringLiteral("ostrel/aite")));
    }

    void moveOnTheSelectionBelowTheDragDistanceDragsNothing()
    {
        setText(QStringLiteral("abcdef"));
        item->setDragEnabled(true);
        item->selectAll();
        QSignalSpy starts(item.get(), &DrawableText::dragStart);
        Pointer pointer(item.get());
        const QPointF from = reference().center(0, 1);
        pointer.press(from);
        pointer.move(from + QPointF(QApplication::startDragDistance() - 2, 0));
        QCOMPARE(starts.count(), 0);
        QCOMPARE(item->selectedText(), QStringLiteral("abcdef"));
        pointer.release(from + QPointF(QApplication::startDragDistance() - 2, 0));
        QCOMPARE(starts.count(), 0);
    }

    void selectionIsNotDraggedWhereDragsAreDisabled()
    {
        setText(QStringLiteral("abcdef"));
        item->selectAll();
        QSignalSpy starts(item.get(), &DrawableText::dragStart);
        Pointer(item.get()).drag(reference().leftHalf(0, 1), reference().rightHalf(0, 4));
        QCOMPARE(starts.count(), 0);
        QCOMPARE(item->selectedText(), QStringLiteral("bcde"));
    }

    void textMayChangeDuringADrag()
    {
        setText(QStringLiteral("abc"));
        item->setDragEnabled(true);
        item->selectAll();
        Basket basket(ground.get());
        basket.setPosition(QPointF(20, 150));
        basket.setSize(QSizeF(300, 100));
        QTimer::singleShot(0, item.get(), [this] { item->setText(QString()); });
        dragTo(basket.mapToScene(QPointF(100, 50)).toPoint());
        QCOMPARE(basket.drops, 1);
        QCOMPARE(basket.text, QStringLiteral("abc"));
    }

    void itemMayBeDeletedDuringADrag()
    {
        setText(QStringLiteral("abc"));
        item->setDragEnabled(true);
        item->selectAll();
        Basket basket(ground.get());
        basket.setPosition(QPointF(20, 150));
        basket.setSize(QSizeF(300, 100));
        const QPoint target = basket.mapToScene(QPointF(100, 50)).toPoint();
        QTimer::singleShot(0, this, [this] { item.release()->deleteLater(); });
        dragTo(target);
        QVERIFY(!item);
        // The next item gets the mouse as ever.
        Pointer(ground.get()).click(QPointF(100, 40));
        QVERIFY(!ground->presses.isEmpty());
    }

    // ---- deletion

    void itemMayBeDeletedWhileItIsPressed()
    {
        setText(QStringLiteral("abcdef"));
        Pointer pointer(item.get());
        pointer.press(reference().leftHalf(0, 1));
        pointer.move(reference().leftHalf(0, 3));
        item.reset();
        Pointer below(ground.get());
        below.move(QPointF(100, 40));
        below.releaseAnywhere();
        // Whoever comes next gets the mouse.
        below.click(QPointF(100, 40));
        QVERIFY(!ground->presses.isEmpty());
    }

    void handlerMayDeleteTheItemLater_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::newRow("link") << QByteArray(SIGNAL(linkActivated(QString)));
        QTest::newRow("release") << QByteArray(SIGNAL(mouseRelease(bool)));
        QTest::newRow("selected text") << QByteArray(SIGNAL(selectedTextChanged(QString)));
        QTest::newRow("hover") << QByteArray(SIGNAL(linkHovered(QString)));
    }

    void handlerMayDeleteTheItemLater()
    {
        QFETCH(QByteArray, signal);
        setText(QStringLiteral("example.com"), {block(0, 11, Link, QStringLiteral("x"))});
        const QPointF point = reference().center(0, 3);
        item->selectAll();
        const QPointer<ProbeText> text(item.release());
        connect(text, signal.constData(), text, SLOT(deleteLater()));
        Pointer pointer(text);
        pointer.hover(point);
        pointer.click(point);
        pointer.click(point);
        QTRY_VERIFY_WITH_TIMEOUT(!text, patience);
        (void)window->picture();
    }

private:
    /// Drags from the second character of the text to a point of the window, as a hand would. The drag blocks
    /// in the move that starts it, so the rest comes from timers.
    void dragTo(QPoint target)
    {
        Pointer pointer(item.get());
        const QPointF from = reference().center(0, 1);
        const QPoint global = window->mapToGlobal(target);
        QTimer escape;
        connect(&escape, &QTimer::timeout, this, [this] { QTest::keyClick(window.get(), Qt::Key_Escape); });
        escape.start(patience);
        QTimer::singleShot(100, this, [this, target, global] {
            QCursor::setPos(global - QPoint(3, 3));
            QTest::mouseMove(window.get(), target - QPoint(3, 3));
        });
        QTimer::singleShot(300, this, [this, target, global] {
            QCursor::setPos(global);
            QTest::mouseMove(window.get(), target);
        });
        // The drag puts the release off until its own event loop has ended, which a call that processes
        // events would spoil.
        QTimer::singleShot(600, this, [this, target, global] {
            QMouseEvent release(QEvent::MouseButtonRelease, target, target, global, Qt::LeftButton,
                                Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(window.get(), &release);
        });
        pointer.press(from);
        pointer.move(from + QPointF(QApplication::startDragDistance() + 4, 0));
        QTest::qWait(100); // Drops and the release are delivered through the event loop.
        Pointer(ground.get()).releaseAnywhere();
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    TestPointer test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_pointer.moc"
