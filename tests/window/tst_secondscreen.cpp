// A second screen that comes and goes: made by the test, to the right of the first one and lower.

#include "messageguard.h"

#include "window/framelesswindow.h"
#include "window/popupwindow.h"
#include "window/screencapture.h"

#include <QPointer>
#include <QQuickItem>
#include <QScreen>
#include <QtTest>

#include <qpa/qplatformscreen.h>
#include <qpa/qwindowsysteminterface.h>

#include <memory>

namespace {

constexpr int patience = 10'000; // ms

const QRect whole(900, 300, 800, 600);
const QRect workArea(900, 340, 800, 560); // a panel at the top

class ScreenBeside : public QPlatformScreen
{
public:
    [[nodiscard]] QRect geometry() const override { return whole; }
    [[nodiscard]] QRect availableGeometry() const override { return workArea; }
    [[nodiscard]] int depth() const override { return 32; }
    [[nodiscard]] QImage::Format format() const override { return QImage::Format_RGB32; }
    [[nodiscard]] QString name() const override { return QStringLiteral("beside"); }
};

QScreen *currentScreen()
{
    return qApp->property("currentScreen").value<QScreen *>();
}

void setCurrentScreen(QScreen *screen)
{
    qApp->setProperty("currentScreen", screen ? QVariant::fromValue(screen) : QVariant());
}

/// Whether the platform's own windows can stand on a screen that it does not know.
bool windowsCanBeThere()
{
    return QGuiApplication::platformName() == QLatin1String("offscreen");
}

} // namespace

class TestSecondScreen : public QObject
{
    Q_OBJECT

    ScreenBeside *beside = nullptr;
    QScreen *second = nullptr;
    std::unique_ptr<MessageGuard> guard;

    void unplug()
    {
        if (beside)
            QWindowSystemInterface::handleScreenRemoved(beside); // deletes it
        beside = nullptr;
        second = nullptr;
    }

public:
    /// Windows are shown here on platforms without OpenGL, too.
    static void initMain() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }

