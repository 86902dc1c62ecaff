// The property surface of DrawableText, apart from any layout.

#include "text/drawabletext.h"
#include "text/drawabletextprivate.h"
#include "text/liveitems.h"
#include "textengine.h"

#include <QFontMetricsF>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QReadWriteLock>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>
#include <limits>

using namespace textengine;

namespace {

enum class Setter { Store, Fuzzy, Refresh, FuzzyRefresh, Special };

struct Row
{
    const char *name;
    const char *type;
    QVariant initial;
    QVariant other; ///< a value that differs from the initial one
    Setter setter = Setter::Store;
    int mask = 0; ///< what the setter leaves in `dirtyFlags` while no layout can run
};

QVariant colour(const QColor &value)
{
    return value;
}

template <typename Value>
QVariant value(Value entry)
{
    return QVariant::fromValue(entry);
}

QVariant blocks(const UserTextBlocks &list)
{
    return QVariant::fromValue(list);
}

/// In the order in which the class declares them.
QVector<Row> propertyTable()
{
    const QColor red(Qt::red);
    QFont larger;
    larger.setPixelSize(31);
    return {
        {"text", "QString", QString(), QStringLiteral("abc"), Setter::Special, 0xefb},
        {"font", "QFont", QFont(), larger, Setter::Special, 0x18},
        {"color", "QColor", colour(Qt::black), red, Setter::Refresh, 0x18},
        {"linkColor", "QColor", colour(Qt::blue), red, Setter::Refresh, 0x8c},
        {"emailColor", "QColor", QColor(), red, Setter::Store, 0},
        {"phoneColor", "QColor", QColor(), red, Setter::Store, 0},
        {"sharpColor", "QColor", QColor(), red, Setter::Store, 0},
        {"aiteColor", "QColor", QColor(), red, Setter::Refresh, 0x8c},
        {"textBlockColor", "QColor", colour(Qt::blue), red, Setter::Refresh, 0x8c},
        {"bubbleColor", "QColor", colour(Qt::transparent), red, Setter::Refresh, 0x8c},
        {"highlightColor", "QColor", colour(Qt::transparent), red, Setter::Refresh, 0xeff},
        {"highlightBgColor", "QColor", colour(Qt::transparent), red, Setter::Refresh, 0x8c},
        {"selectionColor", "QColor", colour(Qt::blue), red, Setter::Refresh, 0},
        {"selectedTextColor", "QColor", colour(Qt::white), red, Setter::Store, 0},
        {"elide", "Qt::TextElideMode", value(Qt::ElideNone), value(Qt::ElideRight), Setter::Refresh, 0xefb},
        {"elideText", "QString", QString(QChar(0x2026)), QStringLiteral("more"), Setter::Special, 0xefb},
        {"elidedText", "QString", QString(), QStringLiteral("abc"), Setter::Store, 0},
        {"wrapMode", "WrapMode", value(DrawableText::WrapAtWordBoundaryOrAnywhere),
         value(DrawableText::NoWrap), Setter::Store, 0},
        {"alignment", "Qt::Alignment", value(Qt::Alignment(Qt::AlignLeft)),
         value(Qt::Alignment(Qt::AlignRight)), Setter::Refresh, 0xd9},
        {"maximumLineCount", "int", -1, 3, Setter::Refresh, 0xefb},
        {"lineCount", "int", 0, 3, Setter::Store, 0},
        {"reservedWidth", "int", 0, 3, Setter::Refresh, 0xefb},
        {"fixedWidth", "int", -1, 3, Setter::Store, 0},
        {"maxWidth", "double", -1.0, 100.0, Setter::Special, 0xefb},
        {"multilineMinWidth", "double", -1.0, 3.5, Setter::Fuzzy, 0},
        {"textIndent", "double", 0.0, 3.5, Setter::FuzzyRefresh, 0xefb},
        {"leading", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"tabWidth", "double", 30.0, 3.5, Setter::Fuzzy, 0},
        {"padding", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"leftPadding", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"topPadding", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"rightPadding", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"bottomPadding", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"textHeight", "double", 0.0, 3.5, Setter::Fuzzy, 0},
        {"selectionCornerRadius", "double", 2.0, 3.5, Setter::Fuzzy, 0},
        {"highlightText", "QString", QString(), QStringLiteral("abc"), Setter::Refresh, 0xefb},
        {"onlyHighlightFirstMatchedEnabled", "bool", false, true, Setter::Store, 0},
        {"userBlocks", "QVariant", blocks({}), blocks({block(0, 1, 1, 7)}), Setter::Special, 0xefb},
        {"userBlockBold", "bool", false, true, Setter::Refresh, 0x18},
        {"reserveSpace", "bool", false, true, Setter::Refresh, 0},
        {"willChangeLineMode", "bool", false, true, Setter::Store, 0},
        {"treatReturnAsSpace", "bool", false, true, Setter::Store, 0},
        {"emojiEnabled", "bool", true, false, Setter::Store, 0},
        {"linkEnabled", "bool", false, true, Setter::Store, 0},
        {"aiteEnabled", "bool", false, true, Setter::Store, 0},
        {"hashTagEnabled", "bool", false, true, Setter::Store, 0},
        {"mouseEnabled", "bool", false, true, Setter::Store, 0},
        {"selectByMouse", "bool", false, true, Setter::Store, 0},
        {"dragEnabled", "bool", false, true, Setter::Store, 0},
        {"doubleClickEnabled", "bool", true, false, Setter::Store, 0},
        {"selectionStart", "int", -1, 3, Setter::Store, 0},
        {"selectionEnd", "int", -1, 3, Setter::Store, 0},
        {"selectType", "int", 1, 8, Setter::Store, 0},
        {"selectedText", "QString", QString(), QStringLiteral("abc"), Setter::Store, 0},
        {"textCursorShape", "Qt::CursorShape", value(Qt::CursorShape(0)), value(Qt::IBeamCursor),
         Setter::Special, 0},
        {"previewSize", "QSizeF", QSizeF(0, 0), QSizeF(30, 40), Setter::Fuzzy, 0},
    };
}

QMetaProperty metaProperty(const char *name)
{
    const QMetaObject &meta = DrawableText::staticMetaObject;
    return meta.property(meta.indexOfProperty(name));
}

/// Equality of what two variants hold, also for types that QVariant itself can't compare.
bool isSame(const QVariant &a, const QVariant &b)
{
    if (a.userType() == qMetaTypeId<UserTextBlocks>() && b.userType() == a.userType())
        return a.value<UserTextBlocks>() == b.value<UserTextBlocks>();
    // Enumerations and sets of flags come as themselves or as numbers, depending on who asked for them first.
    const auto isNumber = [](const QVariant &value) {
        return value.userType() == QMetaType::Int ||
               (value.userType() >= QMetaType::User &&
                QMetaType::sizeOf(value.userType()) == int(sizeof(int)));
    };
    if (isNumber(a) && isNumber(b))
        return *static_cast<const int *>(a.constData()) == *static_cast<const int *>(b.constData());
    return a == b;
}

QString shown(const QVariant &value)
{
    QString text;
    QDebug(&text) << value;
    return text;
}

QStringList methods(QMetaMethod::MethodType type)
{
    const QMetaObject &meta = DrawableText::staticMetaObject;
    QStringList signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        if (meta.method(index).methodType() == type)
            signatures.append(QString::fromLatin1(meta.method(index).methodSignature()));
    }
    return signatures;
}

