#include "websocket.h"

#include <QDebug>

WebSocket::WebSocket(QObject *parent)
    : QWebSocket(QString(), QWebSocketProtocol::Version13, parent)
{
    connect(this, &QWebSocket::stateChanged, this, &WebSocket::isConnectedChanged);
}

WebSocket::~WebSocket()
{
    // The base closes an open connection and tells of it, when scripts would find only half of this object.
    blockSignals(true);
}

bool WebSocket::isConnected() const
{
    return state() == QAbstractSocket::ConnectedState;
}

void WebSocket::setUrl(const QUrl &url)
{
    if (urlValue == url)
        return;
    urlValue = url;
    request.setUrl(url);
    Q_EMIT urlChanged(url);
}

void WebSocket::setHeader(const QVariantMap &header)
{
    if (headerValue == header)
        return;
    headerValue = header;
    for (auto entry = header.cbegin(); entry != header.cend(); ++entry) {
        qDebug() << "set header:" << entry.key() << entry.value();
        request.setRawHeader(entry.key().toLocal8Bit(), entry.value().toByteArray());
    }
    Q_EMIT headerChanged(header);
}

void WebSocket::open()
{
    qDebug() << "websocket open" << urlValue;
    QWebSocket::open(request);
}

qlonglong WebSocket::send(const QString &message)
{
    return QWebSocket::sendTextMessage(message);
}

qlonglong WebSocket::sendTextMessage(const QString &message)
{
    return QWebSocket::sendTextMessage(message);
}

qlonglong WebSocket::sendBinaryMessage(const QByteArray &data)
{
    return QWebSocket::sendBinaryMessage(data);
}
