// From the text to paragraphs, emoji and highlights, step by step on a bare state.

#include "analysissteps.h"
#include "text/charformats.h"
#include "text/highlights.h"

#include <QRandomGenerator>
#include <QtTest>
#include <emoji/emojiconvert.h>

using namespace textengine;

namespace {

QString padded(const QString &inner, int leading, int trailing)
{
    return QString(leading, QChar(0xA0)) + inner + QString(trailing, QChar(0xA0));
}

} // namespace

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
