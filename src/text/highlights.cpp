#include "highlights.h"

#include "drawabletextprivate.h"
#include "emojitext.h"

#include <optional>

namespace drawabletext {

// The search runs over the source paragraphs, in which in-band blocks still stand with their JSON, while the
// spans are for the layout text: behind such a block they lie beside the match. Only emoji are allowed for.
void matchHighlights(DrawableTextPrivate &state)
{
    removeSpans(state.spans, SpanHighlight);
    const QStringList keywords = state.highlightText.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (keywords.isEmpty())
        return;

    QVector<bool> finished(keywords.size(), false);
    for (int paragraph = 0; paragraph < state.sourceParagraphs.size(); ++paragraph) {
        const QString &source = state.sourceParagraphs.at(paragraph);
        std::optional<EmojiPrefixes> prefixes;
        for (int index = 0; index < keywords.size(); ++index) {
            const QString &keyword = keywords.at(index);
            int searchFrom = 0;
            while (!finished.at(index)) {
                const int first = source.indexOf(keyword, searchFrom, Qt::CaseInsensitive);
                if (first == -1)
                    break;
                searchFrom = first + keyword.size();
                if (!prefixes)
                    prefixes.emplace(source);
                const int last = searchFrom - 1;
                state.spans[paragraph].append({first - prefixes->excess(first + 1),
                                               last - prefixes->excess(last + 1), QVariant(), SpanHighlight});
                finished[index] = state.onlyHighlightFirstMatchedEnabled;
            }
        }
    }
}

} // namespace drawabletext
