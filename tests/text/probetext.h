#pragma once

#include "text/drawabletext.h"

#include <QMouseEvent>

/// A `DrawableText` with a font of 20 pixels and a wide area, whose mouse and key handlers a test calls
/// without any window. Points are in item coordinates.
class ProbeText : public DrawableText
{
public:
    explicit ProbeText(const QString &text = QString(), double maxWidth = 400.0)
    {
        QFont font;
        font.setPixelSize(20);
        setFont(font);
        setMouseEnabled(true);
        setSelectByMouse(true);
        setMaxWidth(maxWidth);
        setText(text);
    }

    /// Each of these hands the event to the item and returns whether it is accepted afterwards; `accepted` is
    /// how it comes.
    bool press(QPointF point, Qt::MouseButton button = Qt::LeftButton, bool accepted = true)
    {
        QMouseEvent event(QEvent::MouseButtonPress, point, button, button, Qt::NoModifier);
        event.setAccepted(accepted);
        mousePressEvent(&event);
        return event.isAccepted();
    }
    bool move(QPointF point, bool accepted = true)
    {
        QMouseEvent event(QEvent::MouseMove, point, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        event.setAccepted(accepted);
        mouseMoveEvent(&event);
        return event.isAccepted();
    }
    bool release(QPointF point, Qt::MouseButton button = Qt::LeftButton, bool accepted = true)
    {
        QMouseEvent event(QEvent::MouseButtonRelease, point, button, Qt::NoButton, Qt::NoModifier);
        event.setAccepted(accepted);
        mouseReleaseEvent(&event);
        return event.isAccepted();
    }
    bool doubleClick(QPointF point, bool accepted = true)
    {
        QMouseEvent event(QEvent::MouseButtonDblClick, point, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        event.setAccepted(accepted);
        mouseDoubleClickEvent(&event);
        return event.isAccepted();
    }
    bool hover(QPointF point)
    {
        QHoverEvent event(QEvent::HoverMove, point, point);
        hoverMoveEvent(&event);
        return event.isAccepted();
    }
    void leave()
    {
        QHoverEvent event(QEvent::HoverLeave, QPointF(-1, -1), QPointF());
        hoverLeaveEvent(&event);
    }
    bool key(int key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        keyPressEvent(&event);
        return event.isAccepted();
    }

    void drag(QPointF from, QPointF to)
    {
        press(from);
        move(to);
        release(to);
    }
};
