// What comes from outside: paste, drop, and data of no sense.

#include "box.h"

#include "messageguard.h"
#include "text/aiteclipboard.h"
#include "text/drawabletext.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QImage>
#include <QMimeData>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace fixture;

namespace {

const QString aiteFormat = QStringLiteral("ostrel/aite");

/// The ways in which text gets into a box.
using Road = void (*)(Box &, const QString &);

void byKeys(Box &box, const QString &text)
{
    box.key(0, Qt::NoModifier, text);
}

void byCommit(Box &box, const QString &text)
{
    box.commit(text);
}

void byPaste(Box &box, const QString &text)
{
    QGuiApplication::clipboard()->setText(text);
    box.paste();
}

void byDrop(Box &box, const QString &text)
{
    QMimeData mime;
    mime.setText(text);
    QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&box, &drop);
}

void byInsert(Box &box, const QString &text)
{
    box.insertText(text);
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

void setClipboard(QMimeData *mime)
{
    QGuiApplication::clipboard()->setMimeData(mime);
}

/// Deletes a box when a script says so.
class Deleter : public QObject
{
    Q_OBJECT

public:
    explicit Deleter(std::unique_ptr<Box> box)
        : box(std::move(box))
    {}
    [[nodiscard]] DrawableTextArea *area() const { return box.get(); }
    Q_INVOKABLE void deleteBox() { box.reset(); }

private:
    std::unique_ptr<Box> box;
};

} // namespace

Q_DECLARE_METATYPE(Road)

