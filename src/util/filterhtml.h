#pragma once

#include <QString>

namespace clipboard {

/// The text of an HTML fragment from another program, with its line breaks as "<br/>" and its emoji pictures
/// as
/// "[:name:]".
///
/// Style sheets, scripts and embedded XML go with their content, all other tags leave theirs. Entities stay.
/// The time is linear in the length of input and result, whatever the input.
[[nodiscard]] QString filterHtml(const QString &html);

} // namespace clipboard
