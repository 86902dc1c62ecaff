// The layer for Windows, by real window messages, the styles of the real window, and the system's own lists.

#include "window/framelesswindow.h"
#include "window/qxtglobalshortcut.h"
#include "window/screencapture.h"

#include <QPointer>
#include <QQuickItem>
#include <QScreen>
#include <QtTest>

#include <windows.h>

#include <memory>

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
