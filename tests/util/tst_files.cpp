// Questions and orders about files, on real trees with odd names, links and folders that can't be read.

#include "util/imutil.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <filesystem>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QCOMPARE(file.write(content), qint64(content.size()));
}

void writeSparse(const QString &path, qint64 size)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly), qPrintable(path));
    QVERIFY(file.resize(size));
}

[[nodiscard]] QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

/// Sum of the regular files below `root`, counted by another library than the one under test. Follows links
/// to files, not to folders.
[[nodiscard]] qint64 sizeByFilesystem(const QString &root)
{
    qint64 size = 0;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(root.toStdString())) {
        if (entry.is_regular_file())
            size += qint64(entry.file_size());
    }
    return size;
}

/// Makes a tree with folders to the depth of `depth` and files of random sizes.
void growTree(const QString &path, int depth, QRandomGenerator &random, int *files)
{
    for (int i = 0; i < 8; ++i) {
        const QString name =
            i % 4 == 0 ? QStringLiteral(".hidden%1").arg(i) : QStringLiteral("file %1.txt").arg(i);
        write(path + QLatin1Char('/') + name, QByteArray(random.bounded(3000), 'x'));
        ++*files;
    }
    if (depth == 0)
        return;
    for (int i = 0; i < 4; ++i) {
        const QString child =
            path + (i == 0 ? QStringLiteral("/.folder") : QStringLiteral("/folder %1").arg(i));
        QVERIFY(QDir().mkpath(child));
        growTree(child, depth - 1, random, files);
    }
}

#ifdef Q_OS_UNIX
/// Gives up the rights of the superuser while it lives, so that permissions count.
class PlainUser
{
public:
    PlainUser()
    {
        if (geteuid() == 0)
            isSwitched = seteuid(65534) == 0;
    }
    ~PlainUser()
    {
        if (isSwitched && seteuid(0) != 0)
            qFatal("the test can't go on without its rights");
    }

private:
    bool isSwitched = false;
};
#endif

} // namespace

class TestFiles : public QObject
{
    Q_OBJECT

private:
    QScopedPointer<QTemporaryDir> temporary;
    ImUtil util;

    [[nodiscard]] QString at(const QString &name) const
    {
        return temporary->path() + QLatin1Char('/') + name;
    }
    [[nodiscard]] static QString url(const QString &path)
    {
        return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    }

private Q_SLOTS:
    void init()
    {
        temporary.reset(new QTemporaryDir);
        QVERIFY(temporary->isValid());
    }
    void cleanup() { temporary.reset(); }

    void sizeOfAFileIsFoundByPathAndByUrl()
    {
        const QString path = at(QStringLiteral("a b#%41.txt"));
        write(path, QByteArray(1234, 'x'));
        QCOMPARE(util.getFileSize(path), qlonglong(1234));
        QCOMPARE(util.getFileSize(url(path)), qlonglong(1234));
        QCOMPARE(util.getFileSize(at(QStringLiteral("missing"))), qlonglong(0));
        QCOMPARE(util.getFileSize(QString()), qlonglong(0));
    }

    void sizeAbove4GiBIsNotCut()
    {
        const QString path = at(QStringLiteral("large"));
        writeSparse(path, Q_INT64_C(5) << 30);
        QCOMPARE(util.getFileSize(path), Q_INT64_C(5368709120));
        QCOMPARE(util.dirSize(temporary->path()), Q_INT64_C(5368709120));
    }

    void foldersAreToldFromFiles()
    {
        write(at(QStringLiteral("file")), "x");
        QVERIFY(util.isDir(temporary->path()));
        QVERIFY(util.isDir(url(temporary->path())));
        QVERIFY(!util.isDir(at(QStringLiteral("file"))));
        QVERIFY(!util.isDir(at(QStringLiteral("missing"))));
        QVERIFY(!util.isDir(QString()));
    }

    void sizeOfATreeIsTheSumOfItsFiles()
    {
        QRandomGenerator random(7);
        int files = 0;
        growTree(temporary->path(), 4, random, &files);
        const qint64 expected = sizeByFilesystem(temporary->path());
        QVERIFY(expected > 1000000);

        QElapsedTimer timer;
        timer.start();
        const qlonglong size = util.dirSize(temporary->path());
        const qint64 ours = timer.nsecsElapsed();
        QCOMPARE(size, expected);

        timer.restart();
        QProcess::execute(QStringLiteral("du"), {QStringLiteral("-s"), temporary->path()});
        qInfo("%d files: %lld us, du with its start %lld us", files, ours / 1000,
              timer.nsecsElapsed() / 1000);
    }

