// The tray icon in a real tray, by the X server: what the screen shows of it, and a real pointer on it. The
// tray is the panel that the demo's tour brings.

#include "x11tools.h"

#include "window/systemtrayicon.h"

#include "traypanel.h"

#include <QIcon>
#include <QScreen>

#include <memory>

using namespace x11tools;

class TestTrayX11 : public QObject
{
    Q_OBJECT

    std::unique_ptr<TrayPanel> panel;

    /// The tray's first icon as the screen shows it.
    [[nodiscard]] QImage shown() const
    {
        const QRect area = panel->iconArea(0);
        return QGuiApplication::primaryScreen()
            ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
    [[nodiscard]] int count(const QColor &color) const
    {
        const QImage image = shown();
        int pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                pixels += image.pixelColor(x, y) == color;
        }
        return pixels;
    }
    [[nodiscard]] bool isEmpty() const
    {
        const QImage image = shown();
        QImage empty = image.copy();
        empty.fill(image.pixelColor(0, 0));
        return !image.isNull() && image == empty;
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (!areThere())
            QSKIP("needs an X11 display, xdotool and xprop");
        panel = std::make_unique<TrayPanel>();
        if (!panel->isTheTray())
            QSKIP("this desktop has a tray of its own");
    }
    void cleanupTestCase() { panel.reset(); }

    void badgeFlashesAndThePointerIsTold()
    {
        SystemTrayIcon icon;
        icon.setMessageCount(7);
        QCOMPARE(panel->iconCount(), 0); // hidden until a script shows it
        icon.setVisible(true);
        QTRY_COMPARE_WITH_TIMEOUT(panel->iconCount(), 1, patience);
        // Most of a circle of 18 pixels is red, what the number leaves of it.
        const QColor red(Qt::red);
        QTRY_VERIFY_WITH_TIMEOUT(count(red) > 120, patience);
        const int withBadge = count(red);
        icon.setMessageCount(0);
        QTRY_COMPARE_WITH_TIMEOUT(count(red), 0, patience);
        QVERIFY(!isEmpty());
        icon.setMessageCount(7);
        QTRY_COMPARE_WITH_TIMEOUT(count(red), withBadge, patience);

        icon.flash();
        QTRY_VERIFY_WITH_TIMEOUT(isEmpty(), patience);
        QVERIFY(icon.flashing());
        QTRY_COMPARE_WITH_TIMEOUT(count(red), withBadge, patience);
        QVERIFY(icon.flashing());
        QTRY_VERIFY_WITH_TIMEOUT(!icon.flashing(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(count(red), withBadge, patience);

        QSignalSpy trigger(&icon, &SystemTrayIcon::trigger);
        QSignalSpy context(&icon, &SystemTrayIcon::context);
        QSignalSpy middle(&icon, &SystemTrayIcon::middleClick);
        QSignalSpy twice(&icon, &SystemTrayIcon::doubleClick);
        pointerTo(panel->iconArea(0).center());
        xdo(QStringLiteral("click 1"));
        QTRY_COMPARE_WITH_TIMEOUT(trigger.count(), 1, patience);
        QTest::qWait(600); // longer than a double click
        xdo(QStringLiteral("click 3"));
        QTRY_COMPARE_WITH_TIMEOUT(context.count(), 1, patience);
        xdo(QStringLiteral("click 2"));
        QTRY_COMPARE_WITH_TIMEOUT(middle.count(), 1, patience);
        QTest::qWait(600);
        xdo(QStringLiteral("click --repeat 2 --delay 60 1"));
        QTRY_COMPARE_WITH_TIMEOUT(twice.count(), 1, patience);
    }
};

QTEST_MAIN(TestTrayX11)
#include "tst_tray_x11.moc"
