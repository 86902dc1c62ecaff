#pragma once

#include <QRect>

/// A rectangle in native screen pixels, right and bottom exclusive, as window systems give it.
struct NativeRect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

/// In device-independent pixels: position and size each divided by `devicePixelRatio` and truncated.
[[nodiscard]] inline QRect toLogicalRect(const NativeRect &rect, double devicePixelRatio)
{
    return QRect(int(rect.left / devicePixelRatio), int(rect.top / devicePixelRatio),
                 int((rect.right - rect.left) / devicePixelRatio),
                 int((rect.bottom - rect.top) / devicePixelRatio));
}
