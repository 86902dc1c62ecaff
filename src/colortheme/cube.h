#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QSharedPointer>

#include <optional>

/// A palette from a coarse grid of hue, saturation and lightness: the most populated cell first, the colour
/// farthest from it second, near-duplicates left out.
namespace cube {

constexpr int sampleStep = 3;
constexpr int hueWidth = 60;
constexpr int saturationWidth = 85;
constexpr int lightnessWidth = 85;
constexpr int lowestLightness = 5;
constexpr int highestLightness = 250;
constexpr int duplicateTolerance = 15; ///< per channel

/// A cell of the grid. The hue is HSL's, the saturation HSV's, the lightness HSL's: that mixture is what sets
/// the cells apart as people see them.
struct Key
{
    int hue = 0;        ///< 0 to 5; grey, which has no hue, counts as 0
    int saturation = 0; ///< 0 to 3
    int lightness = 0;  ///< 0 to 3
};

[[nodiscard]] inline bool operator==(const Key &a, const Key &b)
{
    return a.hue == b.hue && a.saturation == b.saturation && a.lightness == b.lightness;
}

/// The cell of `color`; none for a colour that is too dark or too light, if these are to be filtered.
[[nodiscard]] std::optional<Key> cubeKey(const QColor &color, bool filterLightness);

/// A cell with the sum of the samples that fell into it.
struct Cube
{
    Key key;
    qint64 red = 0;
    qint64 green = 0;
    qint64 blue = 0;
    int count = 0;

    void add(const QColor &color);
};

/// The average of the cell's samples, or its middle when it has none; opaque.
[[nodiscard]] QColor cubeAverage(const Cube &cube);

/// `ratio` of the first and the rest of the second colour, truncated per channel; opaque.
[[nodiscard]] QColor mixColors(const QColor &first, const QColor &second, double ratio);

using Cubes = QList<QSharedPointer<Cube>>;

/// The cells of the image's samples in the order in which they were met. An image of nothing but very dark or
/// very light samples gives the cell of white.
[[nodiscard]] Cubes collectCubes(const QImage &image);

/// The palette of at least one cell. A single cell gives its colour, the complement and two mixes of both.
[[nodiscard]] QList<QColor> paletteFromCubes(Cubes cubes);

} // namespace cube