    void sizeOfNothingIsZero()
    {
        QCOMPARE(util.dirSize(temporary->path()), qlonglong(0));
        QCOMPARE(util.dirSize(at(QStringLiteral("missing"))), qlonglong(0));
        write(at(QStringLiteral("file")), "abc");
        QCOMPARE(util.dirSize(at(QStringLiteral("file"))), qlonglong(0));
    }

    void sizeOfAFolderTakesThePathAsItStands()
    {
        write(at(QStringLiteral("file")), "abc");
        QCOMPARE(util.dirSize(temporary->path()), qlonglong(3));
        QCOMPARE(util.dirSize(url(temporary->path())), qlonglong(0));
    }

#ifdef Q_OS_UNIX
    void oddNamesCount()
    {
        for (const char *name :
             {"a:b", "back\\slash", "line\nend", " blank ", "*?", "%41", "\xE4\xBD\xA0", "..."})
            write(at(QString::fromUtf8(name)), "1234");
        QVERIFY(QDir().mkpath(at(QStringLiteral("odd\\folder/in:ner"))));
        write(at(QStringLiteral("odd\\folder/in:ner/x")), "12");
        QCOMPARE(util.dirSize(temporary->path()), qlonglong(8 * 4 + 2));
        QCOMPARE(util.dirSize(at(QStringLiteral("odd\\folder"))), qlonglong(2));
    }

