#pragma once

class DrawableTextPrivate;
class QSGGeometryNode;

namespace drawabletext {

/// The nodes of the selection beneath the text: `selectionRootNode` of the state, made if there is none, with
/// one child for each polygon of the outline. Null when no line is selected. Leaves the selection's
/// rectangles as they are drawn. Render thread, while the GUI thread waits.
[[nodiscard]] QSGGeometryNode *buildSelectionNodes(DrawableTextPrivate &state);

} // namespace drawabletext
