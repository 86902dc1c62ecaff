#pragma once

#include "text/textspan.h"
#include "text/usertextblock.h"

#include <QColor>
#include <QJSValue>
#include <QPointer>
#include <QTextCursor>
#include <QTimer>
#include <QUrl>
#include <QValidator>
#include <QVariant>
#include <QVector>

#include <QtQuickTemplates2/private/qquicktextarea_p.h>

#include <optional>

class QMimeData;
class QSGSimpleTextureNode;
class QTextCharFormat;

namespace areatext {
struct Prepared;
}

/// The message input box: text with emoji and mentions that are edited as units.
///
/// What is typed, pasted, dropped or inserted is normalised: emoji become one character each, and mentions,
/// which `insertAite()` makes, stay whole until an edit lands inside one. `content` and `aiteData` are what
/// to send; they go into `DrawableText.text` and `DrawableText.userBlocks`. The client tells by the `visual`
/// properties which part of the item is to be seen, so that only the emoji there are painted.
///
/// A paragraph of more than 5,000 characters turns the wrap mode `Wrap` into `WrapAnywhere`, until the text
/// is short again and can't be undone.
class DrawableTextArea : public QQuickTextArea
{
    Q_OBJECT
    /// The message without blanks at its edges. Setting it replaces everything and can't be undone; user
    /// blocks in the text become their display names.
    Q_PROPERTY(QString content READ content WRITE setContent NOTIFY contentChanged)
    /// The message as it stands.
    Q_PROPERTY(QString untrimmedContent READ untrimmedContent NOTIFY untrimmedContentChanged)
    /// The selected part of the message, emoji in their source form.
    Q_PROPERTY(
        QString selectedContent READ selectedContent WRITE setSelectedContent NOTIFY selectedContentChanged)
    /// Most characters that the box holds, an emoji counting one; -1 for no limit.
    Q_PROPERTY(int maxCharacterCount READ maxCharacterCount WRITE setMaxCharacterCount NOTIFY
                   maxCharacterCountChanged)
    /// Most line ends in a row; -1 for no limit. Without effect while `aiteEnabled` is true.
    Q_PROPERTY(int maxContinuousReturn READ maxContinuousReturn WRITE setMaxContinuousReturn NOTIFY
                   maxContinuousReturnChanged)
    /// Offer mentions: report "@" words, and carry mentions over the clipboard.
    Q_PROPERTY(bool aiteEnabled READ aiteEnabled WRITE setAiteEnabled NOTIFY aiteEnabledChanged)
    /// Report "#" words.
    Q_PROPERTY(bool hashTagEnabled READ hashTagEnabled WRITE setHashTagEnabled NOTIFY hashTagEnabledChanged)
    /// Take drops.
    Q_PROPERTY(bool dropEnabled READ dropEnabled WRITE setDropEnabled NOTIFY dropEnabledChanged)
    /// Let the Tab key type a tab; otherwise it is swallowed.
    Q_PROPERTY(bool enableTab READ enableTab WRITE setEnableTab NOTIFY enableTabChanged)
    /// Let Up on the first line go to the start and Down on the last one to the end.
    Q_PROPERTY(
        bool upDownKeyEnabled READ upDownKeyEnabled WRITE setUpDownKeyEnabled NOTIFY upDownKeyEnabledChanged)
    /// Show spelling marks. The module has no checker, so there are none yet.
    Q_PROPERTY(bool spellcheckEnabled READ spellcheckEnabled WRITE setSpellcheckEnabled NOTIFY
                   spellcheckEnabledChanged)
    /// Position of the "@" of the word in progress, in the document; -1 for none. Detection sets it without a
    /// signal.
    Q_PROPERTY(int aiteFrom READ aiteFrom WRITE setAiteFrom NOTIFY aiteFromChanged)
    /// Length from the "@" to the cursor, an emoji counting one.
    Q_PROPERTY(int aiteLen READ aiteLen WRITE setAiteLen NOTIFY aiteLenChanged)
    /// Position of the "#" of the word in progress, in the document; -1 for none. Detection sets it without a
    /// signal.
    Q_PROPERTY(int hashTagFrom READ hashTagFrom WRITE setHashTagFrom NOTIFY hashTagFromChanged)
    /// Length from the "#" to the cursor, an emoji counting one.
    Q_PROPERTY(int hashTagLen READ hashTagLen WRITE setHashTagLen NOTIFY hashTagLenChanged)
    /// Colour of mentions of a known user that are inserted from now on. Default: steelblue.
    Q_PROPERTY(QColor aiteColor READ aiteColor WRITE setAiteColor NOTIFY aiteColorChanged)
    /// Refuses texts that it calls invalid. Owned by the client; a destroyed one counts as none.
    Q_PROPERTY(QValidator *validator READ validator WRITE setValidator NOTIFY validatorChanged)
    /// Called for each pasted mention with its data as JSON and its text; returns the name to show, or
    /// nothing for plain text.
    Q_PROPERTY(QJSValue aiteNameFunction READ aiteNameFunction WRITE setAiteNameFunction NOTIFY
                   aiteNameFunctionChanged)
    /// The mentions of `content` as a list of user blocks, for `DrawableText.userBlocks`. Setting it replaces
    /// the list and makes the present text plain.
    Q_PROPERTY(QVariant aiteData READ aiteData WRITE setAiteData NOTIFY aiteDataChanged)
    /// Mentions for the next `content` that is set; used once.
    Q_PROPERTY(QVariant userBlocks READ userBlocks WRITE setUserBlocks NOTIFY userBlocksChanged)
    /// First visible position in the document. Computed when the item is painted.
    Q_PROPERTY(int visualFrom READ visualFrom WRITE setVisualFrom NOTIFY visualFromChanged)
    /// Last visible position in the document. Computed when the item is painted.
    Q_PROPERTY(int visualTo READ visualTo WRITE setVisualTo NOTIFY visualToChanged)
    /// Visible part of the item: its left edge, in item coordinates.
    Q_PROPERTY(double visualX READ visualX WRITE setVisualX NOTIFY visualXChanged)
    /// Top edge of the visible part.
    Q_PROPERTY(double visualY READ visualY WRITE setVisualY NOTIFY visualYChanged)
    /// Width of the visible part.
    Q_PROPERTY(double visualWidth READ visualWidth WRITE setVisualWidth NOTIFY visualWidthChanged)
    /// Height of the visible part.
    Q_PROPERTY(double visualHeight READ visualHeight WRITE setVisualHeight NOTIFY visualHeightChanged)
    /// Whether the emoji have to be painted anew.
    Q_PROPERTY(
        bool needUpdateEmoji READ needUpdateEmoji WRITE setNeedUpdateEmoji NOTIFY needUpdateEmojiChanged)

public:
    explicit DrawableTextArea(QQuickItem *parent = nullptr);
    ~DrawableTextArea() override;

