// The "@" and "#" words in front of the cursor.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "mentionedges.h"

#include <QTextDocument>

#include <algorithm>

namespace {

/// Position of the `sign` that starts the word in front of `position`, or -1. `isBarrier` ends the search.
template <typename Barrier>
int wordStart(const QTextDocument &document, int position, QChar sign, Barrier isBarrier)
{
    for (int i = position - 1; i >= 0; --i) {
        const QChar c = document.characterAt(i);
        if (isBarrier(i) || c.isSpace())
            return -1;
        if (c == sign && (i == 0 || document.characterAt(i - 1).isSpace()))
            return i;
    }
    return -1;
}

} // namespace

void DrawableTextArea::detectAite()
{
    using namespace mentionedges;
    if (!d->aiteEnabled)
        return;
    const QTextDocument &document = *textDocumentOfItem();
    const int position = cursorPosition();
    if (boundaryAt(document, position) & (BehindFirst | RightEdge | Inside)) {
        Q_EMIT aiteDetected(QString(), false);
        return;
    }
    const auto inMention = [&document](int i) {
        return areadocument::serialAt(document, std::max(i - 1, 0)).has_value();
    };
    const int from = wordStart(document, position, d->aiteSign, inMention);
    d->aiteFrom = from;
    d->aiteLen = from == -1 ? 0 : position - from;
    Q_EMIT aiteDetected(from == -1 ? QString() : expandRange(from, d->aiteLen), from != -1);
}

void DrawableTextArea::detectHashTag()
{
    if (!d->hashTagEnabled)
        return;
    const int position = cursorPosition();
    const int from = wordStart(*textDocumentOfItem(), position, d->hashTagSign, [](int) { return false; });
    d->hashTagFrom = from;
    d->hashTagLen = from == -1 ? 0 : position - from;
    Q_EMIT hashTagDetected(from == -1 ? QString() : expandRange(from, d->hashTagLen), from != -1);
}

bool DrawableTextArea::isAiteFound() const
{
    return d->aiteFrom != -1 && d->aiteLen != 0;
}

/// A found "@" word closes the list of tags.
void DrawableTextArea::detect()
{
    detectAite();
    if (isAiteFound())
        Q_EMIT hashTagDetected(QString(), false);
    else
        detectHashTag();
}

// Only moves by a key or the mouse count; where a program puts the cursor, nothing is in progress.
void DrawableTextArea::detectAfterMove()
{
    if (d->scanAiteOnMove)
        detectAite();
    if (d->scanAiteOnMove && isAiteFound())
        Q_EMIT hashTagDetected(QString(), false);
    else if (d->scanTagOnMove && d->hashTagEnabled)
        detectHashTag();
}

QString DrawableTextArea::expandRange(int position, int length) const
{
    return areadocument::sourceText(*textDocumentOfItem(), position, position + length);
}
