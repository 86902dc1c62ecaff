#include "typecensus.h"

#include <QCoreApplication>
#include <QThread>
#include <QUrl>

#include <private/qhooks_p.h>
#include <private/qqmlcontext_p.h>
#include <private/qqmldata_p.h>

namespace {

TypeCensus *current = nullptr;
constexpr int interval = 20;

} // namespace

TypeCensus::TypeCensus(QObject *parent)
    : QObject(parent)
{
    current = this;
    qtHookData[QHooks::AddQObject] = reinterpret_cast<quintptr>(&TypeCensus::added);
    qtHookData[QHooks::RemoveQObject] = reinterpret_cast<quintptr>(&TypeCensus::removed);
    connect(&timer, &QTimer::timeout, this, &TypeCensus::count);
    timer.start(interval);
}

TypeCensus::~TypeCensus()
{
    qtHookData[QHooks::AddQObject] = 0;
    qtHookData[QHooks::RemoveQObject] = 0;
    current = nullptr;
}

// What an object is, it only becomes after this.
void TypeCensus::added(QObject *object)
{
    if (QThread::currentThread() != qApp->thread())
        return;
    const QMutexLocker locker(&current->mutex);
    current->newcomers.insert(object);
}

void TypeCensus::removed(QObject *object)
{
    const QMutexLocker locker(&current->mutex);
    current->newcomers.remove(object);
}

void TypeCensus::count()
{
    const QMutexLocker locker(&mutex);
    for (QObject *object : qAsConst(newcomers)) {
        // Whatever has moved to another thread may be on its way out there.
        if (object->thread() != thread())
            continue;
        for (const QMetaObject *type = object->metaObject(); type; type = type->superClass())
            seen.insert(QString::fromLatin1(type->className()));
        const QQmlData *data = QQmlData::get(object);
        for (QQmlContextData *context = data ? data->context : nullptr; context;
             context = context->linkedContext)
            seen.insert(context->url().toString());
    }
    newcomers.clear();
}

QStringList TypeCensus::missing(const QStringList &wanted) const
{
    QStringList names;
    for (const QString &name : wanted) {
        if (!seen.contains(name))
            names.append(name);
    }
    return names;
}
