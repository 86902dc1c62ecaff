#include "drawabletextprivate.h"

#include "fontmeasures.h"
#include "fuzzy.h"

DrawableTextPrivate::DrawableTextPrivate(DrawableText *owner)
    : item(owner)
{
    static const bool registered = [] {
        qRegisterMetaType<DrawableTextPrivate *>("DrawableTextPrivate *");
        registerUserTextBlockTypes();
        return true;
    }();
    Q_UNUSED(registered)
}

DrawableTextPrivate::~DrawableTextPrivate()
{
    qDeleteAll(layouts);
}

QSharedPointer<DrawableTextPrivate> DrawableTextPrivate::snapshot() const
{
    const auto copy = QSharedPointer<DrawableTextPrivate>::create();
    *copy = *this;
    copy->layouts.clear();
    copy->finished.storeRelaxed(0);
    // The nodes belong to what is on screen, and that is still the original.
    copy->selectionRootNode = nullptr;
    return copy;
}

void DrawableTextPrivate::measureFont()
{
    const drawabletext::FontMeasures measures = drawabletext::measureFont(font, elideText);
    font = measures.font;
    layoutFont = measures.layoutFont;
    xWidth = measures.xWidth;
    spaceWidth = measures.spaceWidth;
    elideTextWidth = measures.elideTextWidth;
    fontHeight = measures.height;
    emojiSize = measures.emojiSize;
}

double DrawableTextPrivate::effectiveLeftPadding() const
{
    return isFuzzyZero(padding) ? leftPadding : padding;
}

double DrawableTextPrivate::effectiveTopPadding() const
{
    return isFuzzyZero(padding) ? topPadding : padding;
}

double DrawableTextPrivate::effectiveRightPadding() const
{
    return isFuzzyZero(padding) ? rightPadding : padding;
}

double DrawableTextPrivate::effectiveBottomPadding() const
{
    return isFuzzyZero(padding) ? bottomPadding : padding;
}

double DrawableTextPrivate::textAreaWidth() const
{
    const double area = maxWidth - effectiveLeftPadding() - effectiveRightPadding();
    return reserveSpace ? area - xWidth : area;
}
