#include "librarydirectory.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace emoji {

QString libraryDirectory()
{
    static const char inThisLibrary = 0;
    Dl_info info;
    if (dladdr(&inThisLibrary, &info) == 0 || !info.dli_fname)
        return {};
    return QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath();
}

} // namespace emoji