    void aRelativePathIsThatOfTheCurrentFolder()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("tree/folder"))));
        write(at(QStringLiteral("tree/file")), "123");
        write(at(QStringLiteral("tree/folder/.hidden")), "12345");
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(temporary->path()));
        const qlonglong size = util.dirSize(QStringLiteral("tree"));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(size, qlonglong(8));
    }

    void resourcesAreAFolder()
    {
        QFile font(QStringLiteral(":/qml/image/iconfont.ttf"));
        QFile picture(QStringLiteral(":/qml/image/transparent.png"));
        QVERIFY(font.exists() && picture.exists());
        QCOMPARE(util.dirSize(QStringLiteral(":/qml")), font.size() + picture.size());
    }

    void namesThatAreNoTextAreLeftOutAsQtDoes()
    {
        write(at(QString::fromUtf8("\xC3\xA9")), "12345");
        const QByteArray path = QFile::encodeName(at(QStringLiteral("x\u0001")));
        write(QFile::decodeName(path), "123");
        QCOMPARE(std::rename(path, QByteArray(path).replace('\x01', '\xFF')), 0);
        qint64 listed = 0;
        const auto entries = QDir(temporary->path()).entryInfoList(QDir::Files);
        for (const QFileInfo &entry : entries)
            listed += entry.size();
        QCOMPARE(util.dirSize(temporary->path()), listed);
    }

    void pipesAndSocketsHaveNoSize()
    {
        QCOMPARE(mkfifo(qPrintable(at(QStringLiteral("pipe"))), 0600), 0);
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), at(QStringLiteral("link to a device"))));
        write(at(QStringLiteral("file")), "123");
        QCOMPARE(util.dirSize(temporary->path()), qlonglong(3));
    }

    void linksCountAsWhatTheyPointTo()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("tree/folder"))));
        write(at(QStringLiteral("outside")), "12345");
        write(at(QStringLiteral("tree/folder/file")), "123");
        QVERIFY(QFile::link(at(QStringLiteral("outside")), at(QStringLiteral("tree/link to file"))));
        QVERIFY(QFile::link(at(QStringLiteral("tree/folder")), at(QStringLiteral("tree/link to folder"))));
        QVERIFY(QFile::link(at(QStringLiteral("missing")), at(QStringLiteral("tree/broken"))));
        QVERIFY(QFile::link(at(QStringLiteral("tree/self")), at(QStringLiteral("tree/self"))));
        QCOMPARE(util.dirSize(at(QStringLiteral("tree"))), qlonglong(5 + 3 + 3));
    }

    void aFolderThatContainsItselfCountsAsOftenAsTheSystemFollows()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("tree"))));
        write(at(QStringLiteral("tree/file")), "0123456789");
        QVERIFY(QFile::link(at(QStringLiteral("tree")), at(QStringLiteral("tree/loop"))));

        int levels = 0;
        struct stat status = {};
        for (QString path = at(QStringLiteral("tree")); stat(qPrintable(path), &status) == 0; ++levels)
            path += QLatin1String("/loop");
        QVERIFY(levels > 1);
        QCOMPARE(util.dirSize(at(QStringLiteral("tree"))), qlonglong(levels * 10));
    }

    void whatCanNotBeReadCountsAsNothing()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("closed"))));
        write(at(QStringLiteral("closed/file")), "123");
        write(at(QStringLiteral("open")), "12345");
        write(at(QStringLiteral("secret")), "abc");
        QCOMPARE(chmod(qPrintable(temporary->path()), 0755), 0);
        QCOMPARE(chmod(qPrintable(at(QStringLiteral("closed"))), 0), 0);
        QCOMPARE(chmod(qPrintable(at(QStringLiteral("secret"))), 0), 0);
        {
            const PlainUser user;
            QCOMPARE(util.dirSize(temporary->path()), qlonglong(5 + 3));
            QCOMPARE(util.readTextFile(at(QStringLiteral("secret"))), QString());
            QCOMPARE(util.sha1UpgradeFile(at(QStringLiteral("secret"))), QString());
            QVERIFY(!util.deleteFile(at(QStringLiteral("open"))));
            QVERIFY(!util.mkpath(at(QStringLiteral("closed/new"))));
        }
        QCOMPARE(chmod(qPrintable(at(QStringLiteral("closed"))), 0700), 0);
    }

    void aNameThatOtherSystemsForbidIsReportedWithUnderscores_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reported");
        QTest::newRow("colon") << QStringLiteral("a:b") << QStringLiteral("a_b");
        QTest::newRow("all but slashes") << QStringLiteral("?*:<>|\".txt") << QStringLiteral("_______.txt");
        QTest::newRow("allowed") << QStringLiteral("[a](b)'c;d&e.tar.gz")
                                 << QStringLiteral("[a](b)'c;d&e.tar.gz");
    }
    void aNameThatOtherSystemsForbidIsReportedWithUnderscores()
    {
        QFETCH(QString, name);
        QFETCH(QString, reported);
        write(at(name), "x");
        QCOMPARE(util.getFileInfo(at(name)).value(QStringLiteral("fileName")).toString(), reported);
    }

    void aLinkIsReportedUnderTheNameOfItsTarget()
    {
        write(at(QStringLiteral("real:name.tar.gz")), "12345");
        QVERIFY(QFile::link(at(QStringLiteral("real:name.tar.gz")), at(QStringLiteral("link.txt"))));
        const QVariantMap info = util.getFileInfo(at(QStringLiteral("link.txt")));
        QCOMPARE(info.value(QStringLiteral("filePath")).toString(), at(QStringLiteral("link.txt")));
        QCOMPARE(info.value(QStringLiteral("fileName")).toString(), QStringLiteral("real:name.tar.gz"));
        QCOMPARE(info.value(QStringLiteral("fileExtension")).toString(), QStringLiteral("gz"));
        QCOMPARE(info.value(QStringLiteral("suffix")).toString(), QStringLiteral("txt"));
        QCOMPARE(info.value(QStringLiteral("size")).toLongLong(), qlonglong(5));

        write(at(QStringLiteral("bare")), "1");
        QVERIFY(QFile::link(at(QStringLiteral("bare")), at(QStringLiteral("bare link"))));
        QCOMPARE(util.getFileInfo(at(QStringLiteral("bare link")))
                     .value(QStringLiteral("fileExtension"))
                     .toString(),
                 QStringLiteral("bare"));

        QVERIFY(QFile::link(at(QStringLiteral("missing")), at(QStringLiteral("broken"))));
        QVERIFY(util.getFileInfo(at(QStringLiteral("broken"))).isEmpty());
        QVERIFY(QFile::link(at(QStringLiteral("self")), at(QStringLiteral("self"))));
        QVERIFY(util.getFileInfo(at(QStringLiteral("self"))).isEmpty());
    }
