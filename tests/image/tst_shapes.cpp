// RoundedRectItem and CircleProgress, painted on a picture.

#include "image/circleprogress.h"
#include "image/roundedrectitem.h"
#include "messageguard.h"
#include "testpictures.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTime>
#include <QtTest>

#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;

QImage painted(QQuickPaintedItem &item)
{
    QImage image(int(item.width()), int(item.height()), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    item.paint(&painter);
    return image;
}

QVariantMap stop(const QVariant &position, const QVariant &color)
{
    return {{QStringLiteral("position"), position}, {QStringLiteral("color"), color}};
}

bool isAlike(const QColor &a, const QColor &b, int channel = 3)
{
    return qAbs(a.red() - b.red()) <= channel && qAbs(a.green() - b.green()) <= channel &&
           qAbs(a.blue() - b.blue()) <= channel && qAbs(a.alpha() - b.alpha()) <= channel;
}

} // namespace

class TestShapes : public QObject
{
    Q_OBJECT

    QScopedPointer<MessageGuard> guard;

private Q_SLOTS:
    void init()
    {
        guard.reset(); // one at a time
        guard.reset(new MessageGuard);
    }

    void cleanup() { QCOMPARE(guard->unexpected(), QStringList()); }

    // ---- RoundedRectItem

    /// The outline lies inside by the whole width of the border, whose outer half fills half of that.
    void outlineIsInsetByTheWholeBorder()
    {
        RoundedRectItem item;
        item.setSize(QSizeF(60, 40));
        item.setBorderWidth(8);
        item.setBorderColor(Qt::red);
        item.setColor(Qt::green);
        const QImage image = painted(item);
        for (int x = 0; x < 4; ++x)
            QCOMPARE(qAlpha(image.pixel(x, 20)), 0);
        for (int x = 4; x < 12; ++x)
            QCOMPARE(image.pixelColor(x, 20), QColor(Qt::red));
        QCOMPARE(image.pixelColor(12, 20), QColor(Qt::green));
        QCOMPARE(image.pixelColor(47, 20), QColor(Qt::green));
        QCOMPARE(image.pixelColor(48, 20), QColor(Qt::red));
        QCOMPARE(qAlpha(image.pixel(56, 20)), 0);
    }

    void eachCornerHasItsRadius_data()
    {
        QTest::addColumn<QVector<double>>("radii");
        QTest::newRow("none") << QVector<double>{0, 0, 0, 0};
        QTest::newRow("top left") << QVector<double>{20, 0, 0, 0};
        QTest::newRow("top right") << QVector<double>{0, 20, 0, 0};
        QTest::newRow("bottom left") << QVector<double>{0, 0, 20, 0};
        QTest::newRow("bottom right") << QVector<double>{0, 0, 0, 20};
        QTest::newRow("all, different") << QVector<double>{5, 10, 20, 25};
    }

