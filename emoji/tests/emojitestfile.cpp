#include "emojitestfile.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

const QVector<TestLine> &testLines()
{
    static const QVector<TestLine> lines = [] {
        QVector<TestLine> result;
        QFile file(QStringLiteral(EMOJI_TEST_FILE));
        if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
            return result;
        const QRegularExpression form(QStringLiteral("^([0-9A-F ]+); (\\S+) +# \\S+ E\\S+ (.*)$"));
        TestLine line;
        bool rightVersion = false;
        while (!file.atEnd()) {
            const QString read = QString::fromUtf8(file.readLine()).trimmed();
            if (read == QLatin1String("# Version: 15.0"))
                rightVersion = true;
            if (read.startsWith(QLatin1String("# group: ")))
                line.group = read.mid(9);
            if (read.startsWith(QLatin1String("# subgroup: ")))
                line.subgroup = read.mid(12);
            const QRegularExpressionMatch match = form.match(read);
            if (!match.hasMatch())
                continue;
            const QString status = match.captured(2);
            if (status == QLatin1String("component"))
                continue;
            line.text = fromHex(match.captured(1));
            line.name = match.captured(3);
            line.status = status == QLatin1String("fully-qualified")       ? TestLine::FullyQualified
                          : status == QLatin1String("minimally-qualified") ? TestLine::MinimallyQualified
                                                                           : TestLine::Unqualified;
            if (line.status == TestLine::FullyQualified)
                line.fullText = line.text; // its other forms follow it
            result.append(line);
        }
        return rightVersion ? result : QVector<TestLine>();
    }();
    return lines;
}

QString fromHex(const QString &codePoints)
{
    QString text;
    const QStringList parts = codePoints.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        const uint codePoint = part.toUInt(nullptr, 16);
        if (QChar::requiresSurrogates(codePoint)) {
            text += QChar(QChar::highSurrogate(codePoint));
            text += QChar(QChar::lowSurrogate(codePoint));
        } else {
            text += QChar(codePoint);
        }
    }
    return text;
}

bool isTextByDefault(const QString &text)
{
    static const QString all = fromHex(QStringLiteral(
        "A9 AE 2122 203C 2049 2139 24C2 3297 3299 3030 303D "
        "2194 2195 2196 2197 2198 2199 21A9 21AA 27A1 2B05 2B06 2B07 2934 2935 "
        "25AA 25AB 25B6 25C0 25FB 25FC 23CF 23ED 23EE 23EF 23F8 23F9 23FA "
        "2640 2642 26A7 2660 2663 2665 2666 265F 2611 2714 2716 2733 2734 2747 267E 2695 269C"));
    return text.size() == 1 && all.contains(text.front());
}
