#pragma once

#include "textspan.h"

#include <QString>
#include <QVector>

struct UserTextBlock;

/// User blocks: marked stretches of a message, inside its text or in a list beside it.
///
/// An in-band user block is U+0001, a JSON object with "displayName", "data" and "type", and U+0002. The
/// reader sees the display name in its place.
namespace drawabletext {

class EmojiPrefixes;

/// `SpanKind` of a user block type.
[[nodiscard]] int typeToKind(int type);

enum class LineEnds { Keep, BecomeSpaces };

/// Replaces the in-band blocks of `text` by their display names and returns their spans, in positions of
/// `text` with each emoji collapsed to one. Invalid blocks are logged and stay in the text. `lineEnds` tells
/// what becomes of line ends inside a display name.
QVector<TextSpan> expandInBandBlocks(QString &text, LineEnds lineEnds);

/// The span of a listed block in one line of the message, in positions of the line with each emoji collapsed
/// to one. `line` is the line, `lineStart` its position in the message. Positions outside the line stay
/// outside; those beyond an `int` become the least or the greatest.
[[nodiscard]] TextSpan lineSpan(const UserTextBlock &block, qint64 lineStart, const EmojiPrefixes &line);

} // namespace drawabletext

/// `text` with each in-band block replaced by its display name, without any parsing of its JSON: what matches
/// `\x01[^\x02]*"displayName"[^:]*:[^"]*"([^"]*)"[^\x02]*\x02` becomes the first capture. Takes linear time.
[[nodiscard]] QString flattenUserBlocks(const QString &text);
