#include "traybadge.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

namespace traybadge {
namespace {

constexpr QRect badge(14, 14, 18, 18);
constexpr int greatestCount = 99;
constexpr int pointSize = 12;

} // namespace

QString text(int count)
{
    return count <= greatestCount ? QString::number(count) : QStringLiteral("*");
}

QPixmap paintedOn(const QPixmap &icon, int count)
{
    if (icon.isNull())
        return icon;
    QPixmap painted = icon;
    QPainter painter(&painted);
    // With a hard edge: at this size a soft one mixes with the icon and makes the badge smaller.
    QPainterPath circle;
    circle.addEllipse(badge);
    painter.setPen(Qt::transparent);
    painter.setBrush(Qt::red);
    painter.drawPath(circle);

    painter.setFont(QFont(QStringLiteral("Microsoft YaHei"), pointSize, QFont::Bold, false));
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, text(count));
    return painted;
}

} // namespace traybadge
