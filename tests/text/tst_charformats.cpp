// Character formats and the ranges that they get.

#include "analysissteps.h"
#include "text/charformats.h"

#include <QtTest>

using namespace textengine;

class TestCharFormats : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
};

QTEST_MAIN(TestCharFormats)
#include "tst_charformats.moc"
