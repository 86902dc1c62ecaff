// The setters of the item, by their kind, and the operations beside them.

#include "drawabletext.h"

#include "fuzzy.h"
#include "placeholders.h"
#include "userblocks.h"

#include <emoji/emojiconvert.h>

#include <QFontMetricsF>

#include <utility>

namespace {

// What the setters mark for rebuilding. Bits beyond those of `DirtyFlag` open no step.
constexpr int noMask = 0;
constexpr int emojiImageMask = 0x18;
constexpr int formatsMask = 0x8c;
constexpr int alignmentMask = 0xd9;
constexpr int textMask = 0xefb;
constexpr int everythingMask = 0xeff;

/// Lengths that differ by no more than this are the same to `maxWidth` and to the width of the ellipsis.
constexpr double lengthTolerance = 1e-12;

template <typename Value>
bool isSame(const Value &a, const Value &b)
{
    return a == b;
}

bool isSame(double a, double b)
{
    return isFuzzyEqual(a, b);
}

} // namespace

// Stores and notifies. Nothing is laid out, so the value shows with the next layout.
template <typename Value, typename Argument>
void DrawableText::store(Value &member, const Value &value, void (DrawableText::*changed)(Argument))
{
    if (isSame(member, value))
        return;
    member = value;
    Q_EMIT(this->*changed)(value);
}

template <typename Value, typename Argument>
void DrawableText::storeAndRefresh(Value &member, const Value &value, int mask,
                                   void (DrawableText::*changed)(Argument))
{
    if (isSame(member, value))
        return;
    member = value;
    d->dirtyFlags |= mask;
    refresh(false);
    Q_EMIT(this->*changed)(value);
}

// ---- setters that do more than their kind

void DrawableText::setText(const QString &text)
{
    const QChar space = QLatin1Char(' ');
    const QChar lineEnd = QLatin1Char('\n');
    QString normal = text;
    normal.replace(QChar(QChar::ObjectReplacementCharacter), space)
        .replace(QChar(QChar::Nbsp), space)
        .replace(QLatin1Char('\t'), tabPlaceholder)
        .replace(QLatin1Char('\f'), lineEnd)
        .replace(QLatin1Char('\r'), lineEnd)
        .replace(QChar(QChar::LineSeparator), lineEnd);
    if (d->treatReturnAsSpace)
        normal.replace(lineEnd, space);
    // The stored text has been through the emoji library, and layouts with a line limit rewrite it.
    if (normal == d->text)
        return;
    d->text = EmojiConvert::instance()->toLocalUnicode(normal);
    d->rawText = d->text;
    d->textChanged = true;
    d->dirtyFlags |= textMask;
    refresh(false);
    Q_EMIT textChanged(d->text);
}

void DrawableText::setFont(const QFont &font)
{
    if (d->font == font)
        return;
    d->font = font;
    d->measureFont();
    d->dirtyFlags |= emojiImageMask;
    refresh(false);
    Q_EMIT fontChanged(font);
}

void DrawableText::setElideText(const QString &elideText)
{
    if (d->elideText == elideText)
        return;
    d->elideText = elideText;
    const double width = QFontMetricsF(d->layoutFont).horizontalAdvance(elideText);
    if (qAbs(width - d->elideTextWidth) > lengthTolerance)
        d->elideTextWidth = width;
    d->dirtyFlags |= textMask;
    refresh(false);
    Q_EMIT elideTextChanged(elideText);
}

void DrawableText::setMaxWidth(double maxWidth)
{
    // Not a number becomes 0 too: it compares false with everything.
    const double limit = maxWidth > 0.0 ? maxWidth : 0.0;
    const double old = d->maxWidth;
    if (qAbs(old - limit) <= lengthTolerance)
        return;
    d->maxWidth = limit;
    // A shrinking width that still holds the text costs nothing.
    const bool stillFits = old > limit && d->contentWidth <= limit;
    if (!stillFits) {
        d->dirtyFlags |= textMask;
        refresh(false);
    }
    Q_EMIT maxWidthChanged(limit);
}

void DrawableText::setUserBlocks(const QVariant &userBlocks)
{
    const UserTextBlocks blocks = userTextBlocksFrom(userBlocks);
    if (blocks.isSharedWith(d->userBlocks) || blocks == d->userBlocks)
        return;
    d->userBlocks = blocks;
    d->dirtyFlags |= textMask;
    refresh(false);
    Q_EMIT userBlocksChanged(userBlocks);
}

void DrawableText::setWrapMode(WrapMode wrapMode)
{
    if (this->wrapMode() == wrapMode)
        return;
    d->wrapMode = static_cast<QTextOption::WrapMode>(wrapMode);
    Q_EMIT wrapModeChanged(wrapMode);
}

