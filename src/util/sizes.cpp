#include "sizes.h"

#include <cmath>

namespace imutil {
namespace {

struct Unit
{
    double end; ///< sizes from here on need the next unit
    int divisions;
    QLatin1String name;
};

const Unit units[] = {
    {1024.0, 0, QLatin1String(" Byte")},
    {1048576.0, 1, QLatin1String(" KB")},
    {1073741824.0, 2, QLatin1String(" MB")},
};
const Unit largestUnit{0, 3, QLatin1String(" GB")};

[[nodiscard]] const Unit &unitOf(double size)
{
    for (const Unit &unit : units) {
        if (size < unit.end)
            return unit;
    }
    return largestUnit;
}

[[nodiscard]] QString numberIn(const Unit &unit, double size)
{
    if (unit.divisions == 0)
        return QStringLiteral("%1").arg(size);
    double hundredths = size * 100;
    for (int i = 0; i < unit.divisions; ++i)
        hundredths *= 1.0 / 1024;
    return QStringLiteral("%1").arg(std::trunc(hundredths) / 100.0);
}

} // namespace

QString sizeText(double size)
{
    const Unit &unit = unitOf(size);
    return numberIn(unit, size) + unit.name;
}

QStringList sizeTexts(double referenceSize, double size)
{
    const Unit &unit = unitOf(referenceSize);
    return {numberIn(unit, referenceSize) + unit.name, numberIn(unit, size)};
}

} // namespace imutil
