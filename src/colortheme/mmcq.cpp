#include "mmcq.h"

#include "legacysort.h"
#include "pixelsamples.h"

#include <algorithm>
#include <utility>

namespace mmcq {
namespace {

constexpr int histogramSize = 1 << (3 * sigBits);

enum class Axis { Red, Green, Blue };

Axis longestAxis(const VBox &box)
{
    const int red = box.r2 - box.r1 + 1;
    const int green = box.g2 - box.g1 + 1;
    const int blue = box.b2 - box.b1 + 1;
    const int longest = std::max({red, green, blue});
    if (longest == red)
        return Axis::Red;
    return longest == green ? Axis::Green : Axis::Blue;
}

qint64 sumOver(const Histogram &histogram, int r1, int r2, int g1, int g2, int b1, int b2)
{
    qint64 sum = 0;
    for (int r = r1; r <= r2; ++r) {
        for (int g = g1; g <= g2; ++g) {
            const qint64 *row = histogram.constData() + colorIndex(r, g, 0);
            for (int b = b1; b <= b2; ++b)
                sum += row[b];
        }
    }
    return sum;
}

/// Samples on one plane across the axis.
qint64 planeSum(const VBox &box, Axis axis, int i)
{
    switch (axis) {
    case Axis::Red:
        return sumOver(box.histogram, i, i, box.g1, box.g2, box.b1, box.b2);
    case Axis::Green:
        return sumOver(box.histogram, box.r1, box.r2, i, i, box.b1, box.b2);
    case Axis::Blue:
        break;
    }
    return sumOver(box.histogram, box.r1, box.r2, box.g1, box.g2, i, i);
}

int VBox::*lowerBound(Axis axis)
{
    return axis == Axis::Red ? &VBox::r1 : axis == Axis::Green ? &VBox::g1 : &VBox::b1;
}

int VBox::*upperBound(Axis axis)
{
    return axis == Axis::Red ? &VBox::r2 : axis == Axis::Green ? &VBox::g2 : &VBox::b2;
}

int threeWay(int a, int b)
{
    return a < b ? -1 : a == b ? 0 : 1;
}

/// The bounds of one channel while samples come in.
struct ChannelBounds
{
    int lowest = 1'000'000;
    int highest = 0;

