#pragma once

namespace component {

/// Registers every QML type of the module, version 1.0, in the order of the table in registration.cpp.
/// The registrations are global to the process; their results are not looked at.
void registerAll(const char *uri);

} // namespace component
