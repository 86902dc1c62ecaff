#pragma once

#include <QQuickItem>

/// An invisible item that eats wheel events over a view and tells the distance to scroll, so that a script
/// can drive the view. Notched wheels move by a fixed scale, touch pads by their own pixels.
class ScrollController : public QQuickItem
{
    Q_OBJECT
    /// The axis in which the view scrolls; the stronger direction of a gesture goes there. Default: vertical.
    Q_PROPERTY(Qt::Orientation orientation READ orientation WRITE setOrientation NOTIFY orientationChanged)

public:
    explicit ScrollController(QQuickItem *parent = nullptr);

    [[nodiscard]] Qt::Orientation orientation() const;

public Q_SLOTS:
    void setOrientation(Qt::Orientation orientation);

Q_SIGNALS:
    /// The wheel was turned by that many pixels; comes for every event, also one of no distance.
    void wheel(int x, int y);
    void orientationChanged(Qt::Orientation orientation);

protected:
    void wheelEvent(QWheelEvent *event) override;

private:
    Qt::Orientation currentOrientation = Qt::Vertical;
};
