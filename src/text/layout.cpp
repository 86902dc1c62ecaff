#include "layout.h"

#include "drawabletextprivate.h"
#include "fuzzy.h"
#include "linebreaker.h"
#include "punctuation.h"
#include "selection.h"

#include <QFontMetricsF>
#include <QTextLayout>

#include <atomic>
#include <memory>

namespace drawabletext {
namespace {

/// What a line may take more than its area, so that a text exactly as wide as the area stays on one line.
constexpr double widthTolerance = 0.1;

/// What the item grows by where the reserved width does not fit beside the last line.
constexpr double reservedLineHeight = 12.0;

/// Lays out the paragraphs of one state, top to bottom.
class ParagraphStack
{
public:
    explicit ParagraphStack(DrawableTextPrivate &state)
        : state(state)
        , metrics(state.layoutFont)
        , areaWidth(state.textAreaWidth())
        , wrapMode(state.maximumLineCount == 1 ? QTextOption::NoWrap : state.wrapMode)
        , keepsPunctuation(state.maximumLineCount == -1)
        , top(state.effectiveTopPadding())
    {}

    /// Adds a layout for paragraph `index`; false once the state is abandoned.
    [[nodiscard]] bool add(int index);
    /// Bottom of the last paragraph.
    [[nodiscard]] double bottom() const { return top; }

private:
    void breakLine(LineBreaker &breaker, const QTextLine &line, double lineWidth, const QString &text,
                   const PunctuationPositions &positions) const;

