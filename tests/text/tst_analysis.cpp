// From the text to paragraphs, spans and format ranges, step by step on a bare state.

#include "text/analysis.h"
#include "text/charformats.h"
#include "text/drawabletextprivate.h"
#include "text/emojitext.h"
#include "text/highlights.h"
#include "text/paragraphs.h"
#include "text/userblocks.h"
#include "textengine.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojiparser.h>

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <limits>

using namespace textengine;

using Spans = QVector<TextSpan>;
Q_DECLARE_METATYPE(TextSpan)

namespace {

constexpr auto invalidBlockMessage = "Invalid user block data";

QString invalidBlockLog()
{
    return QString::fromLatin1(invalidBlockMessage);
}

/// The definition: parse the text, add up what each emoji loses.
int excessByDefinition(const QString &text)
{
    int excess = 0;
    const EmojiParser parser(nullptr);
    for (const QPair<int, int> &emoji : parser.emojiIndexes(text))
        excess += emoji.second - 1;
    return excess;
}

/// Marked stretches of the list, one paragraph at a time, with nothing clever.
QVector<Spans> spansOfList(const QStringList &paragraphs, const QString &text, Qt::TextElideMode elide,
                           const QString &elideText, UserTextBlocks list)
{
    QVector<Spans> result(paragraphs.size());
    std::stable_sort(list.begin(), list.end(),
                     [](const UserTextBlock &a, const UserTextBlock &b) { return a.start < b.start; });
    if (elide != Qt::ElideNone && elide != Qt::ElideRight)
        return result;
    int base = 0;
    int current = 0;
    for (int index = 0; index < paragraphs.size(); ++index) {
        const QString &paragraph = paragraphs.at(index);
        int end = base + paragraph.size() + 1;
        if (index == paragraphs.size() - 1) {
            end -= 1;
            if (elide == Qt::ElideRight && paragraph.endsWith(elideText) && !text.endsWith(elideText))
                end -= 1;
        }
        while (current < list.size() && list.at(current).start < end) {
            const UserTextBlock &entry = list.at(current);
            const int rel = entry.start - base;
            const int from = rel - excessByDefinition(paragraph.mid(0, rel + 1));
            const int to = rel + entry.length - 1 - excessByDefinition(paragraph.mid(0, rel + entry.length));
            const QMap<int, int> kinds = {{1, 4}, {2, 128}, {3, 8}, {4, 1024}, {5, 512}, {6, 256}};
            int kind = kinds.value(entry.type, 64);
            if (kind == 8 && entry.data.toInt() <= 0)
                kind = 2048;
            if (to > end - 1)
                break;
            result[index].append(span(from, to, kind, entry.data));
            ++current;
        }
        base = end;
    }
    return result;
}

/// A state with what the first steps read.
void prepare(DrawableTextPrivate &state, const QString &text)
{
    state.measureFont();
    state.text = text;
    state.rawText = text;
    state.textChanged = true;
}

void analyse(DrawableTextPrivate &state, const QString &text)
{
    prepare(state, text);
    drawabletext::splitParagraphs(state);
    drawabletext::applyUserBlocks(state);
    drawabletext::collapseEmoji(state);
}

Spans ofKind(const Spans &spans, int kind)
{
    Spans result;
    std::copy_if(spans.begin(), spans.end(), std::back_inserter(result),
                 [kind](const TextSpan &entry) { return entry.kind == kind; });
    return result;
}

QString padded(const QString &inner, int leading, int trailing)
{
    return QString(leading, QChar(0xA0)) + inner + QString(trailing, QChar(0xA0));
}

} // namespace

#define COMPARE_SPANS(found, expected)                                                                       \
    do {                                                                                                     \
        QCOMPARE(describe(found), describe(expected));                                                       \
        QCOMPARE(found, expected);                                                                           \
    } while (false)

