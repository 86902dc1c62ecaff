// The layout and the elision leave out work that changes nothing. Here they are held against plain
// transcriptions of their rules that take every step every time, on random texts.

#include "text/drawabletextprivate.h"
#include "text/elidedlines.h"
#include "text/emojitext.h"
#include "text/layout.h"
#include "text/paragraphs.h"
#include "text/punctuation.h"

#include <QFontMetricsF>
#include <QRandomGenerator>
#include <QTextLayout>
#include <QtTest>

#include <memory>

namespace {

constexpr ushort emoji = 0xeeee;

// ---- random input

QString randomText(QRandomGenerator &random, int pieces)
{
    static const QStringList vocabulary = {
        QStringLiteral("a"),
        QStringLiteral("office"),
        QStringLiteral("AVATAR"),
        QStringLiteral("fjord's"),
        QStringLiteral("(f)"),
        QStringLiteral("incomprehensibilities"),
        QStringLiteral("3.14"),
        QStringLiteral("https://example.org/a/b?c=d"),
        QString::fromUtf8("\u4f60\u597d"),
        QString::fromUtf8("\u4eca\u5929\u5929\u6c14\u4e0d\u9519"),
        QString::fromUtf8("\u3002"),
        QString::fromUtf8("\uff0c"),
        QString::fromUtf8("\uff09"),
        QString::fromUtf8("\u300b\u300b\u201d"),
        QString::fromUtf8("\uff01\uff01\uff01\uff01\uff01\uff01\uff01\uff01\uff01\uff01\uff01\uff01"),
        QString::fromUtf8("\u3010\u4e00\u3011"),
        QString::fromUtf8("\u0645\u0631\u062d\u0628\u0627"),
        QString::fromUtf8("\u05e9\u05dc\u05d5\u05dd"),
        QString::fromUtf8("e\u0301\u0302"),
        QString::fromUtf8("soft\u00adhyphen\u00adated"),
        QString::fromUtf8("\u00a0\u00a0"),
        QString(QChar(emoji)),
        QString(3, QChar(emoji)),
        QStringLiteral("\t"),
        QStringLiteral("   "),
        QStringLiteral("..."),
        QStringLiteral("!?"),
    };
    QString text;
    for (int i = 0; i < pieces; ++i) {
        text += vocabulary.at(random.bounded(vocabulary.size()));
        if (random.bounded(3) == 0)
            text += QLatin1Char(' ');
    }
    return text;
}

/// A stretch without a place to break, longer than a page.
QString longWord(QRandomGenerator &random, int length)
{
    static const QString letters = QString::fromUtf8("abcdefijlmwWAV\u00a0\u0301\u05d0\u05d1");
    QString text;
    for (int i = 0; i < length; ++i)
        text += letters.at(random.bounded(letters.size()));
    return text;
}

double oneOf(QRandomGenerator &random, std::initializer_list<double> values)
{
    return *(values.begin() + random.bounded(int(values.size())));
}

QFont randomFont(QRandomGenerator &random)
{
    QFont font(random.bounded(2) == 0 ? QStringLiteral("Noto Serif") : QStringLiteral("DejaVu Sans"));
    font.setPixelSize(random.bounded(9, 40));
    // Slanted letters hang over their cells, which decides breaks.
    font.setItalic(random.bounded(2) == 0);
    if (random.bounded(8) == 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, oneOf(random, {-2.0, 3.0}));
    return font;
}

void fillState(DrawableTextPrivate &state, QRandomGenerator &random)
{
    state.font = randomFont(random);
    state.measureFont();
    state.maxWidth = oneOf(random, {1.0, 30.0, 97.3, 200.0, 311.11, 640.0, 5000.0});
    state.wrapMode = QTextOption::WrapMode(random.bounded(2) == 0 ? 4 : random.bounded(5));
    state.maximumLineCount = int(oneOf(random, {-1, -1, -1, 1, 3}));
    state.alignment =
        Qt::Alignment(int(oneOf(random, {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight, 0x84})));
    state.textIndent = oneOf(random, {0.0, 0.0, 17.5, -4.0});
    state.leading = oneOf(random, {0.0, 3.25});
    state.tabWidth = oneOf(random, {30.0, 0.0, 77.7});
    state.padding = oneOf(random, {0.0, 0.0, 4.0});
    state.leftPadding = oneOf(random, {0.0, 9.0});
    state.topPadding = oneOf(random, {0.0, 2.5});
    state.rightPadding = oneOf(random, {0.0, 11.0});
    state.bottomPadding = oneOf(random, {0.0, 6.0});
    state.reserveSpace = random.bounded(4) == 0;
    state.reservedWidth = int(oneOf(random, {0, 0, 40, 300}));
    state.fixedWidth = int(oneOf(random, {-1, -1, -1, 120}));
    state.multilineMinWidth = oneOf(random, {-1.0, 150.0, 5000.0});
    state.willChangeLineMode = random.bounded(2) == 0;
}

void addParagraph(DrawableTextPrivate &state, QRandomGenerator &random, const QString &text)
{
    state.paragraphs.append(text);
    QVector<QTextLayout::FormatRange> formats;
    if (!text.isEmpty() && random.bounded(2) == 0) {
        QTextLayout::FormatRange range;
        range.start = random.bounded(text.size());
        range.length = random.bounded(1, 12);
        QFont bold = state.font;
        bold.setBold(true);
        range.format.setFont(bold);
        formats.append(range);
    }
    state.paragraphFormats.append(formats);
}

// ---- the rules of the layout, step by step

struct LaidOut
{
    std::vector<std::unique_ptr<QTextLayout>> layouts;
    int lineCount = 0;
    double maxLineWidth = 0.0;
    double contentWidth = 0.0;
    double contentHeight = 0.0;
    double textHeight = 0.0;
};

std::unique_ptr<QTextLayout> plainLayout(const DrawableTextPrivate &state, QString text,
                                         QTextOption::WrapMode wrapMode)
{
    if (text.isEmpty())
        text = QStringLiteral("\n");
    auto layout = std::make_unique<QTextLayout>();
    layout->setFont(state.layoutFont);
    layout->setCacheEnabled(true);
    layout->clearFormats();
    layout->setText(text);
    QTextOption option;
    option.setWrapMode(wrapMode);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(state.tabWidth);
    option.setAlignment(state.alignment);
    layout->setTextOption(option);
    return layout;
}

bool isClosing(QChar character)
{
    return character.category() == QChar::Punctuation_Close ||
           character.category() == QChar::Punctuation_FinalQuote ||
           character.category() == QChar::Punctuation_Other;
}

void adjustBreak(QTextLine line, const QString &s, const QFontMetricsF &fm)
{
    const int last = line.textStart() + line.textLength() - 1;
    const QChar c = s.at(last);
    if (!c.isPunct() && !c.isSpace() && last + 2 < s.size() && isClosing(s.at(last + 2))) {
        if (c.unicode() <= 0x00ff)
            return;
        const double w = line.naturalTextWidth() - fm.horizontalAdvance(c);
        if (w == 0.0)
            return;
        int n = 1;
        for (int i = last + 3; i < s.size() && s.at(i).isPunct(); ++i)
            ++n;
        if (n > 10)
            return;
        line.setLineWidth(w);
    } else if (last + 1 < s.size() && isClosing(s.at(last + 1))) {
        line.setLineWidth(fm.horizontalAdvance(s.at(last + 1)) + line.naturalTextWidth());
    }
}

LaidOut layOutPlainly(const DrawableTextPrivate &state)
{
    const double left = state.padding != 0.0 ? state.padding : state.leftPadding;
    const double topPadding = state.padding != 0.0 ? state.padding : state.topPadding;
    const double right = state.padding != 0.0 ? state.padding : state.rightPadding;
    const double bottom = state.padding != 0.0 ? state.padding : state.bottomPadding;
    const double area = state.maxWidth - left - right - (state.reserveSpace ? state.xWidth : 0.0);
    const QFontMetricsF fm(state.layoutFont);

    LaidOut result;
    double top = topPadding;
    bool firstLine = true;
    for (int p = 0; p < state.paragraphs.size(); ++p) {
        auto layout = plainLayout(state, state.paragraphs.at(p),
                                  state.maximumLineCount == 1 ? QTextOption::NoWrap : state.wrapMode);
        layout->setFormats(state.paragraphFormats.at(p));
        const QString s = layout->text();
        double y = 0.0;
        layout->beginLayout();
        for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
            line.setLeadingIncluded(false);
            const bool first = p == 0 && firstLine;
            double lineX = 0.0;
            double lineWidth = area + (state.wrapMode != QTextOption::NoWrap ? 0.1 : 0.0);
            if (first) {
                lineX = state.textIndent;
                lineWidth = area - state.textIndent;
            }
            line.setLineWidth(lineWidth);
            if (state.maximumLineCount == -1)
                adjustBreak(line, s, fm);
            double w = std::min(line.naturalTextWidth(), lineWidth);
            line.setLineWidth(w);
            line.setPosition(QPointF(lineX, y));
            y += state.leading + line.height();
            if (first) {
                w += state.textIndent;
                firstLine = false;
            }
            result.maxLineWidth = std::max(result.maxLineWidth, w);
        }
        layout->endLayout();
        layout->setPosition(QPointF(left, top));
        top += y;
        result.lineCount += layout->lineCount();
        result.layouts.push_back(std::move(layout));
    }

