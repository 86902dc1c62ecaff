#include "autostart.h"

#include "platform/startuprecord.h"

#include <QCoreApplication>

AutoStart::AutoStart(QObject *parent)
    : QObject(parent)
{}

bool AutoStart::enable() const
{
    return enabled;
}

void AutoStart::setEnable(bool enable)
{
    if (enabled == enable)
        return;
    enabled = enable;
    const QString name = QCoreApplication::applicationName();
    if (enable)
        startuprecord::add(name, QCoreApplication::applicationFilePath());
    else
        startuprecord::remove(name);
    Q_EMIT enableChanged(enable);
}
