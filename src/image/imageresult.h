#pragma once

#include <QFutureWatcher>
#include <QImage>

/// The picture of a load that has ended; null for one that runs, was canceled or never began. Asking the
/// watcher itself would wait for a worker, on the thread that paints, or read a result that isn't there.
[[nodiscard]] inline QImage finishedImage(const QFutureWatcher<QImage> &watcher)
{
    return !watcher.isCanceled() && watcher.isFinished() ? watcher.result() : QImage();
}

/// Makes room for the next load. A worker has no points at which it could stop, so one that runs is waited
/// for; one that still queues is dropped at once.
inline void stopLoading(QFutureWatcher<QImage> &watcher)
{
    if (!watcher.isRunning())
        return;
    watcher.cancel();
    watcher.waitForFinished();
}
