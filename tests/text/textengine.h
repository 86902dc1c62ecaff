#pragma once

// What the tests of the text engine share.

#include "text/drawabletext.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QMutex>
#include <QQmlParserStatus>
#include <QStringList>

namespace textengine {

inline const QChar collapsedEmoji(0xEEEE);
inline const QChar collapsedTab(0xEEEF);

inline QString grinning()
{
    return QString::fromUcs4(U"\U0001F600", 1); // two units
}

inline QString family()
{
    return QString::fromUcs4(U"\U0001F468\u200D\U0001F469\u200D\U0001F467\u200D\U0001F466",
                             7); // eleven units
}

inline QString thumbsUpMediumTone()
{
    return QString::fromUcs4(U"\U0001F44D\U0001F3FD", 2); // four units
}

/// An in-band user block of any JSON text.
inline QString rawBlock(const QString &json)
{
    return QChar(0x0001) + json + QChar(0x0002);
}

/// An in-band user block. An invalid `type` leaves the key out.
inline QString inBandBlock(const QString &displayName, const QJsonValue &data, const QJsonValue &type)
{
    QJsonObject object{{QStringLiteral("displayName"), displayName}, {QStringLiteral("data"), data}};
    if (!type.isUndefined())
        object.insert(QStringLiteral("type"), type);
    return rawBlock(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
}

inline UserTextBlock block(int start, int length, int type, const QVariant &data)
{
    UserTextBlock result;
    result.start = start;
    result.length = length;
    result.type = type;
    result.data = data;
    return result;
}

inline TextSpan span(int from, int to, int kind, const QVariant &data = QVariant())
{
    TextSpan result;
    result.from = from;
    result.to = to;
    result.kind = kind;
    result.data = data;
    return result;
}

/// Readable form of spans, so that a failing comparison says what differs.
inline QString describe(const QVector<TextSpan> &spans)
{
    QStringList parts;
    for (const TextSpan &entry : spans) {
        parts.append(QStringLiteral("%1..%2 kind %3 data %4")
                         .arg(entry.from)
                         .arg(entry.to)
                         .arg(entry.kind)
                         .arg(entry.data.isValid() ? entry.data.toString() : QStringLiteral("none")));
    }
    return parts.join(QStringLiteral("; "));
}

/// The engine as QML drives it: an item that is not complete until `complete()`.
inline QQmlParserStatus &parserStatus(DrawableText &item)
{
    return item;
}

/// Collects what is logged while it lives. Safe with workers that log.
class LogCapture
{
public:
    LogCapture()
    {
        const QMutexLocker locker(&mutex());
        lines().clear();
        previous() = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &text) {
            const QMutexLocker inner(&mutex());
            lines().append(text);
        });
    }
    ~LogCapture() { qInstallMessageHandler(previous()); }
    LogCapture(const LogCapture &) = delete;
    LogCapture &operator=(const LogCapture &) = delete;

    [[nodiscard]] QStringList messages() const
    {
        const QMutexLocker locker(&mutex());
        return lines();
    }
    [[nodiscard]] int count(const QString &text) const { return messages().count(text); }

private:
    static QMutex &mutex()
    {
        static QMutex instance;
        return instance;
    }
    static QStringList &lines()
    {
        static QStringList instance;
        return instance;
    }
    static QtMessageHandler &previous()
    {
        static QtMessageHandler instance = nullptr;
        return instance;
    }
};

} // namespace textengine
