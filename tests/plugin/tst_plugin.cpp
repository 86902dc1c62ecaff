// The plugin as the QML engine meets it: its metadata and what importing it offers.

#include <QJsonObject>
#include <QPluginLoader>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

class TestPlugin : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void metadataNamesInterfaceAndClassAndNothingElse()
    {
        const QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
        const QJsonObject metaData = loader.metaData();
        QCOMPARE(metaData.value(QStringLiteral("IID")).toString(),
                 QStringLiteral("org.qt-project.Qt.QQmlExtensionInterface/1.0"));
        QCOMPARE(metaData.value(QStringLiteral("className")).toString(), QStringLiteral("ComponentPlugin"));
        QVERIFY(metaData.value(QStringLiteral("MetaData")).toObject().isEmpty());
    }

    void versionOneCanBeImported()
    {
        QQmlEngine engine;
        QQmlComponent document(&engine);
        document.setData("import QtQml 2.15\nimport com.ostrel.im.component 1.0\nQtObject {}", QUrl());
        const QScopedPointer<QObject> object(document.create());
        QVERIFY2(object, qPrintable(document.errorString()));
    }

    void otherVersionsCanNotBeImported()
    {
        QQmlEngine engine;
        QQmlComponent document(&engine);
        document.setData("import QtQml 2.15\nimport com.ostrel.im.component 2.0\nQtObject {}", QUrl());
        const QScopedPointer<QObject> object(document.create());
        QVERIFY(!object);
    }
};

QTEST_MAIN(TestPlugin)
#include "tst_plugin.moc"
