// The interface of the seven types as scripts see it: properties with type, default, access and notification,
// signals in their order, slots, and nothing else.

#include "window/autostart.h"
#include "window/framelesswindow.h"
#include "window/popupwindow.h"
#include "window/qxtglobalshortcut.h"
#include "window/qxtversion.h"
#include "window/screencapture.h"
#include "window/scrollcontroller.h"
#include "window/systemtrayicon.h"

#include <QtTest>

#include <functional>

namespace {

struct Property
{
    const char *name;
    const char *type;
    QVariant initial; ///< invalid: not compared
    const char *notify;
    bool writable = true;
};

struct Type
{
    const char *name;
    const QMetaObject *meta;
    const char *base;
    std::function<QObject *()> create;
    QVector<Property> properties;
    QStringList signatures;
    QStringList slotSignatures; ///< sorted by the test
};

QStringList words(const char *text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

template <typename Class>
Type typeOf(const char *name, const char *base)
{
    return {name, &Class::staticMetaObject, base, [] { return new Class; }, {}, {}, {}};
}

Type framelessWindow()
{
    Type type = typeOf<FramelessWindow>("FramelessWindow", "QQuickView");
    type.properties = {
        {"windowState", "Qt::WindowState", Qt::WindowNoState, "stateChanged(Qt::WindowState)", false},
        {"titleArea", "QQuickItem*", QVariant::fromValue<QQuickItem *>(nullptr),
         "titleAreaChanged(QObject*)"},
        {"dragArea", "QRect", QRect(), "dragAreaChanged(QRect)"},
        {"extraTitleArea", "QVariantList", QVariantList(), "extraTitleAreaChanged(QVariantList)"},
        {"excludeTitleArea", "QVariantList", QVariantList(), "excludeTitleAreaChanged(QVariantList)"},
        {"enableResize", "bool", true, "enableResizeChanged(bool)"},
        {"minimizedOnHide", "bool", false, "minimizedOnHideChanged(bool)"},
        {"borderWidth", "int", 4, "borderWidthChanged(int)"},
        {"shadowWidth", "int", 20, "shadowWidthChanged(int)"},
        {"parentWindow", "QWindow*", QVariant::fromValue<QWindow *>(nullptr),
         "parentWindowChanged(QWindow*)"},
        {"enableWindowShadow", "bool", false, "enableWindowShadowChanged(bool)"},
        {"displayMinimizeButton", "bool", true, "displayMinimizeButtonChanged(bool)"},
        {"displayMaximizeButton", "bool", true, "displayMaximizeButtonChanged(bool)"},
        {"displayCloseButton", "bool", true, "displayCloseButtonChanged(bool)"},
        {"delayCenterWindow", "bool", false, "delayCenterWindowChanged(bool)"},
        {"enabledNCArea", "bool", true, "enabledNCAreaChanged(bool)"},
        {"areoAreaes", "QRect", QRect(), "areoAreaesChanged(QRect)"},
        {"windowScreen", "QScreen*", QVariant::fromValue(QGuiApplication::primaryScreen()),
         "windowScreenChanged(QScreen*)"},
        {"background", "QColor", QColor(Qt::transparent), "backgroundChanged(QColor)"},
    };
    type.signatures = words(
        "enableResizeChanged(bool) minimizedOnHideChanged(bool) borderWidthChanged(int) "
        "stateChanged(Qt::WindowState) titleAreaChanged(QObject*) shadowWidthChanged(int) "
        "parentWindowChanged(QWindow*) excludeTitleAreaChanged(QVariantList) enableWindowShadowChanged(bool) "
        "extraTitleAreaChanged(QVariantList) displayMinimizeButtonChanged(bool) "
        "displayMaximizeButtonChanged(bool) displayCloseButtonChanged(bool) delayCenterWindowChanged(bool) "
        "enabledNCAreaChanged(bool) dragAreaChanged(QRect) areoAreaesChanged(QRect) wheelBegin() "
        "wheelEnd(bool) wheelEnd() wheel(int,int,int,int) mouseMoved(QPoint,int) mouseReleased(QPoint) "
        "mousePressed() keyPressed(int,int,QString,QEvent*) windowScreenChanged(QScreen*) "
        "backgroundChanged(QColor) nativeMousePressed() enter() leave()");
    type.slotSignatures = words(
        "deleteLater() updateNativeWindowFlag() setCursor(Qt::CursorShape) availableScreenGeometry() "
        "windowScreen() centerWindow() setGrabMouseState(bool) acceptEvent(QEvent*) ignoreEvent(QEvent*) "
        "setTitleArea(QQuickItem*) setDragArea(QRect) setExtraTitleArea(QVariantList) "
        "setExcludeTitleArea(QVariantList) setEnableResize(bool) setMinimizedOnHide(bool) "
        "setBorderWidth(int) "
        "setShadowWidth(int) setParent(QWindow*) setEnableWindowShadow(bool) setDisplayMinimizeButton(bool) "
        "setDisplayMaximizeButton(bool) setDisplayCloseButton(bool) setDelayCenterWindow(bool) "
        "setEnabledNCArea(bool) setAreoAreaes(QRect) setWindowScreen(QScreen*) setBackground(QColor)");
    return type;
}

Type popupWindow()
{
    Type type = typeOf<PopupWindow>("PopupWindow", "QQuickWindow");
    type.properties = {
        {"delay", "int", 0, "delayChanged(int)"},
        {"timeout", "int", 0x7fffffff, "timeoutChanged(int)"},
        {"attachItem", "QQuickItem*", QVariant::fromValue<QQuickItem *>(nullptr),
         "attachItemChanged(QQuickItem*)"},
        {"edge", "QString", QStringLiteral("bottom"), "edgeChanged(QString)"},
        {"deleteOnClose", "bool", false, "deleteOnCloseChanged(bool)"},
        {"cursorPos", "QPoint", QPoint(0, 0), "cursorPosChanged(QPoint)"},
        {"autoMove", "bool", true, "autoMoveChanged(bool)"},
        {"parentWindow", "QWindow*", QVariant::fromValue<QWindow *>(nullptr),
         "parentWindowChanged(QWindow*)"},
        {"initAndShow", "bool", true, "initAndShowChanged(bool)"},
        {"maskArea", "QRect", QVariant(), "maskAreaChanged(QRect)"},
    };
    type.signatures = words("focusIn() focusOut() enter() leave() delayChanged(int) timeoutChanged(int) "
                            "attachItemChanged(QQuickItem*) edgeChanged(QString) deleteOnCloseChanged(bool) "
                            "cursorPosChanged(QPoint) autoMoveChanged(bool) parentWindowChanged(QWindow*) "
                            "initAndShowChanged(bool) maskAreaChanged(QRect)");
    type.slotSignatures =
        words("open() fade() show() deleteLater() setDelay(int) setTimeout(int) setAttachItem(QQuickItem*) "
              "setEdge(QString) setDeleteOnClose(bool) setCursorPos(QPoint) setAutoMove(bool) "
              "setParent(QWindow*) setInitAndShow(bool) setMaskArea(QRect)");
    return type;
}

Type screenCapture()
{
    Type type = typeOf<ScreenCapture>("ScreenCapture", "QQuickWindow");
    type.properties = {
        {"screenId", "QString", QVariant(), "", false},
        {"region", "QRect", QRect(), "regionChanged(QRect)"},
        {"desktopWindowList", "QVariantList", QVariant(), "", false},
    };
    type.signatures = words("regionChanged(QRect)");
    type.slotSignatures = words("init() setRegion(QRect) desktopWindowList() save() windowRegion(int,int) "
                                "imageToBase64(QImage)");
    return type;
}

Type systemTrayIcon()
{
    Type type = typeOf<SystemTrayIcon>("SystemTrayIcon", "QObject");
    type.properties = {
        {"toolTip", "QString", QString(), "toolTipChanged(QString)"},
        {"iconSoure", "QString", QString(), "iconSoureChanged(QString)"},
        {"visible", "bool", false, "visibleChanged(bool)"},
        {"flashing", "bool", false, "flashingChanged(bool)"},
        {"messageCount", "int", 0, "messageCountChanged(int)"},
        {"state", "State", SystemTrayIcon::Online, "stateChanged(State)"},
        {"themeColor", "QColor", QColor(0, 128, 128), "themeColorChanged(QColor)"},
    };
    type.signatures =
        words("toolTipChanged(QString) iconSoureChanged(QString) visibleChanged(bool) flashingChanged(bool) "
              "context() trigger() doubleClick() middleClick() messageClick() reply(QVariantMap) "
              "location(QVariantMap) messageCountChanged(int) stateChanged(State) themeColorChanged(QColor)");
    type.slotSignatures = words(
        "showMessage(QString,QString,QString,int) showMessage(QString,QString,QString) setToolTip(QString) "
        "setIconSource(QString) setVisible(bool) setFlashing(bool) setMessageCount(int) setState(State) "
        "setThemeColor(QColor) flash() onActivated(QSystemTrayIcon::ActivationReason)");
    return type;
}

Type globalShortcut()
{
    Type type = typeOf<QxtGlobalShortcut>("QxtGlobalShortcut", "QObject");
    type.properties = {
        {"enabled", "bool", true, ""},
        {"shortcut", "QKeySequence", QVariant(), ""},
    };
    type.signatures = words("activated()");
    type.slotSignatures =
        words("setEnabled(bool) setEnabled() setDisabled(bool) setDisabled() setShortcut(QString) "
              "shortcutString() nativeShortcutString() shortcutString(int)");
    return type;
}

Type autoStart()
{
    Type type = typeOf<AutoStart>("AutoStart", "QObject");
    type.properties = {{"enable", "bool", false, "enableChanged(bool)"}};
    type.signatures = words("enableChanged(bool)");
    type.slotSignatures = words("setEnable(bool)");
    return type;
}

Type scrollController()
{
    Type type = typeOf<ScrollController>("ScrollController", "QQuickItem");
    type.properties = {
        {"orientation", "Qt::Orientation", Qt::Vertical, "orientationChanged(Qt::Orientation)"}};
    type.signatures = words("wheel(int,int) orientationChanged(Qt::Orientation)");
    type.slotSignatures = words("setOrientation(Qt::Orientation)");
    return type;
}

const QVector<Type> &types()
{
    static const QVector<Type> list = {framelessWindow(), popupWindow(), screenCapture(),   systemTrayIcon(),
                                       globalShortcut(),  autoStart(),   scrollController()};
    return list;
}

QStringList methodsOf(const QMetaObject &meta, QMetaMethod::MethodType type)
{
    QStringList signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (meta.method(index).methodType() == type)
            signatures.append(QString::fromLatin1(meta.method(index).methodSignature()));
    }
    return signatures;
}

} // namespace

