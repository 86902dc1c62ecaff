// The picture of a message's emoji.

#include "text/drawabletext.h"
#include "text/emojioverlay.h"
#include "text/layout.h"
#include "text/paragraphs.h"
#include "textengine.h"

#include <emoji/emojimanager.h>

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QtTest>

#include <cmath>

using namespace textengine;

namespace {

/// Pixels of `rect` that are not transparent.
int inkIn(const QImage &image, const QRectF &rect)
{
    int ink = 0;
    const QRect pixels = rect.toAlignedRect() & image.rect();
    for (int y = pixels.top(); y <= pixels.bottom(); ++y) {
        for (int x = pixels.left(); x <= pixels.right(); ++x)
            ink += qAlpha(image.pixel(x, y)) > 0 ? 1 : 0;
    }
    return ink;
}

bool holdsInk(const QImage &image, const QRectF &rect)
{
    return inkIn(image, rect) > 0;
}

} // namespace

class TestEmojiOverlay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void emojiPictureCoversTheItem()
    {
        DrawableText item;
        item.setMaxWidth(150);
        item.setText(QStringLiteral("text ") + grinning() + QStringLiteral(" more text that wraps ") +
                     family());
        const QImage picture = item.state()->emojiImage;
        const double ratio = qGuiApp->devicePixelRatio();
        QCOMPARE(picture.format(), QImage::Format_ARGB4444_Premultiplied);
        QCOMPARE(picture.devicePixelRatio(), ratio);
        QCOMPARE(picture.width(), int(std::ceil(ratio * qMin(150.0, item.state()->contentWidth))));
        QCOMPARE(picture.height(), int(std::ceil(ratio * item.state()->contentHeight)));
        item.setFixedWidth(500);
        item.setColor(Qt::red);
        QCOMPARE(item.state()->emojiImage.width(), int(std::ceil(ratio * 150.0)));
    }

    void emojiStandOverTheirPlaceholders()
    {
        DrawableText item;
        item.setPadding(7);
        item.setMaxWidth(120);
        item.setText(QStringLiteral("a") + grinning() + QStringLiteral(" words to wrap ") + family() +
                     grinning() + QStringLiteral("\nnext ") + thumbsUpMediumTone());
        QVERIFY(item.lineCount() > 2);
        const DrawableTextPrivate *state = item.state();
        int count = 0;
        for (int paragraph = 0; paragraph < state->emojis.size(); ++paragraph) {
            const QTextLayout *layout = state->layouts.at(paragraph);
            for (const EmojiRecord &record : state->emojis.at(paragraph)) {
                const QTextLine line = layout->lineForTextPosition(record.pos);
                const QRectF expected(line.cursorToX(record.pos) + 1 + layout->position().x(),
                                      layout->position().y() + line.y() + 1, state->emojiSize - 2,
                                      state->emojiSize - 2);
                QCOMPARE(record.rect, expected);
                // The text flows around it by itself.
                QVERIFY(qAbs(line.cursorToX(record.pos + 1) - line.cursorToX(record.pos) - state->emojiSize) <
                        1.0);
                QVERIFY(holdsInk(state->emojiImage, record.rect));
                ++count;
            }
        }
        QCOMPARE(count, 4);
    }

    void emojiPictureIsPaintedFromTheManagersPictures()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("a") + grinning() + thumbsUpMediumTone() + QStringLiteral("b\n") +
                     family());
        const DrawableTextPrivate *state = item.state();
        QImage expected(state->emojiImage.size(), QImage::Format_ARGB4444_Premultiplied);
        expected.setDevicePixelRatio(state->emojiImage.devicePixelRatio());
        expected.fill(Qt::transparent);
        {
            QPainter painter(&expected);
            painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                                   QPainter::SmoothPixmapTransform);
            for (const QVector<EmojiRecord> &records : state->emojis) {
                for (const EmojiRecord &record : records) {
                    EmojiManager::EmojiInfo info;
                    QVERIFY(EmojiManager::instance()->emoji(record.unicode, info));
                    painter.drawPixmap(record.rect, *info.pixmap,
                                       QRectF(info.x, info.y, info.width, info.height));
                }
            }
        }
        QVERIFY(holdsInk(expected, QRectF(0, 0, 200, 200)));
        QCOMPARE(state->emojiImage, expected);
    }

    void emojiPictureIsPaintedOnlyWhenMarked()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(grinning());
        const qint64 first = item.state()->emojiImage.cacheKey();
        item.setReserveSpace(true); // marks nothing
        item.setLinkColor(Qt::red); // marks the formats
        QCOMPARE(item.state()->emojiImage.cacheKey(), first);
        item.setColor(Qt::red);
        QVERIFY(item.state()->emojiImage.cacheKey() != first);
    }

    void emojiPictureOfNothingIsLeftAsItWas()
    {
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(grinning());
        const QImage before = item.state()->emojiImage;
        item.setText(QString());
        QCOMPARE(item.state()->contentWidth, 0.0);
        QCOMPARE(item.state()->emojiImage, before);
    }

    void emojiOfNoLineIsLoggedAndSkipped()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("ab");
        drawabletext::splitParagraphs(state);
        state.spans.resize(1);
        drawabletext::layoutParagraphs(state);
        EmojiRecord lost;
        lost.pos = 999;
        lost.unicode = QStringLiteral("1f600");
        EmojiRecord good;
        good.pos = 1;
        good.unicode = QStringLiteral("1f600");
        state.emojis = {{lost, good}, {good}}; // and one paragraph more than there are layouts
        const LogCapture log;
        drawabletext::renderEmojiImage(state);
        QCOMPARE(log.messages(), QStringList({QStringLiteral("Line is invalid,pos: 999")}));
        QVERIFY(state.emojis.at(0).at(0).rect.isNull());
        QVERIFY(!state.emojis.at(0).at(1).rect.isNull());
        QVERIFY(state.emojis.at(1).at(0).rect.isNull());
    }

    void emojiWithoutAPictureLeavesItsPlaceEmpty()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("a\uEEEE");
        drawabletext::splitParagraphs(state);
        drawabletext::layoutParagraphs(state);
        EmojiRecord unknown;
        unknown.pos = 1;
        unknown.unicode = QStringLiteral("no such key");
        state.emojis = {{unknown}};
        drawabletext::renderEmojiImage(state);
        QVERIFY(!state.emojiImage.isNull());
        QVERIFY(!state.emojis.at(0).at(0).rect.isNull());
        QVERIFY(!holdsInk(state.emojiImage, QRectF(0, 0, 200, 200)));
    }

    void abandonedEmojiPictureStopsAtTheFirstEmoji()
    {
        DrawableTextPrivate state;
        state.measureFont();
        state.maxWidth = 200;
        state.text = QStringLiteral("\uEEEE");
        drawabletext::splitParagraphs(state);
        drawabletext::layoutParagraphs(state);
        EmojiRecord record;
        record.unicode = QStringLiteral("1f600");
        record.pos = 0;
        state.emojis = {{record}};
        state.abandon();
        drawabletext::renderEmojiImage(state);
        QVERIFY(state.emojis.at(0).at(0).rect.isNull());
    }

    void emojiFarDownAVeryTallMessageArePaintedLikeTheFirst()
    {
        DrawableText item;
        item.setMaxWidth(100);
        // A limit keeps the layout in the setter, and nothing is cut without an elision.
        item.setMaximumLineCount(100000);
        constexpr int lines = 4000;
        item.setText(QStringLiteral("\U0001F600\n").repeated(lines));
        const DrawableTextPrivate &state = *item.state();

        QCOMPARE(state.emojiCount, lines);
        QVERIFY(state.emojiImage.height() > 40000);
        const int first = inkIn(state.emojiImage, state.emojis.first().first().rect);
        QVERIFY(first > 50);
        for (const int line : {1, lines / 3, lines / 2, lines - 1}) {
            const int ink = inkIn(state.emojiImage, state.emojis.at(line).first().rect);
            // Lines stand at fractions of a pixel, so the edges differ a little.
            QVERIFY2(qAbs(ink - first) < first / 4,
                     qPrintable(QStringLiteral("line %1: %2 pixels").arg(line).arg(ink)));
        }
    }
};

QTEST_MAIN(TestEmojiOverlay)
#include "tst_emojioverlay.moc"
