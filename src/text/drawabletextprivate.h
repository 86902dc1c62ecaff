#pragma once

#include "emojirecord.h"
#include "texthit.h"
#include "textspan.h"
#include "usertextblock.h"

#include <QAtomicInt>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QMap>
#include <QPointF>
#include <QSharedPointer>
#include <QStringList>
#include <QTextCharFormat>
#include <QTextLayout>
#include <QTextOption>
#include <QVector>

class DrawableText;
class QSGGeometryNode;

/// Bits of `DrawableTextPrivate::dirtyFlags`, each opening one step of the pipeline.
enum DirtyFlag : int {
    DirtyElide = 0x1,
    DirtyPunctuation = 0x2,
    DirtyCharFormats = 0x4,
    DirtyEmojiImage = 0x10,
    DirtyParagraphFormats = 0x80,
    DirtyHighlight = 0x800
};

/// First and last selected position of a paragraph, both inclusive; (-1, -1) where nothing is selected.
struct SelectionRange
{
    int from = -1;
    int to = -1;

    [[nodiscard]] bool isEmpty() const { return from == -1 && to == -1; }
};
Q_DECLARE_TYPEINFO(SelectionRange, Q_PRIMITIVE_TYPE);

/// The direction of a selection drag.
enum class SelectionDirection : int { Backward = 0, Forward = 1, None = 2 };

/// The whole state of one `DrawableText`: what was set, and what the pipeline made of it.
///
/// Plain data, the unit of work of the pipeline. The GUI thread owns the state that an item shows; for a long
/// text a snapshot is handed to a worker, which is then the only one to touch it until the item adopts it.
class DrawableTextPrivate
{
public:
    explicit DrawableTextPrivate(DrawableText *owner = nullptr);
    ~DrawableTextPrivate();
    DrawableTextPrivate(const DrawableTextPrivate &) = delete;

    /// A copy for a worker. The layouts stay with this object, which goes on painting them.
    [[nodiscard]] QSharedPointer<DrawableTextPrivate> snapshot() const;

    /// Takes the measurements that depend on `font` and `elideText`.
    void measureFont();

    /// `padding` where it is set, else the side's own padding: they are not added.
    [[nodiscard]] double effectiveLeftPadding() const;
    [[nodiscard]] double effectiveTopPadding() const;
    [[nodiscard]] double effectiveRightPadding() const;
    [[nodiscard]] double effectiveBottomPadding() const;
    /// The width that lines may take: `maxWidth` less the paddings and the reserved space.
    [[nodiscard]] double textAreaWidth() const;

    /// Sets the mark that nobody wants this snapshot's result. Any thread.
    void abandon() { abandoned.testAndSetOrdered(0, 1); }
    [[nodiscard]] bool isAbandoned() { return abandoned.testAndSetOrdered(1, 1); }

    // ---- the owner
    DrawableText *item = nullptr; ///< only valid under the read lock of the live-item table
    quint64 itemId = 0;

    // ---- properties, under their names in QML
    QString text;
    QFont font;
    QColor color = Qt::black;
    QColor linkColor = Qt::blue;
    QColor emailColor;
    QColor phoneColor;
    QColor sharpColor;
    QColor aiteColor;
    QColor textBlockColor = Qt::blue;
    QColor bubbleColor = Qt::transparent;
    QColor highlightColor = Qt::transparent;
    QColor highlightBgColor = Qt::transparent;
    QColor selectionColor = Qt::blue;
    QColor selectedTextColor = Qt::white;
    Qt::TextElideMode elide = Qt::ElideNone;
    QString elideText = QStringLiteral(u"\u2026");
    QString elidedText;
    QTextOption::WrapMode wrapMode = QTextOption::WrapAtWordBoundaryOrAnywhere;
    Qt::Alignment alignment = Qt::AlignLeft;
    int maximumLineCount = -1;
    int lineCount = 0;
    int reservedWidth = 0;
    int fixedWidth = -1;
    double maxWidth = -1.0;
    double multilineMinWidth = -1.0;
    double textIndent = 0.0;
    double leading = 0.0;
    double tabWidth = 30.0;
    double padding = 0.0;
    double leftPadding = 0.0;
    double topPadding = 0.0;
    double rightPadding = 0.0;
    double bottomPadding = 0.0;
    double textHeight = 0.0;
    double selectionCornerRadius = 2.0;
    QString highlightText;
    bool onlyHighlightFirstMatchedEnabled = false;
    UserTextBlocks userBlocks;
    bool userBlockBold = false;
    bool reserveSpace = false;
    bool willChangeLineMode = false;
    bool treatReturnAsSpace = false;
    bool emojiEnabled = true;
    bool linkEnabled = false;
    bool aiteEnabled = false;
    bool hashTagEnabled = false;
    bool mouseEnabled = false;
    bool selectByMouse = false;
    bool dragEnabled = false;
    bool doubleClickEnabled = true;
    int selectionStart = -1;
    int selectionEnd = -1;
    int selectType = SpanText;
    QString selectedText;

