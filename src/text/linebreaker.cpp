#include "linebreaker.h"

#include <QFont>
#include <QTextLayout>

#include <private/qfixed_p.h>
#include <private/qtextengine_p.h>

namespace drawabletext {
namespace {

/// What 26.6 fixed point holds.
constexpr double fixedPointLimit = INT_MAX / 64;

/// A stretch without a place to break is a long one from this many characters on. Below, looking for its end
/// costs more than it saves.
constexpr int longRun = 2048;

/// By how much a line is overfilled to prove that its run does not fit. More than a glyph hangs over.
constexpr double overfill = 256.0;

bool isBreakableSpace(const QCharAttributes &attributes, QChar character)
{
    return attributes.whiteSpace && character.decompositionTag() != QChar::NoBreak;
}

/// Characters that Qt lays out as items of their own, with a possible break on either side.
bool standsAlone(QChar character)
{
    switch (character.unicode()) {
    case QChar::Tabulation:
    case QChar::LineFeed:
    case QChar::LineSeparator:
    case QChar::ParagraphSeparator:
    case QChar::ObjectReplacementCharacter:
        return true;
    default:
        return false;
    }
}

} // namespace

double boundedForText(double value)
{
    // qBound would pass on what is not a number.
    if (qIsNaN(value))
        return 0.0;
    return qBound(-fixedPointLimit, value, fixedPointLimit);
}

struct LineBreaker::Heights
{
    QFixed ascent;
    QFixed descent;
    QFixed ascentAndLeading;

    void raise(QFixed otherAscent, QFixed otherDescent, QFixed otherLeading)
    {
        ascent = qMax(ascent, otherAscent);
        descent = qMax(descent, otherDescent);
        ascentAndLeading = qMax(ascentAndLeading, otherAscent + otherLeading);
    }
};

LineBreaker::LineBreaker(QTextLayout &layout)
    : layout(layout)
    , option(layout.textOption())
    , anywhereOption(option)
{
    anywhereOption.setWrapMode(QTextOption::WrapAnywhere);
    // With negative spacing the width of a run is no lower bound for that of a longer one.
    mayHaveLongRuns = layout.text().size() >= longRun &&
                      option.wrapMode() == QTextOption::WrapAtWordBoundaryOrAnywhere &&
                      layout.font().letterSpacing() >= 0.0 && layout.font().wordSpacing() >= 0.0;
}

LineBreaker::~LineBreaker() = default;

QTextLine LineBreaker::nextLine()
{
    line = layout.createLine();
    lineIsBroken = false;
    return line;
}

void LineBreaker::setLineWidth(double width)
{
    const double bounded = qMin(boundedForText(width), double(QFIXED_MAX));
    // Breaking again at the same width finds the same break.
    if (lineIsBroken && QFixed::fromReal(bounded) == QFixed::fromReal(line.width()))
        return;
    lineIsBroken = true;
    if (isInLongRun() && breakInsideRun(bounded))
        return;
    line.setLineWidth(bounded);
}

bool LineBreaker::isInLongRun()
{
    if (!mayHaveLongRuns)
        return false;
    const int start = line.textStart();
    if (runEnd <= start)
        findRun(start);
    return runEnd - start >= longRun;
}

void LineBreaker::findRun(int from)
{
    const QString text = layout.text();
    const QCharAttributes *attributes = layout.engine()->attributes();
    runEnd = from + 1;
    if (!attributes)
        return;
    while (runEnd < text.size() && !attributes[runEnd].lineBreak &&
           !isBreakableSpace(attributes[runEnd], text.at(runEnd)) && !standsAlone(text.at(runEnd)))
        ++runEnd;
    if (runEnd - from >= longRun)
        measureRun(from);
}

void LineBreaker::measureRun(int from)
{
    QTextEngine &engine = *layout.engine();
    runFirstItem = engine.findItem(from);
    int lastItem = engine.findItem(runEnd - 1);
    // Qt takes what stands alone behind a word into the same stretch.
    if (runEnd < layout.text().size() && standsAlone(layout.text().at(runEnd)))
        ++lastItem;
    heightsFrom.resize(lastItem - runFirstItem + 1);
    Heights heights;
    for (int i = lastItem; i >= runFirstItem; --i) {
        engine.shape(i); // fonts that stand in for missing glyphs make an item higher
        const QScriptItem &item = engine.layoutData->items.at(i);
        if (item.analysis.flags != QScriptAnalysis::Object)
            heights.raise(item.ascent, item.descent, item.leading);
        heightsFrom[i - runFirstItem] = heights;
    }
}

// Qt looks for a word's end first and breaks inside the word only when it turns out too long, for each of its
// lines anew: quadratic in a word of millions of characters. Here the same break is found by first breaking
// anywhere, once it is proven that the word does not fit.
bool LineBreaker::breakInsideRun(double width)
{
    layout.setTextOption(anywhereOption);
    line.setLineWidth(width + overfill);
    const bool overfull = line.horizontalAdvance() > width && line.textStart() + line.textLength() < runEnd;
    if (overfull) {
        line.setLineWidth(width);
        raiseToRun();
    }
    layout.setTextOption(option);
    return overfull;
}

// A line that Qt broke inside a word is as high as all of the word that was not on a line yet.
void LineBreaker::raiseToRun()
{
    QTextEngine &engine = *layout.engine();
    QScriptLine &scriptLine = engine.lines[line.lineNumber()];
    Heights heights = heightsFrom.at(engine.findItem(line.textStart()) - runFirstItem);
    heights.raise(scriptLine.ascent, scriptLine.descent, scriptLine.leading);
    scriptLine.ascent = heights.ascent;
    scriptLine.descent = heights.descent;
    scriptLine.leading = heights.ascentAndLeading - heights.ascent;
}

} // namespace drawabletext
