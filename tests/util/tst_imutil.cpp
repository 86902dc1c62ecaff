// The toolbox as an object: its screens and windows, its mutex, one instance per engine.

#include "util/imutil.h"

#include <QApplication>
#include <QDesktopWidget>
#include <QOperatingSystemVersion>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QScreen>
#include <QtTest>

#include <plugin/registration.h>

#include <atomic>
#include <thread>

class TestImUtil : public QObject
{
    Q_OBJECT

private:
    ImUtil util;

private Q_SLOTS:
    void everyEngineHasItsOwn()
    {
        // Under a name of its own, or the engine would load the built plugin over these types.
        component::registerAll("component.under.test");
        const auto instanceOf = [](QQmlEngine &engine) {
            QQmlComponent document(&engine);
            document.setData("import QtQml 2.15\nimport component.under.test 1.0\n"
                             "QtObject { property QtObject tool: ImUtil }",
                             QUrl());
            const QScopedPointer<QObject> object(document.create());
            return object ? object->property("tool").value<QObject *>() : nullptr;
        };
        QQmlEngine first;
        QQmlEngine second;
        QVERIFY(qobject_cast<ImUtil *>(instanceOf(first)));
        QCOMPARE(instanceOf(first), instanceOf(first));
        QVERIFY(instanceOf(first) != instanceOf(second));
    }

    void theScreenOfAWindowIsItsFreeArea()
    {
        QVERIFY(util.screenRect(nullptr).isEmpty());
        QWindow window;
        const QRect area = window.screen()->availableGeometry();
        QCOMPARE(util.screenRect(&window), (QVariantMap{{QStringLiteral("x"), area.x()},
                                                        {QStringLiteral("y"), area.y()},
                                                        {QStringLiteral("width"), area.width()},
                                                        {QStringLiteral("height"), area.height()}}));
    }

    void theDesktopIsAllScreensTogether()
    {
        QRect all;
        const auto screens = QGuiApplication::screens();
        for (const QScreen *screen : screens)
            all |= screen->geometry();
        QCOMPARE(util.desktopGeometry(), all);
    }

    void thePointerIsWhereTheSystemSaysItIs()
    {
        QCursor::setPos(33, 44);
        QCOMPARE(util.mousePostion(), QCursor::pos());
    }

    void aRectangleContainsItsEdges()
    {
        const QRect rect(10, 20, 30, 40);
        QVERIFY(util.isContainsPoint(rect, QPoint(10, 20)));
        QVERIFY(util.isContainsPoint(rect, QPoint(39, 59)));
        QVERIFY(!util.isContainsPoint(rect, QPoint(40, 59)));
        QVERIFY(!util.isContainsPoint(rect, QPoint(9, 20)));
        QVERIFY(!util.isContainsPoint(QRect(), QPoint(0, 0)));
    }

    void sizesAreTakenOutOfVariants()
    {
        QCOMPARE(util.variantToSize(QSizeF(1.5, 2)), QSizeF(1.5, 2));
        QCOMPARE(util.variantToSize(QSize(3, 4)), QSizeF(3, 4));
        QVERIFY(!util.variantToSize(QStringLiteral("text")).isValid());
        QVERIFY(!util.variantToSize(QVariant()).isValid());
    }

    void theSystemsVersionHasThreeParts()
    {
        const auto version = QOperatingSystemVersion::current();
        QCOMPARE(util.systemVersion(), (QVariantMap{{QStringLiteral("major"), version.majorVersion()},
                                                    {QStringLiteral("minor"), version.minorVersion()},
                                                    {QStringLiteral("micro"), version.microVersion()}}));
    }

    void theMutexKeepsAnotherThreadOut()
    {
        util.lockThread();
        std::atomic_bool isIn{false};
        std::thread other([&] {
            util.lockThread();
            isIn = true;
            util.unlockThread();
        });
        QTest::qWait(100);
        const bool wasIn = isIn;
        util.unlockThread();
        other.join();
        QVERIFY(!wasIn);
        QVERIFY(isIn);
    }

    void eachToolboxHasAMutexOfItsOwn()
    {
        ImUtil other;
        util.lockThread();
        other.lockThread();
        other.unlockThread();
        util.unlockThread();
    }
};

QTEST_MAIN(TestImUtil)
#include "tst_imutil.moc"
