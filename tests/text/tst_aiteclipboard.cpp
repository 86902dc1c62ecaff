// Mentions on the clipboard: the bytes that are written, and what is made of bytes from anywhere.

#include "text/aiteclipboard.h"

#include <QMimeData>
#include <QRandomGenerator>
#include <QtTest>

namespace {

using Aites = QVector<TextSpan>;

/// The parts of the format, written out by hand.
QByteArray number(quint32 value)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes.append(char(value >> shift));
    return bytes;
}

QByteArray string(const QString &text)
{
    QByteArray bytes = number(quint32(text.size() * 2));
    for (const QChar character : text)
        bytes.append(char(character.row())).append(char(character.cell()));
    return bytes;
}

QByteArray variant(quint32 type, const QByteArray &value, bool isNull = false)
{
    return number(type) + QByteArray(1, char(isNull)) + value;
}

QByteArray intVariant(int value)
{
    return variant(2, number(quint32(value)));
}

QByteArray aite(int from, int to, int kind, const QByteArray &data)
{
    return number(quint32(from)) + number(quint32(to)) + number(quint32(kind)) + data;
}

/// Nested lists of one element each, around an invalid value.
QByteArray nestedLists(int depth)
{
    QByteArray bytes;
    for (int i = 0; i < depth; ++i)
        bytes += variant(9, number(1));
    return bytes + variant(0, {});
}

Aites read(const QByteArray &bytes)
{
    return aiteclipboard::fromBase64(bytes.toBase64());
}

} // namespace

Q_DECLARE_METATYPE(TextSpan)

class tst_AiteClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesTheBytesOfEachField();
    void nothingIsWrittenForNoMentions();
    void readsWhatItWrote_data();
    void readsWhatItWrote();
    void readsTheBytesOfEachField();
    void bytesBehindTheListAreNotLookedAt();
    void everyTruncationGivesNoMentions();
    void damagedDataGivesNoMentions_data();
    void damagedDataGivesNoMentions();
    void nestingIsReadUpToItsLimit();
    void randomBytesAreSurvived();
    void flippedBytesAreSurvived();
    void mimeDataCarriesTextAndMentions();
    void mimeDataWithoutMentionsCarriesTextAlone();
};

void tst_AiteClipboard::writesTheBytesOfEachField()
{
    const QVariantMap map{{QStringLiteral("id"), 7}};
    const Aites aites{{0, 3, QStringLiteral("u1"), SpanAite}, {5, 9, map, SpanPlainAite}};
    const QByteArray expected =
        number(2) + aite(0, 3, 8, variant(10, string(QStringLiteral("u1")))) +
        aite(5, 9, 2048, variant(8, number(1) + string(QStringLiteral("id")) + intVariant(7)));
    QCOMPARE(QByteArray::fromBase64(aiteclipboard::toBase64(aites).toLatin1()).toHex(), expected.toHex());
    QCOMPARE(aiteclipboard::toBase64(aites).toLatin1(), expected.toBase64());
}

void tst_AiteClipboard::nothingIsWrittenForNoMentions()
{
    QCOMPARE(aiteclipboard::toBase64({}), QString());
}

