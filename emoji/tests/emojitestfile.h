#pragma once

#include <QString>
#include <QVector>

/// Unicode's own list of emoji as the tests' reference, read apart from the library's generated tables.
struct TestLine
{
    enum Status { FullyQualified, MinimallyQualified, Unqualified };

    QString text;
    Status status = FullyQualified;
    QString name;
    QString group;
    QString subgroup;
    QString fullText; ///< of the fully qualified line that this one is a form of
};

/// All lines but those of components. Empty if the file is missing or not of the version that the library
/// knows.
[[nodiscard]] const QVector<TestLine> &testLines();

/// The text of code points written in hexadecimal with spaces between. Lone surrogates are allowed.
[[nodiscard]] QString fromHex(const QString &codePoints);

/// Whether `text` is a single character that is an emoji only with U+FE0F behind it.
[[nodiscard]] bool isTextByDefault(const QString &text);
