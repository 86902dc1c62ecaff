#include "mentionedges.h"

#include "areadocument.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QVector>

#include <algorithm>

namespace mentionedges {
namespace {

using areadocument::serialAt;

void dissolveAt(QTextDocument &document, int position)
{
    const int flags = boundaryAt(document, position);
    const bool inside = (flags & Inside) || ((flags & BehindFirst) && !(flags & DocumentStart));
    if (!inside)
        return;

    // "Before" is the character that the boundary was told from, also where a line starts.
    const int before = std::min(position, areadocument::length(document)) - 1;
    const auto serial = serialAt(document, before);
    int from = before;
    while (from > 0 && serialAt(document, from - 1) == serial)
        --from;
    int to = before + 1;
    while (to < areadocument::length(document) && serialAt(document, to) == serial)
        ++to;

    // Format by format: an emoji keeps what it has of its own.
    struct Part
    {
        int from = 0;
        int to = 0;
    };
    QVector<Part> parts;
    areadocument::visitRuns(document, from, to, [&parts](const areadocument::Run &run) {
        parts.append({run.position, run.position + int(run.text.size())});
    });
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (const Part &part : qAsConst(parts)) {
        QTextCharFormat format = areadocument::formatAt(document, part.from);
        format.clearProperty(areadocument::SerialProperty);
        format.clearProperty(areadocument::MentionProperty);
        format.clearForeground();
        cursor.setPosition(part.from);
        cursor.setPosition(part.to, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
    cursor.endEditBlock();
}

} // namespace

int boundaryAt(const QTextDocument &document, int position)
{
    const int end = areadocument::length(document);
    const int at = std::max(0, std::min(position, end));

    int flags = 0;
    if (at == 0)
        flags |= DocumentStart;
    if (at == end)
        flags |= DocumentEnd;

    // At the start the first character stands in for the one before, as it does for a text cursor.
    const auto before = serialAt(document, at == 0 ? 0 : at - 1);
    const auto after = serialAt(document, at);
    const auto secondBefore = at >= 2 ? serialAt(document, at - 2) : std::nullopt;

    if (before && (at == 0 || secondBefore != before))
        return flags | BehindFirst;
    if (before && (at == end || after != before))
        flags |= RightEdge;
    if (after && before != after)
        flags |= LeftEdge;
    if (!(flags & (RightEdge | LeftEdge)) && before && after == before && secondBefore == before)
        flags |= Inside;
    return flags;
}

void dissolve(QTextDocument &document, int from, int to)
{
    dissolveAt(document, from);
    if (to != from)
        dissolveAt(document, to);
}

int leftEdgeBefore(const QTextDocument &document, int position)
{
    int at = position;
    do
        --at;
    while (at > 0 && !(boundaryAt(document, at) & LeftEdge));
    return std::max(at, 0);
}

int rightEdgeBehind(const QTextDocument &document, int position)
{
    const int end = areadocument::length(document);
    int at = position;
    do
        ++at;
    while (at < end && !(boundaryAt(document, at) & RightEdge));
    return std::min(at, end);
}

} // namespace mentionedges
