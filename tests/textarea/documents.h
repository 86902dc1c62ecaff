#pragma once

#include <QTextCursor>
#include <QTextDocument>
#include <QVariantMap>
#include <QVector>

#include <memory>

/// Builds documents as the input box holds them, piece by piece.
class DocumentBuilder
{
public:
    DocumentBuilder()
        : document(std::make_unique<QTextDocument>())
        , cursor(document.get())
    {}

    DocumentBuilder &text(const QString &text)
    {
        cursor.insertText(text, QTextCharFormat());
        serials.insert(serials.size(), text.size(), none);
        return *this;
    }

    DocumentBuilder &emoji(const QString &key, const QString &source)
    {
        serials.append(none);
        return emoji(key, source, QTextCharFormat());
    }

    DocumentBuilder &mention(const QString &text, uint serial, const QVariantMap &data)
    {
        cursor.insertText(text, mentionFormat(serial, data));
        serials.insert(serials.size(), text.size(), int(serial));
        return *this;
    }

    DocumentBuilder &mentionEmoji(const QString &key, const QString &source, uint serial,
                                  const QVariantMap &data)
    {
        serials.append(int(serial));
        return emoji(key, source, mentionFormat(serial, data));
    }

    [[nodiscard]] QTextDocument &operator*() { return *document; }

    /// Serial of the character at `position`; `none` without one and outside.
    [[nodiscard]] int serialAt(int position) const { return serials.value(position, none); }
    static constexpr int none = -1;

private:
    static QTextCharFormat mentionFormat(uint serial, const QVariantMap &data)
    {
        QTextCharFormat format;
        format.setProperty(QTextFormat::UserProperty + 1, data);
        format.setProperty(QTextFormat::UserProperty + 2, serial);
        format.setForeground(Qt::blue);
        return format;
    }

    DocumentBuilder &emoji(const QString &key, const QString &source, QTextCharFormat format)
    {
        format.setProperty(QTextFormat::UserProperty, QStringList{key, source});
        cursor.insertText(QString(QChar(0xEEEE)), format);
        return *this;
    }

    QVector<int> serials; ///< of each character
    std::unique_ptr<QTextDocument> document;
    QTextCursor cursor;
};
