#pragma once

// What the tests of the text's analysis share: the first steps of the pipeline on a bare state.

#include "text/analysis.h"
#include "text/drawabletextprivate.h"
#include "text/emojitext.h"
#include "text/paragraphs.h"
#include "textengine.h"

#include <emoji/emojiparser.h>

#include <algorithm>

using Spans = QVector<TextSpan>;
Q_DECLARE_METATYPE(TextSpan)

namespace textengine {

inline QString invalidBlockLog()
{
    return QStringLiteral("Invalid user block data");
}

/// The definition: parse the text, add up what each emoji loses.
inline int excessByDefinition(const QString &text)
{
    int excess = 0;
    const EmojiParser parser(nullptr);
    for (const QPair<int, int> &emoji : parser.emojiIndexes(text))
        excess += emoji.second - 1;
    return excess;
}

/// A state with what the first steps read.
inline void prepare(DrawableTextPrivate &state, const QString &text)
{
    state.measureFont();
    state.text = text;
    state.rawText = text;
    state.textChanged = true;
}

inline void analyse(DrawableTextPrivate &state, const QString &text)
{
    prepare(state, text);
    drawabletext::splitParagraphs(state);
    drawabletext::applyUserBlocks(state);
    drawabletext::collapseEmoji(state);
}

inline Spans ofKind(const Spans &spans, int kind)
{
    Spans result;
    std::copy_if(spans.begin(), spans.end(), std::back_inserter(result),
                 [kind](const TextSpan &entry) { return entry.kind == kind; });
    return result;
}

} // namespace textengine

#define COMPARE_SPANS(found, expected)                                                                       \
    do {                                                                                                     \
        QCOMPARE(describe(found), describe(expected));                                                       \
        QCOMPARE(found, expected);                                                                           \
    } while (false)
