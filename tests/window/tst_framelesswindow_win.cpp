// The layer for Windows, by real window messages, the styles of the real window, and the system's own lists.

#include "window/framelesswindow.h"
#include "window/qxtglobalshortcut.h"
#include "window/screencapture.h"

#include <QAbstractEventDispatcher>
#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QQuickItem>
#include <QRubberBand>
#include <QScreen>
#include <QtTest>

#include <private/qquickevents_p_p.h>

#include <windows.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>

namespace {

constexpr int patience = 10'000; // ms

HWND handleOf(const QWindow &window)
{
    return reinterpret_cast<HWND>(window.winId());
}

LPARAM packed(QPoint point)
{
    return MAKELPARAM(WORD(short(point.x())), WORD(short(point.y())));
}

bool isBandVisible()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    return std::any_of(widgets.cbegin(), widgets.cend(), [](const QWidget *widget) {
        return qobject_cast<const QRubberBand *>(widget) && widget->isVisible();
    });
}

} // namespace

class TestFramelessWindowWin : public QObject
{
    Q_OBJECT

    std::unique_ptr<FramelessWindow> window;

    [[nodiscard]] LONG style() const { return GetWindowLongW(handleOf(*window), GWL_STYLE); }
    [[nodiscard]] LRESULT hit(QPoint inWindow) const
    {
        RECT rect = {};
        GetWindowRect(handleOf(*window), &rect);
        return SendMessageW(handleOf(*window), WM_NCHITTEST, 0,
                            packed(QPoint(rect.left, rect.top) + inWindow));
    }

public:
    static void initMain() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }

