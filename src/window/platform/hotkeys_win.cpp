#include "hotkeys.h"

#include "window/virtualkeys.h"

#include <windows.h>

namespace hotkeys {
namespace {

int idOf(const NativeHotKey &hotKey)
{
    return int(hotKey.first ^ hotKey.second);
}

} // namespace

NativeHotKey toNative(int qtKey, int qtModifiers)
{
    return {virtualkeys::keyOf(qtKey), virtualkeys::modifiersOf(qtModifiers)};
}

bool add(const NativeHotKey &hotKey)
{
    // Key 0 is no key; not every system refuses it by itself.
    return hotKey.first != 0 && RegisterHotKey(nullptr, idOf(hotKey), hotKey.second, hotKey.first);
}

bool remove(const NativeHotKey &hotKey)
{
    return UnregisterHotKey(nullptr, idOf(hotKey));
}

std::optional<NativeHotKey> pressedHotKey(const QByteArray &, void *message)
{
    const auto *msg = static_cast<const MSG *>(message);
    if (msg->message != WM_HOTKEY)
        return std::nullopt;
    return NativeHotKey(HIWORD(msg->lParam), LOWORD(msg->lParam));
}

} // namespace hotkeys
