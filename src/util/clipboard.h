#pragma once

#include <QImage>
#include <QObject>
#include <QPixmap>
#include <QVariant>

/// The system's clipboard for scripts. Beyond passing calls on it cleans HTML from other programs, keeps a
/// copied picture as a file and shrinks the pictures that it puts there. GUI thread only.
class Clipboard : public QObject
{
    Q_OBJECT

public:
    explicit Clipboard(QObject *parent = nullptr);

public Q_SLOTS:
    /// Empties the clipboard.
    void clear();
    /// The picture on the clipboard; null if there is none.
    QImage image();
    /// The same as `image()`, ready to be painted.
    QPixmap pixmap();
    /// Replaces what is there by a picture.
    void setImage(const QImage &image);
    /// Replaces what is there by the picture of a file. The path is taken as it stands; of a file that is no
    /// picture, a null one is put there.
    void setImage(const QString &filePath);
    /// Replaces what is there by a picture.
    void setPixmap(const QPixmap &pixmap);
    /// Replaces what is there by plain text.
    void setText(const QString &text);
    /// The text of a subtype, for example "plain" or "html"; "" if there is none.
    QString text(const QString &subtype);
    /// The plain text; "" if there is none.
    QString text();
    /// Whether this program put there what is there.
    bool ownsClipboard();
    /// Whether this program filled the find buffer, where the system has one.
    bool ownsFindBuffer();
    /// The same as `ownsClipboard()`: clients ask this way about the clipboard.
    bool ownsSelection();
    /// The data of a mime type as text, read as UTF-8; "" if there is none.
    QString mimeDataInfo(const QString &key);
    /// The plain text for "html", the HTML for everything else. Callers depend on it this way round.
    QString mimeData(const QString &type);
    /// Replaces the clipboard by the map's entries: "text/html" is brought into Qt's form of HTML, "image" is
    /// the path of a picture, which is shrunk to 1280 by 720 or 720 by 1280 if its longer side is above 1280,
    /// and any other key is a mime type with its bytes.
    void setMimeData(const QVariantMap &data);
    /// Saves the clipboard's picture under a name that depends on its content, so the same picture always has
    /// the same file, and returns the file's URL. "" if there is no picture or it can't be saved.
    QString imagePath();
    /// The text of HTML with "<br/>" for line breaks and "[:name:]" for emoji.
    QString filterHtml(const QString &str);
    /// Takes a size if there is text on the clipboard. Kept for clients that call it; nothing is limited.
    void limitedTextSize(int size);
    /// The list of files on the clipboard: the URLs of local files, or else the path of the clipboard's
    /// picture.
    QVariant filterContent();
    /// Puts a file there: its URL, and its picture unless the file is above 20 MiB.
    void copyImageToClipboard(const QString &url);
    /// The plain twin of rich text; "" for text that is only plain, unless `force`.
    QString filterTextPlain(bool force = false);

private:
    int limitedSize = 0;
};
