#pragma once

#include <QString>

namespace showinfolder {

/// Shows a file in the system's file manager, selected in its folder where that is possible. `localFile` is a
/// local path with forward slashes. What the user's system lacks is passed over in silence.
void show(const QString &localFile);

} // namespace showinfolder
