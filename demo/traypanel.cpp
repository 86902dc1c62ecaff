// What does not depend on the window system.

#include "traypanel.h"

#include <QGuiApplication>
#include <QScreen>

namespace {

constexpr int panelHeight = 40;
constexpr int iconExtent = 32;
constexpr int iconDistance = 40;

} // namespace

TrayPanel::TrayPanel()
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus);
    setGeometry(screen.x(), screen.bottom() + 1 - panelHeight, screen.width(), panelHeight);
    owner = takeTray();
    if (!owner)
        return;
    QCoreApplication::instance()->installNativeEventFilter(this);
    show();
}

TrayPanel::~TrayPanel()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

QRect TrayPanel::place(int index) const
{
    const int top = (panelHeight - iconExtent) / 2;
    return {width() - (index + 1) * iconDistance, top, iconExtent, iconExtent};
}

QRect TrayPanel::iconArea(int index) const
{
    return index >= 0 && index < icons.size() ? place(index).translated(position()) : QRect();
}
