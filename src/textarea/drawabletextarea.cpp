// Construction, content model and its synchronising with the document.

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

#include <QFontMetricsF>
#include <QQuickTextDocument>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

namespace {

constexpr int spellingDelay = 100;     // ms
constexpr int deferredSyncDelay = 300; // ms
constexpr int tabStopSpaces = 4;

} // namespace

DrawableTextArea::DrawableTextArea(QQuickItem *parent)
    : QQuickTextArea(parent)
    , d(new State)
{
    registerUserTextBlockTypes();
    makeTabStop();
    setSelectByMouse(true);
    setAcceptHoverEvents(true);
    acceptDropsAlways();

    QTextDocument *document = textDocumentOfItem();
    connect(document, &QTextDocument::contentsChange, this, &DrawableTextArea::onContentChanging,
            Qt::UniqueConnection);
    connect(document, &QTextDocument::contentsChanged, this, &DrawableTextArea::onContentChanged,
            Qt::UniqueConnection);
    connect(this, &QQuickTextEdit::selectedTextChanged, this, &DrawableTextArea::onSelectonChanged,
            Qt::UniqueConnection);
    connect(this, &QQuickTextEdit::cursorPositionChanged, this, &DrawableTextArea::detectAfterMove);
    connect(this, &QQuickTextEdit::fontChanged, this, &DrawableTextArea::keepPlaceholderFonts);
    connect(this, &QQuickTextEdit::readOnlyChanged, this, &DrawableTextArea::acceptDropsAlways);

    d->spellingTimer.setSingleShot(true);
    d->spellingTimer.setInterval(spellingDelay);
    d->deferredSyncTimer.setSingleShot(true);
    d->deferredSyncTimer.setInterval(deferredSyncDelay);
    connect(&d->deferredSyncTimer, &QTimer::timeout, this, &DrawableTextArea::deferredSync);
}

DrawableTextArea::~DrawableTextArea() = default;

QTextDocument *DrawableTextArea::textDocumentOfItem() const
{
    return const_cast<DrawableTextArea *>(this)->textDocument()->textDocument();
}

void DrawableTextArea::makeTabStop()
{
    QTextDocument *document = textDocumentOfItem();
    QTextOption option = document->defaultTextOption();
    option.setFlags(option.flags() | QTextOption::IncludeTrailingSpaces);
    option.setTabStopDistance(tabStopSpaces * QFontMetricsF(font()).horizontalAdvance(QLatin1Char(' ')));
    document->setDefaultTextOption(option);
}

