// What a copy puts on the clipboard: the selected text, and the mentions byte for byte.

#include "probetext.h"
#include "textfixture.h"
#include "textreference.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QtTest>

using namespace fixture;

namespace {

const QString mentionFormat = QStringLiteral("ostrel/aite");

const QMimeData *clipboard()
{
    return QGuiApplication::clipboard()->mimeData();
}

/// The bytes behind the Base64 text of the clipboard, as hexadecimal digits.
QByteArray mentionBytes()
{
    return QByteArray::fromBase64(clipboard()->data(mentionFormat)).toHex();
}

/// Hexadecimal digits with spaces for the eye.
QByteArray bytes(QByteArray digits)
{
    return digits.replace(' ', "");
}

void select(ProbeText &item, int paragraph, int from, int toParagraph, int to)
{
    const TextReference reference(item.state());
    item.drag(reference.leftHalf(paragraph, from), reference.rightHalf(toParagraph, to));
}

} // namespace

class TestMentionClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QGuiApplication::clipboard()->setText(QStringLiteral("untouched")); }

    void textWithoutMentionsIsCopiedAsTextAlone()
    {
        ProbeText item(QStringLiteral("abc def"));
        select(item, 0, 0, 0, 2);
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("abc"));
        QVERIFY(!clipboard()->hasFormat(mentionFormat));
        QCOMPARE(item.aiteClipboardData(), QString());
    }

    void withoutASelectionNothingIsCopied()
    {
        ProbeText item(QStringLiteral("@Ann"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 42)}));
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("untouched"));
        item.recalculateAllAiteInfos();
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("untouched"));
    }

    void oneMentionAloneIsOneRecordFromItsFirstToItsLastCharacter()
    {
        ProbeText item(QStringLiteral("hi @Ann!"));
        item.setUserBlocks(blocks({block(3, 4, Aite, 42)}));
        select(item, 0, 3, 0, 6);
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("@Ann"));
        //                            count    from     to       kind     int      value
        QCOMPARE(mentionBytes(), bytes("00000001 00000000 00000003 00000008 00000002 00 0000002a"));
    }

    void clipboardHoldsTheSameBase64TextThatTheItemHandsOut()
    {
        ProbeText item(QStringLiteral("@Ann"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 42)}));
        item.selectAll();
        item.copy();
        // 01 00000000 ... encoded by hand.
        QCOMPARE(item.aiteClipboardData(), QStringLiteral("AAAAAQAAAAAAAAADAAAACAAAAAIAAAAAKg=="));
        QCOMPARE(clipboard()->data(mentionFormat), item.aiteClipboardData().toUtf8());
    }

    void mentionsAreInOrderWithTheirKindsAndData()
    {
        QVariantMap user;
        user.insert(QStringLiteral("userId"), QStringLiteral("ab"));
        ProbeText item(QStringLiteral("@Ann @Bob"));
        item.setUserBlocks(blocks({block(0, 4, Aite, QStringLiteral("42")), block(5, 4, Aite, user)}));
        item.selectAll();
        item.copy();
        // A map is no number above 0, so the second is the mention of nobody.
        QCOMPARE(mentionBytes(), bytes("00000002"
                                       "00000000 00000003 00000008"
                                       "0000000a 00 00000004 0034 0032"
                                       "00000005 00000008 00000800"
                                       "00000008 00 00000001"
                                       "0000000c 0075 0073 0065 0072 0049 0064"
                                       "0000000a 00 00000004 0061 0062"));
    }

    void selectionThatBeginsWithAnEmojiCountsItAsOne()
    {
        // A burning heart, of five units.
        const QString emoji = QStringLiteral("\u2764\uFE0F\u200D\U0001F525");
        QCOMPARE(emoji.size(), 5);
        ProbeText item(emoji + QStringLiteral("@Ann"));
        item.setUserBlocks(blocks({block(5, 4, Aite, 42)}));
        item.selectAll();
        item.copy();
        QCOMPARE(clipboard()->text(), emoji + QStringLiteral("@Ann"));
        QCOMPARE(mentionBytes(), bytes("00000001 00000001 00000004 00000008 00000002 00 0000002a"));
    }

    void joinedEmojiOfEightUnitsCountsAsOne()
    {
        const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467");
        ProbeText item(family + QStringLiteral("@Ann"));
        item.setUserBlocks(blocks({block(8, 4, Aite, 42)}));
        select(item, 0, 0, 0, 4);
        item.copy();
        QCOMPARE(clipboard()->text(), family + QStringLiteral("@Ann"));
        QCOMPARE(mentionBytes(), bytes("00000001 00000001 00000004 00000008 00000002 00 0000002a"));
    }

    void mentionInTheSecondParagraphIsOffsetByTheSelectedPartOfTheFirst()
    {
        ProbeText item(QStringLiteral("abc\n@Ann"));
        item.setUserBlocks(blocks({block(4, 4, Aite, 42)}));
        select(item, 0, 1, 1, 3);
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("bc\n@Ann"));
        QCOMPARE(mentionBytes(), bytes("00000001 00000003 00000006 00000008 00000002 00 0000002a"));
    }

    void mentionThatIsCutByTheSelectionIsPlainText()
    {
        ProbeText item(QStringLiteral("@Ann!"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 42)}));
        select(item, 0, 1, 0, 4);
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("Ann!"));
        QVERIFY(!clipboard()->hasFormat(mentionFormat));
    }

    void mentionInsideTheTextIsCopiedByItsDisplayName()
    {
        ProbeText item(QStringLiteral("hi ") +
                       inBand(QStringLiteral("@Ann"), Aite, QStringLiteral("\"42\"")));
        item.selectAll();
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("hi @Ann"));
        QCOMPARE(mentionBytes(), bytes("00000001 00000003 00000006 00000008 0000000a 00 00000004 0034 0032"));
    }

    void tabsAndEdgeSpacesAreCopiedAsThemselves()
    {
        ProbeText item(QStringLiteral("  a\tb  \n c"));
        const TextReference reference(item.state());
        item.drag(reference.leftHalf(0, 0), reference.rightHalf(1, 1));
        item.copy();
        QCOMPARE(clipboard()->text(), QStringLiteral("  a\tb  \n c"));
    }

    void copyKeysCopyLikeTheSlot()
    {
        ProbeText item(QStringLiteral("@Ann"));
        item.setUserBlocks(blocks({block(0, 4, Aite, 42)}));
        item.selectAll();
        QVERIFY2(!item.key(Qt::Key_C, Qt::ControlModifier), "the key travels on");
        QCOMPARE(clipboard()->text(), QStringLiteral("@Ann"));
        QCOMPARE(mentionBytes(), bytes("00000001 00000000 00000003 00000008 00000002 00 0000002a"));
    }

    void copyKeysWithoutASelectionLeaveTheClipboardAlone()
    {
        ProbeText item(QStringLiteral("abc"));
        QVERIFY(!item.key(Qt::Key_C, Qt::ControlModifier));
        QCOMPARE(clipboard()->text(), QStringLiteral("untouched"));
    }

    void cutAndPasteKeysDoNothing()
    {
        ProbeText item(QStringLiteral("abc"));
        item.selectAll();
        QVERIFY(!item.key(Qt::Key_X, Qt::ControlModifier));
        QVERIFY(!item.key(Qt::Key_V, Qt::ControlModifier));
        QCOMPARE(clipboard()->text(), QStringLiteral("untouched"));
        QCOMPARE(item.text(), QStringLiteral("abc"));
    }
};

QTEST_MAIN(TestMentionClipboard)
#include "tst_mentionclipboard.moc"
