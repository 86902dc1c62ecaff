#include "box.h"

#include "text/aiteclipboard.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMap>
#include <QMimeData>
#include <QQuickTextDocument>
#include <QTextCursor>

Box::Box(QQuickItem *parent)
    : DrawableTextArea(parent)
{
    QFont font;
    font.setPixelSize(20);
    setFont(font);
    setWidth(400);
    setHeight(200);
    setWrapMode(QQuickTextEdit::Wrap);
}

QTextDocument *Box::document()
{
    return textDocument()->textDocument();
}

QString Box::raw()
{
    QString text;
    for (int i = 0; i < document()->characterCount() - 1; ++i) {
        const QChar c = document()->characterAt(i);
        text += c == QChar(QChar::ParagraphSeparator) ? QChar(QLatin1Char('\n')) : c;
    }
    return text;
}

QTextCharFormat Box::formatAt(int position)
{
    QTextCursor cursor(document());
    cursor.setPosition(position + 1);
    return cursor.charFormat();
}

QStringList Box::mentions()
{
    QStringList list;
    QVariant last;
    for (int i = 0; i < document()->characterCount() - 1; ++i) {
        // Behind a line end a cursor tells what follows.
        const bool isLineEnd = document()->characterAt(i) == QChar(QChar::ParagraphSeparator);
        const QVariant serial = isLineEnd ? QVariant() : formatAt(i).property(QTextFormat::UserProperty + 2);
        if (serial.isValid()) {
            if (serial != last)
                list.append(QString());
            list.last() += document()->characterAt(i);
        }
        last = serial;
    }
    return list;
}

UserTextBlocks Box::blocks()
{
    return aiteData().value<UserTextBlocks>();
}

UserTextBlocks Box::untrimmedBlocks()
{
    return untrimmedAiteData().value<UserTextBlocks>();
}

QStringList Box::blockList()
{
    QStringList list;
    for (const UserTextBlock &block : blocks()) {
        list.append(QStringLiteral("%1+%2=%3").arg(block.start).arg(block.length).arg(block.data.toString()));
    }
    return list;
}

void Box::type(const QString &text)
{
    for (const QChar c : text)
        key(c == QLatin1Char('\n') ? int(Qt::Key_Return) : int(c.toUpper().unicode()), Qt::NoModifier, c);
}

void Box::key(int key, Qt::KeyboardModifiers modifiers, const QString &text)
{
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QCoreApplication::sendEvent(this, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    QCoreApplication::sendEvent(this, &release);
}

void Box::compose(const QString &preedit)
{
    QInputMethodEvent event(preedit, {});
    QCoreApplication::sendEvent(this, &event);
}

void Box::commit(const QString &text, int replaceFrom, int replaceLength)
{
    QInputMethodEvent event;
    event.setCommitString(text, replaceFrom, replaceLength);
    QCoreApplication::sendEvent(this, &event);
}

void Box::setNames(QJSEngine &engine, const QString &source)
{
    setAiteNameFunction(engine.evaluate(QLatin1Char('(') + source + QLatin1Char(')')));
}

void Box::setNames(QJSEngine &engine)
{
    setNames(engine, QStringLiteral("function(json, text) { return JSON.parse(json)['aiteNick'] || text; }"));
}

namespace fixture {

const QString grin = QStringLiteral("\U0001F600");
const QString family = QStringLiteral("\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466");

const QVector<EmojiKind> &emojiKinds()
{
    static const QVector<EmojiKind> kinds{
        {"face", grin, QStringLiteral("1f600")},
        {"family", family, QStringLiteral("1f468-200d-1f469-200d-1f467-200d-1f466")},
        {"flag", QStringLiteral("\U0001F1E9\U0001F1EA"), QStringLiteral("1f1e9-1f1ea")},
        {"keycap", QStringLiteral("1\uFE0F\u20E3"), QStringLiteral("31-20e3")},
        {"skin tone", QStringLiteral("\U0001F44D\U0001F3FD"), QStringLiteral("1f44d-1f3fd")},
        {"selector", QStringLiteral("\u2764\uFE0F"), QStringLiteral("2764")},
        {"rainbow flag", QStringLiteral("\U0001F3F3\uFE0F\u200D\U0001F308"),
         QStringLiteral("1f3f3-200d-1f308")},
        {"tag flag", QStringLiteral("\U0001F3F4\U000E0067\U000E0062\U000E0073\U000E0063\U000E0074\U000E007F"),
         QStringLiteral("1f3f4-e0067-e0062-e0073-e0063-e0074-e007f")},
    };
    return kinds;
}

QVariantMap mention(const QVariant &userId, const QString &nick)
{
    QVariantMap map{{QStringLiteral("userId"), userId}};
    if (!nick.isEmpty())
        map.insert(QStringLiteral("aiteNick"), nick);
    return map;
}

UserTextBlock aiteBlock(int start, int length, const QVariant &userId)
{
    UserTextBlock block;
    block.start = start;
    block.length = length;
    block.type = 3;
    block.data = userId;
    return block;
}

QString tellText(QTextDocument &document, int from, int to)
{
    QString text;
    for (int i = from; i < to; ++i) {
        const QChar c = document.characterAt(i);
        QTextCursor cursor(&document);
        cursor.setPosition(i + 1);
        const QStringList emoji = cursor.charFormat().property(QTextFormat::UserProperty).toStringList();
        if (c == QChar(QChar::ParagraphSeparator) || c == QChar(QChar::LineSeparator))
            text += QLatin1Char('\n');
        else if (c == QChar(0xEEEE) && emoji.size() == 2)
            text += emoji.at(1);
        else
            text += c;
    }
    return text.replace(QChar(0x00A0), QLatin1Char(' ')).replace(QChar(0xEEEF), QLatin1Char('\t'));
}

Told tell(QTextDocument &document)
{
    Told told;
    QMap<int, int> found; // lengths by start
    QVariantList serials;
    for (int i = 0; i < document.characterCount() - 1; ++i) {
        const QString piece = tellText(document, i, i + 1);
        const int pos = told.text.size();
        told.text += piece;
        if (piece == QLatin1String("\n"))
            continue;
        QTextCursor cursor(&document);
        cursor.setPosition(i + 1);
        const QTextCharFormat format = cursor.charFormat();
        const QVariant serial = format.property(QTextFormat::UserProperty + 2);
        if (!serial.isValid())
            continue;
        if (!serials.contains(serial)) {
            serials.append(serial);
            told.mentions.append(format.property(QTextFormat::UserProperty + 1));
            told.names.append(QString());
            found.insert(pos, 0);
        }
        found.last() += piece.size();
        told.names.last() += piece;
    }
    int k = 0;
    for (auto entry = found.cbegin(); entry != found.cend(); ++entry, ++k)
        told.blocks.append(aiteBlock(entry.key(), entry.value(),
                                     told.mentions.at(k).toMap().value(QStringLiteral("userId"))));
    return told;
}

QMimeData *mimeWithMentions(const QString &text, const QVector<QPair<int, int>> &mentions)
{
    QVector<TextSpan> spans;
    for (const QPair<int, int> &range : mentions)
        spans.append({range.first, range.second, mention(spans.size() + 1), SpanAite});
    return aiteclipboard::createMimeData(text, aiteclipboard::toBase64(spans));
}

} // namespace fixture
