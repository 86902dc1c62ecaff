#pragma once

#include <QNetworkRequest>
#include <QUrl>
#include <QVariantMap>
#include <QWebSocket>

/// A web socket for scripts, with the headers of its handshake. Signals and everything else are those of
/// `QWebSocket`.
class WebSocket : public QWebSocket
{
    Q_OBJECT
    /// Where `open()` connects to.
    Q_PROPERTY(QUrl url READ url WRITE setUrl NOTIFY urlChanged)
    /// Headers of the handshake, from name to value. A name that is dropped from the map is still sent: the
    /// request only gains and overwrites headers. Seen by the next `open()`.
    Q_PROPERTY(QVariantMap header READ header WRITE setHeader NOTIFY headerChanged)
    /// What went wrong last, in the user's language.
    Q_PROPERTY(QString errorString READ errorString)
    /// Whether messages can be sent. Notifies at every change of `state`.
    Q_PROPERTY(bool isConnected READ isConnected NOTIFY isConnectedChanged)
    /// The state of the connection: 0 unconnected, 1 looking the host up, 2 connecting, 3 connected, 6
    /// closing.
    Q_PROPERTY(QAbstractSocket::SocketState state READ state)

public:
    explicit WebSocket(QObject *parent = nullptr);
    ~WebSocket() override;

    [[nodiscard]] QUrl url() const { return urlValue; }
    [[nodiscard]] QVariantMap header() const { return headerValue; }
    [[nodiscard]] bool isConnected() const;

public Q_SLOTS:
    void setUrl(const QUrl &url);
    void setHeader(const QVariantMap &header);
    /// Connects to `url` with the headers of `header`.
    void open();
    /// The same as `sendTextMessage()`.
    qlonglong send(const QString &message);
    /// Sends a text and returns how many bytes of it were taken.
    qlonglong sendTextMessage(const QString &message);
    /// Sends bytes and returns how many were taken.
    qlonglong sendBinaryMessage(const QByteArray &data);

Q_SIGNALS:
    void urlChanged(const QUrl &url);
    void headerChanged(const QVariantMap &header);
    void isConnectedChanged();

private:
    QNetworkRequest request;
    QUrl urlValue;
    QVariantMap headerValue;
};
