#include "imutil.h"

#include "colors.h"
#include "desktop.h"
#include "files.h"
#include "localpath.h"
#include "opening.h"
#include "partialhash.h"
#include "picturedrag.h"
#include "pictures.h"
#include "proxyping.h"
#include "sizes.h"
#include "texts.h"
#include "times.h"

#include <QCursor>
#include <QMutex>

struct ImUtilPrivate
{
    imutil::NameColors nameColors;
    QMutex scriptMutex; ///< what lockThread() locks; nothing of our own waits on it
};

ImUtil::ImUtil(QObject *parent)
    : QObject(parent)
    , d(new ImUtilPrivate)
{
    // The checks end on pool threads; an automatic connection brings their results to this object's own.
    connect(ProxyPing::instance(), &ProxyPing::pingProxyFinished, this, &ImUtil::pingProxyResult);
}

ImUtil::~ImUtil() = default;

QString ImUtil::toLocalFile(const QString &url)
{
    return imutil::toLocalFile(url);
}

QString ImUtil::fromLocalFile(const QString &filePath)
{
    return imutil::fromLocalFile(filePath);
}

qlonglong ImUtil::getFileSize(const QString &filePath)
{
    return imutil::fileSize(filePath);
}

qlonglong ImUtil::dirSize(const QString &path)
{
    return imutil::dirSize(path);
}

bool ImUtil::isDir(const QString &filePath)
{
    return imutil::isDir(filePath);
}

QVariantMap ImUtil::getFileInfo(const QString &filePath, bool needMd5)
{
    return imutil::fileInfo(filePath, needMd5);
}

bool ImUtil::openFile(const QString &filePath)
{
    return imutil::openFile(filePath);
}

bool ImUtil::openUrl(const QString &url)
{
    return imutil::openUrl(url);
}

void ImUtil::openPath(const QString &filePath)
{
    imutil::openPath(filePath);
}

bool ImUtil::openFileWithParam(const QString &filePath, const QStringList &param)
{
    return imutil::openFileWithParam(filePath, param);
}

bool ImUtil::removeLocalFolder(const QUrl &path)
{
    return imutil::removeLocalFolder(path);
}

bool ImUtil::fileExists(const QUrl &path)
{
    return imutil::fileExists(path);
}

QVariantMap ImUtil::containsFileType(const QList<QUrl> &urls)
{
    return imutil::containsFileType(urls);
}

bool ImUtil::copyFile(const QString &srcPath, const QString &newPath)
{
    return imutil::copyFile(srcPath, newPath);
}

bool ImUtil::deleteFile(const QString &filePath)
{
    return imutil::deleteFile(filePath);
}

bool ImUtil::mkpath(const QString &dir)
{
    return imutil::makePath(dir);
}

bool ImUtil::fileRename(const QString &oldName, const QString &newName)
{
    return imutil::renameFile(oldName, newName);
}

QString ImUtil::readTextFile(const QString &filePath)
{
    return imutil::readTextFile(filePath);
}

QString ImUtil::checkDownloadFolder(const QString &downloadFolder)
{
    return imutil::checkDownloadFolder(downloadFolder);
}

bool ImUtil::existApp(const QString &)
{
    return false;
}

QVariantMap ImUtil::scaleImage(const QString &srcImage, const QString &destImage)
{
    return imutil::scaleImage(srcImage, destImage);
}

bool ImUtil::reduceImage(const QString &srcImage, const QString &destImage, int w, int h)
{
    return imutil::reduceImage(srcImage, destImage, w, h);
}

QVariantMap ImUtil::getImageInfo(const QString &filePath)
{
    return imutil::imageInfo(filePath);
}

QSizeF ImUtil::imageSize(const QString &imagePath)
{
    return imutil::imageSize(imagePath);
}

bool ImUtil::isImageFormat(const QString &path)
{
    return imutil::isImageFormat(path);
}

QString ImUtil::imageSaveAsTmpWebp(const QString &srcPath)
{
    return imutil::saveAsTmpWebp(srcPath);
}

QString ImUtil::sha1Image(const QImage &image, int shalSize)
{
    return imutil::sha1Image(image, shalSize);
}

QString ImUtil::sha1UpgradeFile(const QString &filePath, int shalSize)
{
    return imutil::sha1File(filePath, shalSize);
}

