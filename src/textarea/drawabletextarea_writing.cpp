// The ways in which a message gets into the document.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "areatext.h"
#include "mentionedges.h"
#include "text/emojitext.h"
#include "text/paragraphs.h"
#include "text/placeholders.h"
#include "text/userblocks.h"

#include <emoji/emojiparser.h>
#include <emoji/placeholderfont.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

const QString userIdKey = QStringLiteral("userId");
const QString nickKey = QStringLiteral("aiteNick");

/// Longest paragraph that is wrapped at words, in characters: a key takes about two milliseconds there.
constexpr int longestWrappedByWords = 5000;

int longestLine(const QString &text)
{
    int longest = 0;
    int start = 0;
    while (start <= text.size()) {
        const int end = text.indexOf(QLatin1Char('\n'), start);
        longest = std::max(longest, (end == -1 ? text.size() : end) - start);
        if (end == -1)
            break;
        start = end + 1;
    }
    return longest;
}

int longestParagraph(const QTextDocument &document)
{
    int longest = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        longest = std::max(longest, block.length() - 1);
    return longest;
}

/// How many line ends there are from `position` on, in steps of `step`.
int returnsFrom(const QTextDocument &document, int position, int step)
{
    const int end = areadocument::length(document);
    int count = 0;
    for (int at = position; at >= 0 && at < end; at += step) {
        if (!areadocument::isLineEnd(document.characterAt(at)))
            break;
        ++count;
    }
    return count;
}

} // namespace

bool DrawableTextArea::hasSelectedText() const
{
    return selectionStart() != selectionEnd();
}

// The selection counts with its emoji in full, so a box may take more than its limit where one is replaced.
// Clients count in the same way before they offer something to insert.
int DrawableTextArea::characterCount() const
{
    return length() - d->selectedContent.size();
}

bool DrawableTextArea::isRefused(const QString &inserted, Replace replace) const
{
    if (!d->validator)
        return false;
    QString text = textDocumentOfItem()->toPlainText();
    int position = cursorPosition();
    if (replace == Replace::Selection && hasSelectedText()) {
        position = selectionStart();
        text.remove(position, selectionEnd() - position);
    }
    text.insert(position, inserted);
    return d->validator->validate(text, position) == QValidator::Invalid;
}

QString DrawableTextArea::limitReturns(const QString &text) const
{
    return d->aiteEnabled ? text : areatext::withLimitedReturns(text, d->maxContinuousReturn);
}

void DrawableTextArea::insertText(const QString &text)
{
    insertText(text, {}, nullptr);
}

void DrawableTextArea::insertText(const QString &text, const QVariantMap &aiteData)
{
    insertText(text, aiteData, nullptr);
}

void DrawableTextArea::insertText(const QString &text, const QVariantMap &aiteData, QTextCursor *givenCursor)
{
    const int limit = d->maxCharacterCount;
    const int current = characterCount();
    if (limit != -1 && current >= limit) {
        Q_EMIT maxCharacterCountReached();
        return;
    }
    areatext::Prepared prepared = areatext::prepared(areatext::normalised(text));
    if (isRefused(prepared.text, Replace::Selection))
        return;

    QTextDocument *document = textDocumentOfItem();
    QTextCursor ownCursor(document);
    // One of no document or of another can't place anything here.
    if (givenCursor && (givenCursor->isNull() || givenCursor->document() != document))
        givenCursor = nullptr;
    QTextCursor &cursor = givenCursor ? *givenCursor : ownCursor;
    takeSelectionAway(cursor);

    if (d->maxContinuousReturn != -1 && !d->aiteEnabled && areadocument::length(*document) > 0) {
        const std::optional<QString> fitting = areatext::fittingReturns(
            prepared.text, d->maxContinuousReturn, returnsFrom(*document, cursor.position() - 1, -1),
            returnsFrom(*document, cursor.position(), 1));
        if (!fitting)
            return;
        prepared.text = *fitting;
    }

    if (!givenCursor) {
        mentionedges::dissolve(*document, cursor.position(), cursor.position());
        cursor.beginEditBlock();
    }
    // A mention that does not fit goes in as plain text.
    const bool fits = limit == -1 || prepared.text.size() + current <= limit;
    const int room = limit == -1 ? prepared.text.size() : std::max(limit - current, 0);
    wrapFor(cursor.block().length() - 1 + std::min(longestLine(prepared.text), room));
    writePrepared(cursor, prepared, room, fits ? mentionFormat(aiteData) : QTextCharFormat());
    if (!givenCursor)
        cursor.endEditBlock();

    markOverlays();
    if (limit != -1 && current + prepared.text.size() >= limit)
        Q_EMIT maxCharacterCountReached();
}

