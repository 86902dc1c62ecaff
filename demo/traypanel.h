#pragma once

#include <QAbstractNativeEventFilter>
#include <QRect>
#include <QVector>
#include <QWindow>

/// A panel along the lower edge of the screen with a system tray in it, for desktops that have none. On X11;
/// elsewhere it is never the tray.
class TrayPanel : public QWindow, public QAbstractNativeEventFilter
{
public:
    /// Becomes the tray and shows itself, unless the desktop has one.
    TrayPanel();
    ~TrayPanel() override;

    [[nodiscard]] bool isTheTray() const { return owner; }
    /// How many icons have come in.
    [[nodiscard]] int iconCount() const { return icons.size(); }
    /// Where the icon stands on the desktop; empty when there is none of that number.
    [[nodiscard]] QRect iconArea(int index) const;

    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

private:
    bool takeTray();
    void dock(quint32 icon);
    [[nodiscard]] QRect place(int index) const;

    bool owner = false;
    QVector<quint32> icons; ///< their windows
};
