// In-band blocks and the list of blocks, against references that follow the rules word by word.

#include "text/analysis.h"
#include "text/charformats.h"
#include "text/drawabletextprivate.h"
#include "text/emojitext.h"
#include "text/userblocks.h"
#include "text/usertextblock.h"

#include "literalrules.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QRandomGenerator>
#include <QtTest>

#include <limits>

using namespace drawabletext;

namespace {

const QChar begin = QChar(0x0001);
const QChar end = QChar(0x0002);
constexpr int greatest = std::numeric_limits<int>::max();
constexpr int least = std::numeric_limits<int>::min();

QString random(QRandomGenerator &generator, const QStringList &pieces, int count)
{
    QString text;
    for (int i = 0; i < count; ++i)
        text += pieces.at(generator.bounded(pieces.size()));
    return text;
}

DrawableTextPrivate *stateOf(DrawableTextPrivate &state, const QStringList &paragraphs)
{
    state.paragraphs = paragraphs;
    state.sourceParagraphs = paragraphs;
    state.spans.resize(paragraphs.size());
    return &state;
}

} // namespace

class TestUserBlocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qInstallMessageHandler(countInvalidBlocks); }

    void flatteningEqualsTheExpression_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("plain") << QStringLiteral("plain");
        QTest::newRow("block") << QStringLiteral("a \x01{\"displayName\":\"Ann\",\"data\":7}\x02 b");
        QTest::newRow("two blocks") << QStringLiteral(
            "\x01{\"displayName\":\"A\"}\x02\x01{\"displayName\" : \"B\"}\x02");
        QTest::newRow("name twice") << QStringLiteral(
            "\x01{\"displayName\":\"A\",\"displayName\":\"B\"}\x02");
        QTest::newRow("name in the next block")
            << QStringLiteral("\x01\"displayName\"\x02 : \"A\" \x02 rest");
        QTest::newRow("second name without value")
            << QStringLiteral("\x01{\"displayName\":\"A\",\"displayName\"}\x02");
        QTest::newRow("value behind the mark, no further mark")
            << QStringLiteral("\x01{\"displayName\"\x02:\"A\"");
        QTest::newRow("nested marks") << QStringLiteral("\x01 a \x01{\"displayName\":\"A\"}\x02");
        QTest::newRow("no begin") << QStringLiteral("{\"displayName\":\"A\"}\x02");
        QTest::newRow("no end") << QStringLiteral("\x01{\"displayName\":\"A\"}");
        QTest::newRow("ends in the wrong order") << QStringLiteral("\x02{\"displayName\":\"A\"}\x01");
    }

    void flatteningEqualsTheExpression()
    {
        QFETCH(QString, text);
        QCOMPARE(flattenUserBlocks(text), literalrules::flattened(text));
    }

    void flatteningRandomMarkupEqualsTheExpression()
    {
        const QString key = QStringLiteral("\"displayName\"");
        const QStringList pieces = {begin,
                                    begin,
                                    end,
                                    end,
                                    key,
                                    key,
                                    key + QStringLiteral(":\"n\""),
                                    QStringLiteral(":"),
                                    QStringLiteral("\""),
                                    QStringLiteral("\""),
                                    QStringLiteral("x"),
                                    QStringLiteral("\n"),
                                    QStringLiteral("displayName")};
        QRandomGenerator generator(1);
        int changed = 0;
        for (int round = 0; round < 100000; ++round) {
            const QString text = random(generator, pieces, generator.bounded(20));
            const QString expected = literalrules::flattened(text);
            QCOMPARE(flattenUserBlocks(text), expected);
            changed += expected != text ? 1 : 0;
        }
        QVERIFY2(changed > 5000, "the texts hardly ever held a block");
    }

    void expandingEqualsReplacingOneByOne()
    {
        const auto block = [](const char *json) { return begin + QString::fromUtf8(json) + end; };
        const QString smile = QString::fromUtf8("\xF0\x9F\x98\x80");
        const QString joiner = QChar(0x200D);
        const QStringList pieces = {
            block(R"({"displayName":"Ann","data":7,"type":3})"),
            block(R"({"displayName":"","data":{"a":1}})"),
            block(R"({"displayName":"😀","data":"d","type":1})"),
            block(R"({"displayName":"👨‍👩‍👧 b","data":[1],"type":3})"),
            block(R"({"displayName":"a\nb","data":null,"type":6})"),
            block(R"({"displayName":12,"data":1,"type":"3"})"),
            block(R"({"displayName":"\u0001x\u0002","data":1,"type":2})"),
            block(R"({"displayName":"\ufe0f","data":1,"type":3.5})"),
            block(R"({"displayName":"\ude00","data":1})"),
            block(R"({"data":1})"),
            block(R"({"displayName":"A"})"),
            block("{}"),
            block("[1]"),
            block(""),
            block("x"),
            QString(begin),
            QString(end),
            smile,
            smile,
            joiner,
            QString(QChar(0xFE0E)),
            QString(QChar(0xD83D)),
            QStringLiteral("a"),
            QStringLiteral("\n"),
            QString::fromUtf8("👨‍"),
        };
        QRandomGenerator generator(2);
        int found = 0;
        for (int round = 0; round < 40000; ++round) {
            const QString text = random(generator, pieces, generator.bounded(10));
            for (const LineEnds lineEnds : {LineEnds::Keep, LineEnds::BecomeSpaces}) {
                QString literal = text;
                const QVector<TextSpan> expected = literalrules::expand(literal, lineEnds);
                QString expanded = text;
                QCOMPARE(expandInBandBlocks(expanded, lineEnds), expected);
                QCOMPARE(expanded, literal);
                found += expected.size();
            }
        }
        QVERIFY2(found > 50000, "the texts hardly ever held a block");
    }

    void everyInvalidBlockIsReportedOnce()
    {
        QString text = QStringLiteral("\x01{\"data\":1}\x02 \x01\x02 \x01x\x02 \x01{\"displayName\":\"A\","
                                      "\"data\":1}\x02 \x01[]\x02 \x01");
        const QString expected = QStringLiteral("\x01{\"data\":1}\x02 \x01\x02 \x01x\x02 A \x01[]\x02 \x01");
        invalidBlocks = 0;
        QCOMPARE(expandInBandBlocks(text, LineEnds::Keep).size(), 1);
        QCOMPARE(text, expected);
        QCOMPARE(invalidBlocks, 3);
    }

    void hugeTextsOfMarksTakeLinearTime_data()
    {
        QTest::addColumn<QString>("text");
        const int many = 1000000;
        const QString fill = QStringLiteral("abcd");
        QTest::newRow("begins") << (begin + fill).repeated(many);
        QTest::newRow("begins, one end") << (begin + fill).repeated(many) + end;
        QTest::newRow("ends, one begin") << begin + (end + fill).repeated(many);
        QTest::newRow("empty blocks") << (QString(begin) + end + fill).repeated(many);
        QTest::newRow("begins, then a block")
            << (begin + fill).repeated(many) + QStringLiteral("\"displayName\":\"A\"") + end;
        QTest::newRow("keys without values")
            << (begin + QStringLiteral("\"displayName\"") + end).repeated(many / 4);
        QTest::newRow("blocks")
            << (begin + QStringLiteral("{\"displayName\":\"A\",\"data\":1}") + end).repeated(many / 8);
    }

    void hugeTextsOfMarksTakeLinearTime()
    {
        QFETCH(QString, text);
        QElapsedTimer timer;
        timer.start();
        const QString flat = flattenUserBlocks(text);
        QVERIFY(flat.size() <= text.size());
        QString expanded = text;
        for (const TextSpan &span : expandInBandBlocks(expanded, LineEnds::Keep))
            QVERIFY(span.from >= 0 && span.to < expanded.size());
        // It takes a fraction of a second; looking through the text for each mark would take hours.
        QVERIFY(timer.elapsed() < 60000);
    }

    void positionsBeyondAllBoundsDoNotWrap_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("length");
        QTest::addColumn<qint64>("lineStart");
        for (const int start : {0, 1, -1, 5, least, least + 1, greatest, greatest - 1}) {
            for (const int length : {0, 1, -1, 5, least, least + 1, greatest, greatest - 1}) {
                for (const qint64 lineStart : {qint64(0), qint64(3), qint64(greatest), qint64(1) << 33})
                    QTest::addRow("%d + %d - %lld", start, length, lineStart) << start << length << lineStart;
            }
        }
    }

    void positionsBeyondAllBoundsDoNotWrap()
    {
        QFETCH(int, start);
        QFETCH(int, length);
        QFETCH(qint64, lineStart);
        const QString line = QString::fromUtf8("a😀b😀c");
        const auto prefixExcess = [&line](qint64 count) {
            // `mid` takes a negative count for everything.
            return emojiExcess(count < 0 || count > line.size() ? line : line.mid(0, int(count)));
        };
        const qint64 first = start - lineStart;
        const qint64 from = first - prefixExcess(first + 1);
        const qint64 to = first + length - 1 - prefixExcess(first + length);

        const TextSpan span = lineSpan({start, length, 1, QVariant()}, lineStart, EmojiPrefixes(line));
        QCOMPARE(qint64(span.from), qBound(qint64(least), from, qint64(greatest)));
        QCOMPARE(qint64(span.to), qBound(qint64(least), to, qint64(greatest)));
    }

    void blocksOfEqualStartKeepTheirOrder()
    {
        DrawableTextPrivate state;
        stateOf(state, {QStringLiteral("abcdefgh")});
        for (int i = 0; i < 40; ++i)
            state.userBlocks.append({i % 2, 1, 1, QVariant(i)});
        applyUserBlocks(state);
        QCOMPARE(state.spans.at(0).size(), 40);
        for (int i = 0; i < 40; ++i) {
            QCOMPARE(state.userBlocks.at(i).start, i < 20 ? 0 : 1);
            QCOMPARE(state.userBlocks.at(i).data.toInt(), i < 20 ? 2 * i : 2 * (i - 20) + 1);
            QCOMPARE(state.spans.at(0).at(i).data.toInt(), state.userBlocks.at(i).data.toInt());
        }
    }

    void sortedListsStayShared()
    {
        const UserTextBlocks blocks = {{0, 1, 1, QVariant()}, {2, 1, 1, QVariant()}};
        DrawableTextPrivate state;
        stateOf(state, {QStringLiteral("abc")})->userBlocks = blocks;
        applyUserBlocks(state);
        QVERIFY(state.userBlocks.isSharedWith(blocks));
    }

    void textBlocksOfAnyPositionCanBeLaidOut_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        for (const int from : {0, 1, 4, 7, 8, -1, -7, least, least + 1, greatest, greatest - 1}) {
            for (const int to : {0, 1, 4, 7, 8, -1, -2, -7, least, least + 1, greatest, greatest - 1})
                QTest::addRow("%d to %d", from, to) << from << to;
        }
    }

    void textBlocksOfAnyPositionCanBeLaidOut()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        const QString text = QStringLiteral("some tex");
        DrawableTextPrivate state;
        stateOf(state, {text});
        for (const int paragraph : {-1, 0, 1, least, greatest})
            state.textBlocks[paragraph].append({from, to, QVariant(), SpanTextBlock});
        // A second range, so that there is something to confuse.
        state.textBlocks[0].append({2, 5, QVariant(), SpanTextBlock});
        state.textBlockColor = Qt::red;
        buildCharFormats(state);
        mergeTextBlocks(state);
        QCOMPARE(state.spans.at(0).size(), 2);
        buildParagraphFormats(state);

        QTextLayout layout(text);
        layout.setFormats(state.paragraphFormats.at(0));
        layout.beginLayout();
        QTextLine line = layout.createLine();
        line.setLineWidth(1000.0);
        layout.endLayout();
        for (int position = 0; position < text.size(); ++position) {
            const bool marked = (from <= position && position <= to) || (position >= 2 && position <= 5);
            QCOMPARE(isRed(layout, position), marked);
        }
    }

