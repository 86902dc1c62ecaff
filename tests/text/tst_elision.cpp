// What text is shown under a line limit, against a plain reading of the rules on Qt's own font metrics and
// layouts.

#include "layoutreference.h"
#include "text/liveitems.h"
#include "textengine.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojiparser.h>

#include <QFontMetricsF>
#include <QReadWriteLock>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <functional>

using namespace textengine;

using Spans = QVector<TextSpan>;

namespace {

const QChar ellipsis(0x2026);

struct Elided
{
    QString elidedText;
    QString text;
    Spans spans;
};

/// Each known emoji of `text` becomes one placeholder; their known forms are returned.
QStringList collapse(QString &text)
{
    const EmojiParser parser(nullptr);
    EmojiConvert *convert = EmojiConvert::instance();
    QStringList known;
    int shift = 0;
    for (const QPair<int, int> &found : parser.emojiIndexes(text)) {
        const int start = found.first + shift;
        const QString emoji = text.mid(start, found.second);
        QString bare = emoji;
        bare.remove(QChar(0xFE0F));
        QString unjoined = bare;
        unjoined.remove(QChar(0x200D));
        for (const QString &form : {emoji, bare, unjoined, QString(emoji + QChar(0xFE0F))}) {
            if (!convert->containsEmoji(form))
                continue;
            known.append(form);
            text.replace(start, found.second, collapsedEmoji);
            shift += 1 - found.second;
            break;
        }
    }
    return known;
}

QString restoredFromLeft(QString text, const QStringList &emojis)
{
    QString result;
    int next = 0;
    for (const QChar character : text) {
        if (character == collapsedEmoji && next < emojis.size())
            result += emojis.at(next++);
        else
            result += character;
    }
    return result;
}

QString restoredFromRight(const QString &text, const QStringList &emojis)
{
    QString result;
    int next = emojis.size() - 1;
    for (int index = text.size() - 1; index >= 0; --index) {
        if (text.at(index) == collapsedEmoji && next >= 0)
            result.prepend(emojis.at(next--));
        else
            result.prepend(text.at(index));
    }
    return result;
}

QStringList linesOf(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines) {
        for (int index = 0; index < line.size() && line.at(index) == QLatin1Char(' '); ++index)
            line[index] = QChar(0xA0);
        for (int index = line.size() - 1; index >= 0 && line.at(index) == QLatin1Char(' '); --index)
            line[index] = QChar(0xA0);
    }
    return lines;
}

int excess(const QString &text)
{
    const EmojiParser parser(nullptr);
    int sum = 0;
    for (const QPair<int, int> &found : parser.emojiIndexes(text))
        sum += found.second - 1;
    return sum;
}

/// Expands sound blocks; the samples here have no others.
Spans expand(QString &text)
{
    Spans spans;
    const QMap<int, int> kinds = {{1, 4}, {2, 128}, {3, 8}, {4, 1024}, {5, 512}, {6, 256}};
    for (int begin = text.indexOf(QChar(1)); begin >= 0; begin = text.indexOf(QChar(1), begin)) {
        const int end = text.indexOf(QChar(2), begin);
        if (end < 0)
            break;
        const QJsonObject object =
            QJsonDocument::fromJson(text.mid(begin + 1, end - begin - 1).toUtf8()).object();
        QString name = object.value(QStringLiteral("displayName")).toString();
        name.replace(QLatin1Char('\n'), QLatin1Char(' '));
        text.replace(begin, end - begin + 1, name);
        const int behind = begin + name.size();
        const int kind = kinds.value(object.value(QStringLiteral("type")).toInt(), 64);
        const bool handsOutData = kind == SpanAite || kind == SpanTextBlock;
        spans.append(span(begin - excess(text.mid(0, begin + 1)), behind - 1 - excess(text.mid(0, behind)),
                          kind,
                          handsOutData ? object.value(QStringLiteral("data")).toVariant() : QVariant(name)));
        begin = behind;
    }
    return spans;
}

