#pragma once

#include <QQuickTextDocument>
#include <QSyntaxHighlighter>
#include <QTextCharFormat>

/// Colours a plain text editor: words that begin with "@", and the places where a keyword occurs.
///
/// Changing a property changes nothing on screen until a block is edited or `rehighlight()` is called.
class SyntaxHighlighter : public QSyntaxHighlighter
{
    Q_OBJECT
    /// What to search for, in this case. Empty for nothing.
    Q_PROPERTY(QString keyword READ keyword WRITE setKeyword NOTIFY keywordChanged)
    /// Colour of the keyword, as `QColor` reads it. Red while it was never set, though it reads as empty.
    Q_PROPERTY(
        QString foregroundColor READ foregroundColor WRITE setForegroundColor NOTIFY foregroundColorChanged)
    /// Colour behind the keyword, as `QColor` reads it. None while it was never set.
    Q_PROPERTY(
        QString backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY backgroundColorChanged)

public:
    explicit SyntaxHighlighter(QObject *parent = nullptr);

    [[nodiscard]] QString keyword() const { return keywordValue; }
    [[nodiscard]] QString foregroundColor() const { return foregroundValue; }
    [[nodiscard]] QString backgroundColor() const { return backgroundValue; }

public Q_SLOTS:
    void setKeyword(const QString &keyword);
    void setForegroundColor(const QString &foregroundColor);
    void setBackgroundColor(const QString &backgroundColor);
    /// Attaches to the document of a Qt Quick text editor; null detaches.
    void setDocument(QQuickTextDocument *doc);
    /// Parses the whole document afresh and so highlights all of it.
    void rehighlight();

Q_SIGNALS:
    void keywordChanged(const QString &keyword);
    void foregroundColorChanged(const QString &foregroundColor);
    void backgroundColorChanged(const QString &backgroundColor);

protected:
    void highlightBlock(const QString &text) override;

private:
    void highlightMentions(const QString &text);
    void highlightLeadingMention(const QString &text);
    void highlightKeyword(const QString &text);

    QString keywordValue;
    QString foregroundValue;
    QString backgroundValue;
    QTextCharFormat keywordFormat;
    QTextCharFormat mentionFormat;
};