// Placeholders carry the font families that have blank glyphs for them behind the item's own, and these
// change with the item's font. No step of undo: nothing was edited.
void DrawableTextArea::keepPlaceholderFonts()
{
    QTextDocument *document = textDocumentOfItem();
    const QStringList families = emoji::withPlaceholders(font()).families();
    const bool notifications = d->contentNotifications;
    d->contentNotifications = false;
    QTextCursor cursor(document);
    cursor.joinPreviousEditBlock();
    for (const areadocument::Run &run : areadocument::runs(*document, 0, areadocument::length(*document))) {
        QTextCharFormat format = areadocument::formatAt(*document, run.position);
        if (format.fontFamilies().toStringList().isEmpty() ||
            format.fontFamilies().toStringList() == families)
            continue;
        format.setFontFamilies(families);
        cursor.setPosition(run.position);
        cursor.setPosition(run.position + run.text.size(), QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
    cursor.endEditBlock();
    d->contentNotifications = notifications;
}

// The base class refuses drops for reasons of its own; whether one is taken is `dropEnabled`'s to say.
void DrawableTextArea::acceptDropsAlways()
{
    setFlag(ItemAcceptsDrops, true);
}

// ---- reading the document

void DrawableTextArea::sync()
{
    const areadocument::Message message = areadocument::read(*textDocumentOfItem());
    const bool changed = message.text != d->untrimmedContent || message.blocks != d->aiteBlocks;
    d->aiteBlocks = message.blocks;
    if (!changed)
        return;
    d->untrimmedContent = message.text;
    Q_EMIT contentChanged(content());
}

/// What follows a change of the message.
void DrawableTextArea::report()
{
    sync();
    detectAite();
    detectHashTag();
    Q_EMIT untrimmedContentChanged(d->untrimmedContent);
}

void DrawableTextArea::onContentChanging(int, int charsRemoved, int charsAdded)
{
    if (d->undoPending) {
        d->undoDelta = charsAdded - charsRemoved;
        d->undoPending = false;
    }
    markOverlays();
}

void DrawableTextArea::onContentChanged()
{
    if (d->contentNotifications)
        report();
}

void DrawableTextArea::deferredSync()
{
    if (d->contentNotifications)
        report();
    textDocumentOfItem()->clearUndoRedoStacks(QTextDocument::UndoAndRedoStacks);
}

QString DrawableTextArea::content() const
{
    return areatext::trimmed(d->untrimmedContent).text;
}

QVariant DrawableTextArea::aiteData()
{
    sync();
    UserTextBlocks blocks = d->aiteBlocks;
    const int cut = areatext::trimmed(d->untrimmedContent).leftCut;
    for (UserTextBlock &block : blocks)
        block.start -= cut;
    return QVariant::fromValue(blocks);
}

QVariant DrawableTextArea::untrimmedAiteData()
{
    sync();
    return QVariant::fromValue(d->aiteBlocks);
}

QVariantList DrawableTextArea::aiteList()
{
    return areadocument::mentions(*textDocumentOfItem());
}

QVariantList DrawableTextArea::latestEmojis()
{
    return areadocument::latestEmojis(*textDocumentOfItem());
}

int DrawableTextArea::realCursorPos()
{
    return areadocument::sourceText(*textDocumentOfItem(), 0, cursorPosition()).size();
}

// ---- writing the document

bool DrawableTextArea::hasSelectedText() const
{
    return selectionStart() != selectionEnd();
}

bool DrawableTextArea::takesMore() const
{
    return d->maxCharacterCount == -1 || length() - d->selectedContent.size() < d->maxCharacterCount;
}

bool DrawableTextArea::isRefused(const QString &inserted) const
{
    if (!d->validator)
        return false;
    QString text = textDocumentOfItem()->toPlainText();
    int position = cursorPosition();
    if (hasSelectedText()) {
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
    if (!takesMore()) {
        Q_EMIT maxCharacterCountReached();
        return;
    }
    QTextDocument *document = textDocumentOfItem();
    int current = length() - d->selectedContent.size();
    areatext::Prepared prepared = areatext::prepared(areatext::normalised(text));
    if (isRefused(prepared.text))
        return;

    QTextCursor ownCursor(document);
    QTextCursor &cursor = givenCursor ? *givenCursor : ownCursor;
    if (hasSelectedText()) {
        const int from = selectionStart();
        const int to = selectionEnd();
        mentionedges::dissolve(*document, from, to);
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    } else {
        cursor.setPosition(cursorPosition());
    }

    if (d->maxContinuousReturn != -1 && !d->aiteEnabled && areadocument::length(*document) > 0) {
        const auto isReturn = [document](int position) {
            return position >= 0 && document->characterAt(position) == QChar::ParagraphSeparator;
        };
        int before = 0;
        while (isReturn(cursor.position() - 1 - before))
            ++before;
        int after = 0;
        while (cursor.position() + after < areadocument::length(*document) &&
               isReturn(cursor.position() + after))
            ++after;
        const std::optional<QString> fitting =
            areatext::fittingReturns(prepared.text, d->maxContinuousReturn, before, after);
        if (!fitting)
            return;
        prepared.text = *fitting;
    }

    if (!givenCursor) {
        mentionedges::dissolve(*document, cursor.position(), cursor.position());
        cursor.beginEditBlock();
    }

    // A mention that does not fit goes in as plain text.
    QTextCharFormat plain;
    const bool fits = d->maxCharacterCount == -1 || prepared.text.size() + current <= d->maxCharacterCount;
    if (!aiteData.isEmpty() && fits) {
        ++d->aiteSerial;
        plain.setProperty(areadocument::MentionProperty, aiteData);
        plain.setProperty(areadocument::SerialProperty, uint(d->aiteSerial));
        bool isNumber = false;
        const int userId = aiteData.value(QStringLiteral("userId")).toInt(&isNumber);
        if (isNumber && userId > 0)
            plain.setForeground(d->aiteColor);
    }
    QTextCharFormat placeholder = plain;
    placeholder.setFontFamilies(emoji::withPlaceholders(font()).families());

    int taken = prepared.text.size();
    if (d->maxCharacterCount != -1)
        taken = std::max(std::min(taken, d->maxCharacterCount - current), 0);
    int emojiIndex = 0;
    int from = 0;
    const auto insertPlain = [&](int to) {
        if (to > from)
            cursor.insertText(prepared.text.mid(from, to - from), plain);
        from = to;
    };
    for (int i = 0; i < taken; ++i) {
        const QChar c = prepared.text.at(i);
        if (c == tabPlaceholder) {
            insertPlain(i);
            cursor.insertText(c, placeholder);
            ++from;
        } else if (c == emojiPlaceholder) {
            const std::optional<areadocument::Emoji> emoji = prepared.emojis.value(emojiIndex++);
            if (!emoji)
                continue;
            insertPlain(i);
            QTextCharFormat format = placeholder;
            format.setProperty(areadocument::EmojiProperty, QStringList{emoji->key, emoji->source});
            cursor.insertText(c, format);
            ++from;
        }
    }
    insertPlain(taken);
    current += taken;

    if (!givenCursor)
        cursor.endEditBlock();
    setNeedUpdateEmoji(true);
    d->needUpdateSpelling = true;
    if (d->maxCharacterCount != -1 && current >= d->maxCharacterCount)
        Q_EMIT maxCharacterCountReached();
}

void DrawableTextArea::insertAite(const QString &displayText, const QVariantMap &data)
{
    d->contentNotifications = false;
    insertText(displayText, data);
    insertText(QStringLiteral(" "));
    d->contentNotifications = true;
    report();
}

void DrawableTextArea::insertEmojiByUnicode(const QString &unicode)
{
    if (preeditText().isEmpty())
        insertText(EmojiParser::unicodeToEmoji(unicode));
}

void DrawableTextArea::setContent(const QString &content)
{
    const QString limited = limitReturns(content);
    if (limited == this->content())
        return;
    const QString text = areatext::normalised(flattenUserBlocks(limited));

    d->contentNotifications = false;
    setText(QString());
    if (!d->aiteEnabled) {
        insertText(text);
    } else {
        const UserTextBlocks blocks = d->userBlocks;
        int next = 0;
        qint64 lineStart = 0;
        const QStringList lines = drawabletext::readLines(text);
        for (int i = 0; i < lines.size(); ++i) {
            if (i > 0)
                insertText(QStringLiteral("\n"));
            const QString &line = lines.at(i);
            const qint64 lineEnd = lineStart + line.size() + 1;
            const drawabletext::EmojiPrefixes prefixes(line);
            QVector<TextSpan> spans;
            while (next < blocks.size() && blocks.at(next).start < lineEnd)
                spans.append(drawabletext::lineSpan(blocks.at(next++), lineStart, prefixes));
            insertWithMentions(line, spans);
            lineStart = lineEnd;
        }
        d->userBlocks.clear();
    }
    d->contentNotifications = true;

    if (d->spellcheckEnabled)
        d->deferredSyncTimer.start();
    else
        report();
    // A restored message is nothing to undo.
    textDocumentOfItem()->clearUndoRedoStacks(QTextDocument::UndoAndRedoStacks);
    Q_EMIT contentChanged(this->content());
}

void DrawableTextArea::setAiteData(const QVariant &aiteData)
{
    const UserTextBlocks blocks = userTextBlocksFrom(aiteData);
    if (blocks == d->aiteBlocks)
        return;
    const QString present = d->untrimmedContent;
    setText(QString());
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
