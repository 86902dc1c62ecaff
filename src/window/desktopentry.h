#pragma once

#include <QByteArray>
#include <QString>

/// Text of freedesktop.org desktop entries.
namespace desktopentry {

/// `path` as the program of an Exec value: quoted, with the characters escaped that a reader would take for
/// its own. Empty for a path with "=", which the format has no way to name.
[[nodiscard]] QString execValue(const QString &path);

/// A whole entry that starts the program at `path` as `name` when the user logs on; UTF-8. Empty when the
/// path can't be named.
[[nodiscard]] QByteArray autostartEntry(const QString &name, const QString &path);

/// The file name of the entry, from the application's name: no folder separators, never empty.
[[nodiscard]] QString fileName(const QString &name);

} // namespace desktopentry
