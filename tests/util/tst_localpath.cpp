// The two ways between file URLs and local paths, and a random walk that must never fail.

#include "util/localpath.h"

#include <QDir>
#include <QRandomGenerator>
#include <QUrl>
#include <QtTest>

using imutil::fromLocalFile;
using imutil::toLocalFile;

class TestLocalPath : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void urlsAndPathsBecomeLocalPaths_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("path");

        const auto row = [](const char *name, const char *url, const char *path) {
            QTest::newRow(name) << QString::fromUtf8(url) << QString::fromUtf8(path);
        };
        row("empty", "", "");
        row("drive url", "file:///C:/a%20b.png", "C:/a b.png");
        row("drive url, small letter", "file:///c:/a", "c:/a");
        row("drive path keeps its percent signs", "C:\\a%20b.png", "C:/a%20b.png");
        row("plain path keeps its percent signs", "a%20b", "a%20b");
        row("server url", "file://server/share/x", "//server/share/x");
        row("server url with blank", "file://server/a%20b", "//server/a b");
        row("backslashes in a url", "file:\\\\\\C:\\dir\\x.png", "C:/dir/x.png");
        row("unc path", "\\\\server\\share", "//server/share");
        row("mixed slashes", "/a\\b/c", "/a/b/c");
        row("case sensitive scheme", "FILE:///C:/x%20y", "FILE:///C:/x%20y");
        row("one slash is no url", "file:/C:/x%20y", "file:/C:/x%20y");
        row("url inside the text stays", "x file:///C:/a", "x file:///C:/a");
        row("every rooted scheme goes", "file:///C:/a/file:///b", "C:/a/b");
        row("utf-8", "file:///C:/%E4%BD%A0%C3%A9", "C:/你é");
        row("unencoded utf-8", "file:///C:/你", "C:/你");
        row("plus stays", "file:///C:/a+b", "C:/a+b");
        row("encoded percent sign decodes once", "file:///C:/100%2525", "C:/100%25");
        row("broken escape", "file:///C:/50%", "C:/50%");
        row("hash and question mark", "file:///C:/a#b?c", "C:/a#b?c");
        if (QDir::rootPath() == QLatin1String("/")) {
            row("rooted url", "file:///home/x%20y", "/home/x y");
            row("rooted url with two roots", "file:////home/x", "/home/x");
            row("root", "file:///", "/");
            row("letter that is no drive", "file:///C/x", "/C/x");
            row("colon that is no drive", "file:///CC:/x", "/CC:/x");
            row("digit is no drive", "file:///1:/x", "/1:/x");
            row("name with a colon", "file:///a:b", "/a:b");
        }
    }
    void urlsAndPathsBecomeLocalPaths()
    {
        QFETCH(QString, url);
        QFETCH(QString, path);
        QCOMPARE(toLocalFile(url), path);
    }

    void pathsBecomeUrls_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("url");

        const auto row = [](const char *name, const char *path, const char *url) {
            QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(url);
        };
        row("empty", "", "");
        row("drive", "C:\\a b.png", "file:///C:/a%20b.png");
        row("server", "//server/share", "file://server/share");
        row("server with backslashes", "\\\\server\\share", "file://server/share");
        row("url stays", "file:///C:/a b", "file:///C:/a b");
        row("url with backslashes", "file:\\\\\\C:\\a", "file:///C:/a");
        row("rooted path keeps its slash", "/home/x", "file:////home/x");
        row("relative", "a/b", "file:///a/b");
        row("reserved characters", "C:/a#b?c%d&e=f+g;h@i[j]",
            "file:///C:/a%23b%3Fc%25d%26e%3Df%2Bg%3Bh%40i%5Bj%5D");
        row("unreserved characters", "C:/a-b._~9", "file:///C:/a-b._~9");
        row("utf-8", "C:/你é", "file:///C:/%E4%BD%A0%C3%A9");
    }
    void pathsBecomeUrls()
    {
        QFETCH(QString, path);
        QFETCH(QString, url);
        QCOMPARE(fromLocalFile(path), url);
    }

    void nullTextStaysEmpty()
    {
        QVERIFY(toLocalFile(QString()).isEmpty());
        QVERIFY(fromLocalFile(QString()).isEmpty());
    }

    void urlsThatQtMakesOfAbsolutePathsComeBack_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("plain") << QStringLiteral("/home/user/picture.png");
        QTest::newRow("odd") << QStringLiteral("/home/a b/50% #1? &c.png");
        QTest::newRow("line end") << QStringLiteral("/home/a\nb");
        QTest::newRow("emoji") << QString::fromUtf8("/home/\xF0\x9F\x98\x80");
    }
    void urlsThatQtMakesOfAbsolutePathsComeBack()
    {
        if (QDir::rootPath() != QLatin1String("/"))
            QSKIP("needs a system with one root");
        QFETCH(QString, path);
        QCOMPARE(toLocalFile(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)), path);
    }

    void randomTextIsTakenWithoutHarm()
    {
        const QString alphabet = QStringLiteral("file:/\\%20C aZ\u00e9\u4f60#?\U0001F600\n") + QChar(0);
        QRandomGenerator random(20260101);
        for (int round = 0; round < 20000; ++round) {
            QString text = round % 3 == 0 ? QStringLiteral("file://") : QString();
            for (int i = random.bounded(24); i > 0; --i)
                text += alphabet[random.bounded(alphabet.size())];
            const QString local = toLocalFile(text);
            QVERIFY(!local.contains(QLatin1Char('\\')) || text.contains(QLatin1Char('%')));
            const QString url = fromLocalFile(text);
            QCOMPARE(url.isEmpty(), text.isEmpty());
            QVERIFY(url.isEmpty() || url.startsWith(QLatin1String("file:/")));
            QCOMPARE(fromLocalFile(url), url);
        }
    }
};

QTEST_GUILESS_MAIN(TestLocalPath)
#include "tst_localpath.moc"
