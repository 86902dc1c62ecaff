#include "hotkeys.h"

#include "window/virtualkeys.h"

namespace hotkeys {

NativeHotKey toNative(int qtKey, int qtModifiers)
{
    return {virtualkeys::keyOf(qtKey), virtualkeys::modifiersOf(qtModifiers)};
}

bool add(const NativeHotKey &)
{
    return false;
}

bool remove(const NativeHotKey &)
{
    return false;
}

std::optional<NativeHotKey> pressedHotKey(const QByteArray &, void *)
{
    return std::nullopt;
}

} // namespace hotkeys
