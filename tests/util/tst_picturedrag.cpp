// What a drag out of the client offers. The offscreen platform refuses every drag at once, so the drag can be
// looked at when it is over and before it is deleted.

#include "util/imutil.h"

#include <QDrag>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString gifMark = QStringLiteral("text/ostrel-image-gif");

/// The smallest picture of this format: one black pixel.
const QByteArray gif = QByteArray::fromHex(
    "47494638396101000100800000000000ffffff21f90401000000002c00000000010001000002024401003b");

/// Keeps what the last drag offered. Drags are children of the application.
class DragWatch : public QObject
{
public:
    DragWatch() { qApp->installEventFilter(this); }

    int count = 0;
    QStringList formats;
    QList<QUrl> urls;
    QImage image;
    QByteArray mark;
    QPixmap pixmap;
    QPoint hotSpot;
    int deleted = 0;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *drag = qobject_cast<QDrag *>(watched);
        if (drag && event->type() == QEvent::DeferredDelete) {
            ++count;
            formats = drag->mimeData()->formats();
            urls = drag->mimeData()->urls();
            image = qvariant_cast<QImage>(drag->mimeData()->imageData());
            mark = drag->mimeData()->data(gifMark);
            pixmap = drag->pixmap();
            hotSpot = drag->hotSpot();
            connect(drag, &QObject::destroyed, this, [this] { ++deleted; });
        }
        return false;
    }
};

} // namespace

class TestPictureDrag : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir temporary;
    ImUtil util;

    [[nodiscard]] QString file(const QString &name, const QByteArray &content) const
    {
        QFile file(temporary.path() + QLatin1Char('/') + name);
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? file.fileName()
                                                                                        : QString();
    }
    [[nodiscard]] QString picture(const QString &name, int width, int height) const
    {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        const QString path = temporary.path() + QLatin1Char('/') + name;
        return image.save(path, "PNG") ? path : QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        if (QGuiApplication::platformName() != QLatin1String("offscreen"))
            QSKIP("a real drag would wait for a mouse");
    }

    void aPictureIsOfferedWithItsUrlAndAThumbnail()
    {
        DragWatch watch;
        const QString path = picture(QStringLiteral("a b.txt"), 400, 200);
        const QUrl url = QUrl::fromLocalFile(path);
        util.dragItem(url.toString(QUrl::FullyEncoded));
        QTRY_COMPARE(watch.deleted, 1);
        QCOMPARE(watch.count, 1);
        QCOMPARE(watch.image.size(), QSize(400, 200));
        QCOMPARE(watch.urls, QList<QUrl>{url});
        QVERIFY(!watch.formats.contains(gifMark));
        QCOMPARE(watch.pixmap.size(), QSize(100, 50));
        QCOMPARE(watch.hotSpot, QPoint(50, 25));
    }

    void theUrlIsThePathAsItWasGiven()
    {
        DragWatch watch;
        const QString path = picture(QStringLiteral("plain.png"), 10, 10);
        util.dragItem(path);
        QTRY_COMPARE(watch.deleted, 1);
        QCOMPARE(watch.urls, QList<QUrl>{QUrl(path)});
    }

    void aGifIsMarked()
    {
        DragWatch watch;
        util.dragItem(file(QStringLiteral("a.png"), gif));
        QTRY_COMPARE(watch.deleted, 1);
        QVERIFY(watch.formats.contains(gifMark));
        QVERIFY(watch.mark.isEmpty());
        QCOMPARE(watch.image.size(), QSize(1, 1));
        QCOMPARE(watch.urls.size(), 1);
    }

    void aThumbnailOfItsOwnIsShownInstead()
    {
        DragWatch watch;
        util.dragItem(picture(QStringLiteral("a.png"), 400, 200), picture(QStringLiteral("b.png"), 30, 61));
        QTRY_COMPARE(watch.deleted, 1);
        QCOMPARE(watch.image.size(), QSize(400, 200));
        // 30 by 61 enlarged into 100 by 100.
        QCOMPARE(watch.pixmap.size(), QSize(49, 100));
        QCOMPARE(watch.hotSpot, QPoint(24, 50));
    }

    void anUnreadableThumbnailShowsNothing()
    {
        DragWatch watch;
        util.dragItem(picture(QStringLiteral("a.png"), 40, 20), file(QStringLiteral("b.png"), "text"));
        QTRY_COMPARE(watch.deleted, 1);
        QCOMPARE(watch.image.size(), QSize(40, 20));
        QVERIFY(watch.pixmap.isNull());
    }

    void aDamagedPictureIsShownByItsThumbnail()
    {
        DragWatch watch;
        QFile whole(picture(QStringLiteral("whole.png"), 400, 200));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        // The format is still known; the pixels are gone.
        const QString damaged = file(QStringLiteral("a.png"), whole.read(16));
        util.dragItem(damaged, picture(QStringLiteral("b.png"), 50, 50));
        QTRY_COMPARE(watch.deleted, 1);
        QVERIFY(watch.image.isNull());
        QCOMPARE(watch.formats, QStringList{QStringLiteral("text/uri-list")});
        QCOMPARE(watch.pixmap.size(), QSize(100, 100));
    }

    void anUnreadableFileIsStillDraggedAsAnUrl()
    {
        DragWatch watch;
        util.dragItem(file(QStringLiteral("a.png"), "text"));
        QTRY_COMPARE(watch.deleted, 1);
        QCOMPARE(watch.formats, QStringList{QStringLiteral("text/uri-list")});
        QVERIFY(watch.pixmap.isNull());

        util.dragItem(QStringLiteral("https://server/a.png"));
        QTRY_COMPARE(watch.deleted, 2);
        QCOMPARE(watch.urls, QList<QUrl>{QUrl(QStringLiteral("https://server/a.png"))});
    }

    void anEmptyPathStartsNoDrag()
    {
        DragWatch watch;
        util.dragItem(QString(), picture(QStringLiteral("a.png"), 40, 20));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(watch.count, 0);
    }
};

QTEST_MAIN(TestPictureDrag)
#include "tst_picturedrag.moc"
