// The tray icon: badge, states, the flashing sequence. What the tray itself shows is asked of Qt's object
// behind it; on platforms without a tray that object keeps the icon all the same.

#include "window/systemtrayicon.h"
#include "window/traybadge.h"

#include <QFile>
#include <QPainter>
#include <QPainterPath>
#include <QSystemTrayIcon>
#include <QtTest>

#include <private/qobject_p.h>

#include <cmath>
#include <limits>

namespace {

/// The badge by its description: no outline, hard edge, white text on top.
QImage badgeOn(const QPixmap &base, const QString &text)
{
    QPixmap picture = base;
    QPainter painter(&picture);
    QPainterPath path;
    path.addEllipse(QRect(14, 14, 18, 18));
    painter.setPen(Qt::transparent);
    painter.setBrush(QBrush(Qt::red, Qt::SolidPattern));
    painter.drawPath(path);
    QFont font(QStringLiteral("Microsoft YaHei"));
    font.setPointSize(12);
    font.setWeight(75);
    font.setItalic(false);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(14, 14, 18, 18), 132, text);
    painter.end();
    return picture.toImage();
}

QPixmap blue()
{
    QPixmap pixmap(32, 32);
    pixmap.fill(QColor(20, 40, 200));
    return pixmap;
}

QImage picture(const QIcon &icon)
{
    return icon.pixmap(32).toImage();
}

QImage disabled(const QIcon &icon)
{
    return picture(QIcon(icon.pixmap(32, QIcon::Disabled, QIcon::Off)));
}

} // namespace

class TestSystemTrayIcon : public QObject
{
    Q_OBJECT

    /// Qt's object behind ours: the only one that ours listens to.
    static QSystemTrayIcon *trayOf(SystemTrayIcon &icon)
    {
        for (QObject *sender : QObjectPrivate::get(&icon)->senderList()) {
            if (auto *tray = qobject_cast<QSystemTrayIcon *>(sender))
                return tray;
        }
        return nullptr;
    }

private Q_SLOTS:
    void initTestCase()
    {
        QFile file(QStringLiteral(":/ui/image/icon.ico"));
        QVERIFY2(file.exists(), "the test brings the application's picture");
        base = QIcon(file.fileName());
        QCOMPARE(base.pixmap(32).size(), QSize(32, 32));
    }

