// Keys, input method, mouse.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "areatext.h"
#include "mentionedges.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace {

using namespace mentionedges;

bool isDeleteKey(const QKeyEvent *event)
{
    const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::ShiftModifier;
    return event->matches(QKeySequence::Delete) || (event->key() == Qt::Key_Delete && plain);
}

bool isBackspaceKey(const QKeyEvent *event)
{
    const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::ShiftModifier;
    return event->matches(QKeySequence::Backspace) || (event->key() == Qt::Key_Backspace && plain);
}

/// Whether a key's text is something to insert. Format characters count: they come from keyboards of scripts
/// that join letters.
bool isTextKey(const QKeyEvent *event)
{
    if (event->text().isEmpty())
        return false;
    const QChar c = event->text().at(0);
    if (c.category() == QChar::Other_Format)
        return true;
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    if (modifiers == Qt::ControlModifier || modifiers == (Qt::ControlModifier | Qt::ShiftModifier))
        return false;
    if (c.isHighSurrogate() && event->text().size() > 1 && event->text().at(1).isLowSurrogate())
        return QChar::isPrint(QChar::surrogateToUcs4(c, event->text().at(1)));
    return c.isPrint() || c.category() == QChar::Other_PrivateUse || c == QLatin1Char('\t');
}

/// The keys by which the base class removes more than a character: what they remove, told by the move from
/// the cursor to its other end.
struct RemovingKey
{
    QKeySequence::StandardKey key;
    QTextCursor::MoveOperation move;
};
constexpr RemovingKey removingKeys[] = {
    {QKeySequence::DeleteEndOfWord, QTextCursor::NextWord},
    {QKeySequence::DeleteStartOfWord, QTextCursor::PreviousWord},
    {QKeySequence::DeleteEndOfLine, QTextCursor::EndOfBlock},
};

} // namespace

void DrawableTextArea::keyPressEvent(QKeyEvent *event)
{
    if (isDeleteKey(event) || isBackspaceKey(event)) {
        deleteByKey(event);
    } else if (event->matches(QKeySequence::Cut)) {
        cutByKey(event);
    } else if (event->matches(QKeySequence::Undo)) {
        undoByKey(event);
    } else if (event->matches(QKeySequence::Paste)) {
        paste();
    } else if (event->matches(QKeySequence::Copy)) {
        copy();
    } else if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right || event->key() == Qt::Key_Up ||
               event->key() == Qt::Key_Down) {
        arrowKey(event);
    } else if ((event->key() == Qt::Key_Tab && !d->enableTab) || isReadOnly()) {
        return; // swallowed
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        insertText(QStringLiteral("\n"));
    } else {
        typeKey(event);
    }
}

void DrawableTextArea::deleteByKey(QKeyEvent *event)
{
    QTextDocument *document = textDocumentOfItem();
    const int position = cursorPosition();
    if (isReadOnly()) {
        passOn(event);
        return;
    }
    if (!d->selectedContent.isEmpty()) {
        if (event->matches(QKeySequence::Cut)) {
            cutByKey(event); // Shift with Delete, where that cuts
            return;
        }
        dissolve(*document, selectionStart(), selectionEnd());
        passOn(event);
        return;
    }
    const bool forward = isDeleteKey(event);
    if (!forward && position == 0)
        return;

    // One key takes a whole mention from its outer edge; inside it, the mention becomes plain text first.
    dissolve(*document, position, position);
    const int flags = boundaryAt(*document, position);
    if (forward) {
        const bool inFront = (flags & LeftEdge) || ((flags & BehindFirst) && (flags & DocumentStart));
        if (inFront && !(flags & DocumentEnd)) {
            removeRange(position, rightEdgeBehind(*document, position));
            return;
        }
    } else if (flags & RightEdge) {
        removeRange(leftEdgeBefore(*document, position), position);
        return;
    }
    passOn(event);
}

void DrawableTextArea::removeRange(int from, int to)
{
    QTextCursor cursor(textDocumentOfItem());
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}

void DrawableTextArea::cutByKey(QKeyEvent *event)
{
    if (isReadOnly()) {
        passOn(event);
        return;
    }
    if (d->selectedContent.isEmpty())
        return;
    dissolve(*textDocumentOfItem(), selectionStart(), selectionEnd());
    // Made now: after the cut nothing is selected. And set last, over the placeholders that the base class
    // copies.
    QMimeData *mime = selectionMime();
    passOn(event);
    QGuiApplication::clipboard()->setMimeData(mime);
}

void DrawableTextArea::undoByKey(QKeyEvent *event)
{
    d->undoPending = true;
    d->undoDelta = 0;
    const int position = cursorPosition();
    passOn(event);
    d->undoPending = false;
    setCursorPosition(position + d->undoDelta);
    noticeLostSelection();
}

