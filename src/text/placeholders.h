#pragma once

#include <QChar>

/// Private-use characters that stand in the layout text for what the text engine draws itself. Ordinary
/// static objects: not to be used before the library's initialisers have run.
extern const QChar emojiPlaceholder; ///< U+EEEE, one emoji
extern const QChar tabPlaceholder;   ///< U+EEEF, one tab

/// Control characters around an in-band user block.
constexpr QChar userBlockBegin = QChar(0x0001);
constexpr QChar userBlockEnd = QChar(0x0002);
