#include "pictures.h"

#include "files.h"
#include "localpath.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPixmap>
#include <QPixmapCache>
#include <QStandardPaths>
#include <QTransform>

#include <cmath>

namespace imutil {
namespace {

constexpr int thumbnailWidth = 200;
constexpr float tallestUnscaled = 800;

[[nodiscard]] bool save(const QImage &image, const QString &localPath)
{
    return image.save(localPath, nullptr, -1);
}

/// Turning a rectangle about the origin sends it to negative coordinates; this moves it back into the turned
/// picture. `scaled` is the picture's size before the turn.
[[nodiscard]] QRect turnedRect(const QRect &rect, const QTransform &turn, const QSize &scaled)
{
    QRect turned = turn.mapRect(rect);
    if (turned.x() >= 0 && turned.y() < 0) {
        turned.setY(turned.y() + scaled.width());
    } else if (turned.x() < 0 && turned.y() < 0) {
        turned.setX(turned.x() + scaled.width());
        turned.setY(turned.y() + scaled.height());
    } else if (turned.x() < 0) {
        turned.setX(turned.x() + scaled.height());
    }
    // The editor's frame stays as it is on the screen while the picture turns beneath it.
    turned.setSize(rect.size());
    return turned;
}

/// Only the far edges are tested: a part that begins before the picture is padded, as QImage::copy() does.
[[nodiscard]] bool endsWithin(const QRect &part, const QImage &image)
{
    return qint64(part.x()) + part.width() <= image.width() &&
           qint64(part.y()) + part.height() <= image.height();
}

} // namespace

int byteCount(const QImage &image)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    // The value that clients and servers know is this one, capped at the largest int.
    return image.byteCount();
    QT_WARNING_POP
}

QVariantMap scaleImage(const QString &srcImage, const QString &destImage)
{
    const QString source = toLocalFile(srcImage);
    const QString destination = toLocalFile(destImage);
    if (!QFileInfo::exists(source))
        return {};

    const QImage image(source);
    const auto width = float(image.width());
    const auto height = float(image.height());
    if (!makeFolderOf(destination))
        return {};

    if (width <= thumbnailWidth && height < tallestUnscaled) {
        if (!save(image, destination))
            return {};
        return {
            {QStringLiteral("w"), width},
            {QStringLiteral("h"), height},
            {QStringLiteral("size"), byteCount(image)},
        };
    }

    // A picture is bounded by its own width as height: that is what keeps an upright one from towering over
    // the chat, and what clients lay out for.
    const QImage scaled =
        image.scaled(thumbnailWidth, image.width(), Qt::KeepAspectRatio, Qt::FastTransformation);
    if (!save(scaled, destination))
        return {};
    return {
        {QStringLiteral("w"), scaled.width()},
        {QStringLiteral("h"), scaled.height()},
        {QStringLiteral("size"), byteCount(scaled)},
    };
}

bool reduceImage(const QString &srcImage, const QString &destImage, int w, int h)
{
    if (srcImage.isEmpty() || destImage.isEmpty())
        return false;
    const QString source = toLocalFile(srcImage);
    const QString destination = toLocalFile(destImage);
    if (!makeFolderOf(destination))
        return false;
    if (!QFileInfo::exists(source))
        return true;

    const QImage image(source);
    if (w > image.width() || h > image.height())
        return false;
    const QImage scaled = image.scaled(w, h, Qt::KeepAspectRatio, Qt::FastTransformation);
    return !scaled.isNull() && save(scaled, destination);
}

QVariantMap imageInfo(const QString &filePath)
{
    const QString path = toLocalFile(filePath);
    const QFileInfo info(path);
    const bool exists = info.exists();
    return {
        {QStringLiteral("filePath"), exists ? path : QString()},
        {QStringLiteral("size"), exists ? qlonglong(info.size()) : 0},
        {QStringLiteral("name"), exists ? path.mid(path.lastIndexOf(QLatin1Char('/')) + 1) : QString()},
    };
}

QSizeF imageSize(const QString &imagePath)
{
    QImageReader reader(toLocalFile(imagePath));
    reader.setAutoTransform(true);
    const QSizeF size = reader.size();
    // QImageReader::size() is that of the stored rows, whatever setAutoTransform() says.
    return reader.transformation().testFlag(QImageIOHandler::TransformationRotate90) ? size.transposed()
                                                                                     : size;
}

bool isImageFormat(const QString &path)
{
    QImageReader reader(toLocalFile(path));
    reader.setDecideFormatFromContent(true);
    return !reader.format().isEmpty();
}

QString saveAsTmpWebp(const QString &srcPath)
{
    QString path = srcPath;
    path.remove(QLatin1String("file:///"));
    const QString name = path.section(QLatin1Char('/'), -1, -1);
    if (name.section(QLatin1Char('.'), -1) == QLatin1String("webp"))
        return QStringLiteral("");
    const QString base = name.section(QLatin1Char('.'), 0, 0);
    if (base.isEmpty())
        return QStringLiteral("");

    const QString temporary = QStandardPaths::standardLocations(QStandardPaths::TempLocation).constFirst();
    const QString out = temporary + QLatin1Char('/') + base + QLatin1String(".webp");
    QImageReader reader(path);
    const QPixmap pixmap = QPixmap::fromImageReader(&reader);
    return !pixmap.isNull() && pixmap.save(out, nullptr, -1) ? out : QStringLiteral("");
}

bool copyPhoto(const QString &fileName, const QString &targetName, const PhotoCrop &crop)
{
    if (fileName.isEmpty() || !std::isfinite(crop.rotation))
        return false;
    QImageReader reader(toLocalFile(fileName));
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull())
        return false;

    const QSize &size = crop.scaleSize;
    if ((size.width() > 0 && size.width() < image.width()) ||
        (size.height() > 0 && size.height() < image.height()))
        image = image.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation);

    QRect part = crop.rect;
    if (crop.rotation != 0) {
        const QTransform turn = QTransform().rotate(crop.rotation, Qt::ZAxis);
        part = turnedRect(crop.rect, turn, size);
        image = image.transformed(turn, Qt::FastTransformation);
    }
    if (crop.turnedOver)
        image = image.mirrored(true, true);
    if (crop.mirror) {
        const bool isUpright = std::fmod(std::trunc(crop.rotation), 180.0) == 0;
        image = image.mirrored(isUpright, !isUpright);
    }

    if (!endsWithin(part, image)) {
        const int side = qMin(image.width(), image.height());
        part = QRect(0, 0, side, side);
    }
    return save(image.copy(part), toLocalFile(targetName));
}

void cacheBase64Image(const QString &key, const QString &data)
{
    QPixmap pixmap;
    if (QPixmapCache::find(key, &pixmap))
        return;
    const QStringList parts = data.split(QLatin1Char(','), Qt::SkipEmptyParts);
    if (parts.size() != 2)
        return;
    const QImage image = QImage::fromData(QByteArray::fromBase64(parts[1].toLocal8Bit()));
    // An empty entry would bar the key to a later, good picture.
    if (!image.isNull())
        QPixmapCache::insert(key, QPixmap::fromImage(image));
}

} // namespace imutil
