#pragma once

class DrawableTextPrivate;

namespace drawabletext {

enum class DragOutcome {
    Unchanged, ///< what is selected stays
    Collapsed, ///< the pointer is back where it was pressed: nothing is to be selected
    Selected   ///< there is a new selection
};

/// Selects what lies between `pressPosition` and `movePosition`, of an item that is `itemWidth` wide. A press
/// on the far half of a character leaves that character out.
[[nodiscard]] DragOutcome dragSelection(DrawableTextPrivate &state, double itemWidth);

} // namespace drawabletext
