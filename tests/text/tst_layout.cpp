// Lines and sizes, against plain QTextLayouts.

#include "layoutreference.h"
#include "text/layout.h"
#include "text/paragraphs.h"
#include "textengine.h"

#include <QRandomGenerator>
#include <QtTest>

#include <functional>

using namespace textengine;
using layoutreference::lengths;
using layoutreference::plainBreak;
using layoutreference::widthOf;

namespace {

constexpr double lineGrowth = 12.0; ///< what the item grows by when the reserved width does not fit

struct Setting
{
    const char *name;
    std::function<void(DrawableText &)> apply;
};

QVector<Setting> settings()
{
    return {
        {"plain", [](DrawableText &) {}},
        {"word wrap", [](DrawableText &item) { item.setWrapMode(DrawableText::WordWrap); }},
        {"wrap anywhere", [](DrawableText &item) { item.setWrapMode(DrawableText::WrapAnywhere); }},
        {"no wrap", [](DrawableText &item) { item.setWrapMode(DrawableText::NoWrap); }},
        {"manual wrap", [](DrawableText &item) { item.setWrapMode(DrawableText::ManualWrap); }},
        {"line limit", [](DrawableText &item) { item.setMaximumLineCount(2); }},
        {"one line", [](DrawableText &item) { item.setMaximumLineCount(1); }},
        {"one line without wrapping",
         [](DrawableText &item) {
             item.setWrapMode(DrawableText::NoWrap);
             item.setMaximumLineCount(1);
         }},
        {"line limit that may change",
         [](DrawableText &item) {
             item.setWillChangeLineMode(true);
             item.setReservedWidth(60);
             item.setMaximumLineCount(2);
         }},
        {"centred", [](DrawableText &item) { item.setAlignment(Qt::AlignHCenter); }},
        {"right", [](DrawableText &item) { item.setAlignment(Qt::AlignRight); }},
        {"justified", [](DrawableText &item) { item.setAlignment(Qt::AlignJustify); }},
        {"indented", [](DrawableText &item) { item.setTextIndent(25.5); }},
        {"indented to the left", [](DrawableText &item) { item.setTextIndent(-10); }},
        {"indented beyond the area", [](DrawableText &item) { item.setTextIndent(500); }},
        {"indented and right",
         [](DrawableText &item) {
             item.setTextIndent(25);
             item.setAlignment(Qt::AlignRight);
         }},
        {"padded", [](DrawableText &item) { item.setPadding(7); }},
        {"each side padded",
         [](DrawableText &item) {
             item.setLeftPadding(3);
             item.setTopPadding(5);
             item.setRightPadding(11);
             item.setBottomPadding(13);
         }},
        {"padding over sides",
         [](DrawableText &item) {
             item.setPadding(4);
             item.setLeftPadding(9);
             item.setTopPadding(9);
         }},
        {"negative padding", [](DrawableText &item) { item.setPadding(-6); }},
        {"leading", [](DrawableText &item) { item.setLeading(3.25); }},
        {"negative leading", [](DrawableText &item) { item.setLeading(-4); }},
        {"reserved width", [](DrawableText &item) { item.setReservedWidth(45); }},
        {"reserved space", [](DrawableText &item) { item.setReserveSpace(true); }},
        {"fixed width",
         [](DrawableText &item) {
             item.setFixedWidth(77);
             item.setRightPadding(4);
         }},
        {"least width",
         [](DrawableText &item) {
             item.setMultilineMinWidth(190);
             item.setReservedWidth(30);
         }},
        {"small least width", [](DrawableText &item) { item.setMultilineMinWidth(10); }},
        {"larger font",
         [](DrawableText &item) {
             QFont font;
             font.setPixelSize(33);
             item.setFont(font);
         }},
        {"bold mentions",
         [](DrawableText &item) {
             item.setUserBlockBold(true);
             item.setLinkColor(Qt::red);
             item.setUserBlocks(QVariant::fromValue(UserTextBlocks({block(0, 9, 3, 7), block(12, 5, 0, 7)})));
         }},
        {"everything",
         [](DrawableText &item) {
             item.setPadding(3);
             item.setLeading(1.5);
             item.setTextIndent(12);
             item.setReservedWidth(40);
             item.setReserveSpace(true);
             item.setMultilineMinWidth(150);
             item.setAlignment(Qt::AlignHCenter);
         }},
    };
}

struct Sample
{
    const char *name;
    QString text;
};

QVector<Sample> samples()
{
    return {
        {"word", QStringLiteral("word")},
        {"sentence",
         QStringLiteral("The quick brown fox, so they say, jumps over the lazy dog (and back again).")},
        {"long word", QStringLiteral("pneumonoultramicroscopicsilicovolcanoconiosis is a word")},
        {"paragraphs",
         QStringLiteral("first line\n\n  indented by spaces, and longer than one line can be\nlast  ")},
        {"ideographs",
         QStringLiteral("\u4eca\u5929\u5929\u6c14\u5f88\u597d\uff0c\u6211\u4eec\u53bb\u516c\u56ed\u6563"
                        "\u6b65\u5427\u3002\u4f60\u89c9\u5f97\u5462\uff1f\uff01\u201c\u597d\u7684\u201d"
                        "\u3002\u3002\u3002\uff08\u5b8c\uff09")},
        {"mixed", QStringLiteral("\u4eca\u5929 is fine\uff0cOK\u3002\u660e\u5929a.b,\u540e\u5929)\u3002")},
        {"emoji", grinning() + QStringLiteral(" and ") + family() + family() + QStringLiteral(" meet\uff0c") +
                      thumbsUpMediumTone().repeated(9) + QStringLiteral("\u3002\nend")},
        {"right to left",
         QStringLiteral("\u0645\u0631\u062d\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645 "
                        "hello \u0645\u0631\u062d\u0628\u0627\u060c and on it goes")},
    };
}

/// The font to compare with: the item's own, unless blanks for emoji are needed.
QFont referenceFont(const DrawableText &item)
{
    return item.state()->paragraphs.join(QChar()).contains(collapsedEmoji) ? item.state()->layoutFont
                                                                           : item.font();
}

} // namespace

class TestLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesAndSizesAreThoseOfThePlainRules_data()
    {
        QTest::addColumn<int>("setting");
        QTest::addColumn<int>("sample");
        const auto allSettings = settings();
        const auto allSamples = samples();
        for (int setting = 0; setting < allSettings.size(); ++setting) {
            for (int sample = 0; sample < allSamples.size(); ++sample)
                QTest::addRow("%s, %s", allSettings.at(setting).name, allSamples.at(sample).name)
                    << setting << sample;
        }
    }
    void linesAndSizesAreThoseOfThePlainRules()
    {
        QFETCH(int, setting);
        QFETCH(int, sample);
        DrawableText item;
        settings().at(setting).apply(item);
        item.setText(samples().at(sample).text);
        for (const double width : {160.0, 90.5, 31.0, 700.0}) {
            item.setMaxWidth(width);
            // A width that still holds the text skips the layout, so the state may be that of the width
            // before.
            item.setReservedWidth(item.reservedWidth() + 1);
            const QString difference = layoutreference::difference(*item.state(), referenceFont(item));
            QVERIFY2(difference.isEmpty(), qPrintable(QStringLiteral("%1: %2").arg(width).arg(difference)));
            QCOMPARE(item.lineCount(), item.state()->lineCount);
            QCOMPARE(item.width(), qMin(width, item.state()->contentWidth));
            QCOMPARE(item.implicitWidth(), item.width());
            QCOMPARE(item.height(), item.state()->contentHeight);
            QCOMPARE(item.implicitHeight(), item.height());
        }
    }

    void randomTextBreaksByThePlainRules_data()
    {
        QTest::addColumn<int>("mode");
        for (int mode = 0; mode < 5; ++mode)
            QTest::addRow("wrap mode %d", mode) << mode;
    }
    void randomTextBreaksByThePlainRules()
    {
        QFETCH(int, mode);
        QRandomGenerator random(7 + mode);
        const QString pool =
            QStringLiteral("\u4e00\u4e8c\u4e09\u56db\u3002\uff0c\uff01\uff09\u201d\u3001.,)!ab c(\u300a");
        int adjusted = 0;
        for (int round = 0; round < 120; ++round) {
            QString text;
            for (int count = random.bounded(1, 45); count > 0; --count)
                text += pool.at(random.bounded(pool.size()));
            DrawableText item;
            item.setWrapMode(DrawableText::WrapMode(mode));
            item.setMaxWidth(random.bounded(20, 200));
            item.setText(text);
            const QString difference = layoutreference::difference(*item.state(), item.font());
            QVERIFY2(difference.isEmpty(), qPrintable(text + QStringLiteral(": ") + difference));
            if (!item.state()->layouts.isEmpty() &&
                lengths(item).first() != plainBreak(item, item.state()->paragraphs.first(), item.maxWidth()))
                ++adjusted;
        }
        const bool breaksBetweenIdeographs = mode == DrawableText::WordWrap ||
                                             mode == DrawableText::WrapAnywhere ||
                                             mode == DrawableText::WrapAtWordBoundaryOrAnywhere;
        QVERIFY(!breaksBetweenIdeographs || adjusted > 0); // or this test would not reach the adjustment
    }

    void eachParagraphHasALayoutOfItsOwn()
    {
        DrawableText item;
        item.setTabWidth(42);
        item.setMaxWidth(300);
        item.setText(QStringLiteral("one\n\ntwo"));
        const QVector<QTextLayout *> layouts = item.state()->layouts;
        QCOMPARE(layouts.size(), 3);
        QCOMPARE(item.lineCount(), 3);
        QCOMPARE(layouts.at(0)->text(), QStringLiteral("one"));
        QCOMPARE(layouts.at(1)->text(), QStringLiteral("\n"));
        QCOMPARE(layouts.at(2)->text(), QStringLiteral("two"));
        for (const QTextLayout *layout : layouts) {
            QVERIFY(layout->cacheEnabled());
            QCOMPARE(layout->textOption().wrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
            QCOMPARE(layout->textOption().flags(), QTextOption::Flags(QTextOption::IncludeTrailingSpaces));
            QVERIFY(layout->textOption().useDesignMetrics());
            QCOMPARE(layout->textOption().tabStopDistance(), 42.0);
            QCOMPARE(layout->textOption().alignment(), Qt::Alignment(Qt::AlignLeft));
            QVERIFY(!layout->lineAt(0).leadingIncluded());
        }
    }

    void emptyTextIsAsHighAsItsPaddings()
    {
        DrawableText item;
        item.setTopPadding(5);
        item.setBottomPadding(8);
        item.setReservedWidth(50);
        item.setMaxWidth(200);
        QCOMPARE(item.lineCount(), 0);
        QCOMPARE(item.state()->layouts.size(), 0);
        QCOMPARE(item.state()->contentHeight, 13.0);
        QCOMPARE(item.height(), 13.0);
        QCOMPARE(item.width(), 0.0);
        QCOMPARE(item.textHeight(), 0.0);
        // The same after a text.
        item.setText(QStringLiteral("a"));
        QVERIFY(item.height() > 13.0);
        item.setText(QString());
        QCOMPARE(item.height(), 13.0);
        QCOMPARE(item.state()->layouts.size(), 0);
    }

    void paddingOfAllSidesReplacesThatOfOne()
    {
        DrawableText item;
        item.setPadding(4);
        item.setLeftPadding(9);
        item.setMaxWidth(200);
        item.setText(QStringLiteral("a"));
        QCOMPARE(item.state()->layouts.at(0)->position(), QPointF(4, 4));
        QCOMPARE(item.state()->effectiveLeftPadding(), 4.0);
        QCOMPARE(item.state()->textAreaWidth(), 192.0);
    }

    void contentWidthHasTheRightPaddingOnly()
    {
        DrawableText item;
        item.setLeftPadding(10);
        item.setRightPadding(7);
        item.setMaxWidth(300);
        item.setText(QStringLiteral("abc"));
        QCOMPARE(item.state()->contentWidth, widthOf(item, QStringLiteral("abc")) + 7);
    }

    void limitOfOneLineDoesNotWrap()
    {
        DrawableText item;
        item.setWrapMode(DrawableText::WordWrap);
        item.setMaximumLineCount(1);
        item.setMaxWidth(60);
        item.setText(QStringLiteral("many words that go on and on\nmany words that go on and on"));
        QCOMPARE(item.lineCount(), 2);
        QCOMPARE(item.state()->layouts.at(0)->textOption().wrapMode(), QTextOption::NoWrap);
        const QTextLine first = item.state()->layouts.at(0)->lineAt(0);
        const QTextLine second = item.state()->layouts.at(1)->lineAt(0);
        QVERIFY(first.naturalTextWidth() > 100);
        // A line's width is held in 64ths. The very first line never has the tenth, others unless nothing
        // wraps.
        QVERIFY(qAbs(first.width() - 60.0) <= 1.0 / 64);
        QVERIFY(qAbs(second.width() - 60.1) <= 1.0 / 64);
    }

    void limitOfLinesCutsNothingWithoutElision()
    {
        DrawableText item;
        item.setMaximumLineCount(3);
        item.setMaxWidth(100);
        item.setText(QStringLiteral("a\nb\nc\nd\ne"));
        QCOMPARE(item.lineCount(), 5);
        DrawableText free;
        free.setMaxWidth(100);
        free.setText(QStringLiteral("a\nb\nc\nd\ne"));
        QCOMPARE(item.height(), free.height());
    }

    void shownLinesDoNotCountTheirLeading()
    {
        DrawableText item;
        item.setLeading(10);
        item.setTopPadding(3);
        item.setMaxWidth(100);
        item.setText(QStringLiteral("a\nb"));
        const double height = item.state()->layouts.at(0)->lineAt(0).height();
        QCOMPARE(item.state()->layouts.at(1)->position().y(), 3 + height + 10);
        QCOMPARE(item.textHeight(), 2 * (height + 10)); // also behind the last line
        QCOMPARE(item.state()->contentHeight, 3 + 2 * (height + 10));
    }

    // ---- alignment

    void centredLinesStandInTheWidestLine()
    {
        DrawableText item;
        item.setAlignment(Qt::AlignHCenter | Qt::AlignRight); // centring wins
        item.setTextIndent(20);
        item.setMaxWidth(400);
        item.setText(QStringLiteral("short\nthe widest line of all"));
        const double widest = item.state()->maxLineWidth;
        QVERIFY(widest < 300);
        for (const QTextLayout *layout : item.state()->layouts) {
            const QTextLine line = layout->lineAt(0);
            QVERIFY(qAbs(line.x() - (widest - line.naturalTextWidth()) * 0.5) < 0.02);
        }
    }

    void rightAlignedLinesStandAtTheEdgeOfTheArea()
    {
        DrawableText item;
        item.setAlignment(Qt::AlignRight);
        item.setTextIndent(20); // lost
        item.setPadding(5);
        item.setMaxWidth(400);
        item.setText(QStringLiteral("short\nthe widest line of all"));
        for (const QTextLayout *layout : item.state()->layouts) {
            const QTextLine line = layout->lineAt(0);
            QVERIFY(qAbs(line.x() + line.naturalTextWidth() - 390) < 0.02);
        }
        QCOMPARE(item.state()->contentWidth,
                 item.state()->maxLineWidth + 5); // and still as narrow as its text
    }

    void indentShiftsTheVeryFirstLineOnly()
    {
        DrawableText item;
        item.setTextIndent(20);
        item.setMaxWidth(100);
        item.setText(QStringLiteral("a few words that need lines\nnext"));
        QVERIFY(item.state()->layouts.at(0)->lineCount() > 1);
        QCOMPARE(item.state()->layouts.at(0)->lineAt(0).x(), 20.0);
        QCOMPARE(item.state()->layouts.at(0)->lineAt(1).x(), 0.0);
        QCOMPARE(item.state()->layouts.at(1)->lineAt(0).x(), 0.0);
        item.setText(QStringLiteral("one"));
        QCOMPARE(item.state()->maxLineWidth, 20 + widthOf(item, QStringLiteral("one")));
    }

    // ---- sizes

    void reservedWidthStandsBesideOneLineWhereItFits()
    {
        const QString text = QStringLiteral("message");
        DrawableText item;
        item.setReservedWidth(40);
        const double width = widthOf(item, text);
        item.setMaxWidth(width + 41);
        item.setText(text);
        const double height = item.state()->layouts.at(0)->lineAt(0).height();
        QCOMPARE(item.state()->contentWidth, width + 40);
        QCOMPARE(item.state()->contentHeight, height);

        item.setMaxWidth(width + 39);
        item.setAlignment(
            Qt::AlignJustify); // a shrunk width that holds the text is laid out with the next change
        QCOMPARE(item.state()->contentWidth, width);
        QCOMPARE(item.state()->contentHeight, height + lineGrowth);
    }

    void reservedWidthGrowsSeveralLinesWhenTheLastIsTooWide()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setText(QStringLiteral("short\nthe widest line"));
        const double height = item.state()->contentHeight;
        const double width = item.state()->contentWidth;
        item.setReservedWidth(1);
        QCOMPARE(item.state()->contentHeight, height + lineGrowth);
        QCOMPARE(item.state()->contentWidth, width); // several lines never grow in width

        item.setText(QStringLiteral("the widest line\nshort"));
        QCOMPARE(item.state()->contentHeight, height);
        const int room =
            int(widthOf(item, QStringLiteral("the widest line")) - widthOf(item, QStringLiteral("short")));
        item.setReservedWidth(room);
        QCOMPARE(item.state()->contentHeight, height);
        item.setReservedWidth(room + 1);
        QCOMPARE(item.state()->contentHeight, height + lineGrowth);
    }

    void lineLimitGrowsOnlyWhenItMayChange()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setMaximumLineCount(5);
        item.setText(QStringLiteral("short\nthe widest line"));
        const double height = item.state()->contentHeight;
        item.setReservedWidth(10);
        QCOMPARE(item.state()->contentHeight, height);
        item.setWillChangeLineMode(true);
        QCOMPARE(item.state()->contentHeight, height);
        item.setReservedWidth(11);
        QCOMPARE(item.state()->contentHeight, height + lineGrowth);
    }

    void fixedWidthReplacesTheComputedOne()
    {
        DrawableText item;
        item.setFixedWidth(200);
        item.setRightPadding(6);
        item.setMaxWidth(400);
        item.setText(QStringLiteral("abc"));
        QCOMPARE(item.state()->contentWidth, 206.0);
        QCOMPARE(item.width(), 206.0);
        item.setFixedWidth(0);
        item.setText(QStringLiteral("abcd"));
        QCOMPARE(item.state()->contentWidth, 6.0); // only -1 is off
    }

    void leastWidthIsForSeveralLines()
    {
        DrawableText item;
        item.setMultilineMinWidth(150);
        item.setMaxWidth(400);
        item.setText(QStringLiteral("a"));
        QCOMPARE(item.state()->contentWidth, widthOf(item, QStringLiteral("a")));
        item.setText(QStringLiteral("a\nb"));
        QCOMPARE(item.state()->contentWidth, 150.0);
        const double height = item.state()->contentHeight;
        item.setReservedWidth(100); // fits into what the least width added
        QCOMPARE(item.state()->contentHeight, height);
        item.setReservedWidth(150);
        QCOMPARE(item.state()->contentHeight, height + lineGrowth);
    }

    void reservedSpaceIsAnXWide()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setText(QStringLiteral("abc"));
        const double width = item.state()->contentWidth;
        item.setReserveSpace(true);
        const double x = QFontMetricsF(item.font()).horizontalAdvance(QLatin1Char('X'));
        QCOMPARE(item.state()->contentWidth, width + x);
        QCOMPARE(item.state()->textAreaWidth(), 400 - x);
    }

    void itemIsNeverWiderThanItMayBe()
    {
        DrawableText item;
        item.setWrapMode(DrawableText::NoWrap);
        item.setFixedWidth(300);
        item.setMaxWidth(100);
        item.setText(QStringLiteral("a long line that does not wrap at all"));
        QCOMPARE(item.width(), 100.0);
        QCOMPARE(item.state()->contentWidth, 300.0);
    }

    void storedPropertiesWaitForTheNextLayout_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char *name, const QVariant &value) {
            QTest::newRow(name) << QString::fromLatin1(name) << value;
        };
        row("wrapMode", int(DrawableText::NoWrap));
        row("leading", 5.0);
        row("padding", 6.0);
        row("leftPadding", 6.0);
        row("topPadding", 6.0);
        row("rightPadding", 6.0);
        row("bottomPadding", 6.0);
        row("tabWidth", 90.0);
        row("fixedWidth", 66);
        row("multilineMinWidth", 300.0);
        row("willChangeLineMode", true);
    }
    void storedPropertiesWaitForTheNextLayout()
    {
        QFETCH(QString, name);
        QFETCH(QVariant, value);
        DrawableText item;
        item.setMaxWidth(120);
        // A real tab is only in a display name. With a line limit, so that a possible change of it counts.
        item.setMaximumLineCount(9);
        item.setReservedWidth(300);
        item.setText(inBandBlock(QStringLiteral("a\tb"), 1, 1) +
                     QStringLiteral(" and some words to fill the lines"));
        const auto look = [&item] {
            QVariantList values = {item.width(),         item.height(),
                                   item.lineCount(),     item.state()->contentWidth,
                                   item.implicitWidth(), item.implicitHeight()};
            for (const QTextLayout *layout : item.state()->layouts) {
                values.append(layout->position());
                for (int index = 0; index < layout->lineCount(); ++index)
                    values.append(QVariantList(
                        {layout->lineAt(index).textLength(), layout->lineAt(index).naturalTextWidth()}));
            }
            return values;
        };
        const QVariantList before = look();
        QVERIFY(item.setProperty(name.toLatin1(), value));
        QCOMPARE(look(), before);
        item.setColor(Qt::red);
        QVERIFY(look() != before);
    }

    // ---- abandoned snapshots

    void abandonedLayoutStopsAtTheFirstLine()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("a\nb");
        drawabletext::splitParagraphs(state);
        drawabletext::layoutParagraphs(state);
        QCOMPARE(state.layouts.size(), 2);
        const double width = state.contentWidth;
        state.contentHeight = 77;
        state.abandon();
        drawabletext::layoutParagraphs(state);
        QCOMPARE(state.layouts.size(), 0);
        QCOMPARE(state.contentWidth, width);
        QCOMPARE(state.contentHeight, 77.0);
    }

    // ---- rough input

    void roughTextIsLaidOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("lone surrogates") << QString(QChar(0xDE00)) + QChar(0xD83D);
        QTest::newRow("bidirectional controls") << QStringLiteral("a\u202Eb\u2066c\u2069\u202C\u200Fd");
        QTest::newRow("null characters") << QString(5, QChar(0));
        QTest::newRow("combining marks") << QStringLiteral("a") + QString(499, QChar(0x0301));
        QTest::newRow("zero width") << QString(300, QChar(0x200B));
        QTest::newRow("only closing marks") << QString(300, QChar(0x3002));
        QTest::newRow("paragraph separators") << QStringLiteral("a\u2029b\u2029\u2029");
        QTest::newRow("line end in a name") << inBandBlock(QStringLiteral("A\nB"), 1, 1);
        QTest::newRow("tab in a name") << inBandBlock(QStringLiteral("A\tB"), 1, 1);
        QTest::newRow("nothing in a name") << inBandBlock(QString(), 1, 1);
    }
    void roughTextIsLaidOut()
    {
        QFETCH(QString, text);
        DrawableText item;
        item.setText(text);
        for (const double width : {0.5, 1.0, 30.0, 1000.0}) {
            item.setMaxWidth(width);
            const QString difference = layoutreference::difference(*item.state(), referenceFont(item));
            QVERIFY2(difference.isEmpty(), qPrintable(difference));
        }
    }
};

QTEST_MAIN(TestLayout)
#include "tst_layout.moc"
