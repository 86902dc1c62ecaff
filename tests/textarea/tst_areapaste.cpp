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

#include <limits>
#include <memory>

using namespace fixture;

namespace {

const QString aiteFormat = QStringLiteral("ostrel/aite");

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
        QTest::addColumn<bool>("restores");
        for (const char *call :
             {"box.paste()", "box.content = 'other'", "box.insertText('x')", "box.clear()",
              "box.insertAite('@Zed', {userId: 9})", "box.undo()", "box.aiteData", "box.select(0, 2)",
              "box.selectAll(); box.copy()", "box.remove(0, 99)", "box.aiteNameFunction = undefined",
              "box.userBlocks = []", "box.readOnly = true"}) {
            QTest::addRow("%s in a paste", call) << QString::fromLatin1(call) << false;
            QTest::addRow("%s while restored", call) << QString::fromLatin1(call) << true;
        }
    }
    void aNameFunctionMayUseTheBox()
    {
        QFETCH(QString, call);
        QFETCH(bool, restores);
        const QString text = QStringLiteral("@Ann @Ben");
        box->setAiteEnabled(true);
        box->insertText(QStringLiteral("before "));
        QQmlEngine::setObjectOwnership(box.get(), QQmlEngine::CppOwnership);
        engine.globalObject().setProperty(QStringLiteral("box"), engine.newQObject(box.get()));
        box->setNames(engine, QStringLiteral("function(json, text) { if (!this.busy) { this.busy = true; %1; "
                                             "this.busy = false; } return text; }")
                                  .arg(call));
        setClipboard(mimeWithMentions(text, {{0, 3}, {5, 8}}));
        if (restores) {
            box->setUserBlocks(QVariant::fromValue(UserTextBlocks{aiteBlock(0, 4, 1), aiteBlock(5, 4, 2)}));
            box->setContent(text);
        } else {
            box->paste();
        }
        // Without the function the second name is what calling nothing gives.
        const bool isUnnamed = call.endsWith(QLatin1String("undefined"));
        QVERIFY2(box->content().contains(isUnnamed ? QStringLiteral("@Ann undefined") : text),
                 qPrintable(box->content()));
        QSignalSpy content(box.get(), &DrawableTextArea::contentChanged);
        box->insertText(QStringLiteral("y"));
        QCOMPARE(content.count(), 1);
    }

    void aNameFunctionMayDeleteTheBox_data()
    {
        QTest::addColumn<bool>("restores");
        QTest::newRow("in a paste") << false;
        QTest::newRow("while restored") << true;
    }
    void aNameFunctionMayDeleteTheBox()
    {
        QFETCH(bool, restores);
        box->setAiteEnabled(true);
        auto *deleter = new Deleter(std::move(box));
        QQmlEngine::setObjectOwnership(deleter, QQmlEngine::CppOwnership);
        DrawableTextArea *area = deleter->area();
        engine.globalObject().setProperty(QStringLiteral("deleter"), engine.newQObject(deleter));
        area->setAiteNameFunction(
            engine.evaluate(QStringLiteral("(function(json, text) { deleter.deleteBox(); return text; })")));
        setClipboard(mimeWithMentions(QStringLiteral("@Ann @Ben"), {{0, 3}, {5, 8}}));
        area->setUserBlocks(QVariant::fromValue(UserTextBlocks{aiteBlock(0, 4, 1), aiteBlock(5, 4, 2)}));
        if (restores)
            area->setContent(QStringLiteral("@Ann @Ben"));
        else
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

    // Whatever the bytes say, the text goes in once: mentions only mark parts of it, and are named by these
    // here.
    void damagedMentionsLeaveTheText()
    {
        box->setAiteEnabled(true);
        box->setNames(engine, QStringLiteral("function(json, text) { return text; }"));
        const QString text = QStringLiteral("hi @Ann and ") + family + QStringLiteral("@Ben\nlast line!");
        const std::unique_ptr<QMimeData> whole(mimeWithMentions(text, {{3, 6}, {13, 16}}));
        const QByteArray good = QByteArray::fromBase64(whole->data(aiteFormat));
        QVector<QByteArray> bad{QByteArray(), QByteArray(1000, '\0'), QByteArray(1000, '\xFF')};
        for (int cut = 1; cut < good.size(); ++cut)
            bad.append(good.left(cut));
        QRandomGenerator random(5);
        for (int i = 0; i < 600; ++i) {
            QByteArray bytes = good;
            for (int change = random.bounded(1, 6); change > 0; --change)
                bytes[random.bounded(bytes.size())] = char(random.bounded(256));
            bad.append(bytes);
        }
        for (int i = 0; i < 300; ++i) {
            QByteArray bytes(random.bounded(1, 200), '\0');
            for (char &byte : bytes)
                byte = char(random.bounded(3) ? random.bounded(256) : 0);
            bad.append(bytes);
        }
        // Counts and lengths that lie.
        for (const qint32 count : {-1, 1, 3, 0x7fffffff, std::numeric_limits<qint32>::min()}) {
            QByteArray bytes;
            QDataStream(&bytes, QIODevice::WriteOnly) << count;
            bad.append(bytes + good.mid(4));
        }
        for (const QByteArray &bytes : qAsConst(bad)) {
            box->setContent(QString());
            auto *mime = new QMimeData;
            mime->setText(text);
            mime->setData(aiteFormat, bytes.toBase64());
            setClipboard(mime);
            box->paste();
            QCOMPARE(box->untrimmedContent(), text);
        }
        for (const QByteArray &notBase64 : {QByteArray("!"), QByteArray("AAAA"), QByteArray(1000, '/')}) {
            box->setContent(QString());
            auto *mime = new QMimeData;
            mime->setText(text);
            mime->setData(aiteFormat, notBase64);
            setClipboard(mime);
            box->paste();
            QCOMPARE(box->untrimmedContent(), text);
            QCOMPARE(box->mentions(), QStringList());
        }
    }

    void aListThatEndsEarlyHasNoMentions()
    {
        box->setAiteEnabled(true);
        const QString text = QStringLiteral("@Ann @Ben");
        const std::unique_ptr<QMimeData> whole(mimeWithMentions(text, {{0, 3}, {5, 8}}));
        const QByteArray good = QByteArray::fromBase64(whole->data(aiteFormat));
        for (int cut = 0; cut < good.size(); ++cut) {
            box->setContent(QString());
            auto *mime = new QMimeData;
            mime->setText(text);
            mime->setData(aiteFormat, good.left(cut).toBase64());
            setClipboard(mime);
            box->paste();
            QCOMPARE(box->content(), text);
            QCOMPARE(box->aiteList(), QVariantList());
        }
    }

    void positionsOfNoSensePutEachCharacterInOnce()
    {
        box->setAiteEnabled(true);
        box->setNames(engine, QStringLiteral("function(json, text) { return text; }"));
        const QString text = QStringLiteral("ab ") + family + QStringLiteral(" cd");
        const int greatest = std::numeric_limits<int>::max();
        const int least = std::numeric_limits<int>::min();
        for (const QVector<QPair<int, int>> &ranges : {QVector<QPair<int, int>>{{0, greatest}},
                                                       {{least, greatest}, {least, greatest}},
                                                       {{3, 1}},
                                                       {{2, 4}, {0, 5}},
                                                       {{greatest, greatest}},
                                                       {{least, least}},
                                                       {{0, 6}, {0, 6}, {0, 6}},
                                                       {{greatest, least}},
                                                       {{-3, 1}}}) {
            box->setContent(QString());
            setClipboard(mimeWithMentions(text, ranges));
            box->paste();
            QCOMPARE(box->content(), text);
        }
    }

    void aMillionCharactersArePasted_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::newRow("lines") << QStringLiteral("word ") + grin +
                                      QStringLiteral(" \u4F60\u597D more text in a line\n");
        QTest::newRow("one line") << QStringLiteral("word ");
        QTest::newRow("one word") << QStringLiteral("a");
    }
    void aMillionCharactersArePasted()
    {
        QFETCH(QString, unit);
        const QString text =
            QStringLiteral("(") + unit.repeated(1'000'000 / unit.size()) + QStringLiteral(")");
        QElapsedTimer timer;
        timer.start();
        byPaste(*box, text);
        QCOMPARE(box->untrimmedContent(), text);
        box->key(Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
        box->selectAll();
        box->key(Qt::Key_Backspace);
        QCOMPARE(box->untrimmedContent(), QString());
        // Minutes, where each line of a paragraph is laid out to the paragraph's end.
        QVERIFY2(timer.elapsed() < 60'000, qPrintable(QString::number(timer.elapsed())));
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

private:
    std::unique_ptr<Box> box;
    std::unique_ptr<MessageGuard> guard;
    QJSEngine engine;
};

QTEST_MAIN(TestAreaPaste)
#include "tst_areapaste.moc"
