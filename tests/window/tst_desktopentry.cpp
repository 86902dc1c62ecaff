// Entries of the autostart folder, read back by a reader of this test that follows the published format.

#include "desktopentryreader.h"

#include "window/desktopentry.h"

#include <QtTest>

class TestDesktopEntry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void programPathComesBackWhole_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("plain") << QStringLiteral("/usr/bin/chat");
        QTest::newRow("blanks") << QStringLiteral("/opt/My Chat/chat client");
        QTest::newRow("double quotes") << QStringLiteral("/opt/\"chat\"/x");
        QTest::newRow("single quotes") << QStringLiteral("/opt/it's/x");
        QTest::newRow("percent") << QStringLiteral("/opt/100%/%f/%%");
        QTest::newRow("dollar") << QStringLiteral("/opt/$HOME/${x}");
        QTest::newRow("backtick") << QStringLiteral("/opt/`id`");
        QTest::newRow("backslashes") << QStringLiteral("/opt/a\\b\\\\c\\n\\");
        QTest::newRow("line breaks and tabs") << QStringLiteral("/opt/a\nb\tc\rd");
        QTest::newRow("shell") << QStringLiteral("/opt/a;b&c|d<e>f(g)h*i?j#k~l");
        QTest::newRow("Chinese") << QString::fromUtf8("/opt/聊天/启动");
        QTest::newRow("beyond the basic plane") << QString::fromUtf8("/opt/😀");
        QTest::newRow("all at once") << QString::fromUtf8("/o p/\"%$`\\'é\\\"/x\\");
    }
    void programPathComesBackWhole()
    {
        QFETCH(QString, path);
        const QByteArray entry = desktopentry::autostartEntry(QStringLiteral("Chat"), path);
        DesktopEntryReader reader(entry);
        QVERIFY2(reader.error().isEmpty(), qPrintable(reader.error()));
        QCOMPARE(reader.program(), QStringList({path}));
        QCOMPARE(reader.value(QStringLiteral("Type")), QStringLiteral("Application"));
        QCOMPARE(reader.value(QStringLiteral("Name")), QStringLiteral("Chat"));
        QCOMPARE(reader.value(QStringLiteral("Terminal")), QStringLiteral("false"));
        QCOMPARE(reader.value(QStringLiteral("X-GNOME-Autostart-enabled")), QStringLiteral("true"));
    }

    void nameComesBackWhole()
    {
        const QString name = QString::fromUtf8("Chat \\n 聊\t天\n%f");
        const DesktopEntryReader reader(desktopentry::autostartEntry(name, QStringLiteral("/x")));
        QVERIFY2(reader.error().isEmpty(), qPrintable(reader.error()));
        QCOMPARE(reader.value(QStringLiteral("Name")), name);
    }

    void pathThatTheFormatCanNotNameGivesNothing()
    {
        for (const char *path : {"", "/opt/a=b/chat", "="}) {
            QVERIFY(desktopentry::execValue(QString::fromLatin1(path)).isEmpty());
            QVERIFY(
                desktopentry::autostartEntry(QStringLiteral("Chat"), QString::fromLatin1(path)).isEmpty());
        }
    }

    void fileStaysInItsFolder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("file");
        QTest::newRow("plain") << QStringLiteral("chat") << QStringLiteral("chat.desktop");
        QTest::newRow("blank") << QStringLiteral("My Chat") << QStringLiteral("My Chat.desktop");
        QTest::newRow("separators") << QStringLiteral("../a/b") << QStringLiteral(".._a_b.desktop");
        QTest::newRow("none") << QString() << QStringLiteral("application.desktop");
        QTest::newRow("null character") << QString(QChar(0)) << QStringLiteral("application.desktop");
        QTest::newRow("Chinese") << QString::fromUtf8("聊天") << QString::fromUtf8("聊天.desktop");
    }
    void fileStaysInItsFolder()
    {
        QFETCH(QString, name);
        QFETCH(QString, file);
        QCOMPARE(desktopentry::fileName(name), file);
    }
};

QTEST_APPLESS_MAIN(TestDesktopEntry)
#include "tst_desktopentry.moc"
