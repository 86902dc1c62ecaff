#pragma once

#include "window/nativerect.h"

#include <QByteArray>
#include <QPoint>
#include <QPointF>

class QWindow;

/// The frame that the window system gives a window, taken out of the way of a scene that draws its own.
namespace nativeframe {

/// Whether the system asks the window what lies under the pointer, and acts on the answer. Elsewhere the
/// window has to look at its mouse events.
[[nodiscard]] bool asksForHits();

/// Keeps what makes the window a full one to the system, such as snapping, and takes its visible frame away
/// where messages don't. `resizable` gives it the maximise button's behaviour. Creates the native window.
void apply(QWindow *window, bool resizable);

/// The window's outer rectangle.
[[nodiscard]] NativeRect rectOf(QWindow *window);

/// The native pixel of a position on the desktop.
[[nodiscard]] QPoint toNative(QPointF globalPosition, QWindow *window);

/// What a native message is about.
struct Message
{
    enum Kind { Other, FrameSize, HitTest, Press };
    Kind kind = Other;
    QPoint point; ///< of a hit test, in native pixels
};
[[nodiscard]] Message decode(const QByteArray &eventType, void *message);

} // namespace nativeframe
