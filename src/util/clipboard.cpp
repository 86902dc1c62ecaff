#include "clipboard.h"

#include "filterhtml.h"
#include "imutil.h"

#include <QClipboard>
#include <QDebug>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeData>
#include <QStandardPaths>
#include <QTextDocument>
#include <QUrl>

#include <memory>

namespace {

constexpr qint64 largestCopiedPicture = 0x1400000; // 20 MiB
constexpr int longSide = 1280;
constexpr int shortSide = 720;

[[nodiscard]] QClipboard *system()
{
    return QGuiApplication::clipboard();
}

/// What is on the clipboard; nothing at all where the platform answers with no data.
[[nodiscard]] const QMimeData *content()
{
    static const QMimeData nothing;
    const QMimeData *data = system()->mimeData(QClipboard::Clipboard);
    return data ? data : &nothing;
}

void addHtml(QMimeData &mimeData, const QString &key, const QVariant &value)
{
    QTextDocument document;
    document.setHtml(value.toString());
    mimeData.setData(key, document.toHtml(QByteArrayLiteral("utf-8")).toUtf8());
}

void addPicture(QMimeData &mimeData, QImageReader &reader)
{
    const QImage image = reader.read();
    // A null image would still count as one for the program that pastes.
    if (!image.isNull())
        mimeData.setImageData(image);
}

void addShrunkPicture(QMimeData &mimeData, const QString &path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (size.width() <= size.height() && size.height() > longSide)
        reader.setScaledSize(size.scaled(shortSide, longSide, Qt::KeepAspectRatio));
    else if (size.width() > size.height() && size.width() > longSide)
        reader.setScaledSize(size.scaled(longSide, shortSide, Qt::KeepAspectRatio));
    addPicture(mimeData, reader);
}

} // namespace

Clipboard::Clipboard(QObject *parent)
    : QObject(parent)
{}

void Clipboard::clear()
{
    system()->clear(QClipboard::Clipboard);
}

QImage Clipboard::image()
{
    return system()->image(QClipboard::Clipboard);
}

QPixmap Clipboard::pixmap()
{
    return system()->pixmap(QClipboard::Clipboard);
}

void Clipboard::setImage(const QImage &image)
{
    system()->setImage(image, QClipboard::Clipboard);
}

void Clipboard::setImage(const QString &filePath)
{
    setImage(QImage(filePath));
}

void Clipboard::setPixmap(const QPixmap &pixmap)
{
    system()->setPixmap(pixmap, QClipboard::Clipboard);
}

void Clipboard::setText(const QString &text)
{
    system()->setText(text, QClipboard::Clipboard);
}

QString Clipboard::text(const QString &subtype)
{
    QString asked = subtype;
    return system()->text(asked, QClipboard::Clipboard);
}

QString Clipboard::text()
{
    return text(QStringLiteral("plain"));
}

bool Clipboard::ownsClipboard()
{
    return system()->ownsClipboard();
}

bool Clipboard::ownsFindBuffer()
{
    return system()->ownsFindBuffer();
}

bool Clipboard::ownsSelection()
{
    return system()->ownsClipboard();
}

QString Clipboard::mimeDataInfo(const QString &key)
{
    return QString::fromUtf8(content()->data(key));
}

QString Clipboard::mimeData(const QString &type)
{
    return type == QLatin1String("html") ? content()->text() : content()->html();
}

void Clipboard::setMimeData(const QVariantMap &data)
{
    system()->clear(QClipboard::Clipboard);
    auto mimeData = std::make_unique<QMimeData>();
    for (auto entry = data.cbegin(); entry != data.cend(); ++entry) {
        if (entry.key() == QLatin1String("text/html"))
            addHtml(*mimeData, entry.key(), entry.value());
        else if (entry.key() == QLatin1String("image"))
            addShrunkPicture(*mimeData, entry.value().toString());
        else
            mimeData->setData(entry.key(), entry.value().toByteArray());
    }
    system()->setMimeData(mimeData.release(), QClipboard::Clipboard);
}

QString Clipboard::imagePath()
{
    const QPixmap picture = pixmap();
    if (picture.isNull())
        return QStringLiteral("");
    const QString hash = ImUtil().sha1Image(picture.toImage(), 2);
    const QString path = QStringLiteral("%1/clipboard%2.png")
                             .arg(QStandardPaths::writableLocation(QStandardPaths::TempLocation), hash);
    if (!picture.save(path))
        return QStringLiteral("");
    const QLatin1String scheme("file:///");
    return path.contains(scheme) ? path : scheme + path;
}

QString Clipboard::filterHtml(const QString &str)
{
    return clipboard::filterHtml(str);
}

void Clipboard::limitedTextSize(int size)
{
    if (content()->hasText())
        limitedSize = size;
}

QVariant Clipboard::filterContent()
{
    QStringList files;
    const auto urls = content()->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            files.append(url.toString());
    }
    if (files.isEmpty()) {
        const QString picture = imagePath();
        if (!picture.isEmpty())
            files.append(ImUtil().toLocalFile(picture));
    }
    return files;
}

void Clipboard::copyImageToClipboard(const QString &url)
{
    const QString path = ImUtil().toLocalFile(url);
    const QFileInfo file(path);
    if (!file.exists()) {
        qDebug() << "file not exist: " << url;
        return;
    }
    auto mimeData = std::make_unique<QMimeData>();
    if (file.size() <= largestCopiedPicture) {
        QImageReader reader(path);
        addPicture(*mimeData, reader);
    }
    mimeData->setData(QStringLiteral("text/uri-list"), url.toUtf8());
    system()->setMimeData(mimeData.release(), QClipboard::Clipboard);
}

QString Clipboard::filterTextPlain(bool force)
{
    if (!content()->hasText() || (!force && !content()->hasHtml()))
        return QStringLiteral("");
    return content()->text();
}
