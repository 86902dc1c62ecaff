// Drags over the input box, as the window system delivers them to its window.

#include "box.h"

#include "messageguard.h"

#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace fixture;

namespace {

constexpr int textPosition = 5;

using Mime = std::shared_ptr<QMimeData>;

Mime mimeOf(const QString &text)
{
    auto mime = std::make_shared<QMimeData>();
    mime->setText(text);
    return mime;
}

Mime mimeOf(const QList<QUrl> &urls)
{
    auto mime = std::make_shared<QMimeData>();
    mime->setUrls(urls);
    return mime;
}

Mime picture()
{
    auto mime = std::make_shared<QMimeData>();
    mime->setImageData(QImage(4, 4, QImage::Format_RGB32));
    return mime;
}

} // namespace

Q_DECLARE_METATYPE(Mime)

class TestAreaDrops : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        guard = std::make_unique<MessageGuard>();
        window = std::make_unique<QQuickWindow>();
        window->resize(460, 320);
        box = std::make_unique<Box>(window->contentItem());
        box->setPosition(QPointF(20, 20));
        box->setAiteEnabled(true);
        box->setDropEnabled(true);
        box->setNames(engine, QStringLiteral("function(json, text) { return text; }"));
        box->insertText(QStringLiteral("hello world"));
    }
    void cleanup()
    {
        box.reset();
        window.reset();
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    void eachKindOfDataIsTakenInItsWay_data()
    {
        QTest::addColumn<Mime>("mime");
        QTest::addColumn<bool>("isText"); // the cursor follows it, and it goes in
        QTest::addColumn<bool>("taken");  // the drop is
        QTest::addColumn<QString>("content");
        QTest::addColumn<QStringList>("mentions");
        QTest::addColumn<QList<QUrl>>("files");
        const QString same = QStringLiteral("hello world");
        const QList<QUrl> noFiles;
        const QUrl web(QStringLiteral("https://example.org/a"));
        const QUrl file = QUrl::fromLocalFile(QStringLiteral("/b c.txt"));
        QTest::newRow("text") << mimeOf(QStringLiteral(" x")) << true << true
                              << QStringLiteral("hello x world") << QStringList() << noFiles;
        QTest::newRow("mention") << Mime(mimeWithMentions(grin + QStringLiteral("@Ann!"), {{1, 4}})) << true
                                 << true << QStringLiteral("hello%1@Ann! world").arg(grin)
                                 << QStringList{QStringLiteral("@Ann")} << noFiles;
        QTest::newRow("web address") << mimeOf(QList<QUrl>{web}) << false << true << same << QStringList()
                                     << QList<QUrl>{web};
        QTest::newRow("files and addresses") << mimeOf(QList<QUrl>{web, file, web}) << false << true << same
                                             << QStringList() << QList<QUrl>{web, file, web};
        QTest::newRow("picture") << picture() << false << false << same << QStringList() << noFiles;
        const Mime both = picture();
        both->setText(QStringLiteral("beside"));
        QTest::newRow("picture with text")
            << both << true << true << QStringLiteral("hellobeside world") << QStringList() << noFiles;
    }
    void eachKindOfDataIsTakenInItsWay()
    {
        QFETCH(Mime, mime);
        QFETCH(bool, isText);
        QFETCH(bool, taken);
        QFETCH(QString, content);
        QFETCH(QStringList, mentions);
        QFETCH(QList<QUrl>, files);
        QSignalSpy detect(box.get(), &DrawableTextArea::dragDetect);
        QSignalSpy dropped(box.get(), &DrawableTextArea::dropFiles);
        QSignalSpy changed(box.get(), &DrawableTextArea::contentChanged);

        QVERIFY(enter(spot(2), mime));
        QCOMPARE(detect.count(), 1);
        QVERIFY(box->hasFocus());
        QCOMPARE(box->cursorPosition(), isText ? 2 : 11);
        QVERIFY(move(spot(textPosition), mime));
        QCOMPARE(box->cursorPosition(), isText ? textPosition : 11);
        QCOMPARE(drop(spot(textPosition), mime), taken);

        QCOMPARE(box->content(), content);
        QCOMPARE(box->mentions(), mentions);
        QCOMPARE(changed.count(), content == QLatin1String("hello world") ? 0 : 1);
        QCOMPARE(dropped.count(), files.isEmpty() ? 0 : 1);
        if (!files.isEmpty())
            QCOMPARE(dropped.first().first().value<QList<QUrl>>(), files);
    }

    // The client shows a drop zone of its own then.
    void aBoxThatTakesNoDropsStillTellsOfTheDrag()
    {
        box->setDropEnabled(false);
        box->setCursorPosition(7);
        QSignalSpy detect(box.get(), &DrawableTextArea::dragDetect);
        QVERIFY(!enter(spot(2), mimeOf(QStringLiteral("x"))));
        QCOMPARE(detect.count(), 1);
        QVERIFY(!box->hasFocus());
        QCOMPARE(box->cursorPosition(), 7);
        QDragMoveEvent direct(QPoint(30, 10), Qt::CopyAction, mimeOf(QStringLiteral("x")).get(),
                              Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(box.get(), &direct);
        QVERIFY(!direct.isAccepted());
        QCOMPARE(box->cursorPosition(), 7);
    }

    // A drop arrives only where its entrance was taken, so a box that turned drops off meanwhile keeps its
    // word.
    void aDropThatWasLetInIsTaken()
    {
        const Mime mime = mimeOf(QStringLiteral("x"));
        QVERIFY(enter(spot(5), mime));
        box->setDropEnabled(false);
        QVERIFY(drop(spot(5), mime));
        QCOMPARE(box->content(), QStringLiteral("hellox world"));
    }

    // Whether drops are taken is `dropEnabled`'s to say and nothing else's, and a client that makes a box
    // read-only turns that off as well. Keys and pastes are refused there.
    void aReadOnlyBoxTakesDropsAllTheSame()
    {
        box->setReadOnly(true);
        box->paste();
        QCOMPARE(box->content(), QStringLiteral("hello world"));
        const Mime mime = mimeOf(QStringLiteral("x"));
        QVERIFY(enter(spot(5), mime));
        QVERIFY(move(spot(5), mime));
        QVERIFY(drop(spot(5), mime));
        QCOMPARE(box->content(), QStringLiteral("hellox world"));
    }

    // Unlike a paste, a drop is not limited as a whole, so only line ends at its edges are.
    void lineEndsInsideADropStay()
    {
        box->setAiteEnabled(false);
        box->setMaxContinuousReturn(2);
        const Mime mime = mimeOf(QStringLiteral("\n\n\na\n\n\n\nb\n\n\n"));
        QVERIFY(enter(spot(5), mime));
        QVERIFY(move(spot(5), mime));
        QVERIFY(drop(spot(5), mime));
        QCOMPARE(box->untrimmedContent(), QStringLiteral("hello\n\na\n\n\n\nb\n\n world"));
    }

    void aDropInsideAMentionDissolvesIt_data()
    {
        QTest::addColumn<Mime>("mime");
        QTest::addColumn<QStringList>("mentions");
        QTest::newRow("text") << mimeOf(QStringLiteral("xyz")) << QStringList();
        QTest::newRow("mention") << Mime(mimeWithMentions(QStringLiteral("xyz"), {{0, 2}}))
                                 << QStringList{QStringLiteral("xyz")};
    }
    void aDropInsideAMentionDissolvesIt()
    {
        QFETCH(Mime, mime);
        QFETCH(QStringList, mentions);
        box->clear();
        box->insertAite(QStringLiteral("@Anna Lee"), mention(1));
        QVERIFY(enter(spot(5), mime));
        QVERIFY(move(spot(5), mime));
        QVERIFY(drop(spot(5), mime));
        QCOMPARE(box->content(), QStringLiteral("@Annaxyz Lee"));
        QCOMPARE(box->mentions(), mentions);
    }

    void theCursorStaysWhileTheDragIsBetweenLines()
    {
        // Lines of one pixel: above, at and below a point are three places there.
        QFont font = box->font();
        font.setPixelSize(1);
        box->setFont(font);
        box->clear();
        box->insertText(QStringLiteral("aaaaaaaaaa\nbbbbbbbbbb\ncccccccccc\ndddddddddd\neeeeeeeeee"));
        const Mime mime = mimeOf(QStringLiteral("x"));
        bool stayed = false;
        bool moved = false;
        for (int y = 0; y < 40; ++y) {
            box->setCursorPosition(2);
            const int above = box->positionAt(3, y - 1.0);
            const int here = box->positionAt(3, y);
            const int below = box->positionAt(3, y + 1.0);
            const bool stays = above != here && here != below && above != below;
            QVERIFY(move(box->mapToScene(QPointF(3, y)).toPoint(), mime));
            QCOMPARE(box->cursorPosition(), stays ? 2 : here);
            stayed = stayed || (stays && here != 2);
            moved = moved || (!stays && here != 2);
        }
        QVERIFY(stayed);
        QVERIFY(moved);
    }

private:
    bool enter(QPoint point, const Mime &mime)
    {
        QDragEnterEvent event(point, Qt::CopyAction, mime.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        entered = event.isAccepted();
        return entered && event.dropAction() == Qt::CopyAction;
    }

    bool move(QPoint point, const Mime &mime)
    {
        if (!entered && !enter(point, mime))
            return false;
        QDragMoveEvent event(point, Qt::CopyAction, mime.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        return event.isAccepted();
    }

    bool drop(QPoint point, const Mime &mime)
    {
        QDropEvent event(point, Qt::CopyAction, mime.get(), Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
        entered = false;
        return event.isAccepted();
    }

    /// In the window, in front of the character at `position`.
    [[nodiscard]] QPoint spot(int position) const
    {
        return box->mapToScene(box->positionToRectangle(position).center()).toPoint();
    }

    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<Box> box;
    std::unique_ptr<MessageGuard> guard;
    QJSEngine engine;
    bool entered = false;
};

QTEST_MAIN(TestAreaDrops)
#include "tst_areadrops.moc"
