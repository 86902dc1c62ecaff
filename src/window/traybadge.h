#pragma once

#include <QPixmap>
#include <QString>

/// The count of unread messages in a tray icon.
namespace traybadge {

/// The number, or "*" above 99.
[[nodiscard]] QString text(int count);

/// `icon` with a red circle and the count in its lower right corner. A null icon stays null.
[[nodiscard]] QPixmap paintedOn(const QPixmap &icon, int count);

} // namespace traybadge