private:
    static bool isRed(const QTextLayout &layout, int position)
    {
        // The formats in force are those that the ranges cover; the drawing shows that Qt agrees.
        QImage image(300, 60, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        layout.draw(&painter, QPointF(0, 0));
        painter.end();
        const QTextLine line = layout.lineAt(0);
        const int left = qCeil(line.cursorToX(position));
        const int right = qFloor(line.cursorToX(position + 1));
        bool red = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = left; x < right; ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.red() > pixel.green() + 80 && pixel.red() > pixel.blue() + 80)
                    red = true;
            }
        }
        // A space has no ink: its range is told by its neighbours.
        if (layout.text().at(position) == QLatin1Char(' '))
            return rangeCovers(layout, position);
        return red;
    }

    static bool rangeCovers(const QTextLayout &layout, int position)
    {
        for (const QTextLayout::FormatRange &range : layout.formats()) {
            if (range.start <= position && position < range.start + range.length)
                return true;
        }
        return false;
    }

    static void countInvalidBlocks(QtMsgType, const QMessageLogContext &, const QString &message)
    {
        if (message == QLatin1String("Invalid user block data"))
            ++invalidBlocks;
        else
            fprintf(stderr, "%s\n", qPrintable(message));
    }

    static int invalidBlocks;
};

int TestUserBlocks::invalidBlocks = 0;

QTEST_MAIN(TestUserBlocks)
#include "tst_userblocks.moc"
