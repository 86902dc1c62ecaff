#include "pipeline.h"

#include "analysis.h"
#include "charformats.h"
#include "drawabletext.h"
#include "elision.h"
#include "emojioverlay.h"
#include "emojitext.h"
#include "highlights.h"
#include "layout.h"
#include "liveitems.h"
#include "paragraphs.h"
#include "punctuation.h"
#include "userblocks.h"

#include <QReadWriteLock>

namespace drawabletext {
namespace {

struct Step
{
    void (*run)(DrawableTextPrivate &);
    int gate; ///< dirty bit that opens the step; 0 runs it every time
};

// The order is part of the behaviour: paragraphs start their spans afresh at every pass while highlights are
// matched only when asked for, so a mere change of colour loses the highlights until the text changes again.
constexpr Step steps[] = {
    {stripBlocksForElide, 0},
    {buildCharFormats, DirtyCharFormats},
    {computeElidedText, DirtyElide},
    {splitParagraphs, 0},
    {applyUserBlocks, 0},
    {collapseEmoji, 0},
    {scanClosePunctuation, DirtyPunctuation},
    {matchHighlights, DirtyHighlight},
    {mergeTextBlocks, 0},
    {buildParagraphFormats, DirtyParagraphFormats},
    {layoutParagraphs, 0},
};
constexpr Step emojiImageStep = {renderEmojiImage, DirtyEmojiImage};

void runStep(const Step &step, DrawableTextPrivate &state)
{
    if (step.gate != 0 && (state.dirtyFlags & step.gate) == 0)
        return;
    state.dirtyFlags &= ~step.gate;
    step.run(state);
}

void deliver(DrawableTextPrivate &snapshot)
{
    const QReadLocker locker(liveitems::lock());
    if (!liveitems::isItemAlive(snapshot.itemId)) {
        snapshot.abandon();
        return;
    }
    snapshot.finished.storeRelease(1);
    QMetaObject::invokeMethod(snapshot.item, "updateData", Qt::QueuedConnection,
                              Q_ARG(DrawableTextPrivate *, &snapshot));
}

} // namespace

void runSteps(DrawableTextPrivate &state)
{
    for (const Step &step : steps)
        runStep(step, state);
}

void runEmojiImageStep(DrawableTextPrivate &state)
{
    runStep(emojiImageStep, state);
}

void layOutSnapshot(const QSharedPointer<DrawableTextPrivate> &snapshot)
{
    runSteps(*snapshot);
    if (!snapshot->isAbandoned())
        runEmojiImageStep(*snapshot);
    if (!snapshot->isAbandoned())
        deliver(*snapshot);
}

} // namespace drawabletext