    for (const auto &layout : result.layouts) {
        for (int i = 0; i < layout->lineCount(); ++i) {
            QTextLine line = layout->lineAt(i);
            if (state.alignment & Qt::AlignHCenter)
                line.setPosition(
                    QPointF((result.maxLineWidth - line.naturalTextWidth()) * 0.5, line.position().y()));
            else if (state.alignment & Qt::AlignRight)
                line.setPosition(QPointF(area - line.naturalTextWidth(), line.position().y()));
        }
    }

    double extra = state.reserveSpace ? state.xWidth : 0.0;
    if (result.lineCount == 1)
        extra += state.reservedWidth;
    result.contentWidth = state.fixedWidth != -1 ? state.fixedWidth : extra + result.maxLineWidth;
    double minExtra = 0.0;
    if (state.multilineMinWidth != -1.0 && result.lineCount > 1 &&
        state.multilineMinWidth > result.contentWidth) {
        minExtra = state.multilineMinWidth - result.contentWidth;
        result.contentWidth = state.multilineMinWidth;
    }
    double bottomExtra = 0.0;
    if (result.lineCount > 0) {
        const QTextLayout &lastLayout = *result.layouts.back();
        const double last = lastLayout.lineAt(lastLayout.lineCount() - 1).naturalTextWidth();
        if (result.lineCount > 1 && last + state.reservedWidth > minExtra + result.maxLineWidth)
            bottomExtra = 12.0;
        if (result.lineCount == 1 && last + state.reservedWidth > area) {
            result.contentWidth -= state.reservedWidth;
            bottomExtra = 12.0;
        }
    }
    result.contentHeight =
        top + (state.willChangeLineMode || state.maximumLineCount == -1 ? bottomExtra : 0.0);
    result.contentHeight += bottom;
    result.contentWidth += right;
    result.textHeight = top - topPadding;
    return result;
}

