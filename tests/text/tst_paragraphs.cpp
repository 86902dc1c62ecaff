// Lines and paragraphs, against what a QTextStream reads.

#include "text/drawabletextprivate.h"
#include "text/paragraphs.h"

#include <QRandomGenerator>
#include <QTextStream>
#include <QtTest>

using namespace drawabletext;

namespace {

QStringList linesOfStream(QString text)
{
    QStringList lines;
    QTextStream stream(&text, QIODevice::ReadOnly);
    QString line;
    while (stream.readLineInto(&line)) {
        for (int i = 0; i < line.size() && line.at(i) == QLatin1Char(' '); ++i)
            line[i] = QChar(QChar::Nbsp);
        for (int i = line.size() - 1; i >= 0 && line.at(i) == QLatin1Char(' '); --i)
            line[i] = QChar(QChar::Nbsp);
        lines.append(line);
    }
    return lines;
}

} // namespace

class TestParagraphs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void edgeSpacesBecomeUnbreakable_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("empty") << QString() << QStringList();
        QTest::newRow("one line") << QStringLiteral("a b") << QStringList{QStringLiteral("a b")};
        QTest::newRow("last line end") << QStringLiteral("a\n") << QStringList{QStringLiteral("a")};
        QTest::newRow("only a line end") << QStringLiteral("\n") << QStringList{QString()};
        QTest::newRow("edges") << QStringLiteral("  a  b \n c")
                               << QStringList{QStringLiteral("\u00a0\u00a0a  b\u00a0"),
                                              QStringLiteral("\u00a0c")};
        QTest::newRow("nothing but spaces")
            << QStringLiteral("   ") << QStringList{QStringLiteral("\u00a0\u00a0\u00a0")};
        QTest::newRow("other blanks stay")
            << QStringLiteral("\u2003a\t") << QStringList{QStringLiteral("\u2003a\t")};
    }

    void edgeSpacesBecomeUnbreakable()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, lines);
        QCOMPARE(readLines(text), lines);
    }

    void linesAreThoseOfATextStream()
    {
        const QString alphabet = QStringLiteral("\n\n\r\r  ab\u00a0\u2028\f") + QChar(0) + QChar(0xD83D);
        QRandomGenerator random(17);
        for (int round = 0; round < 50000; ++round) {
            QString text;
            const int length = random.bounded(12);
            for (int i = 0; i < length; ++i)
                text += alphabet.at(random.bounded(alphabet.size()));
            QCOMPARE(readLines(text), linesOfStream(text));
        }
    }

    void aTextOfOneLineIsNotCopied()
    {
        const QString text = QStringLiteral("hello there").repeated(3);
        const QStringList lines = readLines(text);
        QCOMPARE(lines.constFirst().constData(), text.constData());
    }

    void paragraphsComeFromTheTextOrFromWhatIsLeftOfIt_data()
    {
        QTest::addColumn<int>("elide");
        QTest::addColumn<QStringList>("paragraphs");
        const QStringList whole = {QStringLiteral("a"), QStringLiteral("b")};
        const QStringList left = {QStringLiteral("c")};
        QTest::newRow("none") << int(Qt::ElideNone) << whole;
        QTest::newRow("left") << int(Qt::ElideLeft) << left;
        QTest::newRow("middle") << int(Qt::ElideMiddle) << left;
        QTest::newRow("right") << int(Qt::ElideRight) << left;
    }

    void paragraphsComeFromTheTextOrFromWhatIsLeftOfIt()
    {
        QFETCH(int, elide);
        QFETCH(QStringList, paragraphs);
        DrawableTextPrivate state;
        state.text = QStringLiteral("a\nb\n");
        state.elidedText = QStringLiteral("c");
        state.elide = Qt::TextElideMode(elide);
        state.spans = {{{0, 1, QVariant(), SpanLink}}, {}, {}};
        splitParagraphs(state);
        QCOMPARE(state.paragraphs, paragraphs);
        QCOMPARE(state.sourceParagraphs, paragraphs);
        QCOMPARE(state.spans.size(), paragraphs.size());
        for (const QVector<TextSpan> &spans : qAsConst(state.spans))
            QVERIFY(spans.isEmpty());
    }
};

QTEST_APPLESS_MAIN(TestParagraphs)
#include "tst_paragraphs.moc"
