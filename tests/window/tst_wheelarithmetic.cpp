// From turns of a wheel to pixels along the axis in which a view scrolls.

#include "window/wheelarithmetic.h"

#include <QtTest>

class TestWheelArithmetic : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anglesBecomeThreePixelsADegree_data()
    {
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<QPoint>("pixels");
        QTest::newRow("a notch") << QPoint(0, 120) << QPoint(0, 45);
        QTest::newRow("a notch back") << QPoint(0, -120) << QPoint(0, -45);
        QTest::newRow("both axes") << QPoint(120, -240) << QPoint(45, -90);
        QTest::newRow("half a degree rounds up") << QPoint(4, 0) << QPoint(3, 0);
        QTest::newRow("less than half") << QPoint(3, 0) << QPoint(0, 0);
        // Rounding goes away from zero at halves upwards only.
        QTest::newRow("half a degree back") << QPoint(-4, 0) << QPoint(qRound(-0.5) * 3, 0);
        QTest::newRow("more than half back") << QPoint(-5, 0) << QPoint(-3, 0);
        QTest::newRow("an eighth of a notch") << QPoint(0, 15) << QPoint(0, 6);
        QTest::newRow("nothing") << QPoint(0, 0) << QPoint(0, 0);
    }
    void anglesBecomeThreePixelsADegree()
    {
        QFETCH(QPoint, angle);
        QFETCH(QPoint, pixels);
        QCOMPARE(wheel::distanceOfAngle(angle), pixels);
    }

    void strongerDirectionGoesToTheAxisOfTheView_data()
    {
        QTest::addColumn<QPoint>("raw");
        QTest::addColumn<QPoint>("vertical");
        QTest::addColumn<QPoint>("horizontal");
        QTest::newRow("down") << QPoint(0, -45) << QPoint(0, -45) << QPoint(-45, 0);
        QTest::newRow("up") << QPoint(0, 45) << QPoint(0, 45) << QPoint(45, 0);
        QTest::newRow("sideways") << QPoint(-45, 0) << QPoint(0, -45) << QPoint(-45, 0);
        QTest::newRow("mostly sideways") << QPoint(30, 10) << QPoint(10, 30) << QPoint(30, 10);
        QTest::newRow("mostly left") << QPoint(-30, 10) << QPoint(10, -30) << QPoint(-30, 10);
        QTest::newRow("mostly right and down") << QPoint(30, -10) << QPoint(-10, 30) << QPoint(30, -10);
        QTest::newRow("mostly down") << QPoint(10, -30) << QPoint(10, -30) << QPoint(-30, 10);
        QTest::newRow("mostly down and left") << QPoint(-10, 30) << QPoint(-10, 30) << QPoint(30, -10);
        QTest::newRow("equal, opposite signs") << QPoint(-20, 20) << QPoint(-20, 20) << QPoint(-20, 20);
        QTest::newRow("equal, other signs") << QPoint(20, -20) << QPoint(20, -20) << QPoint(20, -20);
        QTest::newRow("nothing") << QPoint(0, 0) << QPoint(0, 0) << QPoint(0, 0);
    }
    void strongerDirectionGoesToTheAxisOfTheView()
    {
        QFETCH(QPoint, raw);
        QFETCH(QPoint, vertical);
        QFETCH(QPoint, horizontal);
        QCOMPARE(wheel::alongOrientation(raw, Qt::Vertical), vertical);
        QCOMPARE(wheel::alongOrientation(raw, Qt::Horizontal), horizontal);
        // Whatever a script writes into the property: only the one value is vertical.
        QCOMPARE(wheel::alongOrientation(raw, Qt::Orientation(0)), horizontal);
    }
};

QTEST_APPLESS_MAIN(TestWheelArithmetic)
#include "tst_wheelarithmetic.moc"
