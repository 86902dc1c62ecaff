#include "picturefile.h"

#include "emojidata.h"
#include "librarydirectory.h"

#include <QLoggingCategory>
#include <QRect>
#include <QStandardPaths>
#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace emoji {
namespace {

constexpr char magic[] = {'E', 'M', 'J', '1'};
constexpr qint64 countOffset = 4;
constexpr qint64 hashOffset = 8;
constexpr qint64 tableOffset = 16;
constexpr qint64 tableEntrySize = 8;

Q_LOGGING_CATEGORY(log, "component.emoji")

} // namespace

PictureFile::PictureFile(const QString &path)
    : file(path)
{
    const QString problem = open();
    if (!problem.isEmpty())
        qCWarning(log, "No emoji pictures: \"%ls\" %ls", qUtf16Printable(path), qUtf16Printable(problem));
}

QString PictureFile::open()
{
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("can not be read");
    const qint64 size = file.size();
    const qint64 tableEnd = tableOffset + tableEntrySize * emojiCount;
    if (size < tableEnd)
        return QStringLiteral("is too short");
    const uchar *mapped = file.map(0, size);
    if (!mapped)
        return QStringLiteral("can not be mapped into memory");
    if (std::memcmp(mapped, magic, sizeof magic) != 0)
        return QStringLiteral("is no picture file");
    if (qFromLittleEndian<quint32>(mapped + countOffset) != quint32(emojiCount) ||
        qFromLittleEndian<quint64>(mapped + hashOffset) != listHash)
        return QStringLiteral("belongs to another list of emoji");
    for (qint64 entry = tableOffset; entry < tableEnd; entry += tableEntrySize) {
        const qint64 begin = qFromLittleEndian<quint32>(mapped + entry);
        const qint64 length = qFromLittleEndian<quint32>(mapped + entry + 4);
        if (begin + length > size)
            return QStringLiteral("is cut off");
    }
    data = mapped;
    return {};
}

QImage PictureFile::picture(int index, int side) const
{
    if (!data)
        return {};
    const uchar *entry = data + tableOffset + tableEntrySize * index;
    const int length = int(qFromLittleEndian<quint32>(entry + 4));
    QImage image = QImage::fromData(data + qFromLittleEndian<quint32>(entry), length, "PNG");
    if (image.isNull())
        return {};
    const int square = std::min(image.width(), image.height());
    image = image.copy((image.width() - square) / 2, (image.height() - square) / 2, square, square);
    // Premultiplied before it is scaled, or invisible colours would bleed into the edges.
    image = std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return image.scaled(side, side, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QString PictureFile::installedPath()
{
    const QString name = QStringLiteral("emoji.pak");
    const QString beside = libraryDirectory() + QLatin1Char('/') + name;
    if (QFile::exists(beside))
        return beside;
    const QString shared =
        QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("component/") + name);
    // Naming the first place in the warning about a missing file tells where it should have been.
    return shared.isEmpty() ? beside : shared;
}

} // namespace emoji
