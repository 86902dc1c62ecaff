// The property surface of the input box, but for the properties that are the message itself.

#include "drawabletextarea_p.h"

#include "text/fuzzy.h"

template <typename Value, typename Argument>
void DrawableTextArea::store(Value &member, const Value &value, void (DrawableTextArea::*changed)(Argument))
{
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)(value);
}

QString DrawableTextArea::untrimmedContent() const
{
    return d->untrimmedContent;
}

QValidator *DrawableTextArea::validator() const
{
    return d->validator;
}

void DrawableTextArea::setValidator(QValidator *validator)
{
    if (d->validator == validator)
        return;
    d->validator = validator;
    Q_EMIT validatorChanged(validator);
}

QJSValue DrawableTextArea::aiteNameFunction() const
{
    return d->aiteNameFunction;
}

void DrawableTextArea::setAiteNameFunction(const QJSValue &aiteNameFunction)
{
    if (d->aiteNameFunction.strictlyEquals(aiteNameFunction))
        return;
    d->aiteNameFunction = aiteNameFunction;
    Q_EMIT aiteNameFunctionChanged(aiteNameFunction);
}

bool DrawableTextArea::spellcheckEnabled() const
{
    return d->spellcheckEnabled;
}

void DrawableTextArea::setSpellcheckEnabled(bool spellcheckEnabled)
{
    if (d->spellcheckEnabled == spellcheckEnabled)
        return;
    d->spellcheckEnabled = spellcheckEnabled;
    if (spellcheckEnabled)
        d->spellingTimer.start();
    update();
    Q_EMIT spellcheckEnabledChanged(spellcheckEnabled);
}

// ---- the visible part

void DrawableTextArea::setVisualReal(double &member, double value, void (DrawableTextArea::*changed)(double))
{
    if (isFuzzyEqual(member, value))
        return;
    member = value;
    if (isComponentComplete()) {
        markOverlays();
        update();
    }
    Q_EMIT(this->*changed)(value);
}

void DrawableTextArea::setVisualPosition(int &member, int value, void (DrawableTextArea::*changed)(int))
{
    if (member == value)
        return;
    member = value;
    if (isComponentComplete()) {
        markOverlays();
        update();
    }
    Q_EMIT(this->*changed)(value);
}

double DrawableTextArea::visualX() const
{
    return d->visualX;
}

void DrawableTextArea::setVisualX(double visualX)
{
    setVisualReal(d->visualX, visualX, &DrawableTextArea::visualXChanged);
}

double DrawableTextArea::visualY() const
{
    return d->visualY;
}

void DrawableTextArea::setVisualY(double visualY)
{
    setVisualReal(d->visualY, visualY, &DrawableTextArea::visualYChanged);
}

double DrawableTextArea::visualWidth() const
{
    return d->visualWidth;
}

void DrawableTextArea::setVisualWidth(double visualWidth)
{
    setVisualReal(d->visualWidth, visualWidth, &DrawableTextArea::visualWidthChanged);
}

double DrawableTextArea::visualHeight() const
{
    return d->visualHeight;
}

void DrawableTextArea::setVisualHeight(double visualHeight)
{
    setVisualReal(d->visualHeight, visualHeight, &DrawableTextArea::visualHeightChanged);
}

int DrawableTextArea::visualFrom() const
{
    return d->visualFrom;
}

void DrawableTextArea::setVisualFrom(int visualFrom)
{
    setVisualPosition(d->visualFrom, visualFrom, &DrawableTextArea::visualFromChanged);
}

int DrawableTextArea::visualTo() const
{
    return d->visualTo;
}

void DrawableTextArea::setVisualTo(int visualTo)
{
    setVisualPosition(d->visualTo, visualTo, &DrawableTextArea::visualToChanged);
}

// ---- stored and notified

int DrawableTextArea::maxCharacterCount() const
{
    return d->maxCharacterCount;
}

