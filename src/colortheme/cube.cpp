#include "cube.h"

#include "legacysort.h"
#include "pixelsamples.h"

#include <QHash>

#include <algorithm>
#include <cstdlib>

namespace cube {
namespace {

constexpr double lightMix = 0.33;
constexpr double strongMix = 0.66;

QSharedPointer<Cube> syntheticCube(const QColor &color)
{
    auto cube = QSharedPointer<Cube>::create();
    cube->key = *cubeKey(color, false);
    cube->add(color);
    return cube;
}

bool isNearDuplicate(const QColor &a, const QColor &b)
{
    return std::abs(a.red() - b.red()) <= duplicateTolerance &&
           std::abs(a.green() - b.green()) <= duplicateTolerance &&
           std::abs(a.blue() - b.blue()) <= duplicateTolerance;
}

int distance(const QColor &a, const QColor &b)
{
    return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue());
}

int packed(const Key &key)
{
    return (key.hue * 16 + key.saturation) * 16 + key.lightness;
}

} // namespace

std::optional<Key> cubeKey(const QColor &color, bool filterLightness)
{
    const int lightness = color.lightness();
    if (filterLightness && (lightness < lowestLightness || lightness > highestLightness))
        return std::nullopt;
    return Key{color.hslHue() / hueWidth, color.saturation() / saturationWidth, lightness / lightnessWidth};
}

void Cube::add(const QColor &color)
{
    red += color.red();
    green += color.green();
    blue += color.blue();
    ++count;
}

QColor cubeAverage(const Cube &cube)
{
    if (cube.count > 0)
        return QColor(int(cube.red / cube.count), int(cube.green / cube.count), int(cube.blue / cube.count),
                      255);
    return QColor::fromHsl(std::min(cube.key.hue * hueWidth + hueWidth / 2, 359),
                           std::min(cube.key.saturation * saturationWidth + saturationWidth / 2, 255),
                           std::min(cube.key.lightness * lightnessWidth + lightnessWidth / 2, 255));
}

QColor mixColors(const QColor &first, const QColor &second, double ratio)
{
    const auto mix = [ratio](int a, int b) { return int(a * ratio + b * (1.0 - ratio)); };
    return QColor(mix(first.red(), second.red()), mix(first.green(), second.green()),
                  mix(first.blue(), second.blue()));
}

Cubes collectCubes(const QImage &image)
{
    Cubes cubes;
    QHash<int, Cube *> cubeOfKey;
    visitSamples(image, sampleStep, [&](const QColor &color) {
        const std::optional<Key> key = cubeKey(color, true);
        if (!key)
            return;
        Cube *&cube = cubeOfKey[packed(*key)];
        if (!cube) {
            cubes.append(QSharedPointer<Cube>::create());
            cube = cubes.last().data();
            cube->key = *key;
        }
        cube->add(color);
    });
    if (cubes.isEmpty())
        cubes.append(syntheticCube(Qt::white));
    return cubes;
}

QList<QColor> paletteFromCubes(Cubes cubes)
{
    if (cubes.size() > 1) {
        legacySort(cubes, [](const QSharedPointer<Cube> &a, const QSharedPointer<Cube> &b) {
            return a->count > b->count;
        });
    } else {
        const QColor average = cubeAverage(*cubes.constFirst());
        const QColor complement(255 - average.red(), 255 - average.green(), 255 - average.blue());
        cubes.append(syntheticCube(complement));
        cubes.append(syntheticCube(mixColors(complement, average, lightMix)));
        cubes.append(syntheticCube(mixColors(complement, average, strongMix)));
    }

    const QColor first = cubeAverage(*cubes.constFirst());
    QList<QColor> palette = {first};
    int best = 1;
    int greatestDistance = 0;
    for (int i = 1; i < cubes.size(); ++i) {
        const QColor color = cubeAverage(*cubes.at(i));
        const bool known = std::any_of(palette.cbegin(), palette.cend(),
                                       [&](const QColor &other) { return isNearDuplicate(color, other); });
        if (known)
            continue;
        const int d = distance(first, color);
        if (d > greatestDistance) {
            greatestDistance = d;
            best = palette.size();
        }
        palette.append(color);
    }
    if (best > 1)
        palette.move(best, 1);
    return palette;
}

} // namespace cube
