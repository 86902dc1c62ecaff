#include "nativeframe.h"

#include <QWindow>

#include <windows.h>

namespace nativeframe {

bool asksForHits()
{
    return true;
}

void apply(QWindow *window, bool resizable)
{
    const auto handle = reinterpret_cast<HWND>(window->winId());
    LONG style = GetWindowLongW(handle, GWL_STYLE);
    // Caption and thick frame also on a window of fixed size: snapping and the system's animations hang on
    // them.
    if (resizable) {
        style |= WS_CAPTION | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
    } else {
        style &= ~WS_MAXIMIZEBOX;
        style |= WS_CAPTION | WS_THICKFRAME;
    }
    SetWindowLongW(handle, GWL_STYLE, style);
}

NativeRect rectOf(QWindow *window)
{
    RECT rect = {};
    GetWindowRect(reinterpret_cast<HWND>(window->winId()), &rect);
    return {int(rect.left), int(rect.top), int(rect.right), int(rect.bottom)};
}

QPoint toNative(QPointF globalPosition, QWindow *)
{
    return globalPosition.toPoint(); // the system hands native points over by itself
}

Message decode(const QByteArray &, void *message)
{
    const auto *msg = static_cast<const MSG *>(message);
    switch (msg->message) {
    case WM_NCCALCSIZE:
        return {Message::FrameSize, {}};
    case WM_NCHITTEST:
        // Signed halves: screens left of or above the first one have negative coordinates.
        return {Message::HitTest, QPoint(short(LOWORD(msg->lParam)), short(HIWORD(msg->lParam)))};
    case WM_NCLBUTTONDOWN:
    case WM_NCRBUTTONDOWN:
    case WM_NCMBUTTONDOWN:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        return {Message::Press, {}};
    default:
        return {};
    }
}

} // namespace nativeframe
