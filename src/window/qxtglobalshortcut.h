#pragma once

#include <QKeySequence>
#include <QObject>
#include <QScopedPointer>

class QxtGlobalShortcutPrivate;

/// One hot key that works whatever window has the focus.
class QxtGlobalShortcut : public QObject
{
    Q_OBJECT
    /// Whether `activated()` is emitted. A disabled hot key stays registered: the press is swallowed
    /// system-wide.
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled)
    /// The hot key; of a sequence, its first key. Writing it gives up the old one.
    Q_PROPERTY(QKeySequence shortcut READ shortcut WRITE setShortcut)

public:
    explicit QxtGlobalShortcut(QObject *parent = nullptr);
    ~QxtGlobalShortcut() override;

    [[nodiscard]] bool isEnabled() const;
    [[nodiscard]] QKeySequence shortcut() const;
    /// False, with a warning, when the system refuses the hot key, for instance because another program has
    /// it.
    bool setShortcut(const QKeySequence &shortcut);

public Q_SLOTS:
    /// Lets `activated()` be emitted, or not.
    void setEnabled(bool enabled = true);
    /// The opposite of `setEnabled()`.
    void setDisabled(bool disabled = true);
    /// The same from the text of a sequence as the user's platform writes it.
    bool setShortcut(const QString &shortcut);
    /// The hot key as portable text.
    QString shortcutString();
    /// The hot key as the user's platform writes it.
    QString nativeShortcutString();
    /// Native text of any key code with modifiers, not of this hot key.
    QString shortcutString(int keys);

Q_SIGNALS:
    /// The hot key was pressed, in whatever window.
    void activated();

private:
    friend class QxtGlobalShortcutPrivate;
    QScopedPointer<QxtGlobalShortcutPrivate> d;
};
