// A program that only loads the built plugin finds the module's resources and its compiled documents.

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPluginLoader>
#include <QUrl>
#include <QtTest>

#include <private/qqmlmetatype_p.h>

namespace {

const QStringList documents{QStringLiteral("ButtonClickEffect.qml"), QStringLiteral("MacWindowButtons.qml"),
                            QStringLiteral("ScrollArea.qml"),        QStringLiteral("ToolTip.qml"),
                            QStringLiteral("TreeView.qml"),          QStringLiteral("WindowButtons.qml")};

/// The compiled unit that the engine would load for `url`; null for none.
const QV4::CompiledData::Unit *unitOf(const QString &url)
{
    QQmlMetaType::CachedUnitLookupError error;
    return QQmlMetaType::findCachedCompilationUnit(QUrl(url), &error);
}

} // namespace

class TestPluginResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void resourcesComeWithThePlugin()
    {
        const QStringList paths{QStringLiteral(":/qml/image/iconfont.ttf"),
                                QStringLiteral(":/qml/image/transparent.png")};
        for (const QString &path : paths)
            QVERIFY2(!QFile::exists(path), qPrintable(path));
        QPluginLoader loader(QStringLiteral(PLUGIN_FILE));
        QVERIFY2(loader.load(), qPrintable(loader.errorString()));
        for (const QString &path : paths)
            QVERIFY2(QFile::exists(path), qPrintable(path));
    }

    void documentsAreThereByNameAlone()
    {
        QCOMPARE(QDir(QStringLiteral(":/qml")).entryList(QDir::Files, QDir::Name), documents);
        for (const QString &name : documents)
            QCOMPARE(QFileInfo(QStringLiteral(":/qml/") + name).size(), 0);
    }

    void everyDocumentHasItsCompiledUnit()
    {
        QSet<const void *> units;
        for (const QString &name : documents) {
            const auto *unit = unitOf(QStringLiteral("qrc:/qml/") + name);
            QVERIFY2(unit, qPrintable(name));
            units.insert(unit);
        }
        QCOMPARE(units.size(), documents.size());
    }

    void pathOfADocumentIsCleaned_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("double slash") << QStringLiteral("qrc:/qml//ToolTip.qml");
        QTest::newRow("one folder up") << QStringLiteral("qrc:/qml/image/../ToolTip.qml");
        QTest::newRow("encoded letter") << QStringLiteral("qrc:/qml/Tool%54ip.qml");
        QTest::newRow("without the first slash") << QStringLiteral("qrc:qml/ToolTip.qml");
    }
    void pathOfADocumentIsCleaned()
    {
        QFETCH(QString, url);
        const auto *unit = unitOf(QStringLiteral("qrc:/qml/ToolTip.qml"));
        QVERIFY(unit);
        QCOMPARE(unitOf(url), unit);
    }

    void otherAddressesHaveNoUnit_data()
    {
        QTest::addColumn<QString>("url");
        QTest::newRow("file of the same name") << QStringLiteral("file:///qml/ToolTip.qml");
        QTest::newRow("no scheme") << QStringLiteral("/qml/ToolTip.qml");
        QTest::newRow("no path") << QStringLiteral("qrc:");
        QTest::newRow("no such document") << QStringLiteral("qrc:/qml/Tooltip.qml");
    }
    void otherAddressesHaveNoUnit()
    {
        QFETCH(QString, url);
        QVERIFY(!unitOf(url));
    }
};

QTEST_MAIN(TestPluginResources)
#include "tst_pluginresources.moc"
