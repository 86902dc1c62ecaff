#pragma once

#include <QRectF>
#include <QString>
#include <QTypeInfo>

/// One emoji of a paragraph, collapsed to a single placeholder character in the layout text.
struct EmojiRecord
{
    int pos = 0;     ///< position of the placeholder in the paragraph's layout text
    int length = 1;  ///< length of the placeholder there
    QRectF rect;     ///< where the picture is painted, in item coordinates once the overlay was rendered
    QString text;    ///< the emoji as it stood in the text
    QString unicode; ///< key of the picture
};
Q_DECLARE_TYPEINFO(EmojiRecord, Q_MOVABLE_TYPE);
