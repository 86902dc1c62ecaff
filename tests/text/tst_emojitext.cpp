// Emoji as the text engine counts them, against plain references that parse every prefix anew.

#include "text/drawabletextprivate.h"
#include "text/emojitext.h"

#include "literalrules.h"

#include <emoji/emojiconvert.h>

#include <QRandomGenerator>
#include <QtTest>

using namespace drawabletext;

namespace {

QString text(std::initializer_list<uint> codePoints)
{
    QString result;
    for (const uint codePoint : codePoints) {
        if (QChar::requiresSurrogates(codePoint)) {
            result += QChar(QChar::highSurrogate(codePoint));
            result += QChar(QChar::lowSurrogate(codePoint));
        } else {
            result += QChar(ushort(codePoint));
        }
    }
    return result;
}

QString flag()
{
    return text({0x1F1E8, 0x1F1F3});
}

QString halfFlag()
{
    return text({0x1F1E8});
}

const QVector<QString> &pieces()
{
    // Whole emoji, and all that joins, ends or cuts them.
    static const QVector<QString> all = {
        text({0x1F600}),
        text({0x1F44D, 0x1F3FD}),
        text({0x1F468, 0x200D, 0x1F469, 0x200D, 0x1F467, 0x200D, 0x1F466}),
        text({0x1F3F4, 0xE0067, 0xE0062, 0xE0065, 0xE006E, 0xE0067, 0xE007F}),
        text({0x1F3F3, 0xFE0F, 0x200D, 0x1F308}),
        text({0x1F468, 0x200D, 0x1F469, 0x200D, 0x1F467, 0xFE0E}),
        text({0x1F469, 0x200D, 0xFE0F, 0x1F467}),
        text({0x1F469, 0x200D}),
        flag(),
        halfFlag(),
        text({0x1F1FD}),
        text({0x2764, 0xFE0F}),
        text({0x2764}),
        text({0x31, 0xFE0F, 0x20E3}),
        text({0x31}),
        text({0x20E3}),
        text({0xFE0F}),
        text({0xFE0E}),
        text({0x200D}),
        text({0x1F3FB}),
        text({0xE0067}),
        text({0xE007F}),
        text({0xA9}),
        text({0x0001}),
        text({0x4E2D}),
        text({0x61}),
        text({0x20}),
        QString(QChar(0xD83D)),
        QString(QChar(0xD83C)),
        QString(QChar(0xDE00)),
    };
    return all;
}

QString randomText(QRandomGenerator &random, int pieceCount)
{
    QString result;
    for (int i = 0; i < pieceCount; ++i)
        result += pieces().at(random.bounded(pieces().size()));
    return result;
}

} // namespace

