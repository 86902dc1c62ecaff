#pragma once

#include <QColor>
#include <QImage>
#include <QList>
#include <QSharedPointer>
#include <QVector>

#include <functional>

/// Modified median cut quantisation over a histogram of 15-bit colours: boxes of colours are split, first by
/// their population, then by population times volume, and each box gives its average.
namespace mmcq {

constexpr int sigBits = 5; ///< significant bits per channel
constexpr int rightShift = 8 - sigBits;
constexpr int maxIterations = 1000;
constexpr double fractByPopulation = 0.8; ///< share of the colours found by population alone
constexpr int sampleStep = 2;

/// Number of samples per colour index; shared by all boxes of an image, which never write to it.
using Histogram = QVector<qint64>;

[[nodiscard]] constexpr int colorIndex(int red, int green, int blue)
{
    return (red << (2 * sigBits)) + (green << sigBits) + blue;
}

/// A box of colours, with inclusive bounds in the space of shifted channels. A box is empty where an upper
/// bound lies below its lower one.
class VBox
{
public:
    VBox(int r1, int r2, int g1, int g2, int b1, int b2, Histogram histogram);
    /// Copies bounds and histogram, not what was computed from them.
    VBox(const VBox &other);
    VBox &operator=(const VBox &) = delete;

    [[nodiscard]] int volume() const;
    /// Samples in the box.
    [[nodiscard]] int count() const;
    /// Average colour of the samples, or the middle of an empty box; opaque.
    [[nodiscard]] QColor average() const;

    int r1 = 0;
    int r2 = 0;
    int g1 = 0;
    int g2 = 0;
    int b1 = 0;
    int b2 = 0;
    Histogram histogram;

private:
    mutable int cachedVolume = -1;
    mutable int cachedCount = -1;
    mutable QColor cachedAverage = Qt::transparent;
};

using Box = QSharedPointer<VBox>;
/// -1, 0 or 1, like a three-way comparison; the queue takes it for a truth value.
using Comparator = std::function<int(const Box &, const Box &)>;

[[nodiscard]] int compareByCount(const Box &a, const Box &b);
[[nodiscard]] int compareByCountVolume(const Box &a, const Box &b);

/// Boxes in the order that the old quicksort makes of a predicate that is true for any unequal pair:
/// deterministic, and not ascending. Which boxes are split, and the order of the palette, rest on it.
class PQueue
{
public:
    explicit PQueue(Comparator comparator);

    void push(const Box &box);
    /// Removes and returns the last box; null when there is none.
    Box pop();
    [[nodiscard]] Box peek(int index);
    [[nodiscard]] int size() const { return contents.size(); }
    [[nodiscard]] bool isEmpty() const { return contents.isEmpty(); }

private:
    void sort();

    QList<Box> contents;
    bool sorted = false;
    Comparator comparator;
};

[[nodiscard]] Histogram histogramOf(const QImage &image);

/// The box of the image's samples. A sample that lowers a minimum does not raise the maximum, so an image of
/// a single sample gives an empty box.
[[nodiscard]] Box vboxFromPixels(const QImage &image, const Histogram &histogram);

/// Cuts `box` in two near the median of its longest side; a box of one sample comes back alone.
[[nodiscard]] QList<Box> medianCutApply(const Box &box);

/// Splits the last box of the queue until `target` colours are found. Ends early at a box without samples.
void iterate(PQueue &queue, int target);

/// All boxes of the palette of a non-null image; each one's average is a colour of it.
[[nodiscard]] PQueue quantise(const QImage &image, int colorCount);

} // namespace mmcq