bool ImUtil::copyPhoto(const QString &fileName, const QString &targetName, const QRect &rect, const QSize &,
                       const QSize &scaleSize, double rotation, bool mirror, int scale)
{
    imutil::PhotoCrop crop;
    crop.rect = rect;
    crop.scaleSize = scaleSize;
    crop.rotation = rotation;
    crop.mirror = mirror;
    crop.turnedOver = scale == -1;
    return imutil::copyPhoto(fileName, targetName, crop);
}

void ImUtil::base64DataToImageCache(const QString &key, const QString &data)
{
    imutil::cacheBase64Image(key, data);
}

void ImUtil::dragItem(const QString &path, const QString &thumbPath)
{
    imutil::dragPicture(path, thumbPath);
}

QString ImUtil::createTmpId(int len)
{
    return imutil::temporaryId(len);
}

void ImUtil::taskbarFlash(QWindow *window)
{
    imutil::flashTaskbar(window);
}

int ImUtil::compare(const QString &a, const QString &b)
{
    return imutil::compareByLocale(a, b);
}

QByteArray ImUtil::fromBase64(const QByteArray &data)
{
    return QByteArray::fromBase64(data);
}

QByteArray ImUtil::toBase64(const QByteArray &data)
{
    return data.toBase64();
}

QVariantMap ImUtil::screenRect(QWindow *window)
{
    return imutil::screenRect(window);
}

QPoint ImUtil::mousePostion()
{
    return QCursor::pos();
}

bool ImUtil::isContainsPoint(const QRect &rect, const QPoint &point)
{
    return rect.contains(point);
}

QRect ImUtil::desktopGeometry()
{
    return imutil::desktopGeometry();
}

QSizeF ImUtil::variantToSize(const QVariant &data)
{
    return data.toSizeF();
}

QVariantMap ImUtil::systemVersion()
{
    return imutil::systemVersion();
}

void ImUtil::lockThread()
{
    d->scriptMutex.lock();
}

void ImUtil::unlockThread()
{
    d->scriptMutex.unlock();
}

void ImUtil::tcpingProxy(const QString &host, ushort port, const QString &userName)
{
    ProxyPing::instance()->tcpingProxy(host, port, userName);
}

QString ImUtil::toFormatTime(qlonglong msecs, const QString &format)
{
    return imutil::formattedTime(msecs, format);
}

QString ImUtil::fromTime(qlonglong msecs, bool bFormatMSecs)
{
    return imutil::durationFromMSecs(msecs, bFormatMSecs);
}

QString ImUtil::secondsToString(int seconds, const QString &format)
{
    return imutil::timeOfDay(seconds, format);
}

QString ImUtil::secondsToString(int time)
{
    return imutil::durationFromSeconds(time);
}

QString ImUtil::toFormatedTimeType(qlonglong msecs)
{
    return imutil::listTime(msecs, QDateTime::currentDateTime());
}

QString ImUtil::toFormatedDateTime(qlonglong msecs)
{
    return imutil::dayHeading(msecs, QDateTime::currentDateTime());
}

bool ImUtil::isToday(qlonglong msecs)
{
    return imutil::isToday(msecs);
}

QString ImUtil::intToSizeStr(double size)
{
    return imutil::sizeText(size);
}

QStringList ImUtil::intsToSizeStrs(double referenceSize, double size)
{
    return imutil::sizeTexts(referenceSize, size);
}

QColor ImUtil::colorByStr(const QString &str, double lightness)
{
    return d->nameColors.color(str, lightness);
}

QColor ImUtil::colorById(int id)
{
    return imutil::colorById(id);
}

QVariantMap ImUtil::colorToHSL(const QColor &color)
{
    return imutil::hslOf(color);
}

QColor ImUtil::setColorAlpha(const QColor &color, double alpha)
{
    return imutil::withAlpha(color, alpha);
}

QStringList ImUtil::bubleGradientColors(double containerHeight, double yStart, double yEnd,
                                        const QColor &colorStart, const QColor &colorEnd)
{
    return imutil::bubbleGradientColors(containerHeight, yStart, yEnd, colorStart, colorEnd);
}

QString ImUtil::trimString(const QString &src)
{
    return imutil::trimmedText(src);
}