    void eachCornerHasItsRadius()
    {
        QFETCH(QVector<double>, radii);
        RoundedRectItem item;
        item.setSize(QSizeF(80, 60));
        item.setBorderWidth(2);
        item.setBorderColor(Qt::green);
        item.setColor(Qt::green);
        item.setTopLeftRadius(radii.at(0));
        item.setTopRightRadius(radii.at(1));
        item.setBottomLeftRadius(radii.at(2));
        item.setBottomRightRadius(radii.at(3));
        const QImage image = painted(item);
        // Inset by 2, and the pen reaches 1 beyond.
        const double inset = 2;
        const double reach = 1;
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 80; ++x) {
                const bool isLeft = x < 40;
                const bool isTop = y < 30;
                const double r = radii.at((isTop ? 0 : 2) + (isLeft ? 0 : 1));
                const double px = isLeft ? x + 0.5 - inset : 80 - inset - (x + 0.5);
                const double py = isTop ? y + 0.5 - inset : 60 - inset - (y + 0.5);
                double outside = std::max(-px, -py);
                if (px < r && py < r)
                    outside = std::hypot(r - px, r - py) - r;
                if (outside < reach - 1.2)
                    QVERIFY2(isAlike(image.pixelColor(x, y), Qt::green),
                             qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
                else if (outside > reach + 1.2)
                    QVERIFY2(qAlpha(image.pixel(x, y)) == 0,
                             qPrintable(QStringLiteral("%1 %2").arg(x).arg(y)));
            }
        }
    }

    void gradientRunsFromTopToBottom()
    {
        RoundedRectItem item;
        item.setSize(QSizeF(20, 101));
        item.setColor(Qt::yellow);
        item.setGradient({stop(0, QColor(255, 0, 0)), stop(1.0, QStringLiteral("#0000ff"))});
        const QImage image = painted(item);
        for (const int y : {10, 50, 90}) {
            const double share = (y + 0.5) / 101;
            QVERIFY(
                isAlike(image.pixelColor(10, y), QColor(qRound(255 * (1 - share)), 0, qRound(255 * share))));
        }
    }

    void gradientWithEqualEndsIsOneColour_data()
    {
        QTest::addColumn<QVariantList>("gradient");
        QTest::addColumn<QColor>("colour");

        QTest::newRow("one stop") << QVariantList{stop(0.5, QColor(Qt::red))} << QColor(Qt::red);
        QTest::newRow("others between")
            << QVariantList{stop(0, QColor(Qt::red)), stop(0.5, QColor(Qt::blue)), stop(1, QColor(Qt::red))}
            << QColor(Qt::red);
        // What Qt makes of an invalid colour is black.
        QTest::newRow("no map") << QVariantList{42} << QColor(Qt::black);
        QTest::newRow("no colour") << QVariantList{stop(0, QStringLiteral("no colour"))} << QColor(Qt::black);
    }

    void gradientWithEqualEndsIsOneColour()
    {
        QFETCH(QVariantList, gradient);
        QFETCH(QColor, colour);
        RoundedRectItem item;
        item.setSize(QSizeF(20, 100));
        item.setGradient(gradient);
        const QImage image = painted(item);
        for (const int y : {5, 50, 95})
            QCOMPARE(image.pixelColor(10, y), colour);
    }

    void equalGradientIsNoChange()
    {
        RoundedRectItem item;
        QSignalSpy spy(&item, &RoundedRectItem::gradientChanged);
        item.setGradient({stop(0, QColor(Qt::red)), stop(1, QColor(Qt::blue))});
        item.setGradient({stop(0, QColor(Qt::red)), stop(1, QColor(Qt::blue))});
        QCOMPARE(spy.count(), 1);
        item.setGradient({stop(0, QColor(Qt::red)), stop(1, QColor(Qt::green))});
        QCOMPARE(spy.count(), 2);
    }

    void invalidColoursPaintBlack()
    {
        RoundedRectItem item;
        item.setSize(QSizeF(20, 20));
        item.setBorderWidth(0); // a line of one pixel
        const QImage image = painted(item);
        QCOMPARE(image.pixelColor(10, 10), QColor(Qt::black));
        QVERIFY(qAlpha(image.pixel(0, 10)) > 100);
    }

    void largeRadiiOverlapAndAnyNumberIsSurvived()
    {
        RoundedRectItem item;
        item.setSize(QSizeF(40, 40));
        for (const double radius : {100.0, -20.0, 1e9, qQNaN(), qInf()}) {
            item.setTopLeftRadius(radius);
            item.setBottomRightRadius(radius);
            item.setBorderWidth(radius);
            QCOMPARE(painted(item).size(), QSize(40, 40));
        }
        RoundedRectItem large;
        large.setSize(QSizeF(40, 40));
        large.setColor(Qt::red);
        large.setTopLeftRadius(60);
        const QImage image = painted(large);
        QCOMPARE(qAlpha(image.pixel(3, 3)), 0);
        QVERIFY(qAlpha(image.pixel(35, 35)) > 0);
    }

    // ---- CircleProgress

    void radiusSetsTheSize()
    {
        CircleProgress item;
        QCOMPARE(QSizeF(item.width(), item.height()), QSizeF(40, 40));
        item.setRadius(7);
        QCOMPARE(QSizeF(item.width(), item.height()), QSizeF(14, 14));
        item.setRadius(2147483647);
        QCOMPARE(item.width(), 2.0 * 2147483647);
        item.setRadius(-5);
        QCOMPARE(item.width(), -10.0);
    }

    void fullCircleIsOpaque_data()
    {
        QTest::addColumn<double>("progress");
        QTest::newRow("one") << 1.0;
        QTest::newRow("more") << 7.0;
        QTest::newRow("infinite") << qInf();
    }

    void fullCircleIsOpaque()
    {
        QFETCH(double, progress);
        CircleProgress item;
        item.setRadius(30);
        item.setColor(Qt::red);
        item.setProgress(progress);
        const QImage image = painted(item);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x) {
                const double distance = std::hypot(x + 0.5 - 30, y + 0.5 - 30);
                if (distance < 29)
                    QCOMPARE(image.pixelColor(x, y), QColor(Qt::red));
                else if (distance > 31)
                    QCOMPARE(qAlpha(image.pixel(x, y)), 0);
            }
        }
    }

    void waterStandsAtTheProgressWithAWave_data()
    {
        QTest::addColumn<double>("progress");
        for (const double progress : {0.0, 0.25, 0.5, 0.9, -0.2})
            QTest::addRow("%g", progress) << progress;
    }

    void waterStandsAtTheProgressWithAWave()
    {
        QFETCH(double, progress);
        constexpr int radius = 50;
        constexpr double diameter = 2 * radius;
        CircleProgress item;
        item.setRadius(radius);
        item.setColor(Qt::blue);
        item.setProgress(progress);
        QColor water(Qt::blue);
        water.setAlpha(100);
        // The wave moves by one pixel in 20 ms, so the clock is read before and after.
        for (int attempt = 0; attempt < 200; ++attempt) {
            const double before = QTime::currentTime().msecsSinceStartOfDay() / 20.0;
            const QImage image = painted(item);
            const double after = QTime::currentTime().msecsSinceStartOfDay() / 20.0;
            if (after < before || after - before > 1)
                continue;
            for (int x = 20; x <= 80; x += 5) {
                const double surface =
                    std::sin((x + 0.5 + (before + after) / 2) * pi / 2 / radius) * diameter / 20 +
                    (1 - progress) * diameter;
                for (int y = 0; y < 100; ++y) {
                    if (std::hypot(x + 0.5 - 50, y + 0.5 - 50) > 48)
                        continue;
                    if (y + 0.5 > surface + 1.2)
                        QVERIFY(isAlike(image.pixelColor(x, y), water));
                    else if (y + 0.5 < surface - 1.2)
                        QCOMPARE(qAlpha(image.pixel(x, y)), 0);
                }
            }
            return;
        }
        QFAIL("not painted within 20 ms in any of 200 attempts");
    }

    void qualityChangesNothing()
    {
        CircleProgress item;
        QSignalSpy spy(&item, &CircleProgress::qualityChanged);
        item.setProgress(1);
        const QImage before = painted(item);
        item.setQuality(9);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(painted(item), before);
    }
};

QTEST_MAIN(TestShapes)
#include "tst_shapes.moc"
