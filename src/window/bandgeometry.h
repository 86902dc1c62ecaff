#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

/// The rubber band of a window's resize, in device-independent pixels.
namespace bandgeometry {

/// The visible window: without its shadow margin, per axis, unless it is as large as the work area.
[[nodiscard]] QRect withoutShadow(const QRect &window, int shadowWidth, QSize available);
/// The window around a visible one.
[[nodiscard]] QRect withShadow(const QRect &visible, int shadowWidth, QSize available);

/// `start` with the edges of `edgeKind` moved by the pointer's way from `press` to `now`. Left and top edges
/// stop where the band would get narrower than `minimum`; right and bottom ones don't.
[[nodiscard]] QRect moved(const QRect &start, int edgeKind, QPoint press, QPoint now, QSize minimum);

} // namespace bandgeometry
