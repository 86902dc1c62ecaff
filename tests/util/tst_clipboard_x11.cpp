// The clipboard between two processes: what another program puts there arrives, and what we put there it can
// read.

#include "util/clipboard.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QWindow>
#include <QtTest>

namespace {

constexpr int patience = 20000;

/// Runs the tool while our own events go on, because it asks us for the data.
[[nodiscard]] QByteArray readByTool(const QString &target)
{
    QProcess tool;
    tool.start(QStringLiteral("xclip"), {QStringLiteral("-o"), QStringLiteral("-selection"),
                                         QStringLiteral("clipboard"), QStringLiteral("-t"), target});
    if (!QTest::qWaitFor([&tool] { return tool.state() == QProcess::NotRunning; }, patience))
        tool.kill();
    return tool.readAllStandardOutput();
}

/// Lets the tool take the clipboard; it stays in the background to serve it, until someone else takes that.
void putByTool(const QString &target, const QString &file)
{
    QProcess tool;
    tool.setProgram(QStringLiteral("xclip"));
    tool.setArguments({QStringLiteral("-i"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                       QStringLiteral("-t"), target, file});
    // With our own channels it would keep whoever reads them waiting.
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.setStandardErrorFile(QProcess::nullDevice());
    tool.startDetached();
}

} // namespace

class TestClipboardX11 : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir temporary;
    QScopedPointer<QWindow> window;
    Clipboard clipboard;

    [[nodiscard]] QString write(const QByteArray &content) const
    {
        QFile file(temporary.path() + QStringLiteral("/data"));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb") ||
            QStandardPaths::findExecutable(QStringLiteral("xclip")).isEmpty())
            QSKIP("needs an X11 display and xclip");
        window.reset(new QWindow);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window.data()));
    }

    void cleanupTestCase()
    {
        if (window)
            clipboard.setText(QStringLiteral("the tool may go"));
    }

    void anotherProgramReadsOurText()
    {
        clipboard.setText(QString::fromUtf8("a \xE4\xBD\xA0"));
        QVERIFY(clipboard.ownsClipboard());
        QVERIFY(clipboard.ownsSelection());
        QVERIFY(!clipboard.ownsFindBuffer());
        QCOMPARE(readByTool(QStringLiteral("UTF8_STRING")), QByteArray("a \xE4\xBD\xA0"));
    }

    void anotherProgramReadsOurMap()
    {
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        const QString path = temporary.path() + QStringLiteral("/a.png");
        QVERIFY(image.save(path));
        clipboard.setMimeData({{QStringLiteral("ostrel/aite"), QByteArray("mentions")},
                               {QStringLiteral("image"), path},
                               {QStringLiteral("text/html"), QStringLiteral("<b>rich</b>")}});
        QCOMPARE(readByTool(QStringLiteral("ostrel/aite")), QByteArray("mentions"));
        QVERIFY(readByTool(QStringLiteral("text/html")).contains("rich"));
        QCOMPARE(
            QImage::fromData(readByTool(QStringLiteral("image/png"))).convertToFormat(QImage::Format_RGB32),
            image);
    }

    void weReadTheTextOfAnotherProgram()
    {
        putByTool(QStringLiteral("UTF8_STRING"), write("b \xE5\xA5\xBD"));
        QTRY_COMPARE_WITH_TIMEOUT(clipboard.text(), QString::fromUtf8("b \xE5\xA5\xBD"), patience);
        QVERIFY(!clipboard.ownsClipboard());
        QVERIFY(!clipboard.ownsSelection());
        QCOMPARE(clipboard.filterTextPlain(true), QString::fromUtf8("b \xE5\xA5\xBD"));
        QCOMPARE(clipboard.filterTextPlain(), QString());
    }

    void weReadTheFilesOfAnotherProgram()
    {
        putByTool(QStringLiteral("text/uri-list"), write("file:///home/a.png\r\nhttps://server/x\r\n"));
        QTRY_COMPARE_WITH_TIMEOUT(clipboard.filterContent().toStringList(),
                                  QStringList{QStringLiteral("file:///home/a.png")}, patience);
    }

    void weSaveThePictureOfAnotherProgram()
    {
        QImage image(30, 20, QImage::Format_RGB32);
        image.fill(Qt::darkRed);
        const QString path = temporary.path() + QStringLiteral("/b.png");
        QVERIFY(image.save(path));
        putByTool(QStringLiteral("image/png"), path);
        QTRY_COMPARE_WITH_TIMEOUT(clipboard.image().size(), QSize(30, 20), patience);
        const QStringList files = clipboard.filterContent().toStringList();
        QCOMPARE(files.size(), 1);
        QCOMPARE(QImage(files[0]).convertToFormat(QImage::Format_RGB32), image);
        QVERIFY(QFile::remove(files[0]));
    }
};

QTEST_MAIN(TestClipboardX11)
#include "tst_clipboard_x11.moc"