class TestAnalysis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // ---- paragraphs

    void linesAreSplitAndKeepTheirEdgeSpaces_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("lines");
        const QString a = QStringLiteral("a");
        QTest::newRow("empty") << QString() << QStringList();
        QTest::newRow("one") << a << QStringList({a});
        QTest::newRow("last line end") << QStringLiteral("a\n") << QStringList({a});
        QTest::newRow("two last line ends") << QStringLiteral("a\n\n") << QStringList({a, QString()});
        QTest::newRow("only a line end") << QStringLiteral("\n") << QStringList({QString()});
        QTest::newRow("empty line between")
            << QStringLiteral("a\n\nb") << QStringList({a, QString(), QStringLiteral("b")});
        QTest::newRow("spaces at both edges")
            << QStringLiteral("  a b   ") << QStringList({padded(QStringLiteral("a b"), 2, 3)});
        QTest::newRow("only spaces") << QStringLiteral("   ") << QStringList({QString(3, QChar(0xA0))});
        QTest::newRow("edges of each line")
            << QStringLiteral(" a\nb ") << QStringList({padded(a, 1, 0), padded(QStringLiteral("b"), 0, 1)});
        QTest::newRow("ideographic space stays")
            << QStringLiteral("\u3000a") << QStringList({QStringLiteral("\u3000a")});
        QTest::newRow("spaces behind a tab stay")
            << QStringLiteral("\uEEEF a") << QStringList({QStringLiteral("\uEEEF a")});
    }
    void linesAreSplitAndKeepTheirEdgeSpaces()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, lines);
        QCOMPARE(drawabletext::readLines(text), lines);

        DrawableTextPrivate state;
        prepare(state, text);
        drawabletext::splitParagraphs(state);
        QCOMPARE(state.paragraphs, lines);
        QCOMPARE(state.sourceParagraphs, lines);
        QCOMPARE(state.spans, QVector<Spans>(lines.size()));
    }

    void elidedTextIsSplitWhileAnElisionIsSet()
    {
        for (const Qt::TextElideMode mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight, Qt::ElideNone}) {
            DrawableTextPrivate state;
            prepare(state, QStringLiteral("text"));
            state.elidedText = QStringLiteral("elided");
            state.elide = mode;
            drawabletext::splitParagraphs(state);
            QCOMPARE(state.paragraphs, QStringList({mode == Qt::ElideNone ? state.text : state.elidedText}));
        }
    }

    void newTextResetsTheSelection()
    {
        DrawableTextPrivate state;
        prepare(state, QStringLiteral("a\nb"));
        drawabletext::splitParagraphs(state);
        QVERIFY(!state.textChanged);
        QCOMPARE(state.selectionRanges.size(), 2);

        state.selectionRanges[1].from = 0;
        state.selectionRanges[1].to = 0;
        drawabletext::splitParagraphs(state); // the same text keeps it
        QCOMPARE(state.selectionRanges.at(1).from, 0);
        state.textChanged = true;
        drawabletext::splitParagraphs(state);
        QVERIFY(state.selectionRanges.at(1).isEmpty());

        state.selectionRanges[1].from = 0;
        state.text = QStringLiteral("a\nb\nc"); // as many ranges as paragraphs, or the selection is off
        drawabletext::splitParagraphs(state);
        QCOMPARE(state.selectionRanges.size(), 3);
        QVERIFY(state.selectionRanges.at(1).isEmpty());
    }

    void emptyTextHasNoParagraphAndNoSpans()
    {
        DrawableTextPrivate state;
        state.userBlocks = {block(0, 1, 1, 7)};
        state.elidedSpans = {span(0, 0, SpanLink)};
        state.highlightText = QStringLiteral("a");
        state.textBlocks = {{0, {span(0, 0, SpanTextBlock)}}};
        analyse(state, QString());
        drawabletext::matchHighlights(state);
        drawabletext::mergeTextBlocks(state);
        drawabletext::buildParagraphFormats(state);
        QVERIFY(state.paragraphs.isEmpty());
        QVERIFY(state.spans.isEmpty());
        QVERIFY(state.paragraphFormats.isEmpty());
        QVERIFY(state.emojis.isEmpty());
    }

    // ---- blocks inside the text

    void typeDecidesTheKind_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("kind");
        const int kinds[] = {64, 4, 128, 8, 1024, 512, 256, 64, 64};
        for (int type = 0; type < 9; ++type)
            QTest::addRow("type %d", type) << type << kinds[type];
        QTest::newRow("negative") << -1 << 64;
        QTest::newRow("huge") << std::numeric_limits<int>::max() << 64;
    }
    void typeDecidesTheKind()
    {
        QFETCH(int, type);
        QFETCH(int, kind);
        QCOMPARE(drawabletext::typeToKind(type), kind);

        // Mentions and text blocks hand out their data, everything else its name.
        DrawableTextPrivate state;
        analyse(state, inBandBlock(QStringLiteral("Ann"), QStringLiteral("secret"), type));
        QCOMPARE(state.paragraphs, QStringList({QStringLiteral("Ann")}));
        const bool handsOutData = kind == SpanAite || kind == SpanTextBlock;
        COMPARE_SPANS(
            state.spans.at(0),
            Spans({span(0, 2, kind, handsOutData ? QStringLiteral("secret") : QStringLiteral("Ann"))}));
    }

    void mentionInsideTheTextIsReplacedByItsName()
    {
        DrawableTextPrivate state;
        analyse(state, inBandBlock(QStringLiteral("Ann"), 7, 3) + QStringLiteral(" hi"));
        QCOMPARE(state.paragraphs, QStringList({QStringLiteral("Ann hi")}));
        QCOMPARE(state.spans.at(0).size(), 1);
        const TextSpan found = state.spans.at(0).at(0);
        QCOMPARE(found.from, 0);
        QCOMPARE(found.to, 2);
        QCOMPARE(found.kind, int(SpanAite));
        QCOMPARE(found.data.toInt(), 7);
        // What it was stays for the highlights.
        QCOMPARE(state.sourceParagraphs,
                 QStringList({inBandBlock(QStringLiteral("Ann"), 7, 3) + QStringLiteral(" hi")}));
    }

    void mentionOfNobodyInsideTheTextStaysAMention()
    {
        DrawableTextPrivate state;
        analyse(state, inBandBlock(QStringLiteral("all"), 0, 3));
        QCOMPARE(state.spans.at(0).at(0).kind, int(SpanAite));
    }

    void dataOfAnyShapeIsHandedOut_data()
    {
        QTest::addColumn<QString>("json");
        QTest::addColumn<QVariant>("data");
        QTest::newRow("text") << QStringLiteral("\"x\"") << QVariant(QStringLiteral("x"));
        QTest::newRow("true") << QStringLiteral("true") << QVariant(true);
        QTest::newRow("list") << QStringLiteral("[\"a\"]") << QVariant(QVariantList({QStringLiteral("a")}));
        QTest::newRow("object") << QStringLiteral("{\"k\":\"v\"}")
                                << QVariant(QVariantMap{{QStringLiteral("k"), QStringLiteral("v")}});
    }
    void dataOfAnyShapeIsHandedOut()
    {
        QFETCH(QString, json);
        QFETCH(QVariant, data);
        DrawableTextPrivate state;
        analyse(state, rawBlock(QStringLiteral("{\"displayName\":\"Ann\",\"data\":%1}").arg(json)));
        QCOMPARE(state.spans.at(0).size(), 1);
        QCOMPARE(state.spans.at(0).at(0).kind, int(SpanTextBlock)); // no type
        QCOMPARE(state.spans.at(0).at(0).data, data);
    }

    void typeThatIsNoNumberIsATextBlock()
    {
        DrawableTextPrivate state;
        analyse(state, rawBlock(QStringLiteral("{\"displayName\":\"Ann\",\"data\":\"x\",\"type\":\"1\"}")));
        COMPARE_SPANS(state.spans.at(0), Spans({span(0, 2, SpanTextBlock, QStringLiteral("x"))}));
    }

    void invalidBlocksAreLoggedAndShown_data()
    {
        QTest::addColumn<QString>("json");
        QTest::newRow("not JSON") << QStringLiteral("hello");
        QTest::newRow("one character") << QStringLiteral("x");
        QTest::newRow("broken") << QStringLiteral("{\"displayName\":\"Ann\",\"data\":");
        QTest::newRow("empty object") << QStringLiteral("{}");
        QTest::newRow("list") << QStringLiteral("[1]");
        QTest::newRow("no name") << QStringLiteral("{\"data\":7}");
        QTest::newRow("no data") << QStringLiteral("{\"displayName\":\"Ann\",\"type\":3}");
        QTest::newRow("other case") << QStringLiteral("{\"displayname\":\"Ann\",\"data\":7}");
        QTest::newRow("lone surrogate") << QString(QChar(0xD83D));
    }
    void invalidBlocksAreLoggedAndShown()
    {
        QFETCH(QString, json);
        const QString text = rawBlock(json) + QStringLiteral(" hi");
        const LogCapture log;
        DrawableTextPrivate state;
        analyse(state, text);
        QCOMPARE(log.messages(), QStringList({invalidBlockLog()}));
        QCOMPARE(state.paragraphs, QStringList({text}));
        QVERIFY(state.spans.at(0).isEmpty());
    }

    void marksThatMakeNoBlockStayInTheText_data()
    {
        QTest::addColumn<QString>("text");
        const QString begin = QChar(1);
        const QString end = QChar(2);
        QTest::newRow("nothing between") << begin + end;
        QTest::newRow("begin alone") << QStringLiteral("a") + begin + QStringLiteral("b");
        QTest::newRow("end alone") << QStringLiteral("a") + end;
        QTest::newRow("wrong order") << end + QStringLiteral("a") + begin;
        QTest::newRow("many begins") << QString(20000, QChar(1));
        QTest::newRow("many empty blocks") << QString(begin + end).repeated(20000);
    }
    void marksThatMakeNoBlockStayInTheText()
    {
        QFETCH(QString, text);
        const LogCapture log;
        DrawableTextPrivate state;
        analyse(state, text);
        QCOMPARE(log.messages(), QStringList());
        QCOMPARE(state.paragraphs, QStringList({text}));
        QVERIFY(state.spans.at(0).isEmpty());
    }

    void blockBehindABrokenOneIsStillFound()
    {
        const QString broken = rawBlock(QStringLiteral("x"));
        const LogCapture log;
        DrawableTextPrivate state;
        analyse(state, broken + inBandBlock(QStringLiteral("Ann"), QStringLiteral("d"), 4) +
                           QString(QChar(1)) + QChar(2) +
                           inBandBlock(QStringLiteral("Bo"), QStringLiteral("e"), 1));
        QCOMPARE(log.count(invalidBlockLog()), 1);
        QCOMPARE(state.paragraphs,
                 QStringList({broken + QStringLiteral("Ann") + QChar(1) + QChar(2) + QStringLiteral("Bo")}));
        COMPARE_SPANS(state.spans.at(0), Spans({span(3, 5, SpanOstrelId, QStringLiteral("Ann")),
                                                span(8, 9, SpanLink, QStringLiteral("Bo"))}));
    }

    void blockBeginsAtTheFirstMark()
    {
        // The second mark is inside the first one's block, which is therefore no JSON.
        const QString text = QString(QChar(1)) + inBandBlock(QStringLiteral("Ann"), 7, 3);
        const LogCapture log;
        DrawableTextPrivate state;
        analyse(state, text);
        QCOMPARE(log.count(invalidBlockLog()), 1);
        QCOMPARE(state.paragraphs, QStringList({text}));
    }

    void namesAreNotSearchedForBlocks()
    {
        // A name that holds a whole block, escaped in the JSON: shown as it is, and the search goes on behind
        // it.
        const QString inner = QStringLiteral("\\u0001{\\\"displayName\\\":\\\"x\\\",\\\"data\\\":1}\\u0002");
        DrawableTextPrivate state;
        analyse(state, rawBlock(QStringLiteral("{\"displayName\":\"%1\",\"data\":\"d\"}").arg(inner)) +
                           inBandBlock(QStringLiteral("Ann"), QStringLiteral("e"), 0));
        const QString name = rawBlock(QStringLiteral("{\"displayName\":\"x\",\"data\":1}"));
        QCOMPARE(state.paragraphs, QStringList({name + QStringLiteral("Ann")}));
        COMPARE_SPANS(state.spans.at(0),
                      Spans({span(0, name.size() - 1, SpanTextBlock, QStringLiteral("d")),
                             span(name.size(), name.size() + 2, SpanTextBlock, QStringLiteral("e"))}));
    }

    void blocksDoNotReachOverLineEnds()
    {
        const QString text =
            QString(QChar(1)) + QStringLiteral("{\"displayName\":\"Ann\",\n\"data\":1}") + QChar(2);
        DrawableTextPrivate state;
        const LogCapture log;
        analyse(state, text);
        QCOMPARE(state.paragraphs, text.split(QLatin1Char('\n')));
        QCOMPARE(log.messages(), QStringList());
        QCOMPARE(state.spans, QVector<Spans>(2));
    }

    void lineEndInANameStaysInItsParagraph()
    {
        DrawableTextPrivate state;
        analyse(state, inBandBlock(QStringLiteral("A\nB"), QStringLiteral("d"), 1) + QStringLiteral("c"));
        QCOMPARE(state.paragraphs, QStringList({QStringLiteral("A\nBc")}));
        COMPARE_SPANS(state.spans.at(0), Spans({span(0, 2, SpanLink, QStringLiteral("A\nB"))}));
    }

    void eachParagraphHasItsOwnBlocks()
    {
        const QString ann = inBandBlock(QStringLiteral("Ann"), QStringLiteral("d"), 1);
        DrawableTextPrivate state;
        analyse(state, QStringLiteral("a ") + ann + QStringLiteral("\n\n") + ann + ann);
        const QString name = QStringLiteral("Ann");
        QCOMPARE(state.paragraphs,
                 QStringList({QStringLiteral("a Ann"), QString(), QStringLiteral("AnnAnn")}));
        COMPARE_SPANS(state.spans.at(0), Spans({span(2, 4, SpanLink, name)}));
        COMPARE_SPANS(state.spans.at(1), Spans());
        COMPARE_SPANS(state.spans.at(2), Spans({span(0, 2, SpanLink, name), span(3, 5, SpanLink, name)}));
    }

    void emojiCountOneInFrontOfAndInsideBlocks()
    {
        const QString name = grinning() + QStringLiteral("Ann") + family();
        DrawableTextPrivate state;
        analyse(state, QStringLiteral("a") + thumbsUpMediumTone() +
                           inBandBlock(name, QStringLiteral("d"), 1) + QStringLiteral("!"));
        QCOMPARE(state.paragraphs, QStringList({QStringLiteral("a\uEEEE\uEEEE"
                                                               "Ann\uEEEE!")}));
        COMPARE_SPANS(ofKind(state.spans.at(0), SpanLink), Spans({span(2, 6, SpanLink, name)}));
    }

    void elisionKeepsBlocksOutOfTheSpans()
    {
        const QString text = inBandBlock(QStringLiteral("Ann"), 7, 3);
        for (const Qt::TextElideMode mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight}) {
            DrawableTextPrivate state;
            state.elide = mode;
            state.elidedText = text;
            analyse(state, text);
            QCOMPARE(state.paragraphs, QStringList({text}));
            QVERIFY(state.spans.at(0).isEmpty());
        }
    }

    // ---- flattening for the ellipsis at the left or in the middle

    void leftAndMiddleElisionFlattenTheBlocks_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("flattens");
        QTest::newRow("none") << int(Qt::ElideNone) << false;
        QTest::newRow("left") << int(Qt::ElideLeft) << true;
        QTest::newRow("middle") << int(Qt::ElideMiddle) << true;
        QTest::newRow("right") << int(Qt::ElideRight) << false;
    }
    void leftAndMiddleElisionFlattenTheBlocks()
    {
        QFETCH(int, mode);
        QFETCH(bool, flattens);
        DrawableTextPrivate state;
        const QString text = inBandBlock(QStringLiteral("Ann"), 7, 3) + QStringLiteral(" and ") +
                             rawBlock(QStringLiteral("{\"displayName\":\"Bo\"}")) +
                             rawBlock(QStringLiteral("x"));
        prepare(state, text);
        state.elide = Qt::TextElideMode(mode);
        state.spans = {{span(0, 1, SpanAite), span(0, 1, SpanLink)}, {span(2, 3, SpanPlainAite)}};
        drawabletext::stripBlocksForElide(state);
        QCOMPARE(state.text, flattens ? QStringLiteral("Ann and Bo") + rawBlock(QStringLiteral("x")) : text);
        QCOMPARE(state.rawText, text);
        QCOMPARE(state.spans, QVector<Spans>({{span(0, 1, SpanLink)}, {}})); // mentions go in any mode
    }

    void blocksAreFlattenedAsTheirPatternSays()
    {
        const QRegularExpression pattern(
            QStringLiteral("\\x01[^\\x02]*\"displayName\"[^:]*:[^\"]*\"([^\"]*)\"[^\\x02]*\\x02"));
        QVERIFY(pattern.isValid());
        const QStringList pieces = {
            QString(QChar(1)),         QString(QChar(2)),    QStringLiteral("\"displayName\""),
            QStringLiteral(":"),       QStringLiteral("\""), QStringLiteral("a"),
            QStringLiteral("\n"),      QStringLiteral("\\"), QStringLiteral("displayName"),
            QStringLiteral("\"Ann\""), grinning(),           QStringLiteral("\"displayName\":\"Bo\"")};
        QRandomGenerator random(5);
        int flattened = 0;
        for (int round = 0; round < 20000; ++round) {
            QString text;
            for (int count = random.bounded(18); count > 0; --count)
                text += pieces.at(random.bounded(pieces.size()));
            QString expected = text;
            expected.replace(pattern, QStringLiteral("\\1"));
            QCOMPARE(flattenUserBlocks(text), expected);
            flattened += expected != text ? 1 : 0;
        }
        QVERIFY(flattened > 500);
    }

    void hostileBlocksAreFlattenedInReasonableTime_data()
    {
        QTest::addColumn<QString>("text");
        const QString name = QStringLiteral("\"displayName\":\"x\"");
        QTest::newRow("begins without end") << QString(QChar(2)) + QString(20000, QChar(1));
        QTest::newRow("names without end") << QString(QChar(2)) + QChar(1) + name.repeated(1000);
        QTest::newRow("begins and names without end")
            << QString(QChar(2)) + QString(QChar(1) + name).repeated(300);
        QTest::newRow("colons without end") << QString(QChar(2)) + QChar(1) +
                                                   QStringLiteral("\"displayName\"") +
                                                   QString(5000, QLatin1Char(':'));
    }
    void hostileBlocksAreFlattenedInReasonableTime()
    {
        QFETCH(QString, text);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(flattenUserBlocks(text), text);
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

    // ---- spans from the elision

    void spansOfTheElisionGoToTheOnlyParagraph_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Spans>("elided");
        QTest::addColumn<Spans>("spans");
        const QString five = QStringLiteral("abcde");
        QTest::newRow("inside") << five << Spans({span(0, 4, SpanLink)}) << Spans({span(0, 4, SpanLink)});
        QTest::newRow("cut") << five << Spans({span(3, 7, SpanLink)}) << Spans({span(3, 5, SpanLink)});
        QTest::newRow("cut at its last")
            << five << Spans({span(3, 5, SpanLink)}) << Spans({span(3, 5, SpanLink)});
        QTest::newRow("behind stops")
            << five << Spans({span(0, 1, SpanLink), span(5, 6, SpanLink), span(2, 3, SpanLink)})
            << Spans({span(0, 1, SpanLink)});
        QTest::newRow("two cut") << five << Spans({span(3, 7, SpanAite, 7), span(4, 9, SpanLink)})
                                 << Spans({span(3, 5, SpanAite, 7), span(4, 5, SpanLink)});
    }
    void spansOfTheElisionGoToTheOnlyParagraph()
    {
        QFETCH(QString, text);
        QFETCH(Spans, elided);
        QFETCH(Spans, spans);
        for (const Qt::TextElideMode mode : {Qt::ElideRight, Qt::ElideNone}) {
            DrawableTextPrivate state;
            state.elide = mode;
            state.elidedText = text;
            state.elidedSpans = elided;
            analyse(state, text);
            COMPARE_SPANS(state.spans.at(0), spans);
        }
    }

    void spansOfTheElisionTakeThePlaceOfTheBlocksInTheText()
    {
        const QString text = inBandBlock(QStringLiteral("Ann"), 7, 3);
        DrawableTextPrivate state;
        state.elidedSpans = {span(0, 1, SpanLink)};
        state.userBlocks = {block(2, 1, 1, QStringLiteral("x"))};
        analyse(state, text); // no elision any more, and still the spans of the last one
        QCOMPARE(state.paragraphs, QStringList({text}));
        COMPARE_SPANS(state.spans.at(0),
                      Spans({span(0, 1, SpanLink), span(2, 2, SpanLink, QStringLiteral("x"))}));
    }

    void spansOfTheElisionAreIgnoredWithMoreParagraphs()
    {
        DrawableTextPrivate state;
        state.elide = Qt::ElideRight;
        state.elidedText = QStringLiteral("a\nb");
        state.elidedSpans = {span(0, 0, SpanLink)};
        analyse(state, QStringLiteral("a\nb"));
        QCOMPARE(state.spans, QVector<Spans>(2));

        // Then blocks in the text count again, where they may.
        DrawableTextPrivate plain;
        plain.elidedSpans = {span(0, 0, SpanLink)};
        analyse(plain, QStringLiteral("a\n") + inBandBlock(QStringLiteral("Ann"), QStringLiteral("d"), 1));
        QCOMPARE(plain.paragraphs.at(1), QStringLiteral("Ann"));
        COMPARE_SPANS(plain.spans.at(1), Spans({span(0, 2, SpanLink, QStringLiteral("Ann"))}));
    }

    // ---- the list of blocks

    void listMarksTheText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVector<Spans>>("spans");
        QTest::addColumn<QVariantList>("list"); // start, length, type, data

        const QString x = QStringLiteral("x");
        QTest::newRow("kinds") << QStringLiteral("abcdefg")
                               << QVector<Spans>({{span(0, 0, 64, x), span(1, 1, 4, x), span(2, 2, 128, x),
                                                   span(3, 3, 1024, x), span(4, 4, 512, x),
                                                   span(5, 5, 256, x), span(6, 6, 64, x)}})
                               << QVariantList({0, 1, 0, x, 1, 1, 1, x, 2, 1, 2, x, 3, 1,
                                                4, x, 4, 1, 5, x, 5, 1, 6, x, 6, 1, 7, x});
        QTest::newRow("mention of somebody")
            << QStringLiteral("@Ann") << QVector<Spans>({{span(0, 3, 8, 7)}}) << QVariantList({0, 4, 3, 7});
        QTest::newRow("mention of nobody")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 2048, 0)}})
            << QVariantList({0, 4, 3, 0});
        QTest::newRow("mention with a negative id")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 2048, -1)}})
            << QVariantList({0, 4, 3, -1});
        QTest::newRow("mention with a name for an id")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 2048, x)}})
            << QVariantList({0, 4, 3, x});
        QTest::newRow("only mentions ask who")
            << QStringLiteral("@all") << QVector<Spans>({{span(0, 3, 4, 0)}}) << QVariantList({0, 4, 1, 0});
        QTest::newRow("emoji in front") << grinning() + QStringLiteral("abc")
                                        << QVector<Spans>({{span(1, 3, 4, x)}}) << QVariantList({2, 3, 1, x});
        QTest::newRow("emoji inside") << QStringLiteral("a") + family() + QStringLiteral("b")
                                      << QVector<Spans>({{span(0, 2, 4, x)}}) << QVariantList({0, 13, 1, x});
        QTest::newRow("sorted by start")
            << QStringLiteral("abcd")
            << QVector<Spans>({{span(0, 0, 4, 1), span(2, 2, 4, 2), span(3, 3, 4, 3)}})
            << QVariantList({3, 1, 1, 3, 0, 1, 1, 1, 2, 1, 1, 2});
        QTest::newRow("equal starts keep their order")
            << QStringLiteral("abcd")
            << QVector<Spans>({{span(1, 2, 4, 1), span(1, 1, 4, 2), span(1, 3, 4, 3)}})
            << QVariantList({1, 2, 1, 1, 1, 1, 1, 2, 1, 3, 1, 3});
        QTest::newRow("overlapping ones all stay")
            << QStringLiteral("abcdef") << QVector<Spans>({{span(0, 3, 4, 1), span(2, 5, 64, 2)}})
            << QVariantList({0, 4, 1, 1, 2, 4, 0, 2});
        QTest::newRow("second paragraph")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{}, {span(0, 1, 4, x)}})
            << QVariantList({3, 2, 1, x});
        QTest::newRow("up to the line end")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{span(0, 1, 4, x)}, {}})
            << QVariantList({0, 2, 1, x});
        // `to` = 2 is the line end itself, which the paragraph's end still covers.
        QTest::newRow("the line end included")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{span(0, 2, 4, x)}, {}})
            << QVariantList({0, 3, 1, x});
        // Does not fit the first paragraph, and is then measured from the second, with a negative start.
        QTest::newRow("over the line end")
            << QStringLiteral("ab\ncd") << QVector<Spans>({{}, {span(-2, 1, 4, x)}})
            << QVariantList({1, 4, 1, x});
        QTest::newRow("past the end")
            << QStringLiteral("abc") << QVector<Spans>({{}}) << QVariantList({3, 1, 1, x});
        QTest::newRow("ends past the end")
            << QStringLiteral("abc") << QVector<Spans>({{}}) << QVariantList({1, 3, 1, x});
        QTest::newRow("one that does not fit bars those behind it")
            << QStringLiteral("abc") << QVector<Spans>({{}}) << QVariantList({0, 9, 1, x, 1, 1, 1, x});
        // A paragraph's positions against an end in the whole text: too long for its paragraph and let
        // through.
        QTest::newRow("longer than a later paragraph")
            << QStringLiteral("abcdef\ngh") << QVector<Spans>({{}, {span(0, 8, 4, x)}})
            << QVariantList({7, 9, 1, x});
        QTest::newRow("negative start")
            << QStringLiteral("abc") << QVector<Spans>({{span(-2, 0, 4, x)}}) << QVariantList({-2, 3, 1, x});
        QTest::newRow("no length") << QStringLiteral("abc") << QVector<Spans>({{span(1, 0, 4, x)}})
                                   << QVariantList({1, 0, 1, x});
        QTest::newRow("negative length")
            << QStringLiteral("abc") << QVector<Spans>({{span(1, -3, 4, x)}}) << QVariantList({1, -3, 1, x});
        // The first begins where the emoji does, the second in its middle: both mean its one position.
        QTest::newRow("inside an emoji") << QStringLiteral("a") + grinning() + QStringLiteral("b")
                                         << QVector<Spans>({{span(1, 1, 4, x), span(1, 2, 4, x)}})
                                         << QVariantList({1, 2, 1, x, 2, 2, 1, x});
    }
    void listMarksTheText()
    {
        QFETCH(QString, text);
        QFETCH(QVector<Spans>, spans);
        QFETCH(QVariantList, list);
        DrawableTextPrivate state;
        for (int index = 0; index + 3 < list.size(); index += 4) {
            state.userBlocks.append(block(list.at(index).toInt(), list.at(index + 1).toInt(),
                                          list.at(index + 2).toInt(), list.at(index + 3)));
        }
        prepare(state, text);
        drawabletext::splitParagraphs(state);
        drawabletext::applyUserBlocks(state);
        QCOMPARE(state.spans.size(), spans.size());
        for (int index = 0; index < spans.size(); ++index)
            COMPARE_SPANS(state.spans.at(index), spans.at(index));
    }

    void listIsSortedInPlaceWhateverTheElision()
    {
        for (const Qt::TextElideMode mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight, Qt::ElideNone}) {
            DrawableTextPrivate state;
            state.elide = mode;
            state.elidedText = QStringLiteral("abcd");
            state.userBlocks = {block(2, 1, 1, 1), block(0, 1, 1, 2)};
            analyse(state, QStringLiteral("abcd"));
            QVERIFY(state.userBlocks == UserTextBlocks({block(0, 1, 1, 2), block(2, 1, 1, 1)}));
            const bool gives = mode == Qt::ElideNone || mode == Qt::ElideRight;
            QCOMPARE(state.spans.at(0).size(), gives ? 2 : 0);
        }
    }

    void ellipsisCountsForNothing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("elidedText");
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("fits");
        const QString cut = QStringLiteral("abc\u2026");
        QTest::newRow("cut") << QStringLiteral("abcdef") << cut << int(Qt::ElideRight) << false;
        QTest::newRow("the text's own ellipsis") << cut << cut << int(Qt::ElideRight) << true;
        QTest::newRow("no elision") << cut << QString() << int(Qt::ElideNone) << true;
        QTest::newRow("whole") << QStringLiteral("abcd") << QStringLiteral("abcd") << int(Qt::ElideRight)
                               << true;
    }
    void ellipsisCountsForNothing()
    {
        QFETCH(QString, text);
        QFETCH(QString, elidedText);
        QFETCH(int, mode);
        QFETCH(bool, fits);
        DrawableTextPrivate state;
        state.elide = Qt::TextElideMode(mode);
        state.elidedText = elidedText;
        state.userBlocks = {block(0, 3, 1, 1),
                            block(2, 2, 1, 2)}; // the second one reaches the last character
        analyse(state, text);
        QCOMPARE(state.spans.at(0).size(), fits ? 2 : 1);
    }

    void anyListGivesWhatTheRulesSay_data()
    {
        QTest::addColumn<int>("seed");
        for (int seed = 0; seed < 12; ++seed)
            QTest::addRow("seed %d", seed) << seed;
    }
    void anyListGivesWhatTheRulesSay()
    {
        QFETCH(int, seed);
        QRandomGenerator random(seed + 1);
        const QStringList pieces = {QStringLiteral("a"),
                                    QStringLiteral("b"),
                                    QStringLiteral(" "),
                                    QStringLiteral("\n"),
                                    grinning(),
                                    thumbsUpMediumTone(),
                                    family(),
                                    QStringLiteral("\u4e2d"),
                                    QStringLiteral("1"),
                                    QStringLiteral("\u2026"),
                                    QString(QChar(0xD83D)),
                                    QString(QChar(0xFE0F))};
        const QVector<QVariant> values = {0, 7, -1, QStringLiteral("x"), QVariant(), QStringLiteral("12")};
        int marked = 0;
        for (int round = 0; round < 150; ++round) {
            QString text;
            for (int count = random.bounded(14); count > 0; --count)
                text += pieces.at(random.bounded(pieces.size()));
            UserTextBlocks list;
            for (int count = random.bounded(7); count > 0; --count) {
                list.append(block(random.bounded(-3, text.size() + 4), random.bounded(-1, 7),
                                  random.bounded(-1, 9), values.at(random.bounded(values.size()))));
            }
            DrawableTextPrivate state;
            state.elide = random.bounded(3) == 0 ? Qt::ElideRight : Qt::ElideNone;
            state.elidedText = text.left(random.bounded(text.size() + 1)) + QChar(0x2026);
            state.userBlocks = list;
            prepare(state, text);
            drawabletext::splitParagraphs(state);
            const QStringList paragraphs = state.paragraphs;
            drawabletext::applyUserBlocks(state);
            const QVector<Spans> expected = spansOfList(paragraphs, text, state.elide, state.elideText, list);
            QCOMPARE(state.spans.size(), expected.size());
            for (int index = 0; index < expected.size(); ++index) {
                COMPARE_SPANS(state.spans.at(index), expected.at(index));
                marked += expected.at(index).size();
            }
        }
        QVERIFY(marked > 50); // or the comparison would say nothing
    }

    void positionsThatNoTextHasMarkNothing_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<int>("length");
        const int most = std::numeric_limits<int>::max();
        QTest::newRow("huge start") << most << 1;
        QTest::newRow("huge start and length") << most << most;
        QTest::newRow("huge length") << 0 << most;
        QTest::newRow("huge length behind the first character") << 1 << most;
        QTest::newRow("huge length in the second paragraph") << 6 << most;
    }
    void positionsThatNoTextHasMarkNothing()
    {
        QFETCH(int, start);
        QFETCH(int, length);
        DrawableTextPrivate state;
        state.userBlocks = {block(start, length, 1, 1)};
        analyse(state, QStringLiteral("a") + grinning() + QStringLiteral("b\ncd"));
        for (const Spans &spans : qAsConst(state.spans))
            QVERIFY(ofKind(spans, SpanLink).isEmpty());
    }

    void negativeExtremesDoNoHarm()
    {
        const int least = std::numeric_limits<int>::min();
        for (const int start : {least, least + 1, -1}) {
            for (const int length : {least, least + 1, -1, 0, 1, std::numeric_limits<int>::max()}) {
                DrawableTextPrivate state;
                state.userBlocks = {block(start, length, 3, 1)};
                analyse(state, QStringLiteral("a") + grinning() + QStringLiteral("b\ncd"));
                drawabletext::buildParagraphFormats(state);
                QCOMPARE(state.paragraphs.size(), 2);
            }
        }
    }

    // ---- emoji

    void excessIsThatOfTheParsedText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("excess");
        QTest::newRow("empty") << QString() << 0;
        QTest::newRow("plain") << QStringLiteral("abc") << 0;
        QTest::newRow("one") << grinning() << 1;
        QTest::newRow("family") << QStringLiteral("a") + family() << 10;
        QTest::newRow("three") << grinning() + QStringLiteral("a") + thumbsUpMediumTone() + grinning() << 5;
        QTest::newRow("half") << grinning().left(1) << 0;
    }
    void excessIsThatOfTheParsedText()
    {
        QFETCH(QString, text);
        QFETCH(int, excess);
        QCOMPARE(drawabletext::emojiExcess(text), excess);
    }

    void excessOfEachPrefixIsThatOfThePrefixParsed()
    {
        const QString text = QStringLiteral("1\u20e3 a") + family() + grinning() + QChar(0xFE0F) +
                             thumbsUpMediumTone() + QStringLiteral("\u2764\ufe0f\u2764") + QChar(0xD83C) +
                             QString::fromUcs4(U"\U0001F1E8\U0001F1F3\U0001F1FA\U0001F1F8", 4) +
                             QStringLiteral("b\u4e2d");
        const drawabletext::EmojiPrefixes prefixes(text);
        for (int length = -3; length <= text.size() + 3; ++length)
            QCOMPARE(prefixes.excess(length), excessByDefinition(text.mid(0, length)));
        QVERIFY(excessByDefinition(text) > 12);
    }

    void excessOfRandomPrefixesIsThatOfThePrefixParsed()
    {
        QRandomGenerator random(99);
        const QStringList pieces = {grinning(),
                                    thumbsUpMediumTone(),
                                    family(),
                                    QString(QChar(0x200D)),
                                    QString(QChar(0xFE0F)),
                                    QString(QChar(0xFE0E)),
                                    QStringLiteral("1"),
                                    QString(QChar(0x20E3)),
                                    QString::fromUcs4(U"\U0001F1E8", 1),
                                    QString::fromUcs4(U"\U0001F3FD", 1),
                                    QStringLiteral("\u2764"),
                                    QStringLiteral("a"),
                                    QString(QChar(0xDE00)),
                                    QString::fromUcs4(U"\U0001F469", 1)};
        for (int round = 0; round < 400; ++round) {
            QString text;
            for (int count = random.bounded(12); count > 0; --count)
                text += pieces.at(random.bounded(pieces.size()));
            const drawabletext::EmojiPrefixes prefixes(text);
            for (int length = 0; length <= text.size(); ++length) {
                const int found = prefixes.excess(length);
                const int expected = excessByDefinition(text.left(length));
                QVERIFY2(found == expected, qPrintable(QStringLiteral("%1 of %2")
                                                           .arg(length)
                                                           .arg(QString::fromLatin1(text.toUtf8().toHex()))));
            }
        }
    }

    void emojiBecomeOnePlaceholderEach()
    {
        DrawableTextPrivate state;
        analyse(state, QStringLiteral("a") + grinning() + QStringLiteral("b") + family() +
                           thumbsUpMediumTone() + QStringLiteral("\nplain\n") + grinning());
        QCOMPARE(state.paragraphs, QStringList({QStringLiteral("a\uEEEEb\uEEEE\uEEEE"),
                                                QStringLiteral("plain"), QStringLiteral("\uEEEE")}));
        QVERIFY(state.hasEmoji);
        QCOMPARE(state.emojiCount, 4);
        COMPARE_SPANS(state.spans.at(0),
                      Spans({span(1, 1, SpanEmoji), span(3, 3, SpanEmoji), span(4, 4, SpanEmoji)}));
        COMPARE_SPANS(state.spans.at(1), Spans());
        COMPARE_SPANS(state.spans.at(2), Spans({span(0, 0, SpanEmoji)}));
        QCOMPARE(state.emojis.size(), 3);
        QCOMPARE(state.emojis.at(1).size(), 0);
        const QVector<EmojiRecord> records = state.emojis.at(0);
        QCOMPARE(records.size(), 3);
        const QStringList texts = {grinning(), family(), thumbsUpMediumTone()};
        const QList<int> positions = {1, 3, 4};
        QVERIFY(state.emojiSize > 0.0);
        for (int index = 0; index < 3; ++index) {
            QCOMPARE(records.at(index).pos, positions.at(index));
            QCOMPARE(records.at(index).length, 1);
            QCOMPARE(records.at(index).rect, QRectF(0, 0, state.emojiSize, state.emojiSize));
            QCOMPARE(records.at(index).text, texts.at(index));
            QCOMPARE(records.at(index).unicode, EmojiConvert::instance()->emojiUnicode(texts.at(index)));
        }
        QCOMPARE(records.at(0).unicode, QStringLiteral("1f600"));
    }

    void emojiSpansStandBehindThoseOfBlocks()
    {
        DrawableTextPrivate state;
        state.userBlocks = {block(3, 1, 1, 7)};
        analyse(state, grinning() + QStringLiteral("ab"));
        COMPARE_SPANS(state.spans.at(0), Spans({span(2, 2, SpanLink, 7), span(0, 0, SpanEmoji)}));
    }

    void emojiInAnOverqualifiedFormIsRecognised_data()
    {
        QTest::addColumn<QString>("known");
        QTest::newRow("simple") << grinning();
        QTest::newRow("joined") << family(); // its joiners must stay where the selector goes
    }
    void emojiInAnOverqualifiedFormIsRecognised()
    {
        QFETCH(QString, known);
        const QString overqualified = known + QChar(0xFE0F);
        QVERIFY(!EmojiConvert::instance()->containsEmoji(overqualified));
        DrawableTextPrivate state;
        analyse(state, overqualified + QStringLiteral("a"));
        QCOMPARE(state.paragraphs, QStringList({collapsedEmoji + QStringLiteral("a")}));
        QCOMPARE(state.emojis.at(0).at(0).text, overqualified); // as it stood
        QCOMPARE(state.emojis.at(0).at(0).unicode, EmojiConvert::instance()->emojiUnicode(known));
        QCOMPARE(drawabletext::knownEmojiForm(overqualified), known);
        QCOMPARE(drawabletext::knownEmojiForm(known), known);
        QCOMPARE(drawabletext::knownEmojiForm(QStringLiteral("a")), QString());
    }

    void emojiAreCountedAnewAtEachPass()
    {
        DrawableTextPrivate state;
        analyse(state, grinning() + grinning());
        QCOMPARE(state.emojiCount, 2);
        analyse(state, QStringLiteral("plain"));
        QCOMPARE(state.emojiCount, 0);
        QCOMPARE(state.emojis.size(), 1);
        QVERIFY(state.emojis.at(0).isEmpty());
        QVERIFY(state.hasEmoji); // once seen, it stays
    }

    void placeholdersInTheTextAreNoEmoji()
    {
        DrawableTextPrivate state;
        analyse(state, QStringLiteral("a\uEEEEb"));
        QCOMPARE(state.paragraphs, QStringList({QStringLiteral("a\uEEEEb")}));
        QVERIFY(state.emojis.at(0).isEmpty());
        QVERIFY(!state.hasEmoji);
    }

    // ---- highlights

    void highlightsMarkEachWord_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("highlight");
        QTest::addColumn<bool>("onlyFirst");
        QTest::addColumn<QVector<Spans>>("spans");
        const auto mark = [](int from, int to) { return span(from, to, SpanHighlight); };
        const QString text = QStringLiteral("one two One twotwo");
        QTest::newRow("nothing") << text << QString() << false << QVector<Spans>({{}});
        QTest::newRow("only spaces") << text << QStringLiteral("  ") << false << QVector<Spans>({{}});
        QTest::newRow("any case") << text << QStringLiteral("ONE") << false
                                  << QVector<Spans>({{mark(0, 2), mark(8, 10)}});
        QTest::newRow("word by word")
            << text << QStringLiteral(" two  one ") << false
            << QVector<Spans>({{mark(4, 6), mark(12, 14), mark(15, 17), mark(0, 2), mark(8, 10)}});
        QTest::newRow("first of each")
            << text << QStringLiteral("two one") << true << QVector<Spans>({{mark(4, 6), mark(0, 2)}});
        QTest::newRow("no overlap") << QStringLiteral("aaaaa") << QStringLiteral("aa") << false
                                    << QVector<Spans>({{mark(0, 1), mark(2, 3)}});
        QTest::newRow("paragraphs") << QStringLiteral("b\nab\nB") << QStringLiteral("b") << false
                                    << QVector<Spans>({{mark(0, 0)}, {mark(1, 1)}, {mark(0, 0)}});
        QTest::newRow("first of all paragraphs") << QStringLiteral("a\nab\nB") << QStringLiteral("b") << true
                                                 << QVector<Spans>({{}, {mark(1, 1)}, {}});
        QTest::newRow("behind an emoji")
            << grinning() + QStringLiteral("b") + family() + QStringLiteral("b") << QStringLiteral("b")
            << false << QVector<Spans>({{mark(1, 1), mark(3, 3)}});
        QTest::newRow("an emoji") << QStringLiteral("a") + grinning() << grinning() << false
                                  << QVector<Spans>({{mark(1, 1)}});
    }
    void highlightsMarkEachWord()
    {
        QFETCH(QString, text);
        QFETCH(QString, highlight);
        QFETCH(bool, onlyFirst);
        QFETCH(QVector<Spans>, spans);
        DrawableTextPrivate state;
        state.highlightText = highlight;
        state.onlyHighlightFirstMatchedEnabled = onlyFirst;
        analyse(state, text);
        drawabletext::matchHighlights(state);
        drawabletext::matchHighlights(state); // a second pass replaces the marks of the first
        QCOMPARE(state.spans.size(), spans.size());
        for (int index = 0; index < spans.size(); ++index)
            COMPARE_SPANS(ofKind(state.spans.at(index), SpanHighlight), spans.at(index));
    }

    void highlightsAreSearchedInTheSourceOfBlocks()
    {
        // Positions of the text with its JSON, where "data" and what follows the block do not fit the layout
        // text.
        const QString ann = inBandBlock(QStringLiteral("Ann"), 7, 3);
        const QString text = ann + QStringLiteral(" data");
        DrawableTextPrivate state;
        state.highlightText = QStringLiteral("data");
        analyse(state, text);
        drawabletext::matchHighlights(state);
        const int inside = ann.indexOf(QStringLiteral("data"));
        const int behind = ann.size() + 1;
        COMPARE_SPANS(
            ofKind(state.spans.at(0), SpanHighlight),
            Spans({span(inside, inside + 3, SpanHighlight), span(behind, behind + 3, SpanHighlight)}));
    }

    // ---- text blocks

    void textBlocksGoToTheirParagraphs()
    {
        DrawableTextPrivate state;
        state.textBlocks = {{0, {span(0, 0, SpanTextBlock, 1), span(1, 1, SpanTextBlock, 2)}},
                            {1, {span(0, 9, SpanTextBlock, 3)}},
                            {2, {span(0, 0, SpanTextBlock, 4)}}};
        analyse(state, QStringLiteral("ab\ncd"));
        drawabletext::mergeTextBlocks(state);
        COMPARE_SPANS(state.spans.at(0), Spans({span(0, 0, SpanTextBlock, 1), span(1, 1, SpanTextBlock, 2)}));
        COMPARE_SPANS(state.spans.at(1), Spans({span(0, 9, SpanTextBlock, 3)}));
        QCOMPARE(state.textBlocks.size(), 3);
        analyse(state, QStringLiteral("ab\ncd\nef")); // the third waited for its paragraph
        drawabletext::mergeTextBlocks(state);
        COMPARE_SPANS(state.spans.at(0), Spans({span(0, 0, SpanTextBlock, 1), span(1, 1, SpanTextBlock, 2)}));
        COMPARE_SPANS(state.spans.at(2), Spans({span(0, 0, SpanTextBlock, 4)}));
    }

    void textBlockOfANegativeParagraphDoesNoHarm()
    {
        DrawableTextPrivate state;
        state.textBlocks = {{-1, {span(0, 0, SpanTextBlock, 1)}}, {0, {span(1, 1, SpanTextBlock, 2)}}};
        analyse(state, QStringLiteral("ab"));
        drawabletext::mergeTextBlocks(state);
        COMPARE_SPANS(state.spans.at(0), Spans({span(1, 1, SpanTextBlock, 2)}));
    }

    // ---- formats

    void eachKindHasItsFormat()
    {
        DrawableTextPrivate state;
        state.font.setPixelSize(23);
        state.measureFont();
        state.color = QColor(1, 0, 0);
        state.linkColor = QColor(2, 0, 0);
        state.emailColor = QColor(3, 0, 0);
        state.phoneColor = QColor(4, 0, 0);
        state.sharpColor = QColor(5, 0, 0);
        state.aiteColor = QColor(6, 0, 0);
        state.textBlockColor = QColor(7, 0, 0);
        state.bubbleColor = QColor(8, 0, 0);
        state.highlightColor = QColor(9, 0, 0);
        state.highlightBgColor = QColor(10, 0, 0);
        state.selectionColor = QColor(11, 0, 0);
        state.selectedTextColor = QColor(12, 0, 0);
        drawabletext::buildCharFormats(state);

        QCOMPARE(state.charFormats.keys(),
                 QList<int>({SpanText, SpanEmoji, SpanLink, SpanAite, SpanHighlight, SpanSelection,
                             SpanTextBlock, SpanEmail, SpanSharp, SpanOstrelId, SpanPlainAite}));
        struct Expected
        {
            int kind;
            int userProperty;
            int foreground;
        };
        const Expected table[] = {{SpanEmoji, 2, 1},        {SpanTextBlock, 64, 7}, {SpanText, 1, 1},
                                  {SpanPlainAite, 2048, 1}, {SpanHighlight, 16, 9}, {SpanAite, 8, 6},
                                  {SpanOstrelId, 8, 6},     {SpanLink, 4, 2},       {SpanEmail, 128, 3},
                                  {SpanSharp, 256, 5},      {SpanSelection, 32, 12}};
        for (const Expected &entry : table) {
            const QTextCharFormat format = state.charFormats.value(entry.kind);
            QCOMPARE(format.intProperty(QTextFormat::UserProperty), entry.userProperty);
            QCOMPARE(format.foreground().color(), QColor(entry.foreground, 0, 0));
            const bool underlineTold = entry.kind != SpanEmoji && entry.kind != SpanTextBlock;
            QCOMPARE(format.hasProperty(QTextFormat::TextUnderlineStyle), underlineTold);
            QCOMPARE(format.underlineStyle(), QTextCharFormat::NoUnderline);
            const bool hasFont = entry.kind == SpanText || entry.kind == SpanPlainAite;
            QCOMPARE(format.hasProperty(QTextFormat::FontPixelSize), hasFont);
            if (hasFont)
                QCOMPARE(format.font().pixelSize(), 23);
            QVERIFY(hasFont || !format.hasProperty(QTextFormat::FontWeight));
            QCOMPARE(format.isAnchor(), entry.kind == SpanHighlight);
            const bool hasBackground = entry.kind == SpanHighlight || entry.kind == SpanSelection;
            QCOMPARE(format.hasProperty(QTextFormat::BackgroundBrush), hasBackground);
        }
        QCOMPARE(state.charFormats.value(SpanHighlight).background().color(), QColor(10, 0, 0));
        QCOMPARE(state.charFormats.value(SpanSelection).background().color(), QColor(11, 0, 0));
    }

    void coloursThatAreMissingFallBackToThatOfLinks()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.linkColor = Qt::green;
        drawabletext::buildCharFormats(state);
        for (const int kind : {SpanAite, SpanOstrelId, SpanEmail, SpanSharp, SpanLink})
            QCOMPARE(state.charFormats.value(kind).foreground().color(), QColor(Qt::green));
    }

    void transparentHighlightsLeaveTheTextItsColours()
    {
        DrawableTextPrivate state;
        state.measureFont();
        drawabletext::buildCharFormats(state);
        const QTextCharFormat format = state.charFormats.value(SpanHighlight);
        QVERIFY(!format.hasProperty(QTextFormat::ForegroundBrush));
        QVERIFY(!format.hasProperty(QTextFormat::BackgroundBrush));
        QVERIFY(format.isAnchor());

        state.highlightColor = Qt::red;
        drawabletext::buildCharFormats(state);
        QCOMPARE(state.charFormats.value(SpanHighlight).foreground().color(), QColor(Qt::red));
        state.highlightColor = Qt::transparent;
        drawabletext::buildCharFormats(state);
        QVERIFY(!state.charFormats.value(SpanHighlight).hasProperty(QTextFormat::ForegroundBrush));
    }

    void boldBlocksAreHeavier()
    {
        DrawableTextPrivate state;
        state.font.setPixelSize(23);
        state.font.setItalic(true);
        state.measureFont();
        state.userBlockBold = true;
        drawabletext::buildCharFormats(state);
        QCOMPARE(state.charFormats.value(SpanTextBlock).intProperty(QTextFormat::FontWeight), 57);
        QVERIFY(!state.charFormats.value(SpanTextBlock).hasProperty(QTextFormat::FontPixelSize));
        for (const int kind : {SpanAite, SpanOstrelId}) {
            const QFont font = state.charFormats.value(kind).font();
            QCOMPARE(font.weight(), 75);
            QCOMPARE(font.pixelSize(), 23);
            QVERIFY(font.italic());
        }
        for (const int kind : {SpanLink, SpanEmail, SpanSharp, SpanHighlight, SpanEmoji})
            QVERIFY(!state.charFormats.value(kind).hasProperty(QTextFormat::FontWeight));
        QVERIFY(state.charFormats.value(SpanText).font().weight() != 75);
        state.userBlockBold = false;
        drawabletext::buildCharFormats(state);
        QVERIFY(!state.charFormats.value(SpanTextBlock).hasProperty(QTextFormat::FontWeight));
        QVERIFY(!state.charFormats.value(SpanAite).hasProperty(QTextFormat::FontWeight));
    }

    void rangesFollowThePositionsOfTheirSpans()
    {
        DrawableTextPrivate state;
        prepare(state, QStringLiteral("abcdefghijkl\nx"));
        drawabletext::buildCharFormats(state);
        drawabletext::splitParagraphs(state);
        state.spans[0] = {span(8, 8, SpanTextBlock),   span(7, 7, SpanHighlight), span(6, 6, SpanSharp),
                          span(5, 5, SpanPhone),       span(4, 4, SpanEmail),     span(2, 3, SpanLink),
                          span(1, 1, SpanOstrelId),    span(0, 0, SpanAite),      span(9, 9, SpanEmoji),
                          span(10, 10, SpanPlainAite), span(11, 11, SpanText)};
        drawabletext::buildParagraphFormats(state);
        QCOMPARE(state.paragraphFormats.size(), 2);
        QCOMPARE(state.paragraphFormats.at(1).size(), 0);
        const QVector<QTextLayout::FormatRange> ranges = state.paragraphFormats.at(0);
        const int kinds[] = {SpanAite,  SpanOstrelId, SpanLink,      SpanEmail,
                             SpanPhone, SpanSharp,    SpanHighlight, SpanTextBlock};
        const int starts[] = {0, 1, 2, 4, 5, 6, 7, 8};
        QCOMPARE(ranges.size(), 8);
        for (int index = 0; index < 8; ++index) {
            QCOMPARE(ranges.at(index).start, starts[index]);
            QCOMPARE(ranges.at(index).length, kinds[index] == SpanLink ? 2 : 1);
            QCOMPARE(ranges.at(index).format, state.charFormats.value(kinds[index]));
        }
        // Phone numbers look like the text around them.
        QCOMPARE(ranges.at(4).format, QTextCharFormat());
    }

    void rangesThatRepeatTheirPredecessorGo()
    {
        DrawableTextPrivate state;
        prepare(state, QStringLiteral("abcdef"));
        drawabletext::splitParagraphs(state);
        const TextSpan link = span(1, 2, SpanLink, 7);
        state.spans[0] = {
            link, link, link, span(4, 4, SpanLink, 7), span(5, 5, SpanLink, 7), span(5, 5, SpanLink, 7)};
        drawabletext::buildParagraphFormats(state);
        QCOMPARE(state.paragraphFormats.at(0).size(), 3);

        state.spans[0] = {link, span(1, 2, SpanLink, 8), span(1, 3, SpanLink, 7), span(1, 2, SpanEmail, 7)};
        drawabletext::buildParagraphFormats(state);
        QCOMPARE(state.paragraphFormats.at(0).size(), 4); // each differs in something
    }

    void rangesMayOverlap()
    {
        DrawableTextPrivate state;
        prepare(state, QStringLiteral("abcdef"));
        drawabletext::splitParagraphs(state);
        state.spans[0] = {span(0, 4, SpanLink, 7), span(2, 9, SpanTextBlock, 7)};
        drawabletext::buildParagraphFormats(state);
        const auto ranges = state.paragraphFormats.at(0);
        QCOMPARE(ranges.size(), 2);
        QCOMPARE(ranges.at(0).start, 0);
        QCOMPARE(ranges.at(0).length, 5);
        QCOMPARE(ranges.at(1).start, 2);
        QCOMPARE(ranges.at(1).length, 8); // as handed in, past the end
    }

    void untilAColourIsSetSpansLookLikeText()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setUserBlocks(QVariant::fromValue(UserTextBlocks({block(0, 2, 1, QStringLiteral("x"))})));
        item.setText(QStringLiteral("abc"));
        QCOMPARE(item.state()->paragraphFormats.at(0).size(), 1);
        QCOMPARE(item.state()->paragraphFormats.at(0).at(0).format, QTextCharFormat());
        QCOMPARE(item.state()->charFormats.keys(), QList<int>({SpanLink})); // made by the asking
        item.setLinkColor(Qt::red);
        QCOMPARE(item.state()->paragraphFormats.at(0).at(0).format.foreground().color(), QColor(Qt::red));
    }

    void storedColoursWaitForTheNextRebuilding()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setText(QStringLiteral("abc"));
        item.setLinkColor(Qt::red);
        item.setEmailColor(Qt::green);
        item.setText(QStringLiteral("abcd")); // no character format is dirty
        QCOMPARE(item.state()->charFormats.value(SpanEmail).foreground().color(), QColor(Qt::red));
        item.setAiteColor(Qt::yellow);
        QCOMPARE(item.state()->charFormats.value(SpanEmail).foreground().color(), QColor(Qt::green));
    }

    void mentionOfNobodyHasASpanAndNoRange()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setUserBlocks(QVariant::fromValue(UserTextBlocks({block(0, 4, 3, 0)})));
        item.setText(QStringLiteral("@all hi"));
        COMPARE_SPANS(item.state()->spans.at(0), Spans({span(0, 3, SpanPlainAite, 0)}));
        QVERIFY(item.state()->paragraphFormats.at(0).isEmpty());
    }

    void newLinkColourLosesTheHighlights()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setHighlightText(QStringLiteral("b"));
        item.setText(QStringLiteral("abc"));
        QCOMPARE(item.state()->paragraphFormats.at(0).size(), 1);
        item.setLinkColor(Qt::red);
        QCOMPARE(item.state()->paragraphFormats.at(0).size(), 0);
        QVERIFY(item.state()->spans.at(0).isEmpty());
        item.setHighlightColor(Qt::green); // its own colour brings them back
        QCOMPARE(item.state()->paragraphFormats.at(0).size(), 1);
        item.setReserveSpace(true); // marks nothing: the spans go, the ranges stay
        QVERIFY(item.state()->spans.at(0).isEmpty());
        QCOMPARE(item.state()->paragraphFormats.at(0).size(), 1);
    }

    // ---- foreign input

    void roughTextIsTakenAsItIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("lone high surrogate") << QStringLiteral("a") + QChar(0xD83D) + QStringLiteral("b");
        QTest::newRow("lone low surrogate") << QStringLiteral("a") + QChar(0xDE00) + QStringLiteral("b");
        QTest::newRow("surrogates the wrong way round") << QString(QChar(0xDE00)) + QChar(0xD83D);
        QTest::newRow("object replacement") << QString(QChar(0xFFFC));
        QTest::newRow("bidirectional controls") << QStringLiteral("a\u202Eb\u2066c\u2069\u202C\u200Fd");
        QTest::newRow("null characters") << QString(5, QChar(0));
        QTest::newRow("combining marks") << QStringLiteral("a") + QString(1000, QChar(0x0301));
        QTest::newRow("joiners") << QString(1000, QChar(0x200D));
        QTest::newRow("variation selectors") << QString(1000, QChar(0xFE0F));
        QTest::newRow("noncharacters") << QStringLiteral("\uFFFE\uFFFF");
    }
    void roughTextIsTakenAsItIs()
    {
        QFETCH(QString, text);
        DrawableTextPrivate state;
        state.highlightText = QStringLiteral("b \u0301");
        state.userBlocks = {block(0, text.size(), 3, 7), block(1, 1, 1, 7)};
        analyse(state, text);
        drawabletext::matchHighlights(state);
        drawabletext::buildParagraphFormats(state);
        QCOMPARE(state.paragraphs, QStringList({text}));
        QVERIFY(state.emojis.at(0).isEmpty());
        QCOMPARE(ofKind(state.spans.at(0), SpanAite), Spans({span(0, text.size() - 1, SpanAite, 7)}));
    }

    void manyBlocksAreExpandedInReasonableTime()
    {
        const int count = 2000;
        QElapsedTimer timer;
        timer.start();
        DrawableTextPrivate state;
        analyse(state,
                (grinning() + inBandBlock(QStringLiteral("Ann"), QStringLiteral("d"), 1)).repeated(count));
        QCOMPARE(state.paragraphs.at(0).size(), count * 4);
        const Spans links = ofKind(state.spans.at(0), SpanLink);
        QCOMPARE(links.size(), count);
        for (int index = 0; index < count; ++index) {
            QCOMPARE(links.at(index).from, index * 4 + 1);
            QCOMPARE(links.at(index).to, index * 4 + 3);
        }
        QVERIFY2(timer.elapsed() < 60000, qPrintable(QString::number(timer.elapsed())));
    }

    void fiveMillionCharactersAreAnalysedInReasonableTime()
    {
        const QString line =
            QStringLiteral("0123456789 abcdefgh ") + grinning() + QStringLiteral("xyz 1234567890 \u4e2d\n");
        const int lines = 5'000'000 / line.size() + 1;
        QElapsedTimer timer;
        timer.start();
        DrawableTextPrivate state;
        state.highlightText = QStringLiteral("XYZ");
        const int last = (lines - 1) * line.size();
        state.userBlocks = {block(last, 10, 1, 7)};
        analyse(state, line.repeated(lines));
        drawabletext::matchHighlights(state);
        drawabletext::buildParagraphFormats(state);
        QCOMPARE(state.paragraphs.size(), lines);
        QCOMPARE(state.emojiCount, lines);
        const int expected = line.indexOf(QStringLiteral("xyz")) - 1;
        COMPARE_SPANS(state.spans.last(),
                      Spans({span(0, 9, SpanLink, 7), span(expected - 1, expected - 1, SpanEmoji),
                             span(expected, expected + 2, SpanHighlight)}));
        QVERIFY2(timer.elapsed() < 100000, qPrintable(QString::number(timer.elapsed())));
    }
};

QTEST_MAIN(TestAnalysis)
#include "tst_analysis.moc"