    DrawableTextPrivate &state;
    const QFontMetricsF metrics;
    const double areaWidth;
    const QTextOption::WrapMode wrapMode;
    const bool keepsPunctuation;
    double top;
    bool firstLine = true;
};

bool ParagraphStack::add(int index)
{
    auto layout = std::make_unique<QTextLayout>();
    prepareLayout(*layout, state, state.paragraphs.at(index), wrapMode);
    layout->setFormats(state.paragraphFormats.value(index));
    const QString text = layout->text();
    const PunctuationPositions positions = {state.closePunctuation.value(index),
                                            state.openPunctuation.value(index)};

    double y = 0.0;
    layout->beginLayout();
    LineBreaker breaker(*layout);
    while (true) {
        if (state.isAbandoned())
            return false;
        QTextLine line = breaker.nextLine();
        if (!line.isValid())
            break;
        line.setLeadingIncluded(false);

        const bool indented = index == 0 && firstLine;
        const double lineX = indented ? state.textIndent : 0.0;
        double lineWidth = areaWidth;
        if (indented)
            lineWidth -= state.textIndent;
        else if (state.wrapMode != QTextOption::NoWrap)
            lineWidth += widthTolerance;

        breakLine(breaker, line, lineWidth, text, positions);
        // The order of the operands makes a width that is not a number lose against the text's own.
        double width = qMin(lineWidth, line.naturalTextWidth());
        breaker.setLineWidth(width);
        line.setPosition(QPointF(boundedForText(lineX), boundedForText(y)));
        y += state.leading + line.height();
        if (indented) {
            width += state.textIndent;
            firstLine = false;
        }
        state.maxLineWidth = qMax(state.maxLineWidth, width);
    }
    layout->endLayout();
    layout->setPosition(QPointF(state.effectiveLeftPadding(), top));
    top += y;
    state.lineCount += layout->lineCount();
    state.layouts.append(layout.release());
    return true;
}

void ParagraphStack::breakLine(LineBreaker &breaker, const QTextLine &line, double lineWidth,
                               const QString &text, const PunctuationPositions &positions) const
{
    breaker.setLineWidth(lineWidth);
    if (!keepsPunctuation)
        return;
    const BrokenLine broken = {line.textStart() + line.textLength() - 1, line.naturalTextWidth()};
    if (const auto width = widthRespectingPunctuation(text, broken, positions, metrics))
        breaker.setLineWidth(*width);
}

/// Moves every line to where the alignment wants it. Centred lines are centred within the widest line, not
/// within the area: the item is only as wide as its text. Right-aligned ones end where the area ends.
void alignLines(const DrawableTextPrivate &state)
{
    const bool centred = state.alignment.testFlag(Qt::AlignHCenter);
    if (!centred && !state.alignment.testFlag(Qt::AlignRight))
        return;
    const double reference = centred ? state.maxLineWidth : state.textAreaWidth();
    const double share = centred ? 0.5 : 1.0;
    for (const QTextLayout *layout : state.layouts) {
        for (int i = 0; i < layout->lineCount(); ++i) {
            QTextLine line = layout->lineAt(i);
            const double x = (reference - line.naturalTextWidth()) * share;
            line.setPosition(QPointF(boundedForText(x), line.y()));
        }
    }
}

double lastLineWidth(const DrawableTextPrivate &state)
{
    const QTextLayout *last = state.layouts.constLast();
    return last->lineAt(last->lineCount() - 1).naturalTextWidth();
}

/// Takes the content size from the laid-out lines, whose last paragraph ends at `bottom`.
void takeSizes(DrawableTextPrivate &state, double bottom)
{
    double extra = state.reserveSpace ? state.xWidth : 0.0;
    if (state.lineCount == 1)
        extra += state.reservedWidth;
    state.contentWidth = state.fixedWidth != -1 ? state.fixedWidth : extra + state.maxLineWidth;

    double minExtra = 0.0;
    if (!isFuzzyEqual(state.multilineMinWidth, -1.0) && state.lineCount > 1 &&
        state.multilineMinWidth > state.contentWidth) {
        minExtra = state.multilineMinWidth - state.contentWidth;
        state.contentWidth = state.multilineMinWidth;
    }

    double bottomExtra = 0.0;
    if (state.lineCount > 1) {
        if (lastLineWidth(state) + state.reservedWidth > minExtra + state.maxLineWidth)
            bottomExtra = reservedLineHeight;
    } else if (state.lineCount == 1) {
        if (lastLineWidth(state) + state.reservedWidth > state.textAreaWidth()) {
            state.contentWidth -= state.reservedWidth;
            bottomExtra = reservedLineHeight;
        }
    }

    state.contentHeight = bottom;
    // A text with a line limit shows nothing below its last line, unless the client is about to lift the
    // limit.
    if (state.willChangeLineMode || state.maximumLineCount == -1)
        state.contentHeight += bottomExtra;
    state.contentHeight += state.effectiveBottomPadding();
    // The left padding is in the position of the layouts and, for the bubbles of the client, not in the
    // width.
    state.contentWidth += state.effectiveRightPadding();
}

} // namespace

void prepareLayout(QTextLayout &layout, const DrawableTextPrivate &state, const QString &text,
                   QTextOption::WrapMode wrapMode)
{
    layout.setFont(state.layoutFont);
    layout.setCacheEnabled(true);
    layout.setText(text.isEmpty() ? QString(QLatin1Char('\n')) : text);

    QTextOption option;
    option.setWrapMode(wrapMode);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(boundedForText(state.tabWidth));
    option.setAlignment(state.alignment);
    layout.setTextOption(option);
}

void layoutParagraphs(DrawableTextPrivate &state)
{
    // Shared by the workers, so that no two states ever have the same number for different layouts.
    static std::atomic<quint64> lastSerial{0};
    state.layoutSerial = ++lastSerial;

    const QVector<QTextLayout *> oldLayouts = std::exchange(state.layouts, {});
    state.lineCount = 0;
    state.maxLineWidth = 0.0;

    ParagraphStack stack(state);
    state.layouts.reserve(state.paragraphs.size());
    for (int i = 0; i < state.paragraphs.size(); ++i) {
        if (!stack.add(i)) {
            qDeleteAll(oldLayouts);
            return;
        }
    }
    alignLines(state);
    takeSizes(state, stack.bottom());
    rebuildSelectionRects(state);
    qDeleteAll(oldLayouts);
    state.textHeight = stack.bottom() - state.effectiveTopPadding();
}

} // namespace drawabletext
