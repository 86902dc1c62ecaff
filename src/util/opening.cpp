#include "opening.h"

#include "localpath.h"
#include "window/platform/showinfolder.h"

#include <QDebug>
#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace imutil {

bool openFile(const QString &filePath)
{
    return QDesktopServices::openUrl(QUrl(fromLocalFile(filePath)));
}

bool openUrl(const QString &url)
{
    const QUrl address(url);
    if (!address.isLocalFile() && address.scheme().isEmpty())
        return QDesktopServices::openUrl(QUrl(QLatin1String("http://") + url));
    return QDesktopServices::openUrl(address);
}

void openPath(const QString &filePath)
{
    showinfolder::show(toLocalFile(filePath));
}

bool openFileWithParam(const QString &filePath, const QStringList &param)
{
    const bool started = QProcess::startDetached(filePath, param);
    qDebug() << "QProcess::start:" << filePath << param << started;
    return started;
}

} // namespace imutil
