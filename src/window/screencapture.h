#pragma once

#include <QImage>
#include <QQuickWindow>
#include <QRect>
#include <QVariant>

/// The transparent full-screen window under which a screenshot tool runs. It grabs no pixels: it knows the
/// rectangles of the windows on the desktop at the moment of the capture, so that the tool can snap its
/// selection to one.
///
/// Made for one capture: Escape closes it, and it deletes itself when it is hidden. It covers the
/// application's current screen, which the application sets at its start, see `PopupWindow`; without one it
/// covers the first screen.
class ScreenCapture : public QQuickWindow
{
    Q_OBJECT
    /// A name for this capture: the time of its making, in milliseconds since the epoch.
    Q_PROPERTY(QString screenId READ screenId CONSTANT)
    /// The selection, or the rectangle that it snapped to.
    Q_PROPERTY(QRect region READ region WRITE setRegion NOTIFY regionChanged)
    /// Rectangles of the windows on the desktop, front to back, children before their parents. Empty with
    /// more than one screen, and where the platform has no such list.
    Q_PROPERTY(QVariantList desktopWindowList READ desktopWindowList)

public:
    explicit ScreenCapture(QWindow *parent = nullptr);
    ~ScreenCapture() override;

    [[nodiscard]] QString screenId() const;
    [[nodiscard]] QRect region() const;

public Q_SLOTS:
    /// Kept for clients that call it; does nothing.
    void init();
    void setRegion(const QRect &region);
    /// The list; asks the system again as long as it found nothing.
    QVariantList desktopWindowList();
    /// Kept for clients that call it; writes a debug line.
    void save();
    /// Sets `region` to the first rectangle of the list that has the point inside its border; leaves it
    /// otherwise.
    void windowRegion(int x, int y);
    /// The image as Base64 text of a PNG, without a "data:" prefix.
    QString imageToBase64(const QImage &image);

Q_SIGNALS:
    void regionChanged(QRect region);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString captureName;
    QRect selection;
    QVariantList windows;
};
