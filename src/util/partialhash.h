#pragma once

#include <QImage>
#include <QString>

/// A quick identity of files and pictures for upload checks: the SHA-1 of the first and the last block, as
/// lower-case hexadecimal text. What lies between is not looked at, so it proves nothing about the content,
/// but it takes the same time for a film as for a photograph.
namespace imutil {

/// Size of each of the two blocks, in mebibytes, that the servers reckon with.
constexpr int defaultHashBlocks = 2;

/// Partial hash of the pixel data. With `blockMiB` not positive, or at most two blocks of data, all of it is
/// hashed.
[[nodiscard]] QString sha1Image(const QImage &image, int blockMiB);

/// Partial hash of a file, whose path may be a file URL or a plain path. With `blockMiB` not positive, or at
/// most two blocks of data, the whole file is hashed. Empty if the file can't be read.
[[nodiscard]] QString sha1File(const QString &filePath, int blockMiB);

} // namespace imutil
