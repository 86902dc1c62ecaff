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

#include <private/qtextengine_p.h>

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

/// `font` apart from its copies. What a font resolved to is kept in data that its copies share, is filled in
/// when first asked for, and belongs to the thread that asked.
QFont ownFont(const QFont &font)
{
    QFont own = font;
    // Any setter takes its own copy of the data, but for a value that is already there.
    own.setKerning(!font.kerning());
    own.setKerning(font.kerning());
    own.resolve(font.resolve());
    return own;
}

/// `format` apart from its copies, which share the font that the first of them to be asked makes.
QTextCharFormat ownFormat(const QTextCharFormat &format)
{
    QTextCharFormat own;
    const QMap<int, QVariant> properties = format.properties();
    for (auto it = properties.cbegin(); it != properties.cend(); ++it)
        own.setProperty(it.key(), it.value());
    return own;
}

/// Parts the snapshot's fonts from those of the item, which the GUI thread goes on using.
void takeOwnFonts(DrawableTextPrivate &snapshot)
{
    snapshot.font = ownFont(snapshot.font);
    snapshot.layoutFont = ownFont(snapshot.layoutFont);
    for (QTextCharFormat &format : snapshot.charFormats)
        format = ownFormat(format);
    for (auto &ranges : snapshot.paragraphFormats) {
        for (QTextLayout::FormatRange &range : ranges)
            range.format = ownFormat(range.format);
    }
}

/// Lets go of the font engines of this thread: the layouts go to another one, and this one may end before
/// they do.
void releaseFontEngines(const DrawableTextPrivate &snapshot)
{
    for (const QTextLayout *layout : snapshot.layouts)
        layout->engine()->resetFontEngineCache();
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
    takeOwnFonts(*snapshot);
    runSteps(*snapshot);
    if (!snapshot->isAbandoned())
        runEmojiImageStep(*snapshot);
    releaseFontEngines(*snapshot);
    if (!snapshot->isAbandoned())
        deliver(*snapshot);
}

} // namespace drawabletext