// Spaces are no-break spaces in the document, so a paragraph is one word to the layout, which looks for the
// word's end from each line anew: a paragraph of a million characters would take minutes, at each key. Its
// lines end anywhere then, as they nearly do anyway.
void DrawableTextArea::wrapFor(int paragraphLength)
{
    if (paragraphLength > longestWrappedByWords) {
        if (wrapMode() == QQuickTextEdit::Wrap) {
            d->wrapsAnywhere = true;
            setWrapMode(QQuickTextEdit::WrapAnywhere);
        }
        return;
    }
    // What can be undone may bring a long paragraph back.
    if (d->wrapsAnywhere && !canUndo() && !canRedo() &&
        longestParagraph(*textDocumentOfItem()) <= longestWrappedByWords) {
        d->wrapsAnywhere = false;
        if (wrapMode() == QQuickTextEdit::WrapAnywhere)
            setWrapMode(QQuickTextEdit::Wrap);
    }
}

/// Removes the selection, if there is one, and leaves `cursor` where text is to go in.
void DrawableTextArea::takeSelectionAway(QTextCursor &cursor)
{
    if (!hasSelectedText()) {
        cursor.setPosition(cursorPosition());
        return;
    }
    const int from = selectionStart();
    const int to = selectionEnd();
    mentionedges::dissolve(*textDocumentOfItem(), from, to);
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    // Inside an edit block the base class tells only at its end that nothing is selected any more, and the
    // next insertion would take the selection off its count again.
    noticeLostSelection();
}

/// The format of a new mention; an empty one for no data.
QTextCharFormat DrawableTextArea::mentionFormat(const QVariantMap &aiteData)
{
    QTextCharFormat format;
    if (aiteData.isEmpty())
        return format;
    ++d->aiteSerial;
    format.setProperty(areadocument::MentionProperty, aiteData);
    format.setProperty(areadocument::SerialProperty, uint(d->aiteSerial));
    bool isNumber = false;
    const int userId = aiteData.value(userIdKey).toInt(&isNumber);
    if (isNumber && userId > 0)
        format.setForeground(d->aiteColor);
    return format;
}

/// Inserts at most `room` characters of `prepared`.
void DrawableTextArea::writePrepared(QTextCursor &cursor, const areatext::Prepared &prepared, int room,
                                     const QTextCharFormat &format) const
{
    const QString &text = prepared.text;
    int end = std::min(text.size(), room);
    // Half a character would be no text at all.
    if (end > 0 && end < text.size() && text.at(end - 1).isHighSurrogate() && text.at(end).isLowSurrogate())
        --end;

    QTextCharFormat placeholder = format;
    placeholder.setFontFamilies(emoji::withPlaceholders(font()).families());
    int written = 0;
    const auto writeUpTo = [&](int to) {
        if (to > written)
            cursor.insertText(text.mid(written, to - written), format);
        written = to;
    };
    int emojiIndex = 0;
    for (int i = 0; i < end; ++i) {
        const QChar c = text.at(i);
        if (c != emojiPlaceholder && c != tabPlaceholder)
            continue;
        QTextCharFormat own = placeholder;
        if (c == emojiPlaceholder) {
            const std::optional<areadocument::Emoji> emoji = prepared.emojis.value(emojiIndex++);
            if (!emoji)
                continue; // stood in the text itself
            own.setProperty(areadocument::EmojiProperty, QStringList{emoji->key, emoji->source});
        }
        writeUpTo(i);
        cursor.insertText(c, own);
        written = i + 1;
    }
    writeUpTo(end);
}

void DrawableTextArea::insertAite(const QString &displayText, const QVariantMap &data)
{
    {
        const Silence silence(*this);
        insertText(displayText, data);
        insertText(QStringLiteral(" "));
    }
    report();
}

void DrawableTextArea::insertEmojiByUnicode(const QString &unicode)
{
    if (preeditText().isEmpty())
        insertText(EmojiParser::unicodeToEmoji(unicode));
}

/// Inserts `text` with its mentions, named by the client, as one step of undo. False when the client's
/// function deleted the box.
bool DrawableTextArea::insertWithMentions(const QString &text, const QVector<TextSpan> &mentions)
{
    if (mentions.isEmpty()) {
        insertText(text);
        return true;
    }
    const std::optional<QVector<NamedPiece>> pieces = namedPieces(text, mentions);
    if (!pieces)
        return false;
    insertPieces(*pieces);
    return true;
}

/// `text` cut at its mentions, with their names. All are asked for before the document is touched: the
/// client's function may do with the box what it likes. None when it deleted the box.
std::optional<QVector<DrawableTextArea::NamedPiece>>
DrawableTextArea::namedPieces(const QString &text, const QVector<TextSpan> &mentions)
{
    QVector<NamedPiece> named;
    const QPointer<DrawableTextArea> self(this);
    for (const areatext::Piece &piece : areatext::pieces(text, mentions)) {
        if (!piece.isMention) {
            named.append({piece.text, {}});
            continue;
        }
        QVariantMap mention =
            piece.data.canConvert<QVariantMap>() ? piece.data.toMap() : QVariantMap{{userIdKey, piece.data}};
        const QString name = mentionName(mention, piece.text);
        if (!self)
            return std::nullopt;
        if (name.isEmpty()) {
            named.append({piece.text, {}});
        } else {
            mention.insert(nickKey, name);
            named.append({name, mention});
        }
    }
    return named;
}

