// The item's scene graph: text, emoji picture and, beneath them, the outline of the selection.

#include "drawabletext.h"

#include "selectionnodes.h"

#include <QSGGeometryNode>

#include <private/qquicktextnode_p.h>
#include <private/qtextengine_p.h>

namespace {

/// Lines whose glyphs are made together. A step of a selection drag makes those of the touched lines anew, so
/// few lines keep the step cheap; too few would cost the batching of glyphs.
constexpr int linesPerStretch = 4;

/// What every OpenGL driver of today takes, in pixels.
constexpr int tallestTexture = 4096;

/// The text node colours selected glyphs only together with a valid background. The visible one is drawn
/// beneath by the outline, so this one is as close to nothing as a valid colour gets.
const QColor &hiddenSelectionColor()
{
    static const QColor color(0, 0, 0, 1);
    return color;
}

/// A few lines of one paragraph, and the nodes that show them.
struct Stretch
{
    int paragraph = 0;
    int firstLine = 0;
    int lineCount = 0;
    SelectionRange text; ///< positions of the lines' text
    SelectionRange selection;
    QVector<QSGNode *> nodes; ///< children of the root, in order

    [[nodiscard]] SelectionRange selectedPart(SelectionRange range) const
    {
        if (range.isEmpty() || range.from > text.to || range.to < text.from)
            return {};
        return {qMax(range.from, text.from), qMin(range.to, text.to)};
    }
};

bool operator==(SelectionRange a, SelectionRange b)
{
    return a.from == b.from && a.to == b.to;
}

/// Lays `picture` over `rect`. The picture of a very long message is taller than textures get, and would be
/// shrunk to fit and blurred: it goes in slices.
void addPicture(QQuickTextNode *node, const QRectF &rect, const QImage &picture)
{
    if (picture.height() <= tallestTexture) {
        node->addImage(rect, picture);
        return;
    }
    const double scale = rect.height() / picture.height();
    for (int y = 0; y < picture.height(); y += tallestTexture) {
        const QImage slice = picture.copy(0, y, picture.width(), qMin(tallestTexture, picture.height() - y));
        node->addImage(QRectF(rect.x(), rect.y() + y * scale, rect.width(), slice.height() * scale), slice);
    }
}

/// All that the nodes were made from, except for the selection.
struct Content
{
    quint64 layoutSerial = 0;
    QColor color;
    QColor selectedTextColor;
    bool hasEmojiImage = false;
    qint64 emojiImageKey = 0;
    QRectF rect;
    bool isSmooth = false; ///< the filtering of the emoji picture

    [[nodiscard]] bool operator==(const Content &other) const
    {
        return layoutSerial == other.layoutSerial && color == other.color &&
               selectedTextColor == other.selectedTextColor && hasEmojiImage == other.hasEmojiImage &&
               emojiImageKey == other.emojiImageKey && rect == other.rect && isSmooth == other.isSmooth;
    }
};

/// The root of an item's nodes. Its children are, from bottom to top, the selection, the glyphs of the
/// paragraphs, and the emoji picture.
class TextRootNode : public QQuickTextNode
{
public:
    explicit TextRootNode(QQuickItem *item)
        : QQuickTextNode(item)
        , item(item)
    {}

    void clear(DrawableTextPrivate &state)
    {
        deleteContent();
        stretches.clear();
        // Gone with the content, or with an older root that the scene graph has thrown away.
        state.selectionRootNode = nullptr;
        content = Content();
        isEmpty = true;
    }

    void paint(DrawableTextPrivate &state)
    {
        const Content wanted = contentOf(state);
        // While only the selection moves, nodes of untouched lines and the emoji picture with its texture
        // stay.
        if (isEmpty || !(content == wanted))
            rebuild(state, wanted);
        else
            updateStretches(state);
        updateSelection(state);
        markDirty(QSGNode::DirtyGeometry);
    }

private:
    [[nodiscard]] Content contentOf(const DrawableTextPrivate &state) const
    {
        const QRectF rect = item->boundingRect();
        Content result;
        result.layoutSerial = state.layoutSerial;
        result.color = state.color;
        result.selectedTextColor = state.selectedTextColor;
        result.hasEmojiImage = state.hasEmoji && !state.emojiImage.isNull() && !rect.isEmpty();
        result.emojiImageKey = result.hasEmojiImage ? state.emojiImage.cacheKey() : 0;
        result.rect = result.hasEmojiImage ? rect : QRectF();
        result.isSmooth = item->smooth();
        return result;
    }

