#pragma once

#include <QImage>
#include <QQuickWindow>

/// A window with OpenGL that shows items and can be photographed.
///
/// Items become visible by `item->setParentItem(window.contentItem())`. Needs a display: see DISPLAY of
/// component_add_test.
class ItemWindow : public QQuickWindow
{
    Q_OBJECT

public:
    explicit ItemWindow(QSize size = QSize(480, 320), const QColor &background = Qt::white);

    /// Shows the window in the corner of the screen, active and with the pointer far from it, and waits for
    /// its first frame. False when the display gives none within ten seconds.
    [[nodiscard]] bool open();

    /// What the window shows once everything that was asked for is drawn, in `QImage::Format_RGB32`.
    [[nodiscard]] QImage picture();

    /// The part of `picture()` that lies at `rect`, in the coordinates of `item`, rounded outwards.
    [[nodiscard]] QImage picture(const QQuickItem *item, const QRectF &rect);
    /// The part of `picture()` that `item` covers.
    [[nodiscard]] QImage picture(const QQuickItem *item);
};
