// From selected ranges to the rectangles of the selected lines.

#include "probetext.h"
#include "text/pipeline.h"
#include "text/selection.h"
#include "textreference.h"

#include <QtTest>

#include <limits>

namespace {

using Ranges = QVector<QPair<int, int>>;

/// A laid-out state without an item.
QSharedPointer<DrawableTextPrivate> laidOut(const QString &text, double maxWidth = 400.0)
{
    const auto state = QSharedPointer<DrawableTextPrivate>::create();
    state->font.setPixelSize(20);
    state->measureFont();
    state->maxWidth = maxWidth;
    state->text = text;
    state->rawText = text;
    state->textChanged = true;
    drawabletext::runSteps(*state);
    return state;
}

} // namespace

Q_DECLARE_METATYPE(Ranges)

class TestSelectionRects : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rectanglesFollowTheLinesOfTheSelection_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("maxWidth");
        QTest::addColumn<Ranges>("ranges");
        QTest::addColumn<int>("lines");
        const Ranges::value_type none(-1, -1);
        QTest::newRow("in one line") << QStringLiteral("abcdef") << 400.0 << Ranges{{1, 3}} << 1;
        QTest::newRow("one character") << QStringLiteral("abcdef") << 400.0 << Ranges{{5, 5}} << 1;
        QTest::newRow("two paragraphs")
            << QStringLiteral("abcdef\nabcdefgh") << 400.0 << Ranges{{2, 5}, {0, 6}} << 2;
        QTest::newRow("empty paragraph between")
            << QStringLiteral("abc\n\nabc") << 400.0 << Ranges{{1, 2}, {0, 0}, {0, 1}} << 3;
        QTest::newRow("empty paragraph at the end")
            << QStringLiteral("abc\n\nabc") << 400.0 << Ranges{{1, 2}, {0, 0}, none} << 2;
        QTest::newRow("empty paragraph at the start")
            << QStringLiteral("\nabc") << 400.0 << Ranges{{0, 0}, {0, 1}} << 2;
        QTest::newRow("wrapped lines")
            << QStringLiteral("aaaa bbbb cccc dddd") << 70.0 << Ranges{{2, 12}} << 3;
        QTest::newRow("not the first paragraph")
            << QStringLiteral("abc\nabc\nabc") << 400.0 << Ranges{none, {0, 1}, {0, 1}} << 2;
    }

    void rectanglesFollowTheLinesOfTheSelection()
    {
        QFETCH(QString, text);
        QFETCH(double, maxWidth);
        QFETCH(Ranges, ranges);
        QFETCH(int, lines);
        const auto state = laidOut(text, maxWidth);
        QCOMPARE(state->selectionRanges.size(), ranges.size());
        int first = -1;
        int last = -1;
        for (int i = 0; i < ranges.size(); ++i) {
            state->selectionRanges[i].from = ranges.at(i).first;
            state->selectionRanges[i].to = ranges.at(i).second;
            if (ranges.at(i).first >= 0) {
                first = first < 0 ? i : first;
                last = i;
            }
        }
        drawabletext::rebuildSelectionRects(*state);
        QCOMPARE(state->selectionRects.size(), lines);
        const QVector<QRectF> expected =
            TextReference(state.data())
                .selectionRects(first, ranges.at(first).first, last, ranges.at(last).second);
        QCOMPARE(rectDifference(state->selectionRects, expected), QString());
    }

    void rectanglesOfNeighbouringLinesTouch()
    {
        ProbeText item(QStringLiteral("one\ntwo lines\n\nthree and more words that wrap"), 120);
        item.setLeading(7);
        item.setTextIndent(11); // Lays out anew.
        item.selectAll();
        const QVector<QRectF> rects = item.state()->selectionRects;
        QVERIFY(rects.size() > 4);
        for (int i = 1; i < rects.size(); ++i)
            QCOMPARE(rects.at(i).top(), rects.at(i - 1).bottom());
    }

    void selectedEmptyLineIsThreeWide()
    {
        ProbeText item(QStringLiteral("abc\n\nabc"));
        item.selectAll();
        QCOMPARE(item.state()->selectionRects.size(), 3);
        QCOMPARE(item.state()->selectionRects.at(1).width(), 3.0);
    }

    void selectionThatEndsOnAnEmptyLineIsThreeWideThere()
    {
        ProbeText item(QStringLiteral("abc\n\nabc"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 1), QPointF(2, reference.center(1, 0).y()));
        QCOMPARE(item.state()->selectionRects.size(), 2);
        QCOMPARE(item.state()->selectionRects.at(1).width(), 3.0);
    }

    void firstLineIsSelectedToTheEndOfItsWidth()
    {
        const auto state = laidOut(QStringLiteral("abcdef\nabc"));
        state->selectionRanges = {{2, 3}, {0, 1}}; // As if the rest of the line were not selected.
        drawabletext::rebuildSelectionRects(*state);
        const QTextLine line = state->layouts.first()->lineAt(0);
        QCOMPARE(state->selectionRects.at(0).right(), line.width());
    }

    void paragraphsBehindAGapAreNotPartOfTheSelection()
    {
        const auto state = laidOut(QStringLiteral("abc\nabc\nabc"));
        state->selectionRanges = {{0, 2}, {-1, -1}, {0, 2}};
        drawabletext::rebuildSelectionRects(*state);
        QCOMPARE(state->selectionRects.size(), 1);
        QCOMPARE(state->selectionRects.at(0).top(), 0.0);
    }

    void rangesThatFitNoCharacterLeaveTheRectanglesAlone_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("nothing selected") << -1 << -1;
        QTest::newRow("end past the text") << 0 << 1000;
        QTest::newRow("start past the text") << 1000 << 1001;
        QTest::newRow("start before the text") << -5 << 2;
        QTest::newRow("huge") << std::numeric_limits<int>::max() << std::numeric_limits<int>::max();
        QTest::newRow("negative") << std::numeric_limits<int>::min() << std::numeric_limits<int>::min();
    }

    void rangesThatFitNoCharacterLeaveTheRectanglesAlone()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        const auto state = laidOut(QStringLiteral("abc"));
        state->selectionRanges = {{from, to}};
        state->selectionRects = {QRectF(1, 2, 3, 4)};
        drawabletext::rebuildSelectionRects(*state);
        QCOMPARE(state->selectionRects, QVector<QRectF>{QRectF(1, 2, 3, 4)});
    }

    void rangesOfMoreParagraphsThanThereAreAreHarmless()
    {
        const auto state = laidOut(QStringLiteral("abc"));
        state->selectionRanges = {{0, 2}, {0, 2}, {0, 2}};
        drawabletext::rebuildSelectionRects(*state);
        QVERIFY(state->selectionRects.size() <= 1);
    }

    void resettingLeavesOneEmptyRangePerParagraph()
    {
        const auto state = laidOut(QStringLiteral("abc\nabc"));
        state->selectionRanges = {{0, 2}, {0, 1}};
        drawabletext::rebuildSelectionRects(*state);
        drawabletext::resetSelection(*state);
        QCOMPARE(state->selectionRanges.size(), 2);
        for (const SelectionRange range : qAsConst(state->selectionRanges))
            QVERIFY(range.isEmpty());
        QVERIFY(state->selectionRects.isEmpty());
    }
};

QTEST_MAIN(TestSelectionRects)
#include "tst_selectionrects.moc"
