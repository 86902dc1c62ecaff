#include "elision.h"

#include "drawabletext.h"
#include "elidedemoji.h"
#include "elidedlines.h"
#include "emojitext.h"
#include "linebreaker.h"
#include "liveitems.h"
#include "userblocks.h"

#include <QFontMetricsF>
#include <QReadWriteLock>

namespace drawabletext {
namespace {

/// Announces the elided text on the current thread, from which QML's own connections queue it to the GUI
/// thread. The item can't go while the lock is held, so slots must not delete one.
void notifyElided(DrawableTextPrivate &state)
{
    const QReadLocker locker(liveitems::lock());
    if (liveitems::isItemAlive(state.itemId))
        Q_EMIT state.item->elidedTextChanged(state.elidedText);
    else
        state.abandon();
}

/// Elides the two halves apart, each towards the middle.
QString elideMiddle(const DrawableTextPrivate &state, const QString &line, const QStringList &emojis,
                    double area)
{
    const QFontMetricsF metrics(state.layoutFont);
    const int half = line.size() / 2;
    const double halfWidth = area * 0.5;
    const QString tail = restoreEmojiFromEnd(
        metrics.elidedText(line.right(half), Qt::ElideLeft, boundedForText(state.elideTextWidth + halfWidth)),
        emojis);
    const QString head = restoreEmojiFromStart(
        metrics.elidedText(line.left(line.size() - half), Qt::ElideRight, boundedForText(area - halfWidth)),
        emojis);
    // The ellipsis that was put in is Qt's. Only an `elideText` that is the same is joined into one.
    if (head.endsWith(state.elideText) && tail.startsWith(state.elideText))
        return head + tail.midRef(state.elideText.size());
    return head + tail;
}

QString elideSingleLine(DrawableTextPrivate &state)
{
    const QChar lineEnd = QLatin1Char('\n');
    const QChar space = QLatin1Char(' ');
    QString line = QString(state.text).replace(lineEnd, space);
    const QStringList emojis = collapseForElide(line);
    state.hasEmoji = state.hasEmoji || !emojis.isEmpty();

    const QFontMetricsF metrics(state.layoutFont);
    const double area = state.textAreaWidth() - state.textIndent;
    if (area >= metrics.horizontalAdvance(line)) {
        state.text.replace(lineEnd, space);
        return state.text;
    }
    switch (state.elide) {
    case Qt::ElideLeft:
        return restoreEmojiFromEnd(metrics.elidedText(line, Qt::ElideLeft, boundedForText(area)), emojis);
    case Qt::ElideRight:
        return restoreEmojiFromStart(metrics.elidedText(line, Qt::ElideRight, boundedForText(area)), emojis);
    case Qt::ElideMiddle:
    case Qt::ElideNone:
        break;
    }
    return elideMiddle(state, line, emojis, area);
}

} // namespace

void computeElidedText(DrawableTextPrivate &state)
{
    if (state.elide == Qt::ElideNone || state.maximumLineCount == -1) {
        state.elidedText = state.text;
    } else {
        if (state.elide == Qt::ElideRight) {
            // The pass before may have expanded blocks or dropped line ends.
            state.text = state.rawText;
            state.elidedSpans = expandInBandBlocks(state.text, LineEnds::BecomeSpaces);
        }
        state.elidedText = state.maximumLineCount >= 2 ? elideLines(state) : elideSingleLine(state);
    }
    notifyElided(state);
}

} // namespace drawabletext
