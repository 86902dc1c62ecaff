#pragma once

#include <QString>

namespace imutil {

/// The local path behind `url`, which may be a file URL or a plain path, with slashes in either direction.
///
/// "file:///C:/a%20b" becomes "C:/a b", "file://server/share" the UNC form "//server/share". A text that does
/// not start with "file://" keeps its percent signs; only its backslashes turn. Where paths are rooted at
/// "/", a standard file URL keeps that root: "file:///home/x" becomes "/home/x".
[[nodiscard]] QString toLocalFile(const QString &url);

/// The file URL of `filePath`, percent-encoded but for ":" and "/". An empty text stays empty, a text that
/// already starts with "file://" is returned with its backslashes turned.
[[nodiscard]] QString fromLocalFile(const QString &filePath);

} // namespace imutil
