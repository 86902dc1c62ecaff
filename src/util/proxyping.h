#pragma once

#include <QFuture>
#include <QMap>
#include <QMutex>
#include <QObject>
#include <QVariant>

/// Measures whether TCP endpoints answer and how long that takes, several at once, on the global thread pool.
/// No worker outlives the object: the destructor waits, up to the time-out of 10 seconds.
class ProxyPing : public QObject
{
    Q_OBJECT

public:
    explicit ProxyPing(QObject *parent = nullptr);
    ~ProxyPing() override;

    /// The one of the process, made on first use.
    [[nodiscard]] static ProxyPing *instance();

public Q_SLOTS:
    /// Starts a check, whose result comes as `pingProxyFinished`. An empty `host` does nothing. `userName` is
    /// the account that asks; it takes no part in the connection, and neither does an earlier check of the
    /// same host.
    void tcpingProxy(const QString &host, ushort port, const QString &userName);

Q_SIGNALS:
    /// Emitted on a pool thread. `result` is a map: "result" tells whether the connection stood within 10
    /// seconds, and only if so "ttl" has the milliseconds that it took, at least 1.
    void pingProxyFinished(const QString &host, const QVariant &result);

private:
    void check(const QString &host, ushort port, quint64 number);

    QMutex mutex;
    quint64 lastNumber = 0;
    /// The checks that run or wait for a thread. Numbered, because checks of one host, port and account run
    /// side by side, and none of them may be forgotten while it still uses this object.
    QMap<quint64, QFuture<void>> checks;
};
