// The window of a capture: its construction, the lookup of rectangles, its end.

#include "window/screencapture.h"

#include <QBuffer>
#include <QDateTime>
#include <QPointer>
#include <QScreen>
#include <QtTest>

#include <memory>

namespace {

constexpr bool hasWindowList =
#ifdef Q_OS_WIN
    true;
#else
    false;
#endif

} // namespace

class TestScreenCapture : public QObject
{
    Q_OBJECT

    /// With what a platform without a window system adds on its own.
    static QRect placedIn(const QQuickWindow &window, const QRect &rect)
    {
        return rect.translated(window.frameMargins().left(), window.frameMargins().top());
    }

public:
    /// Windows are shown here on platforms without OpenGL, too.
    static void initMain() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }

private Q_SLOTS:
    void init() { qApp->setProperty("currentScreen", QVariant::fromValue(QGuiApplication::primaryScreen())); }

    void coversTheWholeScreen()
    {
        const qint64 before = QDateTime::currentMSecsSinceEpoch();
        const ScreenCapture capture;
        const qint64 after = QDateTime::currentMSecsSinceEpoch();
        QCOMPARE(quint32(capture.flags()), 0x40000009u);
        QCOMPARE(capture.modality(), Qt::WindowModal);
        QCOMPARE(capture.color(), QColor(Qt::transparent));
        QCOMPARE(capture.geometry(), placedIn(capture, QGuiApplication::primaryScreen()->geometry()));
        bool isNumber = false;
        const qint64 made = capture.screenId().toLongLong(&isNumber);
        QVERIFY(isNumber && before <= made && made <= after);
        QVERIFY(!capture.isVisible());
    }

    void withoutACurrentScreenItTakesItsOwn()
    {
        qApp->setProperty("currentScreen", QVariant());
        const ScreenCapture capture;
        QCOMPARE(capture.geometry(), placedIn(capture, capture.screen()->geometry()));
    }

    void platformWithoutAListHasNoneAndKeepsTheRegion()
    {
        if (hasWindowList)
            QSKIP("this platform lists its windows");
        ScreenCapture capture;
        QCOMPARE(capture.desktopWindowList(), QVariantList());
        capture.setRegion({1, 2, 3, 4});
        capture.windowRegion(2, 3);
        QCOMPARE(capture.region(), QRect(1, 2, 3, 4));
        QCOMPARE(capture.desktopWindowList(), QVariantList());
    }

    void pictureBecomesPngInBase64()
    {
        QImage image(3, 2, QImage::Format_ARGB32);
        image.fill(QColor(10, 200, 30, 128));
        image.setPixelColor(2, 1, Qt::red);
        ScreenCapture capture;
        const QString text = capture.imageToBase64(image);
        const QByteArray bytes = QByteArray::fromBase64(text.toLatin1());
        QVERIFY(bytes.startsWith("\x89PNG"));
        QCOMPARE(QString::fromLatin1(bytes.toBase64()), text);
        QCOMPARE(QImage::fromData(bytes, "png").convertToFormat(image.format()), image);
        QCOMPARE(capture.imageToBase64(QImage()), QString());
    }

    void slotsThatAreKeptDoNothing()
    {
        ScreenCapture capture;
        QSignalSpy spy(&capture, &ScreenCapture::regionChanged);
        capture.init();
        QTest::ignoreMessage(QtDebugMsg, "save");
        capture.save();
        QCOMPARE(capture.region(), QRect());
        QCOMPARE(spy.count(), 0);
        QTest::ignoreMessage(QtDebugMsg, "delete ScreenCapture");
    }

    void escapeClosesAndHidingDeletes()
    {
        QPointer<ScreenCapture> capture = new ScreenCapture;
        capture->show();
        QVERIFY(QTest::qWaitForWindowExposed(capture.data()));
        QKeyEvent other(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
        QCoreApplication::sendEvent(capture.data(), &other);
        QVERIFY(capture->isVisible());
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(capture.data(), &escape);
        QVERIFY(!capture->isVisible());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!capture);

        capture = new ScreenCapture;
        capture->show();
        capture->hide();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!capture);
    }
};

QTEST_MAIN(TestScreenCapture)
#include "tst_screencapture.moc"
