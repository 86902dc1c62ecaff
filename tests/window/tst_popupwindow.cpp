// The pop-up: its timers, its placement against items and the pointer, its mask. No window manager takes
// part.

#include "messageguard.h"

#include "window/popupwindow.h"

#include <QCursor>
#include <QQuickItem>
#include <QScreen>
#include <QtTest>

#include <memory>

namespace {

constexpr int patience = 10'000; // ms

void setCurrentScreen(QScreen *screen)
{
    qApp->setProperty("currentScreen", screen ? QVariant::fromValue(screen) : QVariant());
}

} // namespace

class TestPopupWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<PopupWindow> popup;
    std::unique_ptr<QQuickWindow> window; ///< holds the items
    std::unique_ptr<MessageGuard> guard;

    QQuickItem *itemAt(QPoint global, QSizeF size = {80, 30})
    {
        auto *item = new QQuickItem(window->contentItem());
        item->setPosition(window->mapFromGlobal(global));
        item->setSize(size);
        return item;
    }

    [[nodiscard]] QRect area() const { return popup->screen()->availableGeometry(); }

    /// Where the platform puts a window that is told to go to `place`.
    [[nodiscard]] QPoint platformsIdeaOf(QPoint place) const
    {
        QQuickWindow reference;
        reference.setFlags(popup->flags());
        reference.resize(popup->size());
        reference.setY(place.y());
        reference.setX(place.x());
        reference.show();
        return reference.position();
    }

    void sendEvent(QEvent::Type type)
    {
        if (type == QEvent::Enter) {
            QEnterEvent event(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
            QCoreApplication::sendEvent(popup.get(), &event);
        } else if (type == QEvent::FocusIn || type == QEvent::FocusOut) {
            QFocusEvent event(type);
            QCoreApplication::sendEvent(popup.get(), &event);
        } else {
            QEvent event(type);
            QCoreApplication::sendEvent(popup.get(), &event);
        }
    }

public:
    /// Windows are shown here on platforms without OpenGL, too.
    static void initMain() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }

