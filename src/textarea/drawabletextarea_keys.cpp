// Keys, input method, mouse.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "areatext.h"
#include "mentionedges.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
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
    return c.isPrint() || c.category() == QChar::Other_PrivateUse || c == QLatin1Char('\t');
}

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
        QQuickTextArea::keyPressEvent(event);
        return;
    }
    if (!d->selectedContent.isEmpty()) {
        dissolve(*document, selectionStart(), selectionEnd());
        QQuickTextArea::keyPressEvent(event);
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
    QQuickTextArea::keyPressEvent(event);
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
        QQuickTextArea::keyPressEvent(event);
        return;
    }
    if (d->selectedContent.isEmpty())
        return;
    dissolve(*textDocumentOfItem(), selectionStart(), selectionEnd());
    // Made now: after the cut nothing is selected. And set last, over the placeholders that the base class
    // copies.
    QMimeData *mime = selectionMime();
    QQuickTextArea::keyPressEvent(event);
    QGuiApplication::clipboard()->setMimeData(mime);
}

void DrawableTextArea::undoByKey(QKeyEvent *event)
{
    d->undoPending = true;
    d->undoDelta = 0;
    const int position = cursorPosition();
    QQuickTextArea::keyPressEvent(event);
    d->undoPending = false;
    setCursorPosition(position + d->undoDelta);
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
    QQuickTextArea::keyPressEvent(event);
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
    if (event->key() == Qt::Key_Left && (flags & RightEdge))
        setCursorPosition(leftEdgeBefore(document, position));
    else if (event->key() == Qt::Key_Right &&
             ((flags & LeftEdge) || ((flags & BehindFirst) && (flags & DocumentStart))))
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
        // The base class still sees the key, for shortcuts, and cannot type it.
        setReadOnly(true);
        QQuickTextArea::keyPressEvent(event);
        setReadOnly(false);
        return;
    }
    if (!isTextKey(event)) {
        QQuickTextArea::keyPressEvent(event);
        return;
    }
    if (isRefused(event->text()))
        return;
    QTextDocument *document = textDocumentOfItem();
    if (boundaryAt(*document, cursorPosition()) & Inside)
        dissolve(*document, cursorPosition(), cursorPosition());
    insertText(event->text() == QLatin1String(" ") ? QString(QChar(QChar::Nbsp)) : event->text());
}

void DrawableTextArea::inputMethodEvent(QInputMethodEvent *event)
{
    if (event->commitString().isEmpty()) {
        QQuickTextArea::inputMethodEvent(event);
        d->preeditCopy = preeditText();
        return;
    }
    // Committed text goes the way of typed text; the base class only ends the preedit and takes away what the
    // commit replaces.
    QInputMethodEvent end;
    if (event->replacementLength() > 0) {
        const int from = cursorPosition() + event->replacementStart();
        dissolve(*textDocumentOfItem(), from, from + event->replacementLength());
        end.setCommitString(QString(), event->replacementStart(), event->replacementLength());
    }
    QQuickTextArea::inputMethodEvent(&end);
    insertText(event->commitString());
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

void DrawableTextArea::mousePressEvent(QMouseEvent *event)
{
    setKeepMouseGrab(true);
    QQuickTextArea::mousePressEvent(event);
}

void DrawableTextArea::mouseMoveEvent(QMouseEvent *event)
{
    const int position = positionAt(event->localPos().x(), event->localPos().y());
    const QTextCharFormat format = areadocument::formatAt(*textDocumentOfItem(), std::max(position - 1, 0));
    const bool onMention = format.hasProperty(areadocument::MentionProperty);
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
    // What the base class hands to other programs has placeholders in it.
    if (clipboard->supportsSelection() && clipboard->ownsSelection() && !d->selectedContent.isEmpty())
        clipboard->setMimeData(selectionMime(), QClipboard::Selection);

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
        remove(cursor.position(), lineStart);
        return;
    }
    cursor.removeSelectedText();
}

void DrawableTextArea::clearToWordHead()
{
    QTextDocument *document = textDocumentOfItem();
    const int position = cursorPosition();
    dissolve(*document, position, position);
    const int length = areatext::wordHeadLength(document->toPlainText().left(position));
    removeRange(position - length, position);
}
