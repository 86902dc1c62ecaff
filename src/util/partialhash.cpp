#include "partialhash.h"

#include "localpath.h"
#include "pictures.h"

#include <QCryptographicHash>
#include <QFile>

#include <limits>

namespace imutil {
namespace {

constexpr qint64 mebibyte = 1 << 20;

/// The length of each block if only the first and the last one are hashed; 0 if all of `size` is.
[[nodiscard]] qint64 blockLength(qint64 size, int blockMiB)
{
    const qint64 block = blockMiB * mebibyte;
    return block > 0 && size > 2 * block ? block : 0;
}

/// Adds up to `length` bytes from where `file` stands, in pieces, so that a large block needs no memory of
/// its size.
void addFrom(QFile &file, qint64 length, QCryptographicHash &hash)
{
    QByteArray piece(int(qMin(length, mebibyte)), Qt::Uninitialized);
    while (length > 0) {
        const qint64 count = file.read(piece.data(), qMin<qint64>(piece.size(), length));
        if (count <= 0)
            return;
        hash.addData(piece.constData(), int(count));
        length -= count;
    }
}

[[nodiscard]] QString toText(const QCryptographicHash &hash)
{
    return QString::fromLatin1(hash.result().toHex());
}

} // namespace

QString sha1Image(const QImage &image, int blockMiB)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const auto *bytes = reinterpret_cast<const char *>(image.constBits());
    const int size = byteCount(image);
    const int block = int(blockLength(size, blockMiB));
    if (block > 0) {
        hash.addData(bytes, block);
        hash.addData(bytes + (size - block), block);
    } else {
        hash.addData(bytes, size);
    }
    return toText(hash);
}

QString sha1File(const QString &filePath, int blockMiB)
{
    QFile file(toLocalFile(filePath));
    // Unbuffered, because every read is large: a buffer would only read beyond the blocks.
    if (!file.exists() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return {};

    QCryptographicHash hash(QCryptographicHash::Sha1);
    const qint64 size = file.size();
    const qint64 block = blockLength(size, blockMiB);
    if (block > 0) {
        addFrom(file, block, hash);
        file.seek(size - block);
        addFrom(file, block, hash);
    } else {
        addFrom(file, std::numeric_limits<qint64>::max(), hash);
    }
    return toText(hash);
}

} // namespace imutil
