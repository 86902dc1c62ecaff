#pragma once

#include <QObject>

/// Starts the application when the user logs on. A QML singleton.
class AutoStart : public QObject
{
    Q_OBJECT
    /// Default: false, whatever the system has recorded: clients set the value that they keep in their own
    /// settings.
    Q_PROPERTY(bool enable READ enable WRITE setEnable NOTIFY enableChanged)

public:
    explicit AutoStart(QObject *parent = nullptr);

    [[nodiscard]] bool enable() const;

public Q_SLOTS:
    void setEnable(bool enable);

Q_SIGNALS:
    void enableChanged(bool enable);

private:
    bool enabled = false;
};
