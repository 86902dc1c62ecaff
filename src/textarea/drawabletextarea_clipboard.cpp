// Selection, copy, paste, drag and drop.

#include "drawabletextarea_p.h"

#include "areadocument.h"
#include "areatext.h"
#include "mentionedges.h"
#include "text/aiteclipboard.h"
#include "text/emojitext.h"
#include "text/placeholders.h"
#include "text/userblocks.h"

#include <emoji/emojiparser.h>

#include <QClipboard>
#include <QDebug>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
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
    QString nick;   ///< the whole of it
    int from = 0;   ///< where it starts, in display positions of the selection
    int length = 0; ///< in display positions
    QVariantMap data;
};

/// A text with each emoji as one placeholder, and the emoji that stood there.
struct CollapsedText
{
    explicit CollapsedText(const QString &source)
    {
        const EmojiParser parser(nullptr);
        int done = 0;
        for (const QPair<int, int> &emoji : parser.emojiIndexes(source)) {
            appendPlain(source.mid(done, emoji.first - done));
            text += emojiPlaceholder;
            emojis.append(source.mid(emoji.first, emoji.second));
            done = emoji.first + emoji.second;
        }
        appendPlain(source.mid(done));
    }

    /// `text.mid(from, length)` with its emoji put back.
    [[nodiscard]] QString source(int from, int length) const
    {
        const QString part = text.mid(from, length);
        const int start = std::max(from, 0);
        int index = text.leftRef(start).count(emojiPlaceholder);
        QString result;
        for (const QChar c : part) {
            if (c == emojiPlaceholder)
                result += emojis.value(index++);
            else
                result += c;
        }
        return result;
    }

    QString text;
    QStringList emojis;

private:
    void appendPlain(const QString &plain)
    {
        // A placeholder that came in with the text stands for itself.
        for (int i = plain.count(emojiPlaceholder); i > 0; --i)
            emojis.append(QString(emojiPlaceholder));
        text += plain;
    }
};

} // namespace

void DrawableTextArea::onSelectonChanged()
{
    QTextDocument *document = textDocumentOfItem();
    QString content;
    int displayLength = 0;
    QMap<uint, SelectedMention> mentions;
    const QVector<areadocument::Run> selected =
        areadocument::runs(*document, selectionStart(), selectionEnd());
    for (const areadocument::Run &run : selected) {
        const QString source = run.source();
        if (run.serial) {
            const bool isNew = !mentions.contains(*run.serial);
            SelectedMention &mention = mentions[*run.serial];
            if (isNew) {
                mention.from = displayLength;
                mention.nick = areadocument::withPlainSpaces(run.mention.value(nickKey).toString());
                mention.data = {{userIdKey, run.mention.value(userIdKey)}};
            }
            mention.text += source;
            mention.length += run.text.size();
        }
        content += source;
        displayLength += run.text.size();
    }

    d->selectionBlocks.clear();
    for (auto mention = mentions.begin(); mention != mentions.end(); ++mention) {
        if (mention->nick.isEmpty()) {
            // Made without a name: what stands there is its name.
            QString whole;
            for (const areadocument::Run &run :
                 areadocument::runs(*document, 0, areadocument::length(*document))) {
                if (run.serial == mention.key())
                    whole += run.source();
            }
            mention->nick = areadocument::withPlainSpaces(whole);
        }
        // Only a mention that is selected as a whole stays one.
        if (areadocument::withPlainSpaces(mention->text) != mention->nick)
            continue;
        mention->data.insert(nickKey, mention->nick);
        d->selectionBlocks.append(
            {mention->from, mention->from + mention->length - 1, mention->data, SpanAite});
    }
    std::sort(d->selectionBlocks.begin(), d->selectionBlocks.end(),
              [](const TextSpan &a, const TextSpan &b) { return a.from < b.from; });

    d->selectedContent = areadocument::withPlainSpaces(content);
    Q_EMIT selectedContentChanged(d->selectedContent);
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
    if (d->maxCharacterCount != -1 && length() - d->selectedContent.size() > d->maxCharacterCount)
        return;
    const QString flat = flattenUserBlocks(text);
    const QPointer<DrawableTextArea> self(this);
    d->contentNotifications = false;
    if (d->aiteEnabled && mime->hasFormat(aiteclipboard::mimeType()))
        insertWithMentions(flat, aiteclipboard::fromBase64(mime->data(aiteclipboard::mimeType())));
    else
        insertText(flat);
    if (!self)
        return;
    d->contentNotifications = true;
    onContentChanged();
}

void DrawableTextArea::insertWithMentions(const QString &text, const QVector<TextSpan> &mentions)
{
    if (mentions.isEmpty()) {
        insertText(text);
        return;
    }
    const CollapsedText collapsed(text);
    const QPointer<DrawableTextArea> self(this);
    QTextCursor cursor(textDocumentOfItem());
    cursor.setPosition(cursorPosition());
    cursor.beginEditBlock();
    int end = 0;
    for (const TextSpan &span : mentions) {
        if (span.from > end)
            insertText(collapsed.source(end, span.from - end), {}, &cursor);
        const int length = int(qBound<qint64>(-1, qint64(span.to) - span.from + 1, text.size()));
        const QString own = collapsed.source(span.from, length);
        end = int(qBound<qint64>(0, qint64(span.from) + length, collapsed.text.size()));
        if (own.isEmpty())
            continue;
        QVariantMap mention =
            span.data.canConvert<QVariantMap>() ? span.data.toMap() : QVariantMap{{userIdKey, span.data}};
        const QString name = mentionName(mention, own);
        if (!self)
            return; // the client's function deleted the box
        if (name.isEmpty()) {
            insertText(own, {}, &cursor);
        } else {
            mention.insert(nickKey, name);
            insertText(name, mention, &cursor);
        }
    }
    if (end < collapsed.text.size())
        insertText(collapsed.source(end, collapsed.text.size() - end), {}, &cursor);
    cursor.endEditBlock();
}

/// Asks the client for the name under which a mention goes in. A function that is missing or fails gives what
/// calling it gives, as text.
QString DrawableTextArea::mentionName(const QVariantMap &mention, const QString &text)
{
    const QJsonDocument json(QJsonObject::fromVariantMap(mention));
    QJSValue function = d->aiteNameFunction;
    return function.call({QString::fromUtf8(json.toJson(QJsonDocument::Compact)), text}).toString();
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
    if (mime->hasUrls())
        Q_EMIT dropFiles(mime->urls());
    else if (mime->hasText())
        insertMime(mime, mime->text());
}
