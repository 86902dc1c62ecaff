// Starting with the session: what is left in the user's settings.

#include "desktopentryreader.h"

#include "window/autostart.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// Started with this, the test is a program that has itself recorded and leaves.
const QString recordSwitch = QStringLiteral("--record");
const QString recordName = QStringLiteral("odd path");

/// A copy of this test in a folder whose name most things stumble over; its path.
QString copyAtAnOddPath(const QTemporaryDir &folder)
{
#ifdef Q_OS_WIN
    const QString name = QString::fromUtf8("100% $x 'it' 聊天");
    const QString program = QStringLiteral("a program.exe");
#else
    const QString name = QString::fromUtf8("100% \"%f\" $x `y` 'it' \\ 聊天");
    const QString program = QStringLiteral("a program");
#endif
    const QString path = folder.filePath(name) + QLatin1Char('/') + program;
    return QDir(folder.path()).mkdir(name) && QFile::copy(QCoreApplication::applicationFilePath(), path)
               ? path
               : QString();
}

} // namespace

class TestAutoStart : public QObject
{
    Q_OBJECT

#ifdef Q_OS_WIN
    static QSettings *runKey()
    {
        static QSettings settings(
            QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"),
            QSettings::NativeFormat);
        settings.sync();
        return &settings;
    }
#endif

private Q_SLOTS:
    void valueIsToldWhenItChanges()
    {
        AutoStart autoStart;
        QSignalSpy spy(&autoStart, &AutoStart::enableChanged);
        autoStart.setEnable(true);
        autoStart.setEnable(true);
        autoStart.setEnable(false);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(spy.at(0).at(0).toBool(), true);
        QCOMPARE(spy.at(1).at(0).toBool(), false);
    }

#ifdef Q_OS_WIN
    void programIsRecordedWithBackslashesAndWithoutQuotes()
    {
        QCoreApplication::setApplicationName(QStringLiteral("auto start test"));
        AutoStart autoStart;
        autoStart.setEnable(true);
        QString path = QCoreApplication::applicationFilePath();
        path.replace(QLatin1Char('/'), QLatin1Char('\\'));
        QVERIFY(path.contains(QLatin1Char('\\')));
        QCOMPARE(runKey()->value(QStringLiteral("auto start test")).toString(), path);
        autoStart.setEnable(false);
        QVERIFY(!runKey()->contains(QStringLiteral("auto start test")));
    }

    void valueOfAnEarlierRunStaysUntilSomethingChanges()
    {
        QCoreApplication::setApplicationName(QStringLiteral("auto start test"));
        runKey()->setValue(QStringLiteral("auto start test"), QStringLiteral("C:\\old.exe"));
        AutoStart autoStart;
        QVERIFY(!autoStart.enable()); // nothing is read back
        autoStart.setEnable(false);
        QVERIFY(runKey()->contains(QStringLiteral("auto start test")));
        autoStart.setEnable(true);
        autoStart.setEnable(false);
        QVERIFY(!runKey()->contains(QStringLiteral("auto start test")));
    }

    void programAtAnOddPathIsRecordedWhole()
    {
        const QTemporaryDir place(QDir::tempPath() + QStringLiteral("/autostart-XXXXXX"));
        const QString path = copyAtAnOddPath(place);
        QVERIFY(!path.isEmpty());
        QCOMPARE(QProcess::execute(path, {recordSwitch}), 0);
        QCOMPARE(runKey()->value(recordName).toString(),
                 QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
        runKey()->remove(recordName);
    }
#elif defined(Q_OS_UNIX) && !defined(Q_OS_MACOS)
    void init()
    {
        folder.reset(new QTemporaryDir(QDir::tempPath() + QStringLiteral("/autostart-XXXXXX")));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder->path()));
        QCoreApplication::setApplicationName(QString::fromUtf8("Chat 聊天/1"));
        file = folder->filePath(QString::fromUtf8("autostart/Chat 聊天_1.desktop"));
    }

    void programIsRecordedAsADesktopEntry()
    {
        AutoStart autoStart;
        autoStart.setEnable(true);
        QFile entry(file);
        QVERIFY2(entry.open(QIODevice::ReadOnly), qPrintable(file));
        DesktopEntryReader reader(entry.readAll());
        QCOMPARE(reader.program(), QStringList({QCoreApplication::applicationFilePath()}));
        QCOMPARE(reader.error(), QString());
        QCOMPARE(reader.value(QStringLiteral("Name")), QCoreApplication::applicationName());
        autoStart.setEnable(false);
        QVERIFY(!QFile::exists(file));
    }

    void programAtAnOddPathIsRecordedWhole()
    {
        const QTemporaryDir place(QDir::tempPath() + QStringLiteral("/autostart-XXXXXX"));
        const QString path = copyAtAnOddPath(place);
        QVERIFY(!path.isEmpty());
        QCOMPARE(QProcess::execute(path, {recordSwitch}), 0);
        QFile entry(folder->filePath(QLatin1String("autostart/") + recordName + QLatin1String(".desktop")));
        QVERIFY2(entry.open(QIODevice::ReadOnly), qPrintable(entry.fileName()));
        DesktopEntryReader reader(entry.readAll());
        QCOMPARE(reader.program(), QStringList({QFileInfo(path).canonicalFilePath()}));
        QCOMPARE(reader.error(), QString());
    }

    void valueOfAnEarlierRunStaysUntilSomethingChanges()
    {
        QVERIFY(QDir(folder->path()).mkdir(QStringLiteral("autostart")));
        QFile entry(file);
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.close();
        AutoStart autoStart;
        QVERIFY(!autoStart.enable()); // nothing is read back
        autoStart.setEnable(false);
        QVERIFY(QFile::exists(file));
        autoStart.setEnable(true);
        autoStart.setEnable(false);
        QVERIFY(!QFile::exists(file));
    }

    void entryThatIsMissingIsNothingToRemove()
    {
        AutoStart autoStart;
        autoStart.setEnable(true);
        QVERIFY(QFile::remove(file));
        QSignalSpy spy(&autoStart, &AutoStart::enableChanged);
        autoStart.setEnable(false);
        QCOMPARE(spy.count(), 1);
    }

    void folderThatCanNotBeMadeIsPassedOver()
    {
        QFile blocker(folder->filePath(QStringLiteral("autostart")));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        AutoStart autoStart;
        QSignalSpy spy(&autoStart, &AutoStart::enableChanged);
        autoStart.setEnable(true);
        QCOMPARE(spy.count(), 1);
        QVERIFY(!QFile::exists(file));
    }

private:
    QScopedPointer<QTemporaryDir> folder;
    QString file;
#endif
};

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    if (QCoreApplication::arguments().value(1) == recordSwitch) {
        QCoreApplication::setApplicationName(recordName);
        AutoStart().setEnable(true);
        return 0;
    }
    TestAutoStart test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_autostart.moc"
