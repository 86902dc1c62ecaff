// The surface of the input box, as clients bind to it.

#include "box.h"

#include "messageguard.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QQuickTextDocument>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QValidator>
#include <QtTest>

#include <algorithm>

namespace {

struct PropertyRow
{
    const char *name;
    const char *type;
    QVariant initial;
    QVariant other; ///< invalid for one that can't be written
};

QVector<PropertyRow> propertyTable()
{
    const QString text = QStringLiteral("text");
    return {
        {"content", "QString", QString(), text},
        {"untrimmedContent", "QString", QString(), {}},
        {"selectedContent", "QString", QString(), text},
        {"maxCharacterCount", "int", -1, 7},
        {"maxContinuousReturn", "int", -1, 7},
        {"aiteEnabled", "bool", false, true},
        {"hashTagEnabled", "bool", false, true},
        {"dropEnabled", "bool", false, true},
        {"enableTab", "bool", false, true},
        {"upDownKeyEnabled", "bool", false, true},
        {"spellcheckEnabled", "bool", false, true},
        {"aiteFrom", "int", -1, 7},
        {"aiteLen", "int", 0, 7},
        {"hashTagFrom", "int", -1, 7},
        {"hashTagLen", "int", 0, 7},
        {"aiteColor", "QColor", QColor(70, 130, 180), QColor(Qt::red)},
        {"visualFrom", "int", 0, 7},
        {"visualTo", "int", 0, 7},
        {"visualX", "double", 0.0, 7.5},
        {"visualY", "double", 0.0, 7.5},
        {"visualWidth", "double", 0.0, 7.5},
        {"visualHeight", "double", 0.0, 7.5},
        {"needUpdateEmoji", "bool", false, true},
    };
}

const QMetaObject &area()
{
    return DrawableTextArea::staticMetaObject;
}

} // namespace

class TestAreaInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { guard = std::make_unique<MessageGuard>(); }
    void cleanup()
    {
        QCOMPARE(guard->unexpected(), QStringList());
        guard.reset();
    }

    void propertiesHaveTheirTypesDefaultsAndSignals_data()
    {
        QTest::addColumn<int>("row");
        const QVector<PropertyRow> table = propertyTable();
        for (int i = 0; i < table.size(); ++i)
            QTest::newRow(table.at(i).name) << i;
    }
    void propertiesHaveTheirTypesDefaultsAndSignals()
    {
        QFETCH(int, row);
        const PropertyRow expected = propertyTable().at(row);
        const QByteArray name = expected.name;
        const QMetaProperty property = area().property(area().indexOfProperty(name));
        QCOMPARE(QByteArray(property.typeName()), QByteArray(expected.type));
        QCOMPARE(property.notifySignal().methodSignature(), name + "Changed(" + expected.type + ")");
        QCOMPARE(property.isWritable(), expected.other.isValid());

        DrawableTextArea box;
        QCOMPARE(property.read(&box), expected.initial);
        if (!expected.other.isValid())
            return;
        const QByteArray setter = "set" + name.left(1).toUpper() + name.mid(1) + "(" + expected.type + ")";
        QVERIFY2(area().indexOfSlot(setter) != -1, setter);

        QSignalSpy spy(&box, property.notifySignal());
        QVERIFY(property.write(&box, expected.initial));
        QCOMPARE(spy.count(), 0);
        QVERIFY(property.write(&box, expected.other));
        QVERIFY(spy.count() >= 1);
        QCOMPARE(spy.last().first(), expected.other);
        QCOMPARE(property.read(&box), expected.other);
        const int before = spy.count();
        QVERIFY(property.write(&box, expected.other));
        QCOMPARE(spy.count(), before);
    }

    void theTableIsComplete()
    {
        QSet<QByteArray> expected{"validator", "aiteNameFunction", "aiteData", "userBlocks"};
        for (const PropertyRow &row : propertyTable())
            expected.insert(row.name);
        QSet<QByteArray> actual;
        for (int i = area().propertyOffset(); i < area().propertyCount(); ++i)
            actual.insert(area().property(i).name());
        QCOMPARE(actual, expected);
    }

    void signalsAndSlotsHaveTheirSignatures_data()
    {
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<int>("type");
        for (const char *signature :
             {"maxCharacterCountReached()", "invalidInput(QString)", "pastContent()",
              "dropFiles(QList<QUrl>)", "dragDetect()", "aiteDetected(QString,bool)",
              "hashTagDetected(QString,bool)", "customContextMenuRequested(QVariantList,bool)",
              "userBlocksChanged(QVariant)", "aiteDataChanged(QVariant)", "validatorChanged(QValidator*)",
              "aiteNameFunctionChanged(QJSValue)"})
            QTest::newRow(signature) << QByteArray(signature) << int(QMetaMethod::Signal);
        for (const char *signature : {"insertAite(QString,QVariantMap)",
                                      "insertText(QString,QVariantMap,QTextCursor*)",
                                      "insertText(QString,QVariantMap)",
                                      "insertText(QString)",
                                      "insertEmojiByUnicode(QString)",
                                      "realCursorPos()",
                                      "aiteList()",
                                      "untrimmedAiteData()",
                                      "setAiteData(QVariant)",
                                      "setUserBlocks(QVariant)",
                                      "latestEmojis()",
                                      "clearToLineHead()",
                                      "clearToWordHead()",
                                      "copy()",
                                      "paste()",
                                      "detectAite()",
                                      "detectHashTag()",
                                      "onContentChanging(int,int,int)",
                                      "onSelectonChanged()",
                                      "onContentChanged()",
                                      "setValidator(QValidator*)",
                                      "setAiteNameFunction(QJSValue)"})
            QTest::newRow(signature) << QByteArray(signature) << int(QMetaMethod::Slot);
    }
    void signalsAndSlotsHaveTheirSignatures()
    {
        QFETCH(QByteArray, signature);
        QFETCH(int, type);
        const int index = area().indexOfMethod(QMetaObject::normalizedSignature(signature));
        QVERIFY(index >= area().methodOffset());
        QCOMPARE(int(area().method(index).methodType()), type);
    }

    void signalsNameTheirParameters()
    {
        const QMetaMethod aite = area().method(area().indexOfSignal("aiteDetected(QString,bool)"));
        QCOMPARE(aite.parameterNames(), (QList<QByteArray>{"aiteString", "detected"}));
        const QMetaMethod tag = area().method(area().indexOfSignal("hashTagDetected(QString,bool)"));
        QCOMPARE(tag.parameterNames(), (QList<QByteArray>{"tagString", "detected"}));
        const QMetaMethod menu =
            area().method(area().indexOfSignal("customContextMenuRequested(QVariantList,bool)"));
        QCOMPARE(menu.parameterNames(), (QList<QByteArray>{"words", "isErrorWord"}));
        const QMetaMethod files = area().method(area().indexOfSignal("dropFiles(QList<QUrl>)"));
        QCOMPARE(files.parameterNames(), (QList<QByteArray>{"urls"}));
    }

    void aNewBoxIsReadyToType()
    {
        DrawableTextArea box;
        QVERIFY(box.selectByMouse());
        QVERIFY(box.acceptHoverEvents());
        const QTextOption option = box.textDocument()->textDocument()->defaultTextOption();
        QVERIFY(option.flags() & QTextOption::IncludeTrailingSpaces);
        QCOMPARE(option.tabStopDistance(), 4 * QFontMetricsF(box.font()).horizontalAdvance(QLatin1Char(' ')));
        QVERIFY(box.aiteNameFunction().isUndefined());
        QCOMPARE(box.validator(), nullptr);
        QCOMPARE(box.userBlocks().userType(), qMetaTypeId<UserTextBlocks>());
        QCOMPARE(box.aiteData().userType(), qMetaTypeId<UserTextBlocks>());
    }

    void listsAreReplacedAndNotified()
    {
        Box box;
        const UserTextBlocks list{fixture::aiteBlock(0, 2, 5)};
        QSignalSpy userBlocks(&box, &DrawableTextArea::userBlocksChanged);
        box.setUserBlocks(QVariant::fromValue(list));
        box.setUserBlocks(QVariant::fromValue(list));
        QCOMPARE(userBlocks.count(), 1);
        QCOMPARE(box.userBlocks().value<UserTextBlocks>(), list);

        QSignalSpy aiteData(&box, &DrawableTextArea::aiteDataChanged);
        box.setAiteData(QVariant::fromValue(UserTextBlocks()));
        QCOMPARE(aiteData.count(), 0);
        box.setAiteData(QVariant::fromValue(list));
        QCOMPARE(aiteData.count(), 1);
    }

    void aDestroyedValidatorCountsAsNone()
    {
        Box box;
        auto *validator = new QIntValidator;
        box.setValidator(validator);
        box.insertText(QStringLiteral("a"));
        QCOMPARE(box.untrimmedContent(), QString());
        delete validator;
        QCOMPARE(box.validator(), nullptr);
        box.insertText(QStringLiteral("a"));
        QCOMPARE(box.untrimmedContent(), QStringLiteral("a"));
    }

    // QML sets the properties of an item in an order of its own before the item is complete.
    void propertiesMayBeSetInAnyOrderBeforeCompletion()
    {
        class Incomplete : public DrawableTextArea
        {
        public:
            Incomplete() { classBegin(); }
            using DrawableTextArea::componentComplete;
        };
        QRandomGenerator random(11);
        QJSEngine engine;
        const QVariant names =
            QVariant::fromValue(engine.evaluate(QStringLiteral("(function(json, text) { return text; })")));
        QIntValidator validator;
        for (int round = 0; round < 200; ++round) {
            Incomplete box;
            QVector<QPair<QByteArray, QVariant>> writes;
            for (const PropertyRow &row : propertyTable()) {
                if (row.other.isValid() && QByteArray(row.name) != "selectedContent")
                    writes.append({row.name, row.other});
            }
            writes.append({"userBlocks", QVariant::fromValue(UserTextBlocks{fixture::aiteBlock(0, 2, 5)})});
            writes.append({"wrapMode", int(QQuickTextEdit::Wrap)});
            writes.append({"width", 100});
            writes.append({"height", 50});
            writes.append({"readOnly", true});
            // Names are asked for as soon as there are a content and its mentions.
            box.setProperty("aiteNameFunction", names);
            std::shuffle(writes.begin(), writes.end(), random);
            for (const auto &write : qAsConst(writes))
                QVERIFY2(box.setProperty(write.first, write.second), write.first);
            box.setValidator(&validator); // refuses letters from now on
            box.componentComplete();
            box.insertText(QStringLiteral("x"));
            // While spelling is checked, the content is read later, or where its mentions are asked for.
            QVERIFY(box.aiteData().isValid());
            for (const auto &write : qAsConst(writes)) {
                // Detection told otherwise, or the content used it.
                if (write.first.contains("From") || write.first.contains("Len") ||
                    write.first == "userBlocks")
                    continue;
                QCOMPARE(box.property(write.first), write.second);
            }
            QCOMPARE(box.untrimmedContent(), QStringLiteral("text"));
            QCOMPARE(box.text(), QStringLiteral("text"));
            // Used by the content, where both it and mentions were wanted before; else it waits.
            const int waiting = box.userBlocks().value<UserTextBlocks>().size();
            QCOMPARE(box.aiteList().size() + waiting, 1);
        }
    }

    void visualSizesOfNoSenseDoNoHarm()
    {
        Box box;
        for (const double value : {qQNaN(), qInf(), -qInf(), 1e300, -1.0}) {
            box.setVisualX(value);
            box.setVisualY(value);
            box.setVisualWidth(value);
            box.setVisualHeight(value);
            box.insertText(fixture::grin);
        }
        QCOMPARE(box.visualWidth(), -1.0);
    }

private:
    std::unique_ptr<MessageGuard> guard;
};

QTEST_MAIN(TestAreaInterface)
#include "tst_areainterface.moc"
