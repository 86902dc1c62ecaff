// Construction, content model and its synchronising with the document.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "areatext.h"

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
    // What moves the text without changing it moves the emoji.
    const auto moving = {&QQuickTextEdit::contentSizeChanged, &QQuickTextEdit::paddingChanged,
                         &QQuickTextEdit::leftPaddingChanged, &QQuickTextEdit::topPaddingChanged,
                         &QQuickTextEdit::effectiveHorizontalAlignmentChanged};
    for (const auto changed : moving)
        connect(this, changed, this, &DrawableTextArea::relayoutOverlays);
    connect(this, &QQuickTextEdit::verticalAlignmentChanged, this, &DrawableTextArea::relayoutOverlays);
    connect(this, &QQuickItem::widthChanged, this, &DrawableTextArea::relayoutOverlays);
    connect(this, &QQuickItem::heightChanged, this, &DrawableTextArea::relayoutOverlays);
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
    QVector<QPair<int, int>> outdated;
    areadocument::visitRuns(*document, 0, areadocument::length(*document), [&](const areadocument::Run &run) {
        const QStringList present =
            areadocument::formatAt(*document, run.position).fontFamilies().toStringList();
        if (!present.isEmpty() && present != families)
            outdated.append({run.position, run.position + int(run.text.size())});
    });
    relayoutOverlays();
    if (outdated.isEmpty())
        return;
    const Silence silence(*this);
    QTextCursor cursor(document);
    cursor.joinPreviousEditBlock();
    for (const QPair<int, int> &range : qAsConst(outdated)) {
        QTextCharFormat format = areadocument::formatAt(*document, range.first);
        format.setFontFamilies(families);
        cursor.setPosition(range.first);
        cursor.setPosition(range.second, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
    cursor.endEditBlock();
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
