// The HTML filter, case by case and against the plain, slow form of its rules.

#include "util/filterhtml.h"

#include "htmlrules.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QtTest>

using clipboard::filterHtml;
using htmlrules::filterByTheRules;

namespace {

[[nodiscard]] QString emojiTag(const char *path)
{
    return QStringLiteral("<img src=\"image://emojicache/%1\" width=20>")
        .arg(QString::fromLatin1(QByteArray(path).toBase64()));
}

/// The time of one pass over `text` in microseconds, the best of three.
[[nodiscard]] qint64 timeOf(const QString &text)
{
    qint64 best = std::numeric_limits<qint64>::max();
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer timer;
        timer.start();
        const QString filtered = filterHtml(text);
        best = qMin(best, timer.nsecsElapsed() / 1000);
    }
    return best;
}

} // namespace

class TestFilterHtml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void markupGoesAndLineBreaksStay_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("text");
        const auto row = [](const char *name, const QString &html, const char *text) {
            QTest::newRow(name) << html << QString::fromUtf8(text);
        };
        const auto latin = [](const char *text) { return QString::fromLatin1(text); };
        row("empty", QString(), "");
        row("plain text", latin("a > b & c"), "a > b & c");
        row("paragraph and break", latin("<p>a</p><br/>b"), "a<br/>b");
        row("style", latin("<style>x</style>a"), "a");
        row("style with attributes and markup", latin("a<style type=\"x\"><b>x</b></style>b"), "ab");
        row("word that begins with style", latin("<styled>x</style>a"), "a");
        row("large letters are another tag", latin("<STYLE>x</STYLE>a"), "xa");
        row("script", latin("a<script>if (a<b) c()</script>b"), "ab");
        row("xml", latin("a<xml><o:p/></xml>b"), "ab");
        row("break with a blank", latin("a<br />b<br>c"), "a<br/>b<br>c");
        row("break with attributes", latin("a<br class=x>b"), "a<br class=x>b");
        row("word that begins with br", latin("a<bracket>b"), "a<bracket>b");
        row("picture", latin("a<img src=\"x.png\">b"), "ab");
        row("leading line feeds", latin("\n\n\na\n\nb"), "a\n\nb");
        row("line feeds after a tag", latin("<p>\n\na"), "a");
        row("line feed after a blank", latin(" \na"), " \na");
        row("break without a tag", latin("a<br />b"), "a<br/>b");
        row("tag that does not end", latin("a<b>c<d"), "ac<d");
        row("no end at all", latin("a<b"), "a<b");
        row("end before a beginning", latin("a>b<c"), "a>b<c");
        row("empty tag", latin("a<>b"), "ab");
        row("comment ends at the first angle", latin("a<!-- x > y -->b"), "a y -->b");
        row("tag within a tag", latin("a<b<c>d>e"), "ad>e");
        row("entities stay", latin("a&nbsp;&lt;b"), "a&nbsp;&lt;b");
        row("style that never ends, at the beginning", latin("<style>x<b>y"), "xy");
        row("script that never ends, at the beginning", latin("<script>x<b>y"), "xy");
        row("xml that never ends, at the beginning", latin("<xml>x<b>y"), "xy");
        // Three characters before the tag: the rest begins at the seventh of all, the "l" of "style".
        row("style that never ends, near the beginning", latin("abc<style>x"), "abcle>x");
        row("style that never ends, further on", latin("abcdefg<style>x<b>y"), "abcdefg");
        row("end of a style before its beginning", latin("abcdefg</style><style>x"), "abcdefg");
        row("emoji", emojiTag("/usr/share/emoji/smile.png"), "[:smile:]");
        row("emoji without a folder", emojiTag("smile.png"), "[:smile:]");
        row("emoji without a suffix", emojiTag("a/smile"), "[:smile:]");
        row("emoji with two dots", emojiTag("a.b/smile.x.png"), "[:smile:]");
        row("emoji in text", latin("a ") + emojiTag("/e/smile.png") + latin(" <b>b</b>"), "a [:smile:] b");
        row("two emoji", emojiTag("/e/one.png") + emojiTag("/e/two.png"), "[:one:][:two:]");
        row("picture before an emoji takes its name", latin("<img src=x>") + emojiTag("/e/one.png"),
            "[:one:][:one:]");
        row("reference without a quote", latin("<img src=image://emojicache/QUFB>a"),
            "<img src=image://emojicache/QUFB>a");
        row("name that holds markup", emojiTag("a/<b>x.png"), "");
        row("name in another alphabet", emojiTag("/e/\xE4\xBD\xA0.png"), "[:\xE4\xBD\xA0:]");
    }
    void markupGoesAndLineBreaksStay()
    {
        QFETCH(QString, html);
        QFETCH(QString, text);
        QCOMPARE(filterHtml(html), text);
        QCOMPARE(filterByTheRules(html), text);
    }

    void anyTextComesOutAsTheRulesSay()
    {
        const QStringList pieces{
            QStringLiteral("<"),
            QStringLiteral(">"),
            QStringLiteral("\""),
            QStringLiteral("\n"),
            QStringLiteral("a"),
            QStringLiteral("text "),
            QStringLiteral("<style"),
            QStringLiteral("</style>"),
            QStringLiteral("<script>"),
            QStringLiteral("</script>"),
            QStringLiteral("<xml>"),
            QStringLiteral("</xml>"),
            QStringLiteral("<br"),
            QStringLiteral("<br />"),
            QStringLiteral("<img "),
            QStringLiteral("<img>"),
            QStringLiteral("<p>"),
            QStringLiteral("</p>"),
            QStringLiteral("image://"),
            QStringLiteral("image://emoji"),
            QStringLiteral("cache/"),
            QStringLiteral("image://emojicache/"),
            QStringLiteral("QS9iLnBuZw=="),
            QStringLiteral("PGI+"),
            emojiTag("/e/smile.png"),
        };
        QRandomGenerator random(4711);
        for (int round = 0; round < 200000; ++round) {
            QString html;
            for (int i = random.bounded(14); i > 0; --i)
                html += pieces[random.bounded(pieces.size())];
            const QString expected = filterByTheRules(html);
            if (filterHtml(html) != expected)
                QCOMPARE(html + QStringLiteral(" -> ") + filterHtml(html),
                         html + QStringLiteral(" -> ") + expected);
        }
    }

    void timeGrowsWithTheTextAlone_data()
    {
        QTest::addColumn<QString>("piece");
        QTest::addColumn<QString>("last");
        const auto row = [](const char *name, const QString &piece, const QString &last = QString()) {
            QTest::newRow(name) << piece << last;
        };
        row("document", QStringLiteral("<p class=\"x\">Some text</p><br />") + emojiTag("/e/smile.png"));
        row("only beginnings", QStringLiteral("<"));
        row("only beginnings and one end", QStringLiteral("<"), QStringLiteral(">"));
        row("styles that never end", QStringLiteral("<style>"));
        row("styles that end once", QStringLiteral("<style>"), QStringLiteral("</style>"));
        row("styles without an angle", QStringLiteral("<style"), QStringLiteral(">"));
        row("pictures", QStringLiteral("<img>"));
        row("pictures and one emoji", QStringLiteral("<img>"), emojiTag("/e/smile.png"));
        row("references without a quote", QStringLiteral("image://emojicache/<img>"));
        row("references and one quote", QStringLiteral("image://emojicache/QUFB<img>"), QStringLiteral("\""));
        row("beginnings of references", QStringLiteral("image://emoji<img>"));
    }
    void timeGrowsWithTheTextAlone()
    {
        QFETCH(QString, piece);
        QFETCH(QString, last);
        const QString small = piece.repeated(125000 / piece.size()) + last;
        const QString large = piece.repeated(1000000 / piece.size()) + last;
        const qint64 smallTime = timeOf(small);
        const qint64 largeTime = timeOf(large);
        qInfo("125,000 characters: %lld us, 1,000,000: %lld us", smallTime, largeTime);
        // Eight times the text: a quadratic walk would take 64 times as long, and minutes at this size.
        QVERIFY2(largeTime < 30 * qMax<qint64>(smallTime, 20000),
                 qPrintable(QStringLiteral("%1 us, then %2 us").arg(smallTime).arg(largeTime)));
    }
};

QTEST_GUILESS_MAIN(TestFilterHtml)
#include "tst_filterhtml.moc"
