#pragma once

// A plain reading of the rules of line layout on bare QTextLayouts, one paragraph behind the other, for
// comparison with what the engine built.

#include "text/drawabletext.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <QTextLine>
#include <QVector>

#include <memory>

namespace layoutreference {

struct Line
{
    int start = 0;
    int length = 0;
    QPointF position;
    double naturalWidth = 0.0;
    double width = 0.0;
    double height = 0.0;
};

struct Result
{
    QVector<QVector<Line>> paragraphs;
    QVector<QPointF> positions;
    int lineCount = 0;
    double maxLineWidth = 0.0;
    double contentWidth = 0.0;
    double contentHeight = 0.0;
    double textHeight = 0.0;
};

inline QTextOption option(const DrawableTextPrivate &state, QTextOption::WrapMode wrapMode)
{
    QTextOption option;
    option.setWrapMode(wrapMode);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(state.tabWidth);
    option.setAlignment(state.alignment);
    return option;
}

inline bool isClosing(QChar character)
{
    return character.category() == QChar::Punctuation_Close ||
           character.category() == QChar::Punctuation_FinalQuote ||
           character.category() == QChar::Punctuation_Other;
}

/// Closing marks do not begin a line behind an ideograph.
inline void adjustBreak(QTextLine &line, const QString &text, const QFontMetricsF &metrics)
{
    const int last = line.textStart() + line.textLength() - 1;
    const QChar lastCharacter = text.at(last);
    if (!lastCharacter.isPunct() && !lastCharacter.isSpace() && last + 2 < text.size() &&
        isClosing(text.at(last + 2))) {
        if (lastCharacter.unicode() <= 0xFF)
            return;
        const double width = line.naturalTextWidth() - metrics.horizontalAdvance(lastCharacter);
        if (width == 0.0)
            return;
        int run = 1;
        for (int index = last + 3; index < text.size() && text.at(index).isPunct(); ++index)
            ++run;
        if (run <= 10)
            line.setLineWidth(width);
        return;
    }
    if (last + 1 < text.size() && isClosing(text.at(last + 1)))
        line.setLineWidth(metrics.horizontalAdvance(text.at(last + 1)) + line.naturalTextWidth());
}

/// Lays the paragraphs and formats of `state` out, with its properties and in `font`.
inline Result layOut(const DrawableTextPrivate &state, const QFont &font)
{
    const auto side = [&state](double own) { return state.padding != 0.0 ? state.padding : own; };
    const double left = side(state.leftPadding);
    const double topPadding = side(state.topPadding);
    const double right = side(state.rightPadding);
    const double bottom = side(state.bottomPadding);
    const double xWidth = QFontMetricsF(font).horizontalAdvance(QLatin1Char('X'));
    const double area = state.maxWidth - left - right - (state.reserveSpace ? xWidth : 0.0);
    const QFontMetricsF metrics(font);

    Result result;
    double top = topPadding;
    std::vector<std::unique_ptr<QTextLayout>> layouts;
    bool firstLine = true;
    for (int paragraph = 0; paragraph < state.paragraphs.size(); ++paragraph) {
        QString text = state.paragraphs.at(paragraph);
        if (text.isEmpty())
            text = QStringLiteral("\n");
        auto layout = std::make_unique<QTextLayout>();
        layout->setFont(font);
        layout->setText(text);
        layout->setFormats(state.paragraphFormats.value(paragraph));
        layout->setTextOption(
            option(state, state.maximumLineCount == 1 ? QTextOption::NoWrap : state.wrapMode));
        double y = 0.0;
        layout->beginLayout();
        for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
            line.setLeadingIncluded(false);
            const bool isFirst = paragraph == 0 && firstLine;
            double lineX = 0.0;
            double lineWidth = area + (state.wrapMode == QTextOption::NoWrap ? 0.0 : 0.1);
            if (isFirst) {
                lineX = state.textIndent;
                lineWidth = area - state.textIndent;
            }
            line.setLineWidth(lineWidth);
            if (state.maximumLineCount == -1)
                adjustBreak(line, text, metrics);
            double width = qMin(line.naturalTextWidth(), lineWidth);
            line.setLineWidth(width);
            line.setPosition({lineX, y});
            y += state.leading + line.height();
            if (isFirst) {
                width += state.textIndent;
                firstLine = false;
            }
            result.maxLineWidth = qMax(result.maxLineWidth, width);
        }
        layout->endLayout();
        layout->setPosition({left, top});
        result.positions.append(layout->position());
        top += y;
        result.lineCount += layout->lineCount();
        layouts.push_back(std::move(layout));
    }

    for (const auto &layout : layouts) {
        QVector<Line> lines;
        for (int index = 0; index < layout->lineCount(); ++index) {
            const QTextLine line = layout->lineAt(index);
            QPointF position = line.position();
            if (state.alignment.testFlag(Qt::AlignHCenter))
                position.setX((result.maxLineWidth - line.naturalTextWidth()) * 0.5);
            else if (state.alignment.testFlag(Qt::AlignRight))
                position.setX(area - line.naturalTextWidth());
            lines.append({line.textStart(), line.textLength(), position, line.naturalTextWidth(),
                          line.width(), line.height()});
        }
        result.paragraphs.append(lines);
    }

