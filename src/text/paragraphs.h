#pragma once

#include <QStringList>

class DrawableTextPrivate;

namespace drawabletext {

/// The lines of `text`, without their ends; the last line end yields no empty line, an empty text no line.
/// Runs of spaces at both edges of a line become no-break spaces one for one, so that a layout keeps them.
[[nodiscard]] QStringList readLines(const QString &text);

/// Splits the text to show into paragraphs and starts their spans afresh. Resets the selection with a new
/// text.
void splitParagraphs(DrawableTextPrivate &state);

} // namespace drawabletext
