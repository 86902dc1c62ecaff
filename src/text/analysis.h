#pragma once

class DrawableTextPrivate;

/// Spans from blocks that the client gives: inside the text, in a list, or for one paragraph.
namespace drawabletext {

/// With the ellipsis at the left or in the middle, in-band blocks become plain display names in `text` itself
/// and lose their data until the next text is set.
void stripBlocksForElide(DrawableTextPrivate &state);

/// Spans from the elision, from in-band blocks and from the `userBlocks` list, in layout positions.
void applyUserBlocks(DrawableTextPrivate &state);

/// Adds the blocks of `addTextBlock` to the paragraphs that exist.
void mergeTextBlocks(DrawableTextPrivate &state);

} // namespace drawabletext
