// The property surface of the window: what setters store, and the few that do more.

#include "framelesswindow.h"

#include <algorithm>

namespace {

constexpr int leastBorderWidth = 1;

} // namespace

QQuickItem *FramelessWindow::titleArea() const
{
    return titleItem;
}

void FramelessWindow::setTitleArea(QQuickItem *titleArea)
{
    if (titleItem == titleArea)
        return;
    titleItem = titleArea;
    Q_EMIT titleAreaChanged(titleArea);
}

QVariantList FramelessWindow::extraTitleArea() const
{
    return extraItems.livingValues();
}

void FramelessWindow::setExtraTitleArea(const QVariantList &extraTitleArea)
{
    if (extraItems.livingValues() == extraTitleArea)
        return;
    extraItems.set(extraTitleArea);
    Q_EMIT extraTitleAreaChanged(extraTitleArea);
}

QVariantList FramelessWindow::excludeTitleArea() const
{
    return excludedItems.livingValues();
}

void FramelessWindow::setExcludeTitleArea(const QVariantList &excludeTitleArea)
{
    if (excludedItems.livingValues() == excludeTitleArea)
        return;
    excludedItems.set(excludeTitleArea);
    Q_EMIT excludeTitleAreaChanged(excludeTitleArea);
}

bool FramelessWindow::enableResize() const
{
    return resizable;
}

void FramelessWindow::setEnableResize(bool enableResize)
{
    if (resizable == enableResize)
        return;
    resizable = enableResize;
    Q_EMIT enableResizeChanged(enableResize);
    updateNativeWindowFlag();
}

int FramelessWindow::borderWidth() const
{
    return border;
}

void FramelessWindow::setBorderWidth(int borderWidth)
{
    const int width = std::max(borderWidth, leastBorderWidth);
    if (border == width)
        return;
    border = width;
    Q_EMIT borderWidthChanged(width);
}

QWindow *FramelessWindow::parentWindow() const
{
    return QWindow::parent();
}

void FramelessWindow::setParent(QWindow *parentWindow)
{
    QQuickView::setParent(parentWindow);
    Q_EMIT parentWindowChanged(parentWindow);
}

QScreen *FramelessWindow::windowScreen()
{
    return screen();
}

void FramelessWindow::setWindowScreen(QScreen *windowScreen)
{
    if (screen() == windowScreen)
        return;
    setScreen(windowScreen);
    Q_EMIT windowScreenChanged(windowScreen);
}

// ---- stored and notified

QRect FramelessWindow::dragArea() const
{
    return dragRect;
}

void FramelessWindow::setDragArea(const QRect &dragArea)
{
    if (dragRect == dragArea)
        return;
    dragRect = dragArea;
    Q_EMIT dragAreaChanged(dragArea);
}

bool FramelessWindow::minimizedOnHide() const
{
    return minimizes;
}

void FramelessWindow::setMinimizedOnHide(bool minimizedOnHide)
{
    if (minimizes == minimizedOnHide)
        return;
    minimizes = minimizedOnHide;
    Q_EMIT minimizedOnHideChanged(minimizedOnHide);
}

int FramelessWindow::shadowWidth() const
{
    return shadow;
}

void FramelessWindow::setShadowWidth(int shadowWidth)
{
    if (shadow == shadowWidth)
        return;
    shadow = shadowWidth;
    Q_EMIT shadowWidthChanged(shadowWidth);
}

bool FramelessWindow::enableWindowShadow() const
{
    return hasShadow;
}

void FramelessWindow::setEnableWindowShadow(bool enableWindowShadow)
{
    if (hasShadow == enableWindowShadow)
        return;
    hasShadow = enableWindowShadow;
    Q_EMIT enableWindowShadowChanged(enableWindowShadow);
}

bool FramelessWindow::displayMinimizeButton() const
{
    return minimizeButton;
}

void FramelessWindow::setDisplayMinimizeButton(bool displayMinimizeButton)
{
    if (minimizeButton == displayMinimizeButton)
        return;
    minimizeButton = displayMinimizeButton;
    Q_EMIT displayMinimizeButtonChanged(displayMinimizeButton);
}

bool FramelessWindow::displayMaximizeButton() const
{
    return maximizeButton;
}

void FramelessWindow::setDisplayMaximizeButton(bool displayMaximizeButton)
{
    if (maximizeButton == displayMaximizeButton)
        return;
    maximizeButton = displayMaximizeButton;
    Q_EMIT displayMaximizeButtonChanged(displayMaximizeButton);
}

bool FramelessWindow::displayCloseButton() const
{
    return closeButton;
}

void FramelessWindow::setDisplayCloseButton(bool displayCloseButton)
{
    if (closeButton == displayCloseButton)
        return;
    closeButton = displayCloseButton;
    Q_EMIT displayCloseButtonChanged(displayCloseButton);
}

bool FramelessWindow::delayCenterWindow() const
{
    return centersLater;
}

void FramelessWindow::setDelayCenterWindow(bool delayCenterWindow)
{
    if (centersLater == delayCenterWindow)
        return;
    centersLater = delayCenterWindow;
    Q_EMIT delayCenterWindowChanged(delayCenterWindow);
}

bool FramelessWindow::enabledNCArea() const
{
    return hasNCArea;
}

void FramelessWindow::setEnabledNCArea(bool enabledNCArea)
{
    if (hasNCArea == enabledNCArea)
        return;
    hasNCArea = enabledNCArea;
    Q_EMIT enabledNCAreaChanged(enabledNCArea);
}

QRect FramelessWindow::areoAreaes() const
{
    return areoRect;
}

void FramelessWindow::setAreoAreaes(const QRect &areoAreaes)
{
    if (areoRect == areoAreaes)
        return;
    areoRect = areoAreaes;
    Q_EMIT areoAreaesChanged(areoAreaes);
}

QColor FramelessWindow::background() const
{
    return backgroundColor;
}

void FramelessWindow::setBackground(const QColor &background)
{
    if (backgroundColor == background)
        return;
    backgroundColor = background;
    Q_EMIT backgroundChanged(background);
}
