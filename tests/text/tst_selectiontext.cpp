// The text that a selection stands for, and the mentions inside it.

#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QtTest>

using namespace fixture;

namespace {

const QString grin = QStringLiteral("\U0001F600");                                   // two units
const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467"); // eight units
const QString heart = QStringLiteral("\u2764\uFE0F");                                // a variation selector
const QString flag = QStringLiteral("\U0001F1E9\U0001F1EA");                         // four units

/// Drags from one character to another, both included.
void select(ProbeText &item, int paragraph, int from, int toParagraph, int to)
{
    const TextReference reference(item.state());
    item.drag(reference.leftHalf(paragraph, from), reference.rightHalf(toParagraph, to));
}

struct Mention
{
    int from;
    int to;
    int kind;
    QVariant data;
};

QString mentionDifference(const QVector<TextSpan> &actual, const QVector<Mention> &expected)
{
    bool same = actual.size() == expected.size();
    for (int i = 0; same && i < actual.size(); ++i) {
        same = actual.at(i).from == expected.at(i).from && actual.at(i).to == expected.at(i).to &&
               actual.at(i).kind == expected.at(i).kind && actual.at(i).data == expected.at(i).data;
    }
    QString text;
    if (!same) {
        QDebug out(&text);
        out << "are";
        for (const TextSpan &span : actual)
            out << span.from << span.to << span.kind << span.data << ";";
    }
    return text;
}

} // namespace