class TestEmojiText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void excessIsWhatCollapsingSaves_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<int>("excess");
        QTest::newRow("empty") << QString() << 0;
        QTest::newRow("plain") << QStringLiteral("plain 123") << 0;
        QTest::newRow("one unit") << text({0x2764}) << 0;
        QTest::newRow("two units") << text({0x1F600}) << 1;
        QTest::newRow("keycap") << text({0x31, 0xFE0F, 0x20E3}) << 2;
        QTest::newRow("flag and letters") << text({0x61, 0x1F1E8, 0x1F1F3, 0x62}) << 3;
        QTest::newRow("family") << text({0x1F468, 0x200D, 0x1F469, 0x200D, 0x1F467}) << 7;
        QTest::newRow("family cut behind the joiner") << text({0x1F468, 0x200D}) << 1;
        QTest::newRow("half an emoji") << QString(QChar(0xD83D)) << 0;
    }

    void excessIsWhatCollapsingSaves()
    {
        QFETCH(QString, input);
        QFETCH(int, excess);
        QCOMPARE(emojiExcess(input), excess);
    }

    void everyPrefixCountsAsItParsesAlone_data()
    {
        QTest::addColumn<QString>("input");
        QTest::newRow("empty") << QString();
        QTest::newRow("plain") << QStringLiteral("no emoji at all");
        for (int i = 0; i < pieces().size(); ++i) {
            const QString piece = pieces().at(i);
            QTest::addRow("piece %d", i) << piece;
            QTest::addRow("piece %d three times", i) << piece + piece + piece;
            QTest::addRow("piece %d in text", i) << QStringLiteral("a") + piece + QStringLiteral("b") + piece;
            QTest::addRow("piece %d between emoji", i) << pieces().at(0) + piece + pieces().at(2) + piece;
            QTest::addRow("piece %d between flags", i) << flag() + flag() + piece + flag() + halfFlag();
        }
    }

    void everyPrefixCountsAsItParsesAlone()
    {
        QFETCH(QString, input);
        checkAllPrefixes(input);
    }

    void everyPrefixOfRandomTextCountsAsItParsesAlone()
    {
        QRandomGenerator random(20220914);
        for (int round = 0; round < 20000; ++round) {
            checkAllPrefixes(randomText(random, 1 + random.bounded(14)));
            if (QTest::currentTestFailed())
                return;
        }
    }

    void collapsingEqualsReplacingOneByOne()
    {
        QRandomGenerator random(4711);
        for (int round = 0; round < 5000; ++round) {
            const QString first = randomText(random, random.bounded(12));
            const QString second = randomText(random, random.bounded(12));
            DrawableTextPrivate state;
            state.emojiSize = 20.0;
            state.paragraphs = QStringList{first, second};
            state.spans.resize(2);
            state.spans[1].append({0, 0, QVariant(1), SpanLink});
            collapseEmoji(state);

            int count = 0;
            const QStringList sources = {first, second};
            for (int paragraph = 0; paragraph < 2; ++paragraph) {
                QString collapsed = sources.at(paragraph);
                const QVector<EmojiRecord> expected = literalrules::collapse(collapsed);
                QCOMPARE(state.paragraphs.at(paragraph), collapsed);
                QCOMPARE(state.emojis.at(paragraph).size(), expected.size());
                // The spans stand behind those that were there.
                const QVector<TextSpan> spans = state.spans.at(paragraph).mid(paragraph);
                QCOMPARE(spans.size(), expected.size());
                for (int i = 0; i < expected.size(); ++i) {
                    const EmojiRecord &record = state.emojis.at(paragraph).at(i);
                    QCOMPARE(record.pos, expected.at(i).pos);
                    QCOMPARE(record.length, 1);
                    QCOMPARE(record.text, expected.at(i).text);
                    QCOMPARE(record.unicode, expected.at(i).unicode);
                    QVERIFY(!record.unicode.isEmpty());
                    QCOMPARE(record.rect, QRectF(0.0, 0.0, 20.0, 20.0));
                    const TextSpan span = {record.pos, record.pos, QVariant(), SpanEmoji};
                    QCOMPARE(spans.at(i), span);
                }
                count += expected.size();

                QString elided = sources.at(paragraph);
                const QStringList forms = collapseForElide(elided);
                QCOMPARE(elided, collapsed);
                QCOMPARE(forms.size(), expected.size());
                for (int i = 0; i < forms.size(); ++i)
                    QCOMPARE(EmojiConvert::instance()->emojiUnicode(forms.at(i)), expected.at(i).unicode);
            }
            QCOMPARE(state.emojiCount, count);
            QCOMPARE(state.hasEmoji, count > 0);
        }
    }

    void knownFormsDifferBySelectorsAndJoiners_data()
    {
        QTest::addColumn<QString>("emoji");
        QTest::addColumn<QString>("form");
        QTest::newRow("known") << text({0x1F600}) << text({0x1F600});
        QTest::newRow("a selector too many") << text({0x1F600, 0xFE0F}) << text({0x1F600});
        QTest::newRow("a joiner too many") << text({0x1F600, 0x200D}) << text({0x1F600});
        QTest::newRow("both too many") << text({0x1F600, 0xFE0F, 0x200D}) << text({0x1F600});
        QTest::newRow("unknown") << QStringLiteral("a") << QString();
    }

    void knownFormsDifferBySelectorsAndJoiners()
    {
        QFETCH(QString, emoji);
        QFETCH(QString, form);
        QCOMPARE(knownEmojiForm(emoji), form);
    }

    void textWithoutEmojiStaysShared()
    {
        DrawableTextPrivate state;
        const QString plain = QStringLiteral("plain text 123");
        state.paragraphs = QStringList{plain};
        const QStringList before = state.paragraphs;
        state.spans.resize(1);
        collapseEmoji(state);
        QVERIFY(state.paragraphs.isSharedWith(before));
        QVERIFY(!state.hasEmoji);
        QCOMPARE(state.emojis.size(), 1);
    }

    void manyPrefixesOfLongTextTakeLinearTime()
    {
        // A search for a flag in a long message asks twice for each. Parsing all that is in front of it each
        // time would go on for minutes.
        QString flags;
        for (int i = 0; i < 100000; ++i)
            flags += flag();
        const EmojiPrefixes prefixes(flags);
        for (int i = 1; i <= 100000; ++i) {
            QCOMPARE(prefixes.excess(4 * i), 3 * i);
            QCOMPARE(prefixes.excess(4 * i - 1), 3 * (i - 1));
        }
    }

private:
    static void checkAllPrefixes(const QString &input)
    {
        const EmojiPrefixes prefixes(input);
        for (int length = -2; length <= input.size() + 2; ++length) {
            const int expected = emojiExcess(input.mid(0, length));
            if (prefixes.excess(length) == expected)
                continue;
            QFAIL(qPrintable(QStringLiteral("the first %1 units of %2 gave %3 instead of %4")
                                 .arg(length)
                                 .arg(hexadecimal(input))
                                 .arg(prefixes.excess(length))
                                 .arg(expected)));
        }
    }

    static QString hexadecimal(const QString &input)
    {
        QStringList units;
        for (const QChar unit : input)
            units.append(QString::number(unit.unicode(), 16));
        return units.join(QLatin1Char(' '));
    }
};

QTEST_APPLESS_MAIN(TestEmojiText)
#include "tst_emojitext.moc"
