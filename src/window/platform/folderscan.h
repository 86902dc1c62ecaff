#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace folderscan {

/// What lies directly in a folder.
struct Content
{
    qint64 fileBytes = 0; ///< size of all files together
    QStringList folders;  ///< the names of all folders
};

/// What lies in the folder of the absolute path `folder`, hidden entries included and links counted as what
/// they point to; nothing if it can't be read. None where this system has no faster way than Qt's, or no such
/// path.
[[nodiscard]] std::optional<Content> scan(const QString &folder);

} // namespace folderscan
