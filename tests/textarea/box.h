#pragma once

#include "textarea/areadocument.h"
#include "textarea/drawabletextarea.h"

#include <QInputMethodEvent>
#include <QJSEngine>
#include <QStringList>
#include <QTextCharFormat>
#include <QTextDocument>
#include <QVariantMap>
#include <QVector>

/// An input box for tests, which shows what its document holds. Its font is 20 pixels high, and it is 400
/// wide.
class Box : public DrawableTextArea
{
    Q_OBJECT

public:
    explicit Box(QQuickItem *parent = nullptr);

    [[nodiscard]] QTextDocument *document();
    /// The characters of the document as they are, with "\n" for line ends.
    [[nodiscard]] QString raw();
    /// Format of the character at `position`, by a cursor behind it.
    [[nodiscard]] QTextCharFormat formatAt(int position);
    /// The texts of the mentions in the document, in order, by the serials of their characters.
    [[nodiscard]] QStringList mentions();
    /// The blocks of `aiteData()` and of `untrimmedAiteData()`.
    [[nodiscard]] UserTextBlocks blocks();
    [[nodiscard]] UserTextBlocks untrimmedBlocks();
    /// `blocks()` as "start+length=data" each.
    [[nodiscard]] QStringList blockList();

    /// Types each character of `text` as a key event sent to the item itself.
    void type(const QString &text);
    /// Sends a key event with the text that the key gives.
    void key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString &text = QString());
    void compose(const QString &preedit);
    void commit(const QString &text, int replaceFrom = 0, int replaceLength = 0);

    /// Lets `aiteNameFunction` be the JavaScript function in `source`.
    void setNames(QJSEngine &engine, const QString &source);
    /// ... one that names each mention by its "aiteNick", or by its text.
    void setNames(QJSEngine &engine);
};

namespace fixture {

/// An emoji of each kind.
struct EmojiKind
{
    const char *name;
    QString source;
    QString key;
};
[[nodiscard]] const QVector<EmojiKind> &emojiKinds();

extern const QString grin;   ///< one code point, two units
extern const QString family; ///< four people and three joiners, eleven units

/// The data of a mention.
[[nodiscard]] QVariantMap mention(const QVariant &userId, const QString &nick = QString());

[[nodiscard]] UserTextBlock aiteBlock(int start, int length, const QVariant &userId);

/// What a document says, told character by character with a cursor each: slow, and by the rules alone.
struct Told
{
    QString text;
    UserTextBlocks blocks;
    QVariantList mentions; ///< data of each
    QStringList names;     ///< text of each mention as it stands in the document
};
[[nodiscard]] Told tell(QTextDocument &document);
/// ... of the characters from `from` to `to`, the latter excluded.
[[nodiscard]] QString tellText(QTextDocument &document, int from, int to);

/// Clipboard data of `text` with mentions at (from, to), each of `userId` 1, 2, ... and named by its own
/// text.
[[nodiscard]] QMimeData *mimeWithMentions(const QString &text, const QVector<QPair<int, int>> &mentions);

} // namespace fixture
