#include "paragraphs.h"

#include "drawabletextprivate.h"
#include "perparagraph.h"
#include "selection.h"

#include <algorithm>

namespace drawabletext {
namespace {

/// The line `text[begin, end)` with its edge spaces made unbreakable. A text of one line that has none of
/// them comes back shared.
QString lineOf(const QString &text, int begin, int end)
{
    const QChar space = QLatin1Char(' ');
    int first = begin;
    while (first < end && text.at(first) == space)
        ++first;
    int behind = end;
    while (behind > first && text.at(behind - 1) == space)
        --behind;

    QString line = text.mid(begin, end - begin);
    if (first == begin && behind == end)
        return line;
    QChar *units = line.data();
    std::fill(units, units + (first - begin), QChar(QChar::Nbsp));
    std::fill(units + (behind - begin), units + (end - begin), QChar(QChar::Nbsp));
    return line;
}

} // namespace

// The lines are those that a `QTextStream` reads, whose own way takes several times as long.
QStringList readLines(const QString &text)
{
    QStringList lines;
    int begin = 0;
    while (begin < text.size()) {
        const int lineFeed = text.indexOf(QLatin1Char('\n'), begin);
        int end = lineFeed == -1 ? text.size() : lineFeed;
        const int next = end + 1;
        // A carriage return belongs to the line end behind it, and the end of the text is one.
        if (end > begin && text.at(end - 1) == QLatin1Char('\r'))
            --end;
        lines.append(lineOf(text, begin, end));
        begin = next;
    }
    return lines;
}

void splitParagraphs(DrawableTextPrivate &state)
{
    state.paragraphs = readLines(state.elide == Qt::ElideNone ? state.text : state.elidedText);
    state.sourceParagraphs = state.paragraphs;
    state.spans = defaultPerParagraph<QVector<TextSpan>>(state.paragraphs.size());
    if (state.textChanged || state.selectionRanges.size() != state.paragraphs.size()) {
        state.textChanged = false;
        resetSelection(state);
    }
}

} // namespace drawabletext
