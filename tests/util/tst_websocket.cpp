// The web socket for scripts, against a real server on loopback and against servers that lie, stall and
// split.

#include "util/websocket.h"

#include <QCryptographicHash>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebSocketServer>
#include <QtTest>

namespace {

constexpr int patience = 30000;

/// A web socket server that keeps what it was asked and told.
class Server : public QWebSocketServer
{
public:
    Server()
        : QWebSocketServer(QStringLiteral("test"), QWebSocketServer::NonSecureMode)
    {
        isListening = listen(QHostAddress::LocalHost);
        connect(this, &QWebSocketServer::newConnection, this, [this] {
            client = nextPendingConnection();
            client->setParent(this);
            requests.append(client->request());
            connect(client, &QWebSocket::textMessageReceived, this,
                    [this](const QString &text) { texts += text; });
            connect(client, &QWebSocket::binaryMessageReceived, this,
                    [this](const QByteArray &bytes) { binaries += bytes; });
        });
    }
    [[nodiscard]] QUrl url() const
    {
        return QUrl(QStringLiteral("ws://127.0.0.1:%1/chat?room=5").arg(serverPort()));
    }

    bool isListening = false;
    QWebSocket *client = nullptr;
    QList<QNetworkRequest> requests;
    QStringList texts;
    QByteArrayList binaries;
};

/// A server that answers the request with `answer`, in which "KEY" stands for the right key.
class RawServer : public QTcpServer
{
public:
    explicit RawServer(const QByteArray &answer)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            peer = nextPendingConnection();
            peer->setParent(this);
            connect(peer, &QTcpSocket::readyRead, this, [this, answer] {
                request += peer->readAll();
                if (isAnswered || !request.contains("\r\n\r\n"))
                    return;
                isAnswered = true;
                const int start = request.indexOf("Sec-WebSocket-Key: ") + 19;
                const QByteArray key = request.mid(start, request.indexOf('\r', start) - start);
                const QByteArray accept = QCryptographicHash::hash(
                    key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11", QCryptographicHash::Sha1);
                peer->write(QByteArray(answer).replace("KEY", accept.toBase64()));
            });
        });
    }
    [[nodiscard]] QUrl url() const { return QUrl(QStringLiteral("ws://127.0.0.1:%1").arg(serverPort())); }

    QTcpSocket *peer = nullptr;
    QByteArray request;
    bool isAnswered = false;
};

const QByteArray
    rightAnswer("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
                "Sec-WebSocket-Accept: KEY\r\n\r\n");

/// One frame of a message as a server sends it, of less than 126 bytes.
[[nodiscard]] QByteArray frame(int firstByte, const QByteArray &payload)
{
    return QByteArray(1, char(firstByte)) + char(payload.size()) + payload;
}

} // namespace