void DrawableTextArea::arrowKey(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Up)
        d->upDownDirection = State::VerticalKey::Up;
    else if (event->key() == Qt::Key_Down)
        d->upDownDirection = State::VerticalKey::Down;
    if (jumpOverMention(event))
        return;

    const int position = cursorPosition();
    d->scanAiteOnMove = true;
    d->scanTagOnMove = true;
    passOn(event);
    d->scanAiteOnMove = false;
    d->scanTagOnMove = false;
    leaveByUpOrDown(event, position);
    d->upDownDirection = State::VerticalKey::None;
}

bool DrawableTextArea::jumpOverMention(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool plain =
        modifiers == Qt::NoModifier || modifiers == Qt::KeypadModifier || modifiers == Qt::ControlModifier;
    if (!plain)
        return false;
    const QTextDocument &document = *textDocumentOfItem();
    const int position = cursorPosition();
    const int flags = boundaryAt(document, position);
    // The arrow to the left leads on where the line runs from right to left.
    const bool leftwards = document.findBlock(position).textDirection() == Qt::LeftToRight;
    const int back = leftwards ? Qt::Key_Left : Qt::Key_Right;
    const int on = leftwards ? Qt::Key_Right : Qt::Key_Left;
    if (event->key() == back && (flags & RightEdge))
        setCursorPosition(leftEdgeBefore(document, position));
    else if (event->key() == on && ((flags & LeftEdge) || ((flags & BehindFirst) && (flags & DocumentStart))))
        setCursorPosition(rightEdgeBehind(document, position));
    else
        return false;
    detect();
    return true;
}

void DrawableTextArea::leaveByUpOrDown(const QKeyEvent *event, int positionBefore)
{
    if (d->upDownDirection == State::VerticalKey::None || !d->upDownKeyEnabled ||
        cursorPosition() != positionBefore || d->untrimmedContent.isEmpty())
        return;
    if (d->upDownDirection == State::VerticalKey::Up) {
        if (positionBefore == 0 || (event->modifiers() & Qt::ShiftModifier))
            return;
        setCursorPosition(0);
        Q_EMIT aiteDetected(QString(), false);
        Q_EMIT hashTagDetected(QString(), false);
    } else if (positionBefore != length()) {
        setCursorPosition(length());
        detect();
    }
}

void DrawableTextArea::typeKey(QKeyEvent *event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const bool plain =
        modifiers == Qt::NoModifier || modifiers == Qt::KeypadModifier || modifiers == Qt::ShiftModifier;
    if (d->maxCharacterCount != -1 && !event->text().isEmpty() && plain && d->selectedContent.isEmpty() &&
        length() >= d->maxCharacterCount) {
        Q_EMIT maxCharacterCountReached();
        // The base class still sees the key, for shortcuts, and cannot type it. Becoming editable again puts
        // its cursor at the end.
        const int position = cursorPosition();
        setReadOnly(true);
        passOn(event);
        setReadOnly(false);
        setCursorPosition(position);
        return;
    }
    if (!isTextKey(event)) {
        dissolveByRemovingKey(event);
        passOn(event);
        return;
    }
    // Asked about the key alone, in front of what it would replace: a validator that counts refuses keys in a
    // full box also over a selection, as clients know it.
    if (isRefused(event->text(), Replace::Nothing))
        return;
    QTextDocument *document = textDocumentOfItem();
    if (boundaryAt(*document, cursorPosition()) & Inside)
        dissolve(*document, cursorPosition(), cursorPosition());
    insertText(event->text() == QLatin1String(" ") ? QString(QChar(QChar::Nbsp)) : event->text());
}

/// Dissolves the mentions of which a key is about to remove a part.
void DrawableTextArea::dissolveByRemovingKey(const QKeyEvent *event)
{
    for (const RemovingKey &removing : removingKeys) {
        if (!event->matches(removing.key))
            continue;
        QTextDocument *document = textDocumentOfItem();
        QTextCursor cursor(document);
        cursor.setPosition(cursorPosition());
        cursor.movePosition(removing.move);
        dissolve(*document, hasSelectedText() ? selectionStart() : cursorPosition(),
                 hasSelectedText() ? selectionEnd() : cursor.position());
        return;
    }
}

