// What is known as an emoji, under which key, and under which name.

#include "emojitestfile.h"

#include <emoji/emojiconvert.h>
#include <emoji/emojilist.h>
#include <emoji/emojiparser.h>

#include <QSet>
#include <QtTest>

#include <thread>

namespace {

QString keyByDefinition(const QString &text)
{
    QStringList parts;
    const QVector<uint> codePoints = text.toUcs4();
    for (const uint codePoint : codePoints) {
        if (codePoint != 0xFE0F)
            parts.append(QString::number(codePoint, 16));
    }
    return parts.join(QLatin1Char('-'));
}

} // namespace

class TestEmojiConvert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (testLines().isEmpty())
            QSKIP("Needs emoji-test.txt 15.0 (Debian: unicode-data)");
    }

    void exactlyTheListedFormsAreKnown()
    {
        const EmojiConvert *convert = EmojiConvert::instance();
        QSet<QString> listed;
        for (const TestLine &line : testLines()) {
            QVERIFY2(convert->containsEmoji(line.text), qPrintable(line.name));
            listed.insert(line.text);
        }
        // Neighbours of the listed forms: cut off, or with a selector too many.
        for (const QString &text : qAsConst(listed)) {
            for (int at = 0; at <= text.size(); ++at) {
                const QString cut = text.left(at);
                QCOMPARE(convert->containsEmoji(cut), listed.contains(cut));
                const QString selected = QString(text).insert(at, QChar(0xFE0F));
                QCOMPARE(convert->containsEmoji(selected), listed.contains(selected));
            }
        }
    }

    void otherTextIsNotKnown_data()
    {
        QTest::addColumn<QString>("codePoints");
        for (const char *codePoints :
             {"", "31", "4E2D", "1F600 FE0F", "FE0F 1F600", "2764 FE0F FE0F", "1F3FB", "1F1E8",
              "1F1E8 1F1F3 1F1FA", "1F600 1F600", "1F468 200D", "200D", "FE0F", "D83D", "1F600 20",
              "1F468 FE0F 200D 1F469 200D 1F467", "31 20E3 FE0F", "1F469 200D 1F697"})
            QTest::newRow(codePoints) << QString::fromLatin1(codePoints);
    }

    void otherTextIsNotKnown()
    {
        QFETCH(QString, codePoints);
        QVERIFY(!EmojiConvert::instance()->containsEmoji(fromHex(codePoints)));
        QCOMPARE(EmojiConvert::instance()->emojiUnicode(fromHex(codePoints)), QString());
    }

    void allFormsOfAnEmojiShareOneKeyThatLeadsBack()
    {
        QSet<QString> keys;
        for (const TestLine &line : testLines()) {
            const QString key = EmojiConvert::instance()->emojiUnicode(line.text);
            QCOMPARE(key, keyByDefinition(line.fullText));
            QCOMPARE(EmojiParser::unicodeToEmoji(key), line.fullText);
            QCOMPARE(EmojiParser::unicodeToEmoji(key.toUpper()), line.fullText);
            keys.insert(key);
        }
        QCOMPARE(keys.size(), 3655);
    }

    void toLocalUnicodeKeepsTheText()
    {
        const EmojiConvert *convert = EmojiConvert::instance();
        for (const TestLine &line : testLines())
            QCOMPARE(convert->toLocalUnicode(line.text), line.text);
        const QString others = fromHex(QStringLiteral("61 E001 F8FF EEEE EEEF D83D 0 1F600 FE0F FE0E"));
        QCOMPARE(convert->toLocalUnicode(others), others);
        QCOMPARE(convert->toLocalUnicode(QString()), QString());
    }

    void listForPickersIsUnicodesList()
    {
        int index = 0;
        for (const TestLine &line : testLines()) {
            QCOMPARE(emoji::emojiName(line.text), line.name);
            if (line.status != TestLine::FullyQualified)
                continue;
            const emoji::Entry &entry = emoji::allEmoji().at(index++);
            QCOMPARE(entry.text, line.text);
            QCOMPARE(entry.key, keyByDefinition(line.text));
            QCOMPARE(entry.name, line.name);
            QCOMPARE(entry.group, line.group);
            QCOMPARE(entry.subgroup, line.subgroup);
        }
        QCOMPARE(emoji::allEmoji().size(), index);
        QCOMPARE(emoji::emojiName(QStringLiteral("a")), QString());
    }

    void allThreadsGetTheSameObjects()
    {
        QVector<const void *> objects(8, nullptr);
        QVector<const void *> lists(8, nullptr);
        const void **objectsBegin = objects.data();
        const void **listsBegin = lists.data();
        std::vector<std::thread> threads;
        threads.reserve(8);
        for (int number = 0; number < 8; ++number)
            threads.emplace_back([=] {
                objectsBegin[number] = EmojiConvert::instance();
                listsBegin[number] = &emoji::allEmoji();
            });
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(objects, QVector<const void *>(8, EmojiConvert::instance()));
        QCOMPARE(lists, QVector<const void *>(8, &emoji::allEmoji()));
    }
};

QTEST_GUILESS_MAIN(TestEmojiConvert)
#include "tst_emojiconvert.moc"
