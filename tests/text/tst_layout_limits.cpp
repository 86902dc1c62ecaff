// What the layout makes of numbers and texts that no client should send: a result, soon, and no harm that
// lasts.

#include "text/drawabletext.h"
#include "text/elidedlines.h"
#include "text/emojioverlay.h"
#include "text/layout.h"
#include "text/linebreaker.h"
#include "text/punctuation.h"

#include <QElapsedTimer>
#include <QTextLayout>
#include <QtTest>

#include <limits>

namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr ushort placeholder = 0xeeee;

/// Long enough for a machine that builds beside the test and for sanitizers; a quadratic way takes hours.
constexpr int generousTime = 60000; // ms

/// An item outside any scene whose layout may begin.
class Item : public DrawableText
{
public:
    Item() { componentComplete(); }
};

QString sampleText()
{
    return QString::fromUtf8("Some words, \u4e00\u4e9b\u8bcd\u3002 \U0001F600\n"
                             "\u0645\u0631\u062d\u0628\u0627 and a second line");
}

void fillWithParagraph(DrawableTextPrivate &state, const QString &text)
{
    state.measureFont();
    state.maxWidth = 300.0;
    state.paragraphs = QStringList(text);
    drawabletext::scanClosePunctuation(state);
}

} // namespace

class TestLayoutLimits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anyNumberGivesALayoutAndASoundOneBringsTheSizeBack_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::addColumn<double>("value");
        const QVector<QPair<const char *, double>> values = {{"not a number", notANumber},
                                                             {"infinite", infinite},
                                                             {"minus infinite", -infinite},
                                                             {"huge", 1e300},
                                                             {"minus huge", -1e300},
                                                             {"tiny", 1e-300},
                                                             {"negative", -7.5},
                                                             {"more than fixed", 5e7}};
        for (const char *property : {"padding", "leftPadding", "topPadding", "rightPadding", "bottomPadding",
                                     "leading", "textIndent", "tabWidth", "multilineMinWidth", "maxWidth"}) {
            for (const auto &value : values)
                QTest::addRow("%s, %s", property, value.first) << QByteArray(property) << value.second;
        }
    }

    void anyNumberGivesALayoutAndASoundOneBringsTheSizeBack()
    {
        QFETCH(QByteArray, property);
        QFETCH(double, value);
        Item sound;
        sound.setMaxWidth(200.0);
        sound.setText(sampleText());
        QVERIFY(sound.lineCount() >= 2);

        for (const Qt::TextElideMode elide :
             {Qt::ElideNone, Qt::ElideLeft, Qt::ElideRight, Qt::ElideMiddle}) {
            for (const int limit : {-1, 1, 2}) {
                Item item;
                const QVariant before = item.property(property);
                item.setElide(elide);
                item.setMaximumLineCount(limit);
                item.setMaxWidth(200.0);
                QVERIFY(item.setProperty(property, value));
                item.setText(sampleText());
                // Where not even an ellipsis fits there is nothing to show.
                QVERIFY(item.lineCount() >= 1 || elide != Qt::ElideNone || item.maxWidth() <= 0.0);

                item.setElide(Qt::ElideNone);
                item.setMaximumLineCount(-1);
                item.setProperty(property, property == "maxWidth" ? QVariant(200.0) : before);
                item.setText(QString());
                item.setText(sampleText());
                QCOMPARE(item.lineCount(), sound.lineCount());
                QCOMPARE(item.width(), sound.width());
                QCOMPARE(item.height(), sound.height());
            }
        }
    }

    void numbersOutsideFixedPointAreBroughtIntoIt()
    {
        QCOMPARE(drawabletext::boundedForText(notANumber), 0.0);
        QCOMPARE(drawabletext::boundedForText(1.25), 1.25);
        for (const double value : {infinite, 1e300, 3.4e7, -infinite, -1e300, -3.4e7}) {
            const double bounded = drawabletext::boundedForText(value);
            QVERIFY(qAbs(bounded) * 64.0 <= double(std::numeric_limits<int>::max()));
            QCOMPARE(bounded < 0.0, value < 0.0);
        }
    }

    void emojiPictureIsNullOrOfABoundedSize_data()
    {
        QTest::addColumn<double>("width");
        QTest::addColumn<double>("height");
        QTest::addColumn<bool>("exists");
        QTest::newRow("ordinary") << 300.0 << 20.0 << true;
        QTest::newRow("fractions round up") << 0.25 << 0.25 << true;
        QTest::newRow("width is not a number") << notANumber << 20.0 << false;
        QTest::newRow("height is not a number") << 300.0 << notANumber << false;
        QTest::newRow("infinite height") << 300.0 << infinite << false;
        QTest::newRow("infinite width") << infinite << 20.0 << false;
        QTest::newRow("huge") << 1e300 << 1e300 << false;
        QTest::newRow("rows beyond an int") << 1.0 << 3e9 << false;
        QTest::newRow("gigabytes") << 30000.0 << 30000.0 << false;
        QTest::newRow("negative") << -30.0 << 20.0 << false;
    }

    void emojiPictureIsNullOrOfABoundedSize()
    {
        QFETCH(double, width);
        QFETCH(double, height);
        QFETCH(bool, exists);
        DrawableTextPrivate state;
        fillWithParagraph(state, QString(QChar(placeholder)));
        state.emojis = {{EmojiRecord()}};
        state.hasEmoji = true;
        state.emojiCount = 1;
        drawabletext::layoutParagraphs(state);
        state.maxWidth = infinite;
        state.contentWidth = width;
        state.contentHeight = height;
        drawabletext::renderEmojiImage(state);
        QCOMPARE(!state.emojiImage.isNull(), exists);
        if (exists)
            QCOMPARE(state.emojiImage.size(), QSize(qCeil(width), qCeil(height)));
    }

    void oddCharactersAreLaidOut_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a thousand combining marks") << QLatin1Char('a') + QString(1000, QChar(0x0301));
        QTest::newRow("combining marks alone") << QString(1000, QChar(0x0334));
        QTest::newRow("a lone high surrogate") << QString(QChar(0xd83d));
        QTest::newRow("a lone low surrogate") << QString(QChar(0xde00));
        QTest::newRow("surrogates in reverse") << QString(QChar(0xde00)) + QChar(0xd83d);
        QTest::newRow("a surrogate before punctuation") << QString(60, QChar(0xd83d)) + QChar(0x3002);
        QTest::newRow("object replacement") << QString(100, QChar(0xfffc));
        QTest::newRow("nulls") << QString(100, QChar(0));
        QTest::newRow("noncharacters") << QString(100, QChar(0xffff));
        QTest::newRow("nested overrides") << QString(200, QChar(0x202e)) + QStringLiteral("abc");
        QTest::newRow("unclosed isolates") << QString(200, QChar(0x2067)) + QStringLiteral("abc");
        QTest::newRow("joiners") << QString(300, QChar(0x200d));
        QTest::newRow("soft hyphens") << QString(300, QChar(0x00ad));
        QTest::newRow("punctuation alone") << QString(400, QChar(0x3002));
        QTest::newRow("placeholders that the text brings along") << QString(400, QChar(placeholder));
    }

    void oddCharactersAreLaidOut()
    {
        QFETCH(QString, text);
        for (const double width : {1.0, 150.0}) {
            for (const int wrapMode : {0, 1, 2, 3, 4}) {
                Item item;
                item.setWrapMode(DrawableText::WrapMode(wrapMode));
                item.setMaxWidth(width);
                item.setText(text);
                QTRY_VERIFY(item.lineCount() >= 1);
                QVERIFY(item.height() > 0.0);
                item.setMaximumLineCount(2);
                for (const auto elide : {Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideRight})
                    item.setElide(elide);
                QVERIFY(item.lineCount() <= 3);
            }
        }
    }

    void millionsOfCharactersAreLaidOutInTime_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("one word") << QStringLiteral("a");
        QTest::newRow("words") << QStringLiteral("word ");
        QTest::newRow("no-break spaces") << QString(QChar(QChar::Nbsp));
        QTest::newRow("ideographs and punctuation") << QString::fromUtf8("\u4e00\u4e8c\u4e09\u3002");
    }

    void millionsOfCharactersAreLaidOutInTime()
    {
        QFETCH(QString, unit);
        constexpr int length = 5'000'000;
        DrawableTextPrivate state;
        fillWithParagraph(state, unit.repeated(length / unit.size()));
        QElapsedTimer timer;
        timer.start();
        drawabletext::layoutParagraphs(state);
        QVERIFY2(timer.elapsed() < generousTime, qPrintable(QString::number(timer.elapsed())));
        const QTextLayout &layout = *state.layouts.constFirst();
        const QTextLine last = layout.lineAt(layout.lineCount() - 1);
        QCOMPARE(last.textStart() + last.textLength(), layout.text().size());
    }

    void aHundredThousandEmojiFindTheirLinesInTime()
    {
        constexpr int count = 100'000;
        DrawableTextPrivate state;
        fillWithParagraph(state, QString(count, QChar(placeholder)));
        state.maxWidth = 2.0 * state.emojiSize + 1.0;
        state.emojis.append(QVector<EmojiRecord>(count));
        for (int i = 0; i < count; ++i)
            state.emojis[0][i].pos = i;
        state.hasEmoji = true;
        state.emojiCount = count;
        drawabletext::layoutParagraphs(state);
        QElapsedTimer timer;
        timer.start();
        drawabletext::renderEmojiImage(state);
        QVERIFY2(timer.elapsed() < generousTime, qPrintable(QString::number(timer.elapsed())));
        // Two in a row: the last one stands on the last line, right of its neighbour.
        const EmojiRecord &last = state.emojis.at(0).constLast();
        const QTextLine line = state.layouts.at(0)->lineAt(count / 2 - 1);
        QCOMPARE(last.rect.top(), line.y() + 1.0);
        QCOMPARE(last.rect.left(), line.cursorToX(count - 1) + 1.0);
    }

    void longTextsAreElidedInTime_data()
    {
        QTest::addColumn<int>("elide");
        QTest::addColumn<int>("limit");
        for (const int limit : {1, 2, 5}) {
            QTest::addRow("left, %d lines", limit) << int(Qt::ElideLeft) << limit;
            QTest::addRow("middle, %d lines", limit) << int(Qt::ElideMiddle) << limit;
            QTest::addRow("right, %d lines", limit) << int(Qt::ElideRight) << limit;
        }
    }

    void longTextsAreElidedInTime()
    {
        QFETCH(int, elide);
        QFETCH(int, limit);
        Item item;
        item.setElide(Qt::TextElideMode(elide));
        item.setMaximumLineCount(limit);
        item.setMaxWidth(250.0);
        QElapsedTimer timer;
        timer.start();
        item.setText(QString::fromUtf8("words \U0001F600 \u4f60\u597d\n").repeated(40'000));
        QVERIFY2(timer.elapsed() < generousTime, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(item.elidedText().contains(QChar(0x2026)));
        QVERIFY(item.elidedText().size() < 1000);
        QVERIFY(item.lineCount() <= limit + 1);
    }

    void anAbandonedLayoutStopsAtOnce()
    {
        DrawableTextPrivate state;
        fillWithParagraph(state, QStringLiteral("word "));
        drawabletext::layoutParagraphs(state);
        QCOMPARE(state.layouts.size(), 1);
        state.abandon();
        drawabletext::layoutParagraphs(state);
        QVERIFY(state.layouts.isEmpty());
    }
};

QTEST_MAIN(TestLayoutLimits)
#include "tst_layout_limits.moc"
