// What presses, moves, releases and keys do and whether they are accepted, handler by handler.

#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

class TestPointerRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- press

    void pressOnTextStartsASelection()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const QPointF point = TextReference(item.state()).center(0, 2);
        QVERIFY(item.press(point, Qt::LeftButton, false));
        QVERIFY(item.state()->mousePressed);
        QCOMPARE(item.state()->pressPosition, point);
        QCOMPARE(item.state()->movePosition, QPointF(-1, -1));
        QCOMPARE(int(item.state()->selectionDirection), int(SelectionDirection::None));
        QVERIFY(item.keepMouseGrab());
        QVERIFY(item.hasFocus());
        QCOMPARE(item.selectedText(), QString());
    }

    void pressWithoutSelectByMouseLeavesTheEventAsItCame()
    {
        ProbeText item(QStringLiteral("abcdef"));
        item.setSelectByMouse(false);
        const QPointF point = TextReference(item.state()).center(0, 2);
        QVERIFY(!item.press(point, Qt::LeftButton, false));
        QVERIFY(item.state()->mousePressed);
        QVERIFY(!item.keepMouseGrab());
        QVERIFY(!item.hasFocus());
        QVERIFY(item.press(point, Qt::LeftButton, true));
    }

    void pressOutsideTheTextClearsTheSelectionAndPassesOn_data()
    {
        QTest::addColumn<bool>("mouseEnabled");
        QTest::addColumn<bool>("selectByMouse");
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("onText");
        QTest::newRow("beside the text") << true << true << int(Qt::LeftButton) << false;
        QTest::newRow("right button beside the text") << true << true << int(Qt::RightButton) << false;
        QTest::newRow("mouse disabled") << false << true << int(Qt::LeftButton) << true;
        QTest::newRow("right button, mouse disabled") << false << true << int(Qt::RightButton) << true;
        QTest::newRow("right button, not selectable") << true << false << int(Qt::RightButton) << true;
        QTest::newRow("another button") << true << true << int(Qt::MiddleButton) << true;
    }

    void pressOutsideTheTextClearsTheSelectionAndPassesOn()
    {
        QFETCH(bool, mouseEnabled);
        QFETCH(bool, selectByMouse);
        QFETCH(int, button);
        QFETCH(bool, onText);
        ProbeText item(QStringLiteral("ab\nabcdefgh"));
        item.setMouseEnabled(mouseEnabled);
        item.setSelectByMouse(selectByMouse);
        item.selectAll();
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        const TextReference reference(item.state());
        const QPointF point =
            onText ? reference.center(0, 1) : QPointF(item.width() - 5, reference.center(0, 1).y());
        QVERIFY(!item.press(point, Qt::MouseButton(button), true));
        QCOMPARE(item.selectedText(), QString());
        QCOMPARE(changes.count(), 1);
        QVERIFY(!item.state()->mousePressed);
        QVERIFY(!item.hasFocus());
    }

    void leftPressCountsWithinTheRightPadding()
    {
        ProbeText item;
        item.setRightPadding(20);
        item.setText(QStringLiteral("abc"));
        const double right = item.state()->layouts.first()->lineAt(0).naturalTextWidth();
        QVERIFY(item.press(QPointF(right + 19.5, 5), Qt::LeftButton, false));
        QVERIFY(!item.press(QPointF(right + 20.5, 5), Qt::LeftButton, true));
    }

    void rightPressCountsUpToTheEndOfTheTextOnly()
    {
        ProbeText item;
        item.setRightPadding(20);
        item.setText(QStringLiteral("abc"));
        const double right = item.state()->layouts.first()->lineAt(0).naturalTextWidth();
        item.press(QPointF(right - 1, 5), Qt::RightButton);
        QVERIFY(item.hasFocus());
        item.setFocus(false);
        item.selectAll();
        item.press(QPointF(right + 5, 5), Qt::RightButton);
        QVERIFY(!item.hasFocus());
        QCOMPARE(item.selectedText(), QString());
    }

    void pressWhereNoLineIsStillCountsWithinTheRightPadding()
    {
        // Nowhere is the right end -1, and the padding is measured from there.
        ProbeText item;
        item.setRightPadding(20);
        QVERIFY(item.press(QPointF(18, 0), Qt::LeftButton, false));
        QVERIFY(item.state()->mousePressed);
        QVERIFY(!item.press(QPointF(20, 0), Qt::LeftButton, true));
    }

    void rightPressOnPlainTextKeepsTheSelectionAndTheGrab()
    {
        ProbeText item(QStringLiteral("abc def"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 0), reference.rightHalf(0, 2));
        QVERIFY(!item.keepMouseGrab());
        item.press(reference.center(0, 5), Qt::RightButton);
        QCOMPARE(item.selectedText(), QStringLiteral("abc"));
        QVERIFY(item.keepMouseGrab());
        QVERIFY(item.hasFocus());
        QVERIFY(!item.state()->mousePressed);
    }

    void pressOnTheSelectionPreparesADrag_data()
    {
        QTest::addColumn<bool>("dragEnabled");
        QTest::addColumn<int>("position");
        QTest::addColumn<bool>("prepared");
        QTest::newRow("first") << true << 2 << true;
        QTest::newRow("last") << true << 4 << true;
        QTest::newRow("before") << true << 1 << false;
        QTest::newRow("behind") << true << 5 << false;
        QTest::newRow("drags disabled") << false << 3 << false;
    }

    void pressOnTheSelectionPreparesADrag()
    {
        QFETCH(bool, dragEnabled);
        QFETCH(int, position);
        QFETCH(bool, prepared);
        ProbeText item(QStringLiteral("abcdef"));
        item.setDragEnabled(dragEnabled);
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 2), reference.rightHalf(0, 4));
        QCOMPARE(item.selectedText(), QStringLiteral("cde"));
        item.press(reference.center(0, position));
        QCOMPARE(item.state()->pressedInSelection, prepared);
    }

    void shortClickOnTheSelectionClearsItAndActivatesWhatLiesThere()
    {
        ProbeText item(QStringLiteral("see example.com"));
        item.setDragEnabled(true);
        item.setUserBlocks(blocks({block(4, 11, Link, QStringLiteral("x"))}));
        item.selectAll();
        QSignalSpy links(&item, &DrawableText::linkActivated);
        const QPointF point = TextReference(item.state()).center(0, 6);
        item.press(point);
        QVERIFY(item.state()->pressedInSelection);
        item.release(point);
        QCOMPARE(item.selectedText(), QString());
        QCOMPARE(links.count(), 1);
    }

    // ---- move

    void moveWithoutAPressIsNotAccepted()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        QVERIFY(!item.move(reference.center(0, 3)));
        QCOMPARE(item.selectedText(), QString());
    }

    void moveIsNotAcceptedOnceSelectingIsDisabled_data()
    {
        QTest::addColumn<bool>("mouseEnabled");
        QTest::newRow("mouse disabled") << false;
        QTest::newRow("not selectable") << true;
    }

    void moveIsNotAcceptedOnceSelectingIsDisabled()
    {
        QFETCH(bool, mouseEnabled);
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        item.press(reference.leftHalf(0, 1));
        item.setMouseEnabled(mouseEnabled);
        item.setSelectByMouse(!mouseEnabled);
        QVERIFY(!item.move(reference.center(0, 3)));
        QCOMPARE(item.selectedText(), QString());
    }

    void moveOffTheTextSelectsNothingUntilSomethingIsSelected()
    {
        ProbeText item(QStringLiteral("ab\nabcdefgh"));
        const TextReference reference(item.state());
        const QPointF beside(item.width() - 5, reference.center(0, 0).y());
        item.press(reference.leftHalf(0, 0));
        QVERIFY(!item.move(beside));
        QCOMPARE(item.selectedText(), QString());
        QVERIFY(item.move(reference.rightHalf(1, 0), false));
        QCOMPARE(item.selectedText(), QStringLiteral("ab\na"));
        QVERIFY(item.move(beside, false));
        QCOMPARE(item.selectedText(), QStringLiteral("ab"));
    }

    void moveBelowTheThresholdLeavesTheEventAsItCame()
    {
        ProbeText item(QStringLiteral("abcdef"));
        item.press(QPointF(20, 10));
        QVERIFY(item.move(QPointF(21, 11), true));
        QVERIFY(!item.move(QPointF(21, 11), false));
        QVERIFY(item.move(QPointF(22, 11), false));
    }

    // ---- release

    void clickClearsTheSelectionAndReportsTheRelease()
    {
        ProbeText item(QStringLiteral("abcdef"));
        item.selectAll();
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        const QPointF point = TextReference(item.state()).center(0, 2);
        item.press(point);
        QCOMPARE(item.selectedText(), QStringLiteral("abcdef"));
        QVERIFY(item.release(point, Qt::LeftButton, false));
        QCOMPARE(item.selectedText(), QString());
        QCOMPARE(releases.count(), 1);
        QCOMPARE(releases.first().first().toBool(), false);
        QVERIFY(!item.keepMouseGrab());
        QVERIFY(!item.state()->mousePressed);
    }

    void releaseWithinTheWidthOfAnXBehindTheTextCounts_data()
    {
        QTest::addColumn<double>("share");
        QTest::addColumn<bool>("counts");
        QTest::newRow("within") << 0.9 << true;
        QTest::newRow("beyond") << 1.1 << false;
    }

    void releaseWithinTheWidthOfAnXBehindTheTextCounts()
    {
        QFETCH(double, share);
        QFETCH(bool, counts);
        ProbeText item(QStringLiteral("abc\nabcdefgh"));
        const double xWidth = QFontMetricsF(item.font()).horizontalAdvance(QLatin1Char('X'));
        const double right = item.state()->layouts.first()->lineAt(0).naturalTextWidth();
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        item.press(TextReference(item.state()).leftHalf(0, 0));
        // The event is accepted on the text and not beside it, and there the press goes on.
        QCOMPARE(item.release(QPointF(right + share * xWidth, 5), Qt::LeftButton, !counts), counts);
        QCOMPARE(item.state()->mousePressed, !counts);
        QCOMPARE(item.selectedText(), counts ? QStringLiteral("abc") : QString());
        QCOMPARE(releases.count(), 1);
        QCOMPARE(releases.first().first().toBool(), false);
    }

    void tinyDragOnALinkSelectsAndOpensIt()
    {
        ProbeText item(QStringLiteral("see example.com"));
        item.setUserBlocks(blocks({block(4, 11, Link, QStringLiteral("x"))}));
        const QRectF cell = TextReference(item.state()).cell(0, 6);
        QSignalSpy links(&item, &DrawableText::linkActivated);
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        item.press(cell.center() - QPointF(2, 0));
        item.move(cell.center() + QPointF(2, 0));
        QVERIFY(item.release(cell.center() + QPointF(2, 0)));
        QCOMPARE(item.selectedText(), QStringLiteral("a"));
        QCOMPARE(links.count(), 1);
        QCOMPARE(releases.count(), 1);
        QCOMPARE(releases.first().first().toBool(), true);
    }

    void longerDragOnALinkSelectsOnly()
    {
        ProbeText item(QStringLiteral("see example.com"));
        item.setUserBlocks(blocks({block(4, 11, Link, QStringLiteral("x"))}));
        const QRectF cell = TextReference(item.state()).cell(0, 6);
        QSignalSpy links(&item, &DrawableText::linkActivated);
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        item.drag(cell.center() - QPointF(3, 0), cell.center() + QPointF(3, 0));
        QCOMPARE(item.selectedText(), QStringLiteral("a"));
        QCOMPARE(links.count(), 0);
        QCOMPARE(releases.count(), 1);
        QCOMPARE(releases.first().first().toBool(), false);
    }

    void releaseWithoutAPressTellsWhatLiesUnderIt_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("data");
        QTest::addColumn<bool>("onBlock");
        QTest::newRow("link") << int(Link) << QVariant(QStringLiteral("x")) << true;
        QTest::newRow("e-mail") << int(Email) << QVariant(QStringLiteral("x")) << true;
        QTest::newRow("mention") << int(Aite) << QVariant(7) << true;
        QTest::newRow("mention of nobody") << int(Aite) << QVariant(0) << false;
        QTest::newRow("user id") << int(OstrelId) << QVariant(QStringLiteral("x")) << true;
        QTest::newRow("tag") << int(Sharp) << QVariant(QStringLiteral("x")) << true;
        QTest::newRow("text block") << int(Other) << QVariant(QStringLiteral("x")) << true;
        QTest::newRow("phone number") << int(Phone) << QVariant(QStringLiteral("x")) << false;
    }

    void releaseWithoutAPressTellsWhatLiesUnderIt()
    {
        QFETCH(int, type);
        QFETCH(QVariant, data);
        QFETCH(bool, onBlock);
        ProbeText item(QStringLiteral("ab cde f"));
        item.setUserBlocks(blocks({block(3, 3, type, data)}));
        const TextReference reference(item.state());
        QSignalSpy releases(&item, &DrawableText::mouseRelease);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
            QVERIFY(!item.release(reference.center(0, 4), button, true));
            QCOMPARE(releases.takeFirst().first().toBool(), onBlock);
            item.release(reference.center(0, 0), button);
            QCOMPARE(releases.takeFirst().first().toBool(), false);
        }
    }

    // ---- keys

    void selectAllKeysSelectAllAndTravelOn()
    {
        ProbeText item(QStringLiteral("abc\ndef"));
        QVERIFY(!item.key(Qt::Key_A, Qt::ControlModifier));
        QCOMPARE(item.selectedText(), QStringLiteral("abc\ndef"));
    }

    void otherKeysTravelOnUntouched()
    {
        ProbeText item(QStringLiteral("abc"));
        QVERIFY(!item.key(Qt::Key_A, Qt::NoModifier));
        QVERIFY(!item.key(Qt::Key_Delete, Qt::NoModifier));
        QCOMPARE(item.selectedText(), QString());
        QCOMPARE(item.text(), QStringLiteral("abc"));
    }

    // ---- foreign input

    void eventsOnAnItemWithoutTextAreHarmless()
    {
        ProbeText item;
        item.setDragEnabled(true);
        for (const QPointF point : {QPointF(0, 0), QPointF(-100, -100), QPointF(1e7, 1e7)}) {
            item.hover(point);
            item.drag(point, point + QPointF(20, 0));
            item.doubleClick(point);
            item.press(point, Qt::RightButton);
            item.release(point, Qt::RightButton);
        }
        item.leave();
        QCOMPARE(item.selectedText(), QString());
    }

    void textThatChangesDuringAPressIsHarmless()
    {
        ProbeText item(QStringLiteral("abcdef\nabcdef\nabcdef"));
        const TextReference reference(item.state());
        const QPointF end = reference.center(2, 5);
        item.press(reference.leftHalf(0, 1));
        item.move(end);
        item.setText(QStringLiteral("x"));
        item.move(end + QPointF(5, 0));
        item.release(end);
        item.setText(QString());
        item.press(end);
        item.move(end + QPointF(9, 0));
        item.release(end);
        QCOMPARE(item.state()->selectionRanges.size(), item.state()->layouts.size());
    }

    void handlerThatChangesTheTextIsHarmless()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        const QPointF from = reference.leftHalf(0, 1);
        const QPointF to = reference.rightHalf(0, 4);
        connect(&item, &DrawableText::selectedTextChanged, &item, [&item] {
            item.setText(QString());
            item.deselect();
        });
        item.drag(from, to);
        QCOMPARE(item.text(), QString());
    }
};

QTEST_MAIN(TestPointerRules)
#include "tst_pointerrules.moc"