    [[nodiscard]] QString content() const;
    [[nodiscard]] QString untrimmedContent() const;
    [[nodiscard]] QString selectedContent() const;
    [[nodiscard]] int maxCharacterCount() const;
    [[nodiscard]] int maxContinuousReturn() const;
    [[nodiscard]] bool aiteEnabled() const;
    [[nodiscard]] bool hashTagEnabled() const;
    [[nodiscard]] bool dropEnabled() const;
    [[nodiscard]] bool enableTab() const;
    [[nodiscard]] bool upDownKeyEnabled() const;
    [[nodiscard]] bool spellcheckEnabled() const;
    [[nodiscard]] int aiteFrom() const;
    [[nodiscard]] int aiteLen() const;
    [[nodiscard]] int hashTagFrom() const;
    [[nodiscard]] int hashTagLen() const;
    [[nodiscard]] QColor aiteColor() const;
    [[nodiscard]] QValidator *validator() const;
    [[nodiscard]] QJSValue aiteNameFunction() const;
    [[nodiscard]] QVariant aiteData();
    [[nodiscard]] QVariant userBlocks() const;
    [[nodiscard]] int visualFrom() const;
    [[nodiscard]] int visualTo() const;
    [[nodiscard]] double visualX() const;
    [[nodiscard]] double visualY() const;
    [[nodiscard]] double visualWidth() const;
    [[nodiscard]] double visualHeight() const;
    [[nodiscard]] bool needUpdateEmoji() const;

public Q_SLOTS:
    void setContent(const QString &content);
    void setSelectedContent(const QString &selectedContent);
    void setMaxCharacterCount(int maxCharacterCount);
    void setMaxContinuousReturn(int maxContinuousReturn);
    void setAiteEnabled(bool aiteEnabled);
    void setHashTagEnabled(bool hashTagEnabled);
    void setDropEnabled(bool dropEnabled);
    void setEnableTab(bool enableTab);
    void setUpDownKeyEnabled(bool upDownKeyEnabled);
    void setSpellcheckEnabled(bool spellcheckEnabled);
    void setAiteFrom(int aiteFrom);
    void setAiteLen(int aiteLen);
    void setHashTagFrom(int hashTagFrom);
    void setHashTagLen(int hashTagLen);
    void setAiteColor(const QColor &aiteColor);
    void setValidator(QValidator *validator);
    void setAiteNameFunction(const QJSValue &aiteNameFunction);
    void setAiteData(const QVariant &aiteData);
    void setUserBlocks(const QVariant &userBlocks);
    void setVisualFrom(int visualFrom);
    void setVisualTo(int visualTo);
    void setVisualX(double visualX);
    void setVisualY(double visualY);
    void setVisualWidth(double visualWidth);
    void setVisualHeight(double visualHeight);
    void setNeedUpdateEmoji(bool needUpdateEmoji);

