#include "textreference.h"

#include <QDebug>
#include <QFontMetricsF>

namespace {

/// The width of `text` alone on an endless line.
double plainWidth(const QString &text, const QFont &font, double tabWidth)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setTabStopDistance(tabWidth);
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (!line.isValid())
        return 0.0;
    line.setLineWidth(1e6);
    layout.endLayout();
    return line.cursorToX(text.size());
}

} // namespace

TextReference::TextReference(const DrawableTextPrivate *state)
    : state(state)
{}

QTextLine TextReference::lineAt(int paragraph, int position) const
{
    return state->layouts.at(paragraph)->lineForTextPosition(position);
}

QRectF TextReference::cell(int paragraph, int position) const
{
    const QTextLayout *layout = state->layouts.at(paragraph);
    const QTextLine line = lineAt(paragraph, position);
    const QString before = layout->text().mid(line.textStart(), position - line.textStart());
    const double x = layout->position().x() + plainWidth(before, state->layoutFont, state->tabWidth);
    const double y = layout->position().y() + line.y();

    double width = 0.0;
    if (position < layout->text().size()) {
        const QChar character = layout->text().at(position);
        if (character == QLatin1Char('\t'))
            width = before.isEmpty() ? state->tabWidth : state->tabWidth / 2;
        else
            width = QFontMetricsF(state->layoutFont).horizontalAdvance(character);
    }
    return QRectF(x, y, width, line.height());
}

QPointF TextReference::leftHalf(int paragraph, int position) const
{
    const QRectF rect = cell(paragraph, position);
    return QPointF(rect.x() + rect.width() * 0.25, rect.center().y());
}

QPointF TextReference::rightHalf(int paragraph, int position) const
{
    const QRectF rect = cell(paragraph, position);
    return QPointF(rect.x() + rect.width() * 0.75, rect.center().y());
}

QPointF TextReference::center(int paragraph, int position) const
{
    return cell(paragraph, position).center();
}

QVector<QRectF> TextReference::selectionRects(int firstParagraph, int firstPosition, int lastParagraph,
                                              int lastPosition) const
{
    const QRectF first = cell(firstParagraph, firstPosition);
    const QRectF last = cell(lastParagraph, lastPosition);
    const int firstLine = lineAt(firstParagraph, firstPosition).lineNumber();
    const int lastLine = lineAt(lastParagraph, lastPosition).lineNumber();
    if (firstParagraph == lastParagraph && firstLine == lastLine)
        return {QRectF(first.topLeft(), last.bottomRight())};

    QVector<QRectF> rects;
    double bottom = 0.0; // of the rectangle before
    for (int paragraph = firstParagraph; paragraph <= lastParagraph; ++paragraph) {
        const QTextLayout *layout = state->layouts.at(paragraph);
        for (int index = 0; index < layout->lineCount(); ++index) {
            const QTextLine line = layout->lineAt(index);
            const double left = layout->position().x();
            if (paragraph == firstParagraph && index < firstLine)
                continue;
            if (paragraph == lastParagraph && index > lastLine)
                continue;
            if (paragraph == firstParagraph && index == firstLine) {
                // The first line is selected up to the width of the line, even where its text is shorter.
                rects.append(QRectF(first.x(), first.y(), left + line.width() - first.x(), line.height()));
                bottom = first.y() + line.height();
                continue;
            }
            QRectF rect = line.rect().translated(layout->position());
            if (paragraph == lastParagraph && index == lastLine) {
                rect = QRectF(left, last.y(), last.right() - left, last.height());
                const QString text = layout->text().mid(line.textStart(), line.textLength());
                if (firstParagraph != lastParagraph && text == QLatin1String("\n"))
                    rect.setWidth(state->emptySelectionWidth);
            } else if (qFuzzyIsNull(rect.width())) {
                rect.setWidth(state->emptySelectionWidth);
            }
            const double height = qMax(line.height(), rect.height());
            rects.append(QRectF(rect.x(), bottom, rect.width(), height));
            bottom += height;
        }
    }
    return rects;
}

QString rectDifference(const QVector<QRectF> &actual, const QVector<QRectF> &expected)
{
    const auto isClose = [](double a, double b) { return qAbs(a - b) < 0.02; };
    bool same = actual.size() == expected.size();
    for (int i = 0; same && i < actual.size(); ++i) {
        const QRectF &a = actual.at(i);
        const QRectF &e = expected.at(i);
        same = isClose(a.left(), e.left()) && isClose(a.top(), e.top()) && isClose(a.width(), e.width()) &&
               isClose(a.height(), e.height());
    }
    QString text;
    if (!same)
        QDebug(&text) << "are" << actual << "expected" << expected;
    return text;
}