/// The text that shows in the place of `raw`, by the rules, with the properties of `state` and in `font`.
Elided elided(const DrawableTextPrivate &state, const QString &raw, const QFont &font)
{
    const QFontMetricsF metrics(font);
    const int limit = state.maximumLineCount;
    const double area = state.textAreaWidth();
    Elided result;
    result.text = raw;
    if ((state.elide == Qt::ElideLeft || state.elide == Qt::ElideMiddle) && raw.contains(QChar(1)) &&
        raw.contains(QChar(2))) {
        result.text.replace(QRegularExpression(QStringLiteral(
                                "\\x01[^\\x02]*\"displayName\"[^:]*:[^\"]*\"([^\"]*)\"[^\\x02]*\\x02")),
                            QStringLiteral("\\1"));
    }
    if (state.elide == Qt::ElideNone || limit == -1) {
        result.elidedText = result.text;
        return result;
    }
    if (state.elide == Qt::ElideRight)
        result.spans = expand(result.text);

    if (limit < 2) {
        QString line = result.text.split(QLatin1Char('\n')).join(QLatin1Char(' '));
        const QStringList emojis = collapse(line);
        const double room = area - state.textIndent;
        if (room >= metrics.horizontalAdvance(line)) {
            result.text.replace(QLatin1Char('\n'), QLatin1Char(' '));
            result.elidedText = result.text;
        } else if (state.elide == Qt::ElideLeft) {
            result.elidedText = restoredFromRight(metrics.elidedText(line, Qt::ElideLeft, room), emojis);
        } else if (state.elide == Qt::ElideRight) {
            result.elidedText = restoredFromLeft(metrics.elidedText(line, Qt::ElideRight, room), emojis);
        } else {
            const int half = line.size() / 2;
            const QString tail =
                restoredFromRight(metrics.elidedText(line.right(half), Qt::ElideLeft,
                                                     metrics.horizontalAdvance(state.elideText) + room * 0.5),
                                  emojis);
            const QString head = restoredFromLeft(
                metrics.elidedText(line.left(line.size() - half), Qt::ElideRight, room - room * 0.5), emojis);
            const bool joins = head.endsWith(state.elideText) && tail.startsWith(state.elideText);
            result.elidedText = head + (joins ? tail.mid(state.elideText.size()) : tail);
        }
        return result;
    }

    QStringList visualLines;
    QVector<QStringList> lineEmojis;
    QList<int> kept;
    const QStringList lines = linesOf(result.text);
    for (int index = 0; index < lines.size(); ++index) {
        QString line = lines.at(index);
        const QStringList emojis = collapse(line);
        int next = 0;
        QTextLayout layout(line.isEmpty() ? QStringLiteral("\n") : line, font);
        layout.setTextOption(layoutreference::option(state, state.wrapMode));
        if (!result.spans.isEmpty())
            layout.setFormats({{0, line.size(), state.charFormats.value(SpanTextBlock)}});
        layout.beginLayout();
        for (QTextLine visual = layout.createLine(); visual.isValid(); visual = layout.createLine()) {
            visual.setLeadingIncluded(true);
            double width = visualLines.isEmpty() ? area - state.textIndent : area;
            visual.setLineWidth(width);
            width = qMin(width, visual.naturalTextWidth());
            visual.setLineWidth(width);
            if (!result.spans.isEmpty())
                visual.setLineWidth(width - visual.textLength() / 3);
            QString shown;
            QStringList shownEmojis;
            for (const QChar character : layout.text().mid(visual.textStart(), visual.textLength())) {
                if (character == collapsedEmoji && next < emojis.size()) {
                    shownEmojis.append(emojis.at(next));
                    shown += emojis.at(next++);
                } else {
                    shown += character;
                }
            }
            if (state.elide == Qt::ElideLeft) {
                if (kept.size() >= limit - 1)
                    kept.removeFirst();
                kept.append(visualLines.size());
            } else if (kept.size() < limit - 1) {
                kept.append(visualLines.size());
            }
            visualLines.append(shown);
            lineEmojis.append(shownEmojis);
        }
        layout.endLayout();
        if (!visualLines.isEmpty() && visualLines.last() != QLatin1String("\n") && lines.size() > 1 &&
            index < lines.size() - 1)
            visualLines.last() += QLatin1Char('\n');
    }
    if (visualLines.size() <= limit) {
        result.elidedText = visualLines.join(QString());
        return result;
    }
    QString whole;
    for (const int index : qAsConst(kept))
        whole += visualLines.at(index);
    const bool atTheLeft = state.elide == Qt::ElideLeft;
    const int first = atTheLeft ? 0 : kept.last() + 1;
    const int behind = atTheLeft ? kept.first() : visualLines.size();
    QString rest;
    QStringList restEmojis;
    for (int index = first; index < behind; ++index) {
        QString line = visualLines.at(index);
        int from = 0;
        for (const QString &emoji : lineEmojis.at(index)) {
            const int at = line.indexOf(emoji, from);
            line.replace(at, emoji.size(), collapsedEmoji);
            from = at + 1;
        }
        rest += line;
        restEmojis += lineEmojis.at(index);
    }
    rest.replace(QLatin1Char('\n'), QLatin1Char(' '));
    const Qt::TextElideMode mode = state.elide == Qt::ElideRight ? Qt::ElideRight : Qt::ElideLeft;
    const QString squeezed = metrics.elidedText(rest, mode, area + 0.1);
    const QString restored = mode == Qt::ElideRight ? restoredFromLeft(squeezed, restEmojis)
                                                    : restoredFromRight(squeezed, restEmojis);
    result.elidedText = atTheLeft ? restored + whole : whole + restored;
    return result;
}

