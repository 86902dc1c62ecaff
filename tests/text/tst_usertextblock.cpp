// Lists of marked stretches on their way from and to scripts.

#include "text/usertextblock.h"

#include <QJSValue>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QtTest>

/// Takes and gives blocks as the text item does.
class Holder : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QVariant blocks READ blocks WRITE setBlocks NOTIFY blocksChanged)

public:
    [[nodiscard]] QVariant blocks() const { return QVariant::fromValue(held); }
    void setBlocks(const QVariant &blocks)
    {
        held = userTextBlocksFrom(blocks);
        Q_EMIT blocksChanged();
    }

    UserTextBlocks held;

Q_SIGNALS:
    void blocksChanged();
};

namespace {

const UserTextBlocks sample = {{2, 3, 3, QVariant(QStringLiteral("17"))}, {9, 1, 1, QVariant()}};

} // namespace

class TestUserTextBlock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { registerUserTextBlockTypes(); }

    void typesAreRegisteredByTheirNames()
    {
        QCOMPARE(QMetaType::type("UserTextBlock"), qMetaTypeId<UserTextBlock>());
        QCOMPARE(QMetaType::type("UserTextBlocks"), qMetaTypeId<UserTextBlocks>());
    }

    void blocksAreEqualFieldByField()
    {
        const UserTextBlock block = sample.first();
        QCOMPARE(block, block);
        QVERIFY(!(block == UserTextBlock{1, 3, 3, block.data}));
        QVERIFY(!(block == UserTextBlock{2, 4, 3, block.data}));
        QVERIFY(!(block == UserTextBlock{2, 3, 1, block.data}));
        QVERIFY(!(block == UserTextBlock{2, 3, 3, QVariant(QStringLiteral("18"))}));
        // Variants compare by value across types.
        QVERIFY((block == UserTextBlock{2, 3, 3, QVariant(17)}));
    }

    void listsOfMapsBecomeBlocksAndGoBack()
    {
        const QVariantList list = {
            QVariantMap{{QStringLiteral("start"), 2},
                        {QStringLiteral("length"), 3.0},
                        {QStringLiteral("type"), QStringLiteral("3")},
                        {QStringLiteral("data"), QStringLiteral("17")}},
            QVariantMap{
                {QStringLiteral("start"), 9}, {QStringLiteral("length"), 1}, {QStringLiteral("type"), 1}},
        };
        const UserTextBlocks blocks = userTextBlocksFrom(list);
        QCOMPARE(blocks, sample);

        QVariant back = QVariant::fromValue(blocks);
        QVERIFY(back.convert(QMetaType::QVariantList));
        QCOMPARE(userTextBlocksFrom(back), sample);
        QCOMPARE(back.toList().first().toMap().value(QStringLiteral("start")), QVariant(2));
    }

    void blocksComeBackShared()
    {
        const UserTextBlocks blocks = userTextBlocksFrom(QVariant::fromValue(sample));
        QVERIFY(blocks.isSharedWith(sample));
    }

    void whatHoldsNoBlocksIsAnEmptyList_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("invalid") << QVariant();
        QTest::newRow("number") << QVariant(7);
        QTest::newRow("text") << QVariant(QStringLiteral("[{}]"));
        QTest::newRow("map") << QVariant(QVariantMap{{QStringLiteral("start"), 1}});
        QTest::newRow("empty list") << QVariant(QVariantList());
        QTest::newRow("list of numbers") << QVariant(QVariantList{1, 2, 3});
        QTest::newRow("list of texts") << QVariant(QStringList{QStringLiteral("a")});
        QTest::newRow("object") << QVariant::fromValue<QObject *>(this);
        QTest::newRow("undefined") << QVariant::fromValue(QJSValue());
        QTest::newRow("script number") << QVariant::fromValue(QJSValue(3));
    }

    void whatHoldsNoBlocksIsAnEmptyList()
    {
        QFETCH(QVariant, value);
        QVERIFY(userTextBlocksFrom(value).isEmpty());
    }

    void scriptArraysBecomeBlocks()
    {
        QQmlEngine engine;
        const QScopedPointer<QObject> object(create(engine, R"(
            import QtQuick 2.0
            import Test 1.0
            Holder {
                blocks: [{ start: 2, length: 3, type: 3, data: "17" }, { start: 9, length: 1, type: 1 }]
            })"));
        const auto *holder = qobject_cast<Holder *>(object.data());
        QVERIFY(holder);
        QCOMPARE(holder->held, sample);
    }

    void scriptValuesBecomeBlocks()
    {
        QJSEngine engine;
        const QJSValue array = engine.evaluate(QStringLiteral(
            "[{ start: 2, length: 3, type: 3, data: '17' }, { start: 9, length: 1, type: 1 }]"));
        QCOMPARE(userTextBlocksFrom(QVariant::fromValue(array)), sample);
    }

    void scriptsHandBlocksOnUnchanged()
    {
        QQmlEngine engine;
        const QScopedPointer<QObject> object(create(engine, R"(
            import QtQuick 2.0
            import Test 1.0
            Item {
                property Holder from: Holder {}
                property Holder to: Holder { blocks: from.blocks }
                property var kept: from.blocks
                property Holder last: Holder { blocks: kept }
            })"));
        QVERIFY(object);
        auto *from = object->property("from").value<Holder *>();
        QVERIFY(from);
        from->setBlocks(QVariant::fromValue(sample));
        QCOMPARE(object->property("to").value<Holder *>()->held, sample);
        QCOMPARE(object->property("last").value<Holder *>()->held, sample);
    }

    void scriptsCanReadBlocks()
    {
        QQmlEngine engine;
        const QScopedPointer<QObject> object(create(engine, R"(
            import QtQuick 2.0
            import Test 1.0
            Item {
                property Holder from: Holder {}
                property int count: from.blocks.length
                property int start: count ? from.blocks[0].start : -1
                property var data: count ? from.blocks[0].data : ""
            })"));
        QVERIFY(object);
        object->property("from").value<Holder *>()->setBlocks(QVariant::fromValue(sample));
        QCOMPARE(object->property("count").toInt(), 2);
        QCOMPARE(object->property("start").toInt(), 2);
        QCOMPARE(object->property("data").toString(), QStringLiteral("17"));
    }

private:
    static QObject *create(QQmlEngine &engine, const char *document)
    {
        qmlRegisterType<Holder>("Test", 1, 0, "Holder");
        QQmlComponent component(&engine);
        component.setData(document, QUrl());
        QObject *object = component.create();
        if (!object)
            qWarning("%s", qPrintable(component.errorString()));
        return object;
    }
};

QTEST_GUILESS_MAIN(TestUserTextBlock)
#include "tst_usertextblock.moc"
