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

/// Puts the picture into `mimeData` and returns it; null if the file is no picture.
[[nodiscard]] QImage addPicture(const QString &path, QMimeData &mimeData)
{
    QImageReader reader;
    openByContent(reader, path);
    const QByteArray format = reader.format();
    if (format.isEmpty())
        return {};
    // Image data has lost the animation; the mark lets a drop target fetch the file instead.
    if (format.compare("gif", Qt::CaseInsensitive) == 0)
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

} // namespace

void dragPicture(const QString &path, const QString &thumbPath)
{
    if (path.isEmpty())
        return;

    auto *mimeData = new QMimeData;
    auto *drag = new QDrag(QCoreApplication::instance());
    const QImage image = addPicture(path, *mimeData);
    if (mimeData->hasImage()) {
        const QImage shown = thumbPath.isEmpty() ? image : readByContent(thumbPath);
        if (!shown.isNull()) {
            const QPixmap pixmap = QPixmap::fromImage(shown).scaled(
                thumbnailSide, thumbnailSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
            drag->setPixmap(pixmap);
            drag->setHotSpot(QPoint(pixmap.width() / 2, pixmap.height() / 2));
        }
    }
    mimeData->setUrls({QUrl(path)});
    drag->setMimeData(mimeData);
    drag->exec(Qt::CopyAction);
    drag->deleteLater();
}

} // namespace imutil