// ---- the rules of the multi-line elision, step by step

QString restoreFromLeft(QString text, const QStringList &emojis)
{
    int k = 0;
    for (int i = text.indexOf(QChar(emoji)); i != -1 && k < emojis.size();) {
        text.replace(i, 1, emojis.at(k));
        i = text.indexOf(QChar(emoji), i + emojis.at(k).size());
        ++k;
    }
    return text;
}

QString restoreFromRight(QString text, const QStringList &emojis)
{
    int k = emojis.size() - 1;
    for (int i = text.size() - 1; i >= 0 && k >= 0; --i) {
        if (text.at(i) == QChar(emoji))
            text.replace(i, 1, emojis.at(k--));
    }
    return text;
}

QString elidePlainly(const DrawableTextPrivate &state)
{
    QStringList allLines;
    QList<QStringList> lineEmojis;
    QList<int> keptLines;
    const int limit = state.maximumLineCount;
    const double area = state.textAreaWidth();
    const QStringList read = drawabletext::readLines(state.text);
    for (int i = 0; i < read.size(); ++i) {
        QString text = read.at(i);
        const QStringList emojis = drawabletext::collapseForElide(text);
        int k = 0;
        const auto layout = plainLayout(state, text, state.wrapMode);
        if (!state.elidedSpans.isEmpty())
            layout->setFormats({{0, text.size(), state.charFormats.value(SpanTextBlock)}});
        layout->beginLayout();
        bool first = i == 0;
        for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
            line.setLeadingIncluded(true);
            double w = first ? area - state.textIndent : area;
            first = false;
            line.setLineWidth(w);
            w = std::min(w, line.naturalTextWidth());
            line.setLineWidth(w);
            if (!state.elidedSpans.isEmpty())
                line.setLineWidth(w - line.textLength() / 3);
            QString s = layout->text().mid(line.textStart(), line.textLength());
            QStringList inLine;
            for (int e = s.indexOf(QChar(emoji)); e != -1 && k < emojis.size(); ++k) {
                s.replace(e, 1, emojis.at(k));
                inLine.append(emojis.at(k));
                e = s.indexOf(QChar(emoji), e + emojis.at(k).size());
            }
            if (state.elide == Qt::ElideLeft) {
                if (keptLines.size() >= limit - 1)
                    keptLines.removeFirst();
                keptLines.append(allLines.size());
            } else if (keptLines.size() < limit - 1) {
                keptLines.append(allLines.size());
            }
            allLines.append(s);
            lineEmojis.append(inLine);
        }
        layout->endLayout();
        if (!allLines.isEmpty() && allLines.last() != QStringLiteral("\n") && read.size() > 1 &&
            i != read.size() - 1)
            allLines.last().append(QLatin1Char('\n'));
    }
    if (allLines.size() <= limit)
        return allLines.join(QString());

    QString result;
    for (const int index : qAsConst(keptLines))
        result += allLines.at(index);
    const bool left = state.elide == Qt::ElideLeft;
    const int from = left ? 0 : keptLines.last() + 1;
    const int to = left ? keptLines.first() : allLines.size();
    QString remainder;
    QStringList emojis;
    for (int i = from; i < to; ++i) {
        QString s = allLines.at(i);
        int at = 0;
        for (const QString &e : lineEmojis.at(i)) {
            at = s.indexOf(e, at);
            if (at == -1)
                break;
            s.replace(at, e.size(), QChar(emoji));
            ++at;
        }
        remainder += s;
        emojis += lineEmojis.at(i);
    }
    remainder.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const QFontMetricsF fm(state.layoutFont);
    if (state.elide == Qt::ElideRight)
        return result + restoreFromLeft(fm.elidedText(remainder, Qt::ElideRight, area + 0.1), emojis);
    const QString e = restoreFromRight(fm.elidedText(remainder, Qt::ElideLeft, area + 0.1), emojis);
    return left ? e + result : result + e;
}

} // namespace

