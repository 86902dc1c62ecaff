#pragma once

#include "drawabletextprivate.h"

#include <QQuickItem>
#include <QTimer>

#include <memory>

/// Shows one chat message: read-only rich text with inline emoji, mentions, links, highlights and selection.
///
/// The item sizes itself: after each layout its width is the smaller of `maxWidth` and the text's own width,
/// its height that of the text. A text below 500 UTF-16 units, or one with a line limit, is laid out inside
/// the setter; a longer one on a worker, while the item has its `previewSize`. What is a link, a mention or a
/// tag is told by `userBlocks`, by blocks inside the text or by `addTextBlock()`; only emoji and highlights
/// are searched for.
///
/// Properties marked "takes effect at the next layout" are best set before `maxWidth` and `text`.
class DrawableText : public QQuickItem
{
    Q_OBJECT
    /// The message. Tabs read back as tabs; form feeds, carriage returns and line separators become line
    /// ends, U+FFFC and no-break spaces become spaces.
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// Font of the text, and the size of its emoji.
    Q_PROPERTY(QFont font READ font WRITE setFont NOTIFY fontChanged)
    /// Colour of plain text. Default: black.
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Colour of links, and of mentions, addresses and tags that have no colour of their own. Default: blue.
    Q_PROPERTY(QColor linkColor READ linkColor WRITE setLinkColor NOTIFY linkColorChanged)
    /// Colour of e-mail addresses; invalid for `linkColor`. Seen when something else next rebuilds the
    /// formats.
    Q_PROPERTY(QColor emailColor READ emailColor WRITE setEmailColor NOTIFY emailColorChanged)
    /// Kept for clients that set it; phone numbers look like the text around them.
    Q_PROPERTY(QColor phoneColor READ phoneColor WRITE setPhoneColor NOTIFY phoneColorChanged)
    /// Colour of hash tags; invalid for `linkColor`. Seen when something else next rebuilds the formats.
    Q_PROPERTY(QColor sharpColor READ sharpColor WRITE setSharpColor NOTIFY sharpColorChanged)
    /// Colour of mentions; invalid for `linkColor`.
    Q_PROPERTY(QColor aiteColor READ aiteColor WRITE setAiteColor NOTIFY aiteColorChanged)
    /// Colour of text blocks. Default: blue.
    Q_PROPERTY(QColor textBlockColor READ textBlockColor WRITE setTextBlockColor NOTIFY textBlockColorChanged)
    /// Kept for clients that set it; the item draws no bubble.
    Q_PROPERTY(QColor bubbleColor READ bubbleColor WRITE setBubbleColor NOTIFY bubbleColorChanged)
    /// Colour of the matches of `highlightText`; transparent leaves them their own.
    Q_PROPERTY(QColor highlightColor READ highlightColor WRITE setHighlightColor NOTIFY highlightColorChanged)
    /// Background of the matches of `highlightText`; transparent draws none.
    Q_PROPERTY(QColor highlightBgColor READ highlightBgColor WRITE setHighlightBgColor NOTIFY
                   highlightBgColorChanged)
    /// Fill of the selection. Default: blue.
    Q_PROPERTY(QColor selectionColor READ selectionColor WRITE setSelectionColor NOTIFY selectionColorChanged)
    /// Colour of selected text. Default: white.
    Q_PROPERTY(QColor selectedTextColor READ selectedTextColor WRITE setSelectedTextColor NOTIFY
                   selectedTextColorChanged)
    /// Where a text of more than `maximumLineCount` lines is cut. Default: `Qt.ElideNone`.
    Q_PROPERTY(Qt::TextElideMode elide READ elide WRITE setElide NOTIFY elideChanged)
    /// Text whose width stands for the ellipsis in a middle elision; shown is always the font's own ellipsis.
    Q_PROPERTY(QString elideText READ elideText WRITE setElideText NOTIFY elideTextChanged)
    /// What is shown while `elide` is set. Written by the engine.
    Q_PROPERTY(QString elidedText READ elidedText WRITE setElidedText NOTIFY elidedTextChanged)
    /// Where lines break. Takes effect at the next layout.
    Q_PROPERTY(WrapMode wrapMode READ wrapMode WRITE setWrapMode NOTIFY wrapModeChanged)
    /// Horizontal alignment: centred lines within the widest line, right-aligned ones within the whole area.
    Q_PROPERTY(Qt::Alignment alignment READ alignment WRITE setAlignment NOTIFY alignmentChanged)
    /// Lines that an elided text may take; -1 for no limit. A text with a limit is never laid out on a
    /// worker.
    Q_PROPERTY(
        int maximumLineCount READ maximumLineCount WRITE setMaximumLineCount NOTIFY maximumLineCountChanged)
    /// Number of lines of the last layout. Written by the engine.
    Q_PROPERTY(int lineCount READ lineCount WRITE setLineCount NOTIFY lineCountChanged)
    /// Width kept free behind the last line, for a time or a tick. The item grows by 12 when it does not fit
    /// there.
    Q_PROPERTY(int reservedWidth READ reservedWidth WRITE setReservedWidth NOTIFY reservedWidthChanged)
    /// Content width to use instead of the computed one; -1 for none. Takes effect at the next layout.
    Q_PROPERTY(int fixedWidth READ fixedWidth WRITE setFixedWidth NOTIFY fixedWidthChanged)
    /// Widest that the item may get. Nothing is laid out while it is not positive; negative values become 0.
    Q_PROPERTY(double maxWidth READ maxWidth WRITE setMaxWidth NOTIFY maxWidthChanged)
    /// Least content width of a text of several lines; -1 for none. Takes effect at the next layout.
    Q_PROPERTY(double multilineMinWidth READ multilineMinWidth WRITE setMultilineMinWidth NOTIFY
                   multilineMinWidthChanged)
    /// Indent of the very first line.
    Q_PROPERTY(double textIndent READ textIndent WRITE setTextIndent NOTIFY textIndentChanged)
    /// Space behind each line. Takes effect at the next layout.
    Q_PROPERTY(double leading READ leading WRITE setLeading NOTIFY leadingChanged)
    /// Distance of tab stops. Takes effect at the next layout.
    Q_PROPERTY(double tabWidth READ tabWidth WRITE setTabWidth NOTIFY tabWidthChanged)
    /// Padding of all four sides; 0 leaves each side its own. Takes effect at the next layout.
    Q_PROPERTY(double padding READ padding WRITE setPadding NOTIFY paddingChanged)
    /// Left padding while `padding` is 0. Takes effect at the next layout.
    Q_PROPERTY(double leftPadding READ leftPadding WRITE setLeftPadding NOTIFY leftPaddingChanged)
    /// Top padding while `padding` is 0. Takes effect at the next layout.
    Q_PROPERTY(double topPadding READ topPadding WRITE setTopPadding NOTIFY topPaddingChanged)
    /// Right padding while `padding` is 0. Takes effect at the next layout.
    Q_PROPERTY(double rightPadding READ rightPadding WRITE setRightPadding NOTIFY rightPaddingChanged)
    /// Bottom padding while `padding` is 0. Takes effect at the next layout.
    Q_PROPERTY(double bottomPadding READ bottomPadding WRITE setBottomPadding NOTIFY bottomPaddingChanged)
    /// Height of the lines, without paddings. Written by the engine.
    Q_PROPERTY(double textHeight READ textHeight WRITE setTextHeight NOTIFY textHeightChanged)
    /// Corner radius of the selection outline. Default: 2.
    Q_PROPERTY(double selectionCornerRadius READ selectionCornerRadius WRITE setSelectionCornerRadius NOTIFY
                   selectionCornerRadiusChanged)
    /// Words to highlight, separated by spaces and found in any case.
    Q_PROPERTY(QString highlightText READ highlightText WRITE setHighlightText NOTIFY highlightTextChanged)
    /// Highlight only the first match of each word. Takes effect at the next layout.
    Q_PROPERTY(bool onlyHighlightFirstMatchedEnabled READ onlyHighlightFirstMatchedEnabled WRITE
                   setOnlyHighlightFirstMatchedEnabled NOTIFY onlyHighlightFirstMatchedEnabledChanged)
    /// Marked stretches of the text as the input box hands them out, or as a list of maps with "start",
    /// "length", "type" and "data". Anything else counts as an empty list.
    Q_PROPERTY(QVariant userBlocks READ userBlocks WRITE setUserBlocks NOTIFY userBlocksChanged)
    /// Set mentions and text blocks in a heavier weight.
    Q_PROPERTY(bool userBlockBold READ userBlockBold WRITE setUserBlockBold NOTIFY userBlockBoldChanged)
    /// Keep the width of an "X" free beside the text.
    Q_PROPERTY(bool reserveSpace READ reserveSpace WRITE setReserveSpace NOTIFY reserveSpaceChanged)
    /// Grow for `reservedWidth` also while a line limit is set. Takes effect at the next layout.
    Q_PROPERTY(bool willChangeLineMode READ willChangeLineMode WRITE setWillChangeLineMode NOTIFY
                   willChangeLineModeChanged)
    /// Turn line ends into spaces in the next text that is set.
    Q_PROPERTY(bool treatReturnAsSpace READ treatReturnAsSpace WRITE setTreatReturnAsSpace NOTIFY
                   treatReturnAsSpaceChanged)
    /// Kept for clients that set it; emoji are always recognised.
    Q_PROPERTY(bool emojiEnabled READ emojiEnabled WRITE setEmojiEnabled NOTIFY emojiEnabledChanged)
    /// Kept for clients that set it; links come as user blocks.
    Q_PROPERTY(bool linkEnabled READ linkEnabled WRITE setLinkEnabled NOTIFY linkEnabledChanged)
    /// Kept for clients that set it; mentions come as user blocks.
    Q_PROPERTY(bool aiteEnabled READ aiteEnabled WRITE setAiteEnabled NOTIFY aiteEnabledChanged)
    /// Kept for clients that set it; tags come as user blocks.
    Q_PROPERTY(bool hashTagEnabled READ hashTagEnabled WRITE setHashTagEnabled NOTIFY hashTagEnabledChanged)
    /// Take presses of the mouse.
    Q_PROPERTY(bool mouseEnabled READ mouseEnabled WRITE setMouseEnabled NOTIFY mouseEnabledChanged)
    /// Let the mouse select text; needs `mouseEnabled`.
    Q_PROPERTY(bool selectByMouse READ selectByMouse WRITE setSelectByMouse NOTIFY selectByMouseChanged)
    /// Let selected text be dragged out.
    Q_PROPERTY(bool dragEnabled READ dragEnabled WRITE setDragEnabled NOTIFY dragEnabledChanged)
    /// Let a double click select a word, and one beside the text everything.
    Q_PROPERTY(bool doubleClickEnabled READ doubleClickEnabled WRITE setDoubleClickEnabled NOTIFY
                   doubleClickEnabledChanged)
    /// Kept for clients that set it; no selection reads or writes it.
    Q_PROPERTY(int selectionStart READ selectionStart WRITE setSelectionStart NOTIFY selectionStartChanged)
    /// Kept for clients that set it; no selection reads or writes it.
    Q_PROPERTY(int selectionEnd READ selectionEnd WRITE setSelectionEnd NOTIFY selectionEndChanged)
    /// What was selected last: 1 for text, or the kind of the span that a right click selected.
    Q_PROPERTY(int selectType READ selectType WRITE setSelectType NOTIFY selectTypeChanged)
    /// The selected text, with emoji and mentions as they would be sent.
    Q_PROPERTY(QString selectedText READ selectedText WRITE setSelectedText NOTIFY selectedTextChanged)
    /// Pointer shape over plain text; 0 while unset. Setting it always notifies.
    Q_PROPERTY(Qt::CursorShape textCursorShape READ textCursorShape WRITE setTextCursorShape NOTIFY
                   textCursorShapeChanged)
    /// Size that the item takes while a long text is laid out on a worker.
    Q_PROPERTY(QSizeF previewSize READ previewSize WRITE setPreviewSize NOTIFY previewSizeChanged)

public:
    /// Where lines may break, in the values of `QTextOption`: nowhere, between words, by hand alone,
    /// anywhere, or between words as long as they fit and anywhere else.
    enum WrapMode : int { NoWrap, WordWrap, ManualWrap, WrapAnywhere, WrapAtWordBoundaryOrAnywhere };
    Q_ENUM(WrapMode)

