#include "drawabletext.h"

#include "liveitems.h"
#include "pipeline.h"

#include <QThreadPool>
#include <QtConcurrentRun>

namespace {

/// Further changes to a long text within this time are laid out together.
constexpr int updateDelay = 200; // ms

} // namespace

DrawableText::DrawableText(QQuickItem *parent)
    : QQuickItem(parent)
    , d(QSharedPointer<DrawableTextPrivate>::create(this))
    , itemId(liveitems::nextId())
{
    liveitems::add(itemId, this);

    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    setFiltersChildMouseEvents(true);
    setFlag(ItemIsFocusScope);
    setFlag(ItemHasContents);
    setAntialiasing(true);

    d->itemId = itemId;
    d->measureFont();
    for (const SpanKind kind : {SpanAite, SpanPlainAite, SpanOstrelId, SpanLink, SpanTextBlock})
        d->spanCursors.insert(kind, Qt::PointingHandCursor);

    updateTimer.setInterval(updateDelay);
    updateTimer.setSingleShot(true);
    connect(&updateTimer, &QTimer::timeout, this, &DrawableText::threadUpdateTimeout, Qt::UniqueConnection);
}

DrawableText::~DrawableText()
{
    // First out of the table: from here on a worker that asks finds the item gone, and one that is about to
    // deliver has been waited for.
    liveitems::remove(itemId);
    if (pending)
        pending->abandon();
}

void DrawableText::componentComplete()
{
    if (isComponentComplete())
        return;
    QQuickItem::componentComplete();
    refresh(true);
}

void DrawableText::refresh(bool immediate)
{
    if (!isComponentComplete() || !(d->maxWidth > 0.0))
        return;

    if (d->text.size() >= drawabletext::workerThreshold && d->maximumLineCount == -1) {
        setImplicitSize(previewSizeValue.width(), previewSizeValue.height());
        setSize(previewSizeValue);
        updateTimer.stop();
        if (immediate)
            threadUpdateTimeout();
        else
            updateTimer.start();
        return;
    }

    // A timer that still runs for an older long text is left to run: it lays out whatever the text is by
    // then.
    drawabletext::runSteps(*d);
    Q_EMIT lineCountChanged(d->lineCount);
    Q_EMIT textHeightChanged(d->textHeight);
    applyContentSize();
    drawabletext::runEmojiImageStep(*d);
    update();
}

void DrawableText::applyContentSize()
{
    const double width = d->maxWidth > d->contentWidth ? d->contentWidth : d->maxWidth;
    setImplicitSize(width, d->contentHeight);
    setSize(QSizeF(width, d->contentHeight));
}

void DrawableText::threadUpdateTimeout()
{
    // An older snapshot's worker goes on to its end; only this reference to it goes.
    pending = d->snapshot();
    QtConcurrent::run(QThreadPool::globalInstance(),
                      [snapshot = pending] { drawabletext::layOutSnapshot(snapshot); });
}

void DrawableText::updateData(DrawableTextPrivate *)
{
    // The newest snapshot is adopted, not necessarily the announced one. Where its worker is still writing,
    // or where an earlier call has adopted it already, the state stays; the newest worker makes an
    // announcement of its own.
    if (pending && pending->finished.loadAcquire() == 1) {
        d = pending;
        pending.reset();
    }
    Q_EMIT lineCountChanged(d->lineCount);
    Q_EMIT textHeightChanged(d->textHeight);
    applyContentSize();
    update();
}
