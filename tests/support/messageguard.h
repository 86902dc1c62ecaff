#pragma once

#include <QRegularExpression>
#include <QString>
#include <QStringList>

/// Catches the warnings that are logged while it lives, from any thread, so that a test can fail on them.
///
/// A test class makes one in `init()` and says `QCOMPARE(guard->unexpected(), QStringList())` in `cleanup()`.
/// Messages still reach the handler that was there before. One guard at a time.
class MessageGuard
{
public:
    MessageGuard();
    ~MessageGuard();
    MessageGuard(const MessageGuard &) = delete;
    MessageGuard &operator=(const MessageGuard &) = delete;

    /// Warnings that match `pattern` are expected from now on.
    void allow(const QString &pattern);

    /// Warnings and critical messages so far that nobody allowed.
    [[nodiscard]] QStringList unexpected() const;
};
