// Lines, sizes and the emoji picture, against plain QTextLayouts.

#include "layoutreference.h"
#include "text/emojioverlay.h"
#include "text/layout.h"
#include "text/paragraphs.h"
#include "text/punctuation.h"
#include "textengine.h"

#include <emoji/emojimanager.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QRandomGenerator>
#include <QtTest>

#include <cmath>
#include <functional>

using namespace textengine;

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

QVector<int> lengths(const DrawableText &item, int paragraph = 0)
{
    QVector<int> result;
    const QTextLayout *layout = item.state()->layouts.at(paragraph);
    for (int index = 0; index < layout->lineCount(); ++index)
        result.append(layout->lineAt(index).textLength());
    return result;
}

/// Width of a text on one line, by a layout as the engine makes it.
double widthOf(const DrawableText &item, const QString &text)
{
    QTextLayout layout(text, item.font());
    layout.setTextOption(layoutreference::option(*item.state(), QTextOption::NoWrap));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e6);
    layout.endLayout();
    return line.naturalTextWidth();
}

/// How many characters a plain QTextLayout puts on the first line.
int plainBreak(const DrawableText &item, const QString &text, double width)
{
    QTextLayout layout(text, item.font());
    layout.setTextOption(layoutreference::option(*item.state(), item.state()->wrapMode));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(width);
    layout.endLayout();
    return line.textLength();
}

