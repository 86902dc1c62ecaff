#pragma once

#include <QString>

namespace imutil {

/// A random identifier of `length` hexadecimal digits, at most 32; a negative length gives all of them.
[[nodiscard]] QString temporaryId(int length);

/// Negative if `a` sorts before `b` in the user's language, positive if behind, 0 if equal.
[[nodiscard]] int compareByLocale(const QString &a, const QString &b);

/// `text` without line ends, tabs, form feeds and backspaces, and without white space at its ends.
[[nodiscard]] QString trimmedText(QString text);

} // namespace imutil
