// The frameless window on X11, with a window manager, a real pointer and real keys.

#include "x11tools.h"

#include "window/framelesswindow.h"

#include <QQuickItem>
#include <QScreen>

#include <memory>

using namespace x11tools;

namespace {

/// Counts its clicks.
class ButtonItem : public QQuickItem
{
public:
    explicit ButtonItem(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setAcceptedMouseButtons(Qt::AllButtons);
    }
    int presses = 0;
    int releases = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
    void mouseReleaseEvent(QMouseEvent *) override { ++releases; }
};

const QRect place(200, 150, 500, 400);

} // namespace

class TestFramelessWindowX11 : public QObject
{
    Q_OBJECT

    std::unique_ptr<FramelessWindow> window;
    ButtonItem *button = nullptr;
    bool managed = true;

    /// A point of the window on the desktop.
    [[nodiscard]] QPoint at(int x, int y) const { return window->geometry().topLeft() + QPoint(x, y); }

private Q_SLOTS:
    void initTestCase()
    {
        if (!areThere())
            QSKIP("needs an X11 display, xdotool and xprop");
        managed = run(QStringLiteral("xprop"),
                      {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
                      .contains(QLatin1String("window id"));
    }

    void init()
    {
        pointerTo({5, 5});
        window = std::make_unique<FramelessWindow>();
        window->setGeometry(place);
        auto *title = new QQuickItem(window->contentItem());
        title->setSize({500, 60});
        window->setTitleArea(title);
        button = new ButtonItem(window->contentItem());
        button->setPosition({400, 25});
        button->setSize({60, 30});
        window->setExcludeTitleArea({QVariant::fromValue<QQuickItem *>(button)});
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.get(), patience));
        if (managed) {
            window->requestActivate();
            QVERIFY(QTest::qWaitForWindowActive(window.get(), patience));
        }
        QTRY_COMPARE_WITH_TIMEOUT(window->geometry().size(), place.size(), patience);
        QTest::qWait(50);
    }
    void cleanup()
    {
        xdo(QStringLiteral("mouseup 1"));
        window.reset();
    }

    void hasNoDecorationThoughItsFlagsAreThoseOfAFullWindow()
    {
        QCOMPARE(int(window->flags()), 0xC001);
        // Flags 2: only the decorations are meant; these are none.
        QVERIFY2(
            windowProperty(window->winId(), "_MOTIF_WM_HINTS").contains(QLatin1String("= 0x2, 0x0, 0x0")),
            qPrintable(windowProperty(window->winId(), "_MOTIF_WM_HINTS")));
        QTRY_COMPARE_WITH_TIMEOUT(window->frameMargins(), QMargins(), patience);
        QCOMPARE(window->geometry(), place);
    }

    void titleMovesTheWindow()
    {
        const QPoint from = at(150, 40);
        pointerTo(from);
        xdo(QStringLiteral("mousedown 1"));
        dragTo(from, from + QPoint(80, 60));
        xdo(QStringLiteral("mouseup 1"));
        // The manager counts from the point where it took over, a few pixels into the drag.
        QTRY_VERIFY_WITH_TIMEOUT(
            (window->position() - place.topLeft() - QPoint(80, 60)).manhattanLength() <= 24, patience);
        QCOMPARE(window->size(), place.size());
        // And the window still has the pointer afterwards.
        pointerTo(at(430, 40));
        xdo(QStringLiteral("click 1"));
        QTRY_COMPARE_WITH_TIMEOUT(button->releases, 1, patience);
    }

    void pressWithoutAMoveLeavesTheWindow()
    {
        pointerTo(at(150, 40));
        xdo(QStringLiteral("click 1"));
        QTest::qWait(100);
        QCOMPARE(window->geometry(), place);
    }

    void doubleClickOnTheTitleMaximisesAndRestores()
    {
        if (!managed)
            QSKIP("maximising is the window manager's");
        pointerTo(at(150, 40));
        xdo(QStringLiteral("click --repeat 2 --delay 60 1"));
        QTRY_COMPARE_WITH_TIMEOUT(window->windowState(), Qt::WindowMaximized, patience);
        QTRY_COMPARE_WITH_TIMEOUT(window->geometry(), window->screen()->availableGeometry(), patience);
        QTest::qWait(600); // longer than a double click
        pointerTo(at(150, 40));
        xdo(QStringLiteral("click --repeat 2 --delay 60 1"));
        QTRY_COMPARE_WITH_TIMEOUT(window->windowState(), Qt::WindowNoState, patience);
        QTRY_COMPARE_WITH_TIMEOUT(window->geometry(), place, patience);
    }

    void windowOfFixedSizeIsNotMaximised()
    {
        window->setEnableResize(false);
        pointerTo(at(150, 40));
        xdo(QStringLiteral("click --repeat 2 --delay 60 1"));
        QTest::qWait(300);
        QCOMPARE(window->windowState(), Qt::WindowNoState);
    }

    void excludedButtonOnTheTitleIsClicked()
    {
        pointerTo(at(430, 40));
        xdo(QStringLiteral("mousedown 1"));
        QTRY_COMPARE_WITH_TIMEOUT(button->presses, 1, patience);
        dragTo(at(430, 40), at(440, 45), 4);
        xdo(QStringLiteral("mouseup 1"));
        QTRY_COMPARE_WITH_TIMEOUT(button->releases, 1, patience);
        QCOMPARE(window->geometry(), place);
    }

