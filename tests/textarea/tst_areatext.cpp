// Text on its way into the input box.

#include "textarea/areatext.h"

#include "box.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

using namespace areatext;

namespace {

/// `text` with each run of `pattern` (with the number `count` in it) replaced.
QString replaced(QString text, const QString &pattern, int count, int by)
{
    return text.replace(QRegularExpression(pattern.arg(count)), QString(std::max(by, 0), QLatin1Char('\n')));
}

/// `fittingReturns` told in regular expressions; "-" for none.
QString fittingReference(const QString &text, int limit, int before, int after)
{
    if (!text.contains(QRegularExpression(QStringLiteral("[^\n]")))) {
        const int allowed = limit - after - before;
        return allowed > 0 ? replaced(text, QStringLiteral("[\n]{%1,}"), allowed + 1, allowed)
                           : QStringLiteral("-");
    }
    const int head = std::max(limit - before, 0);
    const int tail = std::max(limit - after, 0);
    const QString led = replaced(text, QStringLiteral("^[\n]{%1,}"), head + 1, head);
    return replaced(led, QStringLiteral("[\n]{%1,}\\z"), tail + 1, tail);
}

} // namespace

class TestAreaText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void spacesTabsAndOddCharactersTakeTheirPrivateForms_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("letters") << QStringLiteral("abc") << QStringLiteral("abc");
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("spaces") << QStringLiteral(" a  b ") << QStringLiteral("\u00A0a\u00A0\u00A0b\u00A0");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("a\uEEEFb");
        QTest::newRow("form feed") << QStringLiteral("a\fb") << QStringLiteral("a\nb");
        QTest::newRow("object") << QStringLiteral("a\uFFFCb") << QStringLiteral("a\u00A0b");
        QTest::newRow("line end") << QStringLiteral("a\nb") << QStringLiteral("a\nb");
        QTest::newRow("no-break space") << QStringLiteral("\u00A0") << QStringLiteral("\u00A0");
    }
    void spacesTabsAndOddCharactersTakeTheirPrivateForms()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QCOMPARE(normalised(text), expected);
    }

    void eachEmojiBecomesOnePlaceholder()
    {
        for (const fixture::EmojiKind &kind : fixture::emojiKinds()) {
            const Prepared result = prepared(QStringLiteral("a") + kind.source + QStringLiteral("b"));
            QVERIFY2(result.text == QStringLiteral("a\uEEEEb"), kind.name);
            QCOMPARE(result.emojis.size(), 1);
            QVERIFY2(result.emojis.first()->key == kind.key, kind.name);
            QVERIFY2(result.emojis.first()->source == kind.source, kind.name);
        }
    }

    void anEmojiWithASurplusSelectorKeepsItsSource()
    {
        // The library does not know the face with a selector behind it; without the selector it does.
        const QString odd = fixture::grin + QChar(0xFE0F);
        const Prepared result = prepared(odd);
        QVERIFY(result.text.startsWith(QChar(0xEEEE)));
        QCOMPARE(result.emojis.first()->key, QStringLiteral("1f600"));
        QString source = result.text;
        source.replace(QChar(0xEEEE), result.emojis.first()->source);
        QCOMPARE(source, odd);
    }

    void aPlaceholderInTheTextIsNoEmoji()
    {
        const Prepared result = prepared(QStringLiteral("\uEEEE") + fixture::grin + QStringLiteral("\uEEEE"));
        QCOMPARE(result.text, QStringLiteral("\uEEEE\uEEEE\uEEEE"));
        QCOMPARE(result.emojis.size(), 3);
        QVERIFY(!result.emojis.at(0));
        QVERIFY(result.emojis.at(1));
        QVERIFY(!result.emojis.at(2));
    }

    void textCharactersThatCouldBeEmojiStayText()
    {
        for (const QString &text : {QStringLiteral("1"), QStringLiteral("\u00A9"), QStringLiteral("#*"),
                                    QStringLiteral("\U00020BB7"), QStringLiteral("\u2764\uFE0E")})
            QCOMPARE(prepared(text).text, text);
    }

    void longRunsOfLineEndsAreCut()
    {
        QCOMPARE(withLimitedReturns(QStringLiteral("a\n\n\n\nb\n"), 2), QStringLiteral("a\n\nb\n"));
        QCOMPARE(withLimitedReturns(QStringLiteral("\n\na\n\n"), 0), QStringLiteral("a"));
        QCOMPARE(withLimitedReturns(QStringLiteral("\n\n\n"), -1), QStringLiteral("\n\n\n"));
        QCOMPARE(withLimitedReturns(QString(), 2), QString());
    }

    void lineEndsFitBetweenThoseAround()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 3000; ++round) {
            QString text;
            for (int i = random.bounded(1, 9); i > 0; --i)
                text += random.bounded(3) ? QLatin1Char('\n') : QLatin1Char('x');
            const int limit = random.bounded(5);
            const int before = random.bounded(5);
            const int after = random.bounded(5);
            const QString expected = fittingReference(text, limit, before, after);
            const QString actual = fittingReturns(text, limit, before, after).value_or(QStringLiteral("-"));
            QVERIFY2(actual == expected,
                     qPrintable(QStringLiteral("%1 limit %2 before %3 after %4")
                                    .arg(QString(text).replace(QLatin1Char('\n'), QLatin1Char('.')))
                                    .arg(limit)
                                    .arg(before)
                                    .arg(after)));
        }
    }

    void blanksAreCutFromBothEdges_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("leftCut");
        const auto row = [](const char *name, const QString &text, const QString &expected, int leftCut) {
            QTest::newRow(name) << text << expected << leftCut;
        };
        row("nothing to cut", QStringLiteral("a b"), QStringLiteral("a b"), 0);
        row("spaces", QStringLiteral("  a b "), QStringLiteral("a b"), 2);
        row("lines and tabs", QStringLiteral("\n\ta\n"), QStringLiteral("a"), 2);
        row("all blank", QStringLiteral(" \n "), QString(), 3);
        row("empty", QString(), QString(), 0);
        row("object character", QStringLiteral("\uFFFCa\uFFFC"), QStringLiteral("a"), 1);
        row("combining mark", QStringLiteral("\u0301a"), QStringLiteral("a"), 1);
        row("combining mark behind a letter", QStringLiteral("ae\u0301 "), QStringLiteral("ae"), 0);
        row("right-to-left mark", QStringLiteral("\u200F\u05D0\u200F"), QStringLiteral("\u05D0"), 1);
        row("private logo", QStringLiteral(" \uF8FF "), QStringLiteral("\uF8FF"), 1);
        row("pair", QStringLiteral(" \U00020BB7 "), QStringLiteral("\U00020BB7"), 1);
        row("lone half of a pair", QChar(0xD842) + QStringLiteral("a"), QStringLiteral("a"), 1);
        for (const fixture::EmojiKind &kind : fixture::emojiKinds())
            row(kind.name, kind.source, kind.source, 0);
    }
    void blanksAreCutFromBothEdges()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        QFETCH(int, leftCut);
        QCOMPARE(trimmed(text).text, expected);
        QCOMPARE(trimmed(text).leftCut, leftCut);
    }

    void anEmojiKeepsItsSelectorWhenBlanksBehindItGo()
    {
        const QString heart = QStringLiteral("\u2764\uFE0F");
        QCOMPARE(trimmed(QLatin1Char(' ') + heart + QLatin1Char(' ')).text, heart);
    }

    void headOfTheWord_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("left");
        const auto row = [](const char *text, const char *left) {
            QTest::newRow(text) << QString::fromUtf8(text) << QString::fromUtf8(left);
        };
        row("", "");
        row("word", "");
        row("two words", "two"); // the space that ends the word goes with it
        row("two words ", "two words");
        row("camelCase", "camel"); // one part at a time
        row("camel", "");
        row("ABC", "AB");
        row("end.", "end"); // punctuation goes when it is all there is
        row("a.b", "a.");   // else it stays
        row("x(y", "x(");
        row("v2Beta3", "v2");
        row("A\u00E4", ""); // letters of any alphabet
        row("A+b", "A");    // "+" is neither letter nor punctuation: the upper-case letter stays
        row("\u4F60\u597D", "");
        row("C\uEEEE", "C"); // an emoji behind an upper-case letter
    }
    void headOfTheWord()
    {
        QFETCH(QString, text);
        QFETCH(QString, left);
        // In the document a space is a no-break space.
        for (const QChar space : {QChar(QLatin1Char(' ')), QChar(QChar::Nbsp)}) {
            QString before = text;
            before.replace(QLatin1Char(' '), space);
            QString rest = before.left(before.size() - wordHeadLength(before));
            QCOMPARE(rest.replace(space, QLatin1Char(' ')), left);
        }
    }
};

QTEST_GUILESS_MAIN(TestAreaText)
#include "tst_areatext.moc"