    explicit DrawableText(QQuickItem *parent = nullptr);
    ~DrawableText() override;

    [[nodiscard]] QString text() const;
    [[nodiscard]] QFont font() const;
    [[nodiscard]] QColor color() const;
    [[nodiscard]] QColor linkColor() const;
    [[nodiscard]] QColor emailColor() const;
    [[nodiscard]] QColor phoneColor() const;
    [[nodiscard]] QColor sharpColor() const;
    [[nodiscard]] QColor aiteColor() const;
    [[nodiscard]] QColor textBlockColor() const;
    [[nodiscard]] QColor bubbleColor() const;
    [[nodiscard]] QColor highlightColor() const;
    [[nodiscard]] QColor highlightBgColor() const;
    [[nodiscard]] QColor selectionColor() const;
    [[nodiscard]] QColor selectedTextColor() const;
    [[nodiscard]] Qt::TextElideMode elide() const;
    [[nodiscard]] QString elideText() const;
    [[nodiscard]] QString elidedText() const;
    [[nodiscard]] WrapMode wrapMode() const;
    [[nodiscard]] Qt::Alignment alignment() const;
    [[nodiscard]] int maximumLineCount() const;
    [[nodiscard]] int lineCount() const;
    [[nodiscard]] int reservedWidth() const;
    [[nodiscard]] int fixedWidth() const;
    [[nodiscard]] double maxWidth() const;
    [[nodiscard]] double multilineMinWidth() const;
    [[nodiscard]] double textIndent() const;
    [[nodiscard]] double leading() const;
    [[nodiscard]] double tabWidth() const;
    [[nodiscard]] double padding() const;
    [[nodiscard]] double leftPadding() const;
    [[nodiscard]] double topPadding() const;
    [[nodiscard]] double rightPadding() const;
    [[nodiscard]] double bottomPadding() const;
    [[nodiscard]] double textHeight() const;
    [[nodiscard]] double selectionCornerRadius() const;
    [[nodiscard]] QString highlightText() const;
    [[nodiscard]] bool onlyHighlightFirstMatchedEnabled() const;
    [[nodiscard]] QVariant userBlocks() const;
    [[nodiscard]] bool userBlockBold() const;
    [[nodiscard]] bool reserveSpace() const;
    [[nodiscard]] bool willChangeLineMode() const;
    [[nodiscard]] bool treatReturnAsSpace() const;
    [[nodiscard]] bool emojiEnabled() const;
    [[nodiscard]] bool linkEnabled() const;
    [[nodiscard]] bool aiteEnabled() const;
    [[nodiscard]] bool hashTagEnabled() const;
    [[nodiscard]] bool mouseEnabled() const;
    [[nodiscard]] bool selectByMouse() const;
    [[nodiscard]] bool dragEnabled() const;
    [[nodiscard]] bool doubleClickEnabled() const;
    [[nodiscard]] int selectionStart() const;
    [[nodiscard]] int selectionEnd() const;
    [[nodiscard]] int selectType() const;
    [[nodiscard]] QString selectedText() const;
    [[nodiscard]] Qt::CursorShape textCursorShape() const;
    [[nodiscard]] QSizeF previewSize() const;

