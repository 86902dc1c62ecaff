// The input box under a real mouse in a window.

#include "boxinwindow.h"

#include "pointer.h"

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QMimeData>
#include <QSignalSpy>
#include <QTextCursor>
#include <QtTest>

using namespace fixture;

namespace {

const QString aiteFormat = QStringLiteral("ostrel/aite");

} // namespace

class TestAreaPointer : public BoxInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void aPressKeepsTheMouse()
    {
        Pointer mouse(box.get());
        mouse.press(QPointF(10, 10));
        QVERIFY(box->keepMouseGrab());
        mouse.release(QPointF(10, 10));
        QVERIFY(!box->keepMouseGrab());
    }

    void aDragOverHalfAMentionSelectsJustThat()
    {
        box->insertText(QStringLiteral("ab"));
        box->insertText(QStringLiteral("@Ann"), mention(1));
        box->insertText(QStringLiteral("cd"));
        Pointer mouse(box.get());
        mouse.drag(spot(1), spot(4));
        QCOMPARE(box->selectedContent(), QStringLiteral("b@A"));
        press(Qt::Key_Delete);
        QCOMPARE(box->content(), QStringLiteral("anncd"));
        QCOMPARE(box->mentions(), QStringList());
    }

    void aClickInsideAMentionLetsItBeEdited()
    {
        box->insertText(QStringLiteral("@Anna"), mention(1));
        box->insertText(QStringLiteral(" cd"));
        Pointer(box.get()).click(spot(3));
        QCOMPARE(box->cursorPosition(), 3);
        type(QStringLiteral("x"));
        QCOMPARE(box->content(), QStringLiteral("@Anxna cd"));
        QCOMPARE(box->mentions(), QStringList());
    }

    void aClickBesideAMentionLeavesItWhole_data()
    {
        QTest::addColumn<int>("at");
        QTest::addColumn<QString>("expected");
        QTest::newRow("in front") << 2 << QStringLiteral("abx@Anna cd");
        QTest::newRow("behind") << 7 << QStringLiteral("ab@Annax cd");
    }
    void aClickBesideAMentionLeavesItWhole()
    {
        QFETCH(int, at);
        QFETCH(QString, expected);
        box->insertText(QStringLiteral("ab"));
        box->insertText(QStringLiteral("@Anna"), mention(1));
        box->insertText(QStringLiteral(" cd"));
        Pointer(box.get()).click(spot(at));
        QCOMPARE(box->cursorPosition(), at);
        type(QStringLiteral("x"));
        QCOMPARE(box->content(), expected);
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Anna")});
    }

    void aDragFromOneMentionIntoAnotherDissolvesBoth()
    {
        box->insertText(QStringLiteral("@Anna"), mention(1));
        box->insertText(QStringLiteral(" and "));
        box->insertText(QStringLiteral("@Ben"), mention(2));
        Pointer(box.get()).drag(spot(12), spot(2));
        QCOMPARE(box->selectedContent(), QStringLiteral("nna and @B"));
        press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(aiteFormat));
        QCOMPARE(box->mentions().size(), 2);
        type(QStringLiteral("x"));
        QCOMPARE(box->content(), QStringLiteral("@Axen"));
        QCOMPARE(box->mentions(), QStringList());
    }

    // What a word is, is for the text to say, not for the mention.
    void aDoubleClickOnAMentionOfTwoWordsSelectsWhatItWouldInPlainText()
    {
        const QString text = QStringLiteral("Anna\u00A0Lee cd");
        QTextDocument document(text);
        QTextCursor word(&document);
        word.setPosition(6);
        word.select(QTextCursor::WordUnderCursor);
        QCOMPARE(word.selectedText(), QStringLiteral("Lee"));

        box->insertText(QStringLiteral("Anna Lee"), mention(1));
        box->insertText(QStringLiteral(" cd"));
        Pointer(box.get()).doubleClick(spot(6));
        QCOMPARE(box->selectedContent(), QStringLiteral("Lee"));
        press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->hasFormat(aiteFormat));
        press(Qt::Key_Delete);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("Anna  cd"));
        QCOMPARE(box->mentions(), QStringList());
    }

    void aDoubleClickOnAMentionSelectsAWordOfIt()
    {
        box->insertText(QStringLiteral("Anna"), mention(1));
        box->insertText(QStringLiteral(" cd"));
        Pointer(box.get()).doubleClick(spot(2));
        QCOMPARE(box->selectedContent(), QStringLiteral("Anna"));
        press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(QGuiApplication::clipboard()->mimeData()->hasFormat(aiteFormat));
        press(Qt::Key_Backspace);
        QCOMPARE(box->untrimmedContent(), QStringLiteral(" cd"));
    }

    void thePointerShowsAHandOverMentions()
    {
        box->insertText(QStringLiteral("abcd"));
        box->insertText(QStringLiteral("@Anna"), mention(1));
        Pointer mouse(box.get());
        mouse.press(spot(2));
        mouse.move(spot(3));
        QCOMPARE(box->cursor().shape(), Qt::IBeamCursor);
        mouse.move(spot(7));
        QCOMPARE(box->cursor().shape(), Qt::PointingHandCursor);
        mouse.release(spot(7));
    }

    void aRightClickAsksForTheMenuWithNothingToOffer()
    {
        box->insertText(QStringLiteral("abcd"));
        QSignalSpy menu(box.get(), &DrawableTextArea::customContextMenuRequested);
        Pointer(box.get()).click(spot(2), Qt::RightButton);
        QCOMPARE(menu.count(), 1);
        QCOMPARE(menu.first(), (QVariantList{QVariantList(), false}));
        box->setSpellcheckEnabled(true);
        Pointer(box.get()).click(spot(2), Qt::RightButton);
        QCOMPARE(menu.count(), 2);
        Pointer(box.get()).click(spot(2), Qt::LeftButton);
        QCOMPARE(menu.count(), 2);
    }

    void otherProgramsGetNoPlaceholdersFromTheSelection()
    {
        QClipboard *clipboard = QGuiApplication::clipboard();
        if (!clipboard->supportsSelection())
            QSKIP("This window system has no second clipboard.");
        box->insertText(QStringLiteral("a") + grin + QStringLiteral(" b"));
        Pointer(box.get()).drag(spot(0), spot(4));
        QCOMPARE(box->selectedContent(), QStringLiteral("a") + grin + QStringLiteral(" b"));
        QCOMPARE(clipboard->text(QClipboard::Selection), box->selectedContent());
        box->setCursorPosition(4);
        for (int i = 0; i < 3; ++i)
            press(Qt::Key_Left, Qt::ShiftModifier);
        QVERIFY(!clipboard->text(QClipboard::Selection).contains(QChar(0xEEEE)));
    }

    void aMiddleClickPastesWhatOtherProgramsSelected_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("raw");
        QTest::newRow("spaces") << QStringLiteral("x y") << QStringLiteral("x\u00A0y");
        QTest::newRow("tab") << QStringLiteral("x\ty") << QStringLiteral("x\uEEEFy");
        QTest::newRow("lines") << QStringLiteral("x\ny") << QStringLiteral("x\ny");
        for (const EmojiKind &kind : emojiKinds())
            QTest::newRow(kind.name) << kind.source << QStringLiteral("\uEEEE");
    }
    void aMiddleClickPastesWhatOtherProgramsSelected()
    {
        QFETCH(QString, text);
        QFETCH(QString, raw);
        QClipboard *clipboard = QGuiApplication::clipboard();
        if (!clipboard->supportsSelection())
            QSKIP("This window system has no second clipboard.");
        clipboard->setText(text, QClipboard::Selection);
        box->insertText(QStringLiteral("ab"));
        Pointer(box.get()).click(spot(1), Qt::MiddleButton);
        QCOMPARE(box->raw(), QLatin1Char('a') + raw + QLatin1Char('b'));
        QCOMPARE(box->content(), QLatin1Char('a') + text + QLatin1Char('b'));
        box->setReadOnly(true);
        Pointer(box.get()).click(spot(1), Qt::MiddleButton);
        QCOMPARE(box->content(), QLatin1Char('a') + text + QLatin1Char('b'));
    }

private:
    /// In front of the character at `position`, in the middle of its line's height.
    [[nodiscard]] QPointF spot(int position) const
    {
        const QRectF cursor = box->positionToRectangle(position);
        return {cursor.left(), cursor.center().y()};
    }
};

QTEST_MAIN(TestAreaPointer)
#include "tst_areapointer.moc"
