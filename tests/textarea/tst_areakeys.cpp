// The input box under real keys in a window.

#include "boxinwindow.h"

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSignalSpy>
#include <QValidator>
#include <QtTest>

#include <cstdlib>

using namespace fixture;

namespace {

const QString aiteFormat = QStringLiteral("ostrel/aite");

class ShortTexts : public QValidator
{
public:
    State validate(QString &text, int &) const override { return text.size() <= 3 ? Acceptable : Invalid; }
};

} // namespace

class TestAreaKeys : public BoxInWindow
{
    Q_OBJECT

private Q_SLOTS:
    // ---- typing

    void lettersSpacesAndLineEndsAreTyped()
    {
        type(QStringLiteral("a b"));
        press(Qt::Key_Return);
        press(Qt::Key_Enter, Qt::KeypadModifier);
        type(QStringLiteral("c"));
        QCOMPARE(box->raw(), QStringLiteral("a\u00A0b\n\nc"));
        QCOMPARE(box->content(), QStringLiteral("a b\n\nc"));
    }

    void emojiFromAKeyBoardAreCollapsed()
    {
        for (const EmojiKind &kind : emojiKinds()) {
            box->setContent(QString());
            box->key(0, Qt::NoModifier, kind.source);
            QVERIFY2(box->raw() == QStringLiteral("\uEEEE"), kind.name);
            press(Qt::Key_Backspace);
            QVERIFY2(box->raw().isEmpty(), kind.name);
        }
    }

    void formatCharactersAreTyped()
    {
        // A zero-width joiner, which some keyboards type with Control and Shift.
        box->key(0, Qt::ControlModifier | Qt::ShiftModifier, QStringLiteral("\u200D"));
        QCOMPARE(box->raw(), QStringLiteral("\u200D"));
    }

    void lettersWithControlAreNotTyped()
    {
        box->key(Qt::Key_G, Qt::ControlModifier, QStringLiteral("g"));
        box->key(Qt::Key_G, Qt::ControlModifier | Qt::ShiftModifier, QStringLiteral("G"));
        QCOMPARE(box->raw(), QString());
        // AltGr is Control with Alt.
        box->key(Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, QStringLiteral("@"));
        QCOMPARE(box->raw(), QStringLiteral("@"));
    }

