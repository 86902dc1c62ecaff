#include "testpictures.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QPainter>

#include <cmath>

namespace testpictures {

namespace {

quint32 crcOf(const QByteArray &bytes)
{
    quint32 crc = 0xffffffff;
    for (const char byte : bytes) {
        crc ^= uchar(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? 0xedb88320 ^ (crc >> 1) : crc >> 1;
    }
    return crc ^ 0xffffffff;
}

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes;
    QDataStream(&bytes, QIODevice::WriteOnly) << value;
    return bytes;
}

QByteArray chunk(const QByteArray &type, const QByteArray &content)
{
    return bigEndian(quint32(content.size())) + type + content + bigEndian(crcOf(type + content));
}

} // namespace

QImage smooth(const QSize &size, bool alpha)
{
    QImage image(size, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const int red = int(127.5 + 127 * std::sin(x * 0.031 + y * 0.011));
            const int green = int(127.5 + 127 * std::cos(x * 0.017 - y * 0.023));
            const int blue = size.width() > 1 ? x * 255 / (size.width() - 1) : 0;
            line[x] = qRgba(red, green, blue, alpha ? 255 - blue : 255);
        }
    }
    return image;
}

QImage quadrants(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    const int w = size.width() / 2;
    const int h = size.height() / 2;
    QPainter painter(&image);
    painter.fillRect(0, 0, w, h, Qt::red);
    painter.fillRect(w, 0, size.width() - w, h, Qt::green);
    painter.fillRect(w, h, size.width() - w, size.height() - h, Qt::blue);
    painter.fillRect(0, h, w, size.height() - h, Qt::yellow);
    return image;
}

QByteArray pngHeader(const QSize &size)
{
    const QByteArray header = bigEndian(quint32(size.width())) + bigEndian(quint32(size.height())) +
                              QByteArray("\x08\x06\x00\x00\x00", 5);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", header) +
           chunk("IDAT", qCompress(QByteArray(4096, '\0')).mid(4));
}

QByteArray encoded(const QImage &image, const char *format, int quality)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format, quality);
    return buffer.data();
}

QByteArray orientedJpeg(const QImage &image, int orientation)
{
    QByteArray jpeg = encoded(image, "jpeg", 95);
    // One big-endian directory with one entry: tag 0x0112, a short.
    QByteArray exif("Exif\0\0MM\0\x2a\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0", 25);
    exif.append(char(orientation)).append(QByteArray(2 + 4, '\0'));
    const int length = exif.size() + 2;
    jpeg.insert(2, QByteArray("\xff\xe1", 2) + char(length >> 8) + char(length & 0xff) + exif);
    return jpeg;
}

QString Folder::path(const QString &name) const
{
    return folder.filePath(name);
}

QString Folder::add(const QString &name, const QByteArray &content)
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

QString Folder::add(const QString &name, const QImage &image, const char *format, int quality)
{
    return add(name, encoded(image, format, quality));
}

int greatestDifference(const QImage &a, const QImage &b)
{
    if (a.size() != b.size())
        return 256;
    const QImage first = a.convertToFormat(QImage::Format_ARGB32);
    const QImage second = b.convertToFormat(QImage::Format_ARGB32);
    int greatest = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const QRgb p = first.pixel(x, y);
            const QRgb q = second.pixel(x, y);
            greatest = qMax(greatest, qAbs(qRed(p) - qRed(q)));
            greatest = qMax(greatest, qAbs(qGreen(p) - qGreen(q)));
            greatest = qMax(greatest, qAbs(qBlue(p) - qBlue(q)));
            greatest = qMax(greatest, qAbs(qAlpha(p) - qAlpha(q)));
        }
    }
    return greatest;
}

} // namespace testpictures