class TestWebSocket : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void setUrlNotifiesOnce()
    {
        WebSocket socket;
        QSignalSpy spy(&socket, &WebSocket::urlChanged);
        socket.setUrl(QUrl(QStringLiteral("ws://server")));
        socket.setUrl(QUrl(QStringLiteral("ws://server")));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy[0][0].toUrl(), QUrl(QStringLiteral("ws://server")));
        QCOMPARE(socket.url(), QUrl(QStringLiteral("ws://server")));
    }

    void anEqualHeaderIsPassedOverInSilence()
    {
        WebSocket socket;
        QSignalSpy spy(&socket, &WebSocket::headerChanged);
        const QVariantMap header{{QStringLiteral("b"), QStringLiteral("2")}, {QStringLiteral("a"), 1}};
        static QStringList lines;
        lines.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &line) { lines += line; });
        socket.setHeader(header);
        socket.setHeader(header);
        qInstallMessageHandler(previous);
        QCOMPARE(lines.size(), 2);
        QVERIFY2(lines[0].startsWith(QStringLiteral("set header: \"a\"")), qPrintable(lines[0]));
        QVERIFY2(lines[1].startsWith(QStringLiteral("set header: \"b\"")), qPrintable(lines[1]));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(socket.header(), header);
    }

    void headersGoOutInTheHandshake()
    {
        Server server;
        QVERIFY(server.isListening);
        WebSocket socket;
        socket.setUrl(server.url());
        socket.setHeader({{QStringLiteral("X-Token"), QStringLiteral("secret")},
                          {QStringLiteral("X-Bytes"), QByteArray("b")},
                          {QStringLiteral("X-Number"), 7}});
        QTest::ignoreMessage(QtDebugMsg,
                             QRegularExpression(QStringLiteral("^websocket open .*ws://127.0.0.1")));
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), 1, patience);
        QCOMPARE(server.requests[0].rawHeader("X-Token"), QByteArray("secret"));
        QCOMPARE(server.requests[0].rawHeader("X-Bytes"), QByteArray("b"));
        QCOMPARE(server.requests[0].rawHeader("X-Number"), QByteArray("7"));
        QCOMPARE(server.requests[0].url().path(), QStringLiteral("/chat"));
        QCOMPARE(server.requests[0].url().query(), QStringLiteral("room=5"));
    }

    void aDroppedHeaderIsStillSentAndANewOneWaitsForTheNextOpen()
    {
        Server server;
        WebSocket socket;
        socket.setUrl(server.url());
        socket.setHeader({{QStringLiteral("X-Old"), QStringLiteral("1")},
                          {QStringLiteral("X-Both"), QStringLiteral("1")}});
        socket.open();
        QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), 1, patience);
        socket.setHeader({{QStringLiteral("X-New"), QStringLiteral("2")},
                          {QStringLiteral("X-Both"), QStringLiteral("2")}});
        QCOMPARE(server.requests[0].rawHeader("X-New"), QByteArray());
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        socket.close();
        QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, patience);
        socket.open();
        QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), 2, patience);
        QCOMPARE(server.requests[1].rawHeader("X-Old"), QByteArray("1"));
        QCOMPARE(server.requests[1].rawHeader("X-Both"), QByteArray("2"));
        QCOMPARE(server.requests[1].rawHeader("X-New"), QByteArray("2"));
    }

    void everyChangeOfStateIsToldAsOneOfConnection()
    {
        Server server;
        WebSocket socket;
        QSignalSpy states(&socket, &QWebSocket::stateChanged);
        QSignalSpy changes(&socket, &WebSocket::isConnectedChanged);
        socket.setUrl(server.url());
        QVERIFY(!socket.isConnected());
        socket.open();
        QCOMPARE(states.value(0).value(0).value<QAbstractSocket::SocketState>(),
                 QAbstractSocket::ConnectingState);
        QVERIFY(changes.count() >= 1);
        QVERIFY(!socket.isConnected());
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        socket.close();
        QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, patience);
        QVERIFY(!socket.isConnected());
        QVERIFY(states.count() >= 4);
        QCOMPARE(changes.count(), states.count());
    }

    void messagesTravelBothWays_data()
    {
        QTest::addColumn<int>("size");
        QTest::newRow("nothing") << 0;
        QTest::newRow("short") << 5;
        QTest::newRow("two bytes of length") << 126;
        QTest::newRow("eight bytes of length") << 65536;
        QTest::newRow("5 MB, in several frames") << 5000000;
    }
    void messagesTravelBothWays()
    {
        QFETCH(int, size);
        Server server;
        WebSocket socket;
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected() && server.client, patience);
        const QString text = QString(size, QChar(0x4f60));
        QByteArray bytes(size, Qt::Uninitialized);
        for (int i = 0; i < size; ++i)
            bytes[i] = char(i * 7);

        QSignalSpy texts(&socket, &QWebSocket::textMessageReceived);
        QSignalSpy binaries(&socket, &QWebSocket::binaryMessageReceived);
        QCOMPARE(socket.send(text), qlonglong(size) * 3);
        QCOMPARE(socket.sendTextMessage(text), qlonglong(size) * 3);
        QCOMPARE(socket.sendBinaryMessage(bytes), qlonglong(size));
        QTRY_COMPARE_WITH_TIMEOUT(server.binaries.size(), 1, patience);
        QCOMPARE(server.texts.size(), 2);
        QVERIFY(server.texts[0] == text && server.texts[1] == text);
        QVERIFY(server.binaries[0] == bytes);

        server.client->sendTextMessage(text);
        server.client->sendBinaryMessage(bytes);
        QTRY_COMPARE_WITH_TIMEOUT(binaries.count(), 1, patience);
        QCOMPARE(texts.count(), 1);
        QVERIFY(texts[0][0].toString() == text);
        QVERIFY(binaries[0][0].toByteArray() == bytes);
    }

    void aMessageInPiecesArrivesWhole()
    {
        RawServer server(rightAnswer);
        WebSocket socket;
        QSignalSpy texts(&socket, &QWebSocket::textMessageReceived);
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        // A text of three frames with a ping between them, and each byte in a packet of its own.
        const QByteArray wire =
            frame(0x01, "one ") + frame(0x89, "ping") + frame(0x00, "two ") + frame(0x80, "three");
        for (char byte : wire) {
            server.peer->write(&byte, 1);
            server.peer->flush();
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE_WITH_TIMEOUT(texts.count(), 1, patience);
        QCOMPARE(texts[0][0].toString(), QStringLiteral("one two three"));
    }

    void aServerThatSends100MBIsHeardOut()
    {
        RawServer server(rightAnswer);
        WebSocket socket;
        QSignalSpy binaries(&socket, &QWebSocket::binaryMessageReceived);
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        // One message of a hundred frames, the pieces of which differ.
        constexpr int piece = 1000000;
        QByteArray sent;
        for (int i = 0; i < 100; ++i) {
            const QByteArray payload(piece, char(i));
            QByteArray head(1, char(i == 99 ? 0x80 : 0));
            head[0] = char(head[0] | (i == 0 ? 2 : 0)); // binary, then continued
            head.append(char(127));
            for (int shift = 56; shift >= 0; shift -= 8)
                head.append(char((quint64(piece) >> shift) & 0xFF));
            sent += payload;
            server.peer->write(head + payload);
        }
        // The event loop goes on meanwhile.
        int ticks = 0;
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, &ticker, [&ticks] { ++ticks; });
        ticker.start(5);
        QTRY_COMPARE_WITH_TIMEOUT(binaries.count(), 1, patience);
        QVERIFY(binaries[0][0].toByteArray() == sent);
        QVERIFY(ticks > 0);
        QVERIFY(socket.isConnected());
    }

    void aMessageThatNeverEndsIsNotHandedOut()
    {
        RawServer server(rightAnswer);
        WebSocket socket;
        QSignalSpy texts(&socket, &QWebSocket::textMessageReceived);
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        server.peer->write(frame(0x01, "begun"));
        for (int i = 0; i < 10000; ++i)
            server.peer->write(frame(0x00, "and on"));
        QTRY_COMPARE_WITH_TIMEOUT(server.peer->bytesToWrite(), qint64(0), patience);
        QTest::qWait(50);
        QCOMPARE(texts.count(), 0);
        QVERIFY(socket.isConnected());
        server.peer->abort();
        QTRY_VERIFY_WITH_TIMEOUT(!socket.isConnected(), patience);
        QCOMPARE(texts.count(), 0);
    }

    void nothingIsSentWithoutAConnection()
    {
        WebSocket socket;
        QCOMPARE(socket.send(QStringLiteral("lost")), qlonglong(0));
        QCOMPARE(socket.sendTextMessage(QStringLiteral("lost")), qlonglong(0));
        QCOMPARE(socket.sendBinaryMessage("lost"), qlonglong(0));
        socket.close();
        QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
    }

    void aServerThatClosesIsNoticedAndCanBeReachedAgain()
    {
        Server server;
        WebSocket socket;
        socket.setUrl(server.url());
        for (int round = 1; round <= 3; ++round) {
            socket.open();
            QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
            QTRY_COMPARE_WITH_TIMEOUT(server.requests.size(), round, patience);
            server.client->close(QWebSocketProtocol::CloseCodeGoingAway, QStringLiteral("later"));
            QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, patience);
            QCOMPARE(socket.closeCode(), QWebSocketProtocol::CloseCodeGoingAway);
            QCOMPARE(socket.closeReason(), QStringLiteral("later"));
        }
    }

    void aServerThatDropsTheLineIsNoticed()
    {
        RawServer server(rightAnswer);
        WebSocket socket;
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        server.peer->abort();
        QTRY_COMPARE_WITH_TIMEOUT(socket.state(), QAbstractSocket::UnconnectedState, patience);
    }

    void aServerThatLiesIsNotConnectedTo_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::newRow("wrong key") << QByteArray(rightAnswer).replace("KEY", "AAAAAAAAAAAAAAAAAAAAAAAAAAA=");
        QTest::newRow("no key") << QByteArray(rightAnswer).replace("Sec-WebSocket-Accept: KEY\r\n", "");
        QTest::newRow("a page") << QByteArray("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nhi");
        QTest::newRow("refused") << QByteArray("HTTP/1.1 403 Forbidden\r\n\r\n");
        QTest::newRow("no protocol at all") << QByteArray("\xff\xff\xff\xff\r\n\r\n\r\n");
    }
    void aServerThatLiesIsNotConnectedTo()
    {
        QFETCH(QByteArray, answer);
        RawServer server(answer);
        WebSocket socket;
        QSignalSpy errors(&socket, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error));
        QSignalSpy connections(&socket, &QWebSocket::connected);
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(errors.count() > 0, patience);
        QTest::qWait(50);
        QCOMPARE(connections.count(), 0);
        QVERIFY(!socket.isConnected());
        QVERIFY(!socket.property("errorString").toString().isEmpty());
    }

    void framesThatBreakTheRulesEndTheConnection_data()
    {
        QTest::addColumn<QByteArray>("wire");
        QTest::newRow("reserved bits") << frame(0xF1, "x");
        QTest::newRow("unknown kind") << frame(0x83, "x");
        QTest::newRow("continuation of nothing") << frame(0x80, "x");
        QTest::newRow("text that is no UTF-8") << frame(0x81, "\xff\xff");
        QTest::newRow("length beyond all memory")
            << QByteArray("\x82\x7f", 2) + QByteArray("\x7f\xff\xff\xff\xff\xff\xff\xff", 8);
    }
    void framesThatBreakTheRulesEndTheConnection()
    {
        QFETCH(QByteArray, wire);
        RawServer server(rightAnswer);
        WebSocket socket;
        QSignalSpy texts(&socket, &QWebSocket::textMessageReceived);
        socket.setUrl(server.url());
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(socket.isConnected(), patience);
        server.peer->write(wire);
        QTRY_VERIFY_WITH_TIMEOUT(!socket.isConnected(), patience);
        QCOMPARE(texts.count(), 0);
    }

    void aServerThatStallsLeavesTheWindowFree()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        auto *socket = new WebSocket;
        socket->setUrl(QUrl(QStringLiteral("ws://127.0.0.1:%1").arg(server.serverPort())));
        QElapsedTimer timer;
        timer.start();
        socket->open();
        QVERIFY(timer.elapsed() < 5000);
        QTest::qWait(300);
        QCOMPARE(socket->state(), QAbstractSocket::ConnectingState);
        QVERIFY(!socket->isConnected());
        // Given up, it can be opened again, and it can be deleted while it waits.
        socket->abort();
        QTRY_COMPARE_WITH_TIMEOUT(socket->state(), QAbstractSocket::UnconnectedState, patience);
        socket->open();
        QCOMPARE(socket->state(), QAbstractSocket::ConnectingState);
        delete socket;
    }

    void aPortThatRefusesIsAnError()
    {
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QUrl url(QStringLiteral("ws://127.0.0.1:%1").arg(server.serverPort()));
        server.close();
        WebSocket socket;
        QSignalSpy errors(&socket, QOverload<QAbstractSocket::SocketError>::of(&QWebSocket::error));
        socket.setUrl(url);
        socket.open();
        QTRY_VERIFY_WITH_TIMEOUT(errors.count() > 0, patience);
        QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
        QVERIFY(!socket.property("errorString").toString().isEmpty());
    }

    void aSocketThatDiesTellsNobody()
    {
        Server server;
        auto *socket = new WebSocket;
        socket->setUrl(server.url());
        socket->open();
        QTRY_VERIFY_WITH_TIMEOUT(socket->isConnected() && server.client, patience);
        QSignalSpy changes(socket, &WebSocket::isConnectedChanged);
        QSignalSpy states(socket, &QWebSocket::stateChanged);
        QSignalSpy closed(server.client, &QWebSocket::disconnected);
        delete socket;
        QCOMPARE(changes.count(), 0);
        QCOMPARE(states.count(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(closed.count(), 1, patience);
    }
};

QTEST_GUILESS_MAIN(TestWebSocket)
#include "tst_websocket.moc"