void DrawableTextArea::insertPieces(const QVector<NamedPiece> &pieces)
{
    QTextDocument *document = textDocumentOfItem();
    if (!hasSelectedText())
        mentionedges::dissolve(*document, cursorPosition(), cursorPosition());
    QTextCursor cursor(document);
    cursor.setPosition(cursorPosition());
    cursor.beginEditBlock();
    for (const NamedPiece &piece : pieces)
        insertText(piece.text, piece.mention, &cursor);
    cursor.endEditBlock();
}

/// Asks the client for the name under which a mention goes in. A function that is missing or fails gives what
/// calling it gives, as text.
QString DrawableTextArea::mentionName(const QVariantMap &mention, const QString &text)
{
    const QJsonDocument json(QJsonObject::fromVariantMap(mention));
    QJSValue function = d->aiteNameFunction;
    return function.call({QString::fromUtf8(json.toJson(QJsonDocument::Compact)), text}).toString();
}

void DrawableTextArea::clearDocument()
{
    setText(QString());
    // Until the item is complete, the base class keeps a text for later and leaves the document alone.
    if (!isComponentComplete())
        textDocumentOfItem()->clear();
}

void DrawableTextArea::setContent(const QString &content)
{
    const QString limited = limitReturns(content);
    if (limited == this->content())
        return;
    // That the old text is gone is told on its own: while spelling is checked, the new one is read later, and
    // until then nobody shall take the old one for it.
    const QPointer<DrawableTextArea> self(this);
    clearDocument();
    if (!self)
        return;
    {
        const Silence silence(*this);
        if (!replaceContent(areatext::normalised(flattenUserBlocks(limited))))
            return;
    }
    if (d->spellcheckEnabled)
        d->deferredSyncTimer.start();
    else
        report();
    // A restored message is nothing to undo.
    textDocumentOfItem()->clearUndoRedoStacks(QTextDocument::UndoAndRedoStacks);
    Q_EMIT contentChanged(this->content());
}

/// Puts a normalised text, with the waiting user blocks, into the cleared document. False when the client's
/// function deleted the box.
bool DrawableTextArea::replaceContent(const QString &text)
{
    if (!d->aiteEnabled) {
        insertText(text);
        return true;
    }
    const UserTextBlocks blocks = d->userBlocks;
    int next = 0;
    qint64 lineStart = 0;
    QVector<QVector<NamedPiece>> lines;
    for (const QString &line : drawabletext::readLines(text)) {
        const qint64 lineEnd = lineStart + line.size() + 1;
        const drawabletext::EmojiPrefixes prefixes(line);
        QVector<TextSpan> spans;
        while (next < blocks.size() && blocks.at(next).start < lineEnd)
            spans.append(drawabletext::lineSpan(blocks.at(next++), lineStart, prefixes));
        const std::optional<QVector<NamedPiece>> pieces = namedPieces(line, spans);
        if (!pieces)
            return false;
        lines.append(*pieces);
        lineStart = lineEnd;
    }
    // One edit for all lines: at the end of each the base class looks at every paragraph.
    QTextCursor edit(textDocumentOfItem());
    edit.beginEditBlock();
    for (int i = 0; i < lines.size(); ++i) {
        if (i > 0)
            insertText(QStringLiteral("\n"));
        insertPieces(lines.at(i));
    }
    edit.endEditBlock();
    d->userBlocks.clear();
    return true;
}

void DrawableTextArea::setAiteData(const QVariant &aiteData)
{
    const UserTextBlocks blocks = userTextBlocksFrom(aiteData);
    if (blocks == d->aiteBlocks)
        return;
    const QString present = areadocument::read(*textDocumentOfItem()).text;
    clearDocument();
    insertText(present);
    d->aiteBlocks = blocks;
    textDocumentOfItem()->clearUndoRedoStacks(QTextDocument::UndoAndRedoStacks);
    Q_EMIT aiteDataChanged(aiteData);
}

void DrawableTextArea::setUserBlocks(const QVariant &userBlocks)
{
    const UserTextBlocks blocks = userTextBlocksFrom(userBlocks);
    if (blocks == d->userBlocks)
        return;
    d->userBlocks = blocks;
    Q_EMIT userBlocksChanged(userBlocks);
}

QVariant DrawableTextArea::userBlocks() const
{
    return QVariant::fromValue(d->userBlocks);
}