    /// Inserts a mention of `displayText` with its `data`, and a space. "userId" names the user: a number
    /// above 0 gives the mention its colour.
    void insertAite(const QString &displayText, const QVariantMap &data);
    /// Inserts a text in the place of the selection or at the cursor; with `aiteData`, as a mention. What
    /// passes a limit is cut. `cursor` joins several insertions into one step of undo; its owner opens and
    /// closes the step.
    void insertText(const QString &text, const QVariantMap &aiteData, QTextCursor *cursor);
    void insertText(const QString &text, const QVariantMap &aiteData);
    void insertText(const QString &text);
    /// Inserts the emoji with that key ("1f600"), unless an input method is composing.
    void insertEmojiByUnicode(const QString &unicode);
    /// The cursor's position in the message, where an emoji counts with its full length.
    int realCursorPos();
    /// The data of each mention, once.
    QVariantList aiteList();
    /// The mentions of `untrimmedContent` as a list of user blocks.
    QVariant untrimmedAiteData();
    /// The emoji of the box, the last one first, each once, as maps with "unicode" and "emoji".
    QVariantList latestEmojis();

    /// Removes from the cursor to the start of its line; at the start of a line, the line above.
    void clearToLineHead();
    /// Removes from the cursor to the start of its word, or of its part of a camel-case word.
    void clearToWordHead();
    /// Puts the selected message, with its mentions, on the clipboard.
    void copy();
    /// Inserts the clipboard's text with its mentions. Pictures and local files are left to the client.
    void paste();

    /// Reports the "@" word in front of the cursor by `aiteDetected()`.
    void detectAite();
    /// Reports the "#" word in front of the cursor by `hashTagDetected()`.
    void detectHashTag();

Q_SIGNALS:
    void contentChanged(QString content);
    void untrimmedContentChanged(QString untrimmedContent);
    void selectedContentChanged(QString selectedContent);
    void maxCharacterCountChanged(int maxCharacterCount);
    void maxContinuousReturnChanged(int maxContinuousReturn);
    void aiteEnabledChanged(bool aiteEnabled);
    void hashTagEnabledChanged(bool hashTagEnabled);
    void dropEnabledChanged(bool dropEnabled);
    void enableTabChanged(bool enableTab);
    void upDownKeyEnabledChanged(bool upDownKeyEnabled);
    void spellcheckEnabledChanged(bool spellcheckEnabled);
    void aiteFromChanged(int aiteFrom);
    void aiteLenChanged(int aiteLen);
    void hashTagFromChanged(int hashTagFrom);
    void hashTagLenChanged(int hashTagLen);
    void aiteColorChanged(QColor aiteColor);
    void validatorChanged(QValidator *validator);
    void aiteNameFunctionChanged(QJSValue aiteNameFunction);
    void aiteDataChanged(QVariant aiteData);
    void userBlocksChanged(QVariant userBlocks);
    void visualFromChanged(int visualFrom);
    void visualToChanged(int visualTo);
    void visualXChanged(double visualX);
    void visualYChanged(double visualY);
    void visualWidthChanged(double visualWidth);
    void visualHeightChanged(double visualHeight);
    void needUpdateEmojiChanged(bool needUpdateEmoji);
    /// Something did not fit.
    void maxCharacterCountReached();
    /// Kept for clients that connect to it; never emitted: a validator's refusal is silent.
    void invalidInput(QString invalidText);
    /// The clipboard holds a picture or local files; the client decides what becomes of them.
    void pastContent();
    /// Files were dropped, local or not.
    void dropFiles(QList<QUrl> urls);
    /// Something is dragged over the box, whether it takes drops or not.
    void dragDetect();
    /// The "@" word in front of the cursor, "@" included; or that there is none.
    void aiteDetected(QString aiteString, bool detected);
    /// The "#" word in front of the cursor, "#" included; or that there is none.
    void hashTagDetected(QString tagString, bool detected);
    /// The right button was released; the module has no words to suggest.
    void customContextMenuRequested(QVariantList words, bool isErrorWord);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private Q_SLOTS:
    void onContentChanging(int from, int charsRemoved, int charsAdded);
    void onContentChanged();
    void onSelectonChanged();

private:
    struct SpellingError
    {
        QString text;
        int start = 0; ///< in the document
        int length = 0;
    };

