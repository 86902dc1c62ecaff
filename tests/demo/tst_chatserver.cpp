#include "chatserver.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>
#include <QWebSocket>

#include <memory>

namespace {

constexpr int patience = 10000;

/// One connection with everything that it has received.
class Client
{
public:
    explicit Client(const QUrl &url)
    {
        QObject::connect(&socket, &QWebSocket::textMessageReceived, &socket, [this](const QString &frame) {
            frames.append(QJsonDocument::fromJson(frame.toUtf8()).object());
        });
        socket.open(url);
    }

    [[nodiscard]] bool isOpen() const { return socket.state() == QAbstractSocket::ConnectedState; }
    void send(const QByteArray &frame) { socket.sendTextMessage(QString::fromUtf8(frame)); }
    void close() { socket.close(); }

    [[nodiscard]] QList<QJsonObject> received(const QString &type) const
    {
        QList<QJsonObject> found;
        for (const QJsonObject &frame : frames) {
            if (frame.value(QLatin1String("type")).toString() == type)
                found.append(frame);
        }
        return found;
    }

    [[nodiscard]] QJsonArray lastOnline() const
    {
        const QList<QJsonObject> online = received(QStringLiteral("online"));
        return online.isEmpty() ? QJsonArray() : online.last().value(QLatin1String("users")).toArray();
    }

private:
    QWebSocket socket;
    QList<QJsonObject> frames;
};

} // namespace

class ChatServerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void everybodyHearsWhoIsThere();
    void aMessageReachesTheOthersAndIsAccepted();
    void piecesOfAFileAreAnsweredByThemselves();
    void strangersNeitherSendNorReceive();
    void framesWithoutSenseAreDropped_data();
    void framesWithoutSenseAreDropped();

private:
    void join(Client &client, int user);

    std::unique_ptr<ChatServer> server;
};

void ChatServerTest::init()
{
    server = std::make_unique<ChatServer>();
    QVERIFY(server->url().isEmpty());
    QVERIFY(server->listen());
}

void ChatServerTest::cleanup()
{
    server.reset();
}

void ChatServerTest::join(Client &client, int user)
{
    QTRY_VERIFY_WITH_TIMEOUT(client.isOpen(), patience);
    client.send(R"({"type":"hello","user":)" + QByteArray::number(user) + '}');
    QTRY_VERIFY_WITH_TIMEOUT(client.lastOnline().contains(user), patience);
}

void ChatServerTest::everybodyHearsWhoIsThere()
{
    Client alice(server->url());
    join(alice, 1);
    QCOMPARE(alice.lastOnline(), QJsonArray({1}));
    {
        Client bob(server->url());
        join(bob, 2);
        QTRY_COMPARE_WITH_TIMEOUT(alice.lastOnline(), QJsonArray({1, 2}), patience);
    }
    QTRY_COMPARE_WITH_TIMEOUT(alice.lastOnline(), QJsonArray({1}), patience);
}

void ChatServerTest::aMessageReachesTheOthersAndIsAccepted()
{
    Client alice(server->url());
    join(alice, 1);
    Client bob(server->url());
    join(bob, 2);
    const double before = static_cast<double>(QDateTime::currentMSecsSinceEpoch());

    // The service knows who is speaking; what the frame claims does not count.
    alice.send(
        R"({"type":"message","id":"a-1","conversation":"1-2","text":"Hi","author":2,"blocks":[{"start":0}]})");
    QTRY_COMPARE_WITH_TIMEOUT(bob.received(QStringLiteral("message")).size(), 1, patience);
    const QJsonObject message = bob.received(QStringLiteral("message")).first();
    QCOMPARE(message.value(QLatin1String("text")).toString(), QStringLiteral("Hi"));
    QCOMPARE(message.value(QLatin1String("conversation")).toString(), QStringLiteral("1-2"));
    QCOMPARE(message.value(QLatin1String("author")).toInt(), 1);
    QCOMPARE(message.value(QLatin1String("blocks")).toArray().size(), 1);
    QVERIFY(message.value(QLatin1String("time")).toDouble() >= before);

    QTRY_COMPARE_WITH_TIMEOUT(alice.received(QStringLiteral("accepted")).size(), 1, patience);
    const QJsonObject accepted = alice.received(QStringLiteral("accepted")).first();
    QCOMPARE(accepted.value(QLatin1String("id")).toString(), QStringLiteral("a-1"));
    QCOMPARE(accepted.value(QLatin1String("time")), message.value(QLatin1String("time")));
    QVERIFY(alice.received(QStringLiteral("message")).isEmpty());
    QVERIFY(bob.received(QStringLiteral("accepted")).isEmpty());
}