class TestAreaPaste : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        guard = std::make_unique<MessageGuard>();
        box = std::make_unique<Box>();
        box->setNames(engine);
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
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("raw");
        QTest::addColumn<QString>("message");
        const QVector<QPair<const char *, Road>> roads{{"keys", byKeys},
                                                       {"commit", byCommit},
                                                       {"paste", byPaste},
                                                       {"drop", byDrop},
                                                       {"insert", byInsert},
                                                       {"content", byContent},
                                                       {"content with mentions", byContentWithMentions}};
        struct Case
        {
            const char *name;
            QString text;
            QString raw;
            QString message;
        };
        QVector<Case> cases{
            {"spaces", QStringLiteral("a b  c"), QStringLiteral("a\u00A0b\u00A0\u00A0c"),
             QStringLiteral("a b  c")},
            {"tab", QStringLiteral("a\tb"), QStringLiteral("a\uEEEFb"), QStringLiteral("a\tb")},
            {"form feed", QStringLiteral("a\fb"), QStringLiteral("a\nb"), QStringLiteral("a\nb")},
            {"object", QStringLiteral("a\uFFFCb"), QStringLiteral("a\u00A0b"), QStringLiteral("a b")},
            {"lines", QStringLiteral("a\nb\n\nc"), QStringLiteral("a\nb\n\nc"), QStringLiteral("a\nb\n\nc")},
            {"right to left", QStringLiteral("\u05D0\u05D1 c"), QStringLiteral("\u05D0\u05D1\u00A0c"),
             QStringLiteral("\u05D0\u05D1 c")},
            {"pair", QStringLiteral("\U00020BB7x"), QStringLiteral("\U00020BB7x"),
             QStringLiteral("\U00020BB7x")},
        };
        for (const EmojiKind &kind : emojiKinds()) {
            cases.append({kind.name, kind.source + QStringLiteral("x") + kind.source,
                          QStringLiteral("\uEEEEx\uEEEE"), kind.source + QStringLiteral("x") + kind.source});
        }
        for (const auto &road : roads) {
            for (const Case &sample : qAsConst(cases))
                QTest::addRow("%s by %s", sample.name, road.first)
                    << road.second << sample.text << sample.raw << sample.message;
        }
    }
    void everyRoadNormalisesAlike()
    {
        QFETCH(Road, road);
        QFETCH(QString, text);
        QFETCH(QString, raw);
        QFETCH(QString, message);
        road(*box, text);
        QCOMPARE(box->raw(), raw);
        QCOMPARE(box->content(), message);
        box->selectAll();
        box->key(Qt::Key_Backspace);
        QCOMPARE(box->content(), QString());
    }

    // ---- what is on the clipboard

    void aPictureIsLeftToTheClient()
    {
        auto *mime = new QMimeData;
        mime->setImageData(QImage(4, 4, QImage::Format_RGB32));
        mime->setText(QStringLiteral("beside"));
        setClipboard(mime);
        QSignalSpy past(box.get(), &DrawableTextArea::pastContent);
        box->paste();
        QCOMPARE(past.count(), 1);
        QCOMPARE(box->content(), QString());
    }

    void aLocalFileAmongUrlsIsLeftToTheClient()
    {
        auto *mime = new QMimeData;
        mime->setUrls(
            {QUrl(QStringLiteral("https://example.org/")), QUrl::fromLocalFile(QStringLiteral("/a"))});
        setClipboard(mime);
        QSignalSpy past(box.get(), &DrawableTextArea::pastContent);
        box->paste();
        QCOMPARE(past.count(), 1);
        QCOMPARE(box->content(), QString());
    }

    void aWebAddressIsText()
    {
        auto *mime = new QMimeData;
        mime->setUrls({QUrl(QStringLiteral("https://example.org/"))});
        setClipboard(mime);
        QSignalSpy past(box.get(), &DrawableTextArea::pastContent);
        box->paste();
        QCOMPARE(past.count(), 0);
        QCOMPARE(box->content(), QStringLiteral("https://example.org/"));
    }

    void otherDataIsNothing()
    {
        auto *mime = new QMimeData;
        mime->setData(QStringLiteral("application/x-other"), "x");
        setClipboard(mime);
        QTest::ignoreMessage(QtDebugMsg, "Nothing");
        box->paste();
        QCOMPARE(box->content(), QString());
    }

    void aReadOnlyOrDisabledBoxTakesNoPaste()
    {
        QGuiApplication::clipboard()->setText(QStringLiteral("x"));
        box->setReadOnly(true);
        box->paste();
        box->setReadOnly(false);
        box->setEnabled(false);
        box->paste();
        QCOMPARE(box->content(), QString());
    }

    void pastedLineEndsAreLimited()
    {
        box->setMaxContinuousReturn(2);
        byPaste(*box, QStringLiteral("one\n\n\n\ntwo"));
        QCOMPARE(box->content(), QStringLiteral("one\n\ntwo"));
        box->setContent(QString());
        box->setAiteEnabled(true);
        byPaste(*box, QStringLiteral("one\n\n\n\ntwo"));
        QCOMPARE(box->content(), QStringLiteral("one\n\n\n\ntwo"));
    }

    void inBandBlocksBecomeTheirNames()
    {
        const QString text = QStringLiteral("a\u0001{\"displayName\":\"Ann\",\"data\":1,\"type\":3}\u0002b");
        byPaste(*box, text);
        byDrop(*box, text);
        QCOMPARE(box->content(), QStringLiteral("aAnnbaAnnb"));
    }

    void aFullBoxSignalsAndABoxOverItsLimitIsSilent()
    {
        box->insertText(QStringLiteral("abcde"));
        QSignalSpy reached(box.get(), &DrawableTextArea::maxCharacterCountReached);
        box->setMaxCharacterCount(5);
        byPaste(*box, QStringLiteral("x"));
        QCOMPARE(reached.count(), 1);
        box->setMaxCharacterCount(4);
        byPaste(*box, QStringLiteral("x"));
        byDrop(*box, QStringLiteral("x"));
        QCOMPARE(reached.count(), 1);
        QCOMPARE(box->content(), QStringLiteral("abcde"));
    }

    void aPasteIsReportedOnce()
    {
        box->setAiteEnabled(true);
        setClipboard(mimeWithMentions(QStringLiteral("hi @Ann and @Ben!"), {{3, 6}, {12, 15}}));
        QSignalSpy content(box.get(), &DrawableTextArea::contentChanged);
        QSignalSpy untrimmed(box.get(), &DrawableTextArea::untrimmedContentChanged);
        box->paste();
        QCOMPARE(content.count(), 1);
        QCOMPARE(untrimmed.count(), 1);
        QCOMPARE(box->blockList(), (QStringList{QStringLiteral("3+4=1"), QStringLiteral("12+4=2")}));
    }

    // ---- mentions

    void mentionsComeBackBehindEmojiAndLineEnds()
    {
        box->setAiteEnabled(true);
        setClipboard(mimeWithMentions(family + QStringLiteral("\n@Ann ") + grin + QStringLiteral("@B2"),
                                      {{2, 5}, {8, 10}}));
        box->paste();
        QCOMPARE(box->content(), family + QStringLiteral("\n@Ann ") + grin + QStringLiteral("@B2"));
        QCOMPARE(box->mentions(), (QStringList{QStringLiteral("@Ann"), QStringLiteral("@B2")}));
        box->undo();
        QCOMPARE(box->content(), QString());
    }

    void theClientNamesEachMention()
    {
        box->setAiteEnabled(true);
        box->setNames(engine,
                      QStringLiteral("function(json, text) { let m = JSON.parse(json); if (m.userId == 2) "
                                     "return ''; return '<' + m.userId + text + '>'; }"));
        setClipboard(mimeWithMentions(QStringLiteral("@Ann @Ben @Cid"), {{0, 3}, {5, 8}, {10, 13}}));
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("<1@Ann> @Ben <3@Cid>"));
        QCOMPARE(box->mentions(), (QStringList{QStringLiteral("<1@Ann>"), QStringLiteral("<3@Cid>")}));
        QCOMPARE(box->aiteList().first().toMap(), mention(1, QStringLiteral("<1@Ann>")));
    }

    void theNameFunctionIsHandedCompactJson()
    {
        box->setAiteEnabled(true);
        box->setNames(engine, QStringLiteral("function(json, text) { return json; }"));
        const QVector<TextSpan> spans{
            {0, 1, QVariantMap{{QStringLiteral("userId"), 7}, {QStringLiteral("extra"), QStringLiteral("x")}},
             SpanAite},
            {2, 3, 9, SpanPlainAite}};
        setClipboard(aiteclipboard::createMimeData(QStringLiteral("abcd"), aiteclipboard::toBase64(spans)));
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("{\"extra\":\"x\",\"userId\":7}{\"userId\":9}"));
        // All keys of the map survive.
        QCOMPARE(box->aiteList().first().toMap().value(QStringLiteral("extra")).toString(),
                 QStringLiteral("x"));
    }

    void withoutMentionsOnOfferTheFormatIsIgnored()
    {
        setClipboard(mimeWithMentions(QStringLiteral("@Ann"), {{0, 3}}));
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("@Ann"));
        QCOMPARE(box->mentions(), QStringList());
    }

    void pastingInsideAMentionDissolvesIt()
    {
        box->setAiteEnabled(true);
        box->insertText(QStringLiteral("@Cid"), mention(3));
        box->setCursorPosition(2);
        setClipboard(mimeWithMentions(QStringLiteral("@Ann"), {{0, 3}}));
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("@C@Annid"));
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
    }

    void mentionsReplaceASelectionWithinTheLimit()
    {
        box->setAiteEnabled(true);
        box->setMaxCharacterCount(8);
        box->insertText(QStringLiteral("abcdef"));
        box->select(2, 6);
        setClipboard(mimeWithMentions(QStringLiteral("@Ann and @Ben"), {{0, 3}, {9, 12}}));
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("ab@Ann a"));
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
    }

    void aNameFunctionThatFailsGivesWhatCallingItGives_data()
    {
        QTest::addColumn<QString>("function");
        QTest::addColumn<QString>("expected");
        QTest::newRow("missing") << QStringLiteral("undefined") << QStringLiteral("undefined");
        QTest::newRow("no function") << QStringLiteral("5") << QStringLiteral("undefined");
        QTest::newRow("returns nothing") << QStringLiteral("function() {}") << QStringLiteral("undefined");
        QTest::newRow("throws") << QStringLiteral("function() { throw new Error('no'); }")
                                << QStringLiteral("Error: no");
        QTest::newRow("number") << QStringLiteral("function() { return 5; }") << QStringLiteral("5");
    }
    void aNameFunctionThatFailsGivesWhatCallingItGives()
    {
        QFETCH(QString, function);
        QFETCH(QString, expected);
        box->setAiteEnabled(true);
        box->setNames(engine, function);
        setClipboard(mimeWithMentions(QStringLiteral("a @Ann b"), {{2, 5}}));
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("a %1 b").arg(expected));
    }

    void aNameFunctionMayUseTheBox_data()
    {
        QTest::addColumn<QString>("call");
        for (const char *call :
             {"box.paste()", "box.content = 'other'", "box.insertText('x')", "box.clear()",
              "box.insertAite('@Zed', {userId: 9})", "box.undo()", "box.aiteData", "box.select(0, 2)"})
            QTest::newRow(call) << QString::fromLatin1(call);
    }
    void aNameFunctionMayUseTheBox()
    {
        QFETCH(QString, call);
        box->setAiteEnabled(true);
        box->insertText(QStringLiteral("before "));
        QQmlEngine::setObjectOwnership(box.get(), QQmlEngine::CppOwnership);
        engine.globalObject().setProperty(QStringLiteral("box"), engine.newQObject(box.get()));
        box->setNames(engine, QStringLiteral("function(json, text) { if (!this.busy) { this.busy = true; %1; "
                                             "this.busy = false; } return text; }")
                                  .arg(call));
        setClipboard(mimeWithMentions(QStringLiteral("@Ann @Ben"), {{0, 3}, {5, 8}}));
        box->paste();
        QVERIFY(box->content().contains(QStringLiteral("@Ann @Ben")));
        QSignalSpy content(box.get(), &DrawableTextArea::contentChanged);
        box->insertText(QStringLiteral("y"));
        QCOMPARE(content.count(), 1);
    }

    void aNameFunctionMayDeleteTheBox()
    {
        box->setAiteEnabled(true);
        auto *deleter = new Deleter(std::move(box));
        QQmlEngine::setObjectOwnership(deleter, QQmlEngine::CppOwnership);
        DrawableTextArea *area = deleter->area();
        engine.globalObject().setProperty(QStringLiteral("deleter"), engine.newQObject(deleter));
        area->setAiteNameFunction(
            engine.evaluate(QStringLiteral("(function(json, text) { deleter.deleteBox(); return text; })")));
        setClipboard(mimeWithMentions(QStringLiteral("@Ann @Ben"), {{0, 3}, {5, 8}}));
        area->paste();
        QVERIFY(!deleter->area());
        delete deleter;
    }

    void aHandlerMayChangeTheBoxInTheMiddleOfAPaste()
    {
        box->setAiteEnabled(true);
        box->setMaxCharacterCount(6);
        connect(box.get(), &DrawableTextArea::maxCharacterCountReached, this, [this] {
            QVERIFY(box->aiteData().isValid());
            box->setCursorPosition(0);
            box->selectAll();
        });
        setClipboard(mimeWithMentions(QStringLiteral("@Ann and @Ben"), {{0, 3}, {9, 12}}));
        box->paste();
        QVERIFY(box->length() <= 6 + 4);
    }

    // ---- data of no sense

    void damagedMentionsLeaveTheText()
    {
        box->setAiteEnabled(true);
        const QString text = QStringLiteral("hi @Ann and ") + family + QStringLiteral("@Ben!");
        const std::unique_ptr<QMimeData> whole(mimeWithMentions(text, {{3, 6}, {13, 16}}));
        const QByteArray good = whole->data(aiteFormat);
        QVector<QByteArray> bad{QByteArray(), "!", "AAAA", QByteArray(1000, 'A'), QByteArray(1000, '/')};
        for (int cut = 1; cut < good.size(); cut += 3)
            bad.append(good.left(cut));
        QRandomGenerator random(5);
        for (int i = 0; i < 200; ++i) {
            QByteArray bytes = QByteArray::fromBase64(good);
            for (int change = random.bounded(1, 4); change > 0; --change)
                bytes[random.bounded(bytes.size())] = char(random.bounded(256));
            bad.append(bytes.toBase64());
        }
        for (const QByteArray &data : qAsConst(bad)) {
            box->setContent(QString());
            auto *mime = new QMimeData;
            mime->setText(text);
            mime->setData(aiteFormat, data);
            setClipboard(mime);
            box->paste();
            // The names are the mentions' own texts, or what the changed bytes call them.
            QVERIFY(box->content().contains(family) || box->aiteList().size() > 0);
            QVERIFY(box->content().size() < 10 * text.size());
        }
    }

    void positionsOfNoSensePutEachCharacterInOnce()
    {
        box->setAiteEnabled(true);
        box->setNames(engine, QStringLiteral("function(json, text) { return text; }"));
        const QString text = QStringLiteral("ab ") + family + QStringLiteral(" cd");
        const int far = std::numeric_limits<int>::max();
        const int near = std::numeric_limits<int>::min();
        for (const QVector<QPair<int, int>> &ranges : {QVector<QPair<int, int>>{{0, far}},
                                                       {{near, far}, {near, far}},
                                                       {{3, 1}},
                                                       {{2, 4}, {0, 5}},
                                                       {{far, far}},
                                                       {{near, near}},
                                                       {{0, 6}, {0, 6}, {0, 6}},
                                                       {{far, near}},
                                                       {{-3, 1}}}) {
            box->setContent(QString());
            setClipboard(mimeWithMentions(text, ranges));
            box->paste();
            QCOMPARE(box->content(), text);
        }
    }

    void aMillionCharactersArePasted()
    {
        QString text;
        while (text.size() < 1'000'000)
            text += QStringLiteral("word ") + grin + QStringLiteral(" \u4F60\u597D more text in a line\n");
        QElapsedTimer timer;
        timer.start();
        byPaste(*box, text);
        QVERIFY(timer.elapsed() < 60'000);
        QCOMPARE(box->untrimmedContent(), text);
    }

    void manyMentionsArePasted()
    {
        box->setAiteEnabled(true);
        QString text;
        QVector<QPair<int, int>> ranges;
        int position = 0;
        for (int i = 0; i < 5000; ++i) {
            text += QStringLiteral("@name ") + grin;
            ranges.append({position, position + 4});
            position += 7;
        }
        setClipboard(mimeWithMentions(text, ranges));
        QElapsedTimer timer;
        timer.start();
        box->paste();
        QVERIFY(timer.elapsed() < 60'000);
        QCOMPARE(box->content(), text);
        QCOMPARE(box->blocks().size(), 5000);
    }

    // ---- drags

    void aDragIsToldAlwaysAndTakenWhenWanted()
    {
        QQuickWindow window;
        window.resize(400, 300);
        box->setParentItem(window.contentItem());
        box->insertText(QStringLiteral("hello world"));
        QMimeData mime;
        mime.setText(QStringLiteral("x"));
        QSignalSpy detect(box.get(), &DrawableTextArea::dragDetect);

        QDragEnterEvent refused(QPoint(30, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &refused);
        QCOMPARE(detect.count(), 1);
        QVERIFY(!refused.isAccepted());

        box->setDropEnabled(true);
        QDragEnterEvent enter(QPoint(30, 10), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &enter);
        QCOMPARE(detect.count(), 2);
        QVERIFY(enter.isAccepted());
        QCOMPARE(enter.dropAction(), Qt::CopyAction);
        QCOMPARE(box->cursorPosition(), box->positionAt(30, 10));

        const QRectF cursor = box->positionToRectangle(5);
        const QPoint spot = cursor.center().toPoint();
        QDragMoveEvent move(spot, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &move);
        QVERIFY(move.isAccepted());
        QCOMPARE(box->cursorPosition(), 5);

        QDropEvent drop(spot, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&window, &drop);
        QVERIFY(drop.isAccepted());
        QCOMPARE(box->content(), QStringLiteral("hellox world"));
        box->setParentItem(nullptr);
    }

    void draggedFilesLeaveTheCursor()
    {
        box->setDropEnabled(true);
        box->insertText(QStringLiteral("hello"));
        QMimeData mime;
        mime.setUrls(
            {QUrl(QStringLiteral("https://example.org/")), QUrl::fromLocalFile(QStringLiteral("/b"))});
        QDragEnterEvent enter(QPoint(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(box.get(), &enter);
        QCOMPARE(box->cursorPosition(), 5);
        QSignalSpy files(box.get(), &DrawableTextArea::dropFiles);
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(box.get(), &drop);
        QCOMPARE(files.count(), 1);
        QCOMPARE(files.first().first().value<QList<QUrl>>(), mime.urls());
        QCOMPARE(box->content(), QStringLiteral("hello"));
    }

    void droppedMentionsAreRead()
    {
        box->setAiteEnabled(true);
        const std::unique_ptr<QMimeData> mime(mimeWithMentions(grin + QStringLiteral("@Ann!"), {{1, 4}}));
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, mime.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(box.get(), &drop);
        QCOMPARE(box->mentions(), QStringList{QStringLiteral("@Ann")});
        QCOMPARE(box->blockList(), QStringList{QStringLiteral("2+4=1")});
    }

    void aDroppedPictureAddsNothing()
    {
        QMimeData mime;
        mime.setImageData(QImage(4, 4, QImage::Format_RGB32));
        QDropEvent drop(QPointF(1, 1), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(box.get(), &drop);
        QCOMPARE(box->content(), QString());
        QVERIFY(!drop.isAccepted());
    }

    void theCursorStaysWhileTheDragIsBetweenLines()
    {
        box->setDropEnabled(true);
        box->insertText(QStringLiteral("aaaa bbbb\ncccc dddd"));
        QMimeData mime;
        mime.setText(QStringLiteral("x"));
        // At each height the rule decides alike.
        for (double y = 0; y < 60; y += 0.5) {
            box->setCursorPosition(2);
            const int above = box->positionAt(40, y - 1.0);
            const int here = box->positionAt(40, y);
            const int below = box->positionAt(40, y + 1.0);
            const bool stays = above != here && here != below && above != below;
            QDragMoveEvent move(QPoint(40, int(y)), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
            if (y != int(y))
                continue;
            QCoreApplication::sendEvent(box.get(), &move);
            QCOMPARE(box->cursorPosition(), stays ? 2 : here);
        }
    }

    // ---- round trips

    // What is written goes to another reader's text and comes back by the clipboard as it was.
    void messagesSurviveTheWayThroughTheView()
    {
        QRandomGenerator random(99);
        for (int round = 0; round < 150; ++round) {
            Box source;
            source.setAiteEnabled(true);
            source.insertText(QStringLiteral("."));
            int user = 0;
            for (int piece = random.bounded(1, 10); piece > 0; --piece) {
                switch (random.bounded(5)) {
                case 0:
                    source.insertText(QStringLiteral("word "));
                    break;
                case 1:
                    source.insertText(emojiKinds().at(random.bounded(emojiKinds().size())).source);
                    break;
                case 2:
                    source.insertText(QStringLiteral("\n"));
                    break;
                case 3:
                    source.insertText(QStringLiteral("\u4F60\u597D\u05D0"));
                    break;
                default: {
                    ++user;
                    const QString name =
                        QStringLiteral("@Ann %1").arg(user) + (user % 2 == 1 ? grin : QString());
                    source.insertAite(name, mention(user, name));
                }
                }
            }
            source.insertText(QStringLiteral("."));

            DrawableText view;
            view.setMaxWidth(400);
            view.setText(source.content());
            view.setUserBlocks(source.aiteData());
            view.selectAll();
            QCOMPARE(view.selectedText(), source.content());
            view.copy();

            Box target;
            target.setAiteEnabled(true);
            target.setNames(engine, QStringLiteral("function(json, text) { return text; }"));
            target.paste();
            QCOMPARE(target.content(), source.content());
            QCOMPARE(target.blocks(), source.blocks());

            // And from box to box.
            source.selectAll();
            source.copy();
            Box third;
            third.setAiteEnabled(true);
            third.setNames(engine);
            third.paste();
            QCOMPARE(third.content(), source.content());
            QCOMPARE(third.blocks(), source.blocks());

            // And from the message itself.
            Box restored;
            restored.setAiteEnabled(true);
            restored.setNames(engine, QStringLiteral("function(json, text) { return text; }"));
            restored.setUserBlocks(source.aiteData());
            restored.setContent(source.content());
            QCOMPARE(restored.content(), source.content());
            QCOMPARE(restored.blocks(), source.blocks());
        }
    }

private:
    std::unique_ptr<Box> box;
    std::unique_ptr<MessageGuard> guard;
    QJSEngine engine;
};

QTEST_MAIN(TestAreaPaste)
#include "tst_areapaste.moc"