    /// Base64 form of the selection's mentions as the clipboard carries them; empty when there are none.
    Q_INVOKABLE QString aiteClipboardData();
    /// Collects the mentions of the whole text, as `selectAll()` does.
    Q_INVOKABLE void recalculateAllAiteInfos();

    /// The character under `point`. `flags` tells how much to fill in: any bit of 0x3 the paragraph and the
    /// scan of its lines, of 0x7 the line and the character, of 0x15 the span. `extendRight` lets a point to
    /// the right of a paragraph hit the end of its line; `bottomSlack` makes a point more than 2 below the
    /// text hit nothing.
    [[nodiscard]] TextHit hitTest(QPointF point, int flags, bool extendRight, bool bottomSlack) const;
    /// The x of the right end of the line under `point`, or -1 where there is no line.
    [[nodiscard]] double lineRightEdge(QPointF point, bool bottomSlack) const;

    /// The current state, for tests and for painting. Never null.
    [[nodiscard]] const DrawableTextPrivate *state() const { return d.data(); }
    /// Whether a worker's result is awaited.
    [[nodiscard]] bool isLayoutPending() const { return !pending.isNull(); }

public Q_SLOTS:
    void setText(const QString &text);
    void setFont(const QFont &font);
    void setColor(const QColor &color);
    void setLinkColor(const QColor &linkColor);
    void setEmailColor(const QColor &emailColor);
    void setPhoneColor(const QColor &phoneColor);
    void setSharpColor(const QColor &sharpColor);
    void setAiteColor(const QColor &aiteColor);
    void setTextBlockColor(const QColor &textBlockColor);
    void setBubbleColor(const QColor &bubbleColor);
    void setHighlightColor(const QColor &highlightColor);
    void setHighlightBgColor(const QColor &highlightBgColor);
    void setSelectionColor(const QColor &selectionColor);
    void setSelectedTextColor(const QColor &selectedTextColor);
    void setElide(Qt::TextElideMode elide);
    void setElideText(const QString &elideText);
    void setElidedText(const QString &elidedText);
    void setWrapMode(WrapMode wrapMode);
    void setAlignment(Qt::Alignment alignment);
    void setMaximumLineCount(int maximumLineCount);
    void setLineCount(int lineCount);
    void setReservedWidth(int reservedWidth);
    void setFixedWidth(int fixedWidth);
    void setMaxWidth(double maxWidth);
    void setMultilineMinWidth(double multilineMinWidth);
    void setTextIndent(double textIndent);
    void setLeading(double leading);
    void setTabWidth(double tabWidth);
    void setPadding(double padding);
    void setLeftPadding(double leftPadding);
    void setTopPadding(double topPadding);
    void setRightPadding(double rightPadding);
    void setBottomPadding(double bottomPadding);
    void setTextHeight(double textHeight);
    void setSelectionCornerRadius(double selectionCornerRadius);
    void setHighlightText(const QString &highlightText);
    void setOnlyHighlightFirstMatchedEnabled(bool onlyHighlightFirstMatchedEnabled);
    void setUserBlocks(const QVariant &userBlocks);
    void setUserBlockBold(bool userBlockBold);
    void setReserveSpace(bool reserveSpace);
    void setWillChangeLineMode(bool willChangeLineMode);
    void setTreatReturnAsSpace(bool treatReturnAsSpace);
    void setEmojiEnabled(bool emojiEnabled);
    void setLinkEnabled(bool linkEnabled);
    void setAiteEnabled(bool aiteEnabled);
    void setHashTagEnabled(bool hashTagEnabled);
    void setMouseEnabled(bool mouseEnabled);
    void setSelectByMouse(bool selectByMouse);
    void setDragEnabled(bool dragEnabled);
    void setDoubleClickEnabled(bool doubleClickEnabled);
    void setSelectionStart(int selectionStart);
    void setSelectionEnd(int selectionEnd);
    void setSelectType(int selectType);
    void setSelectedText(const QString &selectedText);
    void setTextCursorShape(Qt::CursorShape textCursorShape);
    void setPreviewSize(const QSizeF &previewSize);

