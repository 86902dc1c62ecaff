#pragma once

#include <QRect>
#include <QVariantMap>

class QWindow;

/// The screen and the system around the client.
namespace imutil {

/// Asks for attention at the top window above `window` until the user looks there. Null does nothing.
void flashTaskbar(QWindow *window);

/// The keys "x", "y", "width" and "height" of the area that the window's screen leaves to windows; empty
/// without a window.
[[nodiscard]] QVariantMap screenRect(QWindow *window);

/// The area of all screens together, or a usual size for an application without widgets.
[[nodiscard]] QRect desktopGeometry();

/// The keys "major", "minor" and "micro" of the system's version.
[[nodiscard]] QVariantMap systemVersion();

} // namespace imutil
