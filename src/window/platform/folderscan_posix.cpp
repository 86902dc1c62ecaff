#include "folderscan.h"

#include <QFile>

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace folderscan {
namespace {

/// Whether Qt can name the entry at all; where it can't, its own lists leave the entry out.
[[nodiscard]] bool isDecodable(const char *name)
{
    const auto isAscii = [](char character) { return (character & 0x80) == 0; };
    return std::all_of(name, name + std::strlen(name), isAscii) ||
           QFile::encodeName(QFile::decodeName(name)) == name;
}

} // namespace

std::optional<Content> scan(const QString &folder)
{
    // All other paths mean something of Qt's own, a resource for example.
    if (!folder.startsWith(QLatin1Char('/')))
        return {};

    struct Close
    {
        void operator()(DIR *stream) const { closedir(stream); }
    };
    const std::unique_ptr<DIR, Close> stream(opendir(QFile::encodeName(folder).constData()));
    Content content;
    if (!stream)
        return content;
    // Asked for below the open folder, an entry costs no walk down the whole path.
    const int descriptor = dirfd(stream.get());
    while (const dirent *entry = readdir(stream.get())) {
        const char *name = entry->d_name;
        if (std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0 || !isDecodable(name))
            continue;
        struct stat status = {};
        if (fstatat(descriptor, name, &status, 0) != 0)
            continue;
        if (S_ISDIR(status.st_mode))
            content.folders.append(QFile::decodeName(name));
        else if (S_ISREG(status.st_mode))
            content.fileBytes += status.st_size;
    }
    return content;
}

} // namespace folderscan
