#pragma once

#include <QHash>
#include <QJsonObject>
#include <QObject>
#include <QUrl>
#include <QWebSocketServer>

class QWebSocket;

/// The chat service of the demo: it listens on the loopback interface and passes messages on.
///
/// Frames are JSON objects with a "type". From a client: "hello" with "user" (a positive number) comes first,
/// then "message" with "id" and "conversation"; its content ("kind", "text", "blocks", "attachment") is
/// passed on as it is. To a client: "online" with the "users" that are there, "accepted" with the "id" of its
/// own message and the service's "time", and "message", which adds "author" and "time" to what another client
/// sent. A "piece" of a file is answered by itself. Frames that make no sense are dropped.
class ChatServer : public QObject
{
    Q_OBJECT

public:
    explicit ChatServer(QObject *parent = nullptr);
    ~ChatServer() override;

    /// Starts on a free port. False when the system refuses.
    [[nodiscard]] bool listen();
    /// Where clients connect; empty before listen().
    [[nodiscard]] QUrl url() const;

private:
    void accept();
    void receive(QWebSocket *from, const QString &frame);
    void greet(QWebSocket *from, const QJsonObject &hello);
    void passOn(QWebSocket *from, const QJsonObject &message);
    void forget(QWebSocket *socket);
    void announce();

    QWebSocketServer server;
    QHash<QWebSocket *, int> users; ///< user of each connection, 0 until it has said hello
};
