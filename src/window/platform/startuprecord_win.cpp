#include "startuprecord.h"

#include <QSettings>

namespace startuprecord {
namespace {

const char runKey[] = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";

} // namespace

bool add(const QString &name, const QString &path)
{
    QSettings run(QLatin1String(runKey), QSettings::NativeFormat);
    // No quotes, also around a path with spaces: existing installations compare this value.
    run.setValue(name, QString(path).replace(QLatin1Char('/'), QLatin1Char('\\')));
    run.sync();
    return run.status() == QSettings::NoError;
}

bool remove(const QString &name)
{
    QSettings run(QLatin1String(runKey), QSettings::NativeFormat);
    run.remove(name);
    run.sync();
    return run.status() == QSettings::NoError;
}

} // namespace startuprecord