void DrawableTextArea::setMaxCharacterCount(int maxCharacterCount)
{
    store(d->maxCharacterCount, maxCharacterCount, &DrawableTextArea::maxCharacterCountChanged);
}

int DrawableTextArea::maxContinuousReturn() const
{
    return d->maxContinuousReturn;
}

void DrawableTextArea::setMaxContinuousReturn(int maxContinuousReturn)
{
    store(d->maxContinuousReturn, maxContinuousReturn, &DrawableTextArea::maxContinuousReturnChanged);
}

bool DrawableTextArea::aiteEnabled() const
{
    return d->aiteEnabled;
}

void DrawableTextArea::setAiteEnabled(bool aiteEnabled)
{
    store(d->aiteEnabled, aiteEnabled, &DrawableTextArea::aiteEnabledChanged);
}

bool DrawableTextArea::hashTagEnabled() const
{
    return d->hashTagEnabled;
}

void DrawableTextArea::setHashTagEnabled(bool hashTagEnabled)
{
    store(d->hashTagEnabled, hashTagEnabled, &DrawableTextArea::hashTagEnabledChanged);
}

bool DrawableTextArea::dropEnabled() const
{
    return d->dropEnabled;
}

void DrawableTextArea::setDropEnabled(bool dropEnabled)
{
    store(d->dropEnabled, dropEnabled, &DrawableTextArea::dropEnabledChanged);
}

bool DrawableTextArea::enableTab() const
{
    return d->enableTab;
}

void DrawableTextArea::setEnableTab(bool enableTab)
{
    store(d->enableTab, enableTab, &DrawableTextArea::enableTabChanged);
}

bool DrawableTextArea::upDownKeyEnabled() const
{
    return d->upDownKeyEnabled;
}

void DrawableTextArea::setUpDownKeyEnabled(bool upDownKeyEnabled)
{
    store(d->upDownKeyEnabled, upDownKeyEnabled, &DrawableTextArea::upDownKeyEnabledChanged);
}

int DrawableTextArea::aiteFrom() const
{
    return d->aiteFrom;
}

void DrawableTextArea::setAiteFrom(int aiteFrom)
{
    store(d->aiteFrom, aiteFrom, &DrawableTextArea::aiteFromChanged);
}

int DrawableTextArea::aiteLen() const
{
    return d->aiteLen;
}

void DrawableTextArea::setAiteLen(int aiteLen)
{
    store(d->aiteLen, aiteLen, &DrawableTextArea::aiteLenChanged);
}

int DrawableTextArea::hashTagFrom() const
{
    return d->hashTagFrom;
}

void DrawableTextArea::setHashTagFrom(int hashTagFrom)
{
    store(d->hashTagFrom, hashTagFrom, &DrawableTextArea::hashTagFromChanged);
}

int DrawableTextArea::hashTagLen() const
{
    return d->hashTagLen;
}

void DrawableTextArea::setHashTagLen(int hashTagLen)
{
    store(d->hashTagLen, hashTagLen, &DrawableTextArea::hashTagLenChanged);
}

QColor DrawableTextArea::aiteColor() const
{
    return d->aiteColor;
}

void DrawableTextArea::setAiteColor(const QColor &aiteColor)
{
    store(d->aiteColor, aiteColor, &DrawableTextArea::aiteColorChanged);
}

QString DrawableTextArea::selectedContent() const
{
    return d->selectedContent;
}

void DrawableTextArea::setSelectedContent(const QString &selectedContent)
{
    store(d->selectedContent, selectedContent, &DrawableTextArea::selectedContentChanged);
}

bool DrawableTextArea::needUpdateEmoji() const
{
    return d->needUpdateEmoji;
}

void DrawableTextArea::setNeedUpdateEmoji(bool needUpdateEmoji)
{
    store(d->needUpdateEmoji, needUpdateEmoji, &DrawableTextArea::needUpdateEmojiChanged);
}