    void theTabKeyIsSwallowedUnlessItTypes()
    {
        Box other(window->contentItem());
        press(Qt::Key_Tab);
        QCOMPARE(box->raw(), QString());
        QVERIFY(box->hasActiveFocus());
        box->setEnableTab(true);
        box->key(Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
        QCOMPARE(box->raw(), QStringLiteral("\uEEEF"));
        QCOMPARE(box->untrimmedContent(), QStringLiteral("\t"));
        QVERIFY(box->hasActiveFocus());
    }

    void aReadOnlyBoxSwallowsKeys()
    {
        box->insertText(QStringLiteral("abc"));
        box->setReadOnly(true);
        type(QStringLiteral("x"));
        press(Qt::Key_Return);
        press(Qt::Key_Backspace);
        press(Qt::Key_Delete);
        box->selectAll();
        press(Qt::Key_X, Qt::ControlModifier);
        press(Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(box->content(), QStringLiteral("abc"));
    }

    void aFullBoxSignalsEachKeyAndKeepsItsCursor()
    {
        box->setMaxCharacterCount(3);
        box->insertText(QStringLiteral("abc"));
        box->setCursorPosition(1);
        QSignalSpy reached(box.get(), &DrawableTextArea::maxCharacterCountReached);
        type(QStringLiteral("xy"));
        QCOMPARE(reached.count(), 2);
        QCOMPARE(box->content(), QStringLiteral("abc"));
        QCOMPARE(box->cursorPosition(), 1);
        QVERIFY(!box->isReadOnly());
        box->select(0, 2);
        type(QStringLiteral("z"));
        QCOMPARE(box->content(), QStringLiteral("zc"));
    }

    void aKeyInsideAMentionOfAFullBoxLeavesItWhole()
    {
        box->setMaxCharacterCount(4);
        box->insertText(QStringLiteral("@Ann"), mention(1));
        box->setCursorPosition(2);
        type(QStringLiteral("x"));
        QCOMPARE(box->content(), QStringLiteral("@Ann"));
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
    }

    // Every key with a text counts as tried, one that types nothing too: clients flash the counter at any of
    // them.
    void aFullBoxSignalsKeysThatTypeNothingToo()
    {
        box->setMaxCharacterCount(3);
        box->insertText(QStringLiteral("abc"));
        QSignalSpy reached(box.get(), &DrawableTextArea::maxCharacterCountReached);
        box->key(Qt::Key_Escape, Qt::NoModifier, QStringLiteral("\x1b"));
        QCOMPARE(reached.count(), 1);
        box->key(Qt::Key_G, Qt::ControlModifier, QStringLiteral("g"));
        box->key(Qt::Key_Home);
        QCOMPARE(reached.count(), 1);
        QCOMPARE(box->content(), QStringLiteral("abc"));
    }

    void returnAddsNothingBehindAsManyLineEndsAsMayBe()
    {
        box->setAiteEnabled(false);
        box->setMaxContinuousReturn(2);
        type(QStringLiteral("a"));
        for (int i = 0; i < 4; ++i)
            press(Qt::Key_Return);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("a\n\n"));
    }

    void aRefusedKeyIsSwallowedSilently()
    {
        ShortTexts validator;
        box->setValidator(&validator);
        QSignalSpy invalid(box.get(), &DrawableTextArea::invalidInput);
        type(QStringLiteral("abcd"));
        QCOMPARE(box->content(), QStringLiteral("abc"));
        QCOMPARE(invalid.count(), 0);
    }

    // The validator is asked about the key in front of what it would replace.
    void aFullBoxRefusesAKeyOverASelectionToo()
    {
        ShortTexts validator;
        box->insertText(QStringLiteral("abc"));
        box->setValidator(&validator);
        box->selectAll();
        type(QStringLiteral("x"));
        QCOMPARE(box->content(), QStringLiteral("abc"));
        box->insertText(QStringLiteral("x"));
        QCOMPARE(box->content(), QStringLiteral("x"));
    }

    void typingInsideAMentionDissolvesIt()
    {
        box->insertAite(QStringLiteral("@Ann"), mention(1));
        box->setCursorPosition(2);
        type(QStringLiteral("x"));
        QCOMPARE(box->untrimmedContent(), QStringLiteral("@Axnn "));
        QCOMPARE(box->aiteList(), QVariantList());
        QVERIFY(!box->formatAt(0).hasProperty(QTextFormat::ForegroundBrush));
    }

    // ---- deleting

    void backspaceTakesAWholeMention()
    {
        box->insertText(QStringLiteral("a"));
        box->insertAite(QStringLiteral("@Ann Lee"), mention(1));
        press(Qt::Key_Backspace); // the space behind it alone
        QCOMPARE(box->untrimmedContent(), QStringLiteral("a@Ann Lee"));
        QCOMPARE(box->aiteList().size(), 1);
        press(Qt::Key_Backspace);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("a"));
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("a@Ann Lee"));
        QCOMPARE(box->aiteList().size(), 1);
    }

    void deleteTakesAWholeMention_data()
    {
        QTest::addColumn<QString>("before");
        QTest::newRow("at the start") << QString();
        QTest::newRow("behind text") << QStringLiteral("a");
        QTest::newRow("at a line's start") << QStringLiteral("a\n");
    }
    void deleteTakesAWholeMention()
    {
        QFETCH(QString, before);
        box->insertText(before);
        box->insertAite(QStringLiteral("@Ann Lee"), mention(1));
        box->setCursorPosition(before.size());
        press(Qt::Key_Delete);
        QCOMPARE(box->untrimmedContent(), before + QLatin1Char(' '));
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->mentions().size(), 1);
        press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(box->untrimmedContent(), before + QLatin1Char(' '));
    }

    void deletingInsideAMentionMakesItPlainFirst_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("expected");
        QTest::newRow("backspace") << int(Qt::Key_Backspace) << QStringLiteral("@nn ");
        QTest::newRow("delete") << int(Qt::Key_Delete) << QStringLiteral("@An ");
    }
    void deletingInsideAMentionMakesItPlainFirst()
    {
        QFETCH(int, key);
        QFETCH(QString, expected);
        box->insertAite(QStringLiteral("@Ann"), mention(1));
        box->setCursorPosition(2);
        press(Qt::Key(key));
        QCOMPARE(box->untrimmedContent(), expected);
        QCOMPARE(box->mentions(), QStringList());
    }

    void deletingAtTheEndsDoesNothing()
    {
        press(Qt::Key_Backspace);
        press(Qt::Key_Delete);
        box->insertText(QStringLiteral("@Ann"), mention(1));
        press(Qt::Key_Delete);
        box->setCursorPosition(0);
        press(Qt::Key_Backspace);
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
    }

    // There is no right edge to find behind one character, so the key goes on to the next.
    void deleteInFrontOfAMentionOfOneCharacterGoesOnToTheNextEdge()
    {
        box->insertText(QStringLiteral("a"));
        box->insertText(QStringLiteral("A"), mention(1));
        box->setCursorPosition(2);
        box->setCursorPosition(1);
        press(Qt::Key_Delete);
        QCOMPARE(box->content(), QStringLiteral("a"));
    }

    void wordKeysDissolveWhatTheyCut_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("at");
        QTest::addColumn<QString>("expected");
        QTest::newRow("backwards") << int(Qt::Key_Backspace) << 9 << QStringLiteral("a @Ann b");
        QTest::newRow("forwards") << int(Qt::Key_Delete) << 3 << QStringLiteral("a @Lee b");
    }
    void wordKeysDissolveWhatTheyCut()
    {
        QFETCH(int, key);
        QFETCH(int, at);
        box->insertText(QStringLiteral("a "));
        box->insertText(QStringLiteral("@Ann Lee"), mention(1));
        box->insertText(QStringLiteral(" b"));
        box->setCursorPosition(at);
        press(Qt::Key(key), Qt::ControlModifier);
        QVERIFY(box->untrimmedContent().size() < 12);
        QCOMPARE(box->mentions(), QStringList());
    }

    // ---- half a mention selected

    void anEditOfHalfAMentionDissolvesTheRest_data()
    {
        QTest::addColumn<QString>("edit");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<QString>("clipboard");
        QTest::newRow("type") << QStringLiteral("type") << QStringLiteral("x@Axb") << QString();
        QTest::newRow("delete") << QStringLiteral("delete") << QStringLiteral("x@Ab") << QString();
        QTest::newRow("backspace") << QStringLiteral("backspace") << QStringLiteral("x@Ab") << QString();
        QTest::newRow("cut") << QStringLiteral("cut") << QStringLiteral("x@Ab") << QStringLiteral("nn ");
        QTest::newRow("paste") << QStringLiteral("paste") << QStringLiteral("x@Auntouchedb") << QString();
        QTest::newRow("compose") << QStringLiteral("compose") << QStringLiteral("x@A\u4F60b") << QString();
    }
    void anEditOfHalfAMentionDissolvesTheRest()
    {
        QFETCH(QString, edit);
        QFETCH(QString, expected);
        QFETCH(QString, clipboard);
        box->insertText(QStringLiteral("x"));
        box->insertAite(QStringLiteral("@Ann"), mention(1));
        box->insertText(QStringLiteral("b"));
        box->select(3, 6);
        if (edit == QLatin1String("type"))
            type(QStringLiteral("x"));
        else if (edit == QLatin1String("delete"))
            press(Qt::Key_Delete);
        else if (edit == QLatin1String("backspace"))
            press(Qt::Key_Backspace);
        else if (edit == QLatin1String("cut"))
            press(Qt::Key_X, Qt::ControlModifier);
        else if (edit == QLatin1String("paste"))
            press(Qt::Key_V, Qt::ControlModifier);
        else {
            box->compose(QStringLiteral("ni"));
            box->commit(QStringLiteral("\u4F60"));
        }
        QCOMPARE(box->untrimmedContent(), expected);
        QCOMPARE(box->mentions(), QStringList());
        if (!clipboard.isEmpty()) {
            QCOMPARE(QGuiApplication::clipboard()->text(), clipboard);
            QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(aiteFormat));
        }
        // All of it can be undone, and done again.
        for (int i = 0; i < 6 && box->mentions().isEmpty(); ++i)
            press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("x@Ann b"));
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
        for (int i = 0; i < 6 && box->canRedo(); ++i)
            press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(box->untrimmedContent(), expected);
        QCOMPARE(box->mentions(), QStringList());
    }

    void halfAMentionIsCopiedAsText()
    {
        box->insertAite(QStringLiteral("@Ann"), mention(1));
        box->select(0, 3);
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("@An"));
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(aiteFormat));
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
    }

    // ---- copy and cut

    void copyAndCutTakeEmojiAndMentionsAlong_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<QString>("left");
        QTest::newRow("copy") << int(Qt::Key_C) << (grin + QStringLiteral(" @Ann \t!"));
        QTest::newRow("cut") << int(Qt::Key_X) << QString();
    }
    void copyAndCutTakeEmojiAndMentionsAlong()
    {
        QFETCH(int, key);
        QFETCH(QString, left);
        box->insertText(grin + QStringLiteral(" "));
        box->insertAite(QStringLiteral("@Ann"), mention(7, QStringLiteral("@Ann")));
        box->insertText(QStringLiteral("\t!"));
        press(Qt::Key_A, Qt::ControlModifier);
        press(Qt::Key(key), Qt::ControlModifier);
        QCOMPARE(box->untrimmedContent(), left);
        const QMimeData *mime = QGuiApplication::clipboard()->mimeData();
        QCOMPARE(mime->text(), grin + QStringLiteral(" @Ann \t!"));
        // One record: positions count the emoji as one.
        QDataStream stream(QByteArray::fromBase64(mime->data(aiteFormat)));
        qint32 count = 0;
        qint32 from = 0;
        qint32 to = 0;
        qint32 kind = 0;
        QVariant data;
        stream >> count >> from >> to >> kind >> data;
        QCOMPARE(count, 1);
        QCOMPARE(from, 2);
        QCOMPARE(to, 5);
        QCOMPARE(kind, 8);
        QCOMPARE(data.toMap(), mention(7, QStringLiteral("@Ann")));
        QVERIFY(stream.atEnd());
    }

    void withoutMentionsOnOfferOnlyTextIsCopied()
    {
        box->insertAite(QStringLiteral("@Ann"), mention(7));
        box->setAiteEnabled(false);
        box->selectAll();
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("@Ann "));
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(aiteFormat));
    }

    void withoutASelectionTheClipboardStays()
    {
        box->insertText(QStringLiteral("abc"));
        press(Qt::Key_C, Qt::ControlModifier);
        press(Qt::Key_X, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("untouched"));
        QCOMPARE(box->content(), QStringLiteral("abc"));
    }

    void shiftWithDeleteCutsNoPlaceholders()
    {
        box->insertText(QStringLiteral("a") + grin + QStringLiteral(" b"));
        box->select(0, 3);
        press(Qt::Key_Delete, Qt::ShiftModifier);
        QCOMPARE(box->content(), QStringLiteral("b"));
        QVERIFY(!QGuiApplication::clipboard()->text().contains(QChar(0xEEEE)));
    }

    void theSelectionIsToldAsTheMessageHasIt()
    {
        QSignalSpy selected(box.get(), &DrawableTextArea::selectedContentChanged);
        box->insertText(QStringLiteral("a \t") + grin + QStringLiteral("\nb"));
        box->selectAll();
        QCOMPARE(box->selectedContent(), QStringLiteral("a \t") + grin + QStringLiteral("\nb"));
        QCOMPARE(selected.last().first().toString(), box->selectedContent());
        box->deselect();
        QCOMPARE(box->selectedContent(), QString());
    }

    // ---- moving

    void arrowsJumpOverMentions_data()
    {
        QTest::addColumn<QString>("lead");
        QTest::addColumn<int>("back");
        QTest::addColumn<int>("on");
        QTest::addColumn<int>("modifiers");
        const int left = Qt::Key_Left;
        const int right = Qt::Key_Right;
        QTest::newRow("at the start") << QString() << left << right << int(Qt::NoModifier);
        QTest::newRow("behind text") << QStringLiteral("ab") << left << right << int(Qt::NoModifier);
        QTest::newRow("key pad") << QStringLiteral("ab") << left << right << int(Qt::KeypadModifier);
        QTest::newRow("by words") << QStringLiteral("ab") << left << right << int(Qt::ControlModifier);
        QTest::newRow("right to left")
            << QStringLiteral("\u05D0\u05D1") << right << left << int(Qt::NoModifier);
    }
    void arrowsJumpOverMentions()
    {
        QFETCH(QString, lead);
        QFETCH(int, back);
        QFETCH(int, on);
        QFETCH(int, modifiers);
        const int end = lead.size() + 8;
        box->insertText(lead);
        box->insertText(lead.isEmpty() || lead.at(0) == QLatin1Char('a')
                            ? QStringLiteral("@Ann Lee")
                            : QStringLiteral("@\u05D0\u05D1 \u05D2\u05D3\u05D4\u05D5"),
                        mention(1));
        box->insertText(QStringLiteral(" x"));
        box->setCursorPosition(end);
        press(Qt::Key(back), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(box->cursorPosition(), lead.size());
        press(Qt::Key(on), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(box->cursorPosition(), end);
    }

    void shiftWithArrowsSelectsCharacterByCharacter()
    {
        box->insertText(QStringLiteral("@Ann"), mention(1));
        press(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(box->selectedContent(), QStringLiteral("n"));
        press(Qt::Key_Left, Qt::ShiftModifier);
        QCOMPARE(box->selectedContent(), QStringLiteral("nn"));
        press(Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(box->selectedContent(), QStringLiteral("n"));
    }

    void controlAndShiftSelectAWordOfAMention()
    {
        box->insertText(QStringLiteral("@Ann Lee"), mention(1));
        press(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(box->selectedContent(), QStringLiteral("Lee"));
        QCOMPARE(box->mentions().size(), 1);
        type(QStringLiteral("x"));
        QCOMPARE(box->content(), QStringLiteral("@Ann x"));
        QCOMPARE(box->mentions(), QStringList());
    }

    void aMentionInRightToLeftTextIsOneToo()
    {
        const QString name = QStringLiteral("\u05D0\u05D1 \u05D2\u05D3");
        box->insertText(QStringLiteral("\u05E9\u05DC "));
        box->insertText(name, mention(1));
        QCOMPARE(box->blocks(), UserTextBlocks{aiteBlock(3, 5, 1)});
        press(Qt::Key_Left, Qt::ShiftModifier); // which leads back or on, but by one character
        press(Qt::Key_Right, Qt::ShiftModifier);
        box->setCursorPosition(8);
        press(Qt::Key_Backspace);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("\u05E9\u05DC "));
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->aiteList().size(), 1);
        box->setCursorPosition(3);
        press(Qt::Key_Delete);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("\u05E9\u05DC "));
        press(Qt::Key_Z, Qt::ControlModifier);
        box->setCursorPosition(5);
        type(QStringLiteral("x"));
        QCOMPARE(box->aiteList(), QVariantList());
    }

    void upAndDownLeaveTheLinesAtTheEnds()
    {
        box->setUpDownKeyEnabled(true);
        box->setHashTagEnabled(true);
        box->insertText(QStringLiteral("abcd\nefgh"));
        box->setCursorPosition(2);
        QSignalSpy aite(box.get(), &DrawableTextArea::aiteDetected);
        QSignalSpy tag(box.get(), &DrawableTextArea::hashTagDetected);
        press(Qt::Key_Up);
        QCOMPARE(box->cursorPosition(), 0);
        QCOMPARE(aite.last(), (QVariantList{QString(), false}));
        QCOMPARE(tag.last(), (QVariantList{QString(), false}));
        box->setCursorPosition(7);
        press(Qt::Key_Up, Qt::ShiftModifier);
        QVERIFY(box->cursorPosition() < 5);
        box->setCursorPosition(7);
        press(Qt::Key_Down);
        QCOMPARE(box->cursorPosition(), 9);
        box->setUpDownKeyEnabled(false);
        box->setCursorPosition(2);
        press(Qt::Key_Up);
        QCOMPARE(box->cursorPosition(), 2);
    }

    void shiftWithUpOnTheFirstLineDoesWhatItDoesInAnyTextArea()
    {
        QQuickTextArea plain(window->contentItem());
        plain.setText(QStringLiteral("abcd"));
        plain.setCursorPosition(2);
        plain.forceActiveFocus();
        press(Qt::Key_Up, Qt::ShiftModifier);

        box->setUpDownKeyEnabled(true);
        box->insertText(QStringLiteral("abcd"));
        box->setCursorPosition(2);
        box->forceActiveFocus();
        QSignalSpy aite(box.get(), &DrawableTextArea::aiteDetected);
        press(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(box->cursorPosition(), plain.cursorPosition());
        QCOMPARE(box->selectedText(), plain.selectedText());
        QCOMPARE(aite.count(), 0);
    }

    // ---- undo

    void undoMovesTheCursorByTheChangeInLength()
    {
        box->insertText(QStringLiteral("abc def"));
        box->setCursorPosition(3);
        box->insertText(QStringLiteral("XYZ"));
        box->setCursorPosition(9);
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->content(), QStringLiteral("abc def"));
        QCOMPARE(box->cursorPosition(), 6);
    }

    void undoAtTheStartOfTheDocumentCountsRight()
    {
        box->insertText(QStringLiteral("abc"));
        box->setCursorPosition(0);
        box->insertText(QStringLiteral("XYZ"));
        box->setCursorPosition(5);
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->content(), QStringLiteral("abc"));
        QCOMPARE(box->cursorPosition(), 2);
    }

    void anUndoLeavesNothingSelected_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::newRow("before what goes") << 0 << 2;
        QTest::newRow("into it") << 1 << 5;
        QTest::newRow("out of it") << 5 << 1;
        QTest::newRow("it") << 3 << 6;
        QTest::newRow("all") << 0 << 6;
    }
    void anUndoLeavesNothingSelected()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        box->insertText(QStringLiteral("abc"));
        box->insertText(QStringLiteral("def"));
        box->select(from, to);
        QCOMPARE(box->selectedContent().size(), std::abs(to - from));
        QSignalSpy selected(box.get(), &DrawableTextArea::selectedContentChanged);
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->content(), QStringLiteral("abc"));
        QCOMPARE(box->selectionStart(), box->selectionEnd());
        QCOMPARE(box->selectedContent(), QString());
        QCOMPARE(selected.last().first().toString(), QString());
        // The clipboard gets nothing of what is gone.
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("untouched"));
    }

    void undoWithNothingToUndoKeepsTheCursor()
    {
        box->setContent(QStringLiteral("abc"));
        box->setCursorPosition(1);
        press(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(box->cursorPosition(), 1);
    }

    // ---- clearing

    void clearToLineHead_data()
    {
        QTest::addColumn<int>("at");
        QTest::addColumn<QString>("expected");
        QTest::newRow("in the line") << 6 << QStringLiteral("abc\nf @B2");
        QTest::newRow("at its start") << 4 << QStringLiteral("def @B2");
        QTest::newRow("in a mention") << 9 << QStringLiteral("abc\nB2");
        QTest::newRow("at the very start") << 0 << QStringLiteral("abc\ndef @B2");
    }
    void clearToLineHead()
    {
        QFETCH(int, at);
        QFETCH(QString, expected);
        box->insertText(QStringLiteral("abc\ndef "));
        box->insertText(QStringLiteral("@B2"), mention(1));
        box->setCursorPosition(at);
        box->clearToLineHead();
        QCOMPARE(box->content(), expected);
        QCOMPARE(box->aiteList().size(), at == 9 ? 0 : 1);
    }

    void clearToWordHeadDissolvesWhatItCuts()
    {
        box->insertText(QStringLiteral("camelCase "));
        box->insertText(QStringLiteral("Ann Lee"), mention(1));
        box->clearToWordHead();
        QCOMPARE(box->content(), QStringLiteral("camelCase Ann"));
        QCOMPARE(box->aiteList(), QVariantList());
        box->setCursorPosition(9);
        box->clearToWordHead();
        QCOMPARE(box->content(), QStringLiteral("camel Ann"));
        box->setCursorPosition(0);
        box->clearToWordHead();
        QCOMPARE(box->content(), QStringLiteral("camel Ann"));
    }
};

QTEST_MAIN(TestAreaKeys)
#include "tst_areakeys.moc"
