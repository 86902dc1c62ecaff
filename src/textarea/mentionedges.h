#pragma once

class QTextDocument;

/// A mention is protected at its edges: what lands inside it dissolves it into plain text.
namespace mentionedges {

/// Where a position stands to mentions; a set.
enum Boundary : int {
    BehindFirst = 1, ///< behind the first character of a mention, or in front of it at the document's start
    RightEdge = 2,   ///< the mention before the position ends there
    Inside = 4,      ///< behind the second character of a mention or a later one, but not at its end
    LeftEdge = 8,    ///< a mention starts there; may come with RightEdge
    DocumentStart = 16,
    DocumentEnd = 32
};

/// The flags of `position`; one outside the document counts as its nearest edge.
[[nodiscard]] int boundaryAt(const QTextDocument &document, int position);

/// Dissolves the mentions that the two positions lie inside: the words stay, what made them a mention goes.
/// Each is one step of undo.
void dissolve(QTextDocument &document, int from, int to);

/// The nearest left edge of a mention before `position`, or the document's start.
[[nodiscard]] int leftEdgeBefore(const QTextDocument &document, int position);
/// The nearest right edge of a mention behind `position`, or the document's end.
[[nodiscard]] int rightEdgeBehind(const QTextDocument &document, int position);

} // namespace mentionedges