    /// Marks a stretch of one paragraph's layout text, `from` to `to` inclusive, that answers a click with
    /// `textBlockClick(data)`. Blocks last as long as the item's state; they can't be removed.
    void addTextBlock(int from, int to, QVariant data, int paragraphIndex = 0);
    /// The text with in-band blocks replaced by their display names, and plain spaces, tabs and line ends.
    QString plainText();
    /// Clears the selection.
    void deselect();
    /// Selects the whole text.
    void selectAll();
    /// Puts the selected text, with its mentions, on the clipboard. Does nothing without a selection.
    void copy();
    /// Adopts the newest finished snapshot; `data` only announces that there may be one.
    void updateData(DrawableTextPrivate *data);
    /// Hands a snapshot of the state to a worker.
    void threadUpdateTimeout();

Q_SIGNALS:
    void textChanged(const QString &text);
    void fontChanged(const QFont &font);
    void colorChanged(const QColor &color);
    void linkColorChanged(const QColor &linkColor);
    void emailColorChanged(const QColor &emailColor);
    void phoneColorChanged(const QColor &phoneColor);
    void sharpColorChanged(const QColor &sharpColor);
    void aiteColorChanged(const QColor &aiteColor);
    void textBlockColorChanged(const QColor &textBlockColor);
    void bubbleColorChanged(const QColor &bubbleColor);
    void highlightColorChanged(const QColor &highlightColor);
    void highlightBgColorChanged(const QColor &highlightBgColor);
    void selectionColorChanged(const QColor &selectionColor);
    void selectedTextColorChanged(const QColor &selectedTextColor);
    void elideChanged(Qt::TextElideMode elide);
    void elideTextChanged(const QString &elideText);
    void elidedTextChanged(const QString &elidedText);
    void wrapModeChanged(WrapMode wrapMode);
    void alignmentChanged(Qt::Alignment alignment);
    void maximumLineCountChanged(int maximumLineCount);
    void lineCountChanged(int lineCount);
    void reservedWidthChanged(int reservedWidth);
    void fixedWidthChanged(int fixedWidth);
    void maxWidthChanged(double maxWidth);
    void multilineMinWidthChanged(double multilineMinWidth);
    void textIndentChanged(double textIndent);
    void leadingChanged(double leading);
    void tabWidthChanged(double tabWidth);
    void paddingChanged(double padding);
    void leftPaddingChanged(double leftPadding);
    void topPaddingChanged(double topPadding);
    void rightPaddingChanged(double rightPadding);
    void bottomPaddingChanged(double bottomPadding);
    void textHeightChanged(double textHeight);
    void selectionCornerRadiusChanged(double selectionCornerRadius);
    void highlightTextChanged(const QString &highlightText);
    void onlyHighlightFirstMatchedEnabledChanged(bool onlyHighlightFirstMatchedEnabled);
    void userBlocksChanged(const QVariant &userBlocks);
    void userBlockBoldChanged(bool userBlockBold);
    void reserveSpaceChanged(bool reserveSpace);
    void willChangeLineModeChanged(bool willChangeLineMode);
    void treatReturnAsSpaceChanged(bool treatReturnAsSpace);
    void emojiEnabledChanged(bool emojiEnabled);
    void linkEnabledChanged(bool linkEnabled);
    void aiteEnabledChanged(bool aiteEnabled);
    void hashTagEnabledChanged(bool hashTagEnabled);
    void mouseEnabledChanged(bool mouseEnabled);
    void selectByMouseChanged(bool selectByMouse);
    void dragEnabledChanged(bool dragEnabled);
    void doubleClickEnabledChanged(bool doubleClickEnabled);
    void selectionStartChanged(int selectionStart);
    void selectionEndChanged(int selectionEnd);
    void selectTypeChanged(int selectType);
    void selectedTextChanged(const QString &selectedText);
    void textCursorShapeChanged(Qt::CursorShape textCursorShape);
    void previewSizeChanged(const QSizeF &previewSize);

