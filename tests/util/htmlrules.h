#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace htmlrules {

/// The rules, step by step on one text, with no regard for time.
[[nodiscard]] inline QString filterByTheRules(QString text)
{
    const QString scheme = QStringLiteral("image://emojicache/");
    int position = 0;
    for (;;) {
        const int start = text.indexOf(QLatin1Char('<'), position);
        const int end = start < 0 ? -1 : text.indexOf(QLatin1Char('>'), start);
        if (end < 0)
            break;
        const QString tag = text.mid(start + 1);
        QString close;
        for (const char *container : {"style", "script", "xml"}) {
            if (close.isEmpty() && tag.startsWith(QLatin1String(container)))
                close = QStringLiteral("</%1>").arg(QLatin1String(container));
        }
        if (!close.isEmpty()) {
            const QString cut = text.left(start) + text.mid(text.indexOf(close, start) + close.size());
            text = cut.size() < text.size() ? cut : text.left(start);
        } else if (tag.startsWith(QLatin1String("br"))) {
            position = end + 1;
        } else if (tag.startsWith(QLatin1String("img")) && text.contains(scheme)) {
            const int begin = text.indexOf(scheme) + scheme.size();
            const int quote = text.indexOf(QLatin1Char('"'), begin);
            if (quote < 0) {
                position = end + 1;
                continue;
            }
            QString code;
            if (quote - begin <= 4096) {
                const QByteArray path = QByteArray::fromBase64(text.mid(begin, quote - begin).toUtf8());
                const QString name =
                    QString::fromUtf8(path).split(QLatin1Char('/')).last().split(QLatin1Char('.')).first();
                if (!name.contains(QLatin1Char('<')))
                    code = QStringLiteral("[:") + name + QStringLiteral(":]");
            }
            text = text.left(start) + code + text.mid(end + 1);
        } else {
            text = text.left(start) + text.mid(end + 1);
        }
    }
    text.remove(QRegularExpression(QStringLiteral("^\\n+")));
    return text.replace(QStringLiteral("<br />"), QStringLiteral("<br/>"));
}

} // namespace htmlrules
