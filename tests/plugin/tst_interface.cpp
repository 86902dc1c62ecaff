// Every member of every type and document, as the built module offers it, against the tables in interface/.

#include "interfacetable.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

#include <private/qhashedstring_p.h>
#include <private/qqmlmetatype_p.h>

#include <memory>

namespace {

const QString moduleUri = QStringLiteral("com.ostrel.im.component");

QString tablesOfDocuments()
{
    return QStringLiteral("documents/");
}

QStringList tableNames(const QString &folder = QString())
{
    QStringList names;
    const auto files = QDir(QStringLiteral(TEST_SOURCE_DIR "/interface/") + folder)
                           .entryInfoList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name);
    for (const QFileInfo &file : files)
        names.append(file.baseName());
#ifndef COMPONENT_WEBSOCKET
    names.removeAll(QStringLiteral("WebSocket"));
#endif
    return names;
}

QString tableText(const QString &name)
{
    QFile file(QStringLiteral(TEST_SOURCE_DIR "/interface/%1.txt").arg(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/// The names that the import offers, sorted, and whether each is a singleton's.
QMap<QString, bool> singletonByType()
{
    QMap<QString, bool> types;
    for (const QQmlType &type : QQmlMetaType::qmlAllTypes()) {
        if (QString(type.module()) == moduleUri && !type.elementName().isEmpty())
            types.insert(type.elementName(), type.isSingleton());
    }
    return types;
}

QStringList without(QStringList lines, const QStringList &others)
{
    for (const QString &line : others)
        lines.removeOne(line);
    lines.sort();
    return lines;
}

} // namespace

class TestInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QQmlComponent component(&engine);
        component.setData("import QtQml 2.15\nimport com.ostrel.im.component 1.0\nQtObject {}", QUrl());
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
    }

    void everyTypeHasItsTableAndEveryTableItsType()
    {
        QCOMPARE(QStringList(singletonByType().keys()), tableNames());
#ifdef COMPONENT_WEBSOCKET
        QCOMPARE(singletonByType().size(), 22);
#endif
    }

    void membersAreExactlyThoseOfTheTable_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : tableNames())
            QTest::newRow(qPrintable(name)) << name;
    }
    void membersAreExactlyThoseOfTheTable()
    {
        QFETCH(QString, name);
        const bool isSingleton = singletonByType().value(name);
        const std::unique_ptr<QObject> holder = create(name, isSingleton);
        QVERIFY(holder);
        const auto *object = isSingleton ? holder->property("it").value<QObject *>() : holder.get();
        QVERIFY(object);
        compare(*object, name);
    }

    void everyDocumentHasItsTable()
    {
        const QStringList documents = QDir(QStringLiteral(":/qml")).entryList(QDir::Files, QDir::Name);
        QCOMPARE(QStringList(documents).replaceInStrings(QStringLiteral(".qml"), QString()),
                 tableNames(tablesOfDocuments()));
        QCOMPARE(documents.size(), 6);
    }

    void membersOfADocumentAreExactlyThoseOfItsTable_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : tableNames(tablesOfDocuments()))
            QTest::newRow(qPrintable(name)) << name;
    }
    void membersOfADocumentAreExactlyThoseOfItsTable()
    {
        QFETCH(QString, name);
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qml/%1.qml").arg(name)));
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        compare(*object, tablesOfDocuments() + name);
    }

private:
    std::unique_ptr<QObject> create(const QString &name, bool isSingleton)
    {
        const QString element =
            isSingleton ? QStringLiteral("QtObject { property QtObject it: %1 }") : QStringLiteral("%1 {}");
        QQmlComponent component(&engine);
        component.setData(
            "import QtQml 2.15\nimport com.ostrel.im.component 1.0\n" + element.arg(name).toUtf8(), QUrl());
        return std::unique_ptr<QObject>(component.create());
    }

    static void compare(const QObject &object, const QString &table)
    {
        QStringList unreadable;
        const QStringList expected = interfacetable::expected(tableText(table), &unreadable);
        QCOMPARE(unreadable, QStringList());
        QVERIFY(!expected.isEmpty());
        const QStringList declared = interfacetable::declared(object, expected);
        const QStringList tooMuch = without(declared, expected);
        const QStringList missing = without(expected, declared);
        const QString difference =
            QLatin1String("only in the module:\n  ") + tooMuch.join(QLatin1String("\n  ")) +
            QLatin1String("\nonly in the table:\n  ") + missing.join(QLatin1String("\n  "));
        QVERIFY2(tooMuch.isEmpty() && missing.isEmpty(), qPrintable(difference));
    }

    QQmlEngine engine;
};

QTEST_MAIN(TestInterface)
#include "tst_interface.moc"