class TestLayoutEquivalence : public QObject
{
    Q_OBJECT

private:
    static void compareLine(QTextLine actual, QTextLine expected)
    {
        QCOMPARE(actual.textStart(), expected.textStart());
        QCOMPARE(actual.textLength(), expected.textLength());
        QCOMPARE(actual.naturalTextWidth(), expected.naturalTextWidth());
        QCOMPARE(actual.width(), expected.width());
        QCOMPARE(actual.position(), expected.position());
        QCOMPARE(actual.rect(), expected.rect());
    }

    static void compare(const DrawableTextPrivate &state, const LaidOut &expected)
    {
        QCOMPARE(state.layouts.size(), int(expected.layouts.size()));
        QCOMPARE(state.lineCount, expected.lineCount);
        for (int p = 0; p < state.layouts.size(); ++p) {
            const QTextLayout &actualLayout = *state.layouts.at(p);
            const QTextLayout &expectedLayout = *expected.layouts.at(p);
            QCOMPARE(actualLayout.position(), expectedLayout.position());
            QCOMPARE(actualLayout.lineCount(), expectedLayout.lineCount());
            for (int i = 0; i < actualLayout.lineCount(); ++i) {
                compareLine(actualLayout.lineAt(i), expectedLayout.lineAt(i));
                if (QTest::currentTestFailed())
                    return;
            }
        }
        QCOMPARE(state.maxLineWidth, expected.maxLineWidth);
        QCOMPARE(state.contentWidth, expected.contentWidth);
        QCOMPARE(state.contentHeight, expected.contentHeight);
        QCOMPARE(state.textHeight, expected.textHeight);
    }

private Q_SLOTS:
    void layoutsEqualThePlainRules_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 250; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void layoutsEqualThePlainRules()
    {
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        DrawableTextPrivate state;
        fillState(state, random);
        const int paragraphs = random.bounded(1, 5);
        for (int i = 0; i < paragraphs; ++i)
            addParagraph(state, random, randomText(random, random.bounded(60)));
        drawabletext::scanClosePunctuation(state);
        drawabletext::layoutParagraphs(state);
        compare(state, layOutPlainly(state));
    }