    void edgeResizesAtTheRelease_data()
    {
        QTest::addColumn<QPoint>("grip");  // in the window
        QTest::addColumn<QPoint>("way");   // of the pointer
        QTest::addColumn<QRect>("change"); // left, top, right, bottom as x, y, width, height of a QRect
        QTest::addColumn<Qt::CursorShape>("shape");
        const auto row = [](const char *name, QPoint grip, QPoint way, int left, int top, int right,
                            int bottom, Qt::CursorShape shape) {
            QTest::newRow(name) << grip << way << QRect(left, top, right, bottom) << shape;
        };
        row("left", {20, 200}, {-40, 25}, -40, 0, 0, 0, Qt::SizeHorCursor);
        row("right", {480, 200}, {50, 25}, 0, 0, 50, 0, Qt::SizeHorCursor);
        row("top", {250, 20}, {25, -30}, 0, -30, 0, 0, Qt::SizeVerCursor);
        row("bottom", {250, 380}, {25, 60}, 0, 0, 0, 60, Qt::SizeVerCursor);
        row("top left", {20, 20}, {-40, -30}, -40, -30, 0, 0, Qt::SizeFDiagCursor);
        row("top right", {479, 20}, {40, -30}, 0, -30, 40, 0, Qt::SizeBDiagCursor);
        row("bottom left", {20, 379}, {-40, 30}, -40, 0, 0, 30, Qt::SizeBDiagCursor);
        row("bottom right", {479, 379}, {-60, -50}, 0, 0, -60, -50, Qt::SizeFDiagCursor);
    }
    void edgeResizesAtTheRelease()
    {
        QFETCH(QPoint, grip);
        QFETCH(QPoint, way);
        QFETCH(QRect, change);
        QFETCH(Qt::CursorShape, shape);
        int sizes = 0;
        connect(window.get(), &QWindow::widthChanged, this, [&sizes] { ++sizes; });
        connect(window.get(), &QWindow::heightChanged, this, [&sizes] { ++sizes; });
        const QPoint from = at(grip.x(), grip.y());
        pointerTo(from);
        QTRY_COMPARE_WITH_TIMEOUT(window->cursor().shape(), shape, patience);
        xdo(QStringLiteral("mousedown 1"));
        dragTo(from, from + way);
        QCOMPARE(window->geometry(), place);
        QCOMPARE(sizes, 0);
        xdo(QStringLiteral("mouseup 1"));
        const QRect expected = place.adjusted(change.x(), change.y(), change.width(), change.height());
        QTRY_COMPARE_WITH_TIMEOUT(window->geometry(), expected, patience);
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(sizes, int(expected.width() != place.width()) + int(expected.height() != place.height()));
    }

    void cursorTurnsBackOffTheEdge()
    {
        pointerTo(at(20, 200));
        QTRY_COMPARE_WITH_TIMEOUT(window->cursor().shape(), Qt::SizeHorCursor, patience);
        pointerTo(at(200, 200));
        QTRY_COMPARE_WITH_TIMEOUT(window->cursor().shape(), Qt::ArrowCursor, patience);
    }

    void everyPressIsToldOnce()
    {
        QSignalSpy presses(window.get(), &FramelessWindow::mousePressed);
        int expected = 0;
        for (const QPoint &point : {QPoint(250, 200), QPoint(150, 40), QPoint(430, 40), QPoint(20, 200)}) {
            for (const int mouseButton : {1, 2, 3}) {
                pointerTo(at(point.x(), point.y()));
                xdo(QStringLiteral("click %1").arg(mouseButton));
                ++expected;
                QTRY_COMPARE_WITH_TIMEOUT(presses.count(), expected, patience);
                QTest::qWait(450); // no double clicks
            }
        }
        QCOMPARE(presses.count(), expected);
    }

    void pointerComesAndGoes()
    {
        QSignalSpy enter(window.get(), &FramelessWindow::enter);
        QSignalSpy leave(window.get(), &FramelessWindow::leave);
        pointerTo(at(100, 200));
        QTRY_COMPARE_WITH_TIMEOUT(enter.count(), 1, patience);
        pointerTo({5, 5});
        QTRY_COMPARE_WITH_TIMEOUT(leave.count(), 1, patience);
        QCOMPARE(enter.count(), 1);
    }

    void keysAreToldAndCanBeKeptFromTheScene()
    {
        if (!managed)
            QSKIP("without a window manager nobody gives the window the focus");
        QVector<int> keys;
        connect(window.get(), &FramelessWindow::keyPressed, this,
                [&](int key, int modifiers, const QString &text, QEvent *) {
                    keys.append(key);
                    if (key == Qt::Key_B) {
                        QCOMPARE(modifiers, int(Qt::ShiftModifier));
                        QCOMPARE(text, QStringLiteral("B"));
                    }
                });
        xdo(QStringLiteral("key a"));
        xdo(QStringLiteral("key shift+b"));
        QTRY_COMPARE_WITH_TIMEOUT(keys, QVector<int>({Qt::Key_A, Qt::Key_Shift, Qt::Key_B}), patience);
    }

    void closeButtonOfTheSystemMinimisesOnRequest()
    {
        if (!managed)
            QSKIP("closing is the window manager's");
        window->setMinimizedOnHide(true);
        xdo(QStringLiteral("key alt+F4"));
        QTRY_COMPARE_WITH_TIMEOUT(window->windowState(), Qt::WindowMinimized, patience);
        QVERIFY(window->handle());
        window->showNormal();
        QTRY_COMPARE_WITH_TIMEOUT(window->windowState(), Qt::WindowNoState, patience);
        QTRY_COMPARE_WITH_TIMEOUT(window->frameMargins(), QMargins(), patience);
    }
};

QTEST_MAIN(TestFramelessWindowX11)
#include "tst_framelesswindow_x11.moc"
