#pragma once

#include <QList>
#include <QString>
#include <QUrl>
#include <QVariantMap>

/// Questions and orders about files. Unless a function says otherwise its paths may be file URLs or plain
/// paths, with slashes in either direction (see toLocalFile()). Nothing here reports an error: failure is
/// false, 0, an empty text or an empty map.
namespace imutil {

/// Size of the file in bytes; 0 if there is none.
[[nodiscard]] qlonglong fileSize(const QString &filePath);

/// Sum of the sizes of all files below `path`, in bytes, hidden ones included. `path` is taken as it stands.
///
/// Links count as what they point to. There is no guard against a link to a folder above it but the system's
/// own limit of nested links.
[[nodiscard]] qlonglong dirSize(const QString &path);

[[nodiscard]] bool isDir(const QString &filePath);

/// What there is to know of a file or folder, under the keys "filePath", "fileName", "fileExtension", "size",
/// "lastModified", "suffix", "isDir", "isFile" and "dirPath". `needMd5` adds "fileMd5", which holds the
/// partial SHA-1 that uploads are checked by (see sha1File()) and keeps its old name because servers and
/// clients know it by that. Empty if nothing exists there.
[[nodiscard]] QVariantMap fileInfo(const QString &filePath, bool needMd5);

/// Deletes the folder that the URL names, with all that is in it. A URL without a local path names no folder:
/// nothing is touched and the answer is false.
bool removeLocalFolder(const QUrl &path);

/// Whether the local path of the URL exists, or, for a URL without one, its text as a path.
[[nodiscard]] bool fileExists(const QUrl &path);

/// Sorts what a user dropped or pasted: "containsMedia", "containsFile" and "containsFolder" tell what is
/// among `urls`. Files that are empty, missing or above 1.5 GiB count as nothing. The walk ends with the
/// entry after which both a media file and another file are known, so a folder behind them may stay unseen.
[[nodiscard]] QVariantMap containsFileType(const QList<QUrl> &urls);

/// Copies a file and makes the folder that it goes to. A copy onto itself succeeds; an existing file is never
/// overwritten.
bool copyFile(const QString &srcPath, const QString &newPath);

/// Makes the folder that `localPath` lies in, if it is missing; false if it can't be made. The path is taken
/// as it stands.
bool makeFolderOf(const QString &localPath);

/// Deletes a file; false also if there is none.
bool deleteFile(const QString &filePath);

/// Makes a folder and those above it; true also if something exists there.
bool makePath(const QString &dir);

/// Renames or moves a file; an existing file is never overwritten.
bool renameFile(const QString &oldName, const QString &newName);

/// The file's text in the codec of the locale, or in that of its byte order mark. `filePath` is taken as it
/// stands. Empty if it can't be opened.
[[nodiscard]] QString readTextFile(const QString &filePath);

/// A folder in which downloads can go: `downloadFolder` if it exists or can be made; else the module's own
/// folder below the user's downloads; else the user's downloads themselves.
[[nodiscard]] QString checkDownloadFolder(const QString &downloadFolder);

} // namespace imutil