QString capitalised(const char *name)
{
    QString text = QString::fromLatin1(name);
    text[0] = text.at(0).toUpper();
    return text;
}

} // namespace

class TestProperties : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    /// Stands in for a handler of whatever property a test changes.
    void noteChange()
    {
        if (orderOfChanges)
            orderOfChanges->append(QStringLiteral("change"));
    }

private:
    static void addPropertyRows()
    {
        QTest::addColumn<int>("index");
        const QVector<Row> table = propertyTable();
        for (int index = 0; index < table.size(); ++index)
            QTest::newRow(table.at(index).name) << index;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const DrawableText first;
        QCOMPARE(first.state()->itemId, quint64(1));
        qRegisterMetaType<DrawableText::WrapMode>("WrapMode"); // for the spies
    }

    // ---- the meta-object

    void propertiesStandInTheirOrder()
    {
        const QMetaObject &meta = DrawableText::staticMetaObject;
        QStringList found;
        for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index)
            found.append(QString::fromLatin1(meta.property(index).name()));
        QStringList expected;
        for (const Row &row : propertyTable())
            expected.append(QString::fromLatin1(row.name));
        QCOMPARE(expected.size(), 56);
        QCOMPARE(found, expected);
    }

    void propertyHasItsTypeItsSlotAndItsSignal_data() { addPropertyRows(); }
    void propertyHasItsTypeItsSlotAndItsSignal()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        const QMetaProperty property = metaProperty(row.name);
        QCOMPARE(property.typeName(), row.type);
        QVERIFY(property.isReadable() && property.isWritable());

        const QMetaMethod signal = property.notifySignal();
        QCOMPARE(QString::fromLatin1(signal.methodSignature()),
                 QStringLiteral("%1Changed(%2)").arg(QLatin1String(row.name), QLatin1String(row.type)));
        QVERIFY(
            methods(QMetaMethod::Slot)
                .contains(QStringLiteral("set%1(%2)").arg(capitalised(row.name), QLatin1String(row.type))));
    }

    void propertyBeginsWithItsDefault_data() { addPropertyRows(); }
    void propertyBeginsWithItsDefault()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        const DrawableText item;
        const QVariant found = item.property(row.name);
        QVERIFY2(isSame(found, row.initial), qPrintable(shown(found)));
    }

    void signalsBesideTheNotificationsStandInTheirOrder()
    {
        QStringList found = methods(QMetaMethod::Signal);
        for (const Row &row : propertyTable())
            found.removeAll(
                QStringLiteral("%1Changed(%2)").arg(QLatin1String(row.name), QLatin1String(row.type)));
        QCOMPARE(
            found,
            QStringList({QStringLiteral("sharpClick(QString)"), QStringLiteral("aiteClick(QVariant)"),
                         QStringLiteral("ostrelIdClick(QVariant)"), QStringLiteral("linkActivated(QString)"),
                         QStringLiteral("linkHovered(QString)"), QStringLiteral("textBlockClick(QVariant)"),
                         QStringLiteral("dragStart()"), QStringLiteral("mouseRelease(bool)")}));
    }

    void signalParametersHaveTheNamesThatHandlersUse_data()
    {
        QTest::addColumn<QByteArray>("signature");
        QTest::addColumn<QByteArray>("parameter");
        QTest::newRow("sharpClick") << QByteArray("sharpClick(QString)") << QByteArray("sharpText");
        QTest::newRow("aiteClick") << QByteArray("aiteClick(QVariant)") << QByteArray("data");
        QTest::newRow("ostrelIdClick") << QByteArray("ostrelIdClick(QVariant)") << QByteArray("data");
        QTest::newRow("linkActivated") << QByteArray("linkActivated(QString)") << QByteArray("link");
        QTest::newRow("linkHovered") << QByteArray("linkHovered(QString)") << QByteArray("link");
        QTest::newRow("textBlockClick") << QByteArray("textBlockClick(QVariant)") << QByteArray("data");
        QTest::newRow("mouseRelease") << QByteArray("mouseRelease(bool)") << QByteArray("onUserBlock");
    }
    void signalParametersHaveTheNamesThatHandlersUse()
    {
        QFETCH(QByteArray, signature);
        QFETCH(QByteArray, parameter);
        const QMetaObject &meta = DrawableText::staticMetaObject;
        const int index = meta.indexOfSignal(signature);
        QVERIFY(index >= 0);
        QCOMPARE(meta.method(index).parameterNames(), QList<QByteArray>({parameter}));
    }

    void slotsBesideTheSettersAreExactlyThose()
    {
        QStringList found = methods(QMetaMethod::Slot);
        for (const Row &row : propertyTable())
            found.removeAll(QStringLiteral("set%1(%2)").arg(capitalised(row.name), QLatin1String(row.type)));
        found.sort();
        QStringList expected = {QStringLiteral("updateData(DrawableTextPrivate*)"),
                                QStringLiteral("threadUpdateTimeout()"),
                                QStringLiteral("addTextBlock(int,int,QVariant,int)"),
                                QStringLiteral("addTextBlock(int,int,QVariant)"),
                                QStringLiteral("plainText()"),
                                QStringLiteral("deselect()"),
                                QStringLiteral("selectAll()"),
                                QStringLiteral("copy()")};
        expected.sort();
        QCOMPARE(found, expected);
    }

    void invokablesAreExactlyThose()
    {
        QCOMPARE(methods(QMetaMethod::Method), QStringList({QStringLiteral("aiteClipboardData()"),
                                                            QStringLiteral("recalculateAllAiteInfos()")}));
        const QMetaObject &meta = DrawableText::staticMetaObject;
        QCOMPARE(meta.method(meta.indexOfMethod("aiteClipboardData()")).returnType(),
                 int(QMetaType::QString));
        QCOMPARE(meta.method(meta.indexOfMethod("recalculateAllAiteInfos()")).returnType(),
                 int(QMetaType::Void));
        QCOMPARE(meta.method(meta.indexOfMethod("plainText()")).returnType(), int(QMetaType::QString));
    }

    void wrapModesHaveTheValuesOfTextOption()
    {
        const QMetaObject &meta = DrawableText::staticMetaObject;
        const QMetaEnum modes = meta.enumerator(meta.indexOfEnumerator("WrapMode"));
        QCOMPARE(modes.keyCount(), 5);
        QCOMPARE(modes.keyToValue("NoWrap"), int(QTextOption::NoWrap));
        QCOMPARE(modes.keyToValue("WordWrap"), int(QTextOption::WordWrap));
        QCOMPARE(modes.keyToValue("ManualWrap"), int(QTextOption::ManualWrap));
        QCOMPARE(modes.keyToValue("WrapAnywhere"), int(QTextOption::WrapAnywhere));
        QCOMPARE(modes.keyToValue("WrapAtWordBoundaryOrAnywhere"),
                 int(QTextOption::WrapAtWordBoundaryOrAnywhere));
    }

    void listsOfBlocksAreMetatypesByTheirNames()
    {
        const DrawableText item;
        QVERIFY(QMetaType::type("UserTextBlock") != QMetaType::UnknownType);
        QCOMPARE(QMetaType::type("UserTextBlocks"), qMetaTypeId<UserTextBlocks>());
        QVERIFY(QMetaType::type("DrawableTextPrivate *") != QMetaType::UnknownType);
        QCOMPARE(item.userBlocks().userType(), qMetaTypeId<UserTextBlocks>());
    }

    // ---- setters, while nothing can be laid out

    void newValueIsStoredAndAnnouncedOnce_data() { addPropertyRows(); }
    void newValueIsStoredAndAnnouncedOnce()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        DrawableText item;
        parserStatus(item).classBegin();
        QSignalSpy changes(&item, metaProperty(row.name).notifySignal());
        QVERIFY(item.setProperty(row.name, row.other));
        QVERIFY2(isSame(item.property(row.name), row.other), qPrintable(shown(item.property(row.name))));
        QCOMPARE(changes.count(), 1);
        QVERIFY2(isSame(changes.at(0).at(0), row.other), qPrintable(shown(changes.at(0).at(0))));
    }

    void equalValueIsNoChange_data() { addPropertyRows(); }
    void equalValueIsNoChange()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        if (qstrcmp(row.name, "textCursorShape") == 0)
            QSKIP("notifies always; has a test of its own");
        DrawableText item;
        parserStatus(item).classBegin();
        item.setProperty(row.name, row.other);
        QSignalSpy changes(&item, metaProperty(row.name).notifySignal());
        item.setProperty(row.name, row.other);
        QCOMPARE(changes.count(), 0);
    }

    void equalDefaultMarksNothingDirty_data() { addPropertyRows(); }
    void equalDefaultMarksNothingDirty()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        if (qstrcmp(row.name, "maxWidth") == 0 || qstrcmp(row.name, "textCursorShape") == 0)
            QSKIP("-1 is stored as 0, and the shape notifies always; both have tests of their own");
        DrawableText item;
        QSignalSpy changes(&item, metaProperty(row.name).notifySignal());
        item.setProperty(row.name, row.initial);
        QCOMPARE(changes.count(), 0);
        QCOMPARE(item.state()->dirtyFlags, 0);
    }

    void setterMarksItsStepsDirty_data() { addPropertyRows(); }
    void setterMarksItsStepsDirty()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        DrawableText item;
        // `maxWidth` would start a layout by itself, which clears the flags: held back by the missing
        // completion.
        parserStatus(item).classBegin();
        QCOMPARE(item.state()->dirtyFlags, 0);
        item.setProperty(row.name, row.other);
        QCOMPARE(item.state()->dirtyFlags, row.mask);
    }

    void dirtyMarksAddUpUntilALayoutRuns()
    {
        DrawableText item;
        item.setColor(Qt::red);
        QCOMPARE(item.state()->dirtyFlags, 0x18);
        item.setLinkColor(Qt::red);
        QCOMPARE(item.state()->dirtyFlags, 0x9c);
        item.setMaximumLineCount(2);
        QCOMPARE(item.state()->dirtyFlags, 0xeff);
    }

    void onlyRefreshingSettersLayTheTextOutAnew_data() { addPropertyRows(); }
    void onlyRefreshingSettersLayTheTextOutAnew()
    {
        QFETCH(int, index);
        const Row row = propertyTable().at(index);
        if (qstrcmp(row.name, "textHeight") == 0 || qstrcmp(row.name, "lineCount") == 0)
            QSKIP("the layout's own signals tell nothing about these two");
        DrawableText item;
        item.setMaxWidth(60);
        item.setText(QStringLiteral("text"));
        QSignalSpy layouts(&item, &DrawableText::textHeightChanged);
        QStringList order;
        connect(&item, &DrawableText::lineCountChanged, this,
                [&order] { order.append(QStringLiteral("layout")); });
        const QMetaObject::Connection changes =
            connect(&item, metaProperty(row.name).notifySignal(), this,
                    metaObject()->method(metaObject()->indexOfSlot("noteChange()")));
        QVERIFY(changes);
        orderOfChanges = &order;
        item.setProperty(row.name, row.other);
        orderOfChanges = nullptr;

        const bool special = row.setter == Setter::Special && qstrcmp(row.name, "textCursorShape") != 0;
        const bool refreshes = special || row.setter == Setter::Refresh || row.setter == Setter::FuzzyRefresh;
        QCOMPARE(layouts.count(), refreshes ? 1 : 0);
        // The layout is done before the change is announced, so handlers see the new size.
        const QStringList expected = refreshes
                                         ? QStringList({QStringLiteral("layout"), QStringLiteral("change")})
                                         : QStringList({QStringLiteral("change")});
        QCOMPARE(order, expected);
    }

    void realValuesCompareFuzzily_data()
    {
        QTest::addColumn<QString>("name");
        for (const Row &row : propertyTable()) {
            if (row.setter == Setter::Fuzzy || row.setter == Setter::FuzzyRefresh)
                QTest::newRow(row.name) << QString::fromLatin1(row.name);
        }
    }
    void realValuesCompareFuzzily()
    {
        QFETCH(QString, name);
        const QByteArray property = name.toLatin1();
        DrawableText item;
        const auto stored = [&](double value) {
            return name == QLatin1String("previewSize") ? QVariant(QSizeF(value, value)) : QVariant(value);
        };
        item.setProperty(property, stored(1000.0));
        QSignalSpy changes(&item, metaProperty(property).notifySignal());
        item.setProperty(property, stored(1000.0 + 5e-10)); // |a - b| * 1e12 = 500 <= 1000
        QCOMPARE(changes.count(), 0);
        item.setProperty(property, stored(1000.0 + 2e-9)); // 2000 > 1000
        QCOMPARE(changes.count(), 1);

        // Near zero the rule holds for equal values only.
        item.setProperty(property, stored(0.0));
        QCOMPARE(changes.count(), 2);
        item.setProperty(property, stored(0.0));
        QCOMPARE(changes.count(), 2);
        item.setProperty(property, stored(1e-300));
        QCOMPARE(changes.count(), 3);
    }

    void previewSizeComparesBothSides()
    {
        DrawableText item;
        QSignalSpy changes(&item, &DrawableText::previewSizeChanged);
        item.setPreviewSize({10, 20});
        item.setPreviewSize({10, 21});
        item.setPreviewSize({11, 21});
        QCOMPARE(changes.count(), 3);
        item.setPreviewSize({11 + 1e-12, 21 - 1e-12});
        QCOMPARE(changes.count(), 3);
    }

    // ---- maxWidth

    void withoutAMaximalWidthNothingIsLaidOut()
    {
        DrawableText item;
        QSignalSpy layouts(&item, &DrawableText::lineCountChanged);
        for (const Row &row : propertyTable()) {
            if (qstrcmp(row.name, "maxWidth") != 0 && qstrcmp(row.name, "lineCount") != 0)
                item.setProperty(row.name, row.other);
        }
        QCOMPARE(layouts.count(), 0);
        QCOMPARE(item.lineCount(), 0);
        QCOMPARE(item.width(), 0.0);
        QCOMPARE(item.height(), 0.0);
        QCOMPARE(item.state()->layouts.size(), 0);
    }

    void negativeMaximalWidthIsStoredAsZero()
    {
        DrawableText item;
        item.setText(QStringLiteral("abc"));
        QSignalSpy changes(&item, &DrawableText::maxWidthChanged);
        item.setMaxWidth(-5);
        QCOMPARE(item.maxWidth(), 0.0);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0).toDouble(), 0.0);
        QCOMPARE(item.lineCount(), 0);
        item.setMaxWidth(-1); // zero again
        QCOMPARE(changes.count(), 1);
    }

    void maximalWidthComparesAbsolutely()
    {
        DrawableText item;
        item.setMaxWidth(100);
        QSignalSpy changes(&item, &DrawableText::maxWidthChanged);
        item.setMaxWidth(100 + 5e-13);
        QCOMPARE(changes.count(), 0);
        item.setMaxWidth(100 + 5e-11); // Qt's relative rule would call these two equal
        QCOMPARE(changes.count(), 1);
        QCOMPARE(item.maxWidth(), 100 + 5e-11);
    }

    void shrinkingWidthThatStillHoldsTheTextCostsNoLayout()
    {
        DrawableText item;
        item.setText(QStringLiteral("abc"));
        item.setMaxWidth(400);
        QVERIFY(item.state()->contentWidth < 300);
        QSignalSpy layouts(&item, &DrawableText::lineCountChanged);
        QSignalSpy changes(&item, &DrawableText::maxWidthChanged);
        const int dirty = item.state()->dirtyFlags;
        item.setMaxWidth(300);
        QCOMPARE(layouts.count(), 0);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(item.maxWidth(), 300.0);
        QCOMPARE(item.state()->dirtyFlags, dirty);
        item.setMaxWidth(350); // growing always lays out
        QCOMPARE(layouts.count(), 1);
        item.setMaxWidth(item.state()->contentWidth); // exactly as wide as the text still holds it
        QCOMPARE(layouts.count(), 1);
        item.setMaxWidth(item.state()->contentWidth - 1);
        QCOMPARE(layouts.count(), 2);
    }

    // ---- text

    void textIsNormalised_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("read");
        const auto row = [](const char *name, const QString &text, const QString &stored,
                            const QString &read) { QTest::newRow(name) << text << stored << read; };
        const auto around = [](ushort unit) { return QStringLiteral("a%1b").arg(QChar(unit)); };
        row("plain", QStringLiteral("a b"), QStringLiteral("a b"), QStringLiteral("a b"));
        row("object replacement", around(0xFFFC), around(' '), around(' '));
        row("no-break space", around(0xA0), around(' '), around(' '));
        row("tab", around('\t'), around(0xEEEF), around('\t'));
        row("form feed", around('\f'), around('\n'), around('\n'));
        row("carriage return", around('\r'), around('\n'), around('\n'));
        row("line separator", around(0x2028), around('\n'), around('\n'));
        row("paragraph separator stays", around(0x2029), around(0x2029), around(0x2029));
        row("carriage return and line feed are two ends", QStringLiteral("a\r\nb"), QStringLiteral("a\n\nb"),
            QStringLiteral("a\n\nb"));
    }
    void textIsNormalised()
    {
        QFETCH(QString, text);
        QFETCH(QString, stored);
        QFETCH(QString, read);
        DrawableText item;
        QSignalSpy changes(&item, &DrawableText::textChanged);
        item.setText(text);
        QCOMPARE(item.state()->text, stored);
        QCOMPARE(item.state()->rawText, stored);
        QVERIFY(item.state()->textChanged);
        QCOMPARE(item.text(), read);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0).toString(), stored); // as stored: a tab is still its placeholder
        item.setText(text);
        QCOMPARE(changes.count(), 1);
    }

    void carriageReturnAndLineFeedGiveAnEmptyLineBetween()
    {
        DrawableText item;
        item.setMaxWidth(400);
        item.setText(QStringLiteral("a\r\nb"));
        QCOMPARE(item.lineCount(), 3);
        QCOMPARE(item.state()->paragraphs,
                 QStringList({QStringLiteral("a"), QString(), QStringLiteral("b")}));
    }

    void returnsBecomeSpacesFromTheNextTextOn()
    {
        DrawableText item;
        item.setText(QStringLiteral("a\nb"));
        item.setTreatReturnAsSpace(true);
        QCOMPARE(item.text(), QStringLiteral("a\nb"));
        item.setText(QStringLiteral("a\nb"));
        QCOMPARE(item.text(), QStringLiteral("a b"));
        item.setText(QStringLiteral("c\r\nd"));
        QCOMPARE(item.text(), QStringLiteral("c  d"));
        item.setTreatReturnAsSpace(false);
        QCOMPARE(item.text(), QStringLiteral("c  d"));
    }

    void plainTextShowsBlocksByTheirNames_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("plain");
        const QString ann = inBandBlock(QStringLiteral("Ann"), 7, 3);
        const QString begin = QChar(1);
        const QString end = QChar(2);
        QTest::newRow("empty") << QString() << QString();
        QTest::newRow("no block") << QStringLiteral("a b") << QStringLiteral("a b");
        QTest::newRow("block") << ann + QStringLiteral(" hi") << QStringLiteral("Ann hi");
        QTest::newRow("two blocks") << ann + QStringLiteral("+") + ann << QStringLiteral("Ann+Ann");
        QTest::newRow("tab") << QStringLiteral("a\tb") << QStringLiteral("a\tb");
        QTest::newRow("line ends") << QStringLiteral("a\r\nb\u2028c") << QStringLiteral("a\n\nb\nc");
        QTest::newRow("only a begin") << begin + QStringLiteral("a") << begin + QStringLiteral("a");
        QTest::newRow("only an end") << QStringLiteral("a") + end << QStringLiteral("a") + end;
        QTest::newRow("no name") << rawBlock(QStringLiteral("{\"data\":7}"))
                                 << rawBlock(QStringLiteral("{\"data\":7}"));
        // Only the display name counts here, not whether the JSON is sound.
        QTest::newRow("no data") << rawBlock(QStringLiteral("{\"displayName\":\"Ann\"}"))
                                 << QStringLiteral("Ann");
        QTest::newRow("not JSON") << rawBlock(QStringLiteral("x \"displayName\" y : z \"Ann\" w"))
                                  << QStringLiteral("Ann");
        QTest::newRow("escaped quote ends the name")
            << rawBlock(QStringLiteral("{\"displayName\":\"A\\\"n\",\"data\":1}")) << QStringLiteral("A\\");
        QTest::newRow("a begin before a block goes with it")
            << begin + QStringLiteral("x") + ann << QStringLiteral("Ann");
        QTest::newRow("line end inside a block")
            << rawBlock(QStringLiteral("{\"displayName\":\n\"Ann\"}")) << QStringLiteral("Ann");
    }
    void plainTextShowsBlocksByTheirNames()
    {
        QFETCH(QString, text);
        QFETCH(QString, plain);
        DrawableText item;
        item.setText(text);
        QCOMPARE(item.plainText(), plain);
    }

    // ---- font

    void fontIsMeasuredWithTheItemAndWithEachNewFont()
    {
        DrawableText item;
        QFont font;
        for (const int pixelSize : {0, 13, 40}) {
            if (pixelSize != 0) {
                font.setPixelSize(pixelSize);
                item.setFont(font);
            }
            const QFontMetricsF metrics(font);
            const DrawableTextPrivate *state = item.state();
            QVERIFY(state->xWidth > 0.0);
            QCOMPARE(state->xWidth, metrics.horizontalAdvance(QLatin1Char('X')));
            QCOMPARE(state->spaceWidth, metrics.horizontalAdvance(QLatin1Char(' ')));
            QCOMPARE(state->elideTextWidth, metrics.horizontalAdvance(QChar(0x2026)));
            QCOMPARE(state->fontHeight, metrics.height());
            // The placeholder is a blank of 1.25 em in whatever font.
            const double em = QFontInfo(font).pixelSize();
            QVERIFY2(qAbs(state->emojiSize - 1.25 * em) <= 1.0,
                     qPrintable(QString::number(state->emojiSize)));
        }
    }

    void placeholdersLeaveTheMetricsOfTheFontAlone()
    {
        DrawableText item;
        QFont font;
        font.setPixelSize(17);
        item.setFont(font);
        const QFontMetricsF wanted(font);
        const QFontMetricsF used(item.state()->layoutFont);
        QCOMPARE(used.height(), wanted.height());
        QCOMPARE(used.ascent(), wanted.ascent());
        const QString sample = QStringLiteral("The quick brown fox, \u4e2d\u6587 \u0627\u0644");
        QCOMPARE(used.horizontalAdvance(sample), wanted.horizontalAdvance(sample));
    }

    void newElideTextIsMeasured()
    {
        DrawableText item;
        item.setElideText(QStringLiteral("read more"));
        QCOMPARE(item.state()->elideTextWidth,
                 QFontMetricsF(item.font()).horizontalAdvance(QStringLiteral("read more")));
        QFont font;
        font.setPixelSize(40);
        item.setFont(font);
        QCOMPARE(item.state()->elideTextWidth,
                 QFontMetricsF(font).horizontalAdvance(QStringLiteral("read more")));
    }

    // ---- user blocks

    void userBlocksComeAsAListOfBlocksOrOfMaps()
    {
        DrawableText item;
        QSignalSpy changes(&item, &DrawableText::userBlocksChanged);
        const QVariantList maps = {QVariantMap{{QStringLiteral("start"), 2},
                                               {QStringLiteral("length"), 3},
                                               {QStringLiteral("type"), 1},
                                               {QStringLiteral("data"), QStringLiteral("x")}}};
        item.setUserBlocks(maps);
        const UserTextBlocks expected = {block(2, 3, 1, QStringLiteral("x"))};
        QVERIFY(item.state()->userBlocks == expected);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(changes.at(0).at(0), QVariant(maps)); // what was given, not what became of it
        item.setUserBlocks(QVariant::fromValue(expected));
        QCOMPARE(changes.count(), 1);
    }

    void unreadableUserBlocksCountAsNone_data()
    {
        QTest::addColumn<QVariant>("unreadable");
        QTest::newRow("invalid") << QVariant();
        QTest::newRow("text") << QVariant(QStringLiteral("[1, 2]"));
        QTest::newRow("number") << QVariant(7);
        QTest::newRow("picture") << QVariant(QImage(2, 2, QImage::Format_RGB32));
    }
    void unreadableUserBlocksCountAsNone()
    {
        QFETCH(QVariant, unreadable);
        DrawableText item;
        QSignalSpy changes(&item, &DrawableText::userBlocksChanged);
        item.setUserBlocks(unreadable);
        QCOMPARE(changes.count(), 0);
        item.setUserBlocks(blocks({block(0, 1, 1, 7)}));
        item.setUserBlocks(unreadable);
        QCOMPARE(changes.count(), 2);
        QVERIFY(item.state()->userBlocks.isEmpty());
    }

    void userBlocksThatDifferAnywhereAreNew_data()
    {
        QTest::addColumn<QVariant>("changed");
        QTest::newRow("start") << blocks({block(1, 1, 1, 7), block(5, 2, 3, 9)});
        QTest::newRow("length") << blocks({block(0, 1, 1, 7), block(5, 3, 3, 9)});
        QTest::newRow("type") << blocks({block(0, 1, 1, 7), block(5, 2, 4, 9)});
        QTest::newRow("data") << blocks({block(0, 1, 1, 7), block(5, 2, 3, 8)});
        QTest::newRow("order") << blocks({block(5, 2, 3, 9), block(0, 1, 1, 7)});
        QTest::newRow("fewer") << blocks({block(0, 1, 1, 7)});
    }
    void userBlocksThatDifferAnywhereAreNew()
    {
        QFETCH(QVariant, changed);
        DrawableText item;
        item.setUserBlocks(blocks({block(0, 1, 1, 7), block(5, 2, 3, 9)}));
        QSignalSpy changes(&item, &DrawableText::userBlocksChanged);
        item.setUserBlocks(blocks({block(0, 1, 1, 7), block(5, 2, 3, 9)}));
        QCOMPARE(changes.count(), 0);
        item.setUserBlocks(changed);
        QCOMPARE(changes.count(), 1);
    }

    void addedTextBlocksStayAndMarkTheFormats()
    {
        DrawableText item;
        item.addTextBlock(0, 2, 7);
        item.addTextBlock(4, 5, QStringLiteral("x"), 3);
        item.addTextBlock(1, 1, 8);
        QCOMPARE(item.state()->dirtyFlags, 0x8c);
        const QMap<int, QVector<TextSpan>> expected = {
            {0, {span(0, 2, SpanTextBlock, 7), span(1, 1, SpanTextBlock, 8)}},
            {3, {span(4, 5, SpanTextBlock, QStringLiteral("x"))}}};
        QCOMPARE(item.state()->textBlocks, expected);
    }

    // ---- pointer shapes

    void pointerShapeNotifiesEvenWhenUnchanged()
    {
        DrawableText item;
        QSignalSpy changes(&item, &DrawableText::textCursorShapeChanged);
        QCOMPARE(int(item.textCursorShape()), 0);
        item.setTextCursorShape(Qt::IBeamCursor);
        item.setTextCursorShape(Qt::IBeamCursor);
        QCOMPARE(changes.count(), 2);
        QCOMPARE(item.state()->spanCursors.value(SpanText), Qt::IBeamCursor);
    }

    void whatCanBeClickedHasAPointingHand()
    {
        const DrawableText item;
        const QMap<int, Qt::CursorShape> expected = {{SpanAite, Qt::PointingHandCursor},
                                                     {SpanPlainAite, Qt::PointingHandCursor},
                                                     {SpanOstrelId, Qt::PointingHandCursor},
                                                     {SpanLink, Qt::PointingHandCursor},
                                                     {SpanTextBlock, Qt::PointingHandCursor}};
        QCOMPARE(item.state()->spanCursors, expected);
    }

    // ---- birth and death

    void newItemTakesPointerEventsAndHasContents()
    {
        const DrawableText item;
        QVERIFY(item.acceptHoverEvents());
        QVERIFY(item.acceptTouchEvents());
        QCOMPARE(item.acceptedMouseButtons(), Qt::LeftButton | Qt::RightButton);
        QVERIFY(item.filtersChildMouseEvents());
        QVERIFY(item.flags().testFlag(QQuickItem::ItemIsFocusScope));
        QVERIFY(item.flags().testFlag(QQuickItem::ItemHasContents));
        QVERIFY(item.antialiasing());
    }

    void itemsAreCountedByIdsThatAreNeverReused()
    {
        const int before = liveitems::count();
        quint64 last = 0;
        {
            const DrawableText first;
            const DrawableText second;
            QCOMPARE(second.state()->itemId, first.state()->itemId + 1);
            QCOMPARE(liveitems::count(), before + 2);
            last = second.state()->itemId;
        }
        QCOMPARE(liveitems::count(), before);
        const DrawableText third;
        QCOMPARE(third.state()->itemId, last + 1);
        const QReadLocker locker(liveitems::lock());
        QVERIFY(!liveitems::isItemAlive(last));
        QVERIFY(liveitems::isItemAlive(last + 1));
    }

    void nothingIsLaidOutBeforeTheItemIsComplete()
    {
        DrawableText item;
        parserStatus(item).classBegin();
        QSignalSpy layouts(&item, &DrawableText::lineCountChanged);
        item.setMaxWidth(400);
        item.setText(QStringLiteral("a\nb"));
        QCOMPARE(layouts.count(), 0);
        parserStatus(item).componentComplete();
        QCOMPARE(layouts.count(), 1);
        QCOMPARE(item.lineCount(), 2);
        parserStatus(item).componentComplete(); // complete already
        QCOMPARE(layouts.count(), 1);
    }

    void notANumberAndInfinityAreTakenWithoutHarm_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("value");
        for (const Row &row : propertyTable()) {
            if (qstrcmp(row.type, "double") != 0)
                continue;
            QTest::addRow("%s not a number", row.name)
                << QString::fromLatin1(row.name) << std::numeric_limits<double>::quiet_NaN();
            QTest::addRow("%s infinite", row.name)
                << QString::fromLatin1(row.name) << std::numeric_limits<double>::infinity();
            QTest::addRow("%s negative infinite", row.name)
                << QString::fromLatin1(row.name) << -std::numeric_limits<double>::infinity();
            QTest::addRow("%s huge", row.name) << QString::fromLatin1(row.name) << 1e300;
            QTest::addRow("%s negative", row.name) << QString::fromLatin1(row.name) << -50.0;
        }
    }
    void notANumberAndInfinityAreTakenWithoutHarm()
    {
        QFETCH(QString, name);
        QFETCH(double, value);
        DrawableText item;
        item.setMaxWidth(200);
        item.setText(QStringLiteral("a few words, ") + grinning() +
                     QStringLiteral(" and more\nand a second line"));
        item.setProperty(name.toLatin1(), value);
        item.setReservedWidth(20);
        item.setAlignment(Qt::AlignRight);
        item.setAlignment(Qt::AlignHCenter);
        item.setMaximumLineCount(2);
        item.setElide(Qt::ElideMiddle);
        item.setMaximumLineCount(1);
        // Put back what is sound, the item is sound again.
        for (const Row &row : propertyTable()) {
            if (name == QLatin1String(row.name))
                item.setProperty(row.name, row.initial);
        }
        item.setMaxWidth(200);
        item.setElide(Qt::ElideNone);
        item.setMaximumLineCount(-1);
        QVERIFY(item.lineCount() >= 2);
        QVERIFY(std::isfinite(item.width()) && item.width() > 0.0);
        QVERIFY(std::isfinite(item.height()) && item.height() > 0.0);
    }

private:
    QStringList *orderOfChanges = nullptr;
};

QTEST_MAIN(TestProperties)
#include "tst_properties.moc"
