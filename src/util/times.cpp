#include "times.h"

#include <QCoreApplication>

namespace imutil {
namespace {

constexpr qint64 sixDays = 518400000;

/// The same day length is assumed on the days when clocks change: the list may then turn an hour off.
[[nodiscard]] qint64 startOfToday(const QDateTime &now)
{
    return now.toMSecsSinceEpoch() - now.time().msecsSinceStartOfDay();
}

[[nodiscard]] QString twoDigits(int value)
{
    return value < 10 ? QLatin1Char('0') + QString::number(value) : QString::number(value);
}

} // namespace

QString formattedTime(qlonglong msecs, const QString &format)
{
    return QDateTime::fromMSecsSinceEpoch(msecs).toString(format);
}

QString durationFromMSecs(qlonglong msecs, bool showMSecs)
{
    const qlonglong allSeconds = msecs / 1000;
    const qlonglong rest = msecs - allSeconds * 1000;
    const qlonglong hours = allSeconds / 3600;
    const qlonglong minutes = (allSeconds - hours * 3600) / 60;
    const qlonglong seconds = allSeconds - hours * 3600 - minutes * 60;
    if (hours < 1) {
        return showMSecs ? QString::asprintf("%02lld:%02lld.%03lld", minutes, seconds, rest)
                         : QString::asprintf("%02lld:%02lld", minutes, seconds);
    }
    // Two digits at least, not three: players that show hours are laid out for the shorter text.
    return showMSecs ? QString::asprintf("%02lld:%02lld:%02lld.%02lld", hours, minutes, seconds, rest)
                     : QString::asprintf("%02lld:%02lld:%02lld", hours, minutes, seconds);
}

QString timeOfDay(int seconds, const QString &format)
{
    return QTime(0, 0, 0, 0).addSecs(seconds).toString(format);
}

QString durationFromSeconds(int seconds)
{
    if (seconds == 0)
        return QStringLiteral("-:-");
    const int hours = seconds / 3600;
    const QString rest = twoDigits(seconds % 3600 / 60) + QLatin1Char(':') + twoDigits(seconds % 60);
    return hours == 0 ? rest : twoDigits(hours) + QLatin1Char(':') + rest;
}

QString listTime(qlonglong msecs, const QDateTime &now)
{
    if (msecs == 0)
        return QStringLiteral("");
    const qint64 todayStart = startOfToday(now);
    const QDateTime time = QDateTime::fromMSecsSinceEpoch(msecs);
    if (msecs >= todayStart)
        return time.toString(QStringLiteral("HH:mm"));
    if (msecs >= todayStart - sixDays)
        return time.toString(QStringLiteral("ddd"));
    if (time.date().year() == now.date().year())
        return time.toString(QStringLiteral("MM/dd"));
    if (time.date().year() < now.date().year())
        return time.toString(QStringLiteral("MM/dd/yyyy"));
    return QStringLiteral("");
}

QString dayHeading(qlonglong msecs, const QDateTime &now)
{
    if (msecs == 0)
        return QStringLiteral("");
    if (msecs >= startOfToday(now))
        return QCoreApplication::translate("ImUtil", "Today");
    return QDateTime::fromMSecsSinceEpoch(msecs).toString(QStringLiteral("MM/dd/yyyy ddd"));
}

bool isToday(qlonglong msecs)
{
    return QDateTime::fromMSecsSinceEpoch(msecs).date() == QDate::currentDate();
}

} // namespace imutil
