#pragma once

#include <QString>

namespace emoji {

/// The folder that holds this library's file, absolute; empty if the system will not tell.
[[nodiscard]] QString libraryDirectory();

} // namespace emoji
