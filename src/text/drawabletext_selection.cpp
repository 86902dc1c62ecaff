#include "drawabletext.h"

TextHit DrawableText::hitTest(QPointF, int, bool, bool) const
{
    return {};
}
double DrawableText::lineRightEdge(QPointF, bool) const
{
    return -1.0;
}
QString DrawableText::aiteClipboardData()
{
    return {};
}
void DrawableText::recalculateAllAiteInfos() {}
void DrawableText::deselect() {}
void DrawableText::selectAll() {}
void DrawableText::copy() {}
