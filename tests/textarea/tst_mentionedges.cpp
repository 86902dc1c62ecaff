// Where positions stand to mentions, and what dissolves these.

#include "textarea/mentionedges.h"

#include "box.h"
#include "documents.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace fixture;
using namespace mentionedges;

namespace {

/// The flags told by the rules alone.
int tellFlags(DocumentBuilder &builder, int position)
{
    constexpr int none = DocumentBuilder::none;
    const int end = (*builder).characterCount() - 1;
    int flags = (position == 0 ? 16 : 0) | (position == end ? 32 : 0);
    const int after = builder.serialAt(position);
    const int before = builder.serialAt(position == 0 ? 0 : position - 1);
    const bool isFirst = position <= 1 || builder.serialAt(position - 2) != before;
    if (before != none && isFirst)
        return flags | 1;
    if (before != none && after != before)
        flags |= 2;
    if (after != none && after != before)
        flags |= 8;
    if (!(flags & (2 | 8)) && before != none && after == before)
        flags |= 4;
    return flags;
}

bool isMention(QTextDocument &document, int position)
{
    QTextCursor cursor(&document);
    cursor.setPosition(position + 1);
    return cursor.charFormat().hasProperty(QTextFormat::UserProperty + 2);
}

} // namespace

class TestMentionEdges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boundariesOfAMentionInText()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("a"))
            .mention(QStringLiteral("@bcd"), 1, mention(1))
            .text(QStringLiteral("e"));
        const QVector<int> expected{16, 8, 1, 4, 4, 2, 32};
        for (int i = 0; i < expected.size(); ++i)
            QCOMPARE(boundaryAt(*builder, i), expected.at(i));
    }

    void boundariesOfAMentionThatIsAll()
    {
        DocumentBuilder builder;
        builder.mention(QStringLiteral("@bc"), 1, mention(1));
        QCOMPARE(boundaryAt(*builder, 0), 16 | 1);
        QCOMPARE(boundaryAt(*builder, 1), 1);
        QCOMPARE(boundaryAt(*builder, 2), 4);
        QCOMPARE(boundaryAt(*builder, 3), 32 | 2);
    }

    void neighboursShareAnEdge()
    {
        DocumentBuilder builder;
        builder.mention(QStringLiteral("@b"), 1, mention(1)).mention(QStringLiteral("@c"), 2, mention(2));
        QCOMPARE(boundaryAt(*builder, 2), 2 | 8);
    }

    void anEmptyDocumentHasBothEnds()
    {
        DocumentBuilder builder;
        QCOMPARE(boundaryAt(*builder, 0), 16 | 32);
    }

    void positionsOutsideCountAsTheNearestEdge()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("ab"));
        QCOMPARE(boundaryAt(*builder, -5), 16);
        QCOMPARE(boundaryAt(*builder, 99), 32);
    }

    void aMentionAtALineStartEndsTheLineBefore()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("a\n")).mention(QStringLiteral("@b"), 1, mention(1));
        QCOMPARE(boundaryAt(*builder, 2), 8);
        QCOMPARE(boundaryAt(*builder, 3), 1);
        QCOMPARE(boundaryAt(*builder, 4), 32 | 2);
    }

    void dissolvingInsideMakesPlainText_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("firstStays");
        QTest::addColumn<bool>("secondStays");
        // x @ab y @cd : the first at 1..3, the second at 5..7
        QTest::newRow("outer edges") << 1 << 8 << true << true;
        QTest::newRow("inside the first") << 2 << 2 << false << true;
        QTest::newRow("behind its second") << 3 << 3 << false << true;
        QTest::newRow("right edge") << 4 << 4 << true << true;
        QTest::newRow("from one into the other") << 3 << 6 << false << false;
        QTest::newRow("from outside into the second") << 0 << 7 << true << false;
    }
    void dissolvingInsideMakesPlainText()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, firstStays);
        QFETCH(bool, secondStays);
        DocumentBuilder builder;
        builder.text(QStringLiteral("x"))
            .mention(QStringLiteral("@"), 1, mention(1))
            .mentionEmoji(QStringLiteral("1f600"), grin, 1, mention(1))
            .mention(QStringLiteral("b"), 1, mention(1))
            .text(QStringLiteral("y"))
            .mention(QStringLiteral("@cd"), 2, mention(2));
        const QString text = (*builder).toPlainText();
        dissolve(*builder, from, to);
        QCOMPARE((*builder).toPlainText(), text);
        for (int i = 1; i <= 3; ++i)
            QCOMPARE(isMention(*builder, i), firstStays);
        for (int i = 5; i <= 7; ++i)
            QCOMPARE(isMention(*builder, i), secondStays);

        QTextCursor cursor(&*builder);
        cursor.setPosition(3);
        const QTextCharFormat emoji = cursor.charFormat();
        QCOMPARE(emoji.property(QTextFormat::UserProperty).toStringList().value(1), grin);
        QCOMPARE(emoji.hasProperty(QTextFormat::UserProperty + 1), firstStays);
        QCOMPARE(emoji.hasProperty(QTextFormat::ForegroundBrush), firstStays);
    }

    void oneUndoBringsADissolvedMentionBack()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("x")).mention(QStringLiteral("@abc"), 1, mention(1));
        dissolve(*builder, 3, 3);
        QVERIFY(!isMention(*builder, 2));
        (*builder).undo();
        for (int i = 1; i <= 4; ++i)
            QVERIFY(isMention(*builder, i));
    }

    // Its right edge looks like the place behind a first character, so text behind it dissolves it.
    void aMentionOfOneCharacterDissolvesAtItsRightEdge()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("x")).mention(QStringLiteral("A"), 1, mention(1));
        QCOMPARE(boundaryAt(*builder, 2), 32 | 1);
        dissolve(*builder, 2, 2);
        QVERIFY(!isMention(*builder, 1));
    }

    void edgesAreFoundFromInsideAndOutside()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("x"))
            .mention(QStringLiteral("@ab"), 1, mention(1))
            .text(QStringLiteral("yz"))
            .mention(QStringLiteral("@cd"), 2, mention(2))
            .text(QStringLiteral("q"));
        QCOMPARE(leftEdgeBefore(*builder, 4), 1);
        QCOMPARE(leftEdgeBefore(*builder, 9), 6);
        QCOMPARE(leftEdgeBefore(*builder, 6), 1);
        QCOMPARE(leftEdgeBefore(*builder, 1), 0);
        QCOMPARE(leftEdgeBefore(*builder, 0), 0);
        QCOMPARE(rightEdgeBehind(*builder, 1), 4);
        QCOMPARE(rightEdgeBehind(*builder, 4), 9);
        QCOMPARE(rightEdgeBehind(*builder, 9), 10);
        QCOMPARE(rightEdgeBehind(*builder, 10), 10);
    }

    void anyPositionHasTheFlagsThatTheRulesTell()
    {
        QRandomGenerator random(3);
        for (int round = 0; round < 500; ++round) {
            DocumentBuilder builder;
            for (int piece = random.bounded(8); piece > 0; --piece) {
                const uint serial = uint(random.bounded(3));
                if (random.bounded(2))
                    builder.text(QStringLiteral("ab\n").left(random.bounded(1, 4)));
                else
                    builder.mention(QStringLiteral("@cde").left(random.bounded(1, 5)), serial, mention(1));
            }
            for (int i = 0; i < (*builder).characterCount(); ++i)
                QCOMPARE(boundaryAt(*builder, i), tellFlags(builder, i));
        }
    }
};

QTEST_MAIN(TestMentionEdges)
#include "tst_mentionedges.moc"
