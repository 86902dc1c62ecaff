#pragma once

#include <QMetaMethod>
#include <QMetaProperty>
#include <QStringList>

/// What a class itself declares to scripts, one sorted line per member, to compare with a table.
[[nodiscard]] inline QString declaredInterface(const QMetaObject &metaObject)
{
    QStringList lines;
    for (int i = metaObject.methodOffset(); i < metaObject.methodCount(); ++i) {
        const QMetaMethod method = metaObject.method(i);
        const QString kind = method.methodType() == QMetaMethod::Signal ? QStringLiteral("signal")
                             : method.methodType() == QMetaMethod::Slot ? QStringLiteral("slot")
                                                                        : QStringLiteral("invokable");
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(kind, QString::fromLatin1(method.typeName()),
                              QString::fromLatin1(method.methodSignature())));
    }
    for (int i = metaObject.propertyOffset(); i < metaObject.propertyCount(); ++i) {
        const QMetaProperty property = metaObject.property(i);
        QString line =
            QStringLiteral("property %1 %2")
                .arg(QString::fromLatin1(property.typeName()), QString::fromLatin1(property.name()));
        if (property.isWritable())
            line += QStringLiteral(" writable");
        if (property.hasNotifySignal())
            line += QStringLiteral(" notify ") + QString::fromLatin1(property.notifySignal().name());
        lines.append(line);
    }
    lines.sort();
    return lines.join(QLatin1Char('\n'));
}

/// The same form of a table of lines.
[[nodiscard]] inline QString expectedInterface(std::initializer_list<const char *> members)
{
    QStringList lines;
    for (const char *member : members)
        lines.append(QString::fromLatin1(member));
    lines.sort();
    return lines.join(QLatin1Char('\n'));
}