struct Sample
{
    const char *name;
    QString text;
};

QVector<Sample> samples()
{
    const QString words = QStringLiteral("the quick brown fox jumps over the lazy dog");
    return {
        {"empty", QString()},
        {"short", QStringLiteral("abc")},
        {"words", words},
        {"two lines", QStringLiteral("abc\ndef")},
        {"paragraphs", words + QStringLiteral("\n\n  ") + words + QStringLiteral("  \nend\n")},
        {"line ends", QStringLiteral("\n\n\n")},
        {"ideographs",
         QStringLiteral("\u4eca\u5929\u5929\u6c14\u5f88\u597d\uff0c\u6211\u4eec\u53bb\u516c\u56ed\u6563"
                        "\u6b65\u5427\u3002\u4f60\u89c9\u5f97\u5462\uff1f")},
        {"emoji", grinning() + QStringLiteral(" once ") + family() + QStringLiteral(" upon ") +
                      thumbsUpMediumTone() + QStringLiteral(" a time\nthere ") + grinning().repeated(7) +
                      QStringLiteral(" was ") + family()},
        {"overqualified emoji", (grinning() + QChar(0xFE0F) + QStringLiteral(" smile ")).repeated(6)},
        {"placeholders of the text", QStringLiteral("a\uEEEEb ").repeated(9) + grinning()},
        {"right to left",
         QStringLiteral("\u0645\u0631\u062d\u0628\u0627 \u0628\u0627\u0644\u0639\u0627\u0644\u0645 "
                        "hello \u0645\u0631\u062d\u0628\u0627 and on it goes")},
        {"blocks", QStringLiteral("say ") + inBandBlock(QStringLiteral("Ann Other"), QStringLiteral("d"), 3) +
                       QStringLiteral(" and ") + inBandBlock(QStringLiteral("site"), QStringLiteral("e"), 1) +
                       QStringLiteral(" and more words to fill it")},
        {"blocks and paragraphs", QStringLiteral("say\n") + grinning() +
                                      inBandBlock(QStringLiteral("Ann\nOther"), QStringLiteral("d"), 3) +
                                      QStringLiteral("\nand more words to fill it")},
    };
}

struct Setting
{
    const char *name;
    std::function<void(DrawableText &)> apply;
};

QVector<Setting> settings()
{
    return {
        {"plain", [](DrawableText &) {}},
        {"indent", [](DrawableText &item) { item.setTextIndent(20); }},
        {"padding", [](DrawableText &item) { item.setPadding(8); }},
        {"no wrap", [](DrawableText &item) { item.setWrapMode(DrawableText::NoWrap); }},
        {"wrap anywhere", [](DrawableText &item) { item.setWrapMode(DrawableText::WrapAnywhere); }},
        {"long ellipsis", [](DrawableText &item) { item.setElideText(QStringLiteral(" [more]")); }},
        {"right", [](DrawableText &item) { item.setAlignment(Qt::AlignRight); }},
        {"bold blocks",
         [](DrawableText &item) {
             item.setUserBlockBold(true);
             item.setLinkColor(Qt::red);
         }},
    };
}

QString ellipsed(const QString &text)
{
    return text + ellipsis;
}

double widthOf(const DrawableText &item, const QString &text)
{
    return QFontMetricsF(item.font()).horizontalAdvance(text);
}

} // namespace

#define COMPARE_SPANS(found, expected)                                                                       \
    do {                                                                                                     \
        QCOMPARE(describe(found), describe(expected));                                                       \
        QCOMPARE(found, expected);                                                                           \
    } while (false)

