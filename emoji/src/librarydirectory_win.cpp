#include "librarydirectory.h"

#include <QFileInfo>

#include <windows.h>

namespace emoji {

QString libraryDirectory()
{
    static const char inThisLibrary = 0;
    HMODULE module = nullptr;
    if (!GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            reinterpret_cast<LPCWSTR>(&inThisLibrary), &module))
        return {};
    wchar_t path[32768]; // the longest path that Windows knows
    const DWORD length = GetModuleFileNameW(module, path, DWORD(sizeof path / sizeof *path));
    if (length == 0 || length == sizeof path / sizeof *path)
        return {};
    return QFileInfo(QString::fromWCharArray(path, int(length))).absolutePath();
}

} // namespace emoji
