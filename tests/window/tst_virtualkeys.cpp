// Qt keys in the numbers of Windows. The table is the hot keys' interface, also where a number surprises.

#include "window/virtualkeys.h"

#include <QHash>
#include <QtTest>

class TestVirtualKeys : public QObject
{
    Q_OBJECT

    /// Every key that can be a hot key.
    static QHash<int, quint32> expectedKeys()
    {
        QHash<int, quint32> keys = {
            {Qt::Key_Escape, 0x1b},       {Qt::Key_Tab, 0x09},        {Qt::Key_Backtab, 0x09},
            {Qt::Key_Backspace, 0x08},    {Qt::Key_Return, 0x0d},     {Qt::Key_Enter, 0x0d},
            {Qt::Key_Insert, 0x2d},       {Qt::Key_Delete, 0x2e},     {Qt::Key_Pause, 0x13},
            {Qt::Key_Print, 42},          {Qt::Key_Clear, 0x0c},      {Qt::Key_Home, 0x24},
            {Qt::Key_End, 0x23},          {Qt::Key_Left, 0x25},       {Qt::Key_Up, 0x26},
            {Qt::Key_Right, 0x27},        {Qt::Key_Down, 0x28},       {Qt::Key_PageUp, 0x21},
            {Qt::Key_PageDown, 0x22},     {Qt::Key_VolumeDown, 0xae}, {Qt::Key_VolumeMute, 0xad},
            {Qt::Key_VolumeUp, 0xaf},     {Qt::Key_MediaPlay, 0xb3},  {Qt::Key_MediaStop, 0xb2},
            {Qt::Key_MediaPrevious, 177}, {Qt::Key_MediaNext, 176},   {Qt::Key_Space, 0x20},
            {Qt::Key_Asterisk, 0x6a},     {Qt::Key_Plus, 0x6b},       {Qt::Key_Comma, 0x6c},
            {Qt::Key_Minus, 0x6d},        {Qt::Key_Slash, 0x6f},
        };
        for (char c = '0'; c <= '9'; ++c)
            keys.insert(Qt::Key_0 + (c - '0'), quint32(c));
        for (char c = 'A'; c <= 'Z'; ++c)
            keys.insert(Qt::Key_A + (c - 'A'), quint32(c));
        for (int number = 1; number <= 24; ++number)
            keys.insert(Qt::Key_F1 + number - 1, quint32(0x70 + number - 1));
        return keys;
    }

private Q_SLOTS:
    void keysOfTheTableHaveTheirNumbersAndAllOthersHaveNone()
    {
        const QHash<int, quint32> expected = expectedKeys();
        QCOMPARE(expected.size(), 32 + 10 + 26 + 24);
        const auto check = [&expected](int key) {
            QVERIFY2(virtualkeys::keyOf(key) == expected.value(key, 0), qPrintable(QString::number(key, 16)));
        };
        for (int key = -2; key < 0x400; ++key)
            check(key);
        for (int key = 0x01000000; key < 0x01001400; ++key)
            check(key);
        check(Qt::Key_unknown);
        check(Qt::Key_A | Qt::CTRL);
    }

    void modifiersAreASet()
    {
        const QPair<int, quint32> bits[] = {{Qt::ALT, 1}, {Qt::CTRL, 2}, {Qt::SHIFT, 4}, {Qt::META, 8}};
        for (int set = 0; set < 16; ++set) {
            int qt = 0;
            quint32 native = 0;
            for (int i = 0; i < 4; ++i) {
                if (set & (1 << i)) {
                    qt |= bits[i].first;
                    native |= bits[i].second;
                }
            }
            QCOMPARE(virtualkeys::modifiersOf(qt), native);
            QCOMPARE(virtualkeys::modifiersOf(qt | Qt::KeypadModifier | Qt::Key_A), native);
        }
    }
};

QTEST_APPLESS_MAIN(TestVirtualKeys)
#include "tst_virtualkeys.moc"
