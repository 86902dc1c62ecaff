// Checks of TCP endpoints that answer, refuse and stall, all on loopback.

#include "util/imutil.h"
#include "util/proxyping.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <atomic>

#ifdef Q_OS_UNIX
#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace {

const QString loopback = QStringLiteral("127.0.0.1");
const QString resultKey = QStringLiteral("result");
const QString ttlKey = QStringLiteral("ttl");
constexpr int patience = 30000;

/// A port that was free a moment ago, so that nothing listens there.
[[nodiscard]] ushort refusingPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

#ifdef Q_OS_UNIX
/// Listens without ever taking a connection; once its queue is full, the system drops further attempts
/// unanswered, as a dead host does.
class StallingPort
{
public:
    StallingPort()
    {
        listener = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(address);
        auto *generic = reinterpret_cast<sockaddr *>(&address);
        if (::bind(listener, generic, length) == 0 && ::listen(listener, 0) == 0 &&
            ::getsockname(listener, generic, &length) == 0)
            number = ntohs(address.sin_port);
        for (int &client : clients) {
            client = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0);
            static_cast<void>(::connect(client, generic, length));
        }
        QTest::qWait(200);
    }
    ~StallingPort()
    {
        for (int client : clients)
            ::close(client);
        ::close(listener);
    }
    [[nodiscard]] ushort port() const { return number; }

private:
    int listener = -1;
    int clients[4] = {};
    ushort number = 0;
};
#endif

} // namespace

class TestProxyPing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anEndpointThatAnswersHasATime()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        QThread *emitter = nullptr;
        connect(
            &util, &ImUtil::pingProxyResult, &util, [&] { emitter = QThread::currentThread(); },
            Qt::DirectConnection);
        util.tcpingProxy(loopback, server.serverPort(), QStringLiteral("user"));
        QVERIFY(spy.wait(patience));
        QCOMPARE(spy[0][0].toString(), loopback);
        const QVariantMap result = spy[0][1].value<QVariant>().toMap();
        QCOMPARE(result.size(), 2);
        QCOMPARE(result.value(resultKey), QVariant(true));
        QCOMPARE(result.value(ttlKey).userType(), int(QMetaType::Int));
        QVERIFY(result.value(ttlKey).toInt() >= 1);
        QCOMPARE(emitter, util.thread());
    }

    void aTimeIsNeverZero()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        for (int i = 0; i < 20; ++i)
            util.tcpingProxy(loopback, server.serverPort(), QString());
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 20, patience);
        int shortest = patience;
        for (const QList<QVariant> &arguments : qAsConst(spy))
            shortest = qMin(shortest, arguments[1].value<QVariant>().toMap().value(ttlKey).toInt());
        // Loopback connects in microseconds, so at least one of twenty was rounded up.
        QCOMPARE(shortest, 1);
    }

    void anEndpointThatRefusesHasNoTime()
    {
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        util.tcpingProxy(loopback, refusingPort(), QStringLiteral("user"));
        QVERIFY(spy.wait(patience));
        QCOMPARE(spy[0][0].toString(), loopback);
        QCOMPARE(spy[0][1].value<QVariant>().toMap(), (QVariantMap{{resultKey, false}}));
    }

    void aNameThatDoesNotResolveFails()
    {
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        util.tcpingProxy(QStringLiteral("no such host.invalid"), 80, QString());
        QVERIFY(spy.wait(patience));
        QCOMPARE(spy[0][1].value<QVariant>().toMap(), (QVariantMap{{resultKey, false}}));
    }

    void noHostMeansNoResult()
    {
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        util.tcpingProxy(QString(), 80, QStringLiteral("user"));
        util.tcpingProxy(loopback, refusingPort(), QStringLiteral("user"));
        QVERIFY(spy.wait(patience));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toString(), loopback);
    }

    void everyRequestGetsItsResult()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        for (const char *user : {"first", "second", "second"})
            util.tcpingProxy(loopback, server.serverPort(), QString::fromLatin1(user));
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 3, patience);
        QTest::qWait(100);
        QCOMPARE(spy.count(), 3);
        for (const QList<QVariant> &arguments : qAsConst(spy))
            QCOMPARE(arguments[0].toString(), loopback);
    }

    void aHundredAtOnceAreToldApart()
    {
        QTcpServer server;
        server.setMaxPendingConnections(200);
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const ushort refusing = refusingPort();
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        for (int i = 0; i < 50; ++i) {
            util.tcpingProxy(loopback, server.serverPort(), QString::number(i));
            util.tcpingProxy(loopback, refusing, QString::number(i));
        }
        QTRY_COMPARE_WITH_TIMEOUT(spy.count(), 100, patience);
        int connected = 0;
        for (const QList<QVariant> &arguments : qAsConst(spy))
            connected += arguments[1].value<QVariant>().toMap().value(resultKey).toBool();
        QCOMPARE(connected, 50);
    }

    void everyToolboxHearsOfEveryResult()
    {
        ImUtil first;
        ImUtil second;
        QSignalSpy spy(&second, &ImUtil::pingProxyResult);
        first.tcpingProxy(loopback, refusingPort(), QString());
        QVERIFY(spy.wait(patience));
    }

#ifdef Q_OS_UNIX
    void aHostThatStallsFailsAfterTenSecondsWithTheWindowFree()
    {
        const StallingPort stalling;
        QVERIFY(stalling.port() != 0);
        ImUtil util;
        QSignalSpy spy(&util, &ImUtil::pingProxyResult);
        int ticks = 0;
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, &ticker, [&ticks] { ++ticks; });
        ticker.start(20);
        QElapsedTimer timer;
        timer.start();
        util.tcpingProxy(loopback, stalling.port(), QString());
        QVERIFY(timer.elapsed() < 5000);
        QVERIFY(spy.wait(60000));
        QVERIFY2(timer.elapsed() >= 9900, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(spy[0][1].value<QVariant>().toMap(), (QVariantMap{{resultKey, false}}));
        QVERIFY2(ticks > 50, qPrintable(QString::number(ticks)));
    }

    void noCheckOutlivesItsOwner()
    {
        const StallingPort stalling;
        auto *ping = new ProxyPing;
        std::atomic_int finished{0};
        connect(
            ping, &ProxyPing::pingProxyFinished, ping, [&finished] { ++finished; }, Qt::DirectConnection);
        // The same host, port and user twice: neither may be forgotten over the other.
        ping->tcpingProxy(loopback, stalling.port(), QStringLiteral("user"));
        ping->tcpingProxy(loopback, stalling.port(), QStringLiteral("user"));
        ping->tcpingProxy(loopback, refusingPort(), QStringLiteral("user"));
        delete ping;
        QCOMPARE(finished.load(), 3);
    }
#endif
};

QTEST_GUILESS_MAIN(TestProxyPing)
#include "tst_proxyping.moc"
