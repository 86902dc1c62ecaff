#include "colors.h"

#include <algorithm>
#include <cmath>

namespace imutil {
namespace {

/// The fuzzy comparison of doubles against 0, under which only 0 itself is 0.
[[nodiscard]] bool isZero(double value)
{
    return std::abs(value) * 1e12 <= std::min(std::abs(value), 0.0);
}

/// A colour component, cut to an integer, or -1 for one that no colour has.
[[nodiscard]] int component(double start, double end, double t)
{
    const double value = end * (1 - t) + start * t;
    return value > -1 && value < 256 ? int(value) : -1;
}

[[nodiscard]] QString gradientColor(const QColor &start, const QColor &end, double t)
{
    const QColor color(component(start.red(), end.red(), t), component(start.green(), end.green(), t),
                       component(start.blue(), end.blue(), t), 255);
    return color.name();
}

} // namespace

QColor NameColors::color(const QString &name, double lightness)
{
    if (name.isEmpty())
        return Qt::black;

    const QString key = name + QString::number(lightness);
    const QColor known = colorCache.value(key);
    if (known.isValid())
        return known;

    const double used = isZero(lightness) ? lightnessList.first() : lightness;
    if (!(used >= 0 && used <= 1))
        return {};
    const QColor color = QColor::fromHslF(hash(name) / 255.0, saturationList.first(), used, 1.0);
    colorCache.insert(key, color);
    return color;
}

int NameColors::hash(const QString &name) const
{
    qint64 value = 0;
    for (const QChar character : name) {
        if (value > maxSafeInteger)
            value = value / seed2;
        value = (seed * value + character.unicode()) & 0xFF;
    }
    return int(value);
}

QColor colorById(int id)
{
    static const QRgb colors[] = {0xED4E4E, 0x6C9DD9, 0xEEC74E, 0x8576F2,
                                  0x7BCD59, 0xBE6CD9, 0x63C9BF, 0xEE6293};
    const int index = (id / 2 + id % 2) % 8;
    return index < 0 ? QColor() : QColor(colors[index]);
}

QVariantMap hslOf(const QColor &color)
{
    return {
        {QStringLiteral("h"), color.hslHue()},
        {QStringLiteral("s"), color.hslSaturation()},
        {QStringLiteral("l"), color.lightness()},
    };
}

QColor withAlpha(QColor color, double alpha)
{
    // What lies outside the range would give the same colour, but with a warning; no number at all gives 0.
    color.setAlphaF(qBound(0.0, alpha, 1.0));
    return color;
}

QStringList bubbleGradientColors(double containerHeight, double yStart, double yEnd, const QColor &colorStart,
                                 const QColor &colorEnd)
{
    return {gradientColor(colorStart, colorEnd, yStart / containerHeight),
            gradientColor(colorStart, colorEnd, yEnd / containerHeight)};
}

} // namespace imutil
