#pragma once

/// Counts what is logged as a warning or worse, and still prints it. The tour fails when there was any.
namespace WarningCounter {

void install();
[[nodiscard]] int count();

} // namespace WarningCounter
