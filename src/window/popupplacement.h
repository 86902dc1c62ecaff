#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <optional>

/// Where a pop-up goes, in device-independent pixels of the desktop.
namespace popupplacement {

/// The item that a pop-up is placed against.
struct Anchor
{
    QPoint position; ///< its top left corner
    double width = 0;
    double height = 0;
};

struct Place
{
    int x = 0;
    int y = 0;
    /// The axis along which the pop-up leaves the anchor is moved first.
    bool verticalFirst = true;
};

/// At the pointer: below and right of it, flipped above or moved left where the work area ends.
[[nodiscard]] Place atPointer(QPoint pointer, QSize window, const QRect &available);

/// Against `anchor` on the side `edge`: "bottom", "top", "left", "right" or "bottomLeft"; none for any other.
[[nodiscard]] std::optional<Place> atAnchor(const QString &edge, const Anchor &anchor, QSize window,
                                            const QRect &available);

} // namespace popupplacement