class TestSelectionText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emojiComeOutAsTheyWereTyped_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("selected");
        const QString mixed = QStringLiteral("a%1b%2c%3d%4e").arg(grin, family, heart, flag);
        QTest::newRow("no emoji") << QStringLiteral("abcdef") << 1 << 3 << QStringLiteral("bcd");
        QTest::newRow("before all emoji") << mixed << 0 << 0 << QStringLiteral("a");
        QTest::newRow("an emoji alone") << mixed << 1 << 1 << grin;
        QTest::newRow("a joined one alone") << mixed << 3 << 3 << family;
        QTest::newRow("one with a selector alone") << mixed << 5 << 5 << heart;
        QTest::newRow("a flag alone") << mixed << 7 << 7 << flag;
        QTest::newRow("between emoji") << mixed << 4 << 4 << QStringLiteral("c");
        QTest::newRow("from a letter to an emoji") << mixed << 0 << 1 << QStringLiteral("a") + grin;
        QTest::newRow("from an emoji to a letter") << mixed << 3 << 4 << family + QStringLiteral("c");
        QTest::newRow("behind all emoji") << mixed << 8 << 8 << QStringLiteral("e");
        QTest::newRow("all") << mixed << 0 << 8 << mixed;
        QTest::newRow("neighbouring emoji") << grin + family + grin << 1 << 2 << family + grin;
    }

    void emojiComeOutAsTheyWereTyped()
    {
        QFETCH(QString, text);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QString, selected);
        ProbeText item(text);
        select(item, 0, from, 0, to);
        QCOMPARE(item.selectedText(), selected);
    }

    void emojiOfEveryParagraphComeOut()
    {
        ProbeText item(QStringLiteral("a%1b\n%2\n%1c").arg(grin, family));
        select(item, 0, 1, 2, 0);
        QCOMPARE(item.selectedText(), QStringLiteral("%1b\n%2\n%1").arg(grin, family));
    }

    void tabsComeOutAsTabs()
    {
        ProbeText item(QStringLiteral("a\tb c"));
        select(item, 0, 0, 0, 2);
        QCOMPARE(item.selectedText(), QStringLiteral("a\tb"));
    }

    void spacesAtTheEdgesComeOutAsSpaces()
    {
        ProbeText plain(QStringLiteral("  ab"));
        select(plain, 0, 0, 0, 2);
        QCOMPARE(plain.selectedText(), QStringLiteral("  a"));
        ProbeText withEmoji(QStringLiteral("  a") + grin);
        select(withEmoji, 0, 0, 0, 3);
        QCOMPARE(withEmoji.selectedText(), QStringLiteral("  a") + grin);
    }

    void userBlocksComeOutAsTheirDisplayNames_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("selected");
        const QString ann = inBand(QStringLiteral("Ann"), Aite, QStringLiteral("7"));
        const QString bob = inBand(QStringLiteral("Bob"), Link, QStringLiteral("\"x\""));
        QTest::newRow("part of a name") << QStringLiteral("hi ") + ann << 3 << 4 << QStringLiteral("An");
        QTest::newRow("two") << ann + QStringLiteral("+") + bob << 1 << 5 << QStringLiteral("nn+Bo");
        QTest::newRow("behind an emoji")
            << grin + ann + QStringLiteral("x") << 1 << 4 << QStringLiteral("Annx");
        QTest::newRow("before an emoji") << ann + grin << 2 << 3 << QStringLiteral("n") + grin;
        QTest::newRow("between emoji") << grin + ann + family + bob << 0 << 5
                                       << grin + QStringLiteral("Ann") + family + QStringLiteral("B");
    }

    void userBlocksComeOutAsTheirDisplayNames()
    {
        QFETCH(QString, text);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(QString, selected);
        ProbeText item(text);
        select(item, 0, from, 0, to);
        QCOMPARE(item.selectedText(), selected);
    }

    void selectedMentionsAreCollected_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("first"); // of the mentions, or -1
        QTest::addColumn<int>("count");
        QTest::newRow("all") << 0 << 17 << 0 << 3;
        QTest::newRow("exactly one") << 3 << 6 << 0 << 1;
        QTest::newRow("cut at its start") << 4 << 8 << 0 << 0;
        QTest::newRow("cut at its end") << 0 << 5 << 0 << 0;
        QTest::newRow("first cut, second whole") << 4 << 11 << 1 << 1;
        QTest::newRow("second cut, third whole") << 9 << 17 << 2 << 1;
        QTest::newRow("between") << 7 << 7 << 0 << 0;
    }

    void selectedMentionsAreCollected()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(int, first);
        QFETCH(int, count);
        //                                     012345678901234567
        ProbeText item(QStringLiteral("hi @Ann @Bob @Zoe!"));
        item.setUserBlocks(blocks({block(3, 4, Aite, 1), block(8, 4, Aite, 0), block(13, 4, Aite, 3)}));
        select(item, 0, from, 0, to);
        const QVector<Mention> all{{3, 6, SpanAite, 1}, {8, 11, SpanPlainAite, 0}, {13, 16, SpanAite, 3}};
        QVector<Mention> expected;
        for (Mention mention : all.mid(first, count)) {
            // From the first selected character on.
            mention.from -= from;
            mention.to -= from;
            expected.append(mention);
        }
        QCOMPARE(mentionDifference(item.state()->aiteInfos, expected), QString());
    }

    void linksAndBlocksAreNoMentions()
    {
        ProbeText item(QStringLiteral("abcdef"));
        item.setUserBlocks(blocks({block(0, 2, Link, 1), block(2, 2, Other, 1), block(4, 2, OstrelId, 1)}));
        select(item, 0, 0, 0, 5);
        QVERIFY(item.state()->aiteInfos.isEmpty());
        item.selectAll();
        QVERIFY(item.state()->aiteInfos.isEmpty());
    }

    void emojiBeforeAMentionCountsAsOne()
    {
        ProbeText item(family + QStringLiteral("@Ann"));
        item.setUserBlocks(blocks({block(family.size(), 4, Aite, 7)}));
        select(item, 0, 0, 0, 4);
        QCOMPARE(item.selectedText(), family + QStringLiteral("@Ann"));
        QCOMPARE(mentionDifference(item.state()->aiteInfos, {{1, 4, SpanAite, 7}}), QString());
    }

    void mentionInTheSecondParagraphCountsTheSelectedPartOfTheFirst()
    {
        ProbeText item(QStringLiteral("abc\nx @Ann"));
        item.setUserBlocks(blocks({block(6, 4, Aite, 7)}));
        select(item, 0, 1, 1, 5);
        // "bc", a line end, "x ".
        QCOMPARE(mentionDifference(item.state()->aiteInfos, {{5, 8, SpanAite, 7}}), QString());
    }

    void mentionOfALaterParagraphCountsWholeParagraphsBetween()
    {
        ProbeText item(QStringLiteral("abc\n\n%1d\n@Ann").arg(grin));
        item.setUserBlocks(blocks({block(9, 4, Aite, 7)}));
        QCOMPARE(item.state()->spans.last().size(), 1);
        select(item, 0, 2, 3, 3);
        // "c", a line end, a line end, an emoji, "d", a line end.
        QCOMPARE(mentionDifference(item.state()->aiteInfos, {{6, 9, SpanAite, 7}}), QString());
    }

    void upwardDragCollectsTheSameMentions()
    {
        ProbeText item(QStringLiteral("hi @Ann you"));
        item.setUserBlocks(blocks({block(3, 4, Aite, 7)}));
        const TextReference reference(item.state());
        item.drag(reference.rightHalf(0, 8), reference.leftHalf(0, 2));
        QCOMPARE(item.selectedText(), QStringLiteral(" @Ann y"));
        QCOMPARE(mentionDifference(item.state()->aiteInfos, {{1, 4, SpanAite, 7}}), QString());
    }

    void selectAllCollectsTheMentionsOfAllParagraphs()
    {
        ProbeText item(QStringLiteral("@Ann hi\n%1@Bob").arg(grin));
        item.setUserBlocks(blocks({block(0, 4, Aite, 1), block(10, 4, Aite, 0)}));
        item.selectAll();
        QCOMPARE(mentionDifference(item.state()->aiteInfos, {{0, 3, SpanAite, 1}, {9, 12, SpanPlainAite, 0}}),
                 QString());
    }

    void recalculatingNeedsNoSelection()
    {
        ProbeText item(QStringLiteral("@Ann hi"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 1)}));
        item.recalculateAllAiteInfos();
        item.recalculateAllAiteInfos();
        QCOMPARE(mentionDifference(item.state()->aiteInfos, {{0, 3, SpanAite, 1}}), QString());
        QCOMPARE(item.selectedText(), QString());
    }

    void deselectKeepsTheMentions()
    {
        ProbeText item(QStringLiteral("@Ann hi"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 1)}));
        item.selectAll();
        item.deselect();
        QCOMPARE(item.state()->aiteInfos.size(), 1);
    }

    void clickOnALinkCollectsTheMentionsOfThatLink()
    {
        // Reading the text of a link goes the way of a selection, and leaves its mentions behind.
        ProbeText item(QStringLiteral("@Ann abc"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 1), block(5, 3, Link, QStringLiteral("x"))}));
        item.selectAll();
        QCOMPARE(item.state()->aiteInfos.size(), 1);
        const QPointF point = TextReference(item.state()).center(0, 6);
        item.press(point);
        item.release(point);
        QVERIFY(item.state()->aiteInfos.isEmpty());
    }
};

QTEST_MAIN(TestSelectionText)
#include "tst_selectiontext.moc"
