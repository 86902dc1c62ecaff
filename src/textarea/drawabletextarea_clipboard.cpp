// Selection, copy, paste, drag and drop.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "areatext.h"
#include "text/aiteclipboard.h"
#include "text/userblocks.h"

#include <QClipboard>
#include <QDebug>
#include <QGuiApplication>
#include <QMap>
#include <QMimeData>
#include <QTextDocument>

#include <algorithm>

namespace {

const QString userIdKey = QStringLiteral("userId");
const QString nickKey = QStringLiteral("aiteNick");

/// A mention as far as it is selected.
struct SelectedMention
{
    QString text;   ///< the selected part of it, as it would be sent
    QString nick;   ///< the name that its data gives it
    int from = 0;   ///< where it starts, in display positions of the selection
    int length = 0; ///< in display positions
    QVariant userId;
};

/// The whole texts of those mentions that were made without a name: what stands there is their name.
QMap<uint, QString> wholeMentions(const QTextDocument &document, const QMap<uint, SelectedMention> &mentions)
{
    QMap<uint, QString> names;
    if (std::all_of(mentions.cbegin(), mentions.cend(),
                    [](const SelectedMention &mention) { return !mention.nick.isEmpty(); }))
        return names;
    areadocument::visitRuns(document, 0, areadocument::length(document), [&](const areadocument::Run &run) {
        if (run.style.serial && mentions.contains(*run.style.serial))
            names[*run.style.serial] += areadocument::withPlainSpaces(run.source());
    });
    return names;
}

} // namespace

void DrawableTextArea::onSelectonChanged()
{
    d->hadSelection = hasSelectedText();
    QTextDocument *document = textDocumentOfItem();
    QString content;
    int displayLength = 0;
    QMap<uint, SelectedMention> mentions;
    areadocument::visitRuns(*document, selectionStart(), selectionEnd(), [&](const areadocument::Run &run) {
        const QString source = run.source();
        if (run.style.serial) {
            const bool isNew = !mentions.contains(*run.style.serial);
            SelectedMention &mention = mentions[*run.style.serial];
            if (isNew) {
                mention.from = displayLength;
                mention.nick = areadocument::withPlainSpaces(run.style.mention.value(nickKey).toString());
                mention.userId = run.style.mention.value(userIdKey);
            }
            mention.text += source;
            mention.length += int(run.text.size());
        }
        content += source;
        displayLength += int(run.text.size());
    });
    const QMap<uint, QString> names = wholeMentions(*document, mentions);

    d->selectionBlocks.clear();
    for (auto mention = mentions.cbegin(); mention != mentions.cend(); ++mention) {
        const QString nick = mention->nick.isEmpty() ? names.value(mention.key()) : mention->nick;
        // Only a mention that is selected as a whole stays one.
        if (areadocument::withPlainSpaces(mention->text) != nick)
            continue;
        d->selectionBlocks.append({mention->from, mention->from + mention->length - 1,
                                   QVariantMap{{userIdKey, mention->userId}, {nickKey, nick}}, SpanAite});
    }
    std::sort(d->selectionBlocks.begin(), d->selectionBlocks.end(),
              [](const TextSpan &a, const TextSpan &b) { return a.from < b.from; });

    d->selectedContent = areadocument::withPlainSpaces(content);
    Q_EMIT selectedContentChanged(d->selectedContent);
}

// The base class loses a selection without a word where an undo leaves the cursor in its place.
void DrawableTextArea::noticeLostSelection()
{
    if (d->hadSelection && !hasSelectedText())
        onSelectonChanged();
}

QMimeData *DrawableTextArea::selectionMime() const
{
    const QString aites = d->aiteEnabled ? aiteclipboard::toBase64(d->selectionBlocks) : QString();
    return aiteclipboard::createMimeData(d->selectedContent, aites);
}

void DrawableTextArea::copy()
{
    if (!d->selectedContent.isEmpty())
        QGuiApplication::clipboard()->setMimeData(selectionMime(), QClipboard::Clipboard);
}

void DrawableTextArea::paste()
{
    if (!isEnabled() || isReadOnly())
        return;
    const QMimeData *mime = QGuiApplication::clipboard()->mimeData();
    if (!mime)
        return;
    if (mime->hasImage()) {
        Q_EMIT pastContent();
        return;
    }
    if (mime->hasUrls()) {
        const QList<QUrl> urls = mime->urls();
        if (std::any_of(urls.cbegin(), urls.cend(), [](const QUrl &url) { return url.isLocalFile(); })) {
            Q_EMIT pastContent();
            return;
        }
    } else if (!mime->hasText()) {
        qDebug() << "Nothing";
        return;
    }
    insertMime(mime, limitReturns(mime->text()));
}

/// Inserts `text` with the mentions that `mime` has for it.
void DrawableTextArea::insertMime(const QMimeData *mime, const QString &text)
{
    // Only a box that is over its limit already refuses; a text that does not fit is cut.
    if (d->maxCharacterCount != -1 && characterCount() > d->maxCharacterCount)
        return;
    const QString flat = flattenUserBlocks(text);
    {
        const Silence silence(*this);
        if (!d->aiteEnabled || !mime->hasFormat(aiteclipboard::mimeType()))
            insertText(flat);
        else if (!insertWithMentions(flat, aiteclipboard::fromBase64(mime->data(aiteclipboard::mimeType()))))
            return;
    }
    onContentChanged();
}

void DrawableTextArea::dragEnterEvent(QDragEnterEvent *event)
{
    Q_EMIT dragDetect();
    if (!d->dropEnabled) {
        event->ignore();
        return;
    }
    forceActiveFocus(Qt::OtherFocusReason);
    event->acceptProposedAction();
    const QMimeData *mime = event->mimeData();
    if (!mime->hasUrls() && mime->hasText())
        setCursorPosition(positionAt(event->posF().x(), event->posF().y()));
}

void DrawableTextArea::dragMoveEvent(QDragMoveEvent *event)
{
    if (!d->dropEnabled) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    const QMimeData *mime = event->mimeData();
    if (mime->hasUrls() || !mime->hasText())
        return;
    const QPointF point = event->posF();
    const int above = positionAt(point.x(), point.y() - 1.0);
    const int here = positionAt(point.x(), point.y());
    const int below = positionAt(point.x(), point.y() + 1.0);
    // Between two lines the cursor would jump back and forth.
    const bool allDiffer = above != here && here != below && above != below;
    if (!allDiffer)
        setCursorPosition(here);
}

void DrawableTextArea::dropEvent(QDropEvent *event)
{
    const QMimeData *mime = event->mimeData();
    if (!mime->hasUrls() && !mime->hasText()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    if (mime->hasUrls())
        Q_EMIT dropFiles(mime->urls());
    else
        insertMime(mime, mime->text());
}
