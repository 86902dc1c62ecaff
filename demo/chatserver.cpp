#include "chatserver.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QWebSocket>

#include <algorithm>

namespace {

QString frameOf(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

} // namespace

ChatServer::ChatServer(QObject *parent)
    : QObject(parent)
    , server(QStringLiteral("chat"), QWebSocketServer::NonSecureMode)
{
    connect(&server, &QWebSocketServer::newConnection, this, &ChatServer::accept);
}

ChatServer::~ChatServer()
{
    // The server deletes its sockets after this class is gone, so nothing of theirs may arrive here any more.
    const QList<QWebSocket *> sockets = users.keys();
    for (QWebSocket *socket : sockets)
        socket->disconnect(this);
}

bool ChatServer::listen()
{
    return server.listen(QHostAddress::LocalHost);
}

QUrl ChatServer::url() const
{
    return server.isListening() ? server.serverUrl() : QUrl();
}

void ChatServer::accept()
{
    while (QWebSocket *socket = server.nextPendingConnection()) {
        users.insert(socket, 0);
        connect(socket, &QWebSocket::textMessageReceived, this,
                [this, socket](const QString &frame) { receive(socket, frame); });
        connect(socket, &QWebSocket::disconnected, this, [this, socket] { forget(socket); });
    }
}

void ChatServer::receive(QWebSocket *from, const QString &frame)
{
    const QJsonObject object = QJsonDocument::fromJson(frame.toUtf8()).object();
    const QString type = object.value(QLatin1String("type")).toString();
    if (type == QLatin1String("hello"))
        greet(from, object);
    else if (type == QLatin1String("piece") && users.value(from) > 0)
        from->sendTextMessage(frameOf(object));
    else if (type == QLatin1String("message") && users.value(from) > 0)
        passOn(from, object);
}

void ChatServer::greet(QWebSocket *from, const QJsonObject &hello)
{
    const int user = hello.value(QLatin1String("user")).toInt();
    if (user <= 0)
        return;
    users.insert(from, user);
    announce();
}

void ChatServer::passOn(QWebSocket *from, const QJsonObject &message)
{
    const QJsonValue id = message.value(QLatin1String("id"));
    if (!id.isString())
        return;
    const double now = static_cast<double>(QDateTime::currentMSecsSinceEpoch());
    QJsonObject delivered = message;
    delivered.insert(QLatin1String("author"), users.value(from));
    delivered.insert(QLatin1String("time"), now);
    const QString frame = frameOf(delivered);
    for (auto it = users.cbegin(); it != users.cend(); ++it) {
        if (it.key() != from && it.value() > 0)
            it.key()->sendTextMessage(frame);
    }
    from->sendTextMessage(frameOf({{QStringLiteral("type"), QStringLiteral("accepted")},
                                   {QStringLiteral("id"), id},
                                   {QStringLiteral("time"), now}}));
}

void ChatServer::forget(QWebSocket *socket)
{
    users.remove(socket);
    socket->deleteLater();
    announce();
}

void ChatServer::announce()
{
    QList<int> there;
    for (int user : qAsConst(users)) {
        if (user > 0 && !there.contains(user))
            there.append(user);
    }
    std::sort(there.begin(), there.end());
    QJsonArray list;
    for (int user : qAsConst(there))
        list.append(user);
    const QString frame =
        frameOf({{QStringLiteral("type"), QStringLiteral("online")}, {QStringLiteral("users"), list}});
    for (auto it = users.cbegin(); it != users.cend(); ++it) {
        if (it.value() > 0)
            it.key()->sendTextMessage(frame);
    }
}
