// The request for attention, as the window manager sees it.

#include "util/imutil.h"

#include <QProcess>
#include <QStandardPaths>
#include <QWindow>
#include <QtTest>

namespace {

[[nodiscard]] bool demandsAttention(const QWindow &window)
{
    QProcess xprop;
    xprop.start(QStringLiteral("xprop"),
                {QStringLiteral("-id"), QString::number(window.winId()), QStringLiteral("_NET_WM_STATE")});
    xprop.waitForFinished();
    return xprop.readAllStandardOutput().contains("_NET_WM_STATE_DEMANDS_ATTENTION");
}

} // namespace

class TestTaskbar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTopWindowAsksForAttentionUntilItIsLookedAt()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb") ||
            QStandardPaths::findExecutable(QStringLiteral("xprop")).isEmpty())
            QSKIP("needs an X11 display and xprop");
        QWindow top;
        auto *middle = new QWindow(&top);
        auto *inner = new QWindow(middle);
        for (QWindow *window : {&top, middle, inner})
            window->setGeometry(10, 10, 200, 100);
        top.show();
        middle->show();
        inner->show();
        QVERIFY(QTest::qWaitForWindowExposed(&top));
        QWindow other;
        other.setGeometry(300, 10, 200, 100);
        other.show();
        other.requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(&other));
        QVERIFY(!demandsAttention(top));

        ImUtil util;
        util.taskbarFlash(nullptr);
        QVERIFY(!demandsAttention(top));
        util.taskbarFlash(inner);
        QTRY_VERIFY_WITH_TIMEOUT(demandsAttention(top), 10000);
        QVERIFY(!demandsAttention(other));
    }
};

QTEST_MAIN(TestTaskbar)
#include "tst_taskbar.moc"
