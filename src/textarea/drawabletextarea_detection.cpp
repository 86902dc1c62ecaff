// The "@" and "#" words in front of the cursor.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "mentionedges.h"

#include <QTextBlock>
#include <QTextDocument>

namespace {

/// Position of the `sign` that starts the word in front of `position`, or -1. Words end with their line, so
/// only that is looked at.
int wordStart(const QTextDocument &document, int position, QChar sign)
{
    const QTextBlock line = document.findBlock(position);
    const QString text = line.text();
    for (int i = position - line.position() - 1; i >= 0; --i) {
        if (text.at(i).isSpace())
            return -1;
        if (text.at(i) == sign && (i == 0 || text.at(i - 1).isSpace()))
            return line.position() + i;
    }
    return -1;
}

/// Whether a character between the two positions belongs to a mention, the latter excluded.
bool hasMention(const QTextDocument &document, int from, int to)
{
    bool found = false;
    areadocument::visitRuns(document, from, to, [&found](const areadocument::Run &run) {
        found = found || run.style.serial.has_value();
    });
    return found;
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
    int from = wordStart(document, position, d->aiteSign);
    // A mention in the word ends the search, as does one right in front of it.
    if (from != -1 && hasMention(document, from - 1, position))
        from = -1;
    d->aiteFrom = from;
    d->aiteLen = from == -1 ? 0 : position - from;
    Q_EMIT aiteDetected(from == -1 ? QString() : expandRange(from, d->aiteLen), from != -1);
}

void DrawableTextArea::detectHashTag()
{
    if (!d->hashTagEnabled)
        return;
    const int position = cursorPosition();
    const int from = wordStart(*textDocumentOfItem(), position, d->hashTagSign);
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
    noticeLostSelection();
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
