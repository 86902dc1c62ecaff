#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QObject>
#include <QPoint>
#include <QRect>
#include <QScopedPointer>
#include <QSizeF>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>
#include <QWindow>

struct ImUtilPrivate;

/// The toolbox of scripts: files, pictures, times, sizes, colours, texts and proxy checks.
///
/// A path may be a file URL or a plain path, with slashes in either direction, unless a slot says otherwise.
/// Nothing throws or reports: failure is false, 0, an empty text or an empty map. Everything runs on the
/// caller's thread.
class ImUtil : public QObject
{
    Q_OBJECT

public:
    explicit ImUtil(QObject *parent = nullptr);
    ~ImUtil() override;

public Q_SLOTS:
    // Paths and files

    /// The local path behind a file URL; a plain path only has its backslashes turned.
    QString toLocalFile(const QString &url);
    /// The percent-encoded file URL of a path; a file URL only has its backslashes turned.
    QString fromLocalFile(const QString &filePath);
    /// Size of the file in bytes; 0 if there is none.
    qlonglong getFileSize(const QString &filePath);
    /// Size of all files below `path`, in bytes, hidden ones included. `path` is taken as it stands.
    qlonglong dirSize(const QString &path);
    bool isDir(const QString &filePath);
    /// The keys "filePath", "fileName", "fileExtension", "size", "lastModified", "suffix", "isDir", "isFile",
    /// "dirPath" and, with `needMd5`, "fileMd5", which holds the value of `sha1UpgradeFile()`. Empty if
    /// nothing exists there.
    QVariantMap getFileInfo(const QString &filePath, bool needMd5 = false);
    /// Opens a file with the user's program for it.
    bool openFile(const QString &filePath);
    /// Opens an address with the user's program for it; a text without a scheme is a web address.
    bool openUrl(const QString &url);
    /// Shows a file in the file manager.
    void openPath(const QString &filePath);
    /// Starts a program. `filePath` is taken as it stands.
    bool openFileWithParam(const QString &filePath, const QStringList &param);
    /// Deletes a folder with all that is in it; false if there is none.
    bool removeLocalFolder(const QUrl &path);
    bool fileExists(const QUrl &path);
    /// The keys "containsMedia", "containsFile" and "containsFolder"; empty files and those above 1.5 GiB do
    /// not count.
    QVariantMap containsFileType(const QList<QUrl> &urls);
    /// Copies a file, and makes the folder it goes to. An existing file is never overwritten.
    bool copyFile(const QString &srcPath, const QString &newPath);
    bool deleteFile(const QString &filePath);
    /// Makes a folder; true also if it exists.
    bool mkpath(const QString &dir);
    bool fileRename(const QString &oldName, const QString &newName);
    /// The text of a file. `filePath` is taken as it stands.
    QString readTextFile(const QString &filePath);
    /// A folder in which downloads can go, `downloadFolder` if possible.
    QString checkDownloadFolder(const QString &downloadFolder);
    /// Kept for clients that call it; no application is ever found.
    bool existApp(const QString &appName);

    // Pictures

