#pragma once

#include "text/usertextblock.h"

#include <QString>
#include <QStringView>
#include <QTextFormat>
#include <QVariant>

#include <functional>
#include <optional>

class QTextCharFormat;
class QTextDocument;

/// The document of the input box, which does not hold the message as such: spaces are no-break spaces, tabs
/// and emoji placeholders, and a mention is a run of ordinary characters that a serial number in their format
/// ties together.
namespace areadocument {

/// Properties of a character format.
enum Property {
    /// List of two texts on each emoji placeholder: the emoji's key, and its source text.
    EmojiProperty = QTextFormat::UserProperty,
    /// The mention's data, on each of its characters.
    MentionProperty = QTextFormat::UserProperty + 1,
    /// The number that ties the characters of one mention together.
    SerialProperty = QTextFormat::UserProperty + 2
};

/// An emoji that a placeholder stands for.
struct Emoji
{
    QString key;
    QString source;
};

/// Format of the character at `position`, also of a line end. Invalid outside the document.
[[nodiscard]] QTextCharFormat formatAt(const QTextDocument &document, int position);

[[nodiscard]] std::optional<Emoji> emojiOf(const QTextCharFormat &format);
[[nodiscard]] std::optional<uint> serialOf(const QTextCharFormat &format);
[[nodiscard]] std::optional<uint> serialAt(const QTextDocument &document, int position);

/// Number of characters, without the one that ends every document.
[[nodiscard]] int length(const QTextDocument &document);

/// What a character format says about its characters.
struct Style
{
    std::optional<Emoji> emoji; ///< set on emoji placeholders
    std::optional<uint> serial;
    QVariantMap mention; ///< data of the mention, where there is a serial
};

/// Characters of one format, as they stand in the document. Line ends are U+2029 and U+2028 there.
struct Run
{
    int position = 0;
    QStringView text; ///< valid until the document changes
    const Style &style;

    /// The run as it would be sent, but for the stand-ins of spaces and tabs.
    [[nodiscard]] QString source() const;
    void appendSource(QString &to) const;
};
[[nodiscard]] bool isLineEnd(QChar c);

/// Calls `visitor` for the runs of the characters from `from` to `to`, the latter excluded. It must not
/// change the document.
void visitRuns(const QTextDocument &document, int from, int to,
               const std::function<void(const Run &)> &visitor);

/// What the document says.
struct Message
{
    QString text;          ///< as it would be sent, blanks at the edges included
    UserTextBlocks blocks; ///< its mentions, without the line ends inside them
};
[[nodiscard]] Message read(const QTextDocument &document);

/// The data of each mention, once, in the order in which they stand.
[[nodiscard]] QVariantList mentions(const QTextDocument &document);

/// The emoji of the document, the last one first, each source once, as maps with "unicode" and "emoji".
[[nodiscard]] QVariantList latestEmojis(const QTextDocument &document);

/// Source text of the characters from `from` to `to`, the latter excluded; spaces stay as they stand.
[[nodiscard]] QString sourceText(const QTextDocument &document, int from, int to);

/// `text` with plain spaces and tabs in the place of their stand-ins.
[[nodiscard]] QString withPlainSpaces(QString text);

} // namespace areadocument
