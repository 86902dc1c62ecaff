#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Reads a desktop entry by the rules of the published format: lines of keys and string values with their
/// escapes, and the command line of Exec with quotes and field codes. Strict, so that tests learn of text
/// that other readers would take differently.
class DesktopEntryReader
{
public:
    explicit DesktopEntryReader(const QByteArray &bytes)
    {
        const QString text = QString::fromUtf8(bytes);
        if (text.toUtf8() != bytes)
            problem = QStringLiteral("not UTF-8");
        QStringList lines = text.split(QLatin1Char('\n'));
        if (lines.isEmpty() || lines.takeFirst() != QLatin1String("[Desktop Entry]"))
            problem = QStringLiteral("no group header");
        for (const QString &line : qAsConst(lines)) {
            if (line.isEmpty())
                continue;
            const int equals = line.indexOf(QLatin1Char('='));
            if (equals < 1 || values.contains(line.left(equals)))
                problem = QStringLiteral("bad line: ") + line;
            else
                values.insert(line.left(equals), unescaped(line.mid(equals + 1)));
        }
    }

    /// Empty when all that was read so far was well-formed.
    [[nodiscard]] QString error() const { return problem; }
    [[nodiscard]] QString value(const QString &key) const { return values.value(key); }

    /// The words of Exec, without quotes, field codes expanded.
    [[nodiscard]] QStringList program()
    {
        const QString exec = value(QStringLiteral("Exec"));
        QStringList words;
        QString word;
        bool quoted = false;
        bool started = false;
        for (int i = 0; i < exec.size(); ++i) {
            const QChar c = exec.at(i);
            if (c == QLatin1Char('"')) {
                quoted = !quoted;
                started = true;
            } else if (quoted && c == QLatin1Char('\\')) {
                ++i;
                if (i == exec.size() || !QStringLiteral("\"`$\\").contains(exec.at(i)))
                    problem = QStringLiteral("a backslash before what needs none");
                else
                    word += exec.at(i);
            } else if (c == QLatin1Char('%')) {
                ++i;
                if (i == exec.size() || exec.at(i) != QLatin1Char('%'))
                    problem = QStringLiteral("a field code");
                else
                    word += QLatin1Char('%');
            } else if (quoted && QStringLiteral("`$").contains(c)) {
                problem = QStringLiteral("a bare ") + c;
            } else if (!quoted && c == QLatin1Char(' ')) {
                if (started)
                    words.append(word);
                word.clear();
                started = false;
            } else {
                if (!quoted && QStringLiteral("\t\n'\\><~|&;$*?#()`").contains(c))
                    problem = QStringLiteral("a reserved character without quotes");
                word += c;
                started = true;
            }
        }
        if (quoted)
            problem = QStringLiteral("an open quote");
        if (started)
            words.append(word);
        return words;
    }

private:
    QString unescaped(const QString &value)
    {
        QString result;
        for (int i = 0; i < value.size(); ++i) {
            if (value.at(i) != QLatin1Char('\\')) {
                result += value.at(i);
                continue;
            }
            ++i;
            const QString codes = QStringLiteral("sntr\\");
            const QString meanings = QStringLiteral(" \n\t\r\\");
            const int code = i < value.size() ? codes.indexOf(value.at(i)) : -1;
            if (code < 0)
                problem = QStringLiteral("an unknown escape");
            else
                result += meanings.at(code);
        }
        return result;
    }

    QHash<QString, QString> values;
    QString problem;
};