private Q_SLOTS:
    void init()
    {
        guard = std::make_unique<MessageGuard>();
        guard->allow(QStringLiteral("^This plugin does not support ")); // the offscreen platform
        guard->allow(QStringLiteral("^QBackingStore::flush\\(\\) called for "));
        beside = new ScreenBeside;
        QWindowSystemInterface::handleScreenAdded(beside);
        second = beside->screen();
        QCOMPARE(QGuiApplication::screens().size(), 2);
        setCurrentScreen(nullptr);
    }
    void cleanup()
    {
        unplug();
        setCurrentScreen(nullptr);
        const QStringList unexpected = guard->unexpected();
        guard.reset();
        QCOMPARE(unexpected, QStringList());
    }

    void newWindowsOpenOnTheCurrentScreen()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        setCurrentScreen(second);
        const FramelessWindow window;
        const PopupWindow popup;
        const ScreenCapture capture;
        QCOMPARE(window.screen(), second);
        QCOMPARE(popup.screen(), second);
        QCOMPARE(capture.screen(), second);
        QCOMPARE(capture.geometry().size(), whole.size());
    }

    void windowTellsTheApplicationWhereItGoes()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        FramelessWindow window;
        QSignalSpy changes(&window, &FramelessWindow::windowScreenChanged);
        QCOMPARE(currentScreen(), nullptr); // nothing is told before a change
        window.setWindowScreen(second);
        QCOMPARE(window.windowScreen(), second);
        QCOMPARE(currentScreen(), second);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(window.availableScreenGeometry(), workArea);
        window.setWindowScreen(second);
        QCOMPARE(changes.count(), 1);
        window.setWindowScreen(QGuiApplication::primaryScreen());
        QCOMPARE(currentScreen(), QGuiApplication::primaryScreen());
    }

    void windowIsCentredOnItsOwnScreen()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        FramelessWindow window;
        window.setWindowScreen(second);
        window.setGeometry(0, 0, 200, 100);
        window.centerWindow();
        QCOMPARE(window.geometry().center(), workArea.center());
    }

    void popUpOpensOnTheCurrentScreenAlsoWhenThatChangedLater()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        QQuickWindow window;
        window.setGeometry(1000, 600, 50, 50);
        QQuickItem item(window.contentItem());
        item.setSize({80, 30});
        PopupWindow popup;
        popup.resize(120, 60);
        popup.setAttachItem(&item);
        QCOMPARE(popup.screen(), QGuiApplication::primaryScreen());
        setCurrentScreen(second);
        popup.show();
        QCOMPARE(popup.screen(), second);
        QCOMPARE(popup.position(), QPoint(1000, 630));
        popup.close();
        item.setY(290); // ends 20 below the screen
        popup.show();
        QCOMPARE(popup.position(), QPoint(1000, 830));
        popup.close();
        item.setPosition({-150, -270}); // above and left of the work area
        popup.setEdge(QStringLiteral("right"));
        popup.show();
        QCOMPARE(popup.position(), QPoint(930, 340));
    }

    void popUpOutlivesItsScreen()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        setCurrentScreen(second);
        PopupWindow popup;
        popup.resize(120, 60);
        popup.setTimeout(20);
        QQuickWindow window;
        QQuickItem item(window.contentItem());
        popup.setAttachItem(&item);
        popup.open();
        QTRY_VERIFY_WITH_TIMEOUT(popup.isVisible(), patience);
        QCOMPARE(popup.screen(), second);
        unplug();
        QCOMPARE(popup.screen(), QGuiApplication::primaryScreen());
        popup.fade(); // Qt may have hidden it on the way
        QTRY_VERIFY_WITH_TIMEOUT(!popup.isVisible(), patience);
        // Nobody has told of another screen, so it opens where it stands.
        popup.setPosition(33, 44);
        popup.show();
        QVERIFY(popup.isVisible());
        QCOMPARE(popup.position(), QPoint(33, 44));
        QCOMPARE(popup.screen(), QGuiApplication::primaryScreen());
    }

    void windowWhoseScreenGoesTellsOfTheFirstOne()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        FramelessWindow window;
        window.setWindowScreen(second);
        window.show();
        QCOMPARE(currentScreen(), second);
        unplug();
        QCOMPARE(window.screen(), QGuiApplication::primaryScreen());
        QCOMPARE(currentScreen(), QGuiApplication::primaryScreen());
        const PopupWindow popup;
        QCOMPARE(popup.screen(), QGuiApplication::primaryScreen());
    }

    void captureOutlivesItsScreen()
    {
        if (!windowsCanBeThere())
            QSKIP("no window of this platform can stand on the test's screen");
        setCurrentScreen(second);
        QPointer<ScreenCapture> capture = new ScreenCapture;
        capture->show();
        unplug();
        if (!capture)
            return; // hidden on the way, which ends a capture
        QCOMPARE(capture->screen(), QGuiApplication::primaryScreen());
        QVERIFY(capture->close());
        QCoreApplication::sendPostedEvents(capture.data(), QEvent::DeferredDelete);
        QVERIFY(!capture);
    }

    void captureBesideAnotherScreenHasNoList()
    {
        setCurrentScreen(QGuiApplication::primaryScreen());
        QQuickWindow other;
        other.setGeometry(50, 60, 300, 200);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other, patience));
        ScreenCapture capture;
        QCOMPARE(capture.desktopWindowList(), QVariantList());
        capture.setRegion({1, 2, 3, 4});
        for (const QPoint &point : {QPoint(2, 3), QPoint(100, 100), QPoint(200, 150)}) {
            capture.windowRegion(point.x(), point.y());
            QCOMPARE(capture.region(), QRect(1, 2, 3, 4));
        }
#ifdef Q_OS_WIN
        // A list that is empty is asked for again.
        unplug();
        QVERIFY(!capture.desktopWindowList().isEmpty());
        capture.windowRegion(200, 150);
        QVERIFY(capture.region() != QRect(1, 2, 3, 4));
#endif
    }
};

QTEST_MAIN(TestSecondScreen)
#include "tst_secondscreen.moc"