    void badgeIsAHardEdgedCircleWithTheNumber_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("text");
        QTest::newRow("1") << 1 << QStringLiteral("1");
        QTest::newRow("42") << 42 << QStringLiteral("42");
        QTest::newRow("99") << 99 << QStringLiteral("99");
        QTest::newRow("100") << 100 << QStringLiteral("*");
        QTest::newRow("many") << std::numeric_limits<int>::max() << QStringLiteral("*");
    }
    void badgeIsAHardEdgedCircleWithTheNumber()
    {
        QFETCH(int, count);
        QFETCH(QString, text);
        QCOMPARE(traybadge::text(count), text);
        const QPixmap painted = traybadge::paintedOn(blue(), count);
        QCOMPARE(painted.toImage(), badgeOn(blue(), text));
    }

    void badgeCoversItsCircleOnly()
    {
        const QImage image = traybadge::paintedOn(blue(), 1).toImage();
        int red = 0;
        for (int y = 0; y < 32; ++y) {
            for (int x = 0; x < 32; ++x) {
                const QColor color = image.pixelColor(x, y);
                const double distance = std::hypot(x + 0.5 - 23, y + 0.5 - 23);
                if (distance > 9.8)
                    QCOMPARE(color, QColor(20, 40, 200));
                else if (distance < 8.2)
                    QVERIFY2(color.red() == 255, qPrintable(color.name()));
                red += color == QColor(Qt::red);
            }
        }
        QVERIFY2(red > 150, qPrintable(QString::number(red)));
        QVERIFY(traybadge::paintedOn(QPixmap(), 5).isNull());
    }

    void countPaintsTheBadgeOnTheBaseIcon()
    {
        SystemTrayIcon icon;
        QSystemTrayIcon *tray = trayOf(icon);
        QCOMPARE(picture(tray->icon()), picture(base));
        icon.setMessageCount(7);
        QCOMPARE(picture(tray->icon()), badgeOn(base.pixmap(32), QStringLiteral("7")));
        icon.setMessageCount(100);
        QCOMPARE(picture(tray->icon()), badgeOn(base.pixmap(32), QStringLiteral("*")));
        icon.setMessageCount(0);
        QCOMPARE(picture(tray->icon()), picture(base));
        icon.setMessageCount(-3);
        QCOMPARE(picture(tray->icon()), picture(base));
        QCOMPARE(icon.messageCount(), -3);
    }

    void everyCountIsTold()
    {
        SystemTrayIcon icon;
        QSignalSpy spy(&icon, &SystemTrayIcon::messageCountChanged);
        icon.setMessageCount(3);
        icon.setMessageCount(3);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy.at(1).at(0).toInt(), 3);
    }

    void offlineLooksDisabled()
    {
        SystemTrayIcon icon;
        QSystemTrayIcon *tray = trayOf(icon);
        icon.setState(SystemTrayIcon::Offline);
        QCOMPARE(picture(tray->icon()), disabled(base));
        QVERIFY(disabled(base) != picture(base));
        icon.setMessageCount(5);
        QCOMPARE(picture(tray->icon()), badgeOn(base.pixmap(32, QIcon::Disabled), QStringLiteral("5")));
        icon.setMessageCount(0);
        QCOMPARE(picture(tray->icon()), disabled(base));
        // Zero while offline made the disabled look the current icon: going online keeps it.
        icon.setState(SystemTrayIcon::Online);
        QCOMPARE(picture(tray->icon()), disabled(base));
        icon.setMessageCount(0);
        QCOMPARE(picture(tray->icon()), picture(base));
    }

    void goingOfflineGreysTheBadgeAndOnlineBringsItBack()
    {
        SystemTrayIcon icon;
        QSystemTrayIcon *tray = trayOf(icon);
        icon.setMessageCount(5);
        const QIcon badged = tray->icon();
        icon.setState(SystemTrayIcon::Offline);
        QCOMPARE(picture(tray->icon()), disabled(badged));
        icon.setState(SystemTrayIcon::Online);
        QCOMPARE(picture(tray->icon()), picture(badged));
    }

    void sourceHoldsUntilTheNextBadge()
    {
        SystemTrayIcon icon;
        QSystemTrayIcon *tray = trayOf(icon);
        QSignalSpy spy(&icon, &SystemTrayIcon::iconSoureChanged);
        icon.setIconSource(QString()); // the name of an icon from a file is empty
        QCOMPARE(spy.count(), 0);
        icon.setIconSource(QStringLiteral("/missing.png"));
        QCOMPARE(spy.count(), 1);
        QVERIFY(tray->icon().pixmap(32).isNull());
        QCOMPARE(icon.iconSoure(), QString());
        icon.setIconSource(QStringLiteral("/missing.png")); // never equal to that name
        QCOMPARE(spy.count(), 2);
        icon.setMessageCount(2);
        QCOMPARE(picture(tray->icon()), badgeOn(base.pixmap(32), QStringLiteral("2")));
        icon.setIconSource(QStringLiteral("/missing.png"));
        icon.setState(SystemTrayIcon::Offline);
        icon.setState(SystemTrayIcon::Online);
        QCOMPARE(picture(tray->icon()), badgeOn(base.pixmap(32), QStringLiteral("2")));
    }

    void flashingEndsWithTheIconAfterElevenTicks()
    {
        SystemTrayIcon icon;
        QSystemTrayIcon *tray = trayOf(icon);
        QSignalSpy spy(&icon, &SystemTrayIcon::flashingChanged);
        icon.setMessageCount(4);
        icon.setState(SystemTrayIcon::Offline); // a tick ignores the state
        const QImage badged = badgeOn(base.pixmap(32), QStringLiteral("4"));
        QElapsedTimer clock;
        clock.start();
        icon.flash();
        QVERIFY(icon.flashing());
        QCOMPARE(spy.count(), 1);
        QVector<bool> shown;
        // Ticks are 500 ms apart; the changes of the icon are seen by looking often.
        QTRY_VERIFY_WITH_TIMEOUT(!tray->icon().isNull() && picture(tray->icon()) == badged, 10'000);
        shown.append(true);
        while (icon.flashing() && clock.elapsed() < 60'000) {
            QTest::qWait(10);
            const bool visible = !tray->icon().isNull();
            if (visible)
                QCOMPARE(picture(tray->icon()), badged);
            if (visible != shown.constLast())
                shown.append(visible);
        }
        QVERIFY2(clock.elapsed() > 4'900, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(shown.size(), 11);
        QCOMPARE(picture(tray->icon()), badged);
        QCOMPARE(spy.count(), 2);

        // An object flashes through one sequence: a later one is claimed and never comes.
        icon.flash();
        QVERIFY(icon.flashing());
        QCOMPARE(spy.count(), 3);
        QTest::qWait(1300);
        QVERIFY(icon.flashing());
        QCOMPARE(picture(tray->icon()), badged);
        icon.setFlashing(false);
        QVERIFY(!icon.flashing());
    }

    void flashDuringASequenceBeginsItAnew()
    {
        SystemTrayIcon icon;
        QSignalSpy spy(&icon, &SystemTrayIcon::flashingChanged);
        QElapsedTimer clock;
        clock.start();
        icon.setFlashing(true);
        QTest::qWait(2200); // four ticks
        icon.flash();
        QCOMPARE(spy.count(), 1);
        icon.setFlashing(false); // the sequence goes on
        QCOMPARE(spy.count(), 2);
        icon.setFlashing(true);
        QTRY_VERIFY_WITH_TIMEOUT(!icon.flashing(), 60'000);
        QVERIFY2(clock.elapsed() > 6'900, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(spy.count(), 4);
    }

    void foreignTimersAreNotAccepted()
    {
        SystemTrayIcon icon;
        QTimerEvent event(12345);
        QCoreApplication::sendEvent(&icon, &event);
        QVERIFY(!event.isAccepted());
    }

    void visibilityIsToldOnce()
    {
        SystemTrayIcon icon;
        QSignalSpy spy(&icon, &SystemTrayIcon::visibleChanged);
        icon.setVisible(false);
        QCOMPARE(spy.count(), 0);
        icon.setVisible(true); // without a tray, too
        icon.setVisible(true);
        QCOMPARE(spy.count(), 1);
        QVERIFY(icon.visible());
        icon.showMessage(QStringLiteral("title"), QStringLiteral("text"), QStringLiteral("/missing.png"), 10);
        icon.showMessage(QString(), QString(), QString());
    }

    void toolTipIsTheTrays()
    {
        SystemTrayIcon icon;
        QSignalSpy spy(&icon, &SystemTrayIcon::toolTipChanged);
        icon.setToolTip(QStringLiteral("tip"));
        icon.setToolTip(QStringLiteral("tip"));
        QCOMPARE(trayOf(icon)->toolTip(), QStringLiteral("tip"));
        QCOMPARE(icon.toolTip(), QStringLiteral("tip"));
        QCOMPARE(spy.count(), 1);
    }

    void reasonsBecomeSignals_data()
    {
        QTest::addColumn<int>("reason");
        QTest::addColumn<int>("signal"); // index into the spies, -1 for none
        QTest::newRow("unknown") << int(QSystemTrayIcon::Unknown) << -1;
        QTest::newRow("context") << int(QSystemTrayIcon::Context) << 0;
        QTest::newRow("double click") << int(QSystemTrayIcon::DoubleClick) << 1;
        QTest::newRow("trigger") << int(QSystemTrayIcon::Trigger) << 2;
        QTest::newRow("middle click") << int(QSystemTrayIcon::MiddleClick) << 3;
    }
    void reasonsBecomeSignals()
    {
        QFETCH(int, reason);
        QFETCH(int, signal);
        SystemTrayIcon icon;
        QSignalSpy context(&icon, &SystemTrayIcon::context);
        QSignalSpy doubleClick(&icon, &SystemTrayIcon::doubleClick);
        QSignalSpy trigger(&icon, &SystemTrayIcon::trigger);
        QSignalSpy middleClick(&icon, &SystemTrayIcon::middleClick);
        QSignalSpy messageClick(&icon, &SystemTrayIcon::messageClick);
        Q_EMIT trayOf(icon)->activated(QSystemTrayIcon::ActivationReason(reason));
        const QSignalSpy *spies[] = {&context, &doubleClick, &trigger, &middleClick};
        for (int i = 0; i < 4; ++i)
            QCOMPARE(spies[i]->count(), i == signal ? 1 : 0);
        QCOMPARE(messageClick.count(), 0);
        Q_EMIT trayOf(icon)->messageClicked();
        QCOMPARE(messageClick.count(), 1);
    }

private:
    QIcon base;
};

QTEST_MAIN(TestSystemTrayIcon)
#include "tst_systemtrayicon.moc"