    // ---- pipeline state
    QString rawText;          ///< the text as it was set, before the pipeline rewrote `text`
    bool textChanged = false; ///< set with the text, cleared when the paragraphs are split
    bool hasEmoji = false;    ///< set when an emoji is recognised, never cleared by the pipeline
    int emojiCharLength = 1;  ///< length of an emoji in the layout text
    int emojiCount = 0;       ///< emoji of the current paragraphs
    int dirtyFlags = 0;       ///< set of `DirtyFlag`, and bits that no step reads
    QAtomicInt abandoned;     ///< 1: nobody wants this snapshot's result; never goes back to 0
    QAtomicInt finished;      ///< 1: the worker has written its last word to this snapshot

    // ---- font measurements
    QFont layoutFont; ///< `font`, falling back to blank glyphs for the placeholder characters
    double xWidth = 0.0;
    double spaceWidth = 0.0;
    double elideTextWidth = 0.0;
    double fontHeight = 0.0;
    double emojiSize = 0.0;

    // ---- results of the analysis
    QMap<int, QTextCharFormat> charFormats; ///< by `SpanKind`
    QMap<int, Qt::CursorShape> spanCursors; ///< by `SpanKind`
    QVector<QVector<TextSpan>> spans;       ///< per paragraph
    QStringList paragraphs;                 ///< layout text of each paragraph
    QStringList sourceParagraphs;           ///< each paragraph before user blocks and emoji were rewritten
    QVector<QVector<EmojiRecord>> emojis;   ///< per paragraph
    QVector<QVector<int>> openPunctuation;  ///< per paragraph, positions; always empty lists today
    QVector<QVector<int>> closePunctuation; ///< per paragraph, positions
    QVector<QVector<QTextLayout::FormatRange>> paragraphFormats;
    QMap<int, QVector<TextSpan>> textBlocks; ///< blocks of `addTextBlock` by paragraph
    QVector<TextSpan> elidedSpans;           ///< user block spans that the elision found

    // ---- results of the layout
    QVector<QTextLayout *> layouts; ///< one per paragraph, owned
    quint64 layoutSerial = 0;       ///< tells these layouts from all others that ever were
    double contentWidth = 0.0;      ///< right padding included, left padding not
    double contentHeight = 0.0;     ///< paddings included
    double maxLineWidth = 0.0;      ///< widest line
    QImage emojiImage;              ///< all emoji, laid over the text

    // ---- selection
    QVector<SelectionRange> selectionRanges; ///< per paragraph
    QVector<QRectF> selectionRects;          ///< one per selected line, top to bottom
    QVector<TextSpan> aiteInfos;             ///< mentions of the selection, relative to its first character
    TextHit selectionAnchorHit;
    TextHit selectionEndHit;
    SelectionDirection selectionDirection = SelectionDirection::None;
    QPointF pressPosition;
    QPointF movePosition;
    double selectionDragThreshold = 2.5;
    double emptySelectionWidth = 3.0; ///< width of a selected line that has none

    // ---- pointer
    bool mousePressed = false; ///< a left press on the text is going on
    bool pressedInSelection =
        false;                     ///< that press fell on selected text: the move that follows is a text drag
    bool wordJustSelected = false; ///< a double click selected a word a moment ago
    TextSpan hoverSpan;            ///< the span under the pointer

    // ---- scene graph, render thread only
    QSGGeometryNode *selectionRootNode = nullptr; ///< owned by the item's text node

private:
    DrawableTextPrivate &operator=(const DrawableTextPrivate &) = default;
};

Q_DECLARE_METATYPE(DrawableTextPrivate *)
