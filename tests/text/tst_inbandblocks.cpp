// Blocks inside the text: found, flattened, or left as they are.

#include "analysissteps.h"
#include "text/userblocks.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>
#include <limits>

using namespace textengine;

class TestInBandBlocks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

QTEST_MAIN(TestInBandBlocks)
#include "tst_inbandblocks.moc"
