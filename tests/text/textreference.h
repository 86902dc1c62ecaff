#pragma once

#include "text/drawabletextprivate.h"

/// Where characters and selections must lie, computed from a state's finished layouts by other means than the
/// module's own: every width comes from a plain `QTextLayout` of the text before it.
class TextReference
{
public:
    explicit TextReference(const DrawableTextPrivate *state);

    /// The cell of a character, in item coordinates.
    [[nodiscard]] QRectF cell(int paragraph, int position) const;
    /// A point in the left or the right half of a character's cell, at half its height.
    [[nodiscard]] QPointF leftHalf(int paragraph, int position) const;
    [[nodiscard]] QPointF rightHalf(int paragraph, int position) const;
    [[nodiscard]] QPointF center(int paragraph, int position) const;

    /// One rectangle per line of the selection that reaches from one character to another, both inclusive.
    [[nodiscard]] QVector<QRectF> selectionRects(int firstParagraph, int firstPosition, int lastParagraph,
                                                 int lastPosition) const;

private:
    [[nodiscard]] QTextLine lineAt(int paragraph, int position) const;

    const DrawableTextPrivate *state;
};

/// Empty when both lists hold the same rectangles within the precision of font widths, else a sentence.
[[nodiscard]] QString rectDifference(const QVector<QRectF> &actual, const QVector<QRectF> &expected);