    /// A hash tag was clicked; `sharpText` has its "#".
    void sharpClick(QString sharpText);
    /// A mention was clicked; `data` is its block's.
    void aiteClick(QVariant data);
    /// A user id was clicked; `data` is the id without its "@".
    void ostrelIdClick(QVariant data);
    /// A link or an e-mail address was clicked; `link` has a scheme.
    void linkActivated(QString link);
    /// The pointer moved over a link, an address or a tag; `link` is its block's data as text.
    void linkHovered(QString link);
    /// A text block was clicked; `data` is its block's.
    void textBlockClick(QVariant data);
    /// A drag of the selected text begins.
    void dragStart();
    /// A button was released over the item; `onUserBlock` tells whether a link or its like took the click.
    void mouseRelease(bool onUserBlock);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void hoverEnterEvent(QHoverEvent *event) override;
    void hoverMoveEvent(QHoverEvent *event) override;
    void hoverLeaveEvent(QHoverEvent *event) override;
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;
    void componentComplete() override;

private:
    /// Lays the text out anew, here or on a worker; `immediate` spares a long text the wait for further
    /// changes.
    void refresh(bool immediate);
    void startUpdateTimer();
    /// Takes over the size of the last layout.
    void applyContentSize();

    template <typename Value, typename Argument>
    void store(Value &member, const Value &value, void (DrawableText::*changed)(Argument));
    template <typename Value, typename Argument>
    void storeAndRefresh(Value &member, const Value &value, int mask,
                         void (DrawableText::*changed)(Argument));

