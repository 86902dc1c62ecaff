#pragma once

#include <QFile>
#include <QImage>
#include <QString>

namespace emoji {

/// The file with the pictures of all emoji, mapped into memory. Little endian: "EMJ1", the number of emoji
/// (32 bits), the hash of the list of emoji (64 bits), then offset and length (32 bits each) of the PNG data
/// per emoji in the list's order, then that data. A length of zero means that there is no picture. Once
/// opened, it is only read, on any thread.
class PictureFile
{
    Q_DISABLE_COPY(PictureFile)

public:
    /// Warns and stays closed unless `path` is a whole file made for this list of emoji.
    explicit PictureFile(const QString &path);

    [[nodiscard]] bool isOpen() const { return data != nullptr; }

    /// The picture of an emoji as a square of `side` pixels, cut from the middle of what the file has, which
    /// may be wider. Null if the file has none or it can not be decoded.
    [[nodiscard]] QImage picture(int index, int side) const;

    /// The file to use: beside the library, else in a data folder of the system. It need not exist.
    [[nodiscard]] static QString installedPath();

private:
    [[nodiscard]] QString open();

    QFile file;
    const uchar *data = nullptr;
};

} // namespace emoji
