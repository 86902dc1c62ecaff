#pragma once

#include <QDateTime>
#include <QString>

/// Times as the chat list shows them. A time is given in milliseconds since the epoch and shown as local
/// time.
namespace imutil {

/// The time in a format of `QDateTime::toString()`.
[[nodiscard]] QString formattedTime(qlonglong msecs, const QString &format);

/// A duration in milliseconds: "mm:ss", with milliseconds "mm:ss.zzz"; from one hour on "hh:mm:ss", with
/// milliseconds "hh:mm:ss.zz", where they have two digits at least.
[[nodiscard]] QString durationFromMSecs(qlonglong msecs, bool showMSecs);

/// A time of day, `seconds` after midnight, in a format of `QTime::toString()`. It wraps at the end of the
/// day.
[[nodiscard]] QString timeOfDay(int seconds, const QString &format);

/// A duration in seconds: "mm:ss", from one hour on "hh:mm:ss", and "-:-" for none.
[[nodiscard]] QString durationFromSeconds(int seconds);

/// The time of a conversation's last message, as short as it can be told from `now`: the time for today and
/// later, the day of the week for the six days before, then the day of this year, then the day with its year.
/// Empty for 0, which stands for no message.
[[nodiscard]] QString listTime(qlonglong msecs, const QDateTime &now);

/// The heading above a day's messages: the translated "Today" from today on, else the day. Empty for 0.
[[nodiscard]] QString dayHeading(qlonglong msecs, const QDateTime &now);

/// Whether the time falls on the current local day.
[[nodiscard]] bool isToday(qlonglong msecs);

} // namespace imutil
