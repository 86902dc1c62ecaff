#include "picturedesk.h"

#include <QBuffer>
#include <QDateTime>
#include <QDir>
#include <QImageReader>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

namespace {

constexpr QSize thumbnailSize(40, 40);

} // namespace

PictureDesk::PictureDesk(const QString &folder, QObject *parent)
    : QObject(parent)
    , folder(folder)
{}

QString PictureDesk::photographScreen(QWindow *window) const
{
    const QPixmap picture = window && window->screen() ? window->screen()->grabWindow(0) : QPixmap();
    const QString name = QStringLiteral("screen-%1.png").arg(QDateTime::currentMSecsSinceEpoch());
    const QString path = QDir(folder).filePath(name);
    return !picture.isNull() && QDir().mkpath(folder) && picture.save(path) ? path : QString();
}

QString PictureDesk::thumbnail(const QString &path) const
{
    QImageReader reader(path);
    // A reader that scales while it decodes never holds the whole picture.
    if (const QSize size = reader.size(); size.isValid())
        reader.setScaledSize(size.scaled(thumbnailSize, Qt::KeepAspectRatio).expandedTo({1, 1}));
    const QImage picture = reader.read();
    if (picture.isNull())
        return QString();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    picture.scaled(thumbnailSize, Qt::KeepAspectRatio, Qt::SmoothTransformation).save(&buffer, "JPEG", 70);
    return QString::fromLatin1(bytes.toBase64());
}
