// Every way in which text gets into the input box, by the events of a person in a window: all normalise
// alike.

#include "box.h"

#include "itemwindow.h"
#include "messageguard.h"
#include "pointer.h"
#include "text/aiteclipboard.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QtTest>

#include <limits>
#include <memory>

using namespace fixture;

namespace {

using Road = void (*)(Box &, const QString &);

/// `text`, and that all of it is one mention.
QMimeData *mentionOfAll(const QString &text)
{
    return mimeWithMentions(text, {{0, std::numeric_limits<int>::max()}});
}

void pressPaste(Box &box, QMimeData *mime)
{
    QGuiApplication::clipboard()->setMimeData(mime);
    QTest::keyClick(box.window(), Qt::Key_V, Qt::ControlModifier);
}

/// Drags `mime` over the window to the middle of the box's first line and drops it there.
void dragAndDrop(Box &box, const QMimeData &mime)
{
    box.setDropEnabled(true);
    const QPoint spot = box.mapToScene(QPointF(40, 12)).toPoint();
    QDragEnterEvent enter(spot, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.window(), &enter);
    QDragMoveEvent move(spot, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.window(), &move);
    QDropEvent drop(spot, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(box.window(), &drop);
}

std::unique_ptr<QMimeData> plain(const QString &text)
{
    auto mime = std::make_unique<QMimeData>();
    mime->setText(text);
    return mime;
}

void byKey(Box &box, const QString &text)
{
    // One key with all of the text, as programmable keyboards send it.
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, text);
    QCoreApplication::sendEvent(box.window(), &press);
}

void byCommit(Box &box, const QString &text)
{
    QInputMethodEvent preedit(QStringLiteral("ni"), {});
    QCoreApplication::sendEvent(QGuiApplication::focusObject(), &preedit);
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(QGuiApplication::focusObject(), &commit);
    QCOMPARE(box.preeditText(), QString());
}

void byPasteKey(Box &box, const QString &text)
{
    pressPaste(box, plain(text).release());
}

void byPasteSlot(Box &box, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    box.paste();
}

void byPasteOfAMention(Box &box, const QString &text)
{
    box.setAiteEnabled(true);
    pressPaste(box, mentionOfAll(text));
}

void byMiddleClick(Box &box, const QString &text)
{
    QGuiApplication::clipboard()->setText(text, QClipboard::Selection);
    Pointer(&box).click(QPointF(40, 12), Qt::MiddleButton);
}

void byMiddleClickOfAMention(Box &box, const QString &text)
{
    box.setAiteEnabled(true);
    QGuiApplication::clipboard()->setMimeData(mentionOfAll(text), QClipboard::Selection);
    Pointer(&box).click(QPointF(40, 12), Qt::MiddleButton);
}

void byDrop(Box &box, const QString &text)
{
    dragAndDrop(box, *plain(text));
}

void byDropOfAMention(Box &box, const QString &text)
{
    box.setAiteEnabled(true);
    const std::unique_ptr<QMimeData> mime(mentionOfAll(text));
    dragAndDrop(box, *mime);
}

void byInsertText(Box &box, const QString &text)
{
    box.insertText(text);
}

void byInsertTextAsAMention(Box &box, const QString &text)
{
    box.insertText(text, mention(1));
}

void byContent(Box &box, const QString &text)
{
    box.setContent(text);
}

void byContentWithMentions(Box &box, const QString &text)
{
    box.setAiteEnabled(true);
    box.setContent(text);
}

struct NamedRoad
{
    const char *name;
    Road road;
    bool usesSelectionClipboard = false;
};
const QVector<NamedRoad> roads{
    {"key", byKey},
    {"commit", byCommit},
    {"Ctrl+V", byPasteKey},
    {"paste()", byPasteSlot},
    {"paste of a mention", byPasteOfAMention},
    {"middle click", byMiddleClick, true},
    {"middle click of a mention", byMiddleClickOfAMention, true},
    {"drop", byDrop},
    {"drop of a mention", byDropOfAMention},
    {"insertText", byInsertText},
    {"insertText as a mention", byInsertTextAsAMention},
    {"setContent", byContent},
    {"setContent with mentions", byContentWithMentions},
};

struct Sample
{
    const char *name;
    QString text;
    QString raw;     ///< in the document
    QString message; ///< as it is sent
};
QVector<Sample> samples()
{
    QVector<Sample> list{
        {"letters", QStringLiteral("abc"), QStringLiteral("abc"), QStringLiteral("abc")},
        {"spaces", QStringLiteral("a b  c"), QStringLiteral("a\u00A0b\u00A0\u00A0c"),
         QStringLiteral("a b  c")},
        {"no-break space", QStringLiteral("a\u00A0b"), QStringLiteral("a\u00A0b"), QStringLiteral("a b")},
        {"tab", QStringLiteral("a\tb"), QStringLiteral("a\uEEEFb"), QStringLiteral("a\tb")},
        {"form feed", QStringLiteral("a\fb"), QStringLiteral("a\nb"), QStringLiteral("a\nb")},
        {"object", QStringLiteral("a\uFFFCb"), QStringLiteral("a\u00A0b"), QStringLiteral("a b")},
        {"lines", QStringLiteral("a\nb\n\nc"), QStringLiteral("a\nb\n\nc"), QStringLiteral("a\nb\n\nc")},
        {"lines of Windows", QStringLiteral("a\r\nb"), QStringLiteral("a\nb"), QStringLiteral("a\nb")},
        {"separators", QStringLiteral("a\u2029b\u2028c"), QStringLiteral("a\nb\u2028c"),
         QStringLiteral("a\nb\nc")},
        {"right to left", QStringLiteral("\u05D0\u05D1 c"), QStringLiteral("\u05D0\u05D1\u00A0c"),
         QStringLiteral("\u05D0\u05D1 c")},
        {"Chinese", QStringLiteral("\u4F60\u597D"), QStringLiteral("\u4F60\u597D"),
         QStringLiteral("\u4F60\u597D")},
        {"pair", QStringLiteral("\U00020BB7x"), QStringLiteral("\U00020BB7x"), QStringLiteral("\U00020BB7x")},
        {"emoji in text", QStringLiteral("a ") + grin + QStringLiteral("\tb"),
         QStringLiteral("a\u00A0\uEEEE\uEEEFb"), QStringLiteral("a ") + grin + QStringLiteral("\tb")},
    };
    for (const EmojiKind &kind : emojiKinds()) {
        list.append({kind.name, kind.source + QStringLiteral("x") + kind.source,
                     QStringLiteral("\uEEEEx\uEEEE"), kind.source + QStringLiteral("x") + kind.source});
    }
    return list;
}

} // namespace

