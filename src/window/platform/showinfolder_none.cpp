#include "showinfolder.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace showinfolder {

void show(const QString &localFile)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(localFile).absolutePath()));
}

} // namespace showinfolder