void tst_AiteClipboard::readsWhatItWrote_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::newRow("invalid") << QVariant();
    QTest::newRow("null") << QVariant::fromValue(nullptr);
    QTest::newRow("bool") << QVariant(true);
    QTest::newRow("int") << QVariant(-42);
    QTest::newRow("uint") << QVariant(42U);
    QTest::newRow("long long") << QVariant(Q_INT64_C(9007199254740993));
    QTest::newRow("unsigned long long") << QVariant(Q_UINT64_C(18446744073709551615));
    QTest::newRow("double") << QVariant(0.25);
    QTest::newRow("float") << QVariant(0.25F);
    QTest::newRow("short") << QVariant::fromValue<short>(-3);
    QTest::newRow("char") << QVariant::fromValue<char>('x');
    QTest::newRow("character") << QVariant(QChar(0x4e2d));
    QTest::newRow("string") << QVariant(QStringLiteral("\u4e2d\U0001F600"));
    QTest::newRow("null string") << QVariant(QString());
    QTest::newRow("bytes") << QVariant(QByteArray("\0\1\2", 3));
    QTest::newRow("null bytes") << QVariant(QByteArray());
    QTest::newRow("address") << QVariant(QUrl(QStringLiteral("https://example.org/?a=b")));
    QTest::newRow("strings") << QVariant(QStringList{QStringLiteral("a"), QString()});
    QTest::newRow("list") << QVariant(QVariantList{1, QStringLiteral("two"), QVariantList{3.0}});
    QTest::newRow("map") << QVariant(
        QVariantMap{{QStringLiteral("userId"), 5}, {QStringLiteral("nested"), QVariantMap()}});
    QTest::newRow("hash") << QVariant(QVariantHash{{QStringLiteral("userId"), 5}});
    QTest::newRow("date") << QVariant(QDate(2024, 2, 29));
    QTest::newRow("time") << QVariant(QTime(23, 59, 58, 999));
    QTest::newRow("local time") << QVariant(QDateTime(QDate(2024, 2, 29), QTime(1, 2), Qt::LocalTime));
    QTest::newRow("universal time") << QVariant(QDateTime(QDate(2024, 2, 29), QTime(1, 2), Qt::UTC));
    QTest::newRow("time with an offset")
        << QVariant(QDateTime(QDate(2024, 2, 29), QTime(1, 2), Qt::OffsetFromUTC, 3600));
    QTest::newRow("uuid") << QVariant(QUuid(QStringLiteral("{67c8770b-44f1-410a-ab9a-f9b5446f13ee}")));
}

void tst_AiteClipboard::readsWhatItWrote()
{
    QFETCH(QVariant, data);
    // A second one behind it notices a value that was left too early or too late.
    const Aites aites{{0, 3, data, SpanAite}, {7, 9, QStringLiteral("next"), SpanPlainAite}};
    const Aites read = aiteclipboard::fromBase64(aiteclipboard::toBase64(aites).toUtf8());
    QCOMPARE(read.size(), 2);
    QCOMPARE(read.constFirst().data.userType(), data.userType());
    QCOMPARE(read, aites);
}

void tst_AiteClipboard::readsTheBytesOfEachField()
{
    const Aites aites = read(number(1) + aite(2, 11, 8, intVariant(77)));
    QCOMPARE(aites.size(), 1);
    QCOMPARE(aites.constFirst(), (TextSpan{2, 11, 77, SpanAite}));
}

void tst_AiteClipboard::bytesBehindTheListAreNotLookedAt()
{
    const QByteArray one = number(1) + aite(2, 11, 8, intVariant(77));
    QCOMPARE(read(one + "anything").size(), 1);
    QCOMPARE(read(number(0) + "anything").size(), 0);
}

void tst_AiteClipboard::everyTruncationGivesNoMentions()
{
    const QVariantMap map{{QStringLiteral("userId"), 5},
                          {QStringLiteral("tags"), QStringList{QStringLiteral("a"), QStringLiteral("b")}}};
    const Aites aites{{0, 3, QVariantList{1, QByteArray("xy")}, SpanAite}, {5, 9, map, SpanAite}};
    const QByteArray whole = QByteArray::fromBase64(aiteclipboard::toBase64(aites).toUtf8());
    QCOMPARE(read(whole), aites);
    for (int length = 0; length < whole.size(); ++length)
        QVERIFY2(read(whole.left(length)).isEmpty(), qPrintable(QString::number(length)));
}

