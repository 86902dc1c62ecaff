#include "drawabletext.h"

#include "liveitems.h"
#include "pipeline.h"

#include <QThreadPool>
#include <QtConcurrentRun>

namespace {

/// Further changes to a long text within this time are laid out together.
constexpr int updateDelay = 200; // ms

/// The pointer over each kind of span that answers a click; one map that all items share until they differ.
const QMap<int, Qt::CursorShape> &defaultSpanCursors()
{
    static const QMap<int, Qt::CursorShape> cursors = {{SpanAite, Qt::PointingHandCursor},
                                                       {SpanPlainAite, Qt::PointingHandCursor},
                                                       {SpanOstrelId, Qt::PointingHandCursor},
                                                       {SpanLink, Qt::PointingHandCursor},
                                                       {SpanTextBlock, Qt::PointingHandCursor}};
    return cursors;
}

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
    d->spanCursors = defaultSpanCursors();
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
        if (updateTimer)
            updateTimer->stop();
        if (immediate)
            threadUpdateTimeout();
        else
            startUpdateTimer();
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

// Of thousands of messages hardly one is long, and a timer costs as much memory as a short message.
void DrawableText::startUpdateTimer()
{
    if (!updateTimer) {
        updateTimer = std::make_unique<QTimer>();
        updateTimer->setInterval(updateDelay);
        updateTimer->setSingleShot(true);
        connect(updateTimer.get(), &QTimer::timeout, this, &DrawableText::threadUpdateTimeout);
    }
    updateTimer->start();
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
