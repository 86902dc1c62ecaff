// The hot key's texts and refusals. Where a platform has no hot keys, registering is refused politely.

#include "window/qxtglobalshortcut.h"

#include <QtTest>

class TestGlobalShortcut : public QObject
{
    Q_OBJECT

    static bool platformHasHotKeys()
    {
        return QGuiApplication::platformName() == QLatin1String("xcb") ||
               QGuiApplication::platformName() == QLatin1String("windows");
    }

private Q_SLOTS:
    void nonsenseIsRefused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QString();
        QTest::newRow("words") << QStringLiteral("no such key");
        QTest::newRow("modifiers only") << QStringLiteral("Ctrl+Alt+");
        QTest::newRow("control characters") << QStringLiteral("\x01\x02");
        QTest::newRow("plus signs") << QStringLiteral("++++");
        QTest::newRow("long") << QString(100'000, QLatin1Char('x'));
        QTest::newRow("a key without a number") << QStringLiteral("Ctrl+Hiragana");
    }
    void nonsenseIsRefused()
    {
        QFETCH(QString, text);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^QxtGlobalShortcut failed to register: ")));
        QxtGlobalShortcut hotKey;
        QCOMPARE(hotKey.setShortcut(text), false);
        if (!hotKey.shortcut().isEmpty() && (hotKey.shortcut()[0] & ~0x1e000000) != 0)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral(
                                                   "^QxtGlobalShortcut failed to unregister: ")));
    }

    void platformWithoutHotKeysRefusesAndKeepsTheKey()
    {
        if (platformHasHotKeys())
            QSKIP("this platform has hot keys");
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to register: \"Ctrl+Alt+F7\"");
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to unregister: \"Ctrl+Alt+F7\"");
        QxtGlobalShortcut hotKey;
        QCOMPARE(hotKey.setShortcut(QStringLiteral("Ctrl+Alt+F7")), false);
        QCOMPARE(hotKey.shortcut(), QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_F7));
        QCOMPARE(hotKey.shortcutString(), QStringLiteral("Ctrl+Alt+F7"));
        // Giving the hot key up warns, as it was never registered.
        QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to register: \"\"");
        QCOMPARE(hotKey.setShortcut(QString()), false);
        QCOMPARE(hotKey.shortcut()[0], 0);
    }

    void onlyTheFirstKeyOfASequenceCounts()
    {
        QxtGlobalShortcut hotKey;
        if (!platformHasHotKeys()) {
            QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to register: \"Ctrl+K, Ctrl+B\"");
            QTest::ignoreMessage(QtWarningMsg, "QxtGlobalShortcut failed to unregister: \"Ctrl+K\"");
        }
        hotKey.setProperty("shortcut", QVariant::fromValue(QKeySequence(QStringLiteral("Ctrl+K, Ctrl+B"))));
        QCOMPARE(hotKey.shortcutString(), QStringLiteral("Ctrl+K"));
        QCOMPARE(hotKey.nativeShortcutString(),
                 QKeySequence(Qt::CTRL | Qt::Key_K).toString(QKeySequence::NativeText));
    }

    void textOfAnyKeyCodeIsNative()
    {
        QxtGlobalShortcut hotKey;
        QCOMPARE(hotKey.shortcutString(int(Qt::CTRL | Qt::SHIFT) | Qt::Key_F5),
                 QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F5).toString(QKeySequence::NativeText));
        QCOMPARE(hotKey.shortcutString(0), QString());
        QCOMPARE(hotKey.shortcutString(), QString());
    }

    void disablingIsTheInverseOfEnabling()
    {
        QxtGlobalShortcut hotKey;
        hotKey.setDisabled();
        QVERIFY(!hotKey.isEnabled());
        hotKey.setEnabled();
        QVERIFY(hotKey.isEnabled());
        hotKey.setDisabled(false);
        QVERIFY(hotKey.isEnabled());
        hotKey.setProperty("enabled", false);
        QVERIFY(!hotKey.isEnabled());
    }

    void objectsComeAndGoInAnyOrder()
    {
        auto *first = new QxtGlobalShortcut;
        auto *second = new QxtGlobalShortcut;
        auto *third = new QxtGlobalShortcut;
        delete first;
        delete third;
        delete second;
        QxtGlobalShortcut again;
    }
};

QTEST_MAIN(TestGlobalShortcut)
#include "tst_globalshortcut.moc"
