// How a message gets into the input box and out of it.

#include "box.h"

#include "messageguard.h"

#include <QIntValidator>
#include <QRegularExpressionValidator>
#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

namespace {

constexpr int patience = 10'000; // ms

/// Takes texts up to a length, as a client's validator may.
class LengthValidator : public QValidator
{
public:
    explicit LengthValidator(int longest)
        : longest(longest)
    {}
    State validate(QString &text, int &) const override
    {
        seen.append(text);
        return text.size() <= longest ? Intermediate : Invalid;
    }
    mutable QStringList seen;

private:
    int longest;
};

} // namespace

class TestAreaContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { guard = std::make_unique<MessageGuard>(); }
    void cleanup()
    {
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    // ---- limits

    void whatPassesTheLimitIsCutAndSignalledOnce()
    {
        Box box;
        box.setMaxCharacterCount(5);
        QSignalSpy reached(&box, &DrawableTextArea::maxCharacterCountReached);
        box.insertText(QStringLiteral("abcdefgh"));
        QCOMPARE(box.content(), QStringLiteral("abcde"));
        QCOMPARE(reached.count(), 1);
        box.insertText(QStringLiteral("x"));
        QCOMPARE(box.content(), QStringLiteral("abcde"));
        QCOMPARE(reached.count(), 2);
    }

    void anEmojiCountsOneTowardsTheLimit()
    {
        Box box;
        box.setMaxCharacterCount(3);
        box.insertText(family + grin + family + grin);
        QCOMPARE(box.content(), family + grin + family);
    }

    void reachingTheLimitExactlyIsSignalled()
    {
        Box box;
        box.setMaxCharacterCount(3);
        QSignalSpy reached(&box, &DrawableTextArea::maxCharacterCountReached);
        box.insertText(QStringLiteral("ab"));
        QCOMPARE(reached.count(), 0);
        box.insertText(QStringLiteral("c"));
        QCOMPARE(reached.count(), 1);
    }

    void theLimitNeverCutsACharacterInTwo()
    {
        Box box;
        box.setMaxCharacterCount(2);
        box.insertText(QStringLiteral("a\U00020BB7"));
        QCOMPARE(box.raw(), QStringLiteral("a"));
    }

    // The selection is counted with its emoji in full, which makes room for more than it takes.
    void aSelectedEmojiMakesRoomForItsFullLength()
    {
        Box box;
        box.setMaxCharacterCount(5);
        box.insertText(QStringLiteral("abcd") + family);
        box.select(4, 5);
        box.insertText(QStringLiteral("0123456789ABCDEFGH"));
        QCOMPARE(box.content(), QStringLiteral("abcd0123456789A"));
    }

    void aMentionThatDoesNotFitGoesInAsText()
    {
        Box box;
        box.setMaxCharacterCount(6);
        box.insertText(QStringLiteral("abc"));
        box.insertText(QStringLiteral("@Ann"), mention(1));
        QCOMPARE(box.content(), QStringLiteral("abc@An"));
        QCOMPARE(box.aiteList(), QVariantList());
    }

    void aMentionThatFitsExactlyIsOne()
    {
        Box box;
        box.setMaxCharacterCount(7);
        box.insertText(QStringLiteral("abc"));
        box.insertText(QStringLiteral("@Ann"), mention(1));
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@Ann")});
    }

    void lineEndsInARowAreLimited_data()
    {
        QTest::addColumn<QString>("present");
        QTest::addColumn<int>("at");
        QTest::addColumn<QString>("inserted");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const char *present, int at, const char *inserted,
                            const char *expected) {
            QTest::newRow(name) << QString::fromUtf8(present) << at << QString::fromUtf8(inserted)
                                << QString::fromUtf8(expected);
        };
        row("two before", "a\n\n", 3, "\n", "a\n\n");
        row("one before", "a\n", 2, "\n", "a\n\n");
        row("one each side", "a\n\nb", 2, "\n", "a\n\nb");
        row("many at once", "a", 1, "\n\n\n\n", "a\n\n");
        row("leading", "a\n", 2, "\n\nb", "a\n\nb");
        row("leading removed", "a\n\n", 3, "\n\nb", "a\n\nb");
        row("trailing", "a\nb", 1, "x\n\n", "ax\n\nb");
        row("inside stays", "a", 1, "b\n\n\n\nc", "ab\n\n\n\nc");
        row("empty box takes all", "", 0, "\n\n\n\n", "\n\n\n\n");
    }
    void lineEndsInARowAreLimited()
    {
        QFETCH(QString, present);
        QFETCH(int, at);
        QFETCH(QString, inserted);
        QFETCH(QString, expected);
        Box box;
        box.insertText(present);
        box.setMaxContinuousReturn(2);
        box.setCursorPosition(at);
        box.insertText(inserted);
        QCOMPARE(box.untrimmedContent(), expected);
    }

    void lineEndsAreNotLimitedWhileMentionsAreOffered()
    {
        Box box;
        box.setMaxContinuousReturn(2);
        box.setAiteEnabled(true);
        box.insertText(QStringLiteral("a"));
        box.insertText(QStringLiteral("\n\n\n\n"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("a\n\n\n\n"));
        box.setContent(QStringLiteral("b\n\n\n\nc"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("b\n\n\n\nc"));
    }

    void setContentLimitsLineEnds()
    {
        Box box;
        box.setMaxContinuousReturn(2);
        box.setContent(QStringLiteral("b\n\n\n\nc"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("b\n\nc"));
    }

    void aRefusedTextChangesNothingAndSignalsNothing()
    {
        Box box;
        LengthValidator validator(3);
        box.setValidator(&validator);
        box.insertText(QStringLiteral("ab"));
        QSignalSpy changed(&box, &DrawableTextArea::contentChanged);
        QSignalSpy invalid(&box, &DrawableTextArea::invalidInput);
        QSignalSpy reached(&box, &DrawableTextArea::maxCharacterCountReached);
        box.insertText(QStringLiteral("cd"));
        QCOMPARE(box.content(), QStringLiteral("ab"));
        QCOMPARE(changed.count() + invalid.count() + reached.count(), 0);
    }

    void theValidatorSeesTheTextThatWouldResult()
    {
        Box box;
        box.insertText(QStringLiteral("a b"));
        box.select(1, 2);
        LengthValidator validator(99);
        box.setValidator(&validator);
        box.insertText(QStringLiteral(" ") + grin);
        QCOMPARE(validator.seen, QStringList{QStringLiteral("a\u00A0\uEEEEb")});
    }

    void anIntermediateTextPasses()
    {
        Box box;
        QIntValidator validator(100, 200);
        box.setValidator(&validator);
        box.insertText(QStringLiteral("1"));
        QCOMPARE(box.content(), QStringLiteral("1"));
    }

    // ---- reading

    void spacesAtTheEndStayInTheUntrimmedContentAlone()
    {
        Box box;
        box.insertText(QStringLiteral(" ab  "));
        QCOMPARE(box.untrimmedContent(), QStringLiteral(" ab  "));
        QCOMPARE(box.content(), QStringLiteral("ab"));
        QCOMPARE(box.raw(), QStringLiteral("\u00A0ab\u00A0\u00A0"));
    }

    void blocksShiftByWhatIsCutFromTheLeft()
    {
        Box box;
        box.insertText(QStringLiteral("  \n"));
        box.insertAite(QStringLiteral("@Ann"), mention(7));
        QCOMPARE(box.blocks(), UserTextBlocks{aiteBlock(0, 4, 7)});
        QCOMPARE(box.untrimmedBlocks(), UserTextBlocks{aiteBlock(3, 4, 7)});
    }

    void anEmojiIsOneCharacterWithItsKeyAndSource()
    {
        for (const EmojiKind &kind : emojiKinds()) {
            Box box;
            box.insertText(QStringLiteral("a") + kind.source);
            QVERIFY2(box.raw() == QStringLiteral("a\uEEEE"), kind.name);
            const QStringList entry = box.formatAt(1).property(QTextFormat::UserProperty).toStringList();
            QVERIFY2(entry == (QStringList{kind.key, kind.source}), kind.name);
            QVERIFY2(box.content() == QStringLiteral("a") + kind.source, kind.name);
        }
    }

    void aMentionIsARunOfCharactersWithOneSerial()
    {
        Box box;
        const QVariantMap data = mention(7, QStringLiteral("Ann Lee"));
        box.insertText(QStringLiteral("Ann Lee"), data);
        for (int i = 0; i < 7; ++i) {
            QCOMPARE(box.formatAt(i).property(QTextFormat::UserProperty + 1).toMap(), data);
            QCOMPARE(box.formatAt(i).property(QTextFormat::UserProperty + 2).type(), QVariant::UInt);
            QCOMPARE(box.formatAt(i).property(QTextFormat::UserProperty + 2).toUInt(), 1U);
            QCOMPARE(box.formatAt(i).foreground().color(), QColor(70, 130, 180));
        }
        box.insertText(QStringLiteral("Ben"), data);
        QCOMPARE(box.formatAt(8).property(QTextFormat::UserProperty + 2).toUInt(), 2U);
    }

    void onlyAKnownUserGivesAMentionItsColour_data()
    {
        QTest::addColumn<QVariant>("userId");
        QTest::addColumn<bool>("coloured");
        QTest::newRow("number") << QVariant(5) << true;
        QTest::newRow("text of a number") << QVariant(QStringLiteral("5")) << true;
        QTest::newRow("double") << QVariant(5.0) << true;
        QTest::newRow("zero") << QVariant(0) << false;
        QTest::newRow("negative") << QVariant(-1) << false;
        QTest::newRow("name") << QVariant(QStringLiteral("ann")) << false;
        QTest::newRow("none") << QVariant() << false;
    }
    void onlyAKnownUserGivesAMentionItsColour()
    {
        QFETCH(QVariant, userId);
        QFETCH(bool, coloured);
        Box box;
        box.setAiteColor(Qt::red);
        box.insertText(QStringLiteral("@Ann"), mention(userId));
        QCOMPARE(box.formatAt(1).hasProperty(QTextFormat::ForegroundBrush), coloured);
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@Ann")});
        QCOMPARE(box.aiteList().size(), 1);
    }

    void aiteListGivesEachMentionOnce()
    {
        Box box;
        box.insertAite(QStringLiteral("@a very long name ") + grin, mention(1));
        box.insertAite(QStringLiteral("@B2"), mention(2));
        box.insertAite(QStringLiteral("@B2"), mention(2));
        QCOMPARE(box.aiteList(), (QVariantList{mention(1), mention(2), mention(2)}));
    }

    void mentionsInRightToLeftTextAreAllThere_data()
    {
        QTest::addColumn<QString>("lead");
        QTest::newRow("mark first") << QStringLiteral("\u200F\u05E9\u05DC\u05D5\u05DD ");
        QTest::newRow("letters first") << QStringLiteral("\u05E9\u05DC\u05D5\u05DD ");
        QTest::newRow("second line left to right") << QStringLiteral("\u200F\u05E9\nabc ");
    }
    void mentionsInRightToLeftTextAreAllThere()
    {
        QFETCH(QString, lead);
        Box box;
        box.insertText(lead);
        box.insertAite(QStringLiteral("@\u05D0\u05D1"), mention(1));
        box.insertAite(QStringLiteral("@Ann"), mention(2));
        QCOMPARE(box.aiteList(), (QVariantList{mention(1), mention(2)}));
        QCOMPARE(box.untrimmedBlocks(),
                 (UserTextBlocks{aiteBlock(lead.size(), 3, 1), aiteBlock(lead.size() + 4, 4, 2)}));
    }

    void insertAiteAddsASpaceAndReportsOnce()
    {
        Box box;
        QSignalSpy content(&box, &DrawableTextArea::contentChanged);
        QSignalSpy untrimmed(&box, &DrawableTextArea::untrimmedContentChanged);
        box.insertAite(QStringLiteral("@Ann"), mention(1));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("@Ann "));
        QCOMPARE(content.count(), 1);
        QCOMPARE(content.first().first().toString(), QStringLiteral("@Ann"));
        QCOMPARE(untrimmed.count(), 1);
        QCOMPARE(untrimmed.first().first().toString(), QStringLiteral("@Ann "));
    }

    // The space that follows it lands behind its first character, which is inside a mention.
    void aMentionOfOneCharacterDoesNotOutliveItsSpace()
    {
        Box box;
        box.insertAite(QStringLiteral("A"), mention(1));
        QCOMPARE(box.aiteList(), QVariantList());
    }

    void theCursorPositionInTheMessageCountsEmojiInFull()
    {
        Box box;
        box.insertText(QStringLiteral("a") + family + QStringLiteral("b"));
        QCOMPARE(box.realCursorPos(), 2 + family.size());
        box.setCursorPosition(1);
        QCOMPARE(box.realCursorPos(), 1);
        box.setCursorPosition(2);
        QCOMPARE(box.realCursorPos(), 1 + family.size());
    }

    void emojiByKeyGoInUnlessSomethingIsComposed()
    {
        Box box;
        box.insertEmojiByUnicode(QStringLiteral("1f600"));
        QCOMPARE(box.content(), grin);
        box.compose(QStringLiteral("ni"));
        box.insertEmojiByUnicode(QStringLiteral("1f600"));
        QCOMPARE(box.content(), grin);
        box.commit(QStringLiteral("\u4F60"));
        QCOMPARE(box.content(), grin + QStringLiteral("\u4F60"));
        box.insertEmojiByUnicode(QStringLiteral("no key"));
        QCOMPARE(box.content(), grin + QStringLiteral("\u4F60"));
    }

    void latestEmojiAreToldOnceWithTheNewestFirst()
    {
        Box box;
        box.insertText(grin + QStringLiteral("x") + family + grin);
        const QVariantList latest = box.latestEmojis();
        QCOMPARE(latest.size(), 2);
        QCOMPARE(latest.at(0).toMap().value(QStringLiteral("emoji")).toString(), grin);
        QCOMPARE(latest.at(0).toMap().value(QStringLiteral("unicode")).toString(), QStringLiteral("1f600"));
        QCOMPARE(latest.at(1).toMap().value(QStringLiteral("emoji")).toString(), family);
    }

    void emojiInsideAMentionBelongToIt()
    {
        Box box;
        box.insertAite(QStringLiteral("@") + grin + QStringLiteral("x"), mention(1));
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@\uEEEEx")});
        QCOMPARE(box.blocks(), UserTextBlocks{aiteBlock(0, 4, 1)});
    }

    // ---- setContent

    void setContentReplacesAllAndCannotBeUndone()
    {
        Box box;
        box.insertText(QStringLiteral("old"));
        QSignalSpy content(&box, &DrawableTextArea::contentChanged);
        box.setContent(QStringLiteral("new"));
        QCOMPARE(box.content(), QStringLiteral("new"));
        QVERIFY(!box.canUndo());
        QVERIFY(!box.canRedo());
        QCOMPARE(content.last().first().toString(), QStringLiteral("new"));
        // Told are the end of the old text, the new one, and that it was set.
        QCOMPARE(content.count(), 3);
        QCOMPARE(content.at(0).first().toString(), QString());
        QCOMPARE(content.at(1).first().toString(), QStringLiteral("new"));
        box.setContent(QStringLiteral("new"));
        QCOMPARE(content.count(), 3);
    }

    void setContentShowsTheDisplayNamesOfInBandBlocks()
    {
        Box box;
        box.setContent(QStringLiteral("a\u0001{\"displayName\":\"Ann\",\"data\":1,\"type\":3}\u0002b"));
        QCOMPARE(box.content(), QStringLiteral("aAnnb"));
    }

    void setContentRestoresMentions()
    {
        Box box;
        QJSEngine engine;
        box.setAiteEnabled(true);
        box.setNames(engine);
        const QString text = family + QStringLiteral(" @Ann Lee hi\nand @B") + grin + QStringLiteral("!");
        const UserTextBlocks blocks{aiteBlock(family.size() + 1, 8, 5), aiteBlock(family.size() + 17, 4, 6)};
        box.setUserBlocks(QVariant::fromValue(blocks));
        box.setContent(text);
        QCOMPARE(box.content(), text);
        QCOMPARE(box.blocks(), blocks);
        QCOMPARE(box.mentions(), (QStringList{QStringLiteral("@Ann\u00A0Lee"), QStringLiteral("@B\uEEEE")}));
        QCOMPARE(box.userBlocks().value<UserTextBlocks>(), UserTextBlocks());
        QVERIFY(!box.canUndo());
    }

    void blocksOfNoSensePutEachCharacterInOnce()
    {
        QJSEngine engine;
        const QString text = QStringLiteral("ab\ncd");
        const int far = std::numeric_limits<int>::max();
        const QVector<UserTextBlocks> lists{
            {aiteBlock(0, far, 1)},
            {aiteBlock(-5, 3, 1), aiteBlock(far, 1, 1)},
            {aiteBlock(0, 2, 1), aiteBlock(0, 2, 2), aiteBlock(1, 9, 3)},
            {aiteBlock(1, -4, 1)},
            {aiteBlock(4, 1, 1), aiteBlock(0, 1, 1)},
            {aiteBlock(std::numeric_limits<int>::min(), far, 1)},
        };
        for (const UserTextBlocks &list : lists) {
            Box box;
            box.setAiteEnabled(true);
            box.setNames(engine);
            box.setUserBlocks(QVariant::fromValue(list));
            box.setContent(text);
            QCOMPARE(box.content(), text);
        }
    }

    void theMessageIsReadLaterWhileSpellingIsChecked()
    {
        Box box;
        box.setSpellcheckEnabled(true);
        box.insertText(QStringLiteral("old"));
        QSignalSpy content(&box, &DrawableTextArea::contentChanged);
        QSignalSpy untrimmed(&box, &DrawableTextArea::untrimmedContentChanged);
        box.setContent(QStringLiteral("abc"));
        // Until then nobody takes the old text for the new one.
        QCOMPARE(untrimmed.count(), 1);
        QCOMPARE(box.untrimmedContent(), QString());
        QCOMPARE(content.last().first().toString(), QString());
        QTRY_COMPARE_WITH_TIMEOUT(untrimmed.count(), 2, patience);
        QCOMPARE(content.last().first().toString(), QStringLiteral("abc"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("abc"));
        QVERIFY(!box.canUndo());
    }

    // Lines are read as the view reads them, which ends the last one with its line end.
    void theLastLineEndOfARestoredMessageGoes()
    {
        Box box;
        box.setContent(QStringLiteral("a\n\n"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("a\n\n"));
        box.setAiteEnabled(true);
        box.setContent(QStringLiteral("b\n\n"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("b\n"));
    }

    // Each further edit would have the base class look at all paragraphs, and take minutes together.
    void manyLinesAreRestoredInOneEdit()
    {
        Box box;
        box.setAiteEnabled(true);
        QSignalSpy edits(box.document(), &QTextDocument::contentsChange);
        const QString text = QStringLiteral("a line\n").repeated(50'000) + QStringLiteral("end");
        box.setContent(text);
        QCOMPARE(edits.count(), 1);
        QCOMPARE(box.untrimmedContent(), text);
    }

    void setAiteDataMakesThePresentTextPlain()
    {
        Box box;
        box.insertAite(QStringLiteral("@Ann"), mention(1));
        box.insertText(grin);
        box.setAiteData(QVariant::fromValue(UserTextBlocks{aiteBlock(0, 1, 9)}));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("@Ann ") + grin);
        QCOMPARE(box.mentions(), QStringList());
        QVERIFY(!box.canUndo());
    }

    // ---- replacing a selection

    void aReplacedSelectionDissolvesTheMentionsAtItsEnds()
    {
        Box box;
        box.insertAite(QStringLiteral("@Ann"), mention(1));
        box.insertAite(QStringLiteral("@Ben"), mention(2));
        box.insertAite(QStringLiteral("@Cid"), mention(3));
        box.select(2, 12); // @A|nn @Ben @C|id
        box.insertText(QStringLiteral("x"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("@Axid "));
        QCOMPARE(box.mentions(), QStringList());
    }

    void aWholeSelectedMentionIsReplaced()
    {
        Box box;
        box.insertAite(QStringLiteral("@Ann"), mention(1));
        box.insertAite(QStringLiteral("@Ben"), mention(2));
        box.select(0, 4);
        box.insertText(QStringLiteral("x"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("x @Ben "));
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@Ben")});
    }

    void textInsideAMentionDissolvesIt()
    {
        Box box;
        box.insertAite(QStringLiteral("@Ann"), mention(1));
        box.setCursorPosition(1);
        box.insertText(QStringLiteral("x"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("@xAnn "));
        QCOMPARE(box.aiteList(), QVariantList());
        QVERIFY(!box.formatAt(2).hasProperty(QTextFormat::ForegroundBrush));
    }

    void textAtTheEdgesLeavesAMentionWhole()
    {
        Box box;
        box.insertText(QStringLiteral("@Ann"), mention(1));
        box.insertText(QStringLiteral("x"));
        box.setCursorPosition(0);
        box.insertText(QStringLiteral("y"));
        QCOMPARE(box.content(), QStringLiteral("y@Annx"));
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@Ann")});
    }

    // ---- undo, fonts, completion

    void undoneMentionsComeBack()
    {
        Box box;
        box.insertText(QStringLiteral("@Ann"), mention(1));
        box.select(0, 4);
        box.insertText(QStringLiteral("x"));
        QCOMPARE(box.content(), QStringLiteral("x"));
        for (int i = 0; i < 5 && box.content() != QStringLiteral("@Ann"); ++i)
            box.undo();
        QCOMPARE(box.content(), QStringLiteral("@Ann"));
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@Ann")});
        QCOMPARE(box.blocks(), UserTextBlocks{aiteBlock(0, 4, 1)});
    }

    // Clients save drafts on this signal, and a draft is its mentions, too.
    void aChangeOfMentionsAloneIsToldAsContent()
    {
        Box box;
        box.insertText(QStringLiteral("@Ann"), mention(1));
        box.setCursorPosition(2);
        box.insertText(QStringLiteral("x"));
        box.undo();
        QCOMPARE(box.content(), QStringLiteral("@Ann"));
        QCOMPARE(box.mentions(), QStringList());
        QSignalSpy content(&box, &DrawableTextArea::contentChanged);
        box.undo();
        QCOMPARE(box.mentions(), QStringList{QStringLiteral("@Ann")});
        QCOMPARE(content.count(), 1);
        QCOMPARE(content.first().first().toString(), QStringLiteral("@Ann"));

        // A list that is set lasts until the document is read again.
        box.setAiteData(QVariant::fromValue(UserTextBlocks{aiteBlock(0, 2, 9)}));
        content.clear();
        QCOMPARE(box.blocks(), UserTextBlocks());
        QCOMPARE(content.count(), 1);
        QCOMPARE(box.blocks(), UserTextBlocks());
        QCOMPARE(content.count(), 1);
    }

    void aNewFontKeepsEmojiAndUndo()
    {
        Box box;
        box.insertText(QStringLiteral("a") + grin);
        QSignalSpy content(&box, &DrawableTextArea::contentChanged);
        QFont font = box.font();
        font.setFamily(QStringLiteral("monospace"));
        box.setFont(font);
        QCOMPARE(content.count(), 0);
        QCOMPARE(box.content(), QStringLiteral("a") + grin);
        QVERIFY(box.formatAt(1).fontFamilies().toStringList().contains(QStringLiteral("monospace")));
        box.undo();
        QCOMPARE(box.content(), QString());
    }

    void contentSetTwiceBeforeCompletionIsTheLast()
    {
        class Incomplete : public DrawableTextArea
        {
        public:
            Incomplete() { classBegin(); }
            using DrawableTextArea::componentComplete;
        };
        Incomplete box;
        box.setContent(QStringLiteral("first ") + grin);
        box.setContent(QStringLiteral("second"));
        box.componentComplete();
        QCOMPARE(box.content(), QStringLiteral("second"));
        QCOMPARE(box.text(), QStringLiteral("second"));
    }

    void serialsStartAgainAfterManyMentions()
    {
        Box box;
        for (int i = 0; i < 65'535; ++i) {
            box.insertText(QStringLiteral("ab"), mention(1));
            box.document()->clear();
        }
        box.insertText(QStringLiteral("ab"), mention(1));
        QCOMPARE(box.formatAt(0).property(QTextFormat::UserProperty + 2).toUInt(), 0U);
        QCOMPARE(box.aiteList().size(), 1);
    }

    void aCursorOfNoUseCountsAsNone()
    {
        Box box;
        box.insertText(QStringLiteral("ab"));
        QTextCursor null;
        box.insertText(QStringLiteral("c"), {}, &null);
        QTextDocument other(QStringLiteral("another text"));
        QTextCursor elsewhere(&other);
        elsewhere.setPosition(12);
        box.select(0, 1);
        box.insertText(QStringLiteral("d"), mention(1), &elsewhere);
        QCOMPARE(box.content(), QStringLiteral("dbc"));
        QCOMPARE(other.toPlainText(), QStringLiteral("another text"));

        // One that stood far behind what is left.
        QTextCursor far(box.document());
        box.insertText(QString(100, QLatin1Char('x')));
        far.setPosition(100);
        box.clear();
        box.insertText(QStringLiteral("e"), {}, &far);
        QCOMPARE(box.content(), QStringLiteral("e"));
    }

    // A paragraph is one word to the layout: it would be laid out for minutes.
    void aParagraphOfManyThousandCharactersWrapsAnywhere()
    {
        Box box;
        QSignalSpy wrapping(&box, &QQuickTextEdit::wrapModeChanged);
        box.insertText(QStringLiteral("word ").repeated(999));
        QCOMPARE(box.wrapMode(), QQuickTextEdit::Wrap);
        box.insertText(QStringLiteral("words"));
        QCOMPARE(wrapping.count(), 0);
        box.insertText(QStringLiteral("s"));
        QCOMPARE(box.wrapMode(), QQuickTextEdit::WrapAnywhere);
        // Until the long text is gone for good.
        box.selectAll();
        box.key(Qt::Key_Backspace);
        box.insertText(QStringLiteral("short"));
        QCOMPARE(box.wrapMode(), QQuickTextEdit::WrapAnywhere);
        box.setContent(QStringLiteral("new"));
        box.insertText(QStringLiteral(" and short"));
        QCOMPARE(box.wrapMode(), QQuickTextEdit::Wrap);
        QCOMPARE(wrapping.count(), 2);

        Box other;
        other.setWrapMode(QQuickTextEdit::NoWrap);
        other.insertText(QStringLiteral("word ").repeated(3000));
        QCOMPARE(other.wrapMode(), QQuickTextEdit::NoWrap);
    }

    void positionsFarOutsideAreTakenCalmly()
    {
        Box box;
        box.insertText(QStringLiteral("ab"));
        box.setCursorPosition(99);
        box.setCursorPosition(-1);
        box.select(-3, 99);
        box.setAiteFrom(99);
        box.setAiteLen(99);
        box.setVisualFrom(-4);
        box.setVisualTo(99);
        box.insertText(QStringLiteral("c"));
        QCOMPARE(box.content(), QStringLiteral("abc"));
    }

private:
    std::unique_ptr<MessageGuard> guard;
};

QTEST_MAIN(TestAreaContent)
#include "tst_areacontent.moc"
