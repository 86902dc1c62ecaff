// Where emoji are found in text: every sequence that Unicode lists, and what only looks like one.

#include "emojitestfile.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojiparser.h>

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSet>
#include <QThread>
#include <QtTest>

using Spans = QVector<QPair<int, int>>;
Q_DECLARE_METATYPE(Spans)

namespace {

Spans parse(const QString &text)
{
    return EmojiParser(nullptr).emojiIndexes(text);
}

/// The characters that have `property` in Unicode's emoji-data.txt.
QSet<uint> charactersWith(const QString &property)
{
    QSet<uint> characters;
    QFile file(QStringLiteral(EMOJI_DATA_FILE));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return characters;
    const QRegularExpression form(QStringLiteral("^([0-9A-F]+)(?:\\.\\.([0-9A-F]+))? +; (\\w+) *#"));
    while (!file.atEnd()) {
        const QRegularExpressionMatch match = form.match(QString::fromUtf8(file.readLine()));
        if (!match.hasMatch() || match.captured(3) != property)
            continue;
        const uint first = match.captured(1).toUInt(nullptr, 16);
        const uint last = match.captured(2).isEmpty() ? first : match.captured(2).toUInt(nullptr, 16);
        for (uint character = first; character <= last; ++character)
            characters.insert(character);
    }
    return characters;
}

/// Whether a caller that tries `emoji` as it is and then without U+FE0F finds something known.
bool resolves(const QString &emoji)
{
    const EmojiConvert *convert = EmojiConvert::instance();
    if (convert->containsEmoji(emoji))
        return true;
    QString plain = emoji;
    plain.remove(QChar(0xFE0F));
    return convert->containsEmoji(plain);
}

} // namespace

