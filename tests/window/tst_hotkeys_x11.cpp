// Hot keys on X11 with real keys. The program also plays the other one: started with an argument, it takes
// that hot key, says so, and tells every activation on its standard output.

#include "x11tools.h"

#include "window/qxtglobalshortcut.h"

#include <QApplication>
#include <QKeySequence>
#include <QWindow>

#include <cstdio>
#include <memory>

using namespace x11tools;

namespace {

/// Another program on the same display: it holds a hot key, or, without one, a window with the focus.
class OtherProgram
{
public:
    explicit OtherProgram(const QString &hotKey)
    {
        process.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--other"), hotKey});
        process.waitForStarted(patience);
        answer = line();
    }
    ~OtherProgram()
    {
        process.kill();
        process.waitForFinished(patience);
    }

    QString line()
    {
        QElapsedTimer clock;
        clock.start();
        while (!process.canReadLine() && clock.elapsed() < patience)
            QTest::qWait(5);
        return QString::fromLatin1(process.readLine()).trimmed();
    }

    QString answer; ///< "ready" or "refused"

private:
    QProcess process;
};

int otherProgram(const QString &hotKey)
{
    const auto say = [](const char *text) {
        std::puts(text);
        std::fflush(stdout);
    };
    QxtGlobalShortcut shortcut;
    QWindow window;
    if (hotKey.isEmpty()) {
        window.setGeometry(900, 100, 100, 100);
        window.show();
        window.requestActivate();
        say(QTest::qWaitForWindowActive(&window, patience) ? "ready" : "refused");
    } else {
        say(shortcut.setShortcut(hotKey) ? "ready" : "refused");
    }
    QObject::connect(&shortcut, &QxtGlobalShortcut::activated, [&say] { say("activated"); });
    return QCoreApplication::exec();
}

} // namespace

class TestHotKeysX11 : public QObject
{
    Q_OBJECT

    std::unique_ptr<QxtGlobalShortcut> hotKey;
    std::unique_ptr<QSignalSpy> activations;

private Q_SLOTS:
    void initTestCase()
    {
        if (!areThere())
            QSKIP("needs an X11 display, xdotool and xprop");
    }
    void init()
    {
        hotKey = std::make_unique<QxtGlobalShortcut>();
        activations = std::make_unique<QSignalSpy>(hotKey.get(), &QxtGlobalShortcut::activated);
    }
    void cleanup()
    {
        activations.reset();
        hotKey.reset();
    }

