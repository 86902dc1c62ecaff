// Messages on their ways out of the input box and back, and the box under many edits: what the test itself
// knows of a message is compared with what comes out.

#include "box.h"

#include "messageguard.h"
#include "text/drawabletext.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace fixture;

namespace {

constexpr quint32 seed = 20'261'121;

/// A message as the test knows it, without any help of the box.
struct Message
{
    QString text;
    UserTextBlocks blocks;

    void append(const QString &piece) { text += piece; }
    void appendMention(const QString &name, const QVariant &userId)
    {
        blocks.append(aiteBlock(text.size(), name.size(), userId));
        text += name;
    }

    /// Without blanks at the edges; blocks move along.
    [[nodiscard]] Message trimmed() const
    {
        const auto isBlank = [](QChar c) { return QStringLiteral(" \t\n").contains(c); };
        int from = 0;
        int to = text.size();
        while (from < to && isBlank(text.at(from)))
            ++from;
        while (to > from && isBlank(text.at(to - 1)))
            --to;
        Message result{text.mid(from, to - from), blocks};
        for (UserTextBlock &block : result.blocks)
            block.start -= from;
        return result;
    }
};

QString anyOf(QRandomGenerator &random, const QStringList &list)
{
    return list.at(random.bounded(list.size()));
}

QString anyEmoji(QRandomGenerator &random)
{
    return emojiKinds().at(random.bounded(emojiKinds().size())).source;
}

QString anyWord(QRandomGenerator &random)
{
    static const QStringList words{
        QStringLiteral("word"),
        QStringLiteral("two words"),
        QStringLiteral("  "),
        QStringLiteral("\t"),
        QStringLiteral("a  b "),
        QStringLiteral("\u4F60\u597D"),
        QStringLiteral("\u05D0\u05D1 \u05D2"),
        QStringLiteral("\u0639\u0631\u0628\u064A"),
        QStringLiteral("\U00020BB7"),
        QStringLiteral("e\u0301x"), // at an edge the mark would be cut
        QStringLiteral("#tag"),
        QStringLiteral("@none"),
        QStringLiteral("\\1 {\"displayName\":\"x\"} <b>"),
    };
    return anyOf(random, words);
}

QString anyName(QRandomGenerator &random)
{
    const QStringList names{
        QStringLiteral("@Ann"),
        QStringLiteral("@Ann Lee"),
        QStringLiteral("@two  blanks"),
        QStringLiteral("@\u674E\u6885"),
        QStringLiteral("@\u05D0\u05D1 \u05D2"),
        QStringLiteral("@B") + anyEmoji(random),
        anyEmoji(random) + QStringLiteral("x"),
        anyEmoji(random) + anyEmoji(random),
        QStringLiteral("no sign"),
    };
    return anyOf(random, names);
}

QVariant anyUser(QRandomGenerator &random)
{
    switch (random.bounded(4)) {
    case 0:
        return 0;
    case 1:
        return QStringLiteral("u%1").arg(random.bounded(100));
    default:
        return random.bounded(1, 100000);
    }
}

/// Writes a random message into `box` piece by piece, as a client does, and tells what was written.
Message write(Box &box, QRandomGenerator &random)
{
    Message message;
    for (int piece = random.bounded(1, 14); piece > 0; --piece) {
        switch (random.bounded(7)) {
        case 0:
        case 1: {
            const QString word = anyWord(random);
            box.insertText(word);
            message.append(word);
            break;
        }
        case 2: {
            const QString emoji = anyEmoji(random);
            box.insertText(emoji);
            message.append(emoji);
            break;
        }
        case 3:
            box.insertText(QStringLiteral("\n"));
            message.append(QStringLiteral("\n"));
            break;
        case 4: {
            // With nothing behind it, so that the next piece touches it.
            const QString name = anyName(random);
            const QVariant user = anyUser(random);
            box.insertText(name, mention(user, name));
            message.appendMention(name, user);
            break;
        }
        default: {
            const QString name = anyName(random);
            const QVariant user = anyUser(random);
            box.insertAite(name, mention(user, name));
            message.appendMention(name, user);
            message.append(QStringLiteral(" "));
        }
        }
    }
    return message;
}

/// What `box` says, for comparison.
Message said(Box &box)
{
    return {box.content(), box.blocks()};
}

QString shown(const Message &message)
{
    QString text = message.text;
    text.replace(QLatin1Char('\n'), QLatin1String("\\n")).replace(QLatin1Char('\t'), QLatin1String("\\t"));
    for (const UserTextBlock &block : message.blocks)
        text += QStringLiteral(" [%1+%2=%3]").arg(block.start).arg(block.length).arg(block.data.toString());
    return text;
}

} // namespace

class TestAreaRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { guard = std::make_unique<MessageGuard>(); }
    void cleanup()
    {
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    void messagesSurviveTheWayThroughTheView()
    {
        QRandomGenerator random(seed);
        int mentions = 0;
        for (int round = 0; round < 400; ++round) {
            Box source;
            source.setAiteEnabled(true);
            const Message written = write(source, random);
            const Message sent = written.trimmed();
            mentions += sent.blocks.size();
            QCOMPARE(source.untrimmedContent(), written.text);
            QCOMPARE(source.untrimmedBlocks(), written.blocks);
            QCOMPARE(shown(said(source)), shown(sent));
            QCOMPARE(source.aiteList().size(), sent.blocks.size());
            if (sent.text.isEmpty())
                continue; // nothing to copy

            // To another reader's view, and copied there.
            DrawableText view;
            view.setMaxWidth(300);
            view.setText(source.content());
            view.setUserBlocks(source.aiteData());
            view.selectAll();
            QCOMPARE(view.selectedText(), sent.text);
            view.copy();
            const QMimeData *mime = QGuiApplication::clipboard()->mimeData();
            QCOMPARE(mime->text(), sent.text);
            QCOMPARE(mime->hasFormat(QStringLiteral("ostrel/aite")), !sent.blocks.isEmpty());

            // Pasted or dropped into a second box, whose client knows people by the words that stand there.
            Box second;
            second.setAiteEnabled(true);
            second.setNames(engine, QStringLiteral("function(json, text) { return text; }"));
            if (round % 2 == 0) {
                second.paste();
            } else {
                QDropEvent drop(QPointF(1, 1), Qt::CopyAction, mime, Qt::LeftButton, Qt::NoModifier);
                QCoreApplication::sendEvent(&second, &drop);
            }
            QCOMPARE(shown(said(second)), shown(sent));
            QCOMPARE(second.blocks(), sent.blocks);
            second.undo();
            QCOMPARE(second.content(), QString());
            second.redo();
            QCOMPARE(shown(said(second)), shown(sent));

            // From box to box, where all keys of the data that a selection has go along.
            second.selectAll();
            second.copy();
            Box third;
            third.setAiteEnabled(true);
            third.setNames(engine);
            third.paste();
            QCOMPARE(shown(said(third)), shown(sent));

            // And kept as a draft: the content and the blocks as a client stores them.
            Box restored;
            restored.setAiteEnabled(true);
            restored.setNames(engine, QStringLiteral("function(json, text) { return text; }"));
            restored.setUserBlocks(QVariant::fromValue(sent.blocks));
            restored.setContent(sent.text);
            QCOMPARE(shown(said(restored)), shown(sent));
        }
        QVERIFY(mentions > 400);
    }

    // A selection cuts the message anywhere; whole mentions in it stay what they are, others become words.
    void partsOfMessagesSurviveTheClipboard()
    {
        QRandomGenerator random(seed);
        for (int round = 0; round < 400; ++round) {
            Box source;
            source.setAiteEnabled(true);
            const Message written = write(source, random);
            const int a = random.bounded(source.length() + 1);
            const int b = random.bounded(source.length() + 1);
            const int from = source.document()->toPlainText().isEmpty() ? 0 : qMin(a, b);
            const int to = qMax(a, b);
            const int sourceFrom = tellText(*source.document(), 0, from).size();
            const int sourceTo = sourceFrom + tellText(*source.document(), from, to).size();
            source.select(from, to);
            QCOMPARE(source.selectedContent(), written.text.mid(sourceFrom, sourceTo - sourceFrom));
            if (from == to)
                continue;

            Message part{written.text.mid(sourceFrom, sourceTo - sourceFrom), {}};
            for (UserTextBlock block : written.blocks) {
                if (block.start < sourceFrom || block.start + block.length > sourceTo)
                    continue;
                block.start -= sourceFrom;
                part.blocks.append(block);
            }
            source.copy();
            Box target;
            target.setAiteEnabled(true);
            target.setNames(engine, QStringLiteral("function(json, text) { return text; }"));
            target.paste();
            QCOMPARE(target.untrimmedContent(), part.text);
            QCOMPARE(target.untrimmedBlocks(), part.blocks);
        }
    }

    // Whatever is done to it, a box says what its document holds, holds no raw blanks or unknown
    // placeholders, and a mention is whole or none.
    void anyEditsLeaveTheBoxInOrder()
    {
        for (quint32 round = 0; round < 60; ++round) {
            QRandomGenerator random(seed + round);
            Box box;
            box.setAiteEnabled(true);
            box.setHashTagEnabled(true);
            box.setDropEnabled(true);
            box.setEnableTab(true);
            box.setUpDownKeyEnabled(true);
            box.setNames(engine);
            QString told;
            connect(&box, &DrawableTextArea::contentChanged, this,
                    [&told](const QString &content) { told = content; });
            QStringList steps;
            for (int step = 0; step < 120; ++step) {
                steps.append(edit(box, random));
                const QString trouble = troubleWith(box, told);
                QVERIFY2(trouble.isEmpty(),
                         qPrintable(QStringLiteral("%1 after %2, round %3")
                                        .arg(trouble, steps.mid(steps.size() - 6).join(QLatin1String(", ")))
                                        .arg(round)));
            }
        }
    }

private:
    /// Does something to `box`, and tells what.
    static QString edit(Box &box, QRandomGenerator &random)
    {
        static const QVector<int> keys{Qt::Key_Left,   Qt::Key_Right, Qt::Key_Up,  Qt::Key_Down,
                                       Qt::Key_Home,   Qt::Key_End,   Qt::Key_Tab, Qt::Key_Backspace,
                                       Qt::Key_Delete, Qt::Key_Return};
        static const QVector<int> modifiers{Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier,
                                            Qt::ControlModifier, Qt::ControlModifier | Qt::ShiftModifier};
        static const QVector<int> letters{Qt::Key_A, Qt::Key_C, Qt::Key_K, Qt::Key_V,
                                          Qt::Key_X, Qt::Key_Y, Qt::Key_Z};
        switch (random.bounded(14)) {
        case 0: {
            const QString word = anyWord(random);
            for (const QChar c : word) {
                if (!c.isSurrogate())
                    box.type(c);
            }
            return QStringLiteral("type ") + word;
        }
        case 1: {
            const QString emoji = anyEmoji(random);
            box.key(0, Qt::NoModifier, emoji);
            return QStringLiteral("type emoji");
        }
        case 2:
        case 3:
        case 4: {
            const int key = keys.at(random.bounded(keys.size()));
            const int held = modifiers.at(random.bounded(modifiers.size()));
            box.key(key, Qt::KeyboardModifiers(held), key == Qt::Key_Tab ? QStringLiteral("\t") : QString());
            return QStringLiteral("key %1 with %2").arg(key, 0, 16).arg(held, 0, 16);
        }
        case 5: {
            const int letter = letters.at(random.bounded(letters.size()));
            box.key(letter, Qt::ControlModifier);
            return QStringLiteral("Ctrl+") + QLatin1Char(char(letter));
        }
        case 6:
            box.compose(QStringLiteral("ni"));
            if (random.bounded(2))
                box.compose(QString());
            else
                box.commit(anyWord(random));
            return QStringLiteral("compose");
        case 7: {
            const int from = random.bounded(-4, 2);
            box.commit(anyWord(random), from, random.bounded(5));
            return QStringLiteral("replace from %1").arg(from);
        }
        case 8:
            box.setCursorPosition(random.bounded(box.length() + 1));
            return QStringLiteral("move to %1").arg(box.cursorPosition());
        case 9:
            box.select(random.bounded(box.length() + 1), random.bounded(box.length() + 1));
            return QStringLiteral("select %1 to %2").arg(box.selectionStart()).arg(box.selectionEnd());
        case 10:
        case 11: {
            const QString name = anyName(random);
            box.insertAite(name, mention(anyUser(random), name));
            return QStringLiteral("mention ") + name;
        }
        case 12:
            if (random.bounded(2)) {
                box.clearToWordHead();
                return QStringLiteral("clear word");
            }
            box.clearToLineHead();
            return QStringLiteral("clear line");
        default: {
            if (random.bounded(4) == 0) {
                const QString text = anyWord(random) + anyName(random);
                box.setContent(text);
                return QStringLiteral("content ") + text;
            }
            const std::unique_ptr<QMimeData> mime(mimeWithMentions(
                anyWord(random) + anyName(random), {{random.bounded(6), random.bounded(20)}}));
            QDropEvent drop(QPointF(random.bounded(400), random.bounded(60)), Qt::CopyAction, mime.get(),
                            Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&box, &drop);
            return QStringLiteral("drop");
        }
        }
    }

    static QString troubleWith(Box &box, const QString &toldContent)
    {
        const Told told = tell(*box.document());
        if (box.untrimmedContent() != told.text)
            return QStringLiteral("content is not what the document holds");
        if (box.untrimmedBlocks() != told.blocks)
            return QStringLiteral("blocks are not those of the document");
        if (box.aiteList() != told.mentions)
            return QStringLiteral("mentions are not those of the document");
        if (box.content() != toldContent)
            return QStringLiteral("content was not told");
        if (box.selectedContent() != tellText(*box.document(), box.selectionStart(), box.selectionEnd()))
            return QStringLiteral("%1 is told to be selected from %2 to %3")
                .arg(box.selectedContent())
                .arg(box.selectionStart())
                .arg(box.selectionEnd());
        for (const QChar c : box.raw()) {
            if (QStringLiteral(" \t\f\uFFFC").contains(c))
                return QStringLiteral("a raw character in the document");
        }
        if (told.text.contains(QChar(0xEEEE)))
            return QStringLiteral("an emoji without a source");
        for (int i = 0; i < told.mentions.size(); ++i) {
            const QString name = told.mentions.at(i).toMap().value(QStringLiteral("aiteNick")).toString();
            if (told.names.at(i) != name)
                return QStringLiteral("%1 is left of the mention %2").arg(told.names.at(i), name);
        }
        return {};
    }

    std::unique_ptr<MessageGuard> guard;
    QJSEngine engine;
};

QTEST_MAIN(TestAreaRoundTrip)
#include "tst_arearoundtrip.moc"