private Q_SLOTS:
    void init()
    {
        guard = std::make_unique<MessageGuard>();
        // The offscreen platform's; the second is the software renderer's when a window closes early.
        guard->allow(QStringLiteral("^This plugin does not support "));
        guard->allow(QStringLiteral("^QBackingStore::flush\\(\\) called for "));
        setCurrentScreen(QGuiApplication::primaryScreen());
        popup = std::make_unique<PopupWindow>();
        popup->resize(120, 60);
        window = std::make_unique<QQuickWindow>();
        window->setGeometry(10, 10, 50, 50);
    }
    void cleanup()
    {
        popup.reset();
        window.reset();
        const QStringList unexpected = guard->unexpected();
        guard.reset();
        setCurrentScreen(nullptr);
        QCOMPARE(unexpected, QStringList());
    }

    void flagsAreThoseOfAToolTipWithoutFocusAndShadow()
    {
        QCOMPARE(quint32(popup->flags()), 0x4020000du);
        QCOMPARE(popup->color(), QColor(Qt::transparent));
    }

    void openingWaitsForTheEventLoopAlsoWithoutADelay()
    {
        popup->open();
        QVERIFY(!popup->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), patience);
    }

    void fadingBeforeTheDelayKeepsItClosed()
    {
        popup->setDelay(20);
        popup->open();
        popup->fade();
        QTest::qWait(100);
        QVERIFY(!popup->isVisible());
    }

    void openPopUpClosesAfterItsTimeout()
    {
        popup->setTimeout(20);
        popup->open();
        QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), patience);
        QTest::qWait(100);
        QVERIFY(popup->isVisible()); // nobody asked it to fade
        popup->fade();
        QVERIFY(popup->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!popup->isVisible(), patience);
    }

    void openingStopsAFade()
    {
        popup->setTimeout(50);
        popup->show();
        popup->fade();
        popup->open();
        QTest::qWait(200);
        QVERIFY(popup->isVisible());
    }

    void pointerSteersTheTimersAndIsTold()
    {
        QSignalSpy enter(popup.get(), &PopupWindow::enter);
        QSignalSpy leave(popup.get(), &PopupWindow::leave);
        popup->setTimeout(50);
        popup->show();
        sendEvent(QEvent::Leave);
        QCOMPARE(leave.count(), 1);
        sendEvent(QEvent::Enter);
        QCOMPARE(enter.count(), 1);
        QTest::qWait(200);
        QVERIFY(popup->isVisible()); // the pointer rests on it
        sendEvent(QEvent::Leave);
        QTRY_VERIFY_WITH_TIMEOUT(!popup->isVisible(), patience);
        sendEvent(QEvent::Enter); // on a window that is not visible: opens it
        QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), patience);
    }

    void leavingStopsAnOpeningPopUp()
    {
        popup->setDelay(30);
        popup->open();
        sendEvent(QEvent::Leave);
        QTest::qWait(150);
        QVERIFY(!popup->isVisible());
    }

    void focusIsTold()
    {
        QSignalSpy in(popup.get(), &PopupWindow::focusIn);
        QSignalSpy out(popup.get(), &PopupWindow::focusOut);
        sendEvent(QEvent::FocusIn);
        QCOMPARE(in.count(), 1);
        sendEvent(QEvent::FocusOut);
        QCOMPARE(in.count() + out.count(), 2);
    }

    void closingDeletesOnRequest()
    {
        QPointer<PopupWindow> kept = new PopupWindow;
        kept->show();
        kept->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(kept);
        kept->setDeleteOnClose(true);
        kept->show();
        kept->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!kept);
    }

    void itemPlacesThePopUp_data()
    {
        QTest::addColumn<QString>("edge");
        QTest::addColumn<QPoint>("offset"); // of the pop-up from the item, which has room around it
        QTest::newRow("bottom") << QStringLiteral("bottom") << QPoint(0, 30);
        QTest::newRow("top") << QStringLiteral("top") << QPoint(0, -60);
        QTest::newRow("left") << QStringLiteral("left") << QPoint(-120, 0);
        QTest::newRow("right") << QStringLiteral("right") << QPoint(80, 0);
        QTest::newRow("bottomLeft") << QStringLiteral("bottomLeft") << QPoint(-40, 46);
    }
    void itemPlacesThePopUp()
    {
        QFETCH(QString, edge);
        QFETCH(QPoint, offset);
        const QPoint place = area().topLeft() + QPoint(300, 200);
        popup->setAttachItem(itemAt(place));
        popup->setEdge(edge);
        QSignalSpy moves(popup.get(), &PopupWindow::cursorPosChanged);
        popup->show();
        QCOMPARE(popup->position(), place + offset);
        const QPoint relative = QCursor::pos() - popup->position();
        QCOMPARE(popup->cursorPos(), QPoint(qMax(relative.x(), 0), qMax(relative.y(), 0)));
        QCOMPARE(moves.count(), popup->cursorPos() == QPoint() ? 0 : 1);
    }

    void itemAtTheBottomHasThePopUpFlushAboveIt()
    {
        const QPoint place(area().x() + 300, area().y() + area().height() - 40);
        popup->setAttachItem(itemAt(place));
        popup->show();
        QCOMPARE(popup->position(), place - QPoint(0, 60));
    }

    void popUpLargerThanTheScreenStaysReachable()
    {
        popup->resize(area().size() + QSize(200, 200));
        popup->setAttachItem(itemAt(area().center()));
        popup->show();
        QCOMPARE(popup->position(), platformsIdeaOf(area().topLeft() - QPoint(200, 0)));
    }

    void unknownEdgePlacesNothingButNotesThePointer()
    {
        popup->setPosition(area().topLeft() + QPoint(3, 4));
        const QPoint before = popup->position();
        popup->setAttachItem(itemAt(area().center()));
        popup->setEdge(QStringLiteral("nowhere"));
        popup->setCursorPos({-7, -7});
        popup->show();
        QCOMPARE(popup->position(), before);
        QVERIFY(popup->cursorPos() != QPoint(-7, -7));
    }

    void withoutAnItemThePointerPlacesIt()
    {
        const QPoint pointer = area().topLeft() + QPoint(100, 90);
        QCursor::setPos(pointer);
        popup->show();
        const QPoint found = QCursor::pos(); // some platforms have none that could be moved
        QCOMPARE(popup->position(), found);
        QCOMPARE(popup->cursorPos(), QPoint(0, 0));
    }

    void destroyedItemCountsAsNone()
    {
        QQuickItem *item = itemAt(area().center());
        popup->setAttachItem(item);
        delete item;
        QCOMPARE(popup->attachItem(), nullptr);
        QCursor::setPos(area().topLeft() + QPoint(100, 90));
        popup->show();
        QCOMPARE(popup->position(), QCursor::pos());
    }

    void itemWithoutAWindowDoesNoHarm()
    {
        QQuickItem lonely;
        lonely.setSize({80, 30});
        popup->setAttachItem(&lonely);
        popup->show();
        QCOMPARE(popup->position(), platformsIdeaOf(QPoint(qMax(0, area().x()), 30)));
    }

    void withoutAutoMoveItStaysWhereItIs()
    {
        popup->setPosition(area().topLeft() + QPoint(33, 44));
        const QPoint before = popup->position();
        popup->setAutoMove(false);
        popup->setAttachItem(itemAt(area().center()));
        popup->setCursorPos({5, 6});
        popup->show();
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->position(), before);
        QCOMPARE(popup->cursorPos(), QPoint(5, 6));
    }

    void withoutACurrentScreenNothingIsPlaced()
    {
        setCurrentScreen(nullptr);
        popup->setPosition(area().topLeft() + QPoint(33, 44));
        const QPoint before = popup->position();
        popup->setAttachItem(itemAt(area().center()));
        popup->setCursorPos({5, 6});
        popup->show();
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->position(), before);
        QCOMPARE(popup->cursorPos(), QPoint(5, 6));
    }

    void screenThatWentWhileThePopUpIsOpenPlacesNothing()
    {
        popup->show();
        alignas(QScreen) char gone[sizeof(QScreen)] = {};
        qApp->setProperty("currentScreen", QVariant::fromValue(reinterpret_cast<QScreen *>(gone)));
        popup->close();
        popup->setPosition(area().topLeft() + QPoint(33, 44));
        const QPoint before = popup->position();
        popup->show();
        QCOMPARE(popup->position(), before);
    }

    void firstOpeningCanBeSpentOnTheScene()
    {
        QSignalSpy spy(popup.get(), &PopupWindow::initAndShowChanged);
        popup->setInitAndShow(false);
        popup->setMaskArea({1, 2, 3, 4});
        popup->open();
        QTRY_VERIFY_WITH_TIMEOUT(popup->initAndShow(), patience);
        QVERIFY(!popup->isVisible());
        QCOMPARE(popup->maskArea(), QRect(0, 0, 120, 60)); // the mask is dropped all the same
        QCOMPARE(spy.count(), 1);                          // nothing is told of the way back
        popup->open();
        QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), patience);
    }

    void maskIsAlwaysSetAndTold()
    {
        QSignalSpy spy(popup.get(), &PopupWindow::maskAreaChanged);
        QCOMPARE(popup->maskArea(), QRect(0, 0, 120, 60));
        popup->setMaskArea({1, 2, 30, 40});
        popup->setMaskArea({1, 2, 30, 40});
        QCOMPARE(popup->maskArea(), QRect(1, 2, 30, 40));
        QCOMPARE(popup->mask(), QRegion(1, 2, 30, 40));
        popup->setMaskArea({});
        QCOMPARE(spy.count(), 3);
        QCOMPARE(spy.at(2).at(0).toRect(), QRect());
        QCOMPARE(popup->maskArea(), QRect(0, 0, 120, 60));
        popup->resize(20, 10);
        QCOMPARE(popup->maskArea(), QRect(0, 0, 20, 10));
        popup->setMask(QRegion(5, 0, 5, 5) + QRegion(0, 20, 5, 5));
        QCOMPARE(popup->maskArea(), QRect(5, 0, 5, 5));
    }

    void openingDropsAMask()
    {
        popup->setMaskArea({1, 2, 30, 40});
        popup->open();
        QTRY_VERIFY_WITH_TIMEOUT(popup->isVisible(), patience);
        QCOMPARE(popup->mask(), QRegion(0, 0, 120, 60));
    }

    void parentIsSetAndToldWithoutComparison()
    {
        QSignalSpy spy(popup.get(), &PopupWindow::parentWindowChanged);
        popup->setParent(nullptr);
        popup->setParent(window.get());
        QCOMPARE(popup->parentWindow(), window.get());
        popup->setParent(nullptr);
        QCOMPARE(spy.count(), 3);
    }

    void destroyedWhileItsTimersRunDoesNoHarm()
    {
        popup->setDelay(1);
        popup->setTimeout(1);
        popup->open();
        popup.reset();
        QTest::qWait(30);
    }
};

QTEST_MAIN(TestPopupWindow)
#include "tst_popupwindow.moc"