void DrawableText::setTextCursorShape(Qt::CursorShape textCursorShape)
{
    d->spanCursors.insert(SpanText, textCursorShape);
    // Notified even when unchanged: clients rely on it to set the pointer again.
    Q_EMIT textCursorShapeChanged(textCursorShape);
}

void DrawableText::setPreviewSize(const QSizeF &previewSize)
{
    if (isFuzzyEqual(previewSizeValue, previewSize))
        return;
    previewSizeValue = previewSize;
    Q_EMIT previewSizeChanged(previewSize);
}

void DrawableText::addTextBlock(int from, int to, QVariant data, int paragraphIndex)
{
    d->textBlocks[paragraphIndex].append({from, to, std::move(data), SpanTextBlock});
    d->dirtyFlags |= formatsMask;
    refresh(false);
}

QString DrawableText::plainText()
{
    return flattenUserBlocks(d->text)
        .replace(QChar(QChar::Nbsp), QLatin1Char(' '))
        .replace(tabPlaceholder, QLatin1Char('\t'))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'))
        .replace(QChar(QChar::LineSeparator), QLatin1Char('\n'));
}

// ---- setters that lay the text out anew

void DrawableText::setColor(const QColor &color)
{
    storeAndRefresh(d->color, color, emojiImageMask, &DrawableText::colorChanged);
}

void DrawableText::setLinkColor(const QColor &linkColor)
{
    storeAndRefresh(d->linkColor, linkColor, formatsMask, &DrawableText::linkColorChanged);
}

void DrawableText::setAiteColor(const QColor &aiteColor)
{
    storeAndRefresh(d->aiteColor, aiteColor, formatsMask, &DrawableText::aiteColorChanged);
}

void DrawableText::setTextBlockColor(const QColor &textBlockColor)
{
    storeAndRefresh(d->textBlockColor, textBlockColor, formatsMask, &DrawableText::textBlockColorChanged);
}

void DrawableText::setBubbleColor(const QColor &bubbleColor)
{
    storeAndRefresh(d->bubbleColor, bubbleColor, formatsMask, &DrawableText::bubbleColorChanged);
}

void DrawableText::setHighlightColor(const QColor &highlightColor)
{
    storeAndRefresh(d->highlightColor, highlightColor, everythingMask, &DrawableText::highlightColorChanged);
}

void DrawableText::setHighlightBgColor(const QColor &highlightBgColor)
{
    storeAndRefresh(d->highlightBgColor, highlightBgColor, formatsMask,
                    &DrawableText::highlightBgColorChanged);
}

void DrawableText::setSelectionColor(const QColor &selectionColor)
{
    storeAndRefresh(d->selectionColor, selectionColor, noMask, &DrawableText::selectionColorChanged);
}

void DrawableText::setElide(Qt::TextElideMode elide)
{
    storeAndRefresh(d->elide, elide, textMask, &DrawableText::elideChanged);
}

void DrawableText::setAlignment(Qt::Alignment alignment)
{
    storeAndRefresh(d->alignment, alignment, alignmentMask, &DrawableText::alignmentChanged);
}

void DrawableText::setMaximumLineCount(int maximumLineCount)
{
    storeAndRefresh(d->maximumLineCount, maximumLineCount, textMask, &DrawableText::maximumLineCountChanged);
}

void DrawableText::setReservedWidth(int reservedWidth)
{
    storeAndRefresh(d->reservedWidth, reservedWidth, textMask, &DrawableText::reservedWidthChanged);
}

void DrawableText::setTextIndent(double textIndent)
{
    storeAndRefresh(d->textIndent, textIndent, textMask, &DrawableText::textIndentChanged);
}

void DrawableText::setHighlightText(const QString &highlightText)
{
    storeAndRefresh(d->highlightText, highlightText, textMask, &DrawableText::highlightTextChanged);
}

void DrawableText::setUserBlockBold(bool userBlockBold)
{
    storeAndRefresh(d->userBlockBold, userBlockBold, emojiImageMask, &DrawableText::userBlockBoldChanged);
}

void DrawableText::setReserveSpace(bool reserveSpace)
{
    storeAndRefresh(d->reserveSpace, reserveSpace, noMask, &DrawableText::reserveSpaceChanged);
}

// ---- setters that only store

void DrawableText::setEmailColor(const QColor &emailColor)
{
    store(d->emailColor, emailColor, &DrawableText::emailColorChanged);
}

void DrawableText::setPhoneColor(const QColor &phoneColor)
{
    store(d->phoneColor, phoneColor, &DrawableText::phoneColorChanged);
}

void DrawableText::setSharpColor(const QColor &sharpColor)
{
    store(d->sharpColor, sharpColor, &DrawableText::sharpColorChanged);
}

void DrawableText::setSelectedTextColor(const QColor &selectedTextColor)
{
    store(d->selectedTextColor, selectedTextColor, &DrawableText::selectedTextColorChanged);
}