class TestEmojiParser : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (testLines().isEmpty())
            QSKIP("Needs emoji-test.txt 15.0 (Debian: unicode-data)");
        QCOMPARE(testLines().size(), 4724);
    }

    void everyListedSequenceIsOneEmoji()
    {
        int textByDefault = 0;
        for (const TestLine &line : testLines()) {
            Spans expected{{0, line.text.size()}};
            if (line.status == TestLine::Unqualified && isTextByDefault(line.text)) {
                expected.clear();
                ++textByDefault;
            }
            QVERIFY2(parse(line.text) == expected, qPrintable(line.name));
        }
        QCOMPARE(textByDefault, 55);
    }

    void everySequenceIsFoundTwiceBetweenOtherText()
    {
        for (const TestLine &line : testLines()) {
            if (line.status != TestLine::FullyQualified)
                continue;
            const QString before = fromHex(QStringLiteral("4E2D 61"));
            const QString between = fromHex(QStringLiteral("62 6587"));
            const int size = line.text.size();
            const Spans expected{{2, size}, {2 + size + 2, size}};
            QVERIFY2(parse(before + line.text + between + line.text + before) == expected,
                     qPrintable(line.name));
        }
    }

    void everySingleCharacterIsJudgedByItsProperties()
    {
        const QSet<uint> emoji = charactersWith(QStringLiteral("Emoji"));
        const QSet<uint> component = charactersWith(QStringLiteral("Emoji_Component"));
        const QSet<uint> presentation = charactersWith(QStringLiteral("Emoji_Presentation"));
        QVERIFY(emoji.size() > 1400 && presentation.size() > 1200 && component.size() > 10);
        for (uint codePoint = 0; codePoint <= QChar::LastValidCodePoint; ++codePoint) {
            const QString text = QString::fromUcs4(&codePoint, 1);
            const bool known = emoji.contains(codePoint) && !component.contains(codePoint);
            // No character that Unicode shows as emoji by default may be among those that need a selector.
            QVERIFY(!isTextByDefault(text) || (known && !presentation.contains(codePoint)));
            const Spans alone = known && !isTextByDefault(text) ? Spans{{0, text.size()}} : Spans();
            const Spans selected = known ? Spans{{0, text.size() + 1}} : Spans();
            QVERIFY2(parse(text) == alone, qPrintable(QString::number(codePoint, 16)));
            QVERIFY2(parse(text + QChar(0xFE0F)) == selected, qPrintable(QString::number(codePoint, 16)));
            QVERIFY2(parse(text + QChar(0xFE0E)).isEmpty(), qPrintable(QString::number(codePoint, 16)));
        }
    }

    void findsWhatIsEmojiAndNothingElse_data()
    {
        QTest::addColumn<QString>("codePoints");
        QTest::addColumn<Spans>("expected");
        const auto row = [](const char *name, const char *codePoints, const Spans &expected) {
            QTest::newRow(name) << QString::fromLatin1(codePoints) << expected;
        };
        const Spans none;

        row("empty", "", none);
        row("digits", "30 31 32 33 34 35 36 37 38 39 20 23 31 20 2A 32", none);
        row("Chinese", "4E2D 6587 3002 FF0C", none);
        row("Chinese outside the BMP", "20000 2A6D6", none);
        row("ideographic variation", "845B E0100", none);
        row("legal signs", "A9 20 AE 20 2122", none);
        row("arrows", "2190 2192 2194 27A1 2B05", none);
        row("Hangul jamo", "1112 1161 11AB", none);
        row("Indic with joiner", "915 94D 200D 937", none);
        row("Persian with non-joiner", "645 200C 6CC 200D", none);
        row("emoji selector alone", "FE0F", none);
        row("text selector alone", "FE0E", none);
        row("joiners alone", "200D 200D", none);
        row("keycap mark alone", "20E3", none);
        row("keycap mark behind a letter", "61 20E3", none);
        row("skin tone alone", "1F3FB", none);
        row("skin tone behind a letter", "61 1F3FB", none);
        row("two skin tones", "1F3FB 1F3FF", none);
        row("hair alone", "1F9B0", none);
        row("gender signs", "2640 2642", none);
        row("card suits", "2660 2665", none);
        row("mathematical letter", "1D400", none);
        row("lone high surrogate", "D83D", none);
        row("high surrogate before a letter", "D83D 61", none);
        row("lone low surrogate", "DE00", none);

        row("copyright as emoji", "A9 FE0F", {{0, 2}});
        row("arrow as emoji", "2194 FE0F", {{0, 2}});
        row("circled ideograph as emoji", "3299 FE0F", {{0, 2}});
        row("heart without selector", "2764", {{0, 1}});
        row("heart with selector", "2764 FE0F", {{0, 2}});
        row("heart as text", "2764 FE0E", none);
        row("face as text", "1F600 FE0E", none);
        row("face with both selectors", "1F600 FE0F FE0E", none);
        row("face with needless selector", "1F600 FE0F", {{0, 3}});
        row("flag as text", "1F1E8 1F1F3 FE0E", none);

        row("digit with selector", "31 FE0F", none);
        row("keycap", "31 FE0F 20E3", {{0, 3}});
        row("keycap without selector", "31 20E3", {{0, 2}});
        row("keycap behind a digit", "31 32 FE0F 20E3", {{1, 3}});

        row("one regional indicator", "1F1E8", none);
        row("flag and a single indicator", "1F1E8 1F1F3 1F1FA", {{0, 4}});
        row("two flags", "1F1E8 1F1F3 1F1FA 1F1F8", {{0, 4}, {4, 4}});
        row("unknown pair before a flag", "1F1FD 1F1FD 1F1FA 1F1F8", {{4, 4}});
        row("pairs are taken from the left", "1F1FD 1F1FA 1F1F8", none);
        row("indicators apart", "1F1E8 20 1F1F3", none);
        row("indicators with a selector between", "1F1E8 FE0F 1F1F3", none);
        row("face behind a single indicator", "1F1E8 1F600", {{2, 2}});

        row("face with skin tone that it has not", "1F600 1F3FF", {{0, 2}});
        row("thumb with skin tone", "1F44D 1F3FD", {{0, 4}});
        row("thumbs with and without skin tone", "1F44D 1F3FD 1F44D", {{0, 4}, {4, 2}});
        row("selector before the skin tone", "261D FE0F 1F3FB", {{0, 4}});
        row("two tones in a handshake", "1FAF1 1F3FB 200D 1FAF2 1F3FF", {{0, 9}});

        row("family", "1F468 200D 1F469 200D 1F467 200D 1F466", {{0, 11}});
        row("unknown joined pair falls apart", "1F469 200D 1F697", {{0, 2}, {3, 2}});
        row("joiner at the end stays text", "1F468 200D", {{0, 2}});
        row("joiner at the start stays text", "200D 1F468", {{1, 2}});
        row("rainbow flag without selector", "1F3F3 200D 1F308", {{0, 5}});
        row("running woman without selector", "1F3C3 200D 2640", {{0, 4}});
        row("England", "1F3F4 E0067 E0062 E0065 E006E E0067 E007F", {{0, 14}});
        row("England without its end", "1F3F4 E0067 E0062 E0065 E006E E0067", {{0, 2}});
        row("Texas is not listed", "1F3F4 E0075 E0073 E0074 E0078 E007F", {{0, 2}});

        row("behind a zero", "61 0 1F600", {{2, 2}});
        row("mahjong and cards", "1F000 1F004 1F0A1 1F0CF", {{2, 2}, {6, 2}});
        row("behind a lone high surrogate", "D83D 1F600", {{1, 2}});
        row("newer than the list", "1F426 200D 1F525", {{0, 2}, {3, 2}});
    }

    void findsWhatIsEmojiAndNothingElse()
    {
        QFETCH(QString, codePoints);
        QFETCH(Spans, expected);
        QCOMPARE(parse(fromHex(codePoints)), expected);
    }

    void resultsAreInOrderInRangeAndResolvable()
    {
        // Pieces that meet in all sorts of ways; a fixed seed, so that a failure comes back.
        const QVector<QString> pieces = [] {
            QVector<QString> all;
            for (const char *points :
                 {"FE0F",  "FE0F",  "FE0E",  "200D",      "200D",  "20E3", "31",   "23",  "1F3FB", "1F3FF",
                  "1F1E8", "1F1F3", "1F1FA", "2640 FE0F", "2642",  "D83D", "DE00", "61",  "4E2D",  "E0067",
                  "E007F", "2764",  "1F468", "1F469",     "1F466", "A9",   "0",    "EEEE"})
                all.append(fromHex(QString::fromLatin1(points)));
            return all;
        }();
        QRandomGenerator random(20240229);
        int seen = 0;
        for (int round = 0; round < 100000; ++round) {
            QString text;
            for (int count = random.bounded(1, 12); count > 0; --count) {
                if (random.bounded(3) == 0)
                    text += testLines().at(random.bounded(testLines().size())).text;
                else
                    text += pieces.at(random.bounded(pieces.size()));
                if (random.bounded(8) == 0)
                    text.chop(1);
            }
            int end = 0;
            for (const auto &[start, length] : parse(text)) {
                QVERIFY(start >= end);
                QVERIFY(length > 0);
                end = start + length;
                QVERIFY(end <= text.size());
                QVERIFY2(resolves(text.mid(start, length)), qPrintable(text));
                ++seen;
            }
        }
        QVERIFY(seen > 100000);
    }

    void largeTextTakesLinearTime()
    {
        // Each of these would take minutes if some step looked back or ahead without limit.
        const int count = 300000;
        QCOMPARE(parse(fromHex(QStringLiteral("2764")) + QString(count, QChar(0xFE0F))),
                 (Spans{{0, count + 1}}));
        QCOMPARE(parse(fromHex(QStringLiteral("1F468 200D")).repeated(count)).size(), count);
        QCOMPARE(parse(fromHex(QStringLiteral("1F1FD")).repeated(count)), Spans());
        QCOMPARE(parse(fromHex(QStringLiteral("31 FE0F")).repeated(count)), Spans());
    }

    void parentInSameThreadOwnsTheParser()
    {
        auto *parent = new QObject;
        const QPointer<EmojiParser> parser = new EmojiParser(parent);
        QCOMPARE(parser->parent(), parent);
        delete parent;
        QVERIFY(!parser);
    }

    void parentInOtherThreadIsLeftOutWithoutWarning()
    {
        QThread thread;
        thread.start();
        QObject parent;
        parent.moveToThread(&thread);
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { ++warnings; });
        {
            const EmojiParser parser(&parent);
            QVERIFY(!parser.parent());
        }
        qInstallMessageHandler(nullptr);
        QCOMPARE(warnings, 0);
        thread.quit();
        thread.wait();
    }

    void keysGiveTheFullText_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("codePoints");
        const auto row = [](const char *key, const char *codePoints) {
            QTest::newRow(key) << QString::fromLatin1(key) << QString::fromLatin1(codePoints);
        };
        row("1f468-200d-1f469-200d-1f467", "1F468 200D 1F469 200D 1F467");
        row("2764", "2764 FE0F");
        row("2764-fe0f", "2764 FE0F");
        row("31-20e3", "31 FE0F 20E3");
        row("0031-20E3", "31 FE0F 20E3");
        row("A9", "A9 FE0F");
        row("0001F600", "1F600");
        row("1f3f3-200d-1f308", "1F3F3 FE0F 200D 1F308");
        row("1f600-fe0f", "1F600");
        row("41", "41");
        row("41-fe0f", "41 FE0F");
        row("10ffff", "10FFFF");
        row("1f468-200d-1f697", "1F468 200D 1F697");
        for (const char *malformed :
             {"", "zz", "d83d", "41-dfff", "110000", "ffffffffffffffff41", "-", "1f600-", "-1f600",
              "1f468--1f469", "1f600 ", "0x1f600", "+1f600", "1f468_200d"})
            row(malformed, "");
    }

    void keysGiveTheFullText()
    {
        QFETCH(QString, key);
        QFETCH(QString, codePoints);
        QCOMPARE(EmojiParser::unicodeToEmoji(key), fromHex(codePoints));
    }

private:
    static inline int warnings = 0;
};

QTEST_GUILESS_MAIN(TestEmojiParser)
#include "tst_emojiparser.moc"
