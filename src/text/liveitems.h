#pragma once

#include <QtGlobal>

class DrawableText;
class QReadWriteLock;

/// The table of living `DrawableText` items. A snapshot's back pointer to its item may be followed only while
/// the lock is held for reading and the table holds the item's id: the item leaves the table, under the write
/// lock, before anything of it is torn down.
namespace liveitems {

/// Takes the next id, never used before; GUI thread only. The first item has id 1.
[[nodiscard]] quint64 nextId();

void add(quint64 id, DrawableText *item);
void remove(quint64 id);

/// Guards the table, and through it every back pointer.
[[nodiscard]] QReadWriteLock *lock();

/// Only under the lock.
[[nodiscard]] bool isItemAlive(quint64 id);

/// Number of items in the table; takes the lock. For tests that look for leaks.
[[nodiscard]] int count();

} // namespace liveitems
