#include "analysis.h"

#include "drawabletextprivate.h"
#include "emojitext.h"
#include "placeholders.h"
#include "userblocks.h"

#include <algorithm>
#include <optional>

namespace drawabletext {
namespace {

/// Takes over what the elision found, up to the end of what it left of the text.
void takeElidedSpans(DrawableTextPrivate &state)
{
    const int length = state.paragraphs.constFirst().size();
    for (TextSpan span : qAsConst(state.elidedSpans)) {
        if (span.to >= length) {
            if (span.from >= length)
                break;
            // One past the end: hit tests beside the ellipsis find the block too.
            span.to = length;
        }
        state.spans.first().append(span);
    }
}

void expandParagraphs(DrawableTextPrivate &state)
{
    for (int paragraph = 0; paragraph < state.paragraphs.size(); ++paragraph) {
        if (!state.paragraphs.at(paragraph).contains(userBlockBegin))
            continue;
        state.spans[paragraph] += expandInBandBlocks(state.paragraphs[paragraph], LineEnds::Keep);
    }
}

void sortByStart(UserTextBlocks &blocks)
{
    const auto startsBefore = [](const UserTextBlock &a, const UserTextBlock &b) {
        return a.start < b.start;
    };
    // A list that comes sorted, as nearly all do, stays shared with its owner.
    if (!std::is_sorted(blocks.cbegin(), blocks.cend(), startsBefore))
        std::stable_sort(blocks.begin(), blocks.end(), startsBefore);
}

/// Where the last paragraph ends for the list of blocks: an ellipsis that the elision put there counts for
/// nothing.
int lengthOfLastParagraph(const DrawableTextPrivate &state)
{
    const QString &paragraph = state.paragraphs.constLast();
    const bool addedEllipsis = state.elide == Qt::ElideRight && paragraph.endsWith(state.elideText) &&
                               !state.text.endsWith(state.elideText);
    return addedEllipsis ? paragraph.size() - 1 : paragraph.size();
}

void applyBlockList(DrawableTextPrivate &state)
{
    sortByStart(state.userBlocks);
    if (state.elide != Qt::ElideNone && state.elide != Qt::ElideRight)
        return;

    auto block = state.userBlocks.cbegin();
    const int last = state.paragraphs.size() - 1;
    qint64 base = 0;
    for (int paragraph = 0; paragraph <= last && block != state.userBlocks.cend(); ++paragraph) {
        const QString &text = state.paragraphs.at(paragraph);
        const qint64 end = base + (paragraph == last ? lengthOfLastParagraph(state) : text.size() + 1);
        std::optional<EmojiPrefixes> prefixes;
        while (block != state.userBlocks.cend() && block->start < end) {
            if (!prefixes)
                prefixes.emplace(text);
            TextSpan span = lineSpan(*block, base, *prefixes);
            if (span.kind == SpanAite && span.data.toInt() <= 0)
                span.kind = SpanPlainAite;
            // A position in the paragraph is put against one in the whole text. Later paragraphs so keep
            // spans that reach behind them, and clients have come to rely on those; a block that does not
            // fit bars all that follow.
            if (span.to > end - 1)
                break;
            state.spans[paragraph].append(span);
            ++block;
        }
        base = end;
    }
}

} // namespace

void stripBlocksForElide(DrawableTextPrivate &state)
{
    removeSpans(state.spans, SpanAite | SpanPlainAite);
    if (state.elide == Qt::ElideLeft || state.elide == Qt::ElideMiddle)
        state.text = flattenUserBlocks(state.text);
}

void applyUserBlocks(DrawableTextPrivate &state)
{
    if (!state.elidedSpans.isEmpty() && state.paragraphs.size() == 1)
        takeElidedSpans(state);
    else if (state.elide == Qt::ElideNone)
        expandParagraphs(state);
    applyBlockList(state);
}

void mergeTextBlocks(DrawableTextPrivate &state)
{
    for (auto blocks = state.textBlocks.cbegin(); blocks != state.textBlocks.cend(); ++blocks) {
        // Scripts may name any paragraph. One that is not there yet waits for a longer text.
        if (blocks.key() >= 0 && blocks.key() < state.paragraphs.size())
            state.spans[blocks.key()] += blocks.value();
    }
}

} // namespace drawabletext
