// The frameless window by its own functions and by events that the test sends: no window manager takes part.

#include "messageguard.h"

#include "window/currentscreen.h"
#include "window/framehittest.h"
#include "window/framelesswindow.h"

#include <QQuickItem>
#include <QRubberBand>
#include <QtTest>

#include <private/qquickevents_p_p.h>

#include <memory>

using namespace framehittest;

namespace {

/// Handlers that a test can call, so that the hit it asked for is the one that they see.
class TestWindow : public FramelessWindow
{
public:
    using FramelessWindow::FramelessWindow;

    void press(QPoint global, Qt::MouseButton button = Qt::LeftButton)
    {
        QMouseEvent event = mouseEvent(QEvent::MouseButtonPress, global, button);
        mousePressEvent(&event);
    }
    void move(QPoint global)
    {
        QMouseEvent event = mouseEvent(QEvent::MouseMove, global, Qt::NoButton);
        mouseMoveEvent(&event);
    }
    void release(QPoint global)
    {
        QMouseEvent event = mouseEvent(QEvent::MouseButtonRelease, global, Qt::LeftButton);
        mouseReleaseEvent(&event);
    }
    void loseFocus()
    {
        QFocusEvent event(QEvent::FocusOut);
        focusOutEvent(&event);
    }

private:
    [[nodiscard]] QMouseEvent mouseEvent(QEvent::Type type, QPoint global, Qt::MouseButton button) const
    {
        return QMouseEvent(type, mapFromGlobal(global), global, button,
                           type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton,
                           Qt::NoModifier);
    }
};

/// The window's rubber band, when it shows one.
QRubberBand *visibleBand()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *band = qobject_cast<QRubberBand *>(widget);
        if (band && band->isVisible())
            return band;
    }
    return nullptr;
}

QVariant variantOf(QQuickItem *item)
{
    return QVariant::fromValue(item);
}

/// Notes the key that reaches the scene.
class KeyItem : public QQuickItem
{
public:
    explicit KeyItem(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setFocus(true);
    }
    QVector<int> keys;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys.append(event->key()); }
};

/// Counts its presses.
class ButtonItem : public QQuickItem
{
public:
    explicit ButtonItem(QQuickItem *parent)
        : QQuickItem(parent)
    {
        setAcceptedMouseButtons(Qt::AllButtons);
    }
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

} // namespace

class TestFramelessWindow : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestWindow> window;
    std::unique_ptr<MessageGuard> guard;

    /// What the window answers for a point given in its own coordinates.
    int hit(QPoint point) { return window->hitTest(window->geometry().topLeft() + point); }

    QQuickItem *item(const QRectF &rect)
    {
        auto *item = new QQuickItem(window->contentItem());
        item->setPosition(rect.topLeft());
        item->setSize(rect.size());
        return item;
    }

public:
    /// Windows are shown here on platforms without OpenGL, too.
    static void initMain() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }

