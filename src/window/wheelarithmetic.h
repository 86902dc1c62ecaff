#pragma once

#include <QPoint>
#include <Qt>

/// Distances from wheel events, in pixels.
namespace wheel {

/// Distance of a notched wheel: 45 pixels for a notch of 120 eighths of a degree.
[[nodiscard]] QPoint distanceOfAngle(QPoint angleDelta);

/// Moves the stronger direction of a gesture to the axis in which the view scrolls; each sign goes with the
/// axis that the magnitude came from.
[[nodiscard]] QPoint alongOrientation(QPoint distance, Qt::Orientation orientation);

} // namespace wheel