    void keyActivatesWhateverTheLocksAre_data()
    {
        QTest::addColumn<QStringList>("locks");
        const QString caps = QStringLiteral("Caps_Lock");
        const QString num = QStringLiteral("Num_Lock");
        QTest::newRow("none") << QStringList();
        QTest::newRow("caps") << QStringList{caps};
        QTest::newRow("num") << QStringList{num};
        QTest::newRow("caps and num") << QStringList{caps, num};
    }
    void keyActivatesWhateverTheLocksAre()
    {
        QFETCH(QStringList, locks);
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        for (const QString &lock : locks)
            xdo(QStringLiteral("key ") + lock);
        xdo(QStringLiteral("key ctrl+alt+k"));
        for (const QString &lock : locks)
            xdo(QStringLiteral("key ") + lock);
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 1, patience);
    }

    void otherModifiersDoNotActivate()
    {
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        for (const char *keys :
             {"ctrl+k", "alt+k", "k", "ctrl+alt+shift+k", "ctrl+alt+super+k", "ctrl+alt+j"})
            xdo(QStringLiteral("key ") + QLatin1String(keys));
        xdo(QStringLiteral("key ctrl+alt+k"));
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 1, patience);
        QTest::qWait(100);
        QCOMPARE(activations->count(), 1);
    }

    void keysOfTheTableWork_data()
    {
        QTest::addColumn<QString>("hotKeyText");
        QTest::addColumn<QString>("pressed");
        QTest::newRow("function key") << QStringLiteral("Shift+F9") << QStringLiteral("shift+F9");
        QTest::newRow("digit") << QStringLiteral("Ctrl+Alt+7") << QStringLiteral("ctrl+alt+7");
        QTest::newRow("pause") << QStringLiteral("Pause") << QStringLiteral("Pause"); // Print is openbox's
        QTest::newRow("windows key") << QStringLiteral("Meta+J") << QStringLiteral("super+j");
        QTest::newRow("space") << QStringLiteral("Ctrl+Alt+Space") << QStringLiteral("ctrl+alt+space");
        QTest::newRow("all modifiers")
            << QStringLiteral("Ctrl+Alt+Shift+Meta+L") << QStringLiteral("ctrl+alt+shift+super+l");
    }
    void keysOfTheTableWork()
    {
        QFETCH(QString, hotKeyText);
        QFETCH(QString, pressed);
        QVERIFY(hotKey->setShortcut(hotKeyText));
        xdo(QStringLiteral("key ") + pressed);
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 1, patience);
    }

    void everyPressActivatesAlsoWhenAnotherProgramHasTheFocus()
    {
        const OtherProgram other((QString()));
        if (other.answer != QLatin1String("ready"))
            QSKIP("without a window manager nobody gives a window the focus");
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        for (int press = 1; press <= 4; ++press) {
            xdo(QStringLiteral("key ctrl+alt+k"));
            QTRY_COMPARE_WITH_TIMEOUT(activations->count(), press, patience);
        }
    }

    void heldKeyActivatesOnce_data()
    {
        QTest::addColumn<bool>("otherHasFocus");
        QTest::newRow("no window") << false;
        QTest::newRow("another program's window") << true;
    }
    void heldKeyActivatesOnce()
    {
        QFETCH(bool, otherHasFocus);
        std::unique_ptr<OtherProgram> other;
        if (otherHasFocus)
            other = std::make_unique<OtherProgram>(QString());
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        xdo(QStringLiteral("keydown ctrl keydown alt keydown k"));
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 1, patience);
        QTest::qWait(1500); // longer than the server waits before it repeats a key
        xdo(QStringLiteral("keyup k"));
        QCOMPARE(activations->count(), 1);
        xdo(QStringLiteral("key k"));
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 2, patience);
        xdo(QStringLiteral("keyup alt keyup ctrl"));
    }

    void disabledHotKeyIsSwallowed()
    {
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        hotKey->setEnabled(false);
        xdo(QStringLiteral("key ctrl+alt+k"));
        QTest::qWait(200);
        QCOMPARE(activations->count(), 0);
        const OtherProgram other(QStringLiteral("Ctrl+Alt+K"));
        QCOMPARE(other.answer, QStringLiteral("refused")); // still ours
        hotKey->setEnabled(true);
        xdo(QStringLiteral("key ctrl+alt+k"));
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 1, patience);
    }

    void hotKeyOfAnotherProgramIsRefused()
    {
        OtherProgram other(QStringLiteral("Ctrl+Alt+K"));
        QCOMPARE(other.answer, QStringLiteral("ready"));
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to register: \"Ctrl+Alt+K\"");
        QVERIFY(!hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        xdo(QStringLiteral("key ctrl+alt+k"));
        QCOMPARE(other.line(), QStringLiteral("activated"));
        QCOMPARE(activations->count(), 0);
        // A refused key stays stored, and giving it up warns.
        QCOMPARE(hotKey->shortcutString(), QStringLiteral("Ctrl+Alt+K"));
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to unregister: \"Ctrl+Alt+K\"");
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+J")));
        xdo(QStringLiteral("key ctrl+alt+k")); // a half refused key must not be left half grabbed
        QCOMPARE(other.line(), QStringLiteral("activated"));
    }

    void firstOwnerInTheProgramKeepsAHotKey()
    {
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        {
            QxtGlobalShortcut second;
            QSignalSpy spy(&second, &QxtGlobalShortcut::activated);
            QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to register: \"Ctrl+Alt+K\"");
            QVERIFY(!second.setShortcut(QStringLiteral("Ctrl+Alt+K")));
            xdo(QStringLiteral("key ctrl+alt+k"));
            QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 1, patience);
            QCOMPARE(spy.count(), 0);
            QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to unregister: \"Ctrl+Alt+K\"");
        }
        xdo(QStringLiteral("key ctrl+alt+k"));
        QTRY_COMPARE_WITH_TIMEOUT(activations->count(), 2, patience);
    }

    void firstObjectsEndLeavesTheOthersAlive()
    {
        auto second = std::make_unique<QxtGlobalShortcut>();
        QSignalSpy spy(second.get(), &QxtGlobalShortcut::activated);
        QVERIFY(second->setShortcut(QStringLiteral("Ctrl+Alt+J")));
        activations.reset();
        hotKey.reset();
        xdo(QStringLiteral("key ctrl+alt+j"));
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 1, patience);
    }

    void handlerMayDeleteItsHotKey()
    {
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        bool done = false;
        connect(hotKey.get(), &QxtGlobalShortcut::activated, this, [this, &done] {
            activations.reset();
            hotKey.reset();
            done = true;
        });
        xdo(QStringLiteral("key ctrl+alt+k"));
        QTRY_VERIFY_WITH_TIMEOUT(done, patience);
    }

    void givenUpHotKeysAreFreeForOthers_data()
    {
        QTest::addColumn<bool>("destroyed");
        QTest::newRow("another hot key") << false;
        QTest::newRow("destroyed") << true;
    }
    void givenUpHotKeysAreFreeForOthers()
    {
        QFETCH(bool, destroyed);
        QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+K")));
        if (destroyed) {
            activations.reset();
            hotKey.reset();
        } else {
            QVERIFY(hotKey->setShortcut(QStringLiteral("Ctrl+Alt+J")));
        }
        const OtherProgram other(QStringLiteral("Ctrl+Alt+K"));
        QCOMPARE(other.answer, QStringLiteral("ready"));
    }
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.value(1) == QLatin1String("--other"))
        return otherProgram(arguments.value(2));
    TestHotKeysX11 test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hotkeys_x11.moc"
