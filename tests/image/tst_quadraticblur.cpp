// The blur of backgrounds against the same sums written down plainly.

#include "image/quadraticblur.h"
#include "testpictures.h"

#include <QtTest>

#include <cmath>
#include <vector>

namespace {

/// One direction at a time, each pixel a weighted mean of its clamped neighbours, truncated to a byte.
QImage blurredPlainly(const QImage &image, int radius)
{
    const int r = radius < 2 ? 1 : radius >= 249 ? 248 : radius;
    qint64 total = 0;
    for (int k = -r; k <= r; ++k)
        total += qint64(r - std::abs(k)) * (r - std::abs(k));
    const float inverse = 1.0F / float(total);
    const auto pass = [&](const QImage &from, bool alongRows) {
        QImage to = from;
        for (int y = 0; y < from.height(); ++y) {
            for (int x = 0; x < from.width(); ++x) {
                qint64 sum[3] = {0, 0, 0};
                for (int k = -r; k <= r; ++k) {
                    const qint64 weight = qint64(r - std::abs(k)) * (r - std::abs(k));
                    const int column = alongRows ? qBound(0, x + k, from.width() - 1) : x;
                    const int row = alongRows ? y : qBound(0, y + k, from.height() - 1);
                    const uchar *pixel = from.constScanLine(row) + 4 * column;
                    for (int colour = 0; colour < 3; ++colour)
                        sum[colour] += weight * pixel[colour];
                }
                for (int colour = 0; colour < 3; ++colour)
                    to.scanLine(y)[4 * x + colour] = uchar(float(sum[colour]) * inverse);
            }
        }
        return to;
    };
    return pass(pass(image, true), false);
}

} // namespace

class TestQuadraticBlur : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pixelsAreWeightedByTheSquareOfTheDistance_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("radius");

        for (const int radius : {1, 2, 3, 10, 50, 247, 248})
            QTest::addRow("radius %d", radius) << QSize(32, 24) << radius;
        QTest::newRow("radius below the least") << QSize(32, 24) << -5;
        QTest::newRow("radius 249 is 248") << QSize(32, 24) << 249;
        QTest::newRow("largest radius") << QSize(32, 24) << 0x7fffffff;
        QTest::newRow("one pixel") << QSize(1, 1) << 7;
        QTest::newRow("column") << QSize(1, 300) << 7;
        QTest::newRow("row") << QSize(32, 1) << 7;
    }

    void pixelsAreWeightedByTheSquareOfTheDistance()
    {
        QFETCH(QSize, size);
        QFETCH(int, radius);
        const QImage image =
            testpictures::smooth(size, true).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QImage blurred = image;
        quadraticBlur(blurred.bits(), size.width(), size.height(), 4, radius);
        QCOMPARE(blurred, blurredPlainly(image, radius));
    }

    /// The sums of a white picture are the largest there are; they must not wrap around.
    void whiteStaysWhiteAtTheLargestRadius()
    {
        QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        quadraticBlur(image.bits(), 40, 40, 4, 248);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x)
                QVERIFY(qRed(image.pixel(x, y)) >= 253); // truncated twice
        }
    }

    void radiusOneChangesNothing()
    {
        const QImage image = testpictures::smooth(QSize(20, 20)).convertToFormat(QImage::Format_ARGB32);
        QImage blurred = image;
        quadraticBlur(blurred.bits(), 20, 20, 4, 1);
        QCOMPARE(blurred, image);
    }

    void alphaIsLeftAlone()
    {
        const QImage image = testpictures::smooth(QSize(32, 8), true);
        QImage blurred = image;
        quadraticBlur(blurred.bits(), 32, 8, 4, 9);
        QVERIFY(blurred != image);
        for (int x = 0; x < 32; ++x)
            QCOMPARE(qAlpha(blurred.pixel(x, 3)), qAlpha(image.pixel(x, 3)));
    }

    void emptyPicturesAreLeftAlone()
    {
        uchar guard[4] = {1, 2, 3, 4};
        quadraticBlur(guard, 0, 1, 4, 5);
        quadraticBlur(guard, 1, -1, 4, 5);
        QCOMPARE(int(guard[0] + guard[1] + guard[2] + guard[3]), 10);
    }
};

QTEST_MAIN(TestQuadraticBlur)
#include "tst_quadraticblur.moc"
