#include "drawabletext.h"

QSGNode *DrawableText::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    return oldNode;
}
