#pragma once

#include "nativerect.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>
#include <Qt>

#include <optional>

/// What part of a frameless window a point belongs to. Pure functions of values.
namespace framehittest {

/// The hit-test codes of Windows by number, so that one can be handed to the system unchanged. Its own names
/// for them are macros.
enum HitKind : int {
    HitClient = 1,
    HitCaption = 2,
    HitLeft = 10,
    HitRight = 11,
    HitTop = 12,
    HitTopLeft = 13,
    HitTopRight = 14,
    HitBottom = 15,
    HitBottomLeft = 16,
    HitBottomRight = 17
};

[[nodiscard]] inline bool isEdge(int kind)
{
    return kind >= HitLeft && kind <= HitBottomRight;
}

/// The shape of a resize cursor on that edge.
[[nodiscard]] Qt::CursorShape cursorShapeOf(int edgeKind);

/// The resize band of a window.
struct ResizeBand
{
    NativeRect window; ///< outer rectangle of the window
    bool canResizeWidth = true;
    bool canResizeHeight = true;
    int borderWidth = 4;           ///< native pixels: not scaled
    int shadowWidth = 20;          ///< device-independent: the band lies inside the shadow margin
    double devicePixelRatio = 1.0; ///< of the window
};

/// The edge of `band` under `point`, in native pixels; HitClient when there is none.
[[nodiscard]] HitKind edgeAt(const ResizeBand &band, QPoint point);

/// A native point in device-independent pixels of the desktop, per axis: scaled by the window's ratio, and
/// moved by the screen's origin where the screen is scaled.
[[nodiscard]] QPoint toLogicalPoint(QPoint native, double windowRatio, QPoint screenOrigin,
                                    double screenRatio);

/// The title areas in the scene's coordinates.
struct TitleAreas
{
    QVector<QRect> excluded; ///< client area on top of the others: buttons
    QVector<QRect> extra;
    std::optional<QRect> title;
};

/// HitClient or HitCaption where an area decides, none where no area holds the point.
[[nodiscard]] std::optional<HitKind> areaAt(const TitleAreas &areas, QPoint scenePoint);

} // namespace framehittest
