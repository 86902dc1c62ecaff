#pragma once

#include "texthit.h"

#include <QString>

class DrawableTextPrivate;

/// The text and the mentions that a selection stands for.
namespace drawabletext {

/// Positions `from` to `to` of a paragraph, inclusive, in source form: emoji as they were typed, in-band
/// blocks as their display names. Positions outside the paragraph are cut off.
[[nodiscard]] QString sourceSlice(const DrawableTextPrivate &state, int paragraph, int from, int to);

/// The source text from `start` to `end`, paragraphs joined by line ends. Collects the mentions that lie
/// wholly inside into `aiteInfos`, with positions relative to the first character.
[[nodiscard]] QString takeSelectionText(DrawableTextPrivate &state, const TextHit &start, const TextHit &end);

/// Collects the mentions of the whole text into `aiteInfos`.
void collectAllAites(DrawableTextPrivate &state);

/// `text` with plain spaces and tabs for the characters that stand for them in a layout.
[[nodiscard]] QString withPlainSpaces(QString text);

} // namespace drawabletext
