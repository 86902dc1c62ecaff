#pragma once

#include "itemwindow.h"
#include "messageguard.h"
#include "paintprobe.h"

#include <memory>

/// What every test of painting starts from: a white window, and items at (20, 20) in it whose selection is
/// yellow with black text.
class PaintStage
{
public:
    [[nodiscard]] bool open()
    {
        window = std::make_unique<ItemWindow>(QSize(480, 320));
        return window->open();
    }

    [[nodiscard]] std::unique_ptr<PaintProbe> show(const QString &text, double maxWidth = 400.0) const
    {
        auto item = std::make_unique<PaintProbe>(text, maxWidth);
        item->setParentItem(window->contentItem());
        item->setPosition(QPointF(20, 20));
        item->setSelectionColor(Qt::yellow);
        item->setSelectedTextColor(Qt::black);
        return item;
    }

    std::unique_ptr<ItemWindow> window;
    std::unique_ptr<MessageGuard> guard;
};
