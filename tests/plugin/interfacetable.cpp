#include "interfacetable.h"

#include <QColor>
#include <QFont>
#include <QJSValue>
#include <QKeySequence>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QRectF>
#include <QRegularExpression>
#include <QSequentialIterable>
#include <QSizeF>
#include <QUrl>

namespace interfacetable {
namespace {

QString sizeText(const QSizeF &size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString pointText(const QPointF &point)
{
    return QStringLiteral("%1,%2").arg(point.x()).arg(point.y());
}

QString quoted(const QString &text)
{
    return QLatin1Char('"') + text + QLatin1Char('"');
}

/// The name of a document's type without what the engine adds to it.
QString withoutSerial(const char *name)
{
    return QString::fromLatin1(name).remove(QRegularExpression(QStringLiteral("_QML(TYPE)?_\\d+")));
}

QString valueText(const QVariant &value)
{
    if (!value.isValid())
        return QStringLiteral("undefined");
    switch (value.userType()) {
    case QMetaType::Nullptr:
        return QStringLiteral("null");
    case QMetaType::QString:
        return quoted(value.toString());
    case QMetaType::QUrl:
        return quoted(value.toUrl().toString());
    case QMetaType::QKeySequence:
        return quoted(value.value<QKeySequence>().toString());
    case QMetaType::QColor: {
        const auto color = value.value<QColor>();
        return color.isValid() ? color.name(QColor::HexArgb) : QStringLiteral("invalid");
    }
    case QMetaType::QFont:
        return value.value<QFont>() == QFont() ? QStringLiteral("default") : value.toString();
    case QMetaType::QPoint:
    case QMetaType::QPointF:
        return pointText(value.toPointF());
    case QMetaType::QSize:
    case QMetaType::QSizeF:
        return sizeText(value.toSizeF());
    case QMetaType::QRect:
    case QMetaType::QRectF:
        return pointText(value.toRectF().topLeft()) + QLatin1Char(' ') + sizeText(value.toRectF().size());
    case QMetaType::QVariantMap:
        return value.toMap().isEmpty() ? QStringLiteral("{}") : QStringLiteral("a map");
    case QMetaType::QVariantList:
        return value.toList().isEmpty() ? QStringLiteral("[]") : QStringLiteral("a list");
    case QMetaType::Bool:
    case QMetaType::Int:
    case QMetaType::Double:
        return value.toString();
    default:
        break;
    }
    // An alias, so Qt itself would give the name that it stands for.
    const QString typeName = value.userType() == QMetaType::type("UserTextBlocks")
                                 ? QStringLiteral("UserTextBlocks")
                                 : QString::fromLatin1(value.typeName());
    if (value.userType() == qMetaTypeId<QJSValue>())
        return value.value<QJSValue>().isUndefined() ? QStringLiteral("undefined")
                                                     : QStringLiteral("a value");
    if (typeName.endsWith(QLatin1Char('*'))) {
        const auto *object = value.value<QObject *>();
        return object ? withoutSerial(object->metaObject()->className()) : QStringLiteral("null");
    }
    if (value.canConvert<QVariantList>()) {
        const bool isEmpty = value.value<QSequentialIterable>().size() == 0;
        return typeName + QLatin1String(isEmpty ? " []" : " with entries");
    }
    return value.canConvert<int>() ? QString::number(value.toInt()) : QLatin1String("a ") + typeName;
}

/// The form of a name inside its class: what moc writes is as the class's author wrote it.
QString inside(const QMetaObject &meta, QString text)
{
    const QString ownName = QString::fromLatin1(meta.className());
    return text.remove(QRegularExpression(QStringLiteral("\\b%1::").arg(ownName)));
}

/// All lines that a line of a table can be for this method: with the names of its parameters and without.
QStringList methodLines(const QMetaObject &meta, const QMetaMethod &method)
{
    QString kind;
    switch (method.methodType()) {
    case QMetaMethod::Signal:
        kind = QStringLiteral("signal");
        break;
    case QMetaMethod::Slot:
        kind = QLatin1String(method.access() == QMetaMethod::Public ? "slot " : "private slot ") +
               QString::fromLatin1(method.typeName());
        break;
    default:
        kind = QLatin1String("invokable ") + QString::fromLatin1(method.typeName());
        break;
    }
    QStringList types;
    QStringList namedTypes;
    const QList<QByteArray> names = method.parameterNames();
    for (int i = 0; i < method.parameterCount(); ++i) {
        const QString type = QString::fromLatin1(method.parameterTypes().at(i));
        types.append(type);
        namedTypes.append(type + QLatin1Char(' ') + QString::fromLatin1(names.at(i)));
    }
    const auto line = [&](const QStringList &parameters) {
        return inside(
            meta, QStringLiteral("%1 %2(%3)")
                      .arg(kind, QString::fromLatin1(method.name()), parameters.join(QLatin1String(", "))));
    };
    return {line(namedTypes), line(types)};
}

QString enumLine(const QMetaEnum &metaEnum)
{
    QStringList values;
    for (int i = 0; i < metaEnum.keyCount(); ++i)
        values.append(
            QStringLiteral("%1 %2").arg(QString::fromLatin1(metaEnum.key(i))).arg(metaEnum.value(i)));
    return QStringLiteral("enum %1 { %2 }")
        .arg(QString::fromLatin1(metaEnum.name()), values.join(QLatin1String(", ")));
}

QString propertyLine(const QMetaObject &meta, const QMetaProperty &property, const QString &value)
{
    QString line = QStringLiteral("property %1 %2 = %3")
                       .arg(withoutSerial(property.typeName()), QString::fromLatin1(property.name()), value);
    if (!property.isWritable())
        line += QLatin1String(" read-only");
    line += property.hasNotifySignal()
                ? QLatin1String(" notify ") + QString::fromLatin1(property.notifySignal().methodSignature())
                : QStringLiteral(" no-notify");
    return inside(meta, line);
}

/// The parameter lists that a call may have: all of them, and those without the last ones that a "?" lets go.
QVector<QStringList> parameterLists(const QString &text)
{
    QStringList all = text.split(QLatin1String(", "), Qt::SkipEmptyParts);
    int required = 0;
    for (int i = 0; i < all.size(); ++i) {
        if (all[i].endsWith(QLatin1Char('?')))
            all[i].chop(1);
        else
            required = i + 1;
    }
    QVector<QStringList> lists;
    for (int count = required; count <= all.size(); ++count)
        lists.append(all.mid(0, count));
    return lists;
}

QString capitalized(QString name)
{
    return name.replace(0, 1, name.at(0).toUpper());
}

void addProperty(const QRegularExpressionMatch &match, QStringList &lines)
{
    const QString type = match.captured(1);
    const QString name = match.captured(2);
    const QString marks = match.captured(4);
    const bool isReadOnly = marks.contains(QLatin1String("read-only"));

    QString notify = match.captured(5);
    if (notify.isEmpty() && !marks.contains(QLatin1String("no-notify")))
        notify = QStringLiteral("%1Changed(%2)").arg(name, type);
    lines.append(
        QStringLiteral("property %1 %2 = %3%4 %5")
            .arg(type, name, match.captured(3), QLatin1String(isReadOnly ? " read-only" : ""),
                 notify.isEmpty() ? QStringLiteral("no-notify") : QLatin1String("notify ") + notify));
    if (!notify.isEmpty())
        lines.append(QLatin1String("signal ") + notify);
    if (!isReadOnly && !marks.contains(QLatin1String("no-setter")))
        lines.append(QStringLiteral("slot void set%1(%2)").arg(capitalized(name), type));
}

} // namespace

QStringList expected(const QString &fileText, QStringList *mistakes)
{
    static const QRegularExpression property(QStringLiteral(
        "^property (\\S+) (\\w+) = (.+?)((?: read-only| no-notify| no-setter)*)(?: notify (.+))?$"));
    static const QRegularExpression method(
        QStringLiteral("^((?:signal|(?:private )?slot \\S+|invokable \\S+) \\w+)\\((.*)\\)$"));
    QStringList lines;
    const QStringList written = fileText.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : written) {
        if (line.startsWith(QLatin1String("base ")) || line.startsWith(QLatin1String("enum "))) {
            lines.append(line);
        } else if (const auto found = property.match(line); found.hasMatch()) {
            addProperty(found, lines);
        } else if (const auto called = method.match(line); called.hasMatch()) {
            for (const QStringList &parameters : parameterLists(called.captured(2)))
                lines.append(
                    QStringLiteral("%1(%2)").arg(called.captured(1), parameters.join(QLatin1String(", "))));
        } else {
            mistakes->append(line);
        }
    }
    return lines;
}

QStringList declared(const QObject &object, const QStringList &known)
{
    const auto asKnown = [&known](const QStringList &forms) {
        for (const QString &form : forms) {
            if (known.contains(form))
                return form;
        }
        return forms.first();
    };
    const QMetaObject &meta = *object.metaObject();
    QStringList lines{QLatin1String("base ") + withoutSerial(meta.superClass()->className())};
    for (int i = meta.enumeratorOffset(); i < meta.enumeratorCount(); ++i)
        lines.append(enumLine(meta.enumerator(i)));
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        const QMetaProperty property = meta.property(i);
        const QVariant value = property.read(&object);
        const QString text = property.isEnumType() ? QString::number(value.toInt()) : valueText(value);
        lines.append(
            asKnown({propertyLine(meta, property, text), propertyLine(meta, property, QStringLiteral("*"))}));
    }
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        lines.append(asKnown(methodLines(meta, meta.method(i))));
    return lines;
}

} // namespace interfacetable
