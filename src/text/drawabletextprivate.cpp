#include "drawabletextprivate.h"

#include "fuzzy.h"
#include "placeholders.h"

#include <emoji/placeholderfont.h>

#include <QFontMetricsF>

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
    layoutFont = emoji::withPlaceholders(font);
    const QFontMetricsF metrics(layoutFont);
    xWidth = metrics.horizontalAdvance(QLatin1Char('X'));
    spaceWidth = metrics.horizontalAdvance(QLatin1Char(' '));
    elideTextWidth = metrics.horizontalAdvance(elideText);
    fontHeight = metrics.height();
    emojiSize = metrics.horizontalAdvance(emojiPlaceholder);
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
