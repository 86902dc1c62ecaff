#pragma once

#include "textspan.h"

#include <QString>
#include <QVector>

class QRegularExpression;

/// In-band user blocks: U+0001, a JSON object with "displayName", "data" and "type", U+0002.
namespace drawabletext {

/// Matches one in-band block and captures its display name.
[[nodiscard]] const QRegularExpression &userBlockPattern();

/// `SpanKind` of a user block type.
[[nodiscard]] int typeToKind(int type);

enum class LineEnds { Keep, BecomeSpaces };

/// Replaces the in-band blocks of `text` by their display names and returns their spans, in positions of
/// `text` with each emoji collapsed to one. Invalid blocks are logged and stay in the text. `lineEnds` tells
/// what becomes of line ends inside a display name.
QVector<TextSpan> expandInBandBlocks(QString &text, LineEnds lineEnds);

} // namespace drawabletext

/// `text` with each in-band block replaced by its display name, without any parsing of its JSON.
[[nodiscard]] QString flattenUserBlocks(const QString &text);
