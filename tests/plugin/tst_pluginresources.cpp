// A program that only loads the built plugin finds the module's resources.

#include <QFile>
#include <QPluginLoader>
#include <QtTest>

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
};

QTEST_MAIN(TestPluginResources)
#include "tst_pluginresources.moc"