    void add(int value)
    {
        // One or the other: the very first sample only sets the minimum.
        if (value < lowest)
            lowest = value;
        else if (value > highest)
            highest = value;
    }
};

} // namespace

VBox::VBox(int r1, int r2, int g1, int g2, int b1, int b2, Histogram histogram)
    : r1(r1)
    , r2(r2)
    , g1(g1)
    , g2(g2)
    , b1(b1)
    , b2(b2)
    , histogram(std::move(histogram))
{}

VBox::VBox(const VBox &other)
    : VBox(other.r1, other.r2, other.g1, other.g2, other.b1, other.b2, other.histogram)
{}

int VBox::volume() const
{
    if (cachedVolume == -1)
        cachedVolume = (r2 - r1 + 1) * (g2 - g1 + 1) * (b2 - b1 + 1);
    return cachedVolume;
}

int VBox::count() const
{
    if (cachedCount == -1)
        cachedCount = int(sumOver(histogram, r1, r2, g1, g2, b1, b2));
    return cachedCount;
}

QColor VBox::average() const
{
    if (cachedAverage != QColor(Qt::transparent))
        return cachedAverage;

    constexpr int bucket = 1 << rightShift;
    qint64 total = 0;
    double red = 0;
    double green = 0;
    double blue = 0;
    for (int r = r1; r <= r2; ++r) {
        for (int g = g1; g <= g2; ++g) {
            for (int b = b1; b <= b2; ++b) {
                const qint64 n = histogram.at(colorIndex(r, g, b));
                total += n;
                red += double(n) * (r + 0.5) * bucket;
                green += double(n) * (g + 0.5) * bucket;
                blue += double(n) * (b + 0.5) * bucket;
            }
        }
    }
    if (total > 0) {
        const auto samples = double(total);
        cachedAverage = QColor(int(red / samples), int(green / samples), int(blue / samples));
    } else {
        cachedAverage =
            QColor((bucket * (r1 + r2 + 1)) / 2, (bucket * (g1 + g2 + 1)) / 2, (bucket * (b1 + b2 + 1)) / 2);
    }
    return cachedAverage;
}

int compareByCount(const Box &a, const Box &b)
{
    return threeWay(a->count(), b->count());
}

int compareByCountVolume(const Box &a, const Box &b)
{
    // Pictures are read at about 400 pixels a side, and then this fits an int. One that could not be read
    // smaller may pass its range, and wraps.
    const auto weight = [](const VBox &box) { return int(unsigned(box.count()) * unsigned(box.volume())); };
    return threeWay(weight(*a), weight(*b));
}

PQueue::PQueue(Comparator comparator)
    : comparator(std::move(comparator))
{}

void PQueue::push(const Box &box)
{
    contents.append(box);
    sorted = false;
}

void PQueue::sort()
{
    if (sorted)
        return;
    legacySort(contents, [this](const Box &a, const Box &b) { return comparator(a, b) != 0; });
    sorted = true;
}

Box PQueue::pop()
{
    sort();
    return contents.isEmpty() ? Box() : contents.takeLast();
}

Box PQueue::peek(int index)
{
    sort();
    return contents.at(index);
}

Histogram histogramOf(const QImage &image)
{
    Histogram histogram(histogramSize, 0);
    qint64 *counts = histogram.data();
    visitSamples(image, sampleStep, [counts](const QColor &color) {
        ++counts[colorIndex(color.red() >> rightShift, color.green() >> rightShift,
                            color.blue() >> rightShift)];
    });
    return histogram;
}

Box vboxFromPixels(const QImage &image, const Histogram &histogram)
{
    ChannelBounds red;
    ChannelBounds green;
    ChannelBounds blue;
    visitSamples(image, sampleStep, [&](const QColor &color) {
        red.add(color.red() >> rightShift);
        green.add(color.green() >> rightShift);
        blue.add(color.blue() >> rightShift);
    });
    return Box::create(red.lowest, red.highest, green.lowest, green.highest, blue.lowest, blue.highest,
                       histogram);
}

QList<Box> medianCutApply(const Box &box)
{
    if (box->count() == 1)
        return {box};

    const Axis axis = longestAxis(*box);
    const int low = (*box).*lowerBound(axis);
    const int high = (*box).*upperBound(axis);

    // Samples up to and including each plane; 0 outside the box.
    QVector<qint64> sums;
    qint64 total = 0;
    for (int i = low; i <= high; ++i) {
        total += planeSum(*box, axis, i);
        sums.append(total);
    }
    const auto partialSum = [&](int i) { return i < low || i > high ? 0 : sums.at(i - low); };
    const auto lookAheadSum = [&](int i) { return i < low || i > high ? 0 : total - sums.at(i - low); };

    for (int i = low; i <= high; ++i) {
        if (partialSum(i) <= total / 2)
            continue;
        const int left = i - low;
        const int right = high - i;
        int cut = right < left ? std::max(low, i - left / 2 - 1) : std::min(high - 1, i + right / 2);
        while (partialSum(cut) == 0)
            ++cut;
        while (lookAheadSum(cut) == 0 && partialSum(cut - 1) != 0)
            --cut;

        const auto lower = Box::create(*box);
        const auto upper = Box::create(*box);
        (*lower).*upperBound(axis) = cut;
        (*upper).*lowerBound(axis) = cut + 1;
        return {lower, upper};
    }
    return {box};
}

void iterate(PQueue &queue, int target)
{
    int colors = 1;
    for (int iteration = 0; iteration < maxIterations; ++iteration) {
        const Box box = queue.pop();
        if (!box)
            return;
        if (box->count() == 0) {
            // No retry with another box: an empty one ends the phase.
            queue.push(box);
            return;
        }
        const QList<Box> boxes = medianCutApply(box);
        queue.push(boxes.at(0));
        if (boxes.size() > 1) {
            queue.push(boxes.at(1));
            ++colors;
        }
        if (colors >= target)
            return;
    }
}

PQueue quantise(const QImage &image, int colorCount)
{
    const Histogram histogram = histogramOf(image);

    PQueue byCount(compareByCount);
    byCount.push(vboxFromPixels(image, histogram));
    iterate(byCount, int(colorCount * fractByPopulation));

    PQueue byCountVolume(compareByCountVolume);
    while (!byCount.isEmpty())
        byCountVolume.push(byCount.pop());
    iterate(byCountVolume, colorCount - byCountVolume.size());

    // Sorted once more, from the order in which the boxes come out: the palette's own order.
    PQueue palette(compareByCountVolume);
    while (!byCountVolume.isEmpty())
        palette.push(byCountVolume.pop());
    return palette;
}

} // namespace mmcq