    /// Saves a picture, at most about 200 wide, for a chat. Keys "w", "h" and "size", the bytes of its
    /// pixels.
    QVariantMap scaleImage(const QString &srcImage, const QString &destImage);
    /// Saves a picture scaled into `w` by `h`; false if that would enlarge it, true if there is no picture.
    bool reduceImage(const QString &srcImage, const QString &destImage, int w, int h);
    /// The keys "filePath", "size" and "name".
    QVariantMap getImageInfo(const QString &filePath);
    /// The size at which a picture is shown, without decoding it; -1 by -1 if it is none.
    QSizeF imageSize(const QString &imagePath);
    /// Whether the content is that of a picture, whatever the suffix.
    bool isImageFormat(const QString &path);
    /// Converts a picture to WebP in the temporary folder and returns its path; "" if it can't or need not
    /// be.
    QString imageSaveAsTmpWebp(const QString &srcPath);
    /// SHA-1 of the first and the last `shalSize` mebibytes of the pixels.
    QString sha1Image(const QImage &image, int shalSize = 2);
    /// SHA-1 of the first and the last `shalSize` mebibytes of a file, so that hashing takes a fixed time.
    QString sha1UpgradeFile(const QString &filePath, int shalSize = 2);
    /// Saves the part `rect` of a picture, scaled to `scaleSize`, turned and mirrored; a `scale` of -1 turns
    /// it upside down. `targetSize` takes no part.
    bool copyPhoto(const QString &fileName, const QString &targetName, const QRect &rect,
                   const QSize &targetSize, const QSize &scaleSize = QSize(), double rotation = 0,
                   bool mirror = false, int scale = 1);
    /// Decodes a data URL into `QPixmapCache`.
    void base64DataToImageCache(const QString &key, const QString &data);
    /// Drags a picture out of the client; returns when the user has let go.
    void dragItem(const QString &path, const QString &thumbPath = QString());

    // Identifiers, screen and system

    /// A random identifier of `len` hexadecimal digits, 32 at most.
    QString createTmpId(int len = 16);
    /// Asks for attention at the top window above `window`.
    void taskbarFlash(QWindow *window);
    /// The order of two texts in the user's language: negative, 0 or positive.
    int compare(const QString &a, const QString &b);
    QByteArray fromBase64(const QByteArray &data);
    QByteArray toBase64(const QByteArray &data);
    /// The keys "x", "y", "width" and "height" of the free area of the window's screen.
    QVariantMap screenRect(QWindow *window);
    QPoint mousePostion();
    bool isContainsPoint(const QRect &rect, const QPoint &point);
    QRect desktopGeometry();
    QSizeF variantToSize(const QVariant &data);
    /// The keys "major", "minor" and "micro".
    QVariantMap systemVersion();
    /// Locks the one mutex of this object; a second lock on the same thread never returns.
    void lockThread();
    void unlockThread();
    /// Checks whether a TCP endpoint answers; the result comes as `pingProxyResult`.
    void tcpingProxy(const QString &host, ushort port, const QString &userName);

    // Times

    QString toFormatTime(qlonglong msecs, const QString &format);
    /// A duration in milliseconds as "mm:ss" or "hh:mm:ss".
    QString fromTime(qlonglong msecs, bool bFormatMSecs = false);
    /// The time of day that is `seconds` after midnight.
    QString secondsToString(int seconds, const QString &format);
    /// A duration in seconds as "mm:ss" or "hh:mm:ss"; "-:-" for 0.
    QString secondsToString(int time);
    /// The time of a conversation's last message.
    QString toFormatedTimeType(qlonglong msecs);
    /// The heading above a day's messages.
    QString toFormatedDateTime(qlonglong msecs);
    bool isToday(qlonglong msecs);

    // Sizes

    /// A size in bytes in the unit that fits it.
    QString intToSizeStr(double size);
    /// Two sizes in the unit that fits the first, which alone names it.
    QStringList intsToSizeStrs(double referenceSize, double size);

    // Colours

    /// A colour that belongs to a name; `lightness` 0 is the default.
    QColor colorByStr(const QString &str, double lightness = 0);
    QColor colorById(int id);
    /// The keys "h", "s" and "l".
    QVariantMap colorToHSL(const QColor &color);
    QColor setColorAlpha(const QColor &color, double alpha);
    /// The two end colours of the part of a gradient that a chat bubble covers.
    QStringList bubleGradientColors(double containerHeight, double yStart, double yEnd,
                                    const QColor &colorStart, const QColor &colorEnd);

    // Text

    /// The text without line ends, tabs, form feeds, backspaces, and white space at its ends.
    QString trimString(const QString &src);

Q_SIGNALS:
    /// A check by `tcpingProxy()` has ended. `result` is a map with "result", and "ttl" in milliseconds if
    /// that is true.
    void pingProxyResult(const QString &host, const QVariant &result);

private:
    QScopedPointer<ImUtilPrivate> d;
};