class TestElision : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void elidedTextIsThatOfThePlainRules_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("limit");
        QTest::addColumn<int>("setting");
        const QVector<QPair<const char *, int>> modes = {{"none", Qt::ElideNone},
                                                         {"left", Qt::ElideLeft},
                                                         {"middle", Qt::ElideMiddle},
                                                         {"right", Qt::ElideRight}};
        const auto all = settings();
        for (const auto &mode : modes) {
            for (const int limit : {-7, -1, 0, 1, 2, 3, 9}) {
                for (int setting = 0; setting < all.size(); ++setting)
                    QTest::addRow("%s, %d lines, %s", mode.first, limit, all.at(setting).name)
                        << mode.second << limit << setting;
            }
        }
    }
    void elidedTextIsThatOfThePlainRules()
    {
        QFETCH(int, mode);
        QFETCH(int, limit);
        QFETCH(int, setting);
        for (const Sample &sample : samples()) {
            for (const double width : {30.0, 90.0, 170.0, 340.0, 2000.0}) {
                DrawableText item;
                item.setElide(Qt::TextElideMode(mode));
                item.setMaximumLineCount(limit);
                settings().at(setting).apply(item);
                item.setText(sample.text);
                const QString raw = item.state()->rawText;
                item.setMaxWidth(width); // one pass, with everything in its place
                const DrawableTextPrivate &state = *item.state();
                const QFont font =
                    raw.contains(collapsedEmoji) || excess(raw) > 0 ? state.layoutFont : item.font();
                const Elided expected = elided(state, raw, font);
                const QByteArray where = QByteArray(sample.name) + " in " + QByteArray::number(width);
                if (item.elidedText() != expected.elidedText) {
                    qDebug() << where << "found" << item.elidedText() << "expected" << expected.elidedText;
                    QFAIL("another elided text");
                }
                QVERIFY2(state.text == expected.text, where);
                QVERIFY2(state.rawText == raw, where);
                QVERIFY2(describe(state.elidedSpans) == describe(expected.spans), where);
                QCOMPARE(state.sourceParagraphs,
                         linesOf(mode == Qt::ElideNone ? expected.text : expected.elidedText));
            }
        }
    }

    // ---- without a limit

    void withoutALimitTheTextStaysAsItIs()
    {
        const QString text = inBandBlock(QStringLiteral("Ann"), 7, 3) + QStringLiteral(" hi");
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setText(text);
        item.setMaxWidth(50);
        QCOMPARE(item.elidedText(), text);
        QCOMPARE(item.state()->paragraphs, QStringList({text})); // its JSON shows
        QVERIFY(item.state()->spans.at(0).isEmpty());
        QVERIFY(item.lineCount() > 2);
    }

    void elidedTextIsAnnouncedAtEachPass()
    {
        DrawableText item;
        item.setMaxWidth(300);
        QSignalSpy announced(&item, &DrawableText::elidedTextChanged);
        item.setText(QStringLiteral("abc"));
        QCOMPARE(announced.count(), 1);
        QCOMPARE(announced.at(0).at(0).toString(), QStringLiteral("abc"));
        item.setReservedWidth(3); // marks the elision, whose text is the same
        QCOMPARE(announced.count(), 2);
        item.setColor(Qt::red); // does not
        QCOMPARE(announced.count(), 2);
        item.setMaximumLineCount(1);
        item.setElide(Qt::ElideRight);
        QCOMPARE(announced.count(), 4);
    }

    void itemCannotDieWhileItsElidedTextIsAnnounced()
    {
        DrawableText item;
        item.setMaxWidth(300);
        bool canDie = true;
        connect(&item, &DrawableText::elidedTextChanged, this, [&canDie] {
            canDie = liveitems::lock()->tryLockForWrite();
            if (canDie)
                liveitems::lock()->unlock();
        });
        item.setText(QStringLiteral("abc"));
        QVERIFY(!canDie);
        QVERIFY(liveitems::lock()->tryLockForWrite()); // and the lock is given back
        liveitems::lock()->unlock();
    }

    // ---- one line

    void lineEndOfATextThatFitsBecomesASpace_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("limit");
        for (const int limit : {1, 0, -2}) {
            QTest::addRow("right, %d", limit) << int(Qt::ElideRight) << limit;
            QTest::addRow("left, %d", limit) << int(Qt::ElideLeft) << limit;
            QTest::addRow("middle, %d", limit) << int(Qt::ElideMiddle) << limit;
        }
    }
    void lineEndOfATextThatFitsBecomesASpace()
    {
        QFETCH(int, mode);
        QFETCH(int, limit);
        DrawableText item;
        item.setElide(Qt::TextElideMode(mode));
        item.setMaximumLineCount(limit);
        item.setMaxWidth(300);
        item.setText(QStringLiteral("a\nb"));
        QCOMPARE(item.elidedText(), QStringLiteral("a b"));
        QCOMPARE(item.text(), QStringLiteral("a b"));
        QCOMPARE(item.lineCount(), 1);
        QSignalSpy changes(&item, &DrawableText::textChanged);
        item.setText(QStringLiteral("a b")); // what is stored by now
        QCOMPARE(changes.count(), 0);
    }

    void lineEndOfATextThatDoesNotFitStaysInIt()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(1);
        const QString text = QStringLiteral("some words\nand some more of them");
        item.setMaxWidth(widthOf(item, text) / 2);
        item.setText(text);
        QCOMPARE(item.text(), text);
        QCOMPARE(item.lineCount(), 1);
        QVERIFY(item.elidedText().startsWith(QStringLiteral("some words ")));
        QVERIFY(item.elidedText().endsWith(ellipsis));
    }

    void exactlyFittingTextIsNotElided()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(1);
        item.setTextIndent(16);
        const QString text = QStringLiteral("some words");
        item.setText(QStringLiteral("some\nwords"));
        item.setMaxWidth(widthOf(item, text) + 16);
        QCOMPARE(item.elidedText(), text);
        QCOMPARE(item.text(), text); // what fits loses its line ends for good
        item.setMaxWidth(widthOf(item, text) + 15);
        QVERIFY(item.elidedText().endsWith(ellipsis));
    }

    void eachModeKeepsItsEndOfTheText()
    {
        const QString text = QStringLiteral("a beginning and a long way to go until the end");
        for (const int limit : {1, 0}) {
            DrawableText item;
            item.setMaximumLineCount(limit);
            item.setMaxWidth(widthOf(item, text) / 2);
            item.setText(text);
            item.setElide(Qt::ElideLeft);
            QVERIFY(item.elidedText().startsWith(ellipsis));
            QVERIFY(item.elidedText().endsWith(QStringLiteral("the end")));
            item.setElide(Qt::ElideRight);
            QVERIFY(item.elidedText().startsWith(QStringLiteral("a beginning")));
            QVERIFY(item.elidedText().endsWith(ellipsis));
            item.setElide(Qt::ElideMiddle);
            QVERIFY(item.elidedText().startsWith(QStringLiteral("a beg")));
            QVERIFY(item.elidedText().endsWith(QStringLiteral("end")));
            QCOMPARE(item.elidedText().count(ellipsis), 1);
            QCOMPARE(item.lineCount(), 1);
        }
    }

    void emojiOnBothSidesOfAMiddleElisionStayOnTheirs()
    {
        DrawableText item;
        item.setElide(Qt::ElideMiddle);
        item.setMaximumLineCount(1);
        const QString text =
            grinning() + QStringLiteral(" a long way to go from here to the end ") + family();
        item.setMaxWidth(200);
        item.setText(text);
        QVERIFY(item.elidedText().startsWith(grinning()));
        QVERIFY(item.elidedText().endsWith(family()));
        QVERIFY(item.elidedText().contains(ellipsis));
        QVERIFY(!item.elidedText().contains(collapsedEmoji));
        QCOMPARE(item.state()->emojiCount, 2);
    }

    void longEllipsisWidensTheTailOnly()
    {
        const QString text = QStringLiteral("a beginning and a long way to go until the very end");
        const auto shown = [&text](const QString &elideText) {
            DrawableText item;
            item.setElide(Qt::ElideMiddle);
            item.setMaximumLineCount(1);
            item.setElideText(elideText);
            item.setText(text);
            item.setMaxWidth(200);
            return item.elidedText();
        };
        const QString usual = shown(QString(ellipsis));
        const QString widened = shown(QStringLiteral("more"));
        QCOMPARE(usual.count(ellipsis), 1);
        // Qt's own ellipsis still shows, twice, because neither half has the one that was asked for.
        QCOMPARE(widened.count(ellipsis), 2);
        QVERIFY(!widened.contains(QStringLiteral("more")));
        const QStringList usualHalves = usual.split(ellipsis);
        QCOMPARE(widened.section(ellipsis, 0, 0), usualHalves.first());
        QVERIFY(widened.section(ellipsis, -1).size() > usualHalves.last().size());
    }

    // ---- several lines

    void textOfAsManyLinesAsMayBeIsWhole()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(2);
        const QString line = QStringLiteral("words of one line");
        item.setMaxWidth(widthOf(item, line) + 5);
        item.setText(line + QLatin1Char(' ') + line);
        QCOMPARE(item.elidedText(), line + QLatin1Char(' ') + line);
        QCOMPARE(item.lineCount(), 2);
        item.setText(line + QLatin1Char('\n') + line);
        QCOMPARE(item.elidedText(), line + QLatin1Char('\n') + line);
        QCOMPARE(item.lineCount(), 2);
        item.setText(line + QLatin1Char('\n') + line + QLatin1Char('\n'));
        QCOMPARE(item.elidedText(), line + QLatin1Char('\n') + line); // its last line end is lost
    }

    void linesBehindTheLimitAreSqueezedIntoTheLast()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(2);
        const QString line = QStringLiteral("words of one line");
        item.setMaxWidth(widthOf(item, line) + 5);
        item.setText(QStringList({line, line, line}).join(QLatin1Char('\n')));
        const QString rest =
            QFontMetricsF(item.font())
                .elidedText(line + QLatin1Char(' ') + line, Qt::ElideRight, item.maxWidth() + 0.1);
        QVERIFY(rest.endsWith(ellipsis));
        QCOMPARE(item.elidedText(), line + QLatin1Char('\n') + rest);
        QCOMPARE(item.lineCount(), 2);
    }

    void linesInFrontOfTheLimitAreSqueezedIntoTheFirst()
    {
        DrawableText item;
        item.setElide(Qt::ElideLeft);
        item.setMaximumLineCount(2);
        const QString line = QStringLiteral("words of one line");
        item.setMaxWidth(widthOf(item, line) + 5);
        item.setText(QStringList({line, line, line}).join(QLatin1Char('\n')));
        // The squeezed line has lost its line end, so the whole one follows it in the same paragraph.
        const QString rest = QFontMetricsF(item.font())
                                 .elidedText(line + QLatin1Char(' ') + line + QLatin1Char(' '), Qt::ElideLeft,
                                             item.maxWidth() + 0.1);
        QVERIFY(rest.startsWith(ellipsis));
        QCOMPARE(item.elidedText(), rest + line);
    }

    void middleElisionOfSeveralLinesKeepsTheEndOfTheLast()
    {
        DrawableText item;
        item.setElide(Qt::ElideMiddle);
        item.setMaximumLineCount(2);
        const QString line = QStringLiteral("words of one line");
        item.setMaxWidth(widthOf(item, line) + 5);
        item.setText(QStringList({line, line, line}).join(QLatin1Char('\n')));
        const QString rest =
            QFontMetricsF(item.font())
                .elidedText(line + QLatin1Char(' ') + line, Qt::ElideLeft, item.maxWidth() + 0.1);
        QCOMPARE(item.elidedText(), line + QLatin1Char('\n') + rest);
        QVERIFY(item.elidedText().endsWith(QStringLiteral("one line")));
    }

    void longTextShowsOnExactlyAsManyLinesAsMayBe()
    {
        const QString text = QStringLiteral("the quick brown fox jumps over the lazy dog ").repeated(30);
        for (const int limit : {2, 3, 7}) {
            DrawableText item;
            item.setElide(Qt::ElideRight);
            item.setMaximumLineCount(limit);
            item.setMaxWidth(180);
            item.setText(text);
            QCOMPARE(item.lineCount(), limit);
            QVERIFY(item.elidedText().endsWith(ellipsis));
        }
    }

    // ---- blocks inside the text

    void blockOfAnElidedParagraphIsShownByItsNameAndHasItsSpan()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(1);
        const QString plain = QStringLiteral("hi Ann Other, how are you");
        item.setText(QStringLiteral("hi ") +
                     inBandBlock(QStringLiteral("Ann\nOther"), QStringLiteral("d"), 3) +
                     QStringLiteral(", how are you"));
        item.setMaxWidth(widthOf(item, plain) + 1);
        QCOMPARE(item.elidedText(), plain);
        QCOMPARE(item.text(), plain);
        COMPARE_SPANS(item.state()->spans.at(0), Spans({span(3, 11, SpanAite, QStringLiteral("d"))}));

        // Cut in the middle of the name, the span ends one behind the last character.
        const QString shorter = ellipsed(QStringLiteral("hi Ann"));
        item.setMaxWidth(widthOf(item, shorter) + 0.5);
        QCOMPARE(item.elidedText(), shorter);
        COMPARE_SPANS(item.state()->spans.at(0),
                      Spans({span(3, shorter.size(), SpanAite, QStringLiteral("d"))}));
    }

    void blockOfSeveralParagraphsHasNoSpan()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(3);
        item.setText(inBandBlock(QStringLiteral("Ann"), QStringLiteral("d"), 3) + QStringLiteral("\nhi"));
        item.setMaxWidth(300);
        QCOMPARE(item.elidedText(), QStringLiteral("Ann\nhi"));
        QCOMPARE(item.state()->elidedSpans.size(), 1);
        QCOMPARE(item.state()->spans, QVector<Spans>(2));
    }

    void eachPassExpandsTheTextThatWasSet()
    {
        const QString text =
            inBandBlock(QStringLiteral("Ann"), QStringLiteral("d"), 3) + QStringLiteral(" hi");
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(1);
        item.setText(text);
        item.setMaxWidth(300);
        item.setReservedWidth(1);
        item.setReservedWidth(2);
        QCOMPARE(item.text(), QStringLiteral("Ann hi"));
        QCOMPARE(item.state()->rawText, text);
        QCOMPARE(item.state()->elidedSpans.size(), 1);
        // Another mode flattens for good, and the ellipsis at the right starts over from what was set.
        item.setElide(Qt::ElideLeft);
        QCOMPARE(item.text(), QStringLiteral("Ann hi"));
        item.setText(text);
        QCOMPARE(item.text(), QStringLiteral("Ann hi"));
        item.setElide(Qt::ElideRight);
        COMPARE_SPANS(item.state()->spans.at(0), Spans({span(0, 2, SpanAite, QStringLiteral("d"))}));
    }

    void brokenBlocksAreLoggedAndStay()
    {
        DrawableText item;
        item.setElide(Qt::ElideRight);
        item.setMaximumLineCount(1);
        const QString broken = rawBlock(QStringLiteral("{\"data\":7}"));
        item.setText(broken + inBandBlock(QStringLiteral("Ann"), 7, 1));
        const LogCapture log;
        item.setMaxWidth(900);
        QCOMPARE(log.messages(), QStringList({QStringLiteral("Invalid user block data")}));
        QCOMPARE(item.elidedText(), broken + QStringLiteral("Ann"));
        COMPARE_SPANS(item.state()->elidedSpans,
                      Spans({span(broken.size(), broken.size() + 2, SpanLink, QStringLiteral("Ann"))}));
    }

    // ---- rough input

    void roughTextIsElided_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("lone surrogates") << (QString(QChar(0xDE00)) + QChar(0xD83D)).repeated(50);
        QTest::newRow("combining marks") << QStringLiteral("a") + QString(1000, QChar(0x0301));
        QTest::newRow("emoji only") << grinning().repeated(200);
        QTest::newRow("line ends only") << QString(300, QLatin1Char('\n'));
        QTest::newRow("spaces only") << QString(300, QLatin1Char(' '));
        QTest::newRow("placeholders") << QString(100, collapsedEmoji);
        QTest::newRow("begins of blocks") << QString(500, QChar(1));
        QTest::newRow("bidirectional controls")
            << QStringLiteral("a\u202Eb\u2066c\u2069\u202C\u200Fd").repeated(20);
    }
    void roughTextIsElided()
    {
        QFETCH(QString, text);
        for (const Qt::TextElideMode mode : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight}) {
            for (const int limit : {0, 1, 2, 5}) {
                for (const double width : {0.25, 1.0, 15.0, 100.0}) {
                    DrawableText item;
                    item.setElide(mode);
                    item.setMaximumLineCount(limit);
                    item.setText(text);
                    const QString raw = item.state()->rawText;
                    item.setMaxWidth(width);
                    const Elided expected = elided(*item.state(), raw, item.state()->layoutFont);
                    QCOMPARE(item.elidedText(), expected.elidedText);
                }
            }
        }
    }
};

QTEST_MAIN(TestElision)
#include "tst_elision.moc"
