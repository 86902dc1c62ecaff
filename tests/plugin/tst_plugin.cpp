// The plugin as the QML engine meets it: its metadata, its exports and what importing it offers.

#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionInterface>
#include <QtTest>

#include <private/qhashedstring_p.h>
#include <private/qqmlmetatype_p.h>

#include <memory>

namespace {

enum class Kind { Creatable, Singleton, Revision };

struct Row
{
    const char *name; ///< the type's, or the class's where a revision of it is shown
    Kind kind;
    int revision;
};

/// All that the module registers, in its order.
constexpr Row rows[] = {
    {"QWindow", Kind::Revision, 10},
    {"FramelessWindow", Kind::Creatable, 0},
    {"PopupWindow", Kind::Creatable, 0},
    {"ScreenCapture", Kind::Creatable, 0},
#ifdef COMPONENT_WEBSOCKET
    {"WebSocket", Kind::Creatable, 0},
#endif
    {"EventLoop", Kind::Creatable, 0},
    {"SystemTrayIcon", Kind::Creatable, 0},
    {"SyntaxHighlighter", Kind::Creatable, 0},
    {"QxtGlobalShortcut", Kind::Creatable, 0},
    {"DrawableText", Kind::Creatable, 0},
    {"DrawableTextArea", Kind::Creatable, 0},
    {"DrawableImage", Kind::Creatable, 0},
    {"QQuickTextArea", Kind::Revision, 1},
    {"QQuickTextEdit", Kind::Revision, 7},
    {"QQuickWindow", Kind::Revision, 6},
    {"RoundedImage", Kind::Creatable, 0},
    {"RoundedRectItem", Kind::Creatable, 0},
    {"ImageRender", Kind::Creatable, 0},
    {"ImagePreviewer", Kind::Creatable, 0},
    {"CircleProgress", Kind::Creatable, 0},
    {"ImageColorTheme", Kind::Creatable, 0},
    {"ScrollController", Kind::Creatable, 0},
    {"Clipboard", Kind::Singleton, 0},
    {"ImUtil", Kind::Singleton, 0},
    {"EventLoopCreator", Kind::Singleton, 0},
    {"AutoStart", Kind::Singleton, 0},
};

const QString moduleUri = QStringLiteral("com.ostrel.im.component");

/// The types of the module under `uri`, in the order of their registration.
QList<QQmlType> typesOf(const QString &uri)
{
    QList<QQmlType> types;
    for (const QQmlType &type : QQmlMetaType::qmlAllTypes()) {
        if (QString(type.module()) == uri)
            types.append(type);
    }
    std::sort(types.begin(), types.end(),
              [](const QQmlType &a, const QQmlType &b) { return a.index() < b.index(); });
    return types;
}

std::unique_ptr<QObject> create(QQmlEngine &engine, const QByteArray &document, QString *errors = nullptr)
{
    QQmlComponent component(&engine);
    component.setData(document, QUrl());
    if (errors)
        *errors = component.errorString();
    return std::unique_ptr<QObject>(component.isReady() ? component.create() : nullptr);
}

QQmlExtensionInterface *extension(QPluginLoader &loader)
{
    return qobject_cast<QQmlExtensionInterface *>(loader.instance());
}

} // namespace

class TestPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QQmlEngine engine;
        QString errors;
        const auto object =
            create(engine, "import QtQml 2.15\nimport com.ostrel.im.component 1.0\nQtObject {}", &errors);
        QVERIFY2(object, qPrintable(errors));
    }

    void metadataNamesInterfaceAndClassAndNothingElse()
    {
        const QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
        const QJsonObject metaData = loader.metaData();
        QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
                 QStringLiteral("org.qt-project.Qt.QQmlExtensionInterface/1.0"));
        QCOMPARE(metaData.value(QStringLiteral("className")).toString(), QStringLiteral("ComponentPlugin"));
        QVERIFY(metaData.value(QStringLiteral("MetaData")).toObject().isEmpty());
        QStringList keys = metaData.keys();
        keys.removeAll(QStringLiteral("MetaData"));
        QCOMPARE(keys,
                 QStringList({QStringLiteral("IID"), QStringLiteral("archreq"), QStringLiteral("className"),
                              QStringLiteral("debug"), QStringLiteral("version")}));
    }

    void pluginObjectDeclaresNothingOfItsOwn()
    {
        QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
        const QObject *plugin = loader.instance();
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        const QMetaObject *meta = plugin->metaObject();
        QCOMPARE(meta->className(), "ComponentPlugin");
        QCOMPARE(meta->superClass()->className(), "QQmlExtensionPlugin");
        QCOMPARE(meta->propertyCount(), meta->propertyOffset());
        QCOMPARE(meta->methodCount(), meta->methodOffset());
    }

    void pluginObjectIsMadeOnceAndAgainWhenItIsGone()
    {
        QLibrary library(QStringLiteral(PLUGIN_FILE));
        const auto instance = reinterpret_cast<QObject *(*)()>(library.resolve("qt_plugin_instance"));
        QVERIFY(instance);
        QVERIFY(library.resolve("qt_plugin_query_metadata"));
        QPointer<QObject> first = instance();
        QVERIFY(first);
        QCOMPARE(instance(), first.data());
        delete first;
        QVERIFY(!first);
        QObject *second = instance();
        QVERIFY(second);
        QCOMPARE(second->metaObject()->className(), "ComponentPlugin");
    }

    void otherVersionsCanNotBeImported()
    {
        QQmlEngine engine;
        QVERIFY(!create(engine, "import QtQml 2.15\nimport com.ostrel.im.component 2.0\nQtObject {}"));
    }

    void registrationsAreThoseOfTheTableInItsOrder()
    {
        const QList<QQmlType> types = typesOf(moduleUri);
        for (int i = 0; i < qMin(types.size(), int(std::size(rows))); ++i) {
            const QQmlType &type = types.at(i);
            const Row &row = rows[i];
            const bool isRevision = type.elementName().isEmpty();
            const QString name =
                isRevision ? QString::fromLatin1(type.metaObject()->className()) : type.elementName();
            QCOMPARE(name, QString::fromLatin1(row.name));
            QCOMPARE(type.majorVersion(), 1);
            QCOMPARE(type.minorVersion(), 0);
            QCOMPARE(isRevision, row.kind == Kind::Revision);
            QCOMPARE(type.isSingleton(), row.kind == Kind::Singleton);
            if (row.kind == Kind::Creatable)
                QVERIFY2(type.isCreatable(), qPrintable(name));
            if (row.kind == Kind::Revision)
                QCOMPARE(type.metaObjectRevision(), row.revision);
        }
        QCOMPARE(types.size(), int(std::size(rows)));
    }

    void textAreaBringsItsAttachedProperties()
    {
        for (const QQmlType &type : typesOf(moduleUri)) {
            if (qstrcmp(type.metaObject()->className(), "QQuickTextArea") != 0)
                continue;
            const QMetaObject *attached = type.attachedPropertiesType(nullptr);
            QVERIFY(attached);
            QCOMPARE(attached->className(), "QQuickTextAreaAttached");
            return;
        }
        QFAIL("the text area is not registered");
    }

    // One member of each class that is just old enough or older, and one that is too new.
    void revisionsShowTheMembersOfQtsOwnClasses_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<bool>("known");
        const auto row = [](const char *document, bool known) {
            QTest::newRow(document) << QByteArray(document) << known;
        };
        row("DrawableTextArea { hoverEnabled: true }", true);
        row("DrawableTextArea { topInset: 1 }", false);
        row("DrawableTextArea { onPreeditTextChanged: {} }", true);
        row("DrawableTextArea { tabStopDistance: 20 }", false);
        row("FramelessWindow { onVisibilityChanged: {} }", true);
        row("FramelessWindow { onSceneGraphError: {} }", true);
        row("FramelessWindow { onBeforeRenderPassRecording: {} }", false);
    }
    void revisionsShowTheMembersOfQtsOwnClasses()
    {
        QFETCH(QByteArray, document);
        QFETCH(bool, known);
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import com.ostrel.im.component 1.0\n" + document, QUrl());
        QVERIFY2(component.isReady() == known, qPrintable(component.errorString()));
    }

    void classesOfTheLibraryThatAreNoTypesStayHidden_data()
    {
        QTest::addColumn<QByteArray>("name");
        for (const char *name :
             {"ToolTip", "ProxyPing", "SpellChecker", "UserTextBlock", "DrawableTextPrivate", "QWindow",
              "QQuickTextArea", "QQuickTextEdit", "QQuickWindow", "ComponentPlugin"})
            QTest::newRow(name) << QByteArray(name);
    }
    void classesOfTheLibraryThatAreNoTypesStayHidden()
    {
        QFETCH(QByteArray, name);
        QQmlEngine engine;
        QString errors;
        QVERIFY(!create(engine, "import com.ostrel.im.component 1.0\n" + name + " {}", &errors));
        QVERIFY2(errors.contains(QLatin1String(name + " is not a type")), qPrintable(errors));
    }

    void typesAreRegisteredUnderWhateverNameTheEngineGives()
    {
        QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
        QQmlExtensionInterface *plugin = extension(loader);
        QVERIFY2(plugin, qPrintable(loader.errorString()));
        plugin->registerTypes("com.example.elsewhere");
        const auto names = [](const QString &uri) {
            QStringList result;
            for (const QQmlType &type : typesOf(uri))
                result.append(type.elementName());
            return result;
        };
        QVERIFY(!names(moduleUri).isEmpty());
        QCOMPARE(names(QStringLiteral("com.example.elsewhere")), names(moduleUri));
        QQmlEngine engine;
        QString errors;
        QVERIFY2(create(engine, "import com.example.elsewhere 1.0\nDrawableText {}", &errors),
                 qPrintable(errors));
    }

    void creatableTypesAreMetatypesWithTheirLists()
    {
        for (const QQmlType &type : typesOf(moduleUri)) {
            if (!type.isCreatable() || type.elementName().isEmpty())
                continue;
            const QByteArray name = type.metaObject()->className();
            QVERIFY2(QMetaType::type(name + '*') != QMetaType::UnknownType, name);
            QVERIFY2(QMetaType::type("QQmlListProperty<" + name + '>') != QMetaType::UnknownType, name);
        }
    }

    void eachEngineHasItsOwnSingletons()
    {
        int singletons = 0;
        for (const QQmlType &type : typesOf(moduleUri)) {
            if (!type.isSingleton())
                continue;
            ++singletons;
            const QByteArray document = "import QtQml 2.15\nimport com.ostrel.im.component 1.0\n"
                                        "QtObject { property QtObject it: " +
                                        type.elementName().toLatin1() + " }";
            QQmlEngine first;
            QQmlEngine second;
            const auto one = create(first, document);
            const auto same = create(first, document);
            const auto other = create(second, document);
            QVERIFY2(one && same && other, document);
            const auto it = [](const std::unique_ptr<QObject> &holder) {
                return holder->property("it").value<QObject *>();
            };
            QVERIFY(it(one));
            QCOMPARE(it(same), it(one));
            QVERIFY(it(other));
            QVERIFY(it(other) != it(one));
        }
        QCOMPARE(singletons, 4);
    }
};

QTEST_MAIN(TestPlugin)
#include "tst_plugin.moc"
