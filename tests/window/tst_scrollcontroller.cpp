// The wheel over a view, by events in a window.

#include "window/scrollcontroller.h"

#include <QQuickWindow>
#include <QtTest>

class TestScrollController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eventsBecomeDistancesAndAreEaten_data()
    {
        QTest::addColumn<QPoint>("pixels");
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<Qt::MouseEventSource>("source");
        QTest::addColumn<Qt::Orientation>("orientation");
        QTest::addColumn<QPoint>("distance");
        const Qt::MouseEventSource wheel = Qt::MouseEventNotSynthesized;
        const Qt::MouseEventSource touch = Qt::MouseEventSynthesizedBySystem;
        QTest::newRow("notch") << QPoint() << QPoint(0, -120) << wheel << Qt::Vertical << QPoint(0, -45);
        QTest::newRow("notch, horizontal")
            << QPoint() << QPoint(0, -120) << wheel << Qt::Horizontal << QPoint(-45, 0);
        QTest::newRow("fine wheel") << QPoint() << QPoint(0, 4) << wheel << Qt::Vertical << QPoint(0, 3);
        QTest::newRow("pixels of a wheel count nothing")
            << QPoint(7, 9) << QPoint(0, 120) << wheel << Qt::Vertical << QPoint(0, 45);
        QTest::newRow("touch pad") << QPoint(-30, 10) << QPoint(0, 120) << touch << Qt::Vertical
                                   << QPoint(10, -30);
        QTest::newRow("touch pad, by Qt") << QPoint(30, 10) << QPoint() << Qt::MouseEventSynthesizedByQt
                                          << Qt::Horizontal << QPoint(30, 10);
        QTest::newRow("touch pad without pixels")
            << QPoint() << QPoint(0, 120) << touch << Qt::Vertical << QPoint(0, 0);
        QTest::newRow("nothing") << QPoint() << QPoint() << wheel << Qt::Vertical << QPoint(0, 0);
    }
    void eventsBecomeDistancesAndAreEaten()
    {
        QFETCH(QPoint, pixels);
        QFETCH(QPoint, angle);
        QFETCH(Qt::MouseEventSource, source);
        QFETCH(Qt::Orientation, orientation);
        QFETCH(QPoint, distance);
        QQuickWindow window;
        window.resize(100, 100);
        ScrollController below(window.contentItem());
        below.setSize({100, 100});
        ScrollController controller(window.contentItem());
        controller.setSize({100, 100});
        controller.setOrientation(orientation);
        QSignalSpy spy(&controller, &ScrollController::wheel);
        QSignalSpy belowSpy(&below, &ScrollController::wheel);

        QWheelEvent event(QPointF(50, 50), QPointF(50, 50), pixels, angle, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false, source);
        QCoreApplication::sendEvent(&window, &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(spy.count(), 1);
        QCOMPARE(QPoint(spy.at(0).at(0).toInt(), spy.at(0).at(1).toInt()), distance);
        QCOMPARE(belowSpy.count(), 0);
    }
};

QTEST_MAIN(TestScrollController)
#include "tst_scrollcontroller.moc"