    // ---- pointer
    void hover(QPointF point);
    void updateHover(QPointF point);
    void clearHover();
    /// Whether `point` lies on a line of text or within the right padding behind its end, `rightEdge`.
    [[nodiscard]] bool isOnText(QPointF point, double rightEdge) const;
    [[nodiscard]] bool isInSelection(QPointF point) const;
    /// Clicks what lies under `point`; false when nothing there takes a click.
    bool activateAt(QPointF point);
    void dragSelectedText();

    // ---- selection
    void updateDragSelection();
    void selectWordAt(const TextHit &hit);
    void selectSpanAt(const TextHit &hit);
    /// Selects `range` of the hit's paragraph; an empty range only clears what was selected, and returns
    /// false.
    bool selectWithin(const TextHit &hit, SelectionRange range, int selectType);
    /// The source text of the span around `hit`, or of its one character.
    [[nodiscard]] QString spanText(const TextHit &hit);

    QSharedPointer<DrawableTextPrivate> d; ///< what the item shows and what every property reads and writes
    QSharedPointer<DrawableTextPrivate> pending; ///< the snapshot that a worker is laying out
    quint64 itemId = 0;                          ///< key in the live-item table, never reused
    /// Collapses a burst of changes to a long text into one snapshot; there from the first such change on.
    std::unique_ptr<QTimer> updateTimer;
    QSizeF previewSizeValue = QSizeF(0, 0);
};