    void aSecondWidthLaysOutAsIfItWereTheFirst()
    {
        QRandomGenerator random(77);
        for (int round = 0; round < 60; ++round) {
            DrawableTextPrivate state;
            fillState(state, random);
            addParagraph(state, random, randomText(random, random.bounded(60)));
            addParagraph(state, random, randomText(random, random.bounded(60)));
            drawabletext::scanClosePunctuation(state);
            drawabletext::layoutParagraphs(state);
            state.maxWidth = oneOf(random, {1.0, 55.5, 180.0, 300.25, 900.0});
            state.alignment = random.bounded(2) == 0 ? Qt::AlignLeft : Qt::AlignRight;
            drawabletext::layoutParagraphs(state);
            compare(state, layOutPlainly(state));
            if (QTest::currentTestFailed())
                return;
        }
    }

    void longWordsBreakAsThePlainRulesSay_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 12; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void longWordsBreakAsThePlainRulesSay()
    {
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        DrawableTextPrivate state;
        fillState(state, random);
        state.wrapMode = QTextOption::WrapAtWordBoundaryOrAnywhere;
        QString text = randomText(random, 5);
        for (int i = 0; i < 3; ++i) {
            text += longWord(random, random.bounded(1900, 3000));
            text += randomText(random, 20);
        }
        addParagraph(state, random, text);
        drawabletext::scanClosePunctuation(state);
        drawabletext::layoutParagraphs(state);
        compare(state, layOutPlainly(state));
    }

    void elidedLinesEqualThePlainRules_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 250; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void elidedLinesEqualThePlainRules()
    {
        QFETCH(quint32, seed);
        QRandomGenerator random(seed);
        static const QStringList pictures = {
            QString::fromUtf8("\U0001F600"),
            QString::fromUtf8("\u2764\ufe0f"),
            QString::fromUtf8("\u2764\ufe0e"), // text style: the same first character, and no emoji
            QString::fromUtf8("\u2764"),
            QString::fromUtf8("\U0001F468\u200d\U0001F469\u200d\U0001F467"),
            QString::fromUtf8("\U0001F1E8\U0001F1F3"),
            QString::fromUtf8("\U0001F1FD\U0001F1E8\U0001F1F3"), // an unknown flag that holds a known one
            QStringLiteral("1") + QChar(0x20e3),
        };
        DrawableTextPrivate state;
        fillState(state, random);
        state.alignment = Qt::AlignLeft;
        state.maximumLineCount = random.bounded(2, 5);
        state.elide = Qt::TextElideMode(random.bounded(3));
        const int pieces = random.bounded(40);
        for (int i = 0; i < pieces; ++i) {
            state.text += randomText(random, random.bounded(4));
            if (random.bounded(3) == 0)
                state.text += pictures.at(random.bounded(pictures.size()));
            if (random.bounded(6) == 0)
                state.text += QLatin1Char('\n');
        }
        if (random.bounded(4) == 0) {
            state.elidedSpans.append({0, 3, QVariant(7), SpanTextBlock});
            state.charFormats[SpanTextBlock].setFontWeight(QFont::Medium);
        }
        const QString expected = elidePlainly(state);
        QCOMPARE(drawabletext::elideLines(state), expected);
    }

    void elisionTakesNoPartOfAnUnknownFlagForALaterFlag()
    {
        // The remainder holds unknown flags, each with a known one inside, lines ahead of that known one.
        const QString unknownFlag = QString::fromUtf8("\U0001F1FD\U0001F1E8\U0001F1F3 ");
        const QString flag = QString::fromUtf8("\U0001F1E8\U0001F1F3 ");
        for (int width = 60; width < 400; width += 3) {
            DrawableTextPrivate state;
            state.font.setPixelSize(16);
            state.measureFont();
            state.maxWidth = width;
            state.elide = Qt::ElideRight;
            state.maximumLineCount = 2;
            state.text = QString(width / 8, QLatin1Char('x')) + QLatin1Char(' ') + unknownFlag.repeated(6) +
                         QStringLiteral("and so on ").repeated(40) + flag.repeated(6);
            const QString expected = elidePlainly(state);
            QCOMPARE(drawabletext::elideLines(state), expected);
        }
    }
};

QTEST_MAIN(TestLayoutEquivalence)
#include "tst_layout_equivalence.moc"