void DrawableTextArea::inputMethodEvent(QInputMethodEvent *event)
{
    const QString committed = event->commitString();
    if (isReadOnly() || (committed.isEmpty() && event->replacementLength() == 0)) {
        // A preedit takes the place of the selection.
        if (!isReadOnly() && !event->preeditString().isEmpty() && hasSelectedText())
            dissolve(*textDocumentOfItem(), selectionStart(), selectionEnd());
        QQuickTextArea::inputMethodEvent(event);
        d->preeditCopy = preeditText();
        return;
    }
    // Committed text goes the way of typed text; the base class only ends the preedit.
    QInputMethodEvent end;
    QQuickTextArea::inputMethodEvent(&end);
    if (event->replacementLength() > 0) {
        const int from = qBound(0, cursorPosition() + event->replacementStart(), length());
        const int to = int(qMin<qint64>(qint64(from) + event->replacementLength(), length()));
        dissolve(*textDocumentOfItem(), from, to);
        removeRange(from, to);
        setCursorPosition(from);
    }
    if (!committed.isEmpty())
        insertText(committed);
    if (!event->preeditString().isEmpty()) {
        // Some input methods commit one word and go on with the next in a single event.
        QInputMethodEvent rest(event->preeditString(), event->attributes());
        QQuickTextArea::inputMethodEvent(&rest);
    }
    d->preeditCopy = preeditText();
    event->accept();
}

void DrawableTextArea::focusOutEvent(QFocusEvent *event)
{
    if (!d->preeditCopy.isEmpty()) {
        QInputMethodEvent end;
        QQuickTextArea::inputMethodEvent(&end);
        d->preeditCopy = preeditText();
    }
    QQuickTextArea::focusOutEvent(event);
}

/// Lets the base class handle the key.
void DrawableTextArea::passOn(QKeyEvent *event)
{
    QQuickTextArea::keyPressEvent(event);
    noticeLostSelection();
    correctSelectionClipboard();
}

// What the base class hands to other programs as the selection has placeholders in it.
void DrawableTextArea::correctSelectionClipboard()
{
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection() && clipboard->ownsSelection() && !d->selectedContent.isEmpty())
        clipboard->setMimeData(selectionMime(), QClipboard::Selection);
}

void DrawableTextArea::mousePressEvent(QMouseEvent *event)
{
    setKeepMouseGrab(true);
    QQuickTextArea::mousePressEvent(event);
}

void DrawableTextArea::mouseMoveEvent(QMouseEvent *event)
{
    QTextCursor cursor(textDocumentOfItem());
    cursor.setPosition(positionAt(event->localPos().x(), event->localPos().y()));
    const bool onMention = cursor.charFormat().hasProperty(areadocument::MentionProperty);
    setCursor(onMention ? Qt::PointingHandCursor : Qt::IBeamCursor);
    QQuickTextArea::mouseMoveEvent(event);
}

void DrawableTextArea::mouseReleaseEvent(QMouseEvent *event)
{
    setKeepMouseGrab(false);
    QClipboard *clipboard = QGuiApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
        // The base class would insert the other program's text as it comes.
        if (const QMimeData *mime = clipboard->mimeData(QClipboard::Selection);
            mime && mime->hasText() && isEnabled() && !isReadOnly()) {
            setCursorPosition(positionAt(event->localPos().x(), event->localPos().y()));
            insertMime(mime, limitReturns(mime->text()));
        }
        return;
    }

    d->scanAiteOnMove = true;
    d->scanTagOnMove = true;
    QQuickTextArea::mouseReleaseEvent(event);
    d->scanAiteOnMove = false;
    d->scanTagOnMove = false;
    correctSelectionClipboard();

    if (event->button() != Qt::RightButton)
        return;
    if (d->spellcheckEnabled) {
        const int position = positionAt(event->localPos().x(), event->localPos().y());
        for (const SpellingError &error : qAsConst(d->spellingErrors)) {
            if (error.start <= position && position < error.start + error.length) {
                select(error.start, error.start + error.length);
                return;
            }
        }
    }
    Q_EMIT customContextMenuRequested({}, false);
}

void DrawableTextArea::clearToLineHead()
{
    QTextDocument *document = textDocumentOfItem();
    QTextCursor cursor(document);
    cursor.setPosition(cursorPosition());
    cursor.movePosition(QTextCursor::StartOfLine, QTextCursor::KeepAnchor);
    dissolve(*document, std::min(cursor.position(), cursor.anchor()),
             std::max(cursor.position(), cursor.anchor()));
    if (!cursor.hasSelection() && cursor.position() != 0) {
        // At a line's start the whole line above goes, with its break.
        const int lineStart = cursor.position();
        cursor.movePosition(QTextCursor::Up);
        cursor.movePosition(QTextCursor::StartOfLine);
        dissolve(*document, cursor.position(), cursor.position());
        remove(cursor.position(), lineStart);
        return;
    }
    cursor.removeSelectedText();
}

void DrawableTextArea::clearToWordHead()
{
    QTextDocument *document = textDocumentOfItem();
    const int position = cursorPosition();
    const int length = areatext::wordHeadLength(document->toPlainText().left(position));
    dissolve(*document, position - length, position);
    removeRange(position - length, position);
}
