#pragma once

#include <Qt>
#include <QtGlobal>

/// Keys and modifiers of a hot key in the numbers of Windows.
namespace virtualkeys {

enum Modifier : quint32 { ModAlt = 1, ModControl = 2, ModShift = 4, ModWin = 8 };

/// The virtual key of a Qt key without modifiers; 0 for keys that can't be a hot key.
[[nodiscard]] quint32 keyOf(int qtKey);

/// Set of `Modifier` for bits of `Qt::KeyboardModifiers`.
[[nodiscard]] quint32 modifiersOf(int qtModifiers);

} // namespace virtualkeys
