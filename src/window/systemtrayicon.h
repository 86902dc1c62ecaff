#pragma once

#include <QColor>
#include <QIcon>
#include <QObject>
#include <QScopedPointer>
#include <QSystemTrayIcon>
#include <QVariant>

/// The icon in the system's tray, with a badge for unread messages, a flashing sequence for new ones and an
/// offline look. The application provides its picture under ":/ui/image/icon.ico". Needs a QApplication to be
/// shown.
class SystemTrayIcon : public QObject
{
    Q_OBJECT
    /// Text that shows while the pointer rests on the icon. Empty for none.
    Q_PROPERTY(QString toolTip READ toolTip WRITE setToolTip NOTIFY toolTipChanged)
    /// Name of the icon in the tray; writing a path shows that picture until the next badge, flash or change
    /// of state.
    Q_PROPERTY(QString iconSoure READ iconSoure WRITE setIconSource NOTIFY iconSoureChanged)
    /// Whether the icon is in the tray. Default: false.
    Q_PROPERTY(bool visible READ visible WRITE setVisible NOTIFY visibleChanged)
    /// Whether a flashing sequence runs. Clearing it lets a running sequence end by itself.
    Q_PROPERTY(bool flashing READ flashing WRITE setFlashing NOTIFY flashingChanged)
    /// Unread messages; 0 or less shows no badge. Setting it always notifies.
    Q_PROPERTY(int messageCount READ messageCount WRITE setMessageCount NOTIFY messageCountChanged)
    /// Whether the user is reachable; the icon of an offline one is drawn gray. Default: `Online`.
    Q_PROPERTY(State state READ state WRITE setState NOTIFY stateChanged)
    /// Kept for clients that set it; nothing paints with it.
    Q_PROPERTY(QColor themeColor READ themeColor WRITE setThemeColor NOTIFY themeColorChanged)

public:
    /// Whether the user is reachable.
    enum State : int { Offline, Online };
    Q_ENUM(State)

    explicit SystemTrayIcon(QObject *parent = nullptr);
    ~SystemTrayIcon() override;

    [[nodiscard]] QString toolTip() const;
    [[nodiscard]] QString iconSoure() const;
    [[nodiscard]] bool visible() const;
    [[nodiscard]] bool flashing() const;
    [[nodiscard]] int messageCount() const;
    [[nodiscard]] State state() const;
    [[nodiscard]] QColor themeColor() const;

public Q_SLOTS:
    /// Shows a balloon with the picture at `iconSoure` for about `millisecondsTimeoutHint`.
    void showMessage(const QString &title, const QString &message, const QString &iconSoure,
                     int millisecondsTimeoutHint = 2000);
    void setToolTip(const QString &toolTip);
    /// Shows the picture of a path in the tray, until the next badge, flash or change of state.
    void setIconSource(const QString &source);
    void setVisible(bool visible);
    void setFlashing(bool flashing);
    void setMessageCount(int messageCount);
    void setState(State state);
    void setThemeColor(const QColor &themeColor);
    /// Flashes for 5.5 seconds; during a sequence, begins it anew. An object flashes through one sequence
    /// only.
    void flash();

Q_SIGNALS:
    void toolTipChanged(QString toolTip);
    void iconSoureChanged(QString iconSoure);
    void visibleChanged(bool visible);
    void flashingChanged(bool flashing);
    /// The icon asks for its menu.
    void context();
    /// The icon was clicked.
    void trigger();
    /// The icon was clicked twice.
    void doubleClick();
    /// The icon was clicked with the middle button.
    void middleClick();
    /// The balloon was clicked.
    void messageClick();
    /// Kept for clients that connect to it; never emitted.
    void reply(QVariantMap info);
    /// Kept for clients that connect to it; never emitted.
    void location(QVariantMap info);
    void messageCountChanged(int messageCount);
    void stateChanged(State state);
    void themeColorChanged(QColor themeColor);

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void onActivated(QSystemTrayIcon::ActivationReason reason);

private:
    void startFlashTimer();

    QScopedPointer<QSystemTrayIcon> tray;
    QString source;
    QIcon baseIcon;    ///< the normal icon, without a badge
    QIcon currentIcon; ///< with the badge
    bool isFlashing = false;
    int flashTimer = -1;
    int flashTicks = 0;
    int count = 0;
    State currentState = Online;
    QColor theme;
};
