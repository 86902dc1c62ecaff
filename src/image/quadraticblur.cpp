#include "quadraticblur.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>
#include <vector>

namespace {

constexpr int colours = 3;
constexpr int leastRadius = 1;
/// With it, the sum of all weighted bytes, 2.6 billion at most, still fits 32 bits without a sign.
constexpr int greatestRadius = 248;

using Weights = std::array<quint32, 2 * greatestRadius + 1>;

/// One colour of the picture, or a plane that receives it: `stride` bytes from row to row.
struct Plane
{
    uchar *bytes = nullptr;
    qint64 pixelStep = 1;
    qint64 lineStep = 0;
};

/// Blurs `lines` runs of `length` pixels. A run goes along `pixelStep`.
void blurRuns(const Plane &from, const Plane &to, int length, int lines, const Weights &weights, int radius,
              float inverse)
{
    for (int line = 0; line < lines; ++line) {
        const uchar *source = from.bytes + line * from.lineStep;
        uchar *target = to.bytes + line * to.lineStep;
        for (int i = 0; i < length; ++i) {
            quint32 sum = 0;
            for (int k = -radius; k <= radius; ++k) {
                const int index = std::min(std::max(i + k, 0), length - 1);
                sum += weights[unsigned(k + radius)] * source[index * from.pixelStep];
            }
            target[i * to.pixelStep] = uchar(float(sum) * inverse);
        }
    }
}

} // namespace

void quadraticBlur(uchar *bits, int width, int height, int components, int radius)
{
    if (width <= 0 || height <= 0)
        return;
    const int r = std::min(std::max(radius, leastRadius), greatestRadius);
    Weights weights{};
    quint32 total = 0;
    for (int k = -r; k <= r; ++k) {
        const int distance = r - std::abs(k);
        weights[unsigned(k + r)] = quint32(distance * distance);
        total += weights[unsigned(k + r)];
    }
    const float inverse = 1.0F / float(total);

    const qint64 area = qint64(width) * height;
    const std::unique_ptr<uchar[]> rows(new (std::nothrow) uchar[size_t(area)]);
    if (!rows)
        return;
    for (int colour = 0; colour < colours; ++colour) {
        const qint64 rowBytes = qint64(width) * components;
        blurRuns({bits + colour, components, rowBytes}, {rows.get(), 1, width}, width, height, weights, r,
                 inverse);
        blurRuns({rows.get(), width, 1}, {bits + colour, rowBytes, components}, height, width, weights, r,
                 inverse);
    }
}
