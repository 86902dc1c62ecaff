// The input box under an input method, in a window.

#include "boxinwindow.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

class TestAreaCompose : public BoxInWindow
{
    Q_OBJECT

private Q_SLOTS:
    void aChineseWordIsComposedAndCommitted()
    {
        QSignalSpy content(box.get(), &DrawableTextArea::contentChanged);
        for (const QString &preedit :
             {QStringLiteral("n"), QStringLiteral("ni"), QStringLiteral("ni'h"), QStringLiteral("ni'hao")}) {
            box->compose(preedit);
            QCOMPARE(box->preeditText(), preedit);
        }
        QCOMPARE(content.count(), 0);
        box->commit(QStringLiteral("\u4F60\u597D"));
        QCOMPARE(box->content(), QStringLiteral("\u4F60\u597D"));
        QCOMPARE(box->preeditText(), QString());
        QCOMPARE(content.count(), 1);
    }

    void aJapaneseSequenceCommitsAndGoesOn()
    {
        box->compose(QStringLiteral("\u304B"));
        box->compose(QStringLiteral("\u304B\u3093"));
        QInputMethodEvent both(QStringLiteral("\u3058"), {});
        both.setCommitString(QStringLiteral("\u611F"));
        QCoreApplication::sendEvent(box.get(), &both);
        QCOMPARE(box->content(), QStringLiteral("\u611F"));
        QCOMPARE(box->preeditText(), QStringLiteral("\u3058"));
        box->commit(QStringLiteral("\u3058"));
        QCOMPARE(box->content(), QStringLiteral("\u611F\u3058"));
    }

    void anAbandonedPreeditLeavesNothing()
    {
        box->insertText(QStringLiteral("ab"));
        box->compose(QStringLiteral("ni"));
        box->compose(QString());
        QCOMPARE(box->preeditText(), QString());
        QCOMPARE(box->content(), QStringLiteral("ab"));
    }

    void aCommitMayReplaceWhatStandsBefore()
    {
        box->insertText(QStringLiteral("teh"));
        box->commit(QStringLiteral("the"), -3, 3);
        QCOMPARE(box->content(), QStringLiteral("the"));
        QCOMPARE(box->cursorPosition(), 3);
        box->commit(QString(), -1, 1);
        QCOMPARE(box->content(), QStringLiteral("th"));
        box->commit(QStringLiteral("x"), -99, 999);
        QCOMPARE(box->content(), QStringLiteral("x"));
    }

    void aReplacementInsideAMentionDissolvesIt()
    {
        box->insertText(QStringLiteral("@Ann"), mention(1));
        box->commit(QStringLiteral("x"), -2, 2);
        QCOMPARE(box->content(), QStringLiteral("@Ax"));
        QCOMPARE(box->mentions(), QStringList());
    }

    void committedTextIsLimited()
    {
        box->setMaxCharacterCount(3);
        QSignalSpy reached(box.get(), &DrawableTextArea::maxCharacterCountReached);
        box->commit(QStringLiteral("\u4F60\u597D\u4F60\u597D"));
        QCOMPARE(box->content(), QStringLiteral("\u4F60\u597D\u4F60"));
        QCOMPARE(reached.count(), 1);
    }

    void aCommitInsideAMentionDissolvesIt()
    {
        box->insertText(QStringLiteral("@Ann"), mention(1));
        box->setCursorPosition(2);
        box->compose(QStringLiteral("ni"));
        QCOMPARE(box->aiteList().size(), 1);
        box->commit(QStringLiteral("\u4F60"));
        QCOMPARE(box->content(), QStringLiteral("@A\u4F60nn"));
        QCOMPARE(box->aiteList().size(), 0);
    }

    // Input methods deal with these keys themselves; one that lets them through finds its preedit where it
    // was.
    void keysDuringAPreeditEditTheTextAroundIt()
    {
        box->insertText(QStringLiteral("ab"));
        box->compose(QStringLiteral("ni"));
        press(Qt::Key_Backspace);
        QCOMPARE(box->content(), QStringLiteral("a"));
        press(Qt::Key_Return);
        QCOMPARE(box->untrimmedContent(), QStringLiteral("a\n"));
        box->compose(QStringLiteral("nih"));
        QCOMPARE(box->preeditText(), QStringLiteral("nih"));
        box->commit(QStringLiteral("\u4F60"));
        QCOMPARE(box->content(), QStringLiteral("a\n\u4F60"));
        QCOMPARE(box->preeditText(), QString());
    }

    void anAbandonedPreeditInsideAMentionLeavesItWhole()
    {
        box->insertText(QStringLiteral("@Anna"), mention(1));
        box->setCursorPosition(3);
        box->compose(QStringLiteral("ni"));
        box->compose(QString());
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Anna")});
        QCOMPARE(box->blocks(), UserTextBlocks{aiteBlock(0, 5, 1)});
    }

    void aCommittedWordIsDetected()
    {
        QSignalSpy aite(box.get(), &DrawableTextArea::aiteDetected);
        box->commit(QStringLiteral("hi @"));
        box->compose(QStringLiteral("zhang"));
        QCOMPARE(aite.last(), (QVariantList{QStringLiteral("@"), true}));
        box->commit(QStringLiteral("\u5F20"));
        QCOMPARE(aite.last(), (QVariantList{QStringLiteral("@\u5F20"), true}));
    }

    void aCommitIntoAFullBoxIsSignalled()
    {
        box->setMaxCharacterCount(2);
        box->insertText(QStringLiteral("ab"));
        QSignalSpy reached(box.get(), &DrawableTextArea::maxCharacterCountReached);
        box->compose(QStringLiteral("ni"));
        box->commit(QStringLiteral("\u4F60"));
        QCOMPARE(reached.count(), 1);
        QCOMPARE(box->content(), QStringLiteral("ab"));
        QCOMPARE(box->preeditText(), QString());
    }

    void losingTheFocusEndsThePreedit()
    {
        box->insertText(QStringLiteral("ab"));
        box->compose(QStringLiteral("ni"));
        box->setFocus(false);
        QCOMPARE(box->preeditText(), QString());
        QCOMPARE(box->content(), QStringLiteral("ab"));
        box->setFocus(true);
        type(QStringLiteral("c"));
        QCOMPARE(box->content(), QStringLiteral("abc"));
    }

    void aReadOnlyBoxTakesNoCommit()
    {
        box->setReadOnly(true);
        box->commit(QStringLiteral("x"));
        QCOMPARE(box->content(), QString());
    }
};

QTEST_MAIN(TestAreaCompose)
#include "tst_areacompose.moc"
