#include "desktopwindows.h"

#include <windows.h>

namespace desktopwindows {
namespace {

NativeRect rectOf(HWND window)
{
    RECT rect = {};
    if (!GetWindowRect(window, &rect))
        return {};
    return {int(rect.left), int(rect.top), int(rect.right), int(rect.bottom)};
}

BOOL CALLBACK addChild(HWND window, LPARAM context)
{
    auto *list = reinterpret_cast<QVector<DesktopWindow> *>(context);
    // The system walks all descendants by itself, so they come twice: the deeper ones first is what counts.
    if (HWND child = GetWindow(window, GW_CHILD))
        EnumChildWindows(child, addChild, context);
    if (IsWindowVisible(window))
        list->append({rectOf(window), true});
    return TRUE;
}

void addTopLevel(HWND window, HWND ownWindow, QVector<DesktopWindow> *list)
{
    if (!window || window == ownWindow || !IsWindowVisible(window))
        return;
    EnumChildWindows(window, addChild, reinterpret_cast<LPARAM>(list));
    list->append({rectOf(window), false});
}

} // namespace

QVector<DesktopWindow> visibleWindows(WId ownWindow)
{
    QVector<DesktopWindow> list;
    const auto own = reinterpret_cast<HWND>(ownWindow);
    for (HWND window = GetTopWindow(GetDesktopWindow()); window; window = GetWindow(window, GW_HWNDNEXT))
        addTopLevel(window, own, &list);
    return list;
}

} // namespace desktopwindows
