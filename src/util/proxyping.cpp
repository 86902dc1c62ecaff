#include "proxyping.h"

#include <QElapsedTimer>
#include <QTcpSocket>
#include <QThreadPool>
#include <QtConcurrentRun>

namespace {

constexpr int connectTimeout = 10000; // milliseconds

} // namespace

ProxyPing::ProxyPing(QObject *parent)
    : QObject(parent)
{}

ProxyPing::~ProxyPing()
{
    QMap<quint64, QFuture<void>> running;
    {
        const QMutexLocker locker(&mutex);
        running = checks;
    }
    // Without the lock, because each worker takes it once more before it ends.
    for (QFuture<void> &future : running) {
        if (future.isRunning())
            future.waitForFinished();
    }
    checks.clear();
}

ProxyPing *ProxyPing::instance()
{
    static ProxyPing proxyPing;
    return &proxyPing;
}

void ProxyPing::tcpingProxy(const QString &host, ushort port, const QString &)
{
    if (host.isEmpty())
        return;
    // Started under the lock, so that a worker that is done at once finds its entry to remove.
    const QMutexLocker locker(&mutex);
    const quint64 number = ++lastNumber;
    checks.insert(number, QtConcurrent::run(QThreadPool::globalInstance(),
                                            [this, host, port, number] { check(host, port, number); }));
}

void ProxyPing::check(const QString &host, ushort port, quint64 number)
{
    QTcpSocket socket;
    QElapsedTimer timer;
    timer.start();
    socket.connectToHost(host, port, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
    const bool isConnected = socket.waitForConnected(connectTimeout);
    const int elapsed = int(timer.elapsed());

    QVariantMap result{{QStringLiteral("result"), isConnected}};
    if (isConnected)
        result.insert(QStringLiteral("ttl"), qMax(elapsed, 1));
    Q_EMIT pingProxyFinished(host, result);
    {
        const QMutexLocker locker(&mutex);
        checks.remove(number);
    }
    socket.close();
}