    double extra = state.reserveSpace ? xWidth : 0.0;
    if (result.lineCount == 1)
        extra += state.reservedWidth;
    result.contentWidth = state.fixedWidth != -1 ? state.fixedWidth : extra + result.maxLineWidth;
    double minExtra = 0.0;
    if (!qFuzzyCompare(state.multilineMinWidth, -1.0) && result.lineCount > 1 &&
        state.multilineMinWidth > result.contentWidth) {
        minExtra = state.multilineMinWidth - result.contentWidth;
        result.contentWidth = state.multilineMinWidth;
    }
    double bottomExtra = 0.0;
    if (result.lineCount > 0) {
        const double lastWidth = result.paragraphs.last().last().naturalWidth + state.reservedWidth;
        if (result.lineCount > 1 && lastWidth > minExtra + result.maxLineWidth) {
            bottomExtra = 12.0;
        } else if (result.lineCount == 1 && lastWidth > area) {
            result.contentWidth -= state.reservedWidth;
            bottomExtra = 12.0;
        }
    }
    result.contentHeight = top;
    if (state.willChangeLineMode || state.maximumLineCount == -1)
        result.contentHeight += bottomExtra;
    result.contentHeight += bottom;
    result.contentWidth += right;
    result.textHeight = top - topPadding;
    return result;
}

/// Empty when `state` holds what the rules give, else a sentence about the first difference.
inline QString difference(const DrawableTextPrivate &state, const QFont &font)
{
    const Result expected = layOut(state, font);
    const auto differs = [](const QString &what, double found, double wanted) {
        return QStringLiteral("%1: %2 instead of %3").arg(what).arg(found, 0, 'f', 6).arg(wanted, 0, 'f', 6);
    };
    const auto isSame = [](double a, double b) { return qAbs(a - b) < 1e-6; };
    // A layout holds positions in 64ths.
    const auto isSamePosition = [](double a, double b) { return qAbs(a - b) < 1.0 / 64; };
    if (state.layouts.size() != expected.paragraphs.size())
        return differs(QStringLiteral("layouts"), state.layouts.size(), expected.paragraphs.size());
    for (int paragraph = 0; paragraph < expected.paragraphs.size(); ++paragraph) {
        const QTextLayout &layout = *state.layouts.at(paragraph);
        const QVector<Line> lines = expected.paragraphs.at(paragraph);
        const QString name = QStringLiteral("paragraph %1 ").arg(paragraph);
        if (layout.position() != expected.positions.at(paragraph))
            return differs(name + QStringLiteral("top"), layout.position().y(),
                           expected.positions.at(paragraph).y());
        if (layout.lineCount() != lines.size())
            return differs(name + QStringLiteral("lines"), layout.lineCount(), lines.size());
        for (int index = 0; index < lines.size(); ++index) {
            const QTextLine line = layout.lineAt(index);
            const Line &wanted = lines.at(index);
            const QString at = name + QStringLiteral("line %1 ").arg(index);
            if (line.textStart() != wanted.start)
                return differs(at + QStringLiteral("start"), line.textStart(), wanted.start);
            if (line.textLength() != wanted.length)
                return differs(at + QStringLiteral("length"), line.textLength(), wanted.length);
            if (!isSamePosition(line.position().x(), wanted.position.x()))
                return differs(at + QStringLiteral("x"), line.position().x(), wanted.position.x());
            if (!isSamePosition(line.position().y(), wanted.position.y()))
                return differs(at + QStringLiteral("y"), line.position().y(), wanted.position.y());
            if (!isSame(line.naturalTextWidth(), wanted.naturalWidth))
                return differs(at + QStringLiteral("natural width"), line.naturalTextWidth(),
                               wanted.naturalWidth);
            if (!isSame(line.width(), wanted.width))
                return differs(at + QStringLiteral("width"), line.width(), wanted.width);
            if (!isSame(line.height(), wanted.height))
                return differs(at + QStringLiteral("height"), line.height(), wanted.height);
        }
    }
    if (state.lineCount != expected.lineCount)
        return differs(QStringLiteral("lineCount"), state.lineCount, expected.lineCount);
    if (!isSame(state.maxLineWidth, expected.maxLineWidth))
        return differs(QStringLiteral("maxLineWidth"), state.maxLineWidth, expected.maxLineWidth);
    if (!isSame(state.contentWidth, expected.contentWidth))
        return differs(QStringLiteral("contentWidth"), state.contentWidth, expected.contentWidth);
    if (!isSame(state.contentHeight, expected.contentHeight))
        return differs(QStringLiteral("contentHeight"), state.contentHeight, expected.contentHeight);
    if (!isSame(state.textHeight, expected.textHeight))
        return differs(QStringLiteral("textHeight"), state.textHeight, expected.textHeight);
    return {};
}

/// Characters on each line of a paragraph of `item`.
inline QVector<int> lengths(const DrawableText &item, int paragraph = 0)
{
    QVector<int> result;
    const QTextLayout *layout = item.state()->layouts.at(paragraph);
    for (int index = 0; index < layout->lineCount(); ++index)
        result.append(layout->lineAt(index).textLength());
    return result;
}

/// Width of a text on one line, by a layout as the engine makes it.
inline double widthOf(const DrawableText &item, const QString &text)
{
    QTextLayout layout(text, item.font());
    layout.setTextOption(option(*item.state(), QTextOption::NoWrap));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(1e6);
    layout.endLayout();
    return line.naturalTextWidth();
}

/// How many characters a plain QTextLayout puts on the first line.
inline int plainBreak(const DrawableText &item, const QString &text, double width)
{
    QTextLayout layout(text, item.font());
    layout.setTextOption(option(*item.state(), item.state()->wrapMode));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLineWidth(width);
    layout.endLayout();
    return line.textLength();
}

} // namespace layoutreference