bool holdsInk(const QImage &picture, const QRectF &rect)
{
    const QRect pixels = rect.toAlignedRect().intersected(picture.rect());
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            if (picture.pixelColor(x, y).alpha() > 0)
                return true;
        }
    }
    return false;
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

    // ---- breaks in front of closing marks

    void ideographGoesDownWithItsClosingMark_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("room");   // characters that fit, by the width of the first
        QTest::addColumn<int>("plain");  // characters that a plain layout puts on the first line
        QTest::addColumn<int>("actual"); // and the engine
        const QString digits = QStringLiteral("\u4e00\u4e8c\u4e09\u56db\u4e94");
        const QString stop = QStringLiteral("\u3002");
        QTest::newRow("full stop") << digits + stop + digits << 5 << 4 << 3;
        QTest::newRow("two stops") << digits + stop.repeated(2) + digits << 5 << 4 << 3;
        QTest::newRow("ten marks") << digits + stop.repeated(10) << 5 << 4 << 3;
        QTest::newRow("eleven marks") << digits + stop.repeated(11) << 5 << 4 << 4;
        QTest::newRow("closing bracket") << digits + QStringLiteral("\uff09") + digits << 5 << 4 << 3;
        QTest::newRow("comma") << digits + QStringLiteral("\uff0c") + digits << 5 << 4 << 3;
        QTest::newRow("no mark") << digits + digits << 5 << 5 << 5;
        QTest::newRow("mark at the very end") << digits + stop << 5 << 4 << 3;
        QTest::newRow("mark that fits") << digits + stop + digits << 6 << 6 << 6;
    }
    void ideographGoesDownWithItsClosingMark()
    {
        QFETCH(QString, text);
        QFETCH(int, room);
        QFETCH(int, plain);
        QFETCH(int, actual);
        DrawableText item;
        item.setText(text);
        const double width = widthOf(item, text.left(room)) + 1;
        if (plainBreak(item, text, width) != plain)
            QFAIL("the plain layout breaks elsewhere: the row says nothing");
        item.setMaxWidth(width);
        QCOMPARE(lengths(item).first(), actual);
    }

    void onlyIdeographOfALineStays()
    {
        // To move it down would leave an empty line.
        DrawableText item;
        const QString text = QStringLiteral("\u4e00\u4e8c\u3002\u4e09");
        item.setText(text);
        const double width = widthOf(item, text.left(1)) + 1;
        QCOMPARE(plainBreak(item, text, width), 1);
        item.setMaxWidth(width);
        QCOMPARE(lengths(item).first(), 1);
    }

    void latinLettersStayWhereTheyAre()
    {
        DrawableText item;
        item.setWrapMode(DrawableText::WrapAnywhere);
        const QString latin = QStringLiteral("abcdef.ghi");
        item.setText(latin);
        const double width = widthOf(item, QStringLiteral("abcde")) + 0.5;
        QCOMPARE(plainBreak(item, latin, width), 5); // one character ahead of the full stop
        item.setMaxWidth(width);
        QCOMPARE(lengths(item).first(), 5);
        // With an ideograph in the same place the break moves.
        const QString mixed = QStringLiteral("abcd\u4e00f.ghi");
        DrawableText other;
        other.setWrapMode(DrawableText::WrapAnywhere);
        other.setText(mixed);
        const double mixedWidth = widthOf(other, mixed.left(5)) + 0.5;
        QCOMPARE(plainBreak(other, mixed, mixedWidth), 5);
        other.setMaxWidth(mixedWidth);
        QCOMPARE(lengths(other).first(), 4);
    }

    void breaksAreLeftAloneUnderALineLimit()
    {
        const QString text = QStringLiteral("\u4e00\u4e8c\u4e09\u56db\u4e94\u3002\u4e00\u4e8c\u4e09\u56db");
        DrawableText item;
        item.setText(text);
        const double width = widthOf(item, text.left(5)) + 1;
        item.setMaxWidth(width);
        QCOMPARE(lengths(item).first(), 3);
        item.setMaximumLineCount(9);
        QCOMPARE(lengths(item).first(), 4);
    }

    void closingMarksAreFoundByTheirCategory_data()
    {
        QTest::addColumn<QChar>("character");
        QTest::addColumn<bool>("closing");
        QTest::newRow("closing bracket") << QChar(u')') << true;
        QTest::newRow("closing corner bracket") << QChar(0x300D) << true;
        QTest::newRow("final quote") << QChar(0x201D) << true;
        QTest::newRow("full stop") << QChar(u'.') << true;
        QTest::newRow("ideographic full stop") << QChar(0x3002) << true;
        QTest::newRow("exclamation mark") << QChar(u'!') << true;
        QTest::newRow("straight quote") << QChar(u'"') << true;
        QTest::newRow("opening bracket") << QChar(u'(') << false;
        QTest::newRow("initial quote") << QChar(0x201C) << false;
        QTest::newRow("dash") << QChar(u'-') << false;
        QTest::newRow("connector") << QChar(u'_') << false;
        QTest::newRow("letter") << QChar(u'a') << false;
        QTest::newRow("symbol") << QChar(u'+') << false;
        QTest::newRow("space") << QChar(u' ') << false;
        QTest::newRow("emoji") << collapsedEmoji << false;
    }
    void closingMarksAreFoundByTheirCategory()
    {
        QFETCH(QChar, character);
        QFETCH(bool, closing);
        DrawableTextPrivate state;
        state.paragraphs =
            QStringList({QStringLiteral("a%1b%1").arg(character), QString(), QString(character)});
        state.openPunctuation = {{1}, {2}, {3}, {4}};
        state.closePunctuation = {{1}, {2}, {3}, {4}};
        drawabletext::scanClosePunctuation(state);
        using Positions = QVector<QVector<int>>;
        QCOMPARE(state.openPunctuation, Positions(3));
        QCOMPARE(state.closePunctuation, closing ? Positions({{1, 3}, {}, {0}}) : Positions(3));
    }

    void emojiCountOneInFrontOfClosingMarks()
    {
        DrawableText item;
        item.setMaxWidth(300);
        item.setText(family() + QStringLiteral("a.") + grinning() + QStringLiteral("!"));
        QCOMPARE(item.state()->closePunctuation, QVector<QVector<int>>({{2, 4}}));
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

    // ---- emoji

    void emojiPictureCoversTheItem()
    {
        DrawableText item;
        item.setMaxWidth(150);
        item.setText(QStringLiteral("text ") + grinning() + QStringLiteral(" more text that wraps ") +
                     family());
        const QImage picture = item.state()->emojiImage;
        const double ratio = qGuiApp->devicePixelRatio();
        QCOMPARE(picture.format(), QImage::Format_ARGB4444_Premultiplied);
        QCOMPARE(picture.devicePixelRatio(), ratio);
        QCOMPARE(picture.width(), int(std::ceil(ratio * qMin(150.0, item.state()->contentWidth))));
        QCOMPARE(picture.height(), int(std::ceil(ratio * item.state()->contentHeight)));
        item.setFixedWidth(500);
        item.setColor(Qt::red);
        QCOMPARE(item.state()->emojiImage.width(), int(std::ceil(ratio * 150.0)));
    }

    void emojiStandOverTheirPlaceholders()
    {
        DrawableText item;
        item.setPadding(7);
        item.setMaxWidth(120);
        item.setText(QStringLiteral("a") + grinning() + QStringLiteral(" words to wrap ") + family() +
                     grinning() + QStringLiteral("\nnext ") + thumbsUpMediumTone());
        QVERIFY(item.lineCount() > 2);
        const DrawableTextPrivate *state = item.state();
        int count = 0;
        for (int paragraph = 0; paragraph < state->emojis.size(); ++paragraph) {
            const QTextLayout *layout = state->layouts.at(paragraph);
            for (const EmojiRecord &record : state->emojis.at(paragraph)) {
                const QTextLine line = layout->lineForTextPosition(record.pos);
                const QRectF expected(line.cursorToX(record.pos) + 1 + layout->position().x(),
                                      layout->position().y() + line.y() + 1, state->emojiSize - 2,
                                      state->emojiSize - 2);
                QCOMPARE(record.rect, expected);
                // The text flows around it by itself.
                QVERIFY(qAbs(line.cursorToX(record.pos + 1) - line.cursorToX(record.pos) - state->emojiSize) <
                        1.0);
                QVERIFY(holdsInk(state->emojiImage, record.rect));
                ++count;
            }
        }
        QCOMPARE(count, 4);
    }

    void emojiPictureIsPaintedFromTheManagersPictures()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("a") + grinning() + thumbsUpMediumTone() + QStringLiteral("b\n") +
                     family());
        const DrawableTextPrivate *state = item.state();
        QImage expected(state->emojiImage.size(), QImage::Format_ARGB4444_Premultiplied);
        expected.setDevicePixelRatio(state->emojiImage.devicePixelRatio());
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                                   QPainter::SmoothPixmapTransform);
            for (const QVector<EmojiRecord> &records : state->emojis) {
                for (const EmojiRecord &record : records) {
                    EmojiManager::EmojiInfo info;
                    QVERIFY(EmojiManager::instance()->emoji(record.unicode, info));
                    painter.drawPixmap(record.rect, *info.pixmap,
                                       QRectF(info.x, info.y, info.width, info.height));
                }
            }
        }
        QVERIFY(holdsInk(expected, QRectF(0, 0, 200, 200)));
        QCOMPARE(state->emojiImage, expected);
    }

    void emojiPictureIsPaintedOnlyWhenMarked()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(grinning());
        const qint64 first = item.state()->emojiImage.cacheKey();
        item.setReserveSpace(true); // marks nothing
        item.setLinkColor(Qt::red); // marks the formats
        QCOMPARE(item.state()->emojiImage.cacheKey(), first);
        item.setColor(Qt::red);
        QVERIFY(item.state()->emojiImage.cacheKey() != first);
    }

    void emojiPictureOfNothingIsLeftAsItWas()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(grinning());
        const QImage before = item.state()->emojiImage;
        item.setText(QString());
        QCOMPARE(item.state()->contentWidth, 0.0);
        QCOMPARE(item.state()->emojiImage, before);
    }

    void emojiOfNoLineIsLoggedAndSkipped()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("ab");
        drawabletext::splitParagraphs(state);
        state.spans.resize(1);
        drawabletext::layoutParagraphs(state);
        EmojiRecord lost;
        lost.pos = 999;
        lost.unicode = QStringLiteral("1f600");
        EmojiRecord good;
        good.pos = 1;
        good.unicode = QStringLiteral("1f600");
        state.emojis = {{lost, good}, {good}}; // and one paragraph more than there are layouts
        const LogCapture log;
        drawabletext::renderEmojiImage(state);
        QCOMPARE(log.messages(), QStringList({QStringLiteral("Line is invalid,pos: 999")}));
        QVERIFY(state.emojis.at(0).at(0).rect.isNull());
        QVERIFY(!state.emojis.at(0).at(1).rect.isNull());
        QVERIFY(state.emojis.at(1).at(0).rect.isNull());
    }

    void emojiWithoutAPictureLeavesItsPlaceEmpty()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("a\uEEEE");
        drawabletext::splitParagraphs(state);
        drawabletext::layoutParagraphs(state);
        EmojiRecord unknown;
        unknown.pos = 1;
        unknown.unicode = QStringLiteral("no such key");
        state.emojis = {{unknown}};
        drawabletext::renderEmojiImage(state);
        QVERIFY(!state.emojiImage.isNull());
        QVERIFY(!state.emojis.at(0).at(0).rect.isNull());
        QVERIFY(!holdsInk(state.emojiImage, QRectF(0, 0, 200, 200)));
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

    void abandonedEmojiPictureStopsAtTheFirstEmoji()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("\uEEEE");
        drawabletext::splitParagraphs(state);
        drawabletext::layoutParagraphs(state);
        EmojiRecord record;
        record.unicode = QStringLiteral("1f600");
        record.pos = 0;
        state.emojis = {{record}};
        state.abandon();
        drawabletext::renderEmojiImage(state);
        QVERIFY(state.emojis.at(0).at(0).rect.isNull());
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
