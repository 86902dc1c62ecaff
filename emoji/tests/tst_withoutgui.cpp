// A program without a graphical application object: text works, pictures and fonts stay out without harm.

#include <emoji/emojiconvert.h>
#include <emoji/emojimanager.h>
#include <emoji/emojiparser.h>
#include <emoji/placeholderfont.h>

#include <QtTest>

class TestWithoutGui : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textWorks()
    {
        const QString face = EmojiParser::unicodeToEmoji(QStringLiteral("1f600"));
        QCOMPARE(EmojiParser(nullptr).emojiIndexes(face), (QVector<QPair<int, int>>{{0, 2}}));
        QVERIFY(EmojiConvert::instance()->containsEmoji(face));
    }

    void picturesAreRefused()
    {
        EmojiManager::EmojiInfo info;
        QVERIFY(!EmojiManager::instance()->emoji(QStringLiteral("1f600"), info));
        QVERIFY(!info.pixmap);
    }

    void fontIsLeftOut() { emoji::registerPlaceholderFont(); }
};

QTEST_GUILESS_MAIN(TestWithoutGui)
#include "tst_withoutgui.moc"
