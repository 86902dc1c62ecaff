// Reading the document of the input box.

#include "textarea/areadocument.h"

#include "box.h"
#include "documents.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace fixture;

class TestAreaDocument : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEmptyDocumentSaysNothing()
    {
        DocumentBuilder builder;
        const areadocument::Message message = areadocument::read(*builder);
        QCOMPARE(message.text, QString());
        QVERIFY(message.blocks.isEmpty());
        QCOMPARE(areadocument::mentions(*builder), QVariantList());
        QCOMPARE(areadocument::latestEmojis(*builder), QVariantList());
        QCOMPARE(areadocument::length(*builder), 0);
    }

    void placeholdersTurnBackIntoWhatTheyStandFor()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("a\u00A0\uEEEF\n"))
            .emoji(QStringLiteral("1f600"), grin)
            .text(QStringLiteral("\uEEEE"));
        QCOMPARE(areadocument::read(*builder).text,
                 QStringLiteral("a \t\n") + grin + QStringLiteral("\uEEEE"));
    }

    void mentionsCountTheirEmojiInFull()
    {
        DocumentBuilder builder;
        builder.emoji(QStringLiteral("x"), family)
            .text(QStringLiteral("\n"))
            .mention(QStringLiteral("@A"), 1, mention(5))
            .mentionEmoji(QStringLiteral("1f600"), grin, 1, mention(5))
            .text(QStringLiteral(" "))
            .mention(QStringLiteral("@B"), 2, mention(QStringLiteral("six")));
        const UserTextBlocks expected{aiteBlock(12, 4, 5), aiteBlock(17, 2, QStringLiteral("six"))};
        QCOMPARE(areadocument::read(*builder).blocks, expected);
        QCOMPARE(areadocument::mentions(*builder),
                 (QVariantList{mention(5), mention(QStringLiteral("six"))}));
    }

    void lineEndsInsideAMentionAddNothingToItsLength()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("x")).mention(QStringLiteral("a\nb"), 1, mention(5));
        const UserTextBlocks expected{aiteBlock(1, 2, 5)};
        QCOMPARE(areadocument::read(*builder).blocks, expected);
        QCOMPARE(areadocument::read(*builder).text, QStringLiteral("xa\nb"));

        DocumentBuilder softly; // by line ends that make no new paragraph
        softly.text(QStringLiteral("x")).mention(QStringLiteral("\u2028a\u2028b"), 1, mention(5));
        const UserTextBlocks behindOne{aiteBlock(2, 2, 5)};
        QCOMPARE(areadocument::read(*softly).blocks, behindOne);
    }

    void partsOfOneSerialCountWithTheLastMention()
    {
        DocumentBuilder builder;
        builder.mention(QStringLiteral("ab"), 1, mention(1))
            .text(QStringLiteral("x"))
            .mention(QStringLiteral("cd"), 2, mention(2))
            .text(QStringLiteral("y"))
            .mention(QStringLiteral("ef"), 1, mention(1));
        const UserTextBlocks expected{aiteBlock(0, 2, 1), aiteBlock(3, 4, 2)};
        QCOMPARE(areadocument::read(*builder).blocks, expected);
    }

    void latestEmojiComeFirstAndOnce()
    {
        DocumentBuilder builder;
        builder.emoji(QStringLiteral("1f600"), grin)
            .emoji(QStringLiteral("f"), family)
            .text(QStringLiteral("x\uEEEE"))
            .emoji(QStringLiteral("1f600"), grin)
            .emoji(QStringLiteral("1f600"), grin);
        const QVariantList expected{
            QVariantMap{{QStringLiteral("unicode"), QStringLiteral("1f600")},
                        {QStringLiteral("emoji"), grin}},
            QVariantMap{{QStringLiteral("unicode"), QStringLiteral("f")}, {QStringLiteral("emoji"), family}}};
        QCOMPARE(areadocument::latestEmojis(*builder), expected);
    }

    void sourceTextOfAPart()
    {
        DocumentBuilder builder;
        builder.text(QStringLiteral("ab\n")).emoji(QStringLiteral("1f600"), grin).text(QStringLiteral("cd"));
        QCOMPARE(areadocument::sourceText(*builder, 1, 5), QStringLiteral("b\n") + grin + QLatin1Char('c'));
        QCOMPARE(areadocument::sourceText(*builder, -3, 99),
                 QStringLiteral("ab\n") + grin + QStringLiteral("cd"));
        QCOMPARE(areadocument::sourceText(*builder, 4, 2), QString());
    }

    void formatsOutsideTheDocumentAreEmpty()
    {
        DocumentBuilder builder;
        builder.mention(QStringLiteral("ab"), 1, mention(1));
        QVERIFY(areadocument::serialAt(*builder, 1));
        QVERIFY(!areadocument::serialAt(*builder, 2));
        QVERIFY(!areadocument::serialAt(*builder, -1));
    }

    // What the box says is what a cursor finds, character by character.
    void anyDocumentReadsAsACursorTellsIt()
    {
        QRandomGenerator random(20);
        for (int round = 0; round < 400; ++round) {
            DocumentBuilder builder;
            for (int piece = random.bounded(12); piece > 0; --piece) {
                const uint serial = uint(random.bounded(4));
                switch (random.bounded(5)) {
                case 0:
                    builder.text(QStringLiteral("ab\u00A0c"));
                    break;
                case 1:
                    builder.text(QStringLiteral("\n"));
                    break;
                case 2:
                    builder.emoji(QStringLiteral("k"), random.bounded(2) ? grin : family);
                    break;
                case 3:
                    builder.mention(QStringLiteral("@x\uEEEF"), serial, mention(int(serial)));
                    break;
                default:
                    builder.mentionEmoji(QStringLiteral("k"), grin, serial, mention(int(serial)));
                }
            }
            const Told told = tell(*builder);
            const areadocument::Message message = areadocument::read(*builder);
            QCOMPARE(message.text, told.text);
            QCOMPARE(message.blocks, told.blocks);
            QCOMPARE(areadocument::mentions(*builder), told.mentions);
        }
    }
};

QTEST_MAIN(TestAreaDocument)
#include "tst_areadocument.moc"