private Q_SLOTS:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != QLatin1String("windows"))
            QSKIP("needs the platform of Windows");
    }
    void init()
    {
        window = std::make_unique<FramelessWindow>();
        window->setGeometry(100, 80, 500, 400);
        auto *title = new QQuickItem(window->contentItem());
        title->setSize({500, 60});
        window->setTitleArea(title);
        auto *button = new QQuickItem(window->contentItem());
        button->setPosition({400, 25});
        button->setSize({60, 30});
        window->setExcludeTitleArea({QVariant::fromValue(button)});
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get(), patience));
    }
    void cleanup() { window.reset(); }

    void styleIsThatOfAFullWindow()
    {
        QCOMPARE(int(window->flags()), 0xC001);
        const LONG full = WS_CAPTION | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
        QCOMPARE(style() & full, full);
        window->setEnableResize(false);
        QCOMPARE(style() & WS_MAXIMIZEBOX, LONG(0));
        QCOMPARE(style() & (WS_CAPTION | WS_THICKFRAME), LONG(WS_CAPTION | WS_THICKFRAME));
        window->setEnableResize(true);
        QCOMPARE(style() & full, full);
    }

    void styleComesBackAtEveryShow()
    {
        window->hide();
        SetWindowLongW(handleOf(*window), GWL_STYLE, style() & ~(WS_THICKFRAME | WS_MAXIMIZEBOX));
        window->show();
        QCOMPARE(style() & (WS_THICKFRAME | WS_MAXIMIZEBOX), LONG(WS_THICKFRAME | WS_MAXIMIZEBOX));
    }

    void clientAreaIsTheWholeWindow()
    {
        NCCALCSIZE_PARAMS parameters = {};
        parameters.rgrc[0] = {10, 20, 310, 220};
        QCOMPARE(SendMessageW(handleOf(*window), WM_NCCALCSIZE, TRUE, LPARAM(&parameters)), LRESULT(0));
        RECT rect = {10, 20, 310, 220};
        QCOMPARE(SendMessageW(handleOf(*window), WM_NCCALCSIZE, FALSE, LPARAM(&rect)), LRESULT(0));
        for (const RECT &same : {parameters.rgrc[0], rect}) {
            QCOMPARE(int(same.left), 10);
            QCOMPARE(int(same.top), 20);
            QCOMPARE(int(same.right), 310);
            QCOMPARE(int(same.bottom), 220);
        }
    }

    void systemTakesNoFrameFromTheWindow()
    {
        // As after a change of the style: the system asks anew how much of the window is client area.
        SetWindowPos(handleOf(*window), nullptr, 0, 0, 0, 0,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        RECT whole = {};
        GetWindowRect(handleOf(*window), &whole);
        RECT client = {};
        GetClientRect(handleOf(*window), &client);
        QVERIFY(whole.right > whole.left);
        QCOMPARE(int(client.right), int(whole.right - whole.left));
        QCOMPARE(int(client.bottom), int(whole.bottom - whole.top));
    }

    void edgeResizesByTheBandAtTheRelease_data()
    {
        QTest::addColumn<QPoint>("way");
        QTest::addColumn<QRect>("change"); // of left, top, right, bottom, as a QRect's four numbers
        QTest::newRow("left") << QPoint(-30, 10) << QRect(-30, 0, 0, 0);
        QTest::newRow("right") << QPoint(40, 10) << QRect(0, 0, 40, 0);
        QTest::newRow("top") << QPoint(10, -20) << QRect(0, -20, 0, 0);
        QTest::newRow("bottom") << QPoint(10, 50) << QRect(0, 0, 0, 50);
    }
    void edgeResizesByTheBandAtTheRelease()
    {
        QFETCH(QPoint, way);
        QFETCH(QRect, change);
        window->setGeometry(200, 150, 500, 400); // now that there is no frame to add
        QTRY_COMPARE_WITH_TIMEOUT(window->geometry(), QRect(200, 150, 500, 400), patience);
        const QRect before = window->geometry();
        const QPoint grip(change.x()       ? 20
                          : change.width() ? 480
                                           : 250,
                          change.y()        ? 20
                          : change.height() ? 380
                                            : 200);
        const QPoint from = before.topLeft() + grip;
        // The system itself asks what lies there, and sends the messages of its mouse.
        SetCursorPos(from.x() + 40, from.y() + 40);
        QTest::qWait(50);
        SetCursorPos(from.x(), from.y());
        QTRY_VERIFY_WITH_TIMEOUT(window->hitKind() >= HTLEFT && window->hitKind() <= HTBOTTOM, patience);
        mouse_event(MOUSEEVENTF_LEFTDOWN, 0, 0, 0, 0);
        QTRY_VERIFY_WITH_TIMEOUT(isBandVisible(), patience);
        for (int step = 1; step <= 5; ++step) {
            const QPoint to = from + way * step / 5;
            SetCursorPos(to.x(), to.y());
            QTest::qWait(30);
        }
        QCOMPARE(window->geometry(), before);
        mouse_event(MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
        QTRY_VERIFY_WITH_TIMEOUT(!isBandVisible(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(window->geometry(),
                                  before.adjusted(change.x(), change.y(), change.width(), change.height()),
                                  patience);
    }

    void closeOfTheSystemMinimisesOnRequest()
    {
        window->setMinimizedOnHide(true);
        int closing = 0;
        connect(window.get(), &QQuickWindow::closing, this, [&closing] { ++closing; });
        SendMessageW(handleOf(*window), WM_CLOSE, 0, 0);
        QTRY_VERIFY_WITH_TIMEOUT(IsIconic(handleOf(*window)), patience);
        QCOMPARE(window->windowState(), Qt::WindowMinimized);
        QCOMPARE(closing, 0);
    }

    void hitsAreAnswered()
    {
        RECT rect = {};
        GetWindowRect(handleOf(*window), &rect);
        const int width = rect.right - rect.left;
        const int height = rect.bottom - rect.top;
        QCOMPARE(hit({20, 200}), LRESULT(HTCLIENT)); // an edge is ours to resize
        QCOMPARE(window->hitKind(), int(HTLEFT));
        QCOMPARE(hit({width - 20, 200}), LRESULT(HTCLIENT));
        QCOMPARE(window->hitKind(), int(HTRIGHT));
        QCOMPARE(hit({200, 20}), LRESULT(HTCLIENT));
        QCOMPARE(window->hitKind(), int(HTTOP));
        QCOMPARE(hit({200, height - 20}), LRESULT(HTCLIENT));
        QCOMPARE(window->hitKind(), int(HTBOTTOM));
        QCOMPARE(hit({20, 20}), LRESULT(HTCLIENT));
        QCOMPARE(window->hitKind(), int(HTTOPLEFT));
        QCOMPARE(hit({200, 200}), LRESULT(HTCLIENT));
        QCOMPARE(window->hitKind(), int(HTCLIENT));
        const QPoint frame = window->position() - QPoint(rect.left, rect.top);
        QCOMPARE(hit(frame + QPoint(150, 40)), LRESULT(HTCAPTION));
        QCOMPARE(window->hitKind(), int(HTCAPTION));
        QCOMPARE(hit(frame + QPoint(430, 40)), LRESULT(HTCLIENT)); // the button
        window->setEnabledNCArea(false);
        QCOMPARE(hit(frame + QPoint(150, 40)), LRESULT(HTCLIENT));
    }

    void pointsOfTheMessageAreSigned()
    {
        window->setPosition(-300, -200);
        QTRY_COMPARE_WITH_TIMEOUT(window->position(), QPoint(-300, -200), patience);
        RECT rect = {};
        GetWindowRect(handleOf(*window), &rect);
        QVERIFY(rect.left < 0 && rect.top < 0);
        QCOMPARE(hit({20, 100}), LRESULT(HTCLIENT));
        QCOMPARE(window->hitKind(), int(HTLEFT));
    }

    void everyPressMessageIsTold_data()
    {
        QTest::addColumn<uint>("message");
        QTest::addColumn<bool>("isPress");
        QTest::newRow("left") << uint(WM_LBUTTONDOWN) << true;
        QTest::newRow("right") << uint(WM_RBUTTONDOWN) << true;
        QTest::newRow("middle") << uint(WM_MBUTTONDOWN) << true;
        QTest::newRow("title, right") << uint(WM_NCRBUTTONDOWN) << true;
        QTest::newRow("title, middle") << uint(WM_NCMBUTTONDOWN) << true;
        QTest::newRow("left up") << uint(WM_LBUTTONUP) << false;
        QTest::newRow("double click") << uint(WM_LBUTTONDBLCLK) << false;
        QTest::newRow("move") << uint(WM_MOUSEMOVE) << false;
    }
    void everyPressMessageIsTold()
    {
        QFETCH(uint, message);
        QFETCH(bool, isPress);
        QSignalSpy presses(window.get(), &FramelessWindow::mousePressed);
        SendMessageW(handleOf(*window), message, 0, packed({200, 200}));
        QCOMPARE(presses.count(), isPress ? 1 : 0);
        SendMessageW(handleOf(*window), WM_CANCELMODE, 0, 0);
    }

    void pressOnTheTitleIsToldBeforeTheSystemMoves()
    {
        QSignalSpy presses(window.get(), &FramelessWindow::mousePressed);
        // The code of no part of the frame: the system's own moving loop would wait for a mouse.
        SendMessageW(handleOf(*window), WM_NCLBUTTONDOWN, HTNOWHERE, packed({200, 200}));
        QCOMPARE(presses.count(), 1);
    }

    void desktopWindowsAreListedWithChildrenFirst()
    {
        qApp->setProperty("currentScreen", QVariant::fromValue(QGuiApplication::primaryScreen()));
        HWND parent = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"parent", WS_POPUP | WS_VISIBLE, 300, 250,
                                      200, 150, nullptr, nullptr, nullptr, nullptr);
        HWND child = CreateWindowExW(0, L"STATIC", L"child", WS_CHILD | WS_VISIBLE, 20, 30, 80, 60, parent,
                                     nullptr, nullptr, nullptr);
        HWND hidden = CreateWindowExW(0, L"STATIC", L"hidden", WS_POPUP, 11, 12, 13, 14, nullptr, nullptr,
                                      nullptr, nullptr);
        QVERIFY(parent && child && hidden);
        QPointer<ScreenCapture> capture = new ScreenCapture;
        const QVariantList list = capture->desktopWindowList();
        const int parentAt = list.indexOf(QRect(300, 250, 200, 150));
        const int childAt = list.indexOf(QRect(320, 280, 80, 60));
        QVERIFY(childAt >= 0 && childAt < parentAt);
        QVERIFY(!list.contains(QRect(11, 12, 13, 14)));
        RECT own = {};
        GetWindowRect(handleOf(*window), &own);
        const QRect ownRect(own.left, own.top, own.right - own.left, own.bottom - own.top);
        QVERIFY(list.indexOf(ownRect) > parentAt); // topmost windows come before others

        QSignalSpy spy(capture.data(), &ScreenCapture::regionChanged);
        capture->windowRegion(330, 300);
        QCOMPARE(capture->region(), QRect(320, 280, 80, 60));
        capture->windowRegion(320, 300); // the child's left edge is not inside it
        QCOMPARE(capture->region(), QRect(300, 250, 200, 150));
        capture->windowRegion(310, 260);
        QCOMPARE(spy.count(), 2);
        capture->windowRegion(-5000, -5000);
        QCOMPARE(capture->region(), QRect(300, 250, 200, 150));
        DestroyWindow(hidden);
        DestroyWindow(parent);
        QCOMPARE(capture->desktopWindowList(), list); // taken once
        delete capture;
    }

    void windowsThatVanishDuringTheEnumerationDoNoHarm()
    {
        qApp->setProperty("currentScreen", QVariant::fromValue(QGuiApplication::primaryScreen()));
        HWND steady = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"steady", WS_POPUP | WS_VISIBLE, 310, 260,
                                      210, 160, nullptr, nullptr, nullptr, nullptr);
        QVERIFY(steady);
        std::atomic_bool done = false;
        std::atomic_int made = 0;
        std::thread others([&] {
            while (!done) {
                HWND parent = CreateWindowExW(0, L"STATIC", L"brief", WS_POPUP | WS_VISIBLE, 10, 10, 50, 50,
                                              nullptr, nullptr, nullptr, nullptr);
                CreateWindowExW(0, L"STATIC", L"child", WS_CHILD | WS_VISIBLE, 5, 5, 20, 20, parent, nullptr,
                                nullptr, nullptr);
                DestroyWindow(parent);
                ++made;
            }
        });
        int found = 0;
        int captures = 0;
        for (; captures < 15 || made < 20; ++captures) {
            ScreenCapture capture;
            // What lies behind a window that vanished may be missing, what lies before it is not.
            found += capture.desktopWindowList().contains(QRect(310, 260, 210, 160));
        }
        done = true;
        others.join();
        DestroyWindow(steady);
        QCOMPARE(found, captures);
    }

    void messageOfAHotKeyGoesOnToOtherFilters()
    {
        struct Filter : QAbstractNativeEventFilter
        {
            int seen = 0;
            bool nativeEventFilter(const QByteArray &, void *message, long *) override
            {
                seen += static_cast<const MSG *>(message)->message == WM_HOTKEY;
                return false;
            }
        };
        Filter behind; // filters that come later are asked first
        qApp->eventDispatcher()->installNativeEventFilter(&behind);
        {
            QxtGlobalShortcut hotKey;
            QVERIFY(hotKey.setShortcut(QStringLiteral("Ctrl+Alt+K")));
            QSignalSpy spy(&hotKey, &QxtGlobalShortcut::activated);
            PostThreadMessageW(GetCurrentThreadId(), WM_HOTKEY, 0, MAKELPARAM(MOD_CONTROL | MOD_ALT, 'K'));
            QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, patience);
        }
        QCOMPARE(behind.seen, 1);
        qApp->eventDispatcher()->removeNativeEventFilter(&behind);
    }

    void hotKeyIsTheSystems()
    {
        const UINT vk = 'K';
        const UINT modifiers = MOD_CONTROL | MOD_ALT;
        auto first = std::make_unique<QxtGlobalShortcut>();
        QSignalSpy spy(first.get(), &QxtGlobalShortcut::activated);
        QVERIFY(first->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        QVERIFY(!RegisterHotKey(nullptr, 0x4fff, modifiers, vk)); // taken

        QxtGlobalShortcut second;
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to register: \"Ctrl+Alt+K\"");
        QVERIFY(!second.setShortcut(QStringLiteral("Ctrl+Alt+K")));
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to unregister: \"Ctrl+Alt+K\"");
        QVERIFY(second.setShortcut(QStringLiteral("Ctrl+Alt+J")));

        QSignalSpy secondSpy(&second, &QxtGlobalShortcut::activated);
        PostThreadMessageW(GetCurrentThreadId(), WM_HOTKEY, 0, MAKELPARAM(modifiers, vk));
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, patience);
        PostThreadMessageW(GetCurrentThreadId(), WM_HOTKEY, 0, MAKELPARAM(modifiers, 'J'));
        QTRY_COMPARE_WITH_TIMEOUT(secondSpy.count(), 1, patience);
        PostThreadMessageW(GetCurrentThreadId(), WM_HOTKEY, 0, MAKELPARAM(MOD_ALT, vk));
        first->setEnabled(false);
        PostThreadMessageW(GetCurrentThreadId(), WM_HOTKEY, 0, MAKELPARAM(modifiers, vk));
        PostThreadMessageW(GetCurrentThreadId(), WM_HOTKEY, 0, MAKELPARAM(modifiers, 'J'));
        QTRY_COMPARE_WITH_TIMEOUT(secondSpy.count(), 2, patience);
        QCOMPARE(spy.count(), 1);

        first.reset();
        QVERIFY(RegisterHotKey(nullptr, 0x4fff, modifiers, vk)); // free again
        UnregisterHotKey(nullptr, 0x4fff);
    }
};

QTEST_MAIN(TestFramelessWindowWin)
#include "tst_framelesswindow_win.moc"
