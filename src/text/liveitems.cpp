#include "liveitems.h"

#include <QHash>
#include <QReadWriteLock>

namespace {

QHash<quint64, DrawableText *> table;
QReadWriteLock tableLock;
quint64 lastId = 0;

} // namespace

namespace liveitems {

quint64 nextId()
{
    return ++lastId;
}

void add(quint64 id, DrawableText *item)
{
    const QWriteLocker locker(&tableLock);
    table.insert(id, item);
}

void remove(quint64 id)
{
    const QWriteLocker locker(&tableLock);
    table.remove(id);
}

QReadWriteLock *lock()
{
    return &tableLock;
}

bool isItemAlive(quint64 id)
{
    return table.contains(id);
}

int count()
{
    const QReadLocker locker(&tableLock);
    return table.size();
}

} // namespace liveitems