private Q_SLOTS:
    void init()
    {
        qApp->setProperty("currentScreen", QVariant());
        guard = std::make_unique<MessageGuard>();
        guard->allow(QStringLiteral("^This plugin does not support ")); // the offscreen platform
        window = std::make_unique<TestWindow>();
        window->setGeometry(100, 50, 400, 300);
        window->create();
        // Once more, for systems that made it larger by a frame, which it does not have.
        window->setGeometry(100, 50, 400, 300);
        QCoreApplication::processEvents(); // what was asked for with a zero timeout
        if (window->geometry() != QRect(100, 50, 400, 300) || window->devicePixelRatio() != 1.0)
            QSKIP("this platform places or scales windows by itself");
    }
    void cleanup()
    {
        window.reset();
        const QStringList unexpected = guard ? guard->unexpected() : QStringList();
        guard.reset();
        qApp->setProperty("currentScreen", QVariant());
        QCOMPARE(unexpected, QStringList());
    }

    // ---- construction

    void flagsAreThoseOfAFullWindow()
    {
        QCOMPARE(int(window->flags()), 0xC001);
        QCOMPARE(window->color(), QColor(Qt::transparent));
        QCOMPARE(window->hitKind(), int(HitClient));
        QCOMPARE(window->background(), QColor(Qt::transparent));
    }

    void backgroundIsNotTheClearColour()
    {
        window->setBackground(Qt::red);
        QCOMPARE(window->color(), QColor(Qt::transparent));
    }

    void windowIsCentredLaterOnRequest()
    {
        TestWindow late;
        late.setGeometry(0, 0, 200, 100);
        late.setDelayCenterWindow(true);
        QCOMPARE(late.position(), QPoint(0, 0));
        QCoreApplication::processEvents();
        const QRect area = late.screen()->availableGeometry();
        QCOMPARE(late.position(), area.center() - QRect(0, 0, 200, 100).center());

        TestWindow tooLate;
        tooLate.setGeometry(0, 0, 200, 100);
        QCoreApplication::processEvents();
        tooLate.setDelayCenterWindow(true);
        QCoreApplication::processEvents();
        QCOMPARE(tooLate.position(), QPoint(0, 0));
        tooLate.centerWindow();
        QCOMPARE(tooLate.position(), late.position());
    }

    void screenChangesAreToldToTheApplication()
    {
        QCOMPARE(currentscreen::get(), nullptr);
        Q_EMIT window->screenChanged(window->screen());
        QCOMPARE(qApp->property("currentScreen").value<QScreen *>(), window->screen());
        QCOMPARE(currentscreen::get(), window->screen());
        window.reset();
        QCOMPARE(currentscreen::get(), QGuiApplication::primaryScreen()); // it outlives the window
    }

    void screenThatIsGoneCountsAsNone()
    {
        alignas(QScreen) char gone[sizeof(QScreen)] = {};
        qApp->setProperty("currentScreen", QVariant::fromValue(reinterpret_cast<QScreen *>(gone)));
        QCOMPARE(currentscreen::get(), nullptr);
        const FramelessWindow other;
        QCOMPARE(other.screen(), QGuiApplication::primaryScreen());
    }

    void noScreenIsThePrimaryOne()
    {
        window->setWindowScreen(nullptr);
        QCOMPARE(window->windowScreen(), QGuiApplication::primaryScreen());
        QSignalSpy spy(window.get(), &FramelessWindow::windowScreenChanged);
        window->setWindowScreen(window->screen());
        QCOMPARE(spy.count(), 0);
    }

    void parentIsSetAndToldWithoutComparison()
    {
        QSignalSpy spy(window.get(), &FramelessWindow::parentWindowChanged);
        QWindow parent;
        window->setParent(&parent);
        window->setParent(&parent);
        QCOMPARE(window->parentWindow(), &parent);
        window->setParent(nullptr);
        window->setParent(nullptr);
        QCOMPARE(spy.count(), 4);
        QCOMPARE(window->parentWindow(), nullptr);
    }

    void borderIsAtLeastOne()
    {
        QSignalSpy spy(window.get(), &FramelessWindow::borderWidthChanged);
        window->setBorderWidth(0);
        QCOMPARE(window->borderWidth(), 1);
        window->setBorderWidth(-5);
        window->setBorderWidth(1);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), 1);
    }

    void cursorIsSetByItsShape()
    {
        window->setCursor(Qt::PointingHandCursor);
        QCOMPARE(window->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(window->availableScreenGeometry(), window->screen()->availableGeometry());
    }

    // ---- hits

    void edgeIsRememberedAndAnsweredAsClientArea()
    {
        QCOMPARE(hit({20, 150}), 1);
        QCOMPARE(window->hitKind(), int(HitLeft));
        QCOMPARE(hit({380, 280}), 1);
        QCOMPARE(window->hitKind(), int(HitBottom)); // the column behind the corner
        QCOMPARE(hit({200, 150}), 1);
        QCOMPARE(window->hitKind(), int(HitClient));
    }

    void fixedSizesHaveNoBandOnTheirSides()
    {
        window->setMinimumWidth(400);
        window->setMaximumWidth(400);
        hit({20, 150});
        QCOMPARE(window->hitKind(), int(HitClient));
        hit({20, 20});
        QCOMPARE(window->hitKind(), int(HitTop));
        window->setMinimumHeight(300);
        window->setMaximumHeight(300);
        hit({20, 20});
        QCOMPARE(window->hitKind(), int(HitClient));
    }

    void edgesGoBeforeTitleAreas()
    {
        window->setTitleArea(item({0, 0, 400, 60}));
        QCOMPARE(hit({200, 20}), 1);
        QCOMPARE(window->hitKind(), int(HitTop));
        QCOMPARE(hit({200, 40}), 2);
        QCOMPARE(window->hitKind(), int(HitCaption));
    }

    void excludedItemsGoBeforeExtraOnesAndThoseBeforeTheTitle()
    {
        window->setTitleArea(item({30, 30, 340, 40}));
        QQuickItem *extra = item({30, 60, 50, 100});
        QQuickItem *button = item({40, 40, 30, 40});
        window->setExtraTitleArea({variantOf(extra)});
        window->setExcludeTitleArea({variantOf(button)});
        QCOMPARE(hit({45, 45}), 1); // button above the title
        QCOMPARE(window->hitKind(), int(HitClient));
        QCOMPARE(hit({45, 75}), 1);   // button above the extra item
        QCOMPARE(hit({75, 100}), 2);  // extra alone
        QCOMPARE(hit({200, 45}), 2);  // title alone
        QCOMPARE(hit({200, 150}), 1); // neither
        button->setVisible(false);
        QCOMPARE(hit({45, 45}), 2);
        extra->setVisible(false);
        QCOMPARE(hit({75, 100}), 1);
        window->titleArea()->setVisible(false);
        QCOMPARE(hit({200, 45}), 2); // the title counts also when it is invisible
    }

    void itemsLieWhereTheSceneHasThem()
    {
        QQuickItem *parent = item({100, 100, 10, 10});
        auto *child = new QQuickItem(parent);
        child->setPosition({10.6, 10.4});
        child->setSize({50.9, 20.9});
        window->setTitleArea(child);
        // At 111, 110 of size 50 x 20: positions are rounded, sizes are cut.
        QCOMPARE(hit({110, 115}), 1);
        QCOMPARE(hit({111, 110}), 2);
        QCOMPARE(hit({160, 129}), 2);
        QCOMPARE(hit({161, 129}), 1);
        QCOMPARE(hit({160, 130}), 1);
    }

    void oddEntriesOfTheListsAreSkipped()
    {
        QObject noItem;
        QQuickItem *good = item({100, 100, 20, 20});
        const QVariantList list = {QVariant(),
                                   variantOf(nullptr),
                                   QVariant::fromValue(&noItem),
                                   QStringLiteral("text"),
                                   QVariant(QVariant::Int),
                                   variantOf(good)};
        window->setExtraTitleArea(list);
        window->setExcludeTitleArea(list);
        QCOMPARE(hit({105, 105}), 1);
        QCOMPARE(hit({150, 150}), 1);
        window->setExcludeTitleArea({});
        QCOMPARE(hit({105, 105}), 2);
    }

    void destroyedItemsAreForgotten()
    {
        QQuickItem *title = item({30, 30, 340, 40});
        QQuickItem *extra = item({30, 100, 40, 40});
        QQuickItem *button = item({300, 40, 30, 20});
        QQuickItem *second = item({200, 100, 40, 40});
        window->setTitleArea(title);
        window->setExtraTitleArea({variantOf(extra), variantOf(second)});
        window->setExcludeTitleArea({variantOf(button)});
        delete button;
        QCOMPARE(hit({305, 45}), 2);
        delete extra;
        QCOMPARE(hit({35, 105}), 1);
        QCOMPARE(hit({205, 105}), 2);
        delete title;
        QCOMPARE(hit({305, 45}), 1);
        QCOMPARE(window->titleArea(), nullptr);
        // A script that reads the list back must not get the bare pointer of what is gone.
        QCOMPARE(window->extraTitleArea().size(), 2);
        QCOMPARE(window->extraTitleArea().at(0).value<QQuickItem *>(), nullptr);
        QCOMPARE(window->extraTitleArea().at(1).value<QQuickItem *>(), second);
    }

    void listsAreComparedBeforeTheyAreStored()
    {
        QQuickItem *first = item({0, 0, 1, 1});
        QSignalSpy extra(window.get(), &FramelessWindow::extraTitleAreaChanged);
        QSignalSpy excluded(window.get(), &FramelessWindow::excludeTitleAreaChanged);
        for (int i = 0; i < 2; ++i) {
            window->setExtraTitleArea({variantOf(first)});
            window->setExcludeTitleArea({variantOf(first)});
        }
        QCOMPARE(extra.count(), 1);
        QCOMPARE(excluded.count(), 1);
        window->setExtraTitleArea({variantOf(first), variantOf(first)});
        window->setExcludeTitleArea({});
        QCOMPARE(extra.count(), 2);
        QCOMPARE(excluded.count(), 2);
        QCOMPARE(extra.at(1).at(0).toList().size(), 2);
        // Entries that are no items are compared as they were given.
        const QVariantList odd = {QVariant(),
                                  QVariant::fromValue(nullptr),
                                  variantOf(nullptr),
                                  QVariant::fromValue<QObject *>(nullptr),
                                  QStringLiteral("text"),
                                  7};
        for (int i = 0; i < 3; ++i)
            window->setExtraTitleArea(odd);
        QCOMPARE(extra.count(), 3);
        QCOMPARE(window->extraTitleArea(), odd);
    }

    void withoutNonClientAreaEverythingIsClientArea()
    {
        window->setTitleArea(item({0, 0, 400, 60}));
        hit({200, 20});
        QCOMPARE(window->hitKind(), int(HitTop));
        window->setEnabledNCArea(false);
        QCOMPARE(hit({200, 20}), 1);
        QCOMPARE(window->hitKind(), int(HitClient));
        QCOMPARE(hit({200, 40}), 1);
    }

    void withoutResizingTheEarlierKindStaysWhereNoAreaMatches()
    {
        window->setTitleArea(item({0, 0, 400, 60}));
        hit({20, 150});
        QCOMPARE(window->hitKind(), int(HitLeft));
        window->setEnableResize(false);
        QCOMPARE(hit({200, 150}), 1);
        QCOMPARE(window->hitKind(), int(HitLeft));
        QCOMPARE(hit({200, 20}), 2); // no band in front of the title
        QCOMPARE(window->hitKind(), int(HitCaption));
        QCOMPARE(hit({200, 150}), 1);
        QCOMPARE(window->hitKind(), int(HitCaption));
    }

    // ---- the rubber band

    void pressOnAnEdgeShowsTheBandAndOnlyReleaseResizes()
    {
        hit({380, 150});
        QCOMPARE(window->hitKind(), int(HitRight));
        window->press({480, 200});
        QVERIFY(visibleBand());
        QCOMPARE(visibleBand()->geometry(), QRect(120, 70, 360, 260));
        window->move({510, 220});
        QCOMPARE(window->cursor().shape(), Qt::SizeHorCursor);
        QCOMPARE(visibleBand()->geometry(), QRect(120, 70, 390, 260));
        window->move({530, 100});
        QCOMPARE(visibleBand()->geometry(), QRect(120, 70, 410, 260));
        QCOMPARE(window->geometry(), QRect(100, 50, 400, 300));
        window->release({530, 100});
        QVERIFY(!visibleBand());
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        QTRY_COMPARE(window->geometry(), QRect(100, 50, 450, 300));
    }

    void bandIsAnOutline()
    {
        if (QGuiApplication::platformName() == QLatin1String("windows"))
            QSKIP("the system's own style has a band that can be seen through");
        hit({380, 150});
        window->press({480, 200});
        QVERIFY(visibleBand());
        const QRect band = visibleBand()->rect();
        const QRegion mask = visibleBand()->mask();
        QVERIFY(!mask.isEmpty());
        QVERIFY(!mask.contains(band.center())); // the window can be seen through it
        QVERIFY(mask.contains(band.topLeft()) && mask.contains(band.bottomRight()));
        window->release({480, 200});
    }

    void leftEdgeStopsAtTheBandsMinimum()
    {
        window->setMinimumSize({200, 150});
        hit({20, 20});
        QCOMPARE(window->hitKind(), int(HitTopLeft));
        window->press({120, 70});
        window->move({700, 700});
        // Right and bottom are 479 and 329; the band keeps its minimum and one pixel, as its edges are
        // inclusive.
        QCOMPARE(visibleBand()->geometry(), QRect(QPoint(279, 179), QPoint(479, 329)));
        window->release({700, 700});
        QTRY_COMPARE(window->geometry(), QRect(259, 159, 241, 191));
    }

    void rightEdgeIsBoundedByTheBandItself()
    {
        window->setMinimumSize({200, 150});
        window->setMaximumSize({420, 320});
        hit({379, 279});
        QCOMPARE(window->hitKind(), int(HitBottomRight));
        window->press({479, 329});
        window->move({-900, -900});
        QCOMPARE(visibleBand()->size(), QSize(200, 150));
        window->move({1900, 1900});
        QCOMPARE(visibleBand()->size(), QSize(420, 320));
        window->release({1900, 1900});
    }

    void clientAreaAndTitleNeverMakeABand()
    {
        window->setTitleArea(item({0, 0, 400, 60}));
        auto *button = new ButtonItem(window->contentItem());
        button->setSize({400, 300});
        hit({200, 150});
        window->press({300, 200});
        QCOMPARE(button->presses, 1); // the scene has it
        window->release({300, 200});
        hit({200, 40});
        QCOMPARE(window->hitKind(), int(HitCaption));
        window->press({300, 90});
        QCOMPARE(button->presses, 2);
        QVERIFY(!visibleBand());
        window->release({300, 90});
        hit({20, 150});
        window->press({120, 200});
        QCOMPARE(button->presses, 2); // an edge keeps it from the scene
        window->release({120, 200});
    }

    void anotherKindDuringADragPutsTheBandBack()
    {
        hit({380, 150});
        window->press({480, 200});
        window->move({510, 200});
        hit({200, 150});
        window->move({520, 200});
        QCOMPARE(visibleBand()->geometry(), QRect(120, 70, 360, 260));
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        window->release({520, 200});
        QCOMPARE(window->geometry(), QRect(100, 50, 400, 300));
    }

    void windowAsLargeAsTheWorkAreaHasNoShadow()
    {
        const QRect area = window->availableScreenGeometry();
        window->setGeometry(QRect(area.topLeft(), QSize(area.width(), 300)));
        QTRY_COMPARE(window->size(), QSize(area.width(), 300));
        const QRect whole = window->geometry();
        hit({area.width() / 2, 20});
        QCOMPARE(window->hitKind(), int(HitTop));
        window->press(whole.topLeft() + QPoint(area.width() / 2, 20));
        QCOMPARE(visibleBand()->geometry(), whole.adjusted(0, 20, 0, -20));
        window->release({});
        QTRY_COMPARE(window->size(), whole.size());
    }

    void lostFocusClosesTheBand()
    {
        window->loseFocus(); // without a band
        hit({380, 150});
        window->press({480, 200});
        window->move({510, 200});
        window->loseFocus();
        QVERIFY(!visibleBand());
        window->release({510, 200});
        QCOMPARE(window->geometry(), QRect(100, 50, 400, 300));
        window->press({480, 200}); // and it comes back
        QVERIFY(visibleBand());
        window->release({480, 200});
    }

    void cursorOfAScriptStays()
    {
        hit({200, 150});
        window->setCursor(Qt::IBeamCursor);
        window->move({300, 200});
        QCOMPARE(window->cursor().shape(), Qt::IBeamCursor);
        window->setCursor(Qt::SizeBDiagCursor);
        window->move({300, 200});
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
        window->setEnableResize(false);
        window->setCursor(Qt::SizeBDiagCursor);
        window->move({300, 200});
        QCOMPARE(window->cursor().shape(), Qt::SizeBDiagCursor);
    }

    // ---- the mouse grab

    void grabTellsVerticalWaysUntilTheRelease()
    {
        QSignalSpy moves(window.get(), &FramelessWindow::mouseMoved);
        QSignalSpy releases(window.get(), &FramelessWindow::mouseReleased);
        window->setGrabMouseState(true);
        window->move({300, 200});
        QCOMPARE(moves.count(), 0); // the first one is only noted
        window->move({310, 205});
        window->move({311, 195});
        QCOMPARE(moves.count(), 2);
        QCOMPARE(moves.at(0), QVariantList({QPoint(310, 205), 5}));
        QCOMPARE(moves.at(1), QVariantList({QPoint(311, 195), -10}));
        window->release({312, 190});
        QCOMPARE(releases.count(), 1);
        QCOMPARE(releases.at(0).at(0).toPoint(), QPoint(312, 190));
        window->move({311, 195});
        window->release({312, 190});
        QCOMPARE(moves.count(), 2);
        QCOMPARE(releases.count(), 1);
    }

    void grabWorksWithoutResizing()
    {
        window->setEnableResize(false);
        QSignalSpy moves(window.get(), &FramelessWindow::mouseMoved);
        window->setGrabMouseState(true);
        window->move({300, 200});
        window->move({300, 201});
        QCOMPARE(moves.count(), 1);
    }

    void topmostRowOfTheDesktopCountsAsNoPosition()
    {
        QSignalSpy moves(window.get(), &FramelessWindow::mouseMoved);
        window->setGrabMouseState(true);
        window->move({300, 0});
        window->move({310, 0});
        QCOMPARE(moves.count(), 0);
        window->move({310, 5}); // leaves the row: noted, not told, for there was no position before
        QCOMPARE(moves.count(), 0);
        window->move({310, 6});
        QCOMPARE(moves.count(), 1);
        QCOMPARE(moves.at(0).at(1).toInt(), 1);
    }

    void moveBeforeTheGrabCountsAsItsStart()
    {
        // The last position is noted by every move, grabbed or not.
        QSignalSpy moves(window.get(), &FramelessWindow::mouseMoved);
        window->move({300, 150});
        window->setGrabMouseState(true);
        window->move({300, 160});
        QCOMPARE(moves.count(), 1);
        QCOMPARE(moves.at(0).at(1).toInt(), 10);
    }

    // ---- other events

    void keyIsToldBeforeTheSceneHasIt()
    {
        auto *item = new KeyItem(window->contentItem());
        QFocusEvent focus(QEvent::FocusIn);
        QCoreApplication::sendEvent(window.get(), &focus);
        QStringList told;
        connect(window.get(), &FramelessWindow::keyPressed, this,
                [&](int key, int modifiers, const QString &text, QEvent *event) {
                    told.append(QStringLiteral("%1 %2 %3").arg(key).arg(modifiers).arg(text));
                    QVERIFY(event->isAccepted());
                    QVERIFY(!item->keys.contains(key));
                    if (key == Qt::Key_B)
                        window->ignoreEvent(event);
                    if (key == Qt::Key_C) {
                        window->ignoreEvent(event);
                        window->acceptEvent(event);
                    }
                });
        for (const int key : {Qt::Key_A, Qt::Key_B, Qt::Key_C}) {
            QKeyEvent event(QEvent::KeyPress, key, Qt::ShiftModifier, QString(QChar(key)));
            QCoreApplication::sendEvent(window.get(), &event);
        }
        const int shift = int(Qt::ShiftModifier);
        QCOMPARE(told,
                 QStringList({QStringLiteral("65 %1 A").arg(shift), QStringLiteral("66 %1 B").arg(shift),
                              QStringLiteral("67 %1 C").arg(shift)}));
        QCOMPARE(item->keys, QVector<int>({Qt::Key_A, Qt::Key_C}));
        window->acceptEvent(nullptr);
        window->ignoreEvent(nullptr);
    }

    void pointerComingAndGoingIsTold()
    {
        QSignalSpy enter(window.get(), &FramelessWindow::enter);
        QSignalSpy leave(window.get(), &FramelessWindow::leave);
        QEnterEvent in(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QCoreApplication::sendEvent(window.get(), &in);
        QCOMPARE(enter.count(), 1);
        QCOMPARE(leave.count(), 0);
        QEvent out(QEvent::Leave);
        QCoreApplication::sendEvent(window.get(), &out);
        QCOMPARE(leave.count(), 1);
        QCOMPARE(enter.count(), 1);
    }

    void closingMinimisesOnRequest()
    {
        window->setMinimizedOnHide(true);
        window->show();
        int closing = 0;
        connect(window.get(), &QQuickWindow::closing, this, [&closing] { ++closing; });
        const QPointer<QWindow> alive(window.get());
        window->close();
        QVERIFY(window->isVisible());
        QTRY_COMPARE(window->windowState(), Qt::WindowMinimized);
        QCOMPARE(closing, 0);
        QVERIFY(alive && window->handle());
        window->setMinimizedOnHide(false);
        window->close();
        QCOMPARE(closing, 1);
        QVERIFY(!window->handle());
    }

    void stateIsToldUnderItsOwnName()
    {
        qRegisterMetaType<Qt::WindowState>("Qt::WindowState");
        QSignalSpy spy(window.get(), &FramelessWindow::stateChanged);
        window->showMaximized();
        QTRY_VERIFY(spy.count() > 0);
        QCOMPARE(spy.last().at(0).value<Qt::WindowState>(), Qt::WindowMaximized);
        QCOMPARE(window->property("windowState").toInt(), int(Qt::WindowMaximized));
    }

    void signalsThatAreKeptForClientsNeverCome()
    {
        QSignalSpy native(window.get(), &FramelessWindow::nativeMousePressed);
        QSignalSpy begin(window.get(), &FramelessWindow::wheelBegin);
        QSignalSpy turn(window.get(), &FramelessWindow::wheel);
        QSignalSpy end(window.get(), &FramelessWindow::wheelEnd);
        window->show();
        QTest::mouseClick(window.get(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 150));
        QWheelEvent event(QPointF(200, 150), QPointF(300, 200), QPoint(), QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(window.get(), &event);
        QCOMPARE(native.count() + begin.count() + turn.count() + end.count(), 0);
    }

    void scriptCanDeleteTheWindow()
    {
        QPointer<FramelessWindow> other = new FramelessWindow;
        QVERIFY(QMetaObject::invokeMethod(other.data(), "deleteLater"));
        QCoreApplication::sendPostedEvents(other.data(), QEvent::DeferredDelete);
        QVERIFY(!other);
    }
};

QTEST_MAIN(TestFramelessWindow)
#include "tst_framelesswindow.moc"
