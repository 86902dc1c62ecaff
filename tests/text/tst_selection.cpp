// What drags, clicks and the slots select, and what they say about it.

#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

namespace {

QVector<QPair<int, int>> rangesOf(const DrawableText &item)
{
    QVector<QPair<int, int>> ranges;
    for (const SelectionRange range : item.state()->selectionRanges)
        ranges.append({range.from, range.to});
    return ranges;
}

using Ranges = QVector<QPair<int, int>>;

} // namespace

Q_DECLARE_METATYPE(Ranges)

class TestSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- dragging

    void dragSelectsFromTheNearestCharacterBoundary_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<bool>("fromRightHalf");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("toRightHalf");
        QTest::addColumn<QString>("selected");
        const bool left = false;
        const bool right = true;
        QTest::newRow("from a left half to the right") << 1 << left << 3 << right << QStringLiteral("bcd");
        QTest::newRow("from a right half to the right") << 1 << right << 3 << right << QStringLiteral("cd");
        QTest::newRow("the end takes its character from either half")
            << 1 << left << 3 << left << QStringLiteral("bcd");
        QTest::newRow("from a right half to the left") << 4 << right << 2 << left << QStringLiteral("cde");
        QTest::newRow("from a left half to the left") << 4 << left << 2 << left << QStringLiteral("cd");
        QTest::newRow("the start takes its character from either half")
            << 4 << left << 2 << right << QStringLiteral("cd");
        QTest::newRow("across one character") << 2 << left << 2 << right << QStringLiteral("c");
        QTest::newRow("across one character to the left") << 2 << right << 2 << left << QStringLiteral("c");
        QTest::newRow("from a left half to the next") << 2 << left << 3 << right << QStringLiteral("cd");
        QTest::newRow("from a right half to the next") << 2 << right << 3 << right << QStringLiteral("d");
    }

    void dragSelectsFromTheNearestCharacterBoundary()
    {
        QFETCH(int, from);
        QFETCH(bool, fromRightHalf);
        QFETCH(int, to);
        QFETCH(bool, toRightHalf);
        QFETCH(QString, selected);
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        item.drag(fromRightHalf ? reference.rightHalf(0, from) : reference.leftHalf(0, from),
                  toRightHalf ? reference.rightHalf(0, to) : reference.leftHalf(0, to));
        QCOMPARE(item.selectedText(), selected);
        QCOMPARE(item.selectType(), 1);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.first().first().toString(), selected);
        const int first = QStringLiteral("abcdef").indexOf(selected);
        QCOMPARE(rangesOf(item), (Ranges{{first, first + selected.size() - 1}}));
        QCOMPARE(rectDifference(item.state()->selectionRects,
                                reference.selectionRects(0, first, 0, first + selected.size() - 1)),
                 QString());
        QCOMPARE(int(item.state()->selectionDirection),
                 int(to > from || (to == from && toRightHalf) ? SelectionDirection::Forward
                                                              : SelectionDirection::Backward));
    }

    void dragInsideOneHalfOfACharacterSelectsNothing_data()
    {
        QTest::addColumn<double>("from");
        QTest::addColumn<double>("to");
        QTest::newRow("left half") << 0.05 << 0.45;
        QTest::newRow("right half") << 0.55 << 0.95;
        QTest::newRow("to the middle") << 0.1 << 0.5;
        QTest::newRow("from the middle") << 0.5 << 0.9;
    }

    void dragInsideOneHalfOfACharacterSelectsNothing()
    {
        QFETCH(double, from);
        QFETCH(double, to);
        // One emoji is wide enough to move past the threshold within a half.
        ProbeText item;
        QFont font;
        font.setPixelSize(40);
        item.setFont(font);
        item.setText(QStringLiteral("WWW"));
        const QRectF cell = TextReference(item.state()).cell(0, 1);
        QVERIFY(cell.width() * 0.4 > 2.5);
        const auto at = [&cell](double share) {
            return QPointF(cell.x() + cell.width() * share, cell.center().y());
        };
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        item.press(at(from));
        item.move(at(to));
        QCOMPARE(changes.count(), 0);
        QCOMPARE(item.selectedText(), QString());
        QVERIFY(item.state()->selectionRects.isEmpty());
    }

    void dragOverParagraphsJoinsThemByLineEnds_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("paragraph");
        QTest::addColumn<int>("position");
        QTest::addColumn<int>("toParagraph");
        QTest::addColumn<int>("toPosition");
        QTest::addColumn<QString>("selected");
        QTest::addColumn<Ranges>("ranges");
        const QString three = QStringLiteral("abc\ndefg\nhi");
        const Ranges::value_type none(-1, -1);
        QTest::newRow("two") << three << 0 << 1 << 1 << 2 << QStringLiteral("bc\ndef")
                             << Ranges{{1, 2}, {0, 2}, none};
        QTest::newRow("three") << three << 0 << 1 << 2 << 0 << QStringLiteral("bc\ndefg\nh")
                               << Ranges{{1, 2}, {0, 3}, {0, 0}};
        QTest::newRow("with an empty one") << QStringLiteral("abc\n\nhi") << 0 << 1 << 2 << 0
                                           << QStringLiteral("bc\n\nh") << Ranges{{1, 2}, {0, 0}, {0, 0}};
    }

    void dragOverParagraphsJoinsThemByLineEnds()
    {
        QFETCH(QString, text);
        QFETCH(int, paragraph);
        QFETCH(int, position);
        QFETCH(int, toParagraph);
        QFETCH(int, toPosition);
        QFETCH(QString, selected);
        QFETCH(Ranges, ranges);
        {
            ProbeText item(text);
            const TextReference reference(item.state());
            item.drag(reference.leftHalf(paragraph, position), reference.leftHalf(toParagraph, toPosition));
            QCOMPARE(item.selectedText(), selected);
            QCOMPARE(rangesOf(item), ranges);
            QCOMPARE(int(item.state()->selectionDirection), int(SelectionDirection::Forward));
        }
        {
            // Upwards, from the right half of the last character: the same selection.
            ProbeText item(text);
            const TextReference reference(item.state());
            item.drag(reference.rightHalf(toParagraph, toPosition), reference.leftHalf(paragraph, position));
            QCOMPARE(item.selectedText(), selected);
            QCOMPARE(rangesOf(item), ranges);
            QCOMPARE(int(item.state()->selectionDirection), int(SelectionDirection::Backward));
        }
    }

    void upwardDragFromALeftHalfLeavesThePressedCharacterOut()
    {
        ProbeText item(QStringLiteral("abc\ndefg"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(1, 2), reference.leftHalf(0, 1));
        QCOMPARE(item.selectedText(), QStringLiteral("bc\nde"));
    }

    void dragBesideAShortLineSelectsItsLastCharacter()
    {
        ProbeText item(QStringLiteral("ab\na much longer line"));
        const TextReference reference(item.state());
        item.press(reference.leftHalf(1, 0));
        // Beside the text a drag goes on once something is selected.
        item.move(reference.rightHalf(1, 1));
        item.move(QPointF(item.width() - 5, reference.center(0, 0).y()));
        QCOMPARE(item.selectedText(), QStringLiteral("b\n"));
    }

    void pressCloseToTheNextCharacterMovesTheAnchorThere()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        const QRectF cell = reference.cell(0, 2);
        const QPointF pressed(cell.right() - 1, cell.center().y());
        item.press(pressed);
        item.move(reference.rightHalf(0, 3));
        QCOMPARE(item.selectedText(), QStringLiteral("d"));
        QCOMPARE(item.state()->selectionAnchorHit.position, 3);
        QCOMPARE(item.state()->pressPosition.x(), pressed.x() + 2.5);
        // From there, the character counts as pressed in its left half.
        item.move(reference.rightHalf(0, 4));
        QCOMPARE(item.selectedText(), QStringLiteral("de"));
    }

    void pressFartherFromTheNextCharacterKeepsItsAnchor()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        const QPointF pressed = reference.leftHalf(0, 2);
        item.press(pressed);
        item.move(reference.rightHalf(0, 3));
        QCOMPARE(item.state()->selectionAnchorHit.position, 2);
        QCOMPARE(item.state()->pressPosition, pressed);
    }

    void everyAcceptedMoveNotifiesAndARepeatedOneDoesNot()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        item.press(reference.leftHalf(0, 0));
        item.move(reference.leftHalf(0, 2));
        QCOMPARE(changes.count(), 1);
        item.move(reference.rightHalf(0, 2));
        QCOMPARE(changes.count(), 1);
        item.move(reference.leftHalf(0, 3));
        QCOMPARE(changes.count(), 2);
        item.move(reference.leftHalf(0, 2));
        QCOMPARE(changes.count(), 3);
        item.release(reference.leftHalf(0, 2));
        QCOMPARE(changes.count(), 3);
    }

    void moveBackToThePressClearsTheSelection()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        item.press(reference.leftHalf(0, 1));
        item.move(reference.leftHalf(0, 4));
        QCOMPARE(item.selectedText(), QStringLiteral("bcde"));
        // Less than the threshold is no move, so a release there is what ends at the pressed point.
        item.release(reference.leftHalf(0, 1));
        QCOMPARE(item.selectedText(), QString());
        QVERIFY(item.state()->selectionRects.isEmpty());
    }

    void moveBelowTheThresholdSelectsNothing()
    {
        ProbeText item(QStringLiteral("abcdef"));
        const QRectF cell = TextReference(item.state()).cell(0, 2);
        // Two pixels to the other half of the character, at whole pixels.
        const QPointF pressed(std::floor(cell.center().x()), std::floor(cell.center().y()));
        item.press(pressed);
        item.move(pressed + QPointF(1, 1));
        item.move(pressed + QPointF(2, 0));
        QCOMPARE(item.selectedText(), QString());
        QVERIFY(item.state()->movePosition != pressed + QPointF(2, 0));
        item.move(pressed + QPointF(2, 1));
        QCOMPARE(item.state()->movePosition, pressed + QPointF(2, 1));
    }

    // ---- words and spans

    void doubleClickSelectsTheWord_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("position");
        QTest::addColumn<QString>("selected");
        QTest::newRow("word") << QStringLiteral("one two three") << 5 << QStringLiteral("two");
        QTest::newRow("first letter") << QStringLiteral("one two") << 4 << QStringLiteral("two");
        QTest::newRow("last letter") << QStringLiteral("one two") << 2 << QStringLiteral("one");
        QTest::newRow("digits") << QStringLiteral("a 12x4, b") << 3 << QStringLiteral("12x4");
        QTest::newRow("ends at an apostrophe") << QStringLiteral("don't") << 1 << QStringLiteral("don");
        QTest::newRow("comma alone") << QStringLiteral("a , b") << 2 << QStringLiteral(",");
        // The clicked character is taken whatever it is, and the words beside it with it.
        QTest::newRow("comma behind a word") << QStringLiteral("ab, cd") << 2 << QStringLiteral("ab,");
        QTest::newRow("comma between words") << QStringLiteral("ab,cd") << 2 << QStringLiteral("ab,cd");
        QTest::newRow("space between words") << QStringLiteral("ab cd") << 2 << QStringLiteral("ab cd");
        QTest::newRow("symbols are no punctuation") << QStringLiteral("a+b c") << 0 << QStringLiteral("a+b");
        QTest::newRow("emoji belongs to the word")
            << QStringLiteral("ab\U0001F600cd e") << 0 << QStringLiteral("ab\U0001F600cd");
        QTest::newRow("ideographs") << QStringLiteral("\u4F60\u597D\u3002\u4E16") << 0
                                    << QStringLiteral("\u4F60\u597D");
        QTest::newRow("tab joins words") << QStringLiteral("a\tb c") << 0 << QStringLiteral("a\tb");
    }

    void doubleClickSelectsTheWord()
    {
        QFETCH(QString, text);
        QFETCH(int, position);
        QFETCH(QString, selected);
        ProbeText item(text);
        const TextReference reference(item.state());
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        const QPointF point = reference.center(0, position);
        item.press(point);
        item.doubleClick(point);
        QCOMPARE(item.selectedText(), selected);
        QCOMPARE(item.selectType(), 1);
        QCOMPARE(changes.count(), 1);
        QVERIFY(!item.state()->mousePressed);
        QVERIFY(item.state()->wordJustSelected);
        const Ranges ranges = rangesOf(item);
        QCOMPARE(rectDifference(item.state()->selectionRects,
                                reference.selectionRects(0, ranges.first().first, 0, ranges.first().second)),
                 QString());
    }

    void wordIsForgottenAfterAMoment()
    {
        ProbeText item(QStringLiteral("one two"));
        item.doubleClick(TextReference(item.state()).center(0, 1));
        QVERIFY(item.state()->wordJustSelected);
        QTRY_VERIFY_WITH_TIMEOUT(!item.state()->wordJustSelected, 10'000);
        QCOMPARE(item.selectedText(), QStringLiteral("one"));
    }

    void doubleClickSelectsTheWordInItsOwnParagraphOnly()
    {
        ProbeText item(QStringLiteral("ab\ncd\nef"));
        item.selectAll();
        item.doubleClick(TextReference(item.state()).center(1, 0));
        QCOMPARE(item.selectedText(), QStringLiteral("cd"));
        QCOMPARE(rangesOf(item), (Ranges{{-1, -1}, {0, 1}, {-1, -1}}));
    }

    void rightClickSelectsTheWholeSpan_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QVariant>("data");
        QTest::addColumn<int>("kind"); // 0 where the selection is left alone
        QTest::newRow("link") << int(Link) << QVariant(QStringLiteral("x")) << int(SpanLink);
        QTest::newRow("e-mail") << int(Email) << QVariant(QStringLiteral("x")) << int(SpanEmail);
        QTest::newRow("mention") << int(Aite) << QVariant(7) << int(SpanAite);
        QTest::newRow("mention of nobody") << int(Aite) << QVariant(0) << int(SpanPlainAite);
        QTest::newRow("user id") << int(OstrelId) << QVariant(QStringLiteral("x")) << int(SpanOstrelId);
        QTest::newRow("tag") << int(Sharp) << QVariant(QStringLiteral("x")) << int(SpanSharp);
        QTest::newRow("text block") << int(Other) << QVariant(QStringLiteral("x")) << int(SpanTextBlock);
        QTest::newRow("phone number") << int(Phone) << QVariant(QStringLiteral("x")) << 0;
    }

    void rightClickSelectsTheWholeSpan()
    {
        QFETCH(int, type);
        QFETCH(QVariant, data);
        QFETCH(int, kind);
        ProbeText item(QStringLiteral("ab cde f"));
        item.setUserBlocks(blocks({block(3, 3, type, data)}));
        const TextReference reference(item.state());
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        item.press(reference.center(0, 4), Qt::RightButton);
        QCOMPARE(item.selectedText(), kind != 0 ? QStringLiteral("cde") : QString());
        QCOMPARE(item.selectType(), kind != 0 ? kind : 1);
        QCOMPARE(changes.count(), kind != 0 ? 1 : 0);
        QVERIFY(!item.state()->wordJustSelected);
    }

    void rightClickOnAPlainWordLeavesTheSelectionAlone()
    {
        ProbeText item(QStringLiteral("ab cde f"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 0), reference.rightHalf(0, 1));
        QCOMPARE(item.selectedText(), QStringLiteral("ab"));
        item.press(reference.center(0, 4), Qt::RightButton);
        QCOMPARE(item.selectedText(), QStringLiteral("ab"));
        QCOMPARE(item.selectType(), 1);
    }

    void rightClickOnAHighlightedPartOfALinkSelectsThatPart()
    {
        // The last span that was found decides about the stretch, the first one about the kind.
        ProbeText item(QStringLiteral("ab cdefg h"));
        item.setUserBlocks(blocks({block(3, 5, Link, QStringLiteral("x"))}));
        item.setHighlightText(QStringLiteral("ef"));
        const TextReference reference(item.state());
        item.press(reference.center(0, 5), Qt::RightButton);
        QCOMPARE(item.selectedText(), QStringLiteral("ef"));
        QCOMPARE(item.selectType(), int(SpanLink));
        item.press(reference.center(0, 3), Qt::RightButton);
        QCOMPARE(item.selectedText(), QStringLiteral("cdefg"));
    }

    void dragAfterARightClickSelectsTextAgain()
    {
        ProbeText item(QStringLiteral("ab cde f"));
        item.setUserBlocks(blocks({block(3, 3, Link, QStringLiteral("x"))}));
        const TextReference reference(item.state());
        item.press(reference.center(0, 4), Qt::RightButton);
        QCOMPARE(item.selectType(), int(SpanLink));
        item.drag(reference.leftHalf(0, 0), reference.rightHalf(0, 1));
        QCOMPARE(item.selectType(), 1);
    }

    // ---- everything and nothing

    void selectAllSelectsEveryParagraph()
    {
        ProbeText item(QStringLiteral("abc\n\nhi"));
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        item.selectAll();
        QCOMPARE(item.selectedText(), QStringLiteral("abc\n\nhi"));
        QCOMPARE(rangesOf(item), (Ranges{{0, 2}, {0, 0}, {0, 1}}));
        QCOMPARE(item.selectType(), 1);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(rectDifference(item.state()->selectionRects,
                                TextReference(item.state()).selectionRects(0, 0, 2, 1)),
                 QString());
    }

    void selectAllYieldsDisplayNamesAndTabs()
    {
        ProbeText item(QStringLiteral("a\t") + inBand(QStringLiteral("Ann"), Aite, QStringLiteral("7")) +
                       QStringLiteral(" \U0001F600"));
        item.selectAll();
        QCOMPARE(item.selectedText(), QStringLiteral("a\tAnn \U0001F600"));
    }

    void selectAllOfAnElidedTextYieldsTheWholeText()
    {
        ProbeText item;
        item.setMaxWidth(100);
        item.setMaximumLineCount(1);
        item.setElide(Qt::ElideRight);
        const QString text = QStringLiteral("a text that does not fit by far");
        item.setText(text);
        QVERIFY(item.elidedText() != text);
        item.selectAll();
        QCOMPARE(item.selectedText(), text);
    }

    void selectAllOfAnEmptyTextIsHarmless()
    {
        ProbeText item;
        item.selectAll();
        QCOMPARE(item.selectedText(), QString());
        QVERIFY(item.state()->selectionRects.isEmpty());
    }

    void deselectClearsAndNotifiesOnce()
    {
        ProbeText item(QStringLiteral("abc"));
        item.selectAll();
        QSignalSpy changes(&item, &DrawableText::selectedTextChanged);
        item.deselect();
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.first().first().toString(), QString());
        QCOMPARE(item.selectedText(), QString());
        QCOMPARE(rangesOf(item), (Ranges{{-1, -1}}));
        QVERIFY(item.state()->selectionRects.isEmpty());
        item.deselect();
        QCOMPARE(changes.count(), 1);
    }

    void deselectResetsTheKindOfTheSelectionAndItsHits()
    {
        ProbeText item(QStringLiteral("ab cde f"));
        item.setUserBlocks(blocks({block(3, 3, Link, QStringLiteral("x"))}));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 0), reference.rightHalf(0, 1));
        item.press(reference.center(0, 4), Qt::RightButton);
        item.deselect();
        QCOMPARE(item.selectType(), 1);
        QVERIFY(item.state()->selectionAnchorHit == TextHit());
        QVERIFY(item.state()->selectionEndHit == TextHit());
    }

    void selectionStartAndEndNeverReportTheSelection()
    {
        ProbeText item(QStringLiteral("ab cde f"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 0), reference.rightHalf(0, 4));
        item.doubleClick(reference.center(0, 4));
        item.selectAll();
        QCOMPARE(item.selectionStart(), -1);
        QCOMPARE(item.selectionEnd(), -1);
        item.setSelectionStart(1);
        item.setSelectionEnd(2);
        item.deselect();
        QCOMPARE(item.selectionStart(), 1);
        QCOMPARE(item.selectionEnd(), 2);
    }

    void newLayoutMovesTheRectanglesAndKeepsTheSelection()
    {
        ProbeText item(QStringLiteral("aaaa bbbb cccc dddd"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 2), reference.rightHalf(0, 12));
        QCOMPARE(item.state()->selectionRects.size(), 1);
        item.setMaxWidth(70);
        QCOMPARE(rangesOf(item), (Ranges{{2, 12}}));
        QVERIFY(item.state()->selectionRects.size() > 1);
        QCOMPARE(rectDifference(item.state()->selectionRects,
                                TextReference(item.state()).selectionRects(0, 2, 0, 12)),
                 QString());
    }

    void newTextResetsTheSelectedRanges()
    {
        ProbeText item(QStringLiteral("abc"));
        item.selectAll();
        item.setText(QStringLiteral("xyz"));
        QCOMPARE(rangesOf(item), (Ranges{{-1, -1}}));
        QVERIFY(item.state()->selectionRects.isEmpty());
    }
};

QTEST_MAIN(TestSelection)
#include "tst_selection.moc"