    void rebuild(DrawableTextPrivate &state, const Content &wanted)
    {
        clear(state);
        for (int i = 0; i < state.layouts.size(); ++i)
            appendParagraph(state, i);
        if (wanted.hasEmojiImage)
            addPicture(this, wanted.rect, state.emojiImage);
        content = wanted;
        isEmpty = false;
    }

    void appendParagraph(const DrawableTextPrivate &state, int paragraph)
    {
        const QTextLayout *layout = state.layouts.at(paragraph);
        const int lineCount = layout ? layout->lineCount() : 0;
        for (int line = 0; line < lineCount; line += linesPerStretch) {
            Stretch stretch;
            stretch.paragraph = paragraph;
            stretch.firstLine = line;
            stretch.lineCount = qMin(linesPerStretch, lineCount - line);
            const QTextLine last = layout->lineAt(line + stretch.lineCount - 1);
            stretch.text = {layout->lineAt(line).textStart(), last.textStart() + last.textLength() - 1};
            fill(stretch, state, lastChild());
            stretches.append(stretch);
        }
    }

    void updateStretches(const DrawableTextPrivate &state)
    {
        QSGNode *previous = state.selectionRootNode;
        for (Stretch &stretch : stretches) {
            const SelectionRange range = state.selectionRanges.at(stretch.paragraph);
            if (!(stretch.selectedPart(range) == stretch.selection)) {
                qDeleteAll(stretch.nodes);
                fill(stretch, state, previous);
            }
            if (!stretch.nodes.isEmpty())
                previous = stretch.nodes.constLast();
        }
    }

    /// Makes the nodes of `stretch` and puts them behind `previous`, or at the front if that is null.
    void fill(Stretch &stretch, const DrawableTextPrivate &state, QSGNode *previous)
    {
        QTextLayout *layout = state.layouts.at(stretch.paragraph);
        const SelectionRange range = state.selectionRanges.at(stretch.paragraph);
        stretch.selection = stretch.selectedPart(range);
        stretch.nodes.clear();

        QQuickTextNode maker(item);
        // Font engines belong to the thread that made them, and this layout has seen the GUI thread and
        // perhaps a worker. For the same reason none of ours is left behind for the next hit test.
        layout->engine()->resetFontEngineCache();
        maker.addTextLayout(layout->position(), layout, state.color, QQuickText::Normal, QColor(), QColor(),
                            hiddenSelectionColor(), state.selectedTextColor, range.from, range.to,
                            stretch.firstLine, stretch.lineCount);
        layout->engine()->resetFontEngineCache();

        while (QSGNode *node = maker.firstChild()) {
            maker.removeChildNode(node);
            if (previous)
                insertChildNodeAfter(node, previous);
            else
                prependChildNode(node);
            previous = node;
            stretch.nodes.append(node);
        }
    }

    void updateSelection(DrawableTextPrivate &state)
    {
        QSGGeometryNode *selection = drawabletext::buildSelectionNodes(state);
        if (!selection) {
            delete state.selectionRootNode;
            state.selectionRootNode = nullptr;
        } else if (!selection->parent()) {
            prependChildNode(selection);
        }
    }

    QQuickItem *item;
    Content content;
    bool isEmpty = true;
    QVector<Stretch> stretches; ///< from top to bottom
};

} // namespace

// Runs on the render thread, with the GUI thread waiting.
QSGNode *DrawableText::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *)
{
    auto *node = static_cast<TextRootNode *>(oldNode);
    if (!node)
        node = new TextRootNode(this);
    // A state that is still being prepared is not painted.
    if (d->layouts.size() == d->selectionRanges.size())
        node->paint(*d);
    else
        node->clear(*d);
    return node;
}
