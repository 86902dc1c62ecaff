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
    /// Whether there is a folder of that path.
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
    /// Starts a program with the arguments `param`; true if it started. `filePath` is taken as it stands.
    bool openFileWithParam(const QString &filePath, const QStringList &param);
    /// Deletes a folder with all that is in it; false if there is none.
    bool removeLocalFolder(const QUrl &path);
    /// Whether the local path of the URL exists or, for a URL without one, its text as a path.
    bool fileExists(const QUrl &path);
    /// The keys "containsMedia", "containsFile" and "containsFolder"; empty files and those above 1.5 GiB do
    /// not count.
    QVariantMap containsFileType(const QList<QUrl> &urls);
    /// Copies a file, and makes the folder it goes to. An existing file is never overwritten.
    bool copyFile(const QString &srcPath, const QString &newPath);
    /// Deletes a file; false if there is none or it can not be deleted.
    bool deleteFile(const QString &filePath);
    /// Makes a folder; true also if it exists.
    bool mkpath(const QString &dir);
    /// Renames or moves a file. An existing file is never overwritten.
    bool fileRename(const QString &oldName, const QString &newName);
    /// The text of a file, "" if it can not be read. `filePath` is taken as it stands.
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
    /// The keys "filePath", "size" in bytes and "name"; empty texts and 0 if there is no such file.
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
    /// The bytes behind a base64 text; characters that do not belong there are passed over.
    QByteArray fromBase64(const QByteArray &data);
    /// The bytes as base64 text.
    QByteArray toBase64(const QByteArray &data);
    /// The keys "x", "y", "width" and "height" of the area that the window's screen leaves to windows; an
    /// empty map for no window.
    QVariantMap screenRect(QWindow *window);
    /// Where the pointer is on the desktop.
    QPoint mousePostion();
    /// Whether the point lies in the rectangle or on its edge.
    bool isContainsPoint(const QRect &rect, const QPoint &point);
    /// The area of all screens together.
    QRect desktopGeometry();
    /// The size in a value; an invalid one, -1 by -1, if it holds none.
    QSizeF variantToSize(const QVariant &data);
    /// The keys "major", "minor" and "micro" of the system's version; -1 for a part that is not known.
    QVariantMap systemVersion();
    /// Locks the one mutex of this object; a second lock on the same thread never returns.
    void lockThread();
    /// Gives the mutex free. Only the thread that locked it may do so.
    void unlockThread();
    /// Checks whether a TCP endpoint answers; the result comes as `pingProxyResult`.
    void tcpingProxy(const QString &host, ushort port, const QString &userName);

    // Times

    /// A time, in milliseconds since the epoch, as local time in a format of `QDateTime`, for example
    /// "HH:mm".
    QString toFormatTime(qlonglong msecs, const QString &format);
    /// A duration in milliseconds as "mm:ss" or, from one hour on, "hh:mm:ss". `bFormatMSecs` adds the
    /// milliseconds, which have three digits below one hour and at least two from there on.
    QString fromTime(qlonglong msecs, bool bFormatMSecs = false);
    /// The time of day that is `seconds` after midnight, in a format of `QTime`. It wraps at the end of the
    /// day.
    QString secondsToString(int seconds, const QString &format);
    /// A duration in seconds as "mm:ss" or "hh:mm:ss"; "-:-" for 0.
    QString secondsToString(int time);
    /// The time of a conversation's last message, from milliseconds since the epoch: "HH:mm" from today on,
    /// the day of the week for the six days before, then "MM/dd" and, before this year, "MM/dd/yyyy". "" for
    /// 0.
    QString toFormatedTimeType(qlonglong msecs);
    /// The heading above a day's messages, from milliseconds since the epoch: the translated "Today" from
    /// today on, before that "MM/dd/yyyy ddd". "" for 0.
    QString toFormatedDateTime(qlonglong msecs);
    /// Whether a time, in milliseconds since the epoch, falls on the current local day.
    bool isToday(qlonglong msecs);

    // Sizes

    /// A size in bytes in the unit that fits it, cut to two decimals: "1023 Byte", "1.5 KB".
    QString intToSizeStr(double size);
    /// Two sizes in the unit that fits the first, which alone names it.
    QStringList intsToSizeStrs(double referenceSize, double size);

    // Colours

    /// The colour that belongs to a name, the same on every client; black for no name. `lightness`, 0 to 1,
    /// is 0.35 if it is 0; outside that range the colour is invalid.
    QColor colorByStr(const QString &str, double lightness = 0);
    /// One of eight colours for a user without a picture; ids 1 and 2 share one, 3 and 4 the next. Invalid
    /// for most negative ids.
    QColor colorById(int id);
    /// The keys "h", 0 to 359 or -1 for a gray, "s" and "l", both 0 to 255.
    QVariantMap colorToHSL(const QColor &color);
    /// The colour with the opacity `alpha`, 0 to 1.
    QColor setColorAlpha(const QColor &color, double alpha);
    /// The two end colours of the part of a gradient that a chat bubble covers, as "#rrggbb". The gradient
    /// fills a list that is `containerHeight` high, from `colorEnd` at its top to `colorStart` at its bottom;
    /// the bubble lies from `yStart` to `yEnd`.
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
