// The getters of the item.

#include "drawabletext.h"

#include "placeholders.h"

QString DrawableText::text() const
{
    return QString(d->text).replace(tabPlaceholder, QLatin1Char('\t'));
}

QFont DrawableText::font() const
{
    return d->font;
}

QColor DrawableText::color() const
{
    return d->color;
}

QColor DrawableText::linkColor() const
{
    return d->linkColor;
}

QColor DrawableText::emailColor() const
{
    return d->emailColor;
}

QColor DrawableText::phoneColor() const
{
    return d->phoneColor;
}

QColor DrawableText::sharpColor() const
{
    return d->sharpColor;
}

QColor DrawableText::aiteColor() const
{
    return d->aiteColor;
}

QColor DrawableText::textBlockColor() const
{
    return d->textBlockColor;
}

QColor DrawableText::bubbleColor() const
{
    return d->bubbleColor;
}

QColor DrawableText::highlightColor() const
{
    return d->highlightColor;
}

QColor DrawableText::highlightBgColor() const
{
    return d->highlightBgColor;
}

QColor DrawableText::selectionColor() const
{
    return d->selectionColor;
}

QColor DrawableText::selectedTextColor() const
{
    return d->selectedTextColor;
}

Qt::TextElideMode DrawableText::elide() const
{
    return d->elide;
}

QString DrawableText::elideText() const
{
    return d->elideText;
}

QString DrawableText::elidedText() const
{
    return d->elidedText;
}

DrawableText::WrapMode DrawableText::wrapMode() const
{
    return static_cast<WrapMode>(d->wrapMode);
}

Qt::Alignment DrawableText::alignment() const
{
    return d->alignment;
}

int DrawableText::maximumLineCount() const
{
    return d->maximumLineCount;
}

int DrawableText::lineCount() const
{
    return d->lineCount;
}

int DrawableText::reservedWidth() const
{
    return d->reservedWidth;
}

int DrawableText::fixedWidth() const
{
    return d->fixedWidth;
}

double DrawableText::maxWidth() const
{
    return d->maxWidth;
}

double DrawableText::multilineMinWidth() const
{
    return d->multilineMinWidth;
}

double DrawableText::textIndent() const
{
    return d->textIndent;
}

double DrawableText::leading() const
{
    return d->leading;
}

double DrawableText::tabWidth() const
{
    return d->tabWidth;
}

double DrawableText::padding() const
{
    return d->padding;
}

double DrawableText::leftPadding() const
{
    return d->leftPadding;
}

double DrawableText::topPadding() const
{
    return d->topPadding;
}

double DrawableText::rightPadding() const
{
    return d->rightPadding;
}

double DrawableText::bottomPadding() const
{
    return d->bottomPadding;
}

double DrawableText::textHeight() const
{
    return d->textHeight;
}

double DrawableText::selectionCornerRadius() const
{
    return d->selectionCornerRadius;
}

QString DrawableText::highlightText() const
{
    return d->highlightText;
}

bool DrawableText::onlyHighlightFirstMatchedEnabled() const
{
    return d->onlyHighlightFirstMatchedEnabled;
}

QVariant DrawableText::userBlocks() const
{
    return QVariant::fromValue(d->userBlocks);
}

bool DrawableText::userBlockBold() const
{
    return d->userBlockBold;
}

bool DrawableText::reserveSpace() const
{
    return d->reserveSpace;
}

bool DrawableText::willChangeLineMode() const
{
    return d->willChangeLineMode;
}

bool DrawableText::treatReturnAsSpace() const
{
    return d->treatReturnAsSpace;
}

bool DrawableText::emojiEnabled() const
{
    return d->emojiEnabled;
}

bool DrawableText::linkEnabled() const
{
    return d->linkEnabled;
}

bool DrawableText::aiteEnabled() const
{
    return d->aiteEnabled;
}

bool DrawableText::hashTagEnabled() const
{
    return d->hashTagEnabled;
}

bool DrawableText::mouseEnabled() const
{
    return d->mouseEnabled;
}

bool DrawableText::selectByMouse() const
{
    return d->selectByMouse;
}

bool DrawableText::dragEnabled() const
{
    return d->dragEnabled;
}

bool DrawableText::doubleClickEnabled() const
{
    return d->doubleClickEnabled;
}

int DrawableText::selectionStart() const
{
    return d->selectionStart;
}

int DrawableText::selectionEnd() const
{
    return d->selectionEnd;
}

int DrawableText::selectType() const
{
    return d->selectType;
}

QString DrawableText::selectedText() const
{
    return d->selectedText;
}

Qt::CursorShape DrawableText::textCursorShape() const
{
    return d->spanCursors.value(SpanText, Qt::ArrowCursor);
}

QSizeF DrawableText::previewSize() const
{
    return previewSizeValue;
}
