// The command line that shows a file in its folder. The test plays both sides: copies of it in a folder of
// their own are the program that shows a file, and the file manager, which the system looks for beside that
// program first.

#include "window/platform/showinfolder.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <windows.h>

namespace {

constexpr int patience = 30'000; // ms

/// Writes down how it was called, as the file `note`.
int playFileManager()
{
    // Under another name first, so that nobody reads half of it.
    const QString note = qEnvironmentVariable("SHOWINFOLDER_NOTE");
    QFile file(note + QStringLiteral(".part"));
    const QByteArray line = QString::fromWCharArray(GetCommandLineW()).toUtf8();
    const bool written = file.open(QIODevice::WriteOnly) && file.write(line) == line.size();
    file.close();
    return written && file.rename(note) ? 0 : 1;
}

} // namespace

class TestShowInFolderWin : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;

    [[nodiscard]] QString program() const { return folder.filePath(QStringLiteral("program.exe")); }

private Q_SLOTS:
    void initTestCase()
    {
        const QString self = QCoreApplication::applicationFilePath();
        QVERIFY(QFile::copy(self, program()));
        QVERIFY(QFile::copy(self, folder.filePath(QStringLiteral("explorer.exe"))));
    }

    void fileManagerIsGivenThePathAsItIs_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("argument");
        QTest::newRow("plain") << QStringLiteral("C:/a/b.png") << QStringLiteral("C:\\a\\b.png");
        QTest::newRow("blanks") << QStringLiteral("C:/a folder/a file.png")
                                << QStringLiteral("C:\\a folder\\a file.png");
        QTest::newRow("per cent, comma")
            << QStringLiteral("C:/100%/a,b.png") << QStringLiteral("C:\\100%\\a,b.png");
        QTest::newRow("Chinese") << QString::fromUtf8("C:/聊天/图.png")
                                 << QString::fromUtf8("C:\\聊天\\图.png");
    }
    void fileManagerIsGivenThePathAsItIs()
    {
        QFETCH(QString, path);
        QFETCH(QString, argument);
        const QString note = folder.filePath(QString::fromLatin1(QTest::currentDataTag()));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("SHOWINFOLDER_NOTE"), note);
        environment.insert(QStringLiteral("SHOWINFOLDER_PATH"), path);
        process.setProcessEnvironment(environment);
        process.start(program(), QStringList());
        QVERIFY(process.waitForFinished(patience));
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(note), patience);
        QFile file(note);
        QVERIFY(file.open(QIODevice::ReadOnly));
        // How many blanks stand between the two is Qt's choice.
        const QString called = QString::fromUtf8(file.readAll())
                                   .replace(QLatin1String("explorer  "), QLatin1String("explorer "));
        QCOMPARE(called, QStringLiteral("explorer /select,") + argument);
    }
};

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QString name = QFileInfo(QCoreApplication::applicationFilePath()).baseName();
    if (name == QLatin1String("explorer"))
        return playFileManager();
    if (name == QLatin1String("program")) {
        showinfolder::show(qEnvironmentVariable("SHOWINFOLDER_PATH"));
        return 0;
    }
    TestShowInFolderWin test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_showinfolder_win.moc"
