#include "textspan.h"

#include <algorithm>

void removeSpans(QVector<QVector<TextSpan>> &spans, int kinds)
{
    const auto isOfKinds = [kinds](const TextSpan &span) { return (span.kind & kinds) != 0; };
    for (int paragraph = 0; paragraph < spans.size(); ++paragraph) {
        // Looked at before written to: a list that has none of them stays shared with the snapshots.
        const QVector<TextSpan> &shared = spans.at(paragraph);
        if (std::none_of(shared.cbegin(), shared.cend(), isOfKinds))
            continue;
        QVector<TextSpan> &own = spans[paragraph];
        own.erase(std::remove_if(own.begin(), own.end(), isOfKinds), own.end());
    }
}
