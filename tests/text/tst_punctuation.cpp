// Line breaks around punctuation, against those of a plain QTextLayout.

#include "layoutreference.h"
#include "text/punctuation.h"
#include "textengine.h"

#include <QtTest>

using namespace textengine;
using layoutreference::lengths;
using layoutreference::plainBreak;
using layoutreference::widthOf;

class TestPunctuation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

QTEST_MAIN(TestPunctuation)
#include "tst_punctuation.moc"