#endif

    void infoOfAFileHasItsTenKeys()
    {
        const QString path = at(QStringLiteral("some.tar.gz"));
        write(path, "hello");
        const QVariantMap info = util.getFileInfo(url(path), true);
        QCOMPARE(
            info.keys().join(QLatin1Char(' ')),
            QStringLiteral(
                "dirPath fileExtension fileMd5 fileName filePath isDir isFile lastModified size suffix"));
        QCOMPARE(info.value(QStringLiteral("filePath")), QVariant(path));
        QCOMPARE(info.value(QStringLiteral("fileName")), QVariant(QStringLiteral("some.tar.gz")));
        QCOMPARE(info.value(QStringLiteral("fileExtension")), QVariant(QStringLiteral("gz")));
        QCOMPARE(info.value(QStringLiteral("size")), QVariant(qlonglong(5)));
        QCOMPARE(info.value(QStringLiteral("lastModified")).toDateTime(), QFileInfo(path).lastModified());
        QCOMPARE(info.value(QStringLiteral("suffix")), QVariant(QStringLiteral("gz")));
        QCOMPARE(info.value(QStringLiteral("isDir")), QVariant(false));
        QCOMPARE(info.value(QStringLiteral("isFile")), QVariant(true));
        QCOMPARE(info.value(QStringLiteral("dirPath")), QVariant(temporary->path()));
        // SHA-1 of "hello".
        QCOMPARE(info.value(QStringLiteral("fileMd5")),
                 QVariant(QStringLiteral("aaf4c61ddcc5e8a2dabede0f3b482cd9aea9434d")));
        QVERIFY(!util.getFileInfo(path).contains(QStringLiteral("fileMd5")));
    }

    void infoOfAFolderHasTheSizeOfItsTreeAndNoSuffix()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("folder.d/inner"))));
        write(at(QStringLiteral("folder.d/inner/file")), "1234567");
        const QVariantMap info = util.getFileInfo(at(QStringLiteral("folder.d")));
        QCOMPARE(info.value(QStringLiteral("size")), QVariant(qlonglong(7)));
        QCOMPARE(info.value(QStringLiteral("suffix")), QVariant(QString()));
        QCOMPARE(info.value(QStringLiteral("fileExtension")), QVariant(QStringLiteral("d")));
        QCOMPARE(info.value(QStringLiteral("isDir")), QVariant(true));
        QCOMPARE(info.value(QStringLiteral("isFile")), QVariant(false));
    }

    void infoOfNothingIsEmpty()
    {
        QVERIFY(util.getFileInfo(at(QStringLiteral("missing")), true).isEmpty());
        QVERIFY(util.getFileInfo(QString()).isEmpty());
    }

    void aFolderIsRemovedWithAllThatIsInIt()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("a b/inner"))));
        write(at(QStringLiteral("a b/inner/.hidden")), "x");
        QVERIFY(util.removeLocalFolder(QUrl::fromLocalFile(at(QStringLiteral("a b")))));
        QVERIFY(!QFileInfo::exists(at(QStringLiteral("a b"))));
        QVERIFY(!util.removeLocalFolder(QUrl::fromLocalFile(at(QStringLiteral("a b")))));
    }

    void anUrlWithoutALocalPathRemovesNothing()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir().mkpath(at(QStringLiteral("current"))));
        write(at(QStringLiteral("current/file")), "x");
        QVERIFY(QDir::setCurrent(at(QStringLiteral("current"))));
        for (const char *text : {"", "http://server/current", "current", "/tmp", "file:"})
            QVERIFY2(!util.removeLocalFolder(QUrl(QString::fromLatin1(text))), text);
        QVERIFY(QDir::setCurrent(before));
        QVERIFY(QFileInfo::exists(at(QStringLiteral("current/file"))));
    }

    void existenceIsToldForUrlsAndForPathsWithoutAScheme()
    {
        write(at(QStringLiteral("file")), "x");
        QVERIFY(util.fileExists(QUrl::fromLocalFile(at(QStringLiteral("file")))));
        QVERIFY(util.fileExists(QUrl(at(QStringLiteral("file")))));
        QVERIFY(util.fileExists(QUrl::fromLocalFile(temporary->path())));
        QVERIFY(!util.fileExists(QUrl::fromLocalFile(at(QStringLiteral("missing")))));
        QVERIFY(!util.fileExists(QUrl(at(QStringLiteral("file/below")))));
        QVERIFY(!util.fileExists(QUrl(QStringLiteral("http://server/x"))));
        QVERIFY(!util.fileExists(QUrl()));
    }

    void whatWasDroppedIsSorted_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<bool>("media");
        QTest::addColumn<bool>("file");
        QTest::addColumn<bool>("folder");

        const auto row = [](const char *names, bool media, bool file, bool folder) {
            QTest::newRow(names) << QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts)
                                 << media << file << folder;
        };
        row("", false, false, false);
        row("folder", false, false, true);
        row("folder empty.png", false, false, true);
        row("empty.png", false, false, false);
        row("missing.png", false, false, false);
        row("a.txt", false, true, false);
        row("a.png", true, false, false);
        row("a.PNG", true, false, false);
        row("folder a.png a.txt", true, true, true);
        row("a.png folder a.txt", true, true, true);
        row("a.png a.txt folder", true, true, false);
        row("a.txt folder", false, true, true);
        row("large.mp4", true, false, false);
        row("toolarge.mp4", false, false, false);
        row("toolarge.mp4 a.txt", false, true, false);
        row("png", false, true, false);
        row("a.png.txt", false, true, false);
        row("folder.png", false, false, true);
    }
    void whatWasDroppedIsSorted()
    {
        QVERIFY(QDir().mkpath(at(QStringLiteral("folder"))));
        QVERIFY(QDir().mkpath(at(QStringLiteral("folder.png"))));
        write(at(QStringLiteral("empty.png")), "");
        for (const char *name : {"a.txt", "a.png", "a.PNG", "png", "a.png.txt"})
            write(at(QString::fromLatin1(name)), "x");
        writeSparse(at(QStringLiteral("large.mp4")), 0x60000000);
        writeSparse(at(QStringLiteral("toolarge.mp4")), 0x60000001);

        QFETCH(QStringList, names);
        QList<QUrl> urls;
        for (const QString &name : qAsConst(names))
            urls.append(QUrl::fromLocalFile(at(name)));
        QFETCH(bool, media);
        QFETCH(bool, file);
        QFETCH(bool, folder);
        QCOMPARE(util.containsFileType(urls), (QVariantMap{{QStringLiteral("containsMedia"), media},
                                                           {QStringLiteral("containsFile"), file},
                                                           {QStringLiteral("containsFolder"), folder}}));
    }

    void everyKnownSuffixIsMedia()
    {
        const QStringList suffixes =
            QStringLiteral("jpg png jpeg bmp svg gif webp tiff m4v mp4 avi mov rmvb rm flv "
                           "3gp mpeg wma mkv")
                .split(QLatin1Char(' '));
        QCOMPARE(suffixes.size(), 19);
        const QString media = QStringLiteral("containsMedia");
        for (const QString &suffix : suffixes) {
            const QString path = at(QStringLiteral("x.") + suffix);
            write(path, "x");
            QVERIFY2(util.containsFileType({QUrl::fromLocalFile(path)}).value(media).toBool(),
                     qPrintable(suffix));
        }
        for (const char *suffix : {"tif", "mp3", "wmv", "heic", "jp"}) {
            const QString path = at(QStringLiteral("x.") + QLatin1String(suffix));
            write(path, "x");
            QVERIFY2(!util.containsFileType({QUrl::fromLocalFile(path)}).value(media).toBool(), suffix);
        }
    }

    void urlsThatAreNotLocalCountAsNothing()
    {
        const QVariantMap found =
            util.containsFileType({QUrl(QStringLiteral("http://server/a.png")), QUrl()});
        for (const QVariant &flag : found)
            QVERIFY(!flag.toBool());
        QCOMPARE(found.size(), 3);
    }

    void aCopyMakesItsFolderAndNeverOverwrites()
    {
        write(at(QStringLiteral("a")), "new");
        QVERIFY(util.copyFile(url(at(QStringLiteral("a"))), at(QStringLiteral("x/y z/b"))));
        QCOMPARE(read(at(QStringLiteral("x/y z/b"))), QByteArray("new"));
        write(at(QStringLiteral("old")), "old");
        QVERIFY(!util.copyFile(at(QStringLiteral("a")), at(QStringLiteral("old"))));
        QCOMPARE(read(at(QStringLiteral("old"))), QByteArray("old"));
    }

    void aCopyOntoItselfSucceedsEvenOfNothing()
    {
        const QString missing = at(QStringLiteral("missing"));
        QVERIFY(util.copyFile(missing, missing));
        QVERIFY(util.copyFile(missing, url(missing)));
        QVERIFY(util.copyFile(QString(), QString()));
    }

    void aCopyOfNothingFailsAndMakesNoFolder()
    {
        QVERIFY(!util.copyFile(at(QStringLiteral("missing")), at(QStringLiteral("new/b"))));
        QVERIFY(!QFileInfo::exists(at(QStringLiteral("new"))));
    }

    void aCopyBelowAFileFails()
    {
        write(at(QStringLiteral("a")), "x");
        QVERIFY(!util.copyFile(at(QStringLiteral("a")), at(QStringLiteral("a/b/c"))));
    }

    void filesAreDeletedFoldersAreNot()
    {
        write(at(QStringLiteral("a b")), "x");
        QVERIFY(util.deleteFile(url(at(QStringLiteral("a b")))));
        QVERIFY(!QFileInfo::exists(at(QStringLiteral("a b"))));
        QVERIFY(!util.deleteFile(at(QStringLiteral("a b"))));
        QVERIFY(!util.deleteFile(QString()));
        QVERIFY(!util.deleteFile(temporary->path()));
        QVERIFY(QFileInfo::exists(temporary->path()));
    }

    void foldersAreMadeAndExistingOnesAreFine()
    {
        QVERIFY(util.mkpath(url(at(QStringLiteral("a b/c")))));
        QVERIFY(QFileInfo(at(QStringLiteral("a b/c"))).isDir());
        QVERIFY(util.mkpath(at(QStringLiteral("a b/c"))));
        write(at(QStringLiteral("file")), "x");
        QVERIFY(util.mkpath(at(QStringLiteral("file"))));
        QVERIFY(!util.mkpath(at(QStringLiteral("file/below"))));
    }

    void aRenameConvertsBothNamesAndNeverOverwrites()
    {
        write(at(QStringLiteral("a b")), "1");
        write(at(QStringLiteral("other")), "2");
        QVERIFY(util.fileRename(url(at(QStringLiteral("a b"))), url(at(QStringLiteral("c d")))));
        QCOMPARE(read(at(QStringLiteral("c d"))), QByteArray("1"));
        QVERIFY(!util.fileRename(at(QStringLiteral("c d")), at(QStringLiteral("other"))));
        QCOMPARE(read(at(QStringLiteral("other"))), QByteArray("2"));
        QVERIFY(!util.fileRename(at(QStringLiteral("missing")), at(QStringLiteral("x"))));
    }

    void textIsReadByPathAsItStands()
    {
        const QString path = at(QStringLiteral("text"));
        write(path, "first\r\nsecond\n");
        QCOMPARE(util.readTextFile(path), QStringLiteral("first\r\nsecond\n"));
        QCOMPARE(util.readTextFile(url(path)), QString());
        QCOMPARE(util.readTextFile(at(QStringLiteral("missing"))), QString());
        QCOMPARE(util.readTextFile(temporary->path()), QString());
        write(path, QByteArray::fromHex("fffe") + QByteArray("a\0b\0", 4));
        QCOMPARE(util.readTextFile(path), QStringLiteral("ab"));
    }

    void downloadsGoWhereTheyCan()
    {
        const QByteArray home = qgetenv("HOME");
        qputenv("HOME", QFile::encodeName(temporary->path()));
        const QString base = at(QStringLiteral("Downloads"));
        const QString own = base + QStringLiteral("/Ostrel");
        const QString impossible = at(QStringLiteral("file/below"));
        write(at(QStringLiteral("file")), "x");

        QCOMPARE(util.checkDownloadFolder(temporary->path()), temporary->path());
        QCOMPARE(util.checkDownloadFolder(at(QStringLiteral("new/folder"))),
                 at(QStringLiteral("new/folder")));
        QVERIFY(QFileInfo(at(QStringLiteral("new/folder"))).isDir());
        QCOMPARE(util.checkDownloadFolder(url(at(QStringLiteral("a b")))), at(QStringLiteral("a b")));

        QCOMPARE(util.checkDownloadFolder(impossible), own);
        QVERIFY(QFileInfo(own).isDir());
        QCOMPARE(util.checkDownloadFolder(QString()), own);

        QVERIFY(QDir(base).removeRecursively());
        write(base, "a file where the folder should be");
        QCOMPARE(util.checkDownloadFolder(impossible), base);
        QCOMPARE(util.checkDownloadFolder(base + QStringLiteral("/oSTREL")), base);
        qputenv("HOME", home);
    }

    void applicationsAreNeverFound()
    {
        QVERIFY(!util.existApp(QStringLiteral("sh")));
        QVERIFY(!util.existApp(QString()));
    }
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
