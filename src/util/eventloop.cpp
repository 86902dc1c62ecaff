#include "eventloop.h"

EventLoop::EventLoop(bool deleteOnQuit, QObject *parent)
    : QEventLoop(parent)
    , deletesOnQuit(deleteOnQuit)
{}

bool EventLoop::start(QEventLoop::ProcessEventsFlags flags)
{
    return exec(flags) != 0;
}

bool EventLoop::start()
{
    return start(QEventLoop::AllEvents);
}

void EventLoop::quit()
{
    QEventLoop::quit();
    if (deletesOnQuit)
        deleteLater();
}

void EventLoop::setDeleteOnQuit(bool deleteOnQuit)
{
    if (deletesOnQuit == deleteOnQuit)
        return;
    deletesOnQuit = deleteOnQuit;
    Q_EMIT deleteOnQuitChanged(deleteOnQuit);
}

EventLoopCreator::EventLoopCreator(QObject *parent)
    : QObject(parent)
{}

EventLoop *EventLoopCreator::create(bool deleteOnQuit)
{
    return new EventLoop(deleteOnQuit);
}

EventLoop *EventLoopCreator::create()
{
    return create(true);
}