void DrawableText::setElidedText(const QString &elidedText)
{
    store(d->elidedText, elidedText, &DrawableText::elidedTextChanged);
}

void DrawableText::setLineCount(int lineCount)
{
    store(d->lineCount, lineCount, &DrawableText::lineCountChanged);
}

void DrawableText::setFixedWidth(int fixedWidth)
{
    store(d->fixedWidth, fixedWidth, &DrawableText::fixedWidthChanged);
}

void DrawableText::setMultilineMinWidth(double multilineMinWidth)
{
    store(d->multilineMinWidth, multilineMinWidth, &DrawableText::multilineMinWidthChanged);
}

void DrawableText::setLeading(double leading)
{
    store(d->leading, leading, &DrawableText::leadingChanged);
}

void DrawableText::setTabWidth(double tabWidth)
{
    store(d->tabWidth, tabWidth, &DrawableText::tabWidthChanged);
}

void DrawableText::setPadding(double padding)
{
    store(d->padding, padding, &DrawableText::paddingChanged);
}

void DrawableText::setLeftPadding(double leftPadding)
{
    store(d->leftPadding, leftPadding, &DrawableText::leftPaddingChanged);
}

void DrawableText::setTopPadding(double topPadding)
{
    store(d->topPadding, topPadding, &DrawableText::topPaddingChanged);
}

void DrawableText::setRightPadding(double rightPadding)
{
    store(d->rightPadding, rightPadding, &DrawableText::rightPaddingChanged);
}

void DrawableText::setBottomPadding(double bottomPadding)
{
    store(d->bottomPadding, bottomPadding, &DrawableText::bottomPaddingChanged);
}

void DrawableText::setTextHeight(double textHeight)
{
    store(d->textHeight, textHeight, &DrawableText::textHeightChanged);
}

void DrawableText::setSelectionCornerRadius(double selectionCornerRadius)
{
    store(d->selectionCornerRadius, selectionCornerRadius, &DrawableText::selectionCornerRadiusChanged);
}

void DrawableText::setOnlyHighlightFirstMatchedEnabled(bool onlyHighlightFirstMatchedEnabled)
{
    store(d->onlyHighlightFirstMatchedEnabled, onlyHighlightFirstMatchedEnabled,
          &DrawableText::onlyHighlightFirstMatchedEnabledChanged);
}

void DrawableText::setWillChangeLineMode(bool willChangeLineMode)
{
    store(d->willChangeLineMode, willChangeLineMode, &DrawableText::willChangeLineModeChanged);
}

void DrawableText::setTreatReturnAsSpace(bool treatReturnAsSpace)
{
    store(d->treatReturnAsSpace, treatReturnAsSpace, &DrawableText::treatReturnAsSpaceChanged);
}

void DrawableText::setEmojiEnabled(bool emojiEnabled)
{
    store(d->emojiEnabled, emojiEnabled, &DrawableText::emojiEnabledChanged);
}

void DrawableText::setLinkEnabled(bool linkEnabled)
{
    store(d->linkEnabled, linkEnabled, &DrawableText::linkEnabledChanged);
}

void DrawableText::setAiteEnabled(bool aiteEnabled)
{
    store(d->aiteEnabled, aiteEnabled, &DrawableText::aiteEnabledChanged);
}

void DrawableText::setHashTagEnabled(bool hashTagEnabled)
{
    store(d->hashTagEnabled, hashTagEnabled, &DrawableText::hashTagEnabledChanged);
}

void DrawableText::setMouseEnabled(bool mouseEnabled)
{
    store(d->mouseEnabled, mouseEnabled, &DrawableText::mouseEnabledChanged);
}

void DrawableText::setSelectByMouse(bool selectByMouse)
{
    store(d->selectByMouse, selectByMouse, &DrawableText::selectByMouseChanged);
}

void DrawableText::setDragEnabled(bool dragEnabled)
{
    store(d->dragEnabled, dragEnabled, &DrawableText::dragEnabledChanged);
}

void DrawableText::setDoubleClickEnabled(bool doubleClickEnabled)
{
    store(d->doubleClickEnabled, doubleClickEnabled, &DrawableText::doubleClickEnabledChanged);
}

void DrawableText::setSelectionStart(int selectionStart)
{
    store(d->selectionStart, selectionStart, &DrawableText::selectionStartChanged);
}

void DrawableText::setSelectionEnd(int selectionEnd)
{
    store(d->selectionEnd, selectionEnd, &DrawableText::selectionEndChanged);
}

void DrawableText::setSelectType(int selectType)
{
    store(d->selectType, selectType, &DrawableText::selectTypeChanged);
}

void DrawableText::setSelectedText(const QString &selectedText)
{
    store(d->selectedText, selectedText, &DrawableText::selectedTextChanged);
}
