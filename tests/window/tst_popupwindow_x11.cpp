// Pop-ups and captures on X11: what the server and a real pointer make of them.

#include "x11tools.h"

#include "window/popupwindow.h"
#include "window/screencapture.h"

#include <QPointer>
#include <QQuickItem>
#include <QScreen>

using namespace x11tools;

class TestPopupWindowX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!areThere())
            QSKIP("needs an X11 display, xdotool and xprop");
        qApp->setProperty("currentScreen", QVariant::fromValue(QGuiApplication::primaryScreen()));
    }
    void init() { pointerTo({5, 5}); }

    void opensAtThePointerAndLeavesTheFocusAlone()
    {
        QWindow main;
        main.setGeometry(100, 100, 300, 200);
        main.show();
        main.requestActivate();
        const bool managed = QTest::qWaitForWindowActive(&main, 2000);
        pointerTo({600, 400});
        PopupWindow popup;
        popup.resize(150, 80);
        popup.open();
        QTRY_VERIFY_WITH_TIMEOUT(popup.isExposed(), patience);
        QCOMPARE(popup.position(), QPoint(600, 400));
        QCOMPARE(popup.cursorPos(), QPoint(0, 0));
        QTest::qWait(200);
        QCOMPARE(main.isActive(), managed);
        // The manager has no part in it.
        QVERIFY(run(QStringLiteral("xwininfo"),
                    {QStringLiteral("-id"), QString::number(popup.winId()), QStringLiteral("-all")})
                    .contains(QLatin1String("Override Redirect State: yes")));
    }

    void staysOpenWhileThePointerRestsOnIt()
    {
        PopupWindow popup;
        popup.resize(150, 80);
        popup.setTimeout(300);
        QSignalSpy enter(&popup, &PopupWindow::enter);
        QSignalSpy leave(&popup, &PopupWindow::leave);
        pointerTo({600, 400});
        popup.open();
        QTRY_VERIFY_WITH_TIMEOUT(popup.isExposed(), patience);
        pointerTo({610, 410});
        QTRY_VERIFY_WITH_TIMEOUT(enter.count() > 0, patience);
        popup.fade();
        pointerTo({300, 300});
        QTRY_VERIFY_WITH_TIMEOUT(leave.count() > 0, patience);
        QTRY_VERIFY_WITH_TIMEOUT(!popup.isVisible(), patience);
        popup.show();
        pointerTo({popup.x() + 20, popup.y() + 20});
        const int entered = enter.count();
        QTRY_VERIFY_WITH_TIMEOUT(enter.count() >= entered, patience);
        QTest::qWait(600);
        QVERIFY(popup.isVisible());
        popup.close();
    }

    void opensBesideItsItemAtEachEdgeOfTheScreen()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QQuickWindow window;
        window.setFlags(Qt::Window | Qt::BypassWindowManagerHint);
        window.setGeometry(area);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, patience));
        QQuickItem item(window.contentItem());
        item.setSize({80, 30});
        PopupWindow popup;
        popup.resize(150, 80);
        popup.setAttachItem(&item);
        const auto placedFor = [&](QPointF position, const char *edge) {
            popup.close();
            item.setPosition(position);
            popup.setEdge(QLatin1String(edge));
            popup.show();
            return popup.position() - area.topLeft();
        };
        const int right = area.width();
        const int bottom = area.height();
        QCOMPARE(placedFor({300, 200}, "bottom"), QPoint(300, 230));
        QCOMPARE(placedFor({300, bottom - 30.0}, "bottom"), QPoint(300, bottom - 110));
        QCOMPARE(placedFor({right - 80.0, 200}, "bottom"), QPoint(right - 150, 230));
        QCOMPARE(placedFor({300, 200}, "top"), QPoint(300, 120));
        QCOMPARE(placedFor({300, 200}, "left"), QPoint(150, 200));
        QCOMPARE(placedFor({right - 80.0, 200}, "right"), QPoint(right - 230, 200));
        QCOMPARE(placedFor({300, bottom - 110.0}, "bottomLeft"), QPoint(230, bottom - 64));
    }

    void maskIsTheServersShape()
    {
        PopupWindow popup;
        popup.resize(150, 80);
        popup.open();
        QTRY_VERIFY_WITH_TIMEOUT(popup.isExposed(), patience);
        popup.setMaskArea({10, 20, 30, 40});
        const auto shape = [&popup] {
            return run(QStringLiteral("xwininfo"),
                       {QStringLiteral("-id"), QString::number(popup.winId()), QStringLiteral("-shape")});
        };
        QTRY_VERIFY_WITH_TIMEOUT(shape().contains(QLatin1String("30x40+10+20")), patience);
    }

    void escapeEndsACapture()
    {
        QWindow main;
        main.setGeometry(100, 100, 300, 200);
        main.show();
        main.requestActivate();
        const bool managed = QTest::qWaitForWindowActive(&main, 2000);
        if (!managed)
            QSKIP("without a window manager nobody gives a window the focus");
        QPointer<ScreenCapture> capture = new ScreenCapture;
        QCOMPARE(capture->geometry(), QGuiApplication::primaryScreen()->geometry());
        capture->show();
        QVERIFY(QTest::qWaitForWindowExposed(capture.data(), patience));
        QTest::qWait(200);
        xdo(QStringLiteral("key Escape"));
        QTRY_VERIFY_WITH_TIMEOUT(!capture, patience);
    }
};

QTEST_MAIN(TestPopupWindowX11)
#include "tst_popupwindow_x11.moc"
