#pragma once

#include <QByteArray>
#include <QPair>

#include <optional>

/// Hot keys that the window system delivers whatever window has the focus.
namespace hotkeys {

/// A key and its modifiers in the platform's own numbers.
using NativeHotKey = QPair<quint32, quint32>;

/// In the platform's numbers, 0 where it has none.
[[nodiscard]] NativeHotKey toNative(int qtKey, int qtModifiers);

/// False when the system refuses, for instance because another program has that hot key.
bool add(const NativeHotKey &hotKey);
bool remove(const NativeHotKey &hotKey);

/// The hot key that a native event tells of; none for any other event.
[[nodiscard]] std::optional<NativeHotKey> pressedHotKey(const QByteArray &eventType, void *message);

} // namespace hotkeys