void tst_AiteClipboard::damagedDataGivesNoMentions_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = aite(0, 3, 8, intVariant(7));
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("one record more than there are") << number(2) + good;
    QTest::newRow("two thousand million records") << number(0x7fffffff) + good;
    QTest::newRow("a negative number of records") << number(0xffffffff) + good;
    QTest::newRow("a bad second record") << number(2) + good + aite(0, 3, 8, variant(10, number(3) + "abc"));
    QTest::newRow("an unknown type") << number(1) + aite(0, 3, 8, variant(999, number(0)));
    QTest::newRow("a type by name") << number(1) + aite(0, 3, 8, variant(1024, number(4) + "Type"));
    QTest::newRow("a picture") << number(1) + aite(0, 3, 8, variant(70, number(1) + "\x89PNG"));
    QTest::newRow("a string of odd length") << number(1) + aite(0, 3, 8, variant(10, number(3) + "abc"));
    QTest::newRow("a string that is longer than the data")
        << number(1) + aite(0, 3, 8, variant(10, number(0x7ffffffe) + "ab"));
    QTest::newRow("bytes that are longer than the data")
        << number(1) + aite(0, 3, 8, variant(12, number(0xfffffffe) + "ab"));
    QTest::newRow("a list that claims gigabytes")
        << number(1) + aite(0, 3, 8, variant(9, number(0x7fffffff) + intVariant(1)));
    QTest::newRow("strings that claim gigabytes")
        << number(1) + aite(0, 3, 8, variant(11, number(0x7fffffff) + string(QStringLiteral("a"))));
    QTest::newRow("a map that claims gigabytes") << number(1) + aite(0, 3, 8, variant(8, number(0x7fffffff)));
    QTest::newRow("a time zone") << number(1) + aite(0, 3, 8,
                                                     variant(16, QByteArray(12, '\0') + '\3' +
                                                                     string(QStringLiteral("UTC"))));
    QTest::newRow("lists nested too deep") << number(1) + aite(0, 3, 8, nestedLists(129));
    QTest::newRow("lists nested by the hundred thousand") << number(1) + aite(0, 3, 8, nestedLists(200'000));
}

void tst_AiteClipboard::damagedDataGivesNoMentions()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(read(bytes).isEmpty());
}

void tst_AiteClipboard::nestingIsReadUpToItsLimit()
{
    QCOMPARE(read(number(1) + aite(0, 3, 8, nestedLists(128))).size(), 1);
}

void tst_AiteClipboard::randomBytesAreSurvived()
{
    QRandomGenerator random(20240229);
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes = number(random.bounded(4U)) + aite(0, 1, 8, number(random.bounded(40U)));
        const int length = random.bounded(64);
        for (int i = 0; i < length; ++i)
            bytes.append(char(random.bounded(4) == 0 ? random.bounded(256) : random.bounded(3)));
        // Whatever is made of it fits what was given: a record takes 17 bytes at least.
        QVERIFY(read(bytes).size() <= bytes.size() / 17);
    }
    for (int round = 0; round < 2'000; ++round) {
        QByteArray text(random.bounded(80), Qt::Uninitialized);
        for (char &character : text)
            character = char(random.bounded(256));
        QVERIFY(aiteclipboard::fromBase64(text).size() <= text.size() / 17);
    }
}

void tst_AiteClipboard::flippedBytesAreSurvived()
{
    const QVariantMap map{{QStringLiteral("userId"), 5},
                          {QStringLiteral("list"), QVariantList{1.5, true, QUrl(QStringLiteral("a:b"))}},
                          {QStringLiteral("when"), QDateTime(QDate(2024, 2, 29), QTime(1, 2), Qt::UTC)}};
    const Aites aites{{0, 3, QStringLiteral("u1"), SpanAite}, {5, 9, map, SpanAite}};
    const QByteArray whole = QByteArray::fromBase64(aiteclipboard::toBase64(aites).toUtf8());
    for (int at = 0; at < whole.size(); ++at) {
        for (int value = 0; value < 256; ++value) {
            QByteArray bytes = whole;
            bytes[at] = char(value);
            // All of them, none of them, or fewer where the count itself was hit.
            QVERIFY(read(bytes).size() <= 2);
        }
    }
}

void tst_AiteClipboard::mimeDataCarriesTextAndMentions()
{
    const QScopedPointer<QMimeData> mime(
        aiteclipboard::createMimeData(QStringLiteral("hi @Ann"), QStringLiteral("QUJD")));
    QCOMPARE(mime->text(), QStringLiteral("hi @Ann"));
    QCOMPARE(mime->data(QStringLiteral("ostrel/aite")), QByteArray("QUJD"));
    QCOMPARE(aiteclipboard::mimeType(), QStringLiteral("ostrel/aite"));
}

void tst_AiteClipboard::mimeDataWithoutMentionsCarriesTextAlone()
{
    const QScopedPointer<QMimeData> mime(aiteclipboard::createMimeData(QStringLiteral("hi"), QString()));
    QCOMPARE(mime->formats(), QStringList{QStringLiteral("text/plain")});
}

QTEST_GUILESS_MAIN(tst_AiteClipboard)
#include "tst_aiteclipboard.moc"