void ChatServerTest::piecesOfAFileAreAnsweredByThemselves()
{
    Client alice(server->url());
    join(alice, 1);
    Client bob(server->url());
    join(bob, 2);
    alice.send(R"({"type":"piece","id":"a-1","index":3})");
    QTRY_COMPARE_WITH_TIMEOUT(alice.received(QStringLiteral("piece")).size(), 1, patience);
    QCOMPARE(alice.received(QStringLiteral("piece")).first().value(QLatin1String("index")).toInt(), 3);
    // The service answers in order: what it had for Bob would be there by now.
    alice.send(R"({"type":"message","id":"a-1","text":"Hi"})");
    QTRY_COMPARE_WITH_TIMEOUT(bob.received(QStringLiteral("message")).size(), 1, patience);
    QVERIFY(bob.received(QStringLiteral("piece")).isEmpty());
}

void ChatServerTest::strangersNeitherSendNorReceive()
{
    Client alice(server->url());
    join(alice, 1);
    Client stranger(server->url());
    QTRY_VERIFY_WITH_TIMEOUT(stranger.isOpen(), patience);
    stranger.send(R"({"type":"message","id":"s-1","text":"Buy!"})");
    stranger.send(R"({"type":"piece","id":"s-1","index":0})");
    stranger.send(R"({"type":"hello","user":0})");
    stranger.send(R"({"type":"message","id":"s-2","text":"Buy!"})");
    alice.send(R"({"type":"message","id":"a-1","text":"Secret"})");
    QTRY_COMPARE_WITH_TIMEOUT(alice.received(QStringLiteral("accepted")).size(), 1, patience);
    // Frames of one connection keep their order: once it is greeted, all before has been dealt with.
    join(stranger, 7);
    QVERIFY(alice.received(QStringLiteral("message")).isEmpty());
    QVERIFY(stranger.received(QStringLiteral("message")).isEmpty());
    QVERIFY(stranger.received(QStringLiteral("accepted")).isEmpty());
    QVERIFY(stranger.received(QStringLiteral("piece")).isEmpty());
}

void ChatServerTest::framesWithoutSenseAreDropped_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("hello");
    QTest::newRow("an array") << QByteArray("[1,2]");
    QTest::newRow("no type") << QByteArray(R"({"id":"1"})");
    QTest::newRow("unknown type") << QByteArray(R"({"type":"dance","id":"1"})");
    QTest::newRow("message without id") << QByteArray(R"({"type":"message","text":"x"})");
    QTest::newRow("message with a number as id") << QByteArray(R"({"type":"message","id":5})");
}

void ChatServerTest::framesWithoutSenseAreDropped()
{
    QFETCH(QByteArray, frame);
    Client alice(server->url());
    join(alice, 1);
    Client bob(server->url());
    join(bob, 2);
    alice.send(frame);
    alice.send(R"({"type":"message","id":"good","text":"x"})");
    QTRY_COMPARE_WITH_TIMEOUT(bob.received(QStringLiteral("message")).size(), 1, patience);
    QCOMPARE(bob.received(QStringLiteral("message")).first().value(QLatin1String("id")).toString(),
             QStringLiteral("good"));
    QTRY_COMPARE_WITH_TIMEOUT(alice.received(QStringLiteral("accepted")).size(), 1, patience);
}

QTEST_GUILESS_MAIN(ChatServerTest)
#include "tst_chatserver.moc"
