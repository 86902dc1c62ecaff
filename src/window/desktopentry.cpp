#include "desktopentry.h"

namespace desktopentry {
namespace {

/// The escapes of a string value: what stands behind a backslash in the file.
QString escapedString(const QString &text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (const QChar c : text) {
        if (c == QLatin1Char('\\'))
            escaped += QLatin1String("\\\\");
        else if (c == QLatin1Char('\n'))
            escaped += QLatin1String("\\n");
        else if (c == QLatin1Char('\r'))
            escaped += QLatin1String("\\r");
        else if (c == QLatin1Char('\t'))
            escaped += QLatin1String("\\t");
        else
            escaped += c;
    }
    return escaped;
}

} // namespace

QString execValue(const QString &path)
{
    if (path.isEmpty() || path.contains(QLatin1Char('=')))
        return {};
    QString quoted = QStringLiteral("\"");
    for (const QChar c : path) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        else if (c == QLatin1Char('%'))
            quoted += QLatin1Char('%');
        quoted += c;
    }
    quoted += QLatin1Char('"');
    return escapedString(quoted);
}

QByteArray autostartEntry(const QString &name, const QString &path)
{
    const QString exec = execValue(path);
    if (exec.isEmpty())
        return {};
    QByteArray entry = "[Desktop Entry]\nType=Application\nName=";
    entry += escapedString(name).toUtf8();
    entry += "\nExec=";
    entry += exec.toUtf8();
    entry += "\nTerminal=false\nX-GNOME-Autostart-enabled=true\n";
    return entry;
}

QString fileName(const QString &name)
{
    QString file = name;
    file.replace(QLatin1Char('/'), QLatin1Char('_')).remove(QChar(QChar::Null));
    if (file.isEmpty())
        file = QStringLiteral("application");
    return file + QLatin1String(".desktop");
}

} // namespace desktopentry
