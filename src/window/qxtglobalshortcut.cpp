#include "qxtglobalshortcut.h"

#include "platform/hotkeys.h"

#include <QAbstractEventDispatcher>
#include <QAbstractNativeEventFilter>
#include <QCoreApplication>
#include <QDebug>
#include <QHash>

/// The private half of `Owner`.
template <typename Owner>
class QxtPrivate
{
public:
    explicit QxtPrivate(Owner *owner)
        : owner(owner)
    {}

    Owner *const owner;
};

class QxtGlobalShortcutPrivate : public QxtPrivate<QxtGlobalShortcut>, public QAbstractNativeEventFilter
{
public:
    explicit QxtGlobalShortcutPrivate(QxtGlobalShortcut *owner);
    ~QxtGlobalShortcutPrivate() override;

    bool set(const QKeySequence &sequence);
    void unset();
    [[nodiscard]] QKeySequence sequence() const { return QKeySequence(key | modifiers); }
    [[nodiscard]] bool isSet() const { return key != 0; }

    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

    bool enabled = true;

private:
    int key = 0;       ///< Qt key without modifiers
    int modifiers = 0; ///< of Qt::KeyboardModifiers
};

namespace {

constexpr int modifierBits = Qt::SHIFT | Qt::CTRL | Qt::ALT | Qt::META;

/// Who has which hot key. GUI thread only.
QHash<hotkeys::NativeHotKey, QxtGlobalShortcut *> owners;
/// One filter serves all; it is the first object's, and goes with the last one's end.
QxtGlobalShortcutPrivate *installedFilter = nullptr;
QVector<QxtGlobalShortcutPrivate *> living;

void installFilter(QxtGlobalShortcutPrivate *filter)
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    if (!dispatcher)
        return;
    if (installedFilter)
        dispatcher->removeNativeEventFilter(installedFilter);
    if (filter)
        dispatcher->installNativeEventFilter(filter);
    installedFilter = filter;
}

} // namespace

QxtGlobalShortcutPrivate::QxtGlobalShortcutPrivate(QxtGlobalShortcut *owner)
    : QxtPrivate(owner)
{
    living.append(this);
    if (living.size() == 1)
        installFilter(this);
}

QxtGlobalShortcutPrivate::~QxtGlobalShortcutPrivate()
{
    living.removeOne(this);
    // Handed on, or the hot keys of the objects that live on would be deaf.
    if (installedFilter == this)
        installFilter(living.isEmpty() ? nullptr : living.constFirst());
}

bool QxtGlobalShortcutPrivate::set(const QKeySequence &sequence)
{
    if (isSet())
        unset();
    const int code = sequence.isEmpty() ? 0 : sequence[0];
    key = code & ~modifierBits;
    modifiers = code & modifierBits;

    const hotkeys::NativeHotKey native = hotkeys::toNative(key, modifiers);
    // A window system may let the same program take a hot key twice; the first owner keeps it everywhere.
    const bool registered = !owners.contains(native) && hotkeys::add(native);
    if (registered)
        owners.insert(native, owner);
    else
        qWarning() << "QxtGlobalShortcut failed to register:"
                   << sequence.toString(QKeySequence::PortableText);
    return registered;
}

void QxtGlobalShortcutPrivate::unset()
{
    const hotkeys::NativeHotKey native = hotkeys::toNative(key, modifiers);
    if (owners.value(native) == owner && hotkeys::remove(native)) {
        owners.remove(native);
    } else {
        qWarning() << "QxtGlobalShortcut failed to unregister:"
                   << sequence().toString(QKeySequence::PortableText);
    }
    key = 0;
    modifiers = 0;
}

bool QxtGlobalShortcutPrivate::nativeEventFilter(const QByteArray &eventType, void *message, long *)
{
    const std::optional<hotkeys::NativeHotKey> pressed = hotkeys::pressedHotKey(eventType, message);
    if (pressed) {
        QxtGlobalShortcut *shortcut = owners.value(*pressed);
        if (shortcut && shortcut->isEnabled())
            Q_EMIT shortcut->activated();
    }
    return false;
}

QxtGlobalShortcut::QxtGlobalShortcut(QObject *parent)
    : QObject(parent)
    , d(new QxtGlobalShortcutPrivate(this))
{}

QxtGlobalShortcut::~QxtGlobalShortcut()
{
    if (d->isSet())
        d->unset();
}

bool QxtGlobalShortcut::isEnabled() const
{
    return d->enabled;
}

void QxtGlobalShortcut::setEnabled(bool enabled)
{
    d->enabled = enabled;
}

void QxtGlobalShortcut::setDisabled(bool disabled)
{
    d->enabled = !disabled;
}

QKeySequence QxtGlobalShortcut::shortcut() const
{
    return d->sequence();
}

bool QxtGlobalShortcut::setShortcut(const QKeySequence &shortcut)
{
    return d->set(shortcut);
}

bool QxtGlobalShortcut::setShortcut(const QString &shortcut)
{
    return d->set(QKeySequence::fromString(shortcut, QKeySequence::NativeText));
}

QString QxtGlobalShortcut::shortcutString()
{
    return shortcut().toString(QKeySequence::PortableText);
}

QString QxtGlobalShortcut::nativeShortcutString()
{
    return shortcut().toString(QKeySequence::NativeText);
}

QString QxtGlobalShortcut::shortcutString(int keys)
{
    return QKeySequence(keys).toString(QKeySequence::NativeText);
}
