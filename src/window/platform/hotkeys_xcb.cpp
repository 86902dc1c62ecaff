#include "hotkeys.h"

#include "xcbconnection.h"

#include <QHash>
#include <QVector>

#include <xcb/xcb.h>
#include <xcb/xcb_keysyms.h>

#define XK_MISCELLANY
#define XK_LATIN1
#define XK_XKB_KEYS
#include <X11/XF86keysym.h>
#include <X11/keysymdef.h>

namespace hotkeys {
namespace {

using xcbconnection::Reply;

struct KeyPair
{
    int qtKey;
    xcb_keysym_t keysym;
};

constexpr KeyPair keysyms[] = {
    {Qt::Key_Escape, XK_Escape},
    {Qt::Key_Tab, XK_Tab},
    {Qt::Key_Backtab, XK_Tab},
    {Qt::Key_Backspace, XK_BackSpace},
    {Qt::Key_Return, XK_Return},
    {Qt::Key_Enter, XK_KP_Enter},
    {Qt::Key_Insert, XK_Insert},
    {Qt::Key_Delete, XK_Delete},
    {Qt::Key_Pause, XK_Pause},
    {Qt::Key_Print, XK_Print},
    {Qt::Key_Clear, XK_Clear},
    {Qt::Key_Home, XK_Home},
    {Qt::Key_End, XK_End},
    {Qt::Key_Left, XK_Left},
    {Qt::Key_Up, XK_Up},
    {Qt::Key_Right, XK_Right},
    {Qt::Key_Down, XK_Down},
    {Qt::Key_PageUp, XK_Prior},
    {Qt::Key_PageDown, XK_Next},
    {Qt::Key_VolumeDown, XF86XK_AudioLowerVolume},
    {Qt::Key_VolumeMute, XF86XK_AudioMute},
    {Qt::Key_VolumeUp, XF86XK_AudioRaiseVolume},
    {Qt::Key_MediaPlay, XF86XK_AudioPlay},
    {Qt::Key_MediaStop, XF86XK_AudioStop},
    {Qt::Key_MediaPrevious, XF86XK_AudioPrev},
    {Qt::Key_MediaNext, XF86XK_AudioNext},
    {Qt::Key_Space, XK_space},
    {Qt::Key_Asterisk, XK_asterisk},
    {Qt::Key_Plus, XK_plus},
    {Qt::Key_Comma, XK_comma},
    {Qt::Key_Minus, XK_minus},
    {Qt::Key_Slash, XK_slash},
};

xcb_keysym_t keysymOf(int qtKey)
{
    if (qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z)
        return XK_a + xcb_keysym_t(qtKey - Qt::Key_A);
    if (qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9)
        return XK_0 + xcb_keysym_t(qtKey - Qt::Key_0);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return XK_F1 + xcb_keysym_t(qtKey - Qt::Key_F1);
    for (const KeyPair &pair : keysyms) {
        if (pair.qtKey == qtKey)
            return pair.keysym;
    }
    return XCB_NO_SYMBOL;
}

/// What the server's modifier bits mean on this keyboard: only Shift, Lock and Control have fixed ones.
struct ModifierMasks
{
    quint16 alt = XCB_MOD_MASK_1;
    quint16 super = XCB_MOD_MASK_4;
    quint16 numLock = 0;
    quint16 scrollLock = 0;
};

struct KeySymbolsDeleter
{
    void operator()(xcb_key_symbols_t *symbols) const { xcb_key_symbols_free(symbols); }
};
using KeySymbols = std::unique_ptr<xcb_key_symbols_t, KeySymbolsDeleter>;

QVector<xcb_keycode_t> keycodesOf(xcb_key_symbols_t *symbols, xcb_keysym_t keysym)
{
    QVector<xcb_keycode_t> codes;
    const Reply<xcb_keycode_t> list(xcb_key_symbols_get_keycode(symbols, keysym));
    for (const xcb_keycode_t *code = list.get(); code && *code != XCB_NO_SYMBOL; ++code)
        codes.append(*code);
    return codes;
}

ModifierMasks modifierMasks(xcb_connection_t *connection)
{
    ModifierMasks masks;
    const Reply<xcb_get_modifier_mapping_reply_t> mapping(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    const KeySymbols symbols(xcb_key_symbols_alloc(connection));
    if (!mapping || !symbols)
        return masks;

    const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(mapping.get());
    const int perModifier = mapping->keycodes_per_modifier;
    const auto maskOf = [&](xcb_keysym_t keysym, quint16 fallback) {
        const QVector<xcb_keycode_t> wanted = keycodesOf(symbols.get(), keysym);
        for (int modifier = 0; modifier < 8; ++modifier) {
            for (int i = 0; i < perModifier; ++i) {
                const xcb_keycode_t code = codes[modifier * perModifier + i];
                if (code != 0 && wanted.contains(code))
                    return quint16(1 << modifier);
            }
        }
        return fallback;
    };
    masks.alt = maskOf(XK_Alt_L, masks.alt);
    masks.super = maskOf(XK_Super_L, masks.super);
    masks.numLock = maskOf(XK_Num_Lock, 0);
    masks.scrollLock = maskOf(XK_Scroll_Lock, 0);
    return masks;
}

/// Every state of the locks: a passive grab answers to exactly one modifier state.
QVector<quint16> lockStates(const ModifierMasks &masks)
{
    QVector<quint16> states = {0};
    for (const quint16 lock : {quint16(XCB_MOD_MASK_LOCK), masks.numLock, masks.scrollLock}) {
        if (lock == 0)
            continue;
        const QVector<quint16> before = states;
        for (const quint16 state : before)
            states.append(state | lock);
    }
    return states;
}

/// What is grabbed: keycode and modifiers, without locks, to the hot key that asked for them. A symbol can
/// lie on several keys, and in a layout group that is not the first.
QHash<QPair<xcb_keycode_t, quint32>, NativeHotKey> grabs;

QVector<xcb_keycode_t> keycodesOf(xcb_connection_t *connection, xcb_keysym_t keysym)
{
    const KeySymbols symbols(xcb_key_symbols_alloc(connection));
    return symbols ? keycodesOf(symbols.get(), keysym) : QVector<xcb_keycode_t>();
}

void ungrab(xcb_connection_t *connection, const QVector<xcb_keycode_t> &codes, quint32 modifiers)
{
    const xcb_window_t root = xcbconnection::rootWindow();
    const QVector<quint16> locks = lockStates(modifierMasks(connection));
    for (const xcb_keycode_t code : codes) {
        for (const quint16 lock : locks)
            xcb_ungrab_key(connection, code, root, quint16(modifiers) | lock);
    }
    xcb_flush(connection);
}

/// The press that is going on, so that a held key activates once.
struct HeldKey
{
    xcb_keycode_t code = 0;
    xcb_timestamp_t releaseTime = 0;
};
HeldKey held;

} // namespace

NativeHotKey toNative(int qtKey, int qtModifiers)
{
    xcb_connection_t *connection = xcbconnection::get();
    const ModifierMasks masks = connection ? modifierMasks(connection) : ModifierMasks();
    quint32 modifiers = 0;
    if (qtModifiers & Qt::SHIFT)
        modifiers |= XCB_MOD_MASK_SHIFT;
    if (qtModifiers & Qt::CTRL)
        modifiers |= XCB_MOD_MASK_CONTROL;
    if (qtModifiers & Qt::ALT)
        modifiers |= masks.alt;
    if (qtModifiers & Qt::META)
        modifiers |= masks.super;
    return {keysymOf(qtKey), modifiers};
}

bool add(const NativeHotKey &hotKey)
{
    xcb_connection_t *connection = xcbconnection::get();
    if (!connection || hotKey.first == XCB_NO_SYMBOL)
        return false;
    const QVector<xcb_keycode_t> codes = keycodesOf(connection, hotKey.first);
    const xcb_window_t root = xcbconnection::rootWindow();

    QVector<xcb_void_cookie_t> requests;
    const QVector<quint16> locks = lockStates(modifierMasks(connection));
    for (const xcb_keycode_t code : codes) {
        for (const quint16 lock : locks) {
            requests.append(xcb_grab_key_checked(connection, 1, root, quint16(hotKey.second) | lock, code,
                                                 XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        }
    }
    bool granted = !requests.isEmpty();
    for (const xcb_void_cookie_t request : qAsConst(requests)) {
        const Reply<xcb_generic_error_t> error(xcb_request_check(connection, request));
        granted = granted && !error;
    }
    // Another program has at least one of the states: a hot key that works only with Caps Lock off is none.
    if (!granted) {
        ungrab(connection, codes, hotKey.second);
        return false;
    }
    for (const xcb_keycode_t code : codes)
        grabs.insert({code, hotKey.second}, hotKey);
    return true;
}

bool remove(const NativeHotKey &hotKey)
{
    xcb_connection_t *connection = xcbconnection::get();
    if (!connection || hotKey.first == XCB_NO_SYMBOL)
        return false;
    QVector<xcb_keycode_t> codes;
    for (auto grab = grabs.begin(); grab != grabs.end();) {
        if (grab.value() == hotKey) {
            codes.append(grab.key().first);
            grab = grabs.erase(grab);
        } else {
            ++grab;
        }
    }
    ungrab(connection, codes, hotKey.second);
    return true;
}

std::optional<NativeHotKey> pressedHotKey(const QByteArray &eventType, void *message)
{
    if (grabs.isEmpty() || eventType != "xcb_generic_event_t")
        return std::nullopt;
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    const int type = event->response_type & ~0x80;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return std::nullopt;
    const auto *key = reinterpret_cast<const xcb_key_press_event_t *>(event);
    if (type == XCB_KEY_RELEASE) {
        if (key->detail == held.code)
            held = {0, key->time};
        return std::nullopt;
    }

    xcb_connection_t *connection = xcbconnection::get();
    if (!connection)
        return std::nullopt;
    const ModifierMasks masks = modifierMasks(connection);
    const quint32 modifiers =
        key->state & quint32(XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | masks.alt | masks.super);
    const auto grab = grabs.constFind({key->detail, modifiers});
    if (grab == grabs.constEnd())
        return std::nullopt;

    // Auto-repeat sends a release and a press of the same time; a press is meant to activate once.
    const bool repeats = key->detail == held.code || key->time == held.releaseTime;
    held.code = key->detail;
    // The grab lasts until the key is released: ended earlier, the release would go to whatever window has
    // the focus, and the next press would be taken for a repetition of this one.
    if (repeats)
        return std::nullopt;
    return grab.value();
}

} // namespace hotkeys
