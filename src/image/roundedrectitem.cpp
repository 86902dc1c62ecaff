#include "roundedrectitem.h"

#include "valuestore.h"

#include <QLinearGradient>
#include <QPainter>

RoundedRectItem::RoundedRectItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{}

template <typename Value, typename Argument>
void RoundedRectItem::store(Value &stored, const Value &value, void (RoundedRectItem::*changed)(Argument))
{
    if (!storeIfChanged(stored, value))
        return;
    update(QRect());
    Q_EMIT(this->*changed)(stored);
}

double RoundedRectItem::topLeftRadius() const
{
    return values.topLeftRadius;
}

void RoundedRectItem::setTopLeftRadius(double topLeftRadius)
{
    store(values.topLeftRadius, topLeftRadius, &RoundedRectItem::topLeftRadiusChanged);
}

double RoundedRectItem::topRightRadius() const
{
    return values.topRightRadius;
}

void RoundedRectItem::setTopRightRadius(double topRightRadius)
{
    store(values.topRightRadius, topRightRadius, &RoundedRectItem::topRightRadiusChanged);
}

double RoundedRectItem::bottomLeftRadius() const
{
    return values.bottomLeftRadius;
}

void RoundedRectItem::setBottomLeftRadius(double bottomLeftRadius)
{
    store(values.bottomLeftRadius, bottomLeftRadius, &RoundedRectItem::bottomLeftRadiusChanged);
}

double RoundedRectItem::bottomRightRadius() const
{
    return values.bottomRightRadius;
}

void RoundedRectItem::setBottomRightRadius(double bottomRightRadius)
{
    store(values.bottomRightRadius, bottomRightRadius, &RoundedRectItem::bottomRightRadiusChanged);
}

double RoundedRectItem::borderWidth() const
{
    return values.borderWidth;
}

void RoundedRectItem::setBorderWidth(double borderWidth)
{
    store(values.borderWidth, borderWidth, &RoundedRectItem::borderWidthChanged);
}

QColor RoundedRectItem::color() const
{
    return values.color;
}

void RoundedRectItem::setColor(const QColor &color)
{
    store(values.color, color, &RoundedRectItem::colorChanged);
}

QColor RoundedRectItem::borderColor() const
{
    return values.borderColor;
}

void RoundedRectItem::setBorderColor(const QColor &borderColor)
{
    store(values.borderColor, borderColor, &RoundedRectItem::borderColorChanged);
}

QVariantList RoundedRectItem::gradient() const
{
    return values.gradient;
}

void RoundedRectItem::setGradient(const QVariantList &gradient)
{
    store(values.gradient, gradient, &RoundedRectItem::gradientChanged);
}

void RoundedRectItem::updatePath()
{
    const double b = values.borderWidth;
    const double w = width();
    const double h = height();
    const double tl = values.topLeftRadius;
    const double tr = values.topRightRadius;
    const double bl = values.bottomLeftRadius;
    const double br = values.bottomRightRadius;
    path = QPainterPath();
    path.moveTo(tl + b, b);
    path.arcTo(b, b, 2 * tl, 2 * tl, 90, 90);
    path.lineTo(b, h - bl - b);
    path.arcTo(b, h - 2 * bl - b, 2 * bl, 2 * bl, 180, 90);
    path.lineTo(w - br - b, h - b);
    path.arcTo(w - 2 * br - b, h - 2 * br - b, 2 * br, 2 * br, 270, 90);
    path.lineTo(w - b, tr + b);
    path.arcTo(w - 2 * tr - b, b, 2 * tr, 2 * tr, 0, 90);
    path.lineTo(tl + b, b);
    path.closeSubpath();
}

QGradientStop RoundedRectItem::parseStop(const QVariant &data)
{
    const QVariantMap stop = data.toMap();
    QVariant color = stop.value(QStringLiteral("color"));
    return {stop.value(QStringLiteral("position")).toDouble(),
            color.convert(QMetaType::QColor) ? color.value<QColor>() : QColor()};
}

QBrush RoundedRectItem::fill()
{
    if (values.gradient.isEmpty())
        return QBrush(values.color, Qt::SolidPattern);
    QGradientStops stops;
    for (const QVariant &item : qAsConst(values.gradient))
        stops.append(parseStop(item));
    if (stops.first().second == stops.last().second)
        return QBrush(stops.first().second, Qt::SolidPattern);
    QLinearGradient gradient(boundingRect().topLeft(), boundingRect().bottomLeft());
    gradient.setStops(stops);
    return QBrush(gradient);
}

void RoundedRectItem::paint(QPainter *painter)
{
    if (!isComponentComplete())
        return;
    // The outline follows the size of the item, of which no setter hears.
    updatePath();
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setBrush(fill());
    painter->setPen(QPen(QBrush(values.borderColor, Qt::SolidPattern), values.borderWidth, Qt::SolidLine,
                         Qt::SquareCap, Qt::BevelJoin));
    painter->drawPath(path);
}
