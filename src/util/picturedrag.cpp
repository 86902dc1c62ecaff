#include "picturedrag.h"

#include "localpath.h"

#include <QCoreApplication>
#include <QDrag>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QPixmap>
#include <QUrl>

namespace imutil {
namespace {

constexpr int thumbnailSide = 100;

void openByContent(QImageReader &reader, const QString &path)
{
    reader.setFileName(toLocalFile(path));
    reader.setDecideFormatFromContent(true);
}

/// Puts the picture that `reader` is about to read into `mimeData` and returns it; null if it is damaged.
[[nodiscard]] QImage addPicture(QImageReader &reader, QMimeData &mimeData)
{
    // Image data has lost the animation; the mark lets a drop target fetch the file instead.
    if (reader.format().compare("gif", Qt::CaseInsensitive) == 0)
        mimeData.setData(QStringLiteral("text/ostrel-image-gif"), QByteArray());
    const QImage image = reader.read();
    // A null image would still count as one for the drop target.
    if (!image.isNull())
        mimeData.setImageData(image);
    return image;
}

[[nodiscard]] QImage readByContent(const QString &path)
{
    QImageReader reader;
    openByContent(reader, path);
    return reader.read();
}

void showThumbnail(QDrag &drag, const QImage &image)
{
    if (image.isNull())
        return;
    const QPixmap pixmap = QPixmap::fromImage(image).scaled(thumbnailSide, thumbnailSide, Qt::KeepAspectRatio,
                                                            Qt::SmoothTransformation);
    drag.setPixmap(pixmap);
    drag.setHotSpot(QPoint(pixmap.width() / 2, pixmap.height() / 2));
}

} // namespace

void dragPicture(const QString &path, const QString &thumbPath)
{
    if (path.isEmpty())
        return;

    auto *mimeData = new QMimeData;
    auto *drag = new QDrag(QCoreApplication::instance());
    QImageReader reader;
    openByContent(reader, path);
    if (!reader.format().isEmpty()) {
        const QImage image = addPicture(reader, *mimeData);
        showThumbnail(*drag, thumbPath.isEmpty() ? image : readByContent(thumbPath));
    }
    mimeData->setUrls({QUrl(path)});
    drag->setMimeData(mimeData);
    drag->exec(Qt::CopyAction);
    drag->deleteLater();
}

} // namespace imutil