    [[nodiscard]] QTextDocument *textDocumentOfItem() const;
    void makeTabStop();
    void keepPlaceholderFonts();
    void acceptDropsAlways();

    // ---- content
    void sync();
    void report();
    void deferredSync();
    [[nodiscard]] QString limitReturns(const QString &text) const;
    enum class Replace { Nothing, Selection };
    [[nodiscard]] bool isRefused(const QString &inserted, Replace replace) const;
    [[nodiscard]] bool hasSelectedText() const;
    [[nodiscard]] int characterCount() const;
    void takeSelectionAway(QTextCursor &cursor);
    void noticeLostSelection();
    [[nodiscard]] QTextCharFormat mentionFormat(const QVariantMap &aiteData);
    void writePrepared(QTextCursor &cursor, const areatext::Prepared &prepared, int room,
                       const QTextCharFormat &format) const;
    void wrapFor(int paragraphLength);
    struct NamedPiece
    {
        QString text;
        QVariantMap mention; ///< its data; empty for plain text
    };
    [[nodiscard]] std::optional<QVector<NamedPiece>> namedPieces(const QString &text,
                                                                 const QVector<TextSpan> &mentions);
    void insertPieces(const QVector<NamedPiece> &pieces);
    [[nodiscard]] bool insertWithMentions(const QString &text, const QVector<TextSpan> &mentions);
    [[nodiscard]] QString mentionName(const QVariantMap &mention, const QString &text);
    void clearDocument();
    [[nodiscard]] bool replaceContent(const QString &text);
    void insertMime(const QMimeData *mime, const QString &text);
    [[nodiscard]] QMimeData *selectionMime() const;

    // ---- keys
    void deleteByKey(QKeyEvent *event);
    void cutByKey(QKeyEvent *event);
    void undoByKey(QKeyEvent *event);
    void arrowKey(QKeyEvent *event);
    [[nodiscard]] bool jumpOverMention(QKeyEvent *event);
    void leaveByUpOrDown(const QKeyEvent *event, int positionBefore);
    void typeKey(QKeyEvent *event);
    void dissolveByRemovingKey(const QKeyEvent *event);
    void removeRange(int from, int to);
    void passOn(QKeyEvent *event);
    void correctSelectionClipboard();
    void detect();
    void detectAfterMove();
    [[nodiscard]] bool isAiteFound() const;
    [[nodiscard]] QString expandRange(int position, int length) const;

    // ---- painting
    void markOverlays();
    void relayoutOverlays();
    void setVisualReal(double &member, double value, void (DrawableTextArea::*changed)(double));
    void setVisualPosition(int &member, int value, void (DrawableTextArea::*changed)(int));
    [[nodiscard]] QRectF visualRect() const;
    [[nodiscard]] QImage renderEmoji() const;
    [[nodiscard]] QImage renderSpelling() const;

    template <typename Value, typename Argument>
    void store(Value &member, const Value &value, void (DrawableTextArea::*changed)(Argument));

    class Silence;
    struct State;
    QScopedPointer<State> d;
};
