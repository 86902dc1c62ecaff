// The picture of a message's emoji, where it is taller than a painter reaches.

#include "text/drawabletext.h"
#include "text/pipeline.h"

#include <QtTest>

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

} // namespace

class TestEmojiOverlay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
