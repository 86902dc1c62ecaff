// The "@" and "#" words in front of the cursor.

#include "box.h"

#include "messageguard.h"

#include <QSignalSpy>
#include <QtTest>

using namespace fixture;

namespace {

QVariantList found(const QString &word)
{
    return {word, true};
}

const QVariantList nothing{QString(), false};

} // namespace

class TestAreaDetection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        guard = std::make_unique<MessageGuard>();
        box = std::make_unique<Box>();
        box->setAiteEnabled(true);
        box->setHashTagEnabled(true);
        aite = std::make_unique<QSignalSpy>(box.get(), &DrawableTextArea::aiteDetected);
        tag = std::make_unique<QSignalSpy>(box.get(), &DrawableTextArea::hashTagDetected);
    }
    void cleanup()
    {
        aite.reset();
        tag.reset();
        box.reset();
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    void theWordInProgressIsReported_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("from"); // -1 for none
        const auto row = [](const QString &text, int from) {
            QTest::addRow("%s", qPrintable(text)) << text << from;
        };
        row(QStringLiteral("~"), 0);
        row(QStringLiteral("~an"), 0);
        row(QStringLiteral("hi ~an"), 3);
        row(QStringLiteral("hi\n~an"), 3);
        row(QStringLiteral("a~an"), -1);
        row(QStringLiteral("~an "), -1);
        row(QStringLiteral("~an b"), -1);
        row(QStringLiteral("~an\nb"), -1);
        row(QStringLiteral("~a~b"), 0);
        row(QStringLiteral("a ~\u4F60\u597D"), 2);
        row(QStringLiteral("\u05D0 ~\u05D1"), 2);
        row(QStringLiteral("abc"), -1);
        row(QStringLiteral(" "), -1);
    }
    void theWordInProgressIsReported()
    {
        QFETCH(QString, text);
        QFETCH(int, from);
        const QString aiteText = QString(text).replace(QLatin1Char('~'), QLatin1Char('@'));
        const QString tagText = QString(text).replace(QLatin1Char('~'), QLatin1Char('#'));
        box->insertText(aiteText);
        QCOMPARE(aite->last(), from == -1 ? nothing : found(aiteText.mid(from)));
        QCOMPARE(box->aiteFrom(), from);
        QCOMPARE(box->aiteLen(), from == -1 ? 0 : text.size() - from);
        box->setContent(tagText + QLatin1Char('x'));
        box->key(Qt::Key_Backspace);
        QCOMPARE(tag->last(), from == -1 ? nothing : found(tagText.mid(from)));
        QCOMPARE(box->hashTagFrom(), from);
        QCOMPARE(box->hashTagLen(), from == -1 ? 0 : text.size() - from);
    }

    void nothingIsDetectedUnlessWanted()
    {
        box->setAiteEnabled(false);
        box->setHashTagEnabled(false);
        box->insertText(QStringLiteral("@an"));
        box->insertText(QStringLiteral(" #an"));
        QCOMPARE(aite->count() + tag->count(), 0);
    }

    void aCursorInTheFirstWordFindsItAndInTheSecondNothing()
    {
        box->insertText(QStringLiteral("@first second"));
        QCOMPARE(aite->last(), nothing);
        box->setCursorPosition(7);
        box->key(Qt::Key_Left);
        QCOMPARE(box->cursorPosition(), 6);
        QCOMPARE(aite->last(), found(QStringLiteral("@first")));
        QCOMPARE(tag->last(), nothing);
        box->setCursorPosition(12);
        box->key(Qt::Key_Right);
        QCOMPARE(aite->last(), nothing);
    }

    void cursorMovesOfAProgramDetectNothing()
    {
        box->insertText(QStringLiteral("@first #second"));
        aite->clear();
        tag->clear();
        box->setCursorPosition(3);
        QCOMPARE(aite->count() + tag->count(), 0);
    }

    void behindAMentionNothingIsFound()
    {
        box->insertText(QStringLiteral("@Ann"), mention(1));
        QCOMPARE(aite->last(), nothing);
        box->insertText(QStringLiteral("x"));
        QCOMPARE(aite->last(), nothing);
        QCOMPARE(box->aiteFrom(), -1);
    }

    void besideAMentionTheLastFindStands()
    {
        box->insertText(QStringLiteral("@a"));
        QCOMPARE(box->aiteLen(), 2);
        box->insertText(QStringLiteral("@Ann"), mention(1));
        QCOMPARE(aite->last(), nothing);
        QCOMPARE(box->aiteFrom(), 0);
        QCOMPARE(box->aiteLen(), 2);
    }

    void aSignRightBehindAMentionIsNoStart()
    {
        // The name ends with a space, so the sign follows one.
        box->insertText(QStringLiteral("Ann "), mention(1));
        box->insertText(QStringLiteral("@b"));
        QCOMPARE(aite->last(), nothing);
    }

    void anEmojiInTheWordIsReportedBySource()
    {
        box->insertText(QStringLiteral("@a") + family);
        QCOMPARE(aite->last(), found(QStringLiteral("@a") + family));
        QCOMPARE(box->aiteLen(), 3);
        box->setContent(QStringLiteral("#") + grin);
        QCOMPARE(tag->last(), found(QStringLiteral("#") + grin));
        QCOMPARE(box->hashTagLen(), 2);
    }

    void aFoundMentionClosesTheTags()
    {
        box->insertText(QStringLiteral("#tag @ann"));
        tag->clear();
        box->key(Qt::Key_Left);
        QCOMPARE(aite->last(), found(QStringLiteral("@an")));
        QVERIFY(tag->count() > 0);
        QCOMPARE(tag->last(), nothing);
    }

    void jumpingOverAMentionDetects()
    {
        box->insertText(QStringLiteral("#tag"));
        box->insertText(QStringLiteral("@Ann"), mention(1));
        tag->clear();
        box->key(Qt::Key_Left);
        QCOMPARE(box->cursorPosition(), 4);
        QCOMPARE(tag->last(), found(QStringLiteral("#tag")));
    }

    void theClientCompletesAWord()
    {
        box->insertText(QStringLiteral("hi @an"));
        box->select(box->aiteFrom(), box->aiteFrom() + box->aiteLen());
        box->insertAite(QStringLiteral("@Ann"), mention(1));
        QCOMPARE(box->untrimmedContent(), QStringLiteral("hi @Ann "));
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
        QCOMPARE(aite->last(), nothing);
        QCOMPARE(box->aiteFrom(), -1);
    }

    void aFindIsNotNotified()
    {
        QSignalSpy from(box.get(), &DrawableTextArea::aiteFromChanged);
        QSignalSpy length(box.get(), &DrawableTextArea::aiteLenChanged);
        box->insertText(QStringLiteral("@an"));
        QCOMPARE(box->aiteFrom(), 0);
        QCOMPARE(from.count() + length.count(), 0);
    }

private:
    std::unique_ptr<Box> box;
    std::unique_ptr<QSignalSpy> aite;
    std::unique_ptr<QSignalSpy> tag;
    std::unique_ptr<MessageGuard> guard;
};

QTEST_MAIN(TestAreaDetection)
#include "tst_areadetection.moc"
