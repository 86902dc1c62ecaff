#pragma once

#include <QEventLoop>

/// Lets a script wait: `start()` returns when `quit()` or `exit()` was called, and everything else goes on
/// meanwhile.
class EventLoop : public QEventLoop
{
    Q_OBJECT
    /// Whether `quit()` also deletes the loop, once control is back in the loop outside.
    Q_PROPERTY(bool deleteOnQuit READ deleteOnQuit WRITE setDeleteOnQuit NOTIFY deleteOnQuitChanged)

public:
    explicit EventLoop(bool deleteOnQuit = false, QObject *parent = nullptr);

    [[nodiscard]] bool deleteOnQuit() const { return deletesOnQuit; }

public Q_SLOTS:
    /// Waits, handling the events that `flags` leave; true if the loop ended with a code other than 0, which
    /// `quit()` never does.
    bool start(QEventLoop::ProcessEventsFlags flags);
    /// Waits, handling all events.
    bool start();
    /// Ends the wait.
    void quit();
    void setDeleteOnQuit(bool deleteOnQuit);

Q_SIGNALS:
    void deleteOnQuitChanged(bool deleteOnQuit);

private:
    bool deletesOnQuit = false;
};

/// Makes event loops for scripts.
class EventLoopCreator : public QObject
{
    Q_OBJECT

public:
    explicit EventLoopCreator(QObject *parent = nullptr);

public Q_SLOTS:
    /// A new loop without a parent: it deletes itself on `quit()`, or the caller owns it.
    EventLoop *create(bool deleteOnQuit);
    /// A loop that deletes itself on `quit()`.
    EventLoop *create();
};
