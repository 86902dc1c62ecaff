#pragma once

#include <QString>

/// The system's list of programs that start when the user logs on.
namespace startuprecord {

/// Records the program at `path`, without arguments, under `name`. False when the system has no such list or
/// refuses.
bool add(const QString &name, const QString &path);
bool remove(const QString &name);

} // namespace startuprecord
