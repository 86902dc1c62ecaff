#include "virtualkeys.h"

namespace virtualkeys {
namespace {

struct KeyPair
{
    int qtKey;
    quint32 virtualKey;
};

constexpr KeyPair table[] = {
    {Qt::Key_Escape, 27},
    {Qt::Key_Tab, 9},
    {Qt::Key_Backtab, 9},
    {Qt::Key_Backspace, 8},
    {Qt::Key_Return, 13},
    {Qt::Key_Enter, 13},
    {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},
    {Qt::Key_Pause, 19},
    {Qt::Key_Print, 42},
    {Qt::Key_Clear, 12},
    {Qt::Key_Home, 36},
    {Qt::Key_End, 35},
    {Qt::Key_Left, 37},
    {Qt::Key_Up, 38},
    {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},
    {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},
    {Qt::Key_VolumeDown, 174},
    {Qt::Key_VolumeMute, 173},
    {Qt::Key_VolumeUp, 175},
    {Qt::Key_MediaPlay, 179},
    {Qt::Key_MediaStop, 178},
    {Qt::Key_MediaPrevious, 177},
    {Qt::Key_MediaNext, 176},
    {Qt::Key_Space, 32},
    {Qt::Key_Asterisk, 106},
    {Qt::Key_Plus, 107},
    {Qt::Key_Comma, 108},
    {Qt::Key_Minus, 109},
    {Qt::Key_Slash, 111},
};
constexpr quint32 virtualF1 = 112;

} // namespace

quint32 keyOf(int qtKey)
{
    const bool isDigit = qtKey >= Qt::Key_0 && qtKey <= Qt::Key_9;
    const bool isLetter = qtKey >= Qt::Key_A && qtKey <= Qt::Key_Z;
    if (isDigit || isLetter)
        return quint32(qtKey);
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return virtualF1 + quint32(qtKey - Qt::Key_F1);
    for (const KeyPair &pair : table) {
        if (pair.qtKey == qtKey)
            return pair.virtualKey;
    }
    return 0;
}

quint32 modifiersOf(int qtModifiers)
{
    quint32 modifiers = 0;
    if (qtModifiers & Qt::SHIFT)
        modifiers |= ModShift;
    if (qtModifiers & Qt::CTRL)
        modifiers |= ModControl;
    if (qtModifiers & Qt::ALT)
        modifiers |= ModAlt;
    if (qtModifiers & Qt::META)
        modifiers |= ModWin;
    return modifiers;
}

} // namespace virtualkeys
