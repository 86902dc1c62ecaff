#pragma once

#include "window/nativerect.h"

#include <QVector>
#include <QWindow>

/// What stands on the desktop.
namespace desktopwindows {

struct DesktopWindow
{
    NativeRect rect; ///< all zero when the system would not tell
    bool isChild = false;
};

/// The visible windows front to back, without `ownWindow`, the children of a window before it. A child can
/// come more than once. Empty where the platform has no such list.
[[nodiscard]] QVector<DesktopWindow> visibleWindows(WId ownWindow);

} // namespace desktopwindows