class TestWindowInterface : public QObject
{
    Q_OBJECT

    static void addTypeRows()
    {
        QTest::addColumn<int>("index");
        for (int index = 0; index < types().size(); ++index)
            QTest::newRow(types().at(index).name) << index;
    }

private Q_SLOTS:
    void initTestCase()
    {
        // For the spies.
        qRegisterMetaType<SystemTrayIcon::State>("State");
        qRegisterMetaType<Qt::Orientation>("Qt::Orientation");
    }

    void propertiesStandInTheirOrder_data() { addTypeRows(); }
    void propertiesStandInTheirOrder()
    {
        QFETCH(int, index);
        const Type &type = types().at(index);
        QCOMPARE(type.meta->superClass()->className(), type.base);
        QStringList found;
        for (int i = type.meta->propertyOffset(); i < type.meta->propertyCount(); ++i)
            found.append(QString::fromLatin1(type.meta->property(i).name()));
        QStringList expected;
        for (const Property &property : type.properties)
            expected.append(QString::fromLatin1(property.name));
        QCOMPARE(found, expected);
    }

    void propertyHasItsTypeAccessSignalAndDefault_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<int>("number");
        for (int index = 0; index < types().size(); ++index) {
            const Type &type = types().at(index);
            for (int number = 0; number < type.properties.size(); ++number)
                QTest::addRow("%s.%s", type.name, type.properties.at(number).name) << index << number;
        }
    }
    void propertyHasItsTypeAccessSignalAndDefault()
    {
        QFETCH(int, index);
        QFETCH(int, number);
        const Type &type = types().at(index);
        const Property &expected = type.properties.at(number);
        const QMetaProperty property = type.meta->property(type.meta->propertyOffset() + number);
        QCOMPARE(property.typeName(), expected.type);
        QVERIFY(property.isReadable());
        QCOMPARE(property.isWritable(), expected.writable);
        QCOMPARE(property.notifySignal().methodSignature(), QByteArray(expected.notify));
        if (!expected.initial.isValid())
            return;
        const QScopedPointer<QObject> object(type.create());
        const QVariant found = property.read(object.data());
        if (property.isEnumType())
            QCOMPARE(found.toInt(), expected.initial.toInt());
        else if (found.canConvert<QObject *>())
            QCOMPARE(found.value<QObject *>(), expected.initial.value<QObject *>());
        else
            QCOMPARE(found, expected.initial);
    }

    void signalsStandInTheirOrder_data() { addTypeRows(); }
    void signalsStandInTheirOrder()
    {
        QFETCH(int, index);
        const Type &type = types().at(index);
        QCOMPARE(methodsOf(*type.meta, QMetaMethod::Signal), type.signatures);
    }

    void slotsAreExactlyThose_data() { addTypeRows(); }
    void slotsAreExactlyThose()
    {
        QFETCH(int, index);
        const Type &type = types().at(index);
        QStringList found = methodsOf(*type.meta, QMetaMethod::Slot);
        QStringList expected = type.slotSignatures;
        found.sort();
        expected.sort();
        QCOMPARE(found, expected);
        QCOMPARE(methodsOf(*type.meta, QMetaMethod::Method), QStringList());
        for (int i = type.meta->methodOffset(); i < type.meta->methodCount(); ++i) {
            const QMetaMethod method = type.meta->method(i);
            const bool isPrivate = method.name() == "onActivated";
            QCOMPARE(method.access() == QMetaMethod::Public, !isPrivate);
        }
    }

    void slotsAnswerWithTheirTypes()
    {
        const auto answer = [](const QMetaObject &meta, const char *signature) {
            return QByteArray(meta.method(meta.indexOfMethod(signature)).typeName());
        };
        QCOMPARE(answer(FramelessWindow::staticMetaObject, "availableScreenGeometry()"), QByteArray("QRect"));
        QCOMPARE(answer(FramelessWindow::staticMetaObject, "windowScreen()"), QByteArray("QScreen*"));
        QCOMPARE(answer(ScreenCapture::staticMetaObject, "desktopWindowList()"), QByteArray("QVariantList"));
        QCOMPARE(answer(ScreenCapture::staticMetaObject, "imageToBase64(QImage)"), QByteArray("QString"));
        const QMetaObject &hotKey = QxtGlobalShortcut::staticMetaObject;
        QCOMPARE(answer(hotKey, "setShortcut(QString)"), QByteArray("bool"));
        QCOMPARE(answer(hotKey, "shortcutString()"), QByteArray("QString"));
        QCOMPARE(answer(hotKey, "nativeShortcutString()"), QByteArray("QString"));
        QCOMPARE(answer(hotKey, "shortcutString(int)"), QByteArray("QString"));
    }

    void signalParametersHaveTheNamesThatHandlersUse_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<QList<QByteArray>>("parameters");
        using Names = QList<QByteArray>;
        QTest::newRow("mouseMoved") << 0 << QByteArray("mouseMoved(QPoint,int)") << Names{"point", "offset"};
        QTest::newRow("mouseReleased") << 0 << QByteArray("mouseReleased(QPoint)") << Names{"point"};
        QTest::newRow("keyPressed") << 0 << QByteArray("keyPressed(int,int,QString,QEvent*)")
                                    << Names{"key", "modifiers", "text", "event"};
        QTest::newRow("wheelEnd") << 0 << QByteArray("wheelEnd(bool)") << Names{"trueEnded"};
        QTest::newRow("window wheel") << 0 << QByteArray("wheel(int,int,int,int)")
                                      << Names{"pixelDeltaX", "pixelDeltaY", "angleDeltaX", "angleDeltaY"};
        QTest::newRow("regionChanged") << 2 << QByteArray("regionChanged(QRect)") << Names{"region"};
        QTest::newRow("reply") << 3 << QByteArray("reply(QVariantMap)") << Names{"info"};
        QTest::newRow("location") << 3 << QByteArray("location(QVariantMap)") << Names{"info"};
        QTest::newRow("wheel") << 6 << QByteArray("wheel(int,int)") << Names{"x", "y"};
    }
    void signalParametersHaveTheNamesThatHandlersUse()
    {
        QFETCH(int, index);
        QFETCH(QByteArray, signature);
        QFETCH(QList<QByteArray>, parameters);
        const QMetaObject &meta = *types().at(index).meta;
        QCOMPARE(meta.method(meta.indexOfSignal(signature)).parameterNames(), parameters);
    }

    void settersThatOnlyStoreCompareAndNotify_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QVariant>("other");
        const auto row = [](int index, const char *name, const QVariant &other) {
            QTest::addRow("%s.%s", types().at(index).name, name) << index << QByteArray(name) << other;
        };
        row(0, "dragArea", QRect(1, 2, 3, 4));
        row(0, "areoAreaes", QRect(1, 2, 3, 4));
        row(0, "minimizedOnHide", true);
        row(0, "borderWidth", 7);
        row(0, "shadowWidth", 3);
        row(0, "enableResize", false);
        row(0, "enableWindowShadow", true);
        row(0, "displayMinimizeButton", false);
        row(0, "displayMaximizeButton", false);
        row(0, "displayCloseButton", false);
        row(0, "delayCenterWindow", true);
        row(0, "enabledNCArea", false);
        row(0, "background", QColor(Qt::red));
        row(1, "delay", 7);
        row(1, "timeout", 7);
        row(1, "edge", QStringLiteral("nowhere"));
        row(1, "deleteOnClose", true);
        row(1, "cursorPos", QPoint(-3, 4));
        row(1, "autoMove", false);
        row(1, "initAndShow", false);
        row(2, "region", QRect(1, 2, 3, 4));
        row(3, "toolTip", QStringLiteral("tip"));
        row(3, "themeColor", QColor(Qt::red));
        row(3, "state", int(SystemTrayIcon::Offline));
        row(6, "orientation", int(Qt::Horizontal));
    }
    void settersThatOnlyStoreCompareAndNotify()
    {
        QFETCH(int, index);
        QFETCH(QByteArray, name);
        QFETCH(QVariant, other);
        const Type &type = types().at(index);
        const QScopedPointer<QObject> object(type.create());
        const QMetaProperty property = type.meta->property(type.meta->indexOfProperty(name));
        const QVariant initial = property.read(object.data());
        QSignalSpy spy(object.data(), "2" + property.notifySignal().methodSignature());
        QVERIFY(property.write(object.data(), initial));
        QCOMPARE(spy.count(), 0);
        QVERIFY(property.write(object.data(), other));
        QCOMPARE(spy.count(), 1);
        const auto comparable = [&property](const QVariant &value) {
            return property.isEnumType() ? QVariant(*static_cast<const int *>(value.constData())) : value;
        };
        QCOMPARE(comparable(spy.at(0).at(0)), comparable(other));
        QCOMPARE(comparable(property.read(object.data())), comparable(other));
        QVERIFY(property.write(object.data(), other));
        QCOMPARE(spy.count(), 1);
        QVERIFY(property.write(object.data(), initial));
        QCOMPARE(spy.count(), 2);
    }

    void statesOfTheTrayAreNumbers()
    {
        QCOMPARE(int(SystemTrayIcon::Offline), 0);
        QCOMPARE(int(SystemTrayIcon::Online), 1);
        QCOMPARE(QMetaEnum::fromType<SystemTrayIcon::State>().keyCount(), 2);
    }

    void hotKeyInterfaceTellsItsVersion() { QCOMPARE(qxtVersion(), "0.7.0"); }
};

QTEST_MAIN(TestWindowInterface)
#include "tst_windowinterface.moc"
