#pragma once

#include <QString>
#include <QStringList>

/// Hands files and addresses to other programs.
namespace imutil {

/// Opens a file with the program that the user has for it. `filePath` may be a file URL or a plain path.
bool openFile(const QString &filePath);

/// Opens an address; a text without a scheme is taken for a web address.
bool openUrl(const QString &url);

/// Shows a file in the file manager, selected in its folder. `filePath` may be a file URL or a plain path.
void openPath(const QString &filePath);

/// Starts a program on its own; true if it started. `filePath` is taken as it stands.
bool openFileWithParam(const QString &filePath, const QStringList &param);

} // namespace imutil
