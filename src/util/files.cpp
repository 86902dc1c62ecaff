#include "files.h"

#include "localpath.h"
#include "partialhash.h"
#include "window/platform/folderscan.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTextStream>

#include <algorithm>

namespace imutil {
namespace {

constexpr qint64 largestSharedFile = 0x60000000; // 1.5 GiB

[[nodiscard]] bool isMediaSuffix(const QString &suffix)
{
    static const QLatin1String mediaSuffixes[] = {
        QLatin1String("jpg"),  QLatin1String("png"), QLatin1String("jpeg"), QLatin1String("bmp"),
        QLatin1String("svg"),  QLatin1String("gif"), QLatin1String("webp"), QLatin1String("tiff"),
        QLatin1String("m4v"),  QLatin1String("mp4"), QLatin1String("avi"),  QLatin1String("mov"),
        QLatin1String("rmvb"), QLatin1String("rm"),  QLatin1String("flv"),  QLatin1String("3gp"),
        QLatin1String("mpeg"), QLatin1String("wma"), QLatin1String("mkv"),
    };
    return std::any_of(std::begin(mediaSuffixes), std::end(mediaSuffixes), [&suffix](QLatin1String known) {
        return suffix.compare(known, Qt::CaseInsensitive) == 0;
    });
}

/// A name that every system can store: a file from a liberal file system is sent under it.
[[nodiscard]] QString portableName(QString name)
{
    static const QRegularExpression forbidden(QStringLiteral("[\\\\/?*:<>|\"]"));
    return name.replace(forbidden, QStringLiteral("_"));
}

[[nodiscard]] folderscan::Content scannedByQt(const QString &path)
{
    folderscan::Content content;
    const auto entries = QDir(path).entryInfoList(
        QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDot | QDir::NoDotDot, QDir::NoSort);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir())
            content.folders.append(entry.fileName());
        else
            content.fileBytes += entry.size();
    }
    return content;
}

[[nodiscard]] bool folderExistsOrIsMade(const QString &folder)
{
    if (folder.isEmpty())
        return false;
    return QFileInfo(folder).isDir() || QDir().mkpath(folder);
}

} // namespace

qlonglong fileSize(const QString &filePath)
{
    return QFileInfo(toLocalFile(filePath)).size();
}

qlonglong dirSize(const QString &path)
{
    const auto scanned = folderscan::scan(path);
    const folderscan::Content content = scanned ? *scanned : scannedByQt(path);
    qlonglong size = content.fileBytes;
    for (const QString &folder : content.folders)
        size += dirSize(path + QDir::separator() + folder);
    return size;
}

bool isDir(const QString &filePath)
{
    return QFileInfo(toLocalFile(filePath)).isDir();
}

QVariantMap fileInfo(const QString &filePath, bool needMd5)
{
    const QString path = toLocalFile(filePath);
    const QFileInfo info(path);
    if (!info.exists())
        return {};

    // A link is sent under the name of what it points to, in that file's own spelling.
    const bool isLink = info.isSymLink();
    const QString targetName = info.canonicalFilePath().section(QLatin1Char('/'), -1);
    const bool isFolder = info.isDir();

    QVariantMap result{
        {QStringLiteral("filePath"), path},
        {QStringLiteral("fileName"), isLink ? targetName : portableName(info.fileName())},
        {QStringLiteral("fileExtension"), isLink ? targetName.section(QLatin1Char('.'), -1) : info.suffix()},
        {QStringLiteral("size"), isFolder ? dirSize(path) : qlonglong(info.size())},
        {QStringLiteral("lastModified"), info.lastModified()},
        {QStringLiteral("suffix"), isFolder ? QString() : info.suffix()},
        {QStringLiteral("isDir"), isFolder},
        {QStringLiteral("isFile"), info.isFile()},
        {QStringLiteral("dirPath"), info.dir().absolutePath()},
    };
    if (needMd5)
        result.insert(QStringLiteral("fileMd5"), sha1File(filePath, defaultHashBlocks));
    return result;
}

bool removeLocalFolder(const QUrl &path)
{
    const QString folder = path.toLocalFile();
    // QDir takes an empty path for the current folder, which nobody asked to delete.
    if (folder.isEmpty())
        return false;
    QDir dir(folder);
    return dir.exists() && dir.removeRecursively();
}

bool fileExists(const QUrl &path)
{
    const QString local = path.toLocalFile();
    return QFileInfo::exists(local.isEmpty() ? path.toString() : local);
}

QVariantMap containsFileType(const QList<QUrl> &urls)
{
    bool containsMedia = false;
    bool containsFile = false;
    bool containsFolder = false;
    for (const QUrl &url : urls) {
        const QFileInfo info(url.toLocalFile());
        if (!info.exists() || info.size() > largestSharedFile)
            continue;
        if (info.isDir())
            containsFolder = true;
        else if (info.size() == 0)
            continue;
        else if (isMediaSuffix(info.suffix()))
            containsMedia = true;
        else
            containsFile = true;
        if (containsFile && containsMedia)
            break;
    }
    return {
        {QStringLiteral("containsMedia"), containsMedia},
        {QStringLiteral("containsFile"), containsFile},
        {QStringLiteral("containsFolder"), containsFolder},
    };
}

bool copyFile(const QString &srcPath, const QString &newPath)
{
    if (srcPath == newPath)
        return true;
    const QString source = toLocalFile(srcPath);
    const QString destination = toLocalFile(newPath);
    if (source == destination)
        return true;
    if (!QFileInfo::exists(source) || !makeFolderOf(destination))
        return false;
    return QFile::copy(source, destination);
}

bool makeFolderOf(const QString &localPath)
{
    const QDir folder = QFileInfo(localPath).dir();
    return folder.exists() || QDir().mkpath(folder.absolutePath());
}

bool deleteFile(const QString &filePath)
{
    const QString path = toLocalFile(filePath);
    return QFileInfo::exists(path) && QFile::remove(path);
}

bool makePath(const QString &dir)
{
    const QString path = toLocalFile(dir);
    return QFileInfo::exists(path) || QDir().mkpath(path);
}

bool renameFile(const QString &oldName, const QString &newName)
{
    return QFile::rename(toLocalFile(oldName), toLocalFile(newName));
}

QString readTextFile(const QString &filePath)
{
    QFile file(filePath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QTextStream(&file).readAll();
}

QString checkDownloadFolder(const QString &downloadFolder)
{
    const QString folder = toLocalFile(downloadFolder);
    if (QDir::root().exists() && folderExistsOrIsMade(folder))
        return folder;

    const QString base = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    const QString candidate = base + QLatin1String("/Ostrel");
    // The own folder was just refused; asking for it again would not help.
    if (folder.compare(candidate, Qt::CaseInsensitive) == 0)
        return base;
    return folderExistsOrIsMade(candidate) ? candidate : base;
}

} // namespace imutil
