#include "startuprecord.h"

#include "window/desktopentry.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

namespace startuprecord {
namespace {

QString folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/autostart");
}

QString entryPath(const QString &name)
{
    return folder() + QLatin1Char('/') + desktopentry::fileName(name);
}

} // namespace

bool add(const QString &name, const QString &path)
{
    const QByteArray entry = desktopentry::autostartEntry(name, path);
    if (entry.isEmpty() || !QDir().mkpath(folder()))
        return false;
    QSaveFile file(entryPath(name));
    return file.open(QIODevice::WriteOnly) && file.write(entry) == entry.size() && file.commit();
}

bool remove(const QString &name)
{
    const QString path = entryPath(name);
    return !QFile::exists(path) || QFile::remove(path);
}

} // namespace startuprecord
