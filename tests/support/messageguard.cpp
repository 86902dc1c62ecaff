#include "messageguard.h"

#include <QMutex>
#include <QMutexLocker>
#include <QVector>
#include <QtGlobal>

#include <algorithm>

namespace {

// The handler is a plain function, so what it writes to is the process's.
QMutex mutex;
QStringList warnings;
QVector<QRegularExpression> allowed;
QtMessageHandler previous = nullptr;

void catchMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        const QMutexLocker locker(&mutex);
        warnings.append(message);
    }
    if (previous)
        previous(type, context, message);
}

} // namespace

MessageGuard::MessageGuard()
{
    const QMutexLocker locker(&mutex);
    warnings.clear();
    allowed.clear();
    previous = qInstallMessageHandler(catchMessage);
}

MessageGuard::~MessageGuard()
{
    qInstallMessageHandler(previous);
}

void MessageGuard::allow(const QString &pattern)
{
    const QMutexLocker locker(&mutex);
    allowed.append(QRegularExpression(pattern));
}

QStringList MessageGuard::unexpected() const
{
    const QMutexLocker locker(&mutex);
    QStringList rest;
    for (const QString &warning : qAsConst(warnings)) {
        const bool isAllowed =
            std::any_of(allowed.cbegin(), allowed.cend(), [&warning](const QRegularExpression &pattern) {
                return pattern.match(warning).hasMatch();
            });
        if (!isAllowed)
            rest.append(warning);
    }
    return rest;
}
