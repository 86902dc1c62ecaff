// From a point to the character under it: `DrawableText::hitTest` and `lineRightEdge`.

#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QtTest>

#include <limits>

using namespace fixture;

namespace {

constexpr int allFlags = 0x15;

/// Rectangles come from sums of font widths in 1/64 pixels.
bool isClose(double a, double b)
{
    return qAbs(a - b) < 0.02;
}

bool isClose(const QRectF &a, const QRectF &b)
{
    return isClose(a.left(), b.left()) && isClose(a.top(), b.top()) && isClose(a.right(), b.right()) &&
           isClose(a.bottom(), b.bottom());
}

QByteArray describe(const QRectF &actual, const QRectF &expected)
{
    QString text;
    QDebug(&text) << "is" << actual << "expected" << expected;
    return text.toUtf8();
}

/// Where the last line ends, as far as hit tests are concerned.
double bottomOf(const DrawableText &item)
{
    const QTextLayout *last = item.state()->layouts.last();
    return last->position().y() + last->boundingRect().height();
}

bool isNothing(const TextHit &hit)
{
    return hit.paragraph == -1 && hit.line == -1 && hit.position == -1 && hit.character.isNull() &&
           hit.rect.isNull() && hit.span == TextSpan();
}

} // namespace

class TestHitTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyCharacterIsFoundUnderTheMiddleOfItsPlace_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("maxWidth");
        QTest::newRow("one line") << QStringLiteral("Hello, world") << 400.0;
        QTest::newRow("wrapped") << QStringLiteral("several words that need several lines") << 120.0;
        QTest::newRow("paragraphs") << QStringLiteral("one\nand two\nthree") << 400.0;
        QTest::newRow("emoji") << QStringLiteral("a\U0001F600b") << 400.0;
    }

    void everyCharacterIsFoundUnderTheMiddleOfItsPlace()
    {
        QFETCH(QString, text);
        QFETCH(double, maxWidth);
        const ProbeText item(text, maxWidth);
        const TextReference reference(item.state());
        QVERIFY(!item.state()->layouts.isEmpty());
        for (int paragraph = 0; paragraph < item.state()->layouts.size(); ++paragraph) {
            const QTextLayout *layout = item.state()->layouts.at(paragraph);
            for (int index = 0; index < layout->lineCount(); ++index) {
                const QTextLine line = layout->lineAt(index);
                for (int i = line.textStart(); i < line.textStart() + line.textLength(); ++i) {
                    // Measured in the layout itself, whose widths are unhinted.
                    const double x = (line.cursorToX(i) + line.cursorToX(i + 1, QTextLine::Leading)) / 2;
                    const QPointF point = layout->position() + QPointF(x, line.y() + line.height() / 2);
                    const bool isSpaceAtLineEnd =
                        layout->text().at(i).isSpace() && i + 1 == line.textStart() + line.textLength();
                    if (isSpaceAtLineEnd)
                        continue; // Lies outside its line.
                    const TextHit hit = item.hitTest(point, 7, false, false);
                    QCOMPARE(hit.paragraph, paragraph);
                    QCOMPARE(hit.line, index);
                    QCOMPARE(hit.position, i);
                    QCOMPARE(hit.character, layout->text().at(i));
                    const QRectF cell = reference.cell(paragraph, i);
                    QVERIFY2(isClose(hit.rect, cell), describe(hit.rect, cell));
                }
            }
        }
    }

    void flagsDecideHowMuchIsFilledIn_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<bool>("hasCharacter");
        QTest::addColumn<bool>("hasSpan");
        QTest::newRow("none") << 0x0 << false << false;
        QTest::newRow("1") << 0x1 << true << true;
        QTest::newRow("2 asks for no span") << 0x2 << true << false;
        QTest::newRow("3") << 0x3 << true << true;
        QTest::newRow("4 scans no lines") << 0x4 << false << false;
        QTest::newRow("7") << 0x7 << true << true;
        QTest::newRow("8") << 0x8 << false << false;
        QTest::newRow("0x10 scans no lines") << 0x10 << false << false;
        QTest::newRow("0x12") << 0x12 << true << true;
        QTest::newRow("0x15") << 0x15 << true << true;
    }

    void flagsDecideHowMuchIsFilledIn()
    {
        QFETCH(int, flags);
        QFETCH(bool, hasCharacter);
        QFETCH(bool, hasSpan);
        ProbeText item(QStringLiteral("see example.com"));
        item.setUserBlocks(blocks({block(4, 11, Link, QStringLiteral("example.com"))}));
        const TextReference reference(item.state());

        const TextHit hit = item.hitTest(reference.center(0, 6), flags, false, false);
        QCOMPARE(hit.paragraph, 0);
        QCOMPARE(hit.line, hasCharacter ? 0 : -1);
        QCOMPARE(hit.position, hasCharacter ? 6 : -1);
        QCOMPARE(hit.character, hasCharacter ? QChar(QLatin1Char('a')) : QChar());
        QCOMPARE(hit.rect.isNull(), !hasCharacter);
        QCOMPARE(hit.span.kind, int(hasSpan ? SpanLink : SpanText));
        QCOMPARE(hit.span.from, hasSpan ? 4 : -1);
        QCOMPARE(hit.span.to, hasSpan ? 14 : -1);
    }

    void pointLeftOfThePaddingHitsTheFirstColumn()
    {
        ProbeText item;
        item.setLeftPadding(30);
        item.setRightPadding(30); // The item's width leaves the left padding out.
        item.setTopPadding(20);
        item.setText(QStringLiteral("abc\ndef"));
        const TextReference reference(item.state());
        for (const double x : {-1e9, -1.0, 0.0, 29.0}) {
            const TextHit hit = item.hitTest(QPointF(x, reference.center(1, 0).y()), 7, false, false);
            QCOMPARE(hit.paragraph, 1);
            QCOMPARE(hit.position, 0);
        }
        // And a point above the text hits the first line.
        for (const double y : {-1e9, 0.0, 19.0}) {
            const TextHit hit = item.hitTest(QPointF(reference.center(0, 1).x(), y), 7, false, false);
            QCOMPARE(hit.paragraph, 0);
            QCOMPARE(hit.position, 1);
        }
    }

    void pointRightOfTheItemIsTakenToItsRightEdge()
    {
        const ProbeText item(QStringLiteral("abc"));
        const double y = TextReference(item.state()).center(0, 0).y();
        const TextHit edge = item.hitTest(QPointF(item.width(), y), 7, false, false);
        QVERIFY(edge.position >= 2);
        QCOMPARE(edge.line, 0);
        for (const double beyond : {0.5, 50.0, 1e9})
            QVERIFY(item.hitTest(QPointF(item.width() + beyond, y), 7, false, false) == edge);
    }

    void characterAtTheEndOfTheTextIsNull()
    {
        // Padding to the right leaves room in the item behind the text, but not in the paragraph.
        ProbeText item(QStringLiteral("abc\nabcdef"));
        const TextReference reference(item.state());
        const QTextLayout *layout = item.state()->layouts.first();
        const int endPosition = layout->lineAt(0).xToCursor(1e4, QTextLine::CursorOnCharacter);
        const double right = layout->position().x() + layout->boundingRect().right();
        const TextHit hit = item.hitTest(QPointF(right, reference.center(0, 0).y()), 7, false, false);
        QCOMPARE(hit.position, endPosition);
        QCOMPARE(hit.character, endPosition < 3 ? layout->text().at(endPosition) : QChar());
    }

    void pointBelowTheTextHitsTheLastLine()
    {
        const ProbeText item(QStringLiteral("abc\ndef"));
        const double x = TextReference(item.state()).center(1, 1).x();
        for (const double below : {0.5, 1.9, 2.0, 100.0, 1e9}) {
            const TextHit hit = item.hitTest(QPointF(x, bottomOf(item) + below), 7, false, false);
            QCOMPARE(hit.paragraph, 1);
            QCOMPARE(hit.position, 1);
        }
    }

    void hoverTwoOrMoreBelowTheTextFindsNothing()
    {
        const ProbeText item(QStringLiteral("abc\ndef"));
        const double x = TextReference(item.state()).center(1, 1).x();
        const TextHit near = item.hitTest(QPointF(x, bottomOf(item) + 1.9), allFlags, true, true);
        QCOMPARE(near.paragraph, 1);
        QCOMPARE(near.position, 1);
        for (const double below : {2.0, 2.1, 100.0}) {
            QVERIFY(isNothing(item.hitTest(QPointF(x, bottomOf(item) + below), allFlags, true, true)));
            QCOMPARE(item.lineRightEdge(QPointF(x, bottomOf(item) + below), true), -1.0);
        }
    }

    void pointBesideAShortParagraphHitsItsLastCharacterOnlyWhenAskedTo()
    {
        const ProbeText item(QStringLiteral("ab\na much longer line"));
        const TextReference reference(item.state());
        const QPointF beside(item.width() - 5, reference.center(0, 0).y());
        QVERIFY(isNothing(item.hitTest(beside, 7, false, false)));
        const TextHit hit = item.hitTest(beside, 7, true, false);
        QCOMPARE(hit.paragraph, 0);
        QCOMPARE(hit.line, 0);
        QCOMPARE(hit.position, 1);
        QCOMPARE(hit.character, QChar(QLatin1Char('b')));
        const QRectF cell = reference.cell(0, 1);
        QVERIFY2(isClose(hit.rect, cell), describe(hit.rect, cell));
    }

    void pointBesideAnEmptyLineHitsItsLineEnd()
    {
        const ProbeText item(QStringLiteral("abc\n\nabc"));
        QCOMPARE(item.state()->layouts.size(), 3);
        const TextReference reference(item.state());
        const TextHit hit = item.hitTest(QPointF(20, reference.center(1, 0).y()), 7, true, false);
        QCOMPARE(hit.paragraph, 1);
        QCOMPARE(hit.position, 0);
        QCOMPARE(hit.character, QChar(QLatin1Char('\n')));
    }

    void rightOfAParagraphIsJudgedByItsWidthAndNotByItsRightEdge()
    {
        // With a left padding, a point right of the paragraph's width can still lie inside it: then it hits
        // what is there.
        ProbeText item;
        item.setLeftPadding(40);
        item.setRightPadding(40); // The item's width leaves the left padding out.
        item.setText(QStringLiteral("abcdef"));
        const TextReference reference(item.state());
        const TextHit hit = item.hitTest(reference.center(0, 4), 7, true, false);
        QVERIFY(reference.center(0, 4).x() > item.state()->layouts.first()->boundingRect().width());
        QCOMPARE(hit.position, 4);
    }

    void shorterLineOfAWrappedParagraphIsHitAcrossTheWholeParagraph()
    {
        const ProbeText item(QStringLiteral("a longerword b"), 130);
        const QTextLayout *layout = item.state()->layouts.first();
        QVERIFY(layout->lineCount() > 1);
        int shortest = 0;
        for (int i = 1; i < layout->lineCount(); ++i) {
            if (layout->lineAt(i).naturalTextWidth() < layout->lineAt(shortest).naturalTextWidth())
                shortest = i;
        }
        const QTextLine line = layout->lineAt(shortest);
        const double x = layout->boundingRect().width() - 1;
        QVERIFY(x > line.naturalTextWidth() + 2);
        const TextHit hit = item.hitTest(QPointF(x, line.y() + line.height() / 2), 7, false, false);
        QCOMPARE(hit.line, shortest);
        QCOMPARE(hit.position, line.xToCursor(x, QTextLine::CursorOnCharacter));
    }

    void gapBetweenTheLinesOfAParagraphHitsTheParagraphAlone()
    {
        ProbeText item;
        item.setLeading(12);
        item.setMaxWidth(90);
        item.setText(QStringLiteral("some words that wrap"));
        const QTextLayout *layout = item.state()->layouts.first();
        QVERIFY(layout->lineCount() > 1);
        const double gap = layout->lineAt(0).rect().bottom() + 6;
        const TextHit hit = item.hitTest(QPointF(5, gap), 7, false, false);
        QCOMPARE(hit.paragraph, 0);
        QCOMPARE(hit.line, -1);
        QCOMPARE(hit.position, -1);
        QCOMPARE(item.lineRightEdge(QPointF(5, gap), false), -1.0);
    }

    void gapBetweenParagraphsHitsNothing()
    {
        ProbeText item;
        item.setLeading(12);
        item.setText(QStringLiteral("abc\nabc"));
        const double gap = item.state()->layouts.at(1)->position().y() - 6;
        QVERIFY(isNothing(item.hitTest(QPointF(5, gap), 7, false, false)));
        QVERIFY(isNothing(item.hitTest(QPointF(5, gap), 7, true, false)));
    }

    void tabInTheMiddleOfALineHasACellOfHalfATab()
    {
        // A tab survives to the layout only inside a display name.
        ProbeText item;
        item.setTabWidth(60);
        item.setText(inBand(QStringLiteral("a\\tb"), Other, QStringLiteral("1")));
        const QTextLayout *layout = item.state()->layouts.first();
        QCOMPARE(layout->text(), QStringLiteral("a\tb"));
        const QTextLine line = layout->lineAt(0);
        const TextHit hit = item.hitTest(QPointF(line.cursorToX(1) + 4, line.height() / 2), 7, false, false);
        QCOMPARE(hit.position, 1);
        QCOMPARE(hit.rect.width(), 30.0);
    }

    void tabAtTheStartOfALineHasACellOfAWholeTab()
    {
        ProbeText item;
        item.setTabWidth(60);
        item.setText(inBand(QStringLiteral("\\tb"), Other, QStringLiteral("1")));
        QCOMPARE(item.state()->layouts.first()->text(), QStringLiteral("\tb"));
        const TextHit hit = item.hitTest(QPointF(5, 5), 7, false, false);
        QCOMPARE(hit.position, 0);
        QCOMPARE(hit.rect.width(), 60.0);
        // The character behind the tab stands at the tab stop.
        const TextHit behind = item.hitTest(QPointF(63, 5), 7, false, false);
        QCOMPARE(behind.position, 1);
        QVERIFY(isClose(behind.rect.left(), 60.0));
    }

    void alignmentAndIndentDoNotMoveTheCell()
    {
        ProbeText item;
        item.setAlignment(Qt::AlignHCenter);
        item.setText(QStringLiteral("ab\na much longer line"));
        const QTextLayout *layout = item.state()->layouts.first();
        const double shift = layout->lineAt(0).x();
        QVERIFY(shift > 20);
        const TextHit centred = item.hitTest(QPointF(item.width() / 2 + 3, 5), 7, true, false);
        QCOMPARE(centred.paragraph, 0);
        QCOMPARE(centred.rect.left(), TextReference(item.state()).cell(0, centred.position).left());
        QVERIFY(centred.rect.left() < shift);

        ProbeText indented(QString(), 120);
        indented.setTextIndent(50);
        indented.setText(QStringLiteral("abc some words that wrap"));
        QCOMPARE(indented.state()->layouts.first()->lineAt(0).x(), 50.0);
        const TextHit first = indented.hitTest(QPointF(53, 5), 7, false, false);
        QCOMPARE(first.position, 0);
        QCOMPARE(first.rect.left(), 0.0);
    }

    void firstSpanInStoredOrderIsTheOneThatIsHit()
    {
        ProbeText item(QStringLiteral("abcdef"));
        item.setUserBlocks(blocks(
            {block(0, 6, Link, QStringLiteral("first")), block(2, 2, Sharp, QStringLiteral("second"))}));
        const TextReference reference(item.state());
        const TextHit hit = item.hitTest(reference.center(0, 2), allFlags, false, false);
        QCOMPARE(hit.span.kind, int(SpanLink));
        QCOMPARE(hit.span.data.toString(), QStringLiteral("first"));
    }

    void spanIsHitAtBothItsEndsAndNotBesideThem()
    {
        ProbeText item(QStringLiteral("abcdef"));
        item.setUserBlocks(blocks({block(2, 2, Link, QStringLiteral("x"))}));
        const TextReference reference(item.state());
        for (int position = 0; position < 6; ++position) {
            const bool inside = position == 2 || position == 3;
            const TextHit hit = item.hitTest(reference.center(0, position), allFlags, false, false);
            QCOMPARE(hit.span.kind, int(inside ? SpanLink : SpanText));
        }
    }

    void hitsAreEqualWhateverTheirRectangles()
    {
        TextHit hit;
        hit.paragraph = 1;
        hit.line = 2;
        hit.position = 3;
        hit.character = QLatin1Char('c');
        hit.span.from = 2;
        hit.span.to = 5;
        hit.span.kind = SpanLink;
        hit.span.data = QStringLiteral("x");
        TextHit other = hit;
        other.rect = QRectF(1, 2, 3, 4);
        QVERIFY(hit == other);

        const auto differs = [&hit](void (*change)(TextHit &)) {
            TextHit changed = hit;
            change(changed);
            return changed != hit;
        };
        QVERIFY(differs([](TextHit &changed) { changed.paragraph = 0; }));
        QVERIFY(differs([](TextHit &changed) { changed.line = 0; }));
        QVERIFY(differs([](TextHit &changed) { changed.position = 0; }));
        QVERIFY(differs([](TextHit &changed) { changed.character = QChar(); }));
        QVERIFY(differs([](TextHit &changed) { changed.span.from = 1; }));
        QVERIFY(differs([](TextHit &changed) { changed.span.to = 6; }));
        QVERIFY(differs([](TextHit &changed) { changed.span.kind = SpanText; }));
        QVERIFY(differs([](TextHit &changed) { changed.span.data = QVariant(); }));
    }

    void lineRightEdgeIsTheEndOfTheLinesText()
    {
        ProbeText item;
        item.setLeftPadding(15);
        item.setText(QStringLiteral("ab\nabcdef"));
        for (int paragraph = 0; paragraph < 2; ++paragraph) {
            const QTextLayout *layout = item.state()->layouts.at(paragraph);
            const double y = layout->position().y() + 5;
            const double expected = 15 + layout->lineAt(0).naturalTextWidth();
            for (const double x : {0.0, 20.0, 300.0})
                QCOMPARE(item.lineRightEdge(QPointF(x, y), false), expected);
        }
    }

    void lineRightEdgeLeavesTheAlignmentOut()
    {
        ProbeText item;
        item.setAlignment(Qt::AlignHCenter);
        item.setText(QStringLiteral("ab\na much longer line"));
        const QTextLine line = item.state()->layouts.first()->lineAt(0);
        QVERIFY(line.x() > 20);
        QCOMPARE(item.lineRightEdge(line.rect().center(), false), line.naturalTextWidth());
    }

    void itemWithoutTextHitsNothing()
    {
        const ProbeText item;
        for (const QPointF point : {QPointF(0, 0), QPointF(-5, -5), QPointF(1e9, 1e9)}) {
            QVERIFY(isNothing(item.hitTest(point, allFlags, true, false)));
            QCOMPARE(item.lineRightEdge(point, false), -1.0);
            QCOMPARE(item.lineRightEdge(point, true), -1.0);
        }
    }

    void textThatAwaitsItsWorkerHitsNothing()
    {
        const ProbeText item(QString(600, QLatin1Char('x')));
        QVERIFY(item.state()->layouts.isEmpty());
        QVERIFY(isNothing(item.hitTest(QPointF(5, 5), allFlags, true, false)));
    }

    void pointsThatAreNoNumbersAreHarmless()
    {
        const ProbeText item(QStringLiteral("abc\ndef"));
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinity = std::numeric_limits<double>::infinity();
        for (const QPointF point : {QPointF(nan, nan), QPointF(nan, 5), QPointF(5, nan)}) {
            for (const bool slack : {false, true}) {
                // Nothing is said about where such a point lies, only that what is hit exists.
                const TextHit hit = item.hitTest(point, allFlags, true, slack);
                QVERIFY(hit.paragraph >= -1 && hit.paragraph < 2);
                QVERIFY(hit.line >= -1 && hit.line < 1);
                QVERIFY(hit.position >= -1 && hit.position <= 3);
                (void)item.lineRightEdge(point, slack);
            }
        }
        // Infinite ones are only very far away.
        QCOMPARE(item.hitTest(QPointF(-infinity, -infinity), 7, false, false).position, 0);
        QCOMPARE(item.hitTest(QPointF(infinity, infinity), 7, true, false).paragraph, 1);
        QVERIFY(isNothing(item.hitTest(QPointF(5, infinity), 7, true, true)));
        const double huge = std::numeric_limits<double>::max();
        QCOMPARE(item.hitTest(QPointF(-huge, -huge), 7, false, false).position, 0);
        QCOMPARE(item.hitTest(QPointF(huge, huge), 7, true, false).paragraph, 1);
    }
};

QTEST_MAIN(TestHitTest)
#include "tst_hittest.moc"