Q_DECLARE_METATYPE(Road)

class TestAreaRoads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        window = std::make_unique<ItemWindow>();
        QVERIFY(window->open());
    }
    void cleanupTestCase() { window.reset(); }

    void init()
    {
        guard = std::make_unique<MessageGuard>();
        box = std::make_unique<Box>(window->contentItem());
        box->setPosition(QPointF(20, 20));
        box->setNames(engine, QStringLiteral("function(json, text) { return text; }"));
        box->forceActiveFocus();
    }
    void cleanup()
    {
        box.reset();
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    void everyRoadNormalisesAlike_data()
    {
        QTest::addColumn<Road>("road");
        QTest::addColumn<bool>("usesSelectionClipboard");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("message");
        for (const NamedRoad &road : roads) {
            for (const Sample &sample : samples())
                QTest::addRow("%s by %s", sample.name, road.name)
                    << road.road << road.usesSelectionClipboard << sample.text << sample.raw
                    << sample.message;
        }
    }
    void everyRoadNormalisesAlike()
    {
        QFETCH(Road, road);
        QFETCH(bool, usesSelectionClipboard);
        QFETCH(QString, text);
        QFETCH(QString, raw);
        QFETCH(QString, message);
        if (usesSelectionClipboard && !QGuiApplication::clipboard()->supportsSelection())
            QSKIP("This window system has no second clipboard.");
        QSignalSpy content(box.get(), &DrawableTextArea::contentChanged);
        road(*box, text);
        QCOMPARE(box->raw(), raw);
        QCOMPARE(box->content(), message);
        QCOMPARE(content.last().first().toString(), message);
        // The whole of it is taken away again, emoji one by one.
        box->setCursorPosition(box->length());
        for (int i = 0; i < raw.size() && !box->raw().isEmpty(); ++i)
            QTest::keyClick(window.get(), Qt::Key_Backspace);
        QCOMPARE(box->raw(), QString());
        QCOMPARE(box->content(), QString());
    }

    void everyRoadKeepsTheLimit_data()
    {
        QTest::addColumn<Road>("road");
        QTest::addColumn<bool>("usesSelectionClipboard");
        for (const NamedRoad &road : roads)
            QTest::newRow(road.name) << road.road << road.usesSelectionClipboard;
    }
    void everyRoadKeepsTheLimit()
    {
        QFETCH(Road, road);
        QFETCH(bool, usesSelectionClipboard);
        if (usesSelectionClipboard && !QGuiApplication::clipboard()->supportsSelection())
            QSKIP("This window system has no second clipboard.");
        box->setMaxCharacterCount(4);
        QSignalSpy reached(box.get(), &DrawableTextArea::maxCharacterCountReached);
        road(*box, QStringLiteral("a ") + family + QStringLiteral("bcdefg"));
        QCOMPARE(box->content(), QStringLiteral("a ") + family + QStringLiteral("b"));
        QCOMPARE(reached.count(), 1);
    }

    void everyRoadAsksTheValidator_data() { everyRoadKeepsTheLimit_data(); }
    void everyRoadAsksTheValidator()
    {
        QFETCH(Road, road);
        QFETCH(bool, usesSelectionClipboard);
        if (usesSelectionClipboard && !QGuiApplication::clipboard()->supportsSelection())
            QSKIP("This window system has no second clipboard.");
        class NoDigits : public QValidator
        {
        public:
            State validate(QString &text, int &) const override
            {
                return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.isDigit(); })
                           ? Invalid
                           : Intermediate;
            }
        };
        const NoDigits validator;
        box->setValidator(const_cast<NoDigits *>(&validator));
        road(*box, QStringLiteral("ab1"));
        QCOMPARE(box->raw(), QString());
        road(*box, QStringLiteral("abc"));
        QCOMPARE(box->raw(), QStringLiteral("abc"));
    }

    // A form of text that only some roads know: blocks with a name to show. Keys and programs that insert a
    // text mean what it says.
    void blocksBecomeTheirNamesWhereAMessageComesIn_data()
    {
        QTest::addColumn<Road>("road");
        QTest::addColumn<bool>("flattens");
        QTest::newRow("paste()") << Road(byPasteSlot) << true;
        QTest::newRow("Ctrl+V") << Road(byPasteKey) << true;
        QTest::newRow("drop") << Road(byDrop) << true;
        QTest::newRow("setContent") << Road(byContent) << true;
        QTest::newRow("setContent with mentions") << Road(byContentWithMentions) << true;
        QTest::newRow("insertText") << Road(byInsertText) << false;
        QTest::newRow("commit") << Road(byCommit) << false;
    }
    void blocksBecomeTheirNamesWhereAMessageComesIn()
    {
        QFETCH(Road, road);
        QFETCH(bool, flattens);
        const QString block = QStringLiteral("\u0001{\"displayName\":\"Ann\",\"data\":1,\"type\":3}\u0002");
        road(*box, QStringLiteral("a") + block + QStringLiteral("b"));
        QCOMPARE(box->content(),
                 QStringLiteral("a") + (flattens ? QStringLiteral("Ann") : block) + QStringLiteral("b"));
    }

    void aFormerSelectionIsReplaced_data()
    {
        QTest::addColumn<Road>("road");
        QTest::newRow("key") << Road(byKey);
        QTest::newRow("commit") << Road(byCommit);
        QTest::newRow("Ctrl+V") << Road(byPasteKey);
        QTest::newRow("paste of a mention") << Road(byPasteOfAMention);
        QTest::newRow("insertText") << Road(byInsertText);
        QTest::newRow("insertText as a mention") << Road(byInsertTextAsAMention);
    }
    void aFormerSelectionIsReplaced()
    {
        QFETCH(Road, road);
        box->insertText(QStringLiteral("ab") + family + QStringLiteral("cd"));
        box->select(1, 4);
        road(*box, QStringLiteral("x ") + grin);
        QCOMPARE(box->raw(), QStringLiteral("ax\u00A0\uEEEEd"));
        QCOMPARE(box->content(), QStringLiteral("ax ") + grin + QStringLiteral("d"));
        QCOMPARE(box->selectedContent(), QString());
    }

private:
    std::unique_ptr<ItemWindow> window;
    std::unique_ptr<Box> box;
    std::unique_ptr<MessageGuard> guard;
    QJSEngine engine;
};

QTEST_MAIN(TestAreaRoads)
#include "tst_arearoads.moc"
