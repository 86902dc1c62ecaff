// Windows on a desktop whose pixels are doubled: what the server sees of them, by a real pointer.

#include "x11tools.h"

#include "window/framehittest.h"
#include "window/framelesswindow.h"
#include "window/popupwindow.h"

#include <QApplication>
#include <QQuickItem>
#include <QScreen>

using namespace x11tools;
using namespace framehittest;

class TestScaledX11 : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!areThere())
            QSKIP("needs an X11 display, xdotool and xprop");
        QCOMPARE(QGuiApplication::primaryScreen()->devicePixelRatio(), 2.0);
    }
    void init() { pointerTo({5, 5}); }

    void shadowScalesAndTheResizeBandDoesNot_data()
    {
        QTest::addColumn<QPoint>("native"); // in the window
        QTest::addColumn<int>("kind");
        // The window has 600 x 400 native pixels, 40 of them shadow on each side; the band has 2 to each
        // side.
        QTest::newRow("before the band") << QPoint(37, 200) << int(HitClient);
        QTest::newRow("left") << QPoint(38, 200) << int(HitLeft);
        QTest::newRow("left, inner half") << QPoint(41, 200) << int(HitLeft);
        QTest::newRow("behind the band") << QPoint(42, 200) << int(HitClient);
        QTest::newRow("right") << QPoint(558, 200) << int(HitRight);
        QTest::newRow("bottom") << QPoint(300, 361) << int(HitBottom);
        QTest::newRow("unscaled place is shadow") << QPoint(20, 200) << int(HitClient);
        QTest::newRow("title") << QPoint(200, 98) << int(HitCaption);
        QTest::newRow("below the title") << QPoint(200, 100) << int(HitClient);
        QTest::newRow("button on the title") << QPoint(402, 60) << int(HitClient);
    }
    void shadowScalesAndTheResizeBandDoesNot()
    {
        QFETCH(QPoint, native);
        QFETCH(int, kind);
        FramelessWindow window;
        window.setGeometry(100, 80, 300, 200);
        QQuickItem title(window.contentItem());
        title.setSize({300, 50});
        QQuickItem button(window.contentItem());
        button.setPosition({201, 20});
        button.setSize({50, 20});
        window.setTitleArea(&title);
        window.setExcludeTitleArea({QVariant::fromValue<QQuickItem *>(&button)});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, patience));
        QTRY_COMPARE_WITH_TIMEOUT(window.frameMargins(), QMargins(), patience);
        const QPoint corner = window.position() * 2;
        // From a place of another kind, so that the answer is the pointer's.
        pointerTo(corner + (kind == HitClient ? QPoint(38, 200) : QPoint(300, 250)));
        QTRY_COMPARE_WITH_TIMEOUT(window.hitKind(), kind == HitClient ? int(HitLeft) : int(HitClient),
                                  patience);
        pointerTo(corner + native);
        QTRY_COMPARE_WITH_TIMEOUT(window.hitKind(), kind, patience);
    }

    void edgeResizesByLogicalPixels()
    {
        FramelessWindow window;
        window.setGeometry(100, 80, 300, 200);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window, patience));
        QTRY_COMPARE_WITH_TIMEOUT(window.frameMargins(), QMargins(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(window.geometry(), QRect(100, 80, 300, 200), patience);
        const QPoint from = window.position() * 2 + QPoint(560, 200);
        pointerTo(from);
        QTRY_COMPARE_WITH_TIMEOUT(window.hitKind(), int(HitRight), patience);
        xdo(QStringLiteral("mousedown 1"));
        dragTo(from, from + QPoint(80, 0));
        xdo(QStringLiteral("mouseup 1"));
        QTRY_COMPARE_WITH_TIMEOUT(window.geometry(), QRect(100, 80, 340, 200), patience);
    }

    void popUpOpensAtThePointer()
    {
        qApp->setProperty("currentScreen", QVariant::fromValue(QGuiApplication::primaryScreen()));
        pointerTo({500, 300});
        PopupWindow popup;
        popup.resize(100, 50);
        popup.open();
        QTRY_VERIFY_WITH_TIMEOUT(popup.isExposed(), patience);
        QCOMPARE(popup.position(), QPoint(250, 150));
        const QString info =
            run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), QString::number(popup.winId())});
        QVERIFY2(info.contains(QLatin1String("Absolute upper-left X:  500")), qPrintable(info));
        QVERIFY2(info.contains(QLatin1String("Width: 200")), qPrintable(info));
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_SCALE_FACTOR", "2");
    QApplication application(argc, argv);
    TestScaledX11 test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_scaled_x11.moc"
