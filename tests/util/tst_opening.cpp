// What is handed to other programs: addresses, files, command lines, and the request to show a file in its
// folder.

#include "util/imutil.h"

#include <QDesktopServices>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#ifdef QT_DBUS_LIB
#include <QDBusConnection>

/// Stands in for the file manager of the desktop.
class FileManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    QList<QStringList> shown;

public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &) { shown.append(uris); }
};
#endif

class TestOpening : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir temporary;
    ImUtil util;
    QList<QUrl> opened;
#ifdef QT_DBUS_LIB
    QProcess bus;
#endif

private Q_SLOTS:
    /// Takes the addresses that would have gone to the desktop.
    void take(const QUrl &url)
    {
        opened.append(url);
    }

    void initTestCase()
    {
        for (const char *scheme : {"file", "http", "https", "mailto", "tel", "ostrel"})
            QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), this, "take");
#ifdef QT_DBUS_LIB
        // A bus of its own, set before anything connects, so that the user's file manager is left alone.
        const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        if (!daemon.isEmpty()) {
            bus.start(daemon, {QStringLiteral("--session"), QStringLiteral("--nofork"),
                               QStringLiteral("--print-address=1")});
            QVERIFY(bus.waitForReadyRead(10000));
            qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
        } else {
            qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        }
#endif
    }
    void cleanupTestCase()
    {
#ifdef QT_DBUS_LIB
        bus.terminate();
        bus.waitForFinished();
#endif
    }
    void init()
    {
        opened.clear();
    }

    void addressesWithoutASchemeAreWebAddresses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QUrl>("url");
        const auto row = [](const char *text, const char *url) {
            QTest::newRow(text) << QString::fromLatin1(text) << QUrl(QString::fromLatin1(url));
        };
        row("www.example.org", "http://www.example.org");
        row("example.org/a?b=c#d", "http://example.org/a?b=c#d");
        row("https://example.org", "https://example.org");
        row("http://example.org", "http://example.org");
        row("mailto:a@example.org", "mailto:a@example.org");
        row("tel:123", "tel:123");
        row("ostrel:chat/5", "ostrel:chat/5");
        row("file:///home/x", "file:///home/x");
    }
    void addressesWithoutASchemeAreWebAddresses()
    {
        QFETCH(QString, text);
        QFETCH(QUrl, url);
        QVERIFY(util.openUrl(text));
        QCOMPARE(opened, QList<QUrl>{url});
    }

    void filesAreOpenedByTheirUrl()
    {
        QVERIFY(util.openFile(QStringLiteral("C:\\a b.png")));
        QVERIFY(util.openFile(QStringLiteral("file:///C:/c%20d.png")));
        QCOMPARE(opened, (QList<QUrl>{QUrl(QStringLiteral("file:///C:/a%20b.png")),
                                      QUrl(QStringLiteral("file:///C:/c%20d.png"))}));
    }

    void aProgramIsStartedWithItsArguments()
    {
        const QString shell = QStandardPaths::findExecutable(QStringLiteral("sh"));
        if (shell.isEmpty())
            QSKIP("needs a shell");
        const QString mark = temporary.path() + QStringLiteral("/a mark");
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression(QStringLiteral("^QProcess::start:.*touch.*true$")));
        QVERIFY(util.openFileWithParam(
            shell, {QStringLiteral("-c"), QStringLiteral("touch \"$1\""), QStringLiteral("sh"), mark}));
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(mark), 10000);
    }

    void aProgramThatIsNotThereDoesNotStart()
    {
        const QString missing = temporary.path() + QStringLiteral("/missing");
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression(QStringLiteral("^QProcess::start:.*missing.*false$")));
        QVERIFY(!util.openFileWithParam(missing, {}));
    }

#ifdef QT_DBUS_LIB
    void withoutAFileManagerTheFolderOpens()
    {
        util.openPath(temporary.path() + QStringLiteral("/a b.png"));
        QTRY_COMPARE_WITH_TIMEOUT(opened, QList<QUrl>{QUrl::fromLocalFile(temporary.path())}, 30000);
    }

    void theFileManagerIsAskedToSelectTheFile()
    {
        if (bus.state() != QProcess::Running)
            QSKIP("needs dbus-daemon");
        // A connection of its own, as another program would have.
        QDBusConnection connection =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("file manager"));
        FileManager fileManager;
        QVERIFY(connection.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &fileManager,
                                          QDBusConnection::ExportAllSlots));
        QVERIFY(connection.registerService(QStringLiteral("org.freedesktop.FileManager1")));

        const QString path = temporary.path() + QStringLiteral("/a b#.png");
        const QString url = QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
        util.openPath(path);
        QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown.size(), 1, 30000);
        util.openPath(url);
        QTRY_COMPARE_WITH_TIMEOUT(fileManager.shown.size(), 2, 30000);
        QCOMPARE(fileManager.shown, (QList<QStringList>{{url}, { url }}));
        QVERIFY(opened.isEmpty());
        QVERIFY(connection.unregisterService(QStringLiteral("org.freedesktop.FileManager1")));
    }
#else
    void theFolderOpens()
    {
        util.openPath(temporary.path() + QStringLiteral("/a b.png"));
        QCOMPARE(opened, QList<QUrl>{QUrl::fromLocalFile(temporary.path())});
    }
#endif
};

QTEST_MAIN(TestOpening)
#include "tst_opening.moc"
