#include "palettereference.h"

#include <QImageReader>
#include <QMap>
#include <QSharedPointer>
#include <QStringList>
#include <QtAlgorithms>

#include <cmath>
#include <functional>

namespace reference {
namespace {

// The old sort is what the palettes' order rests on, so the reference takes the very same one.
template <typename List, typename LessThan>
void oldSort(List &list, LessThan lessThan)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    qSort(list.begin(), list.end(), lessThan);
    QT_WARNING_POP
}

// ---- median cut -----------------------------------------------------------------------------------------

using Counts = QMap<int, qint64>;

struct Box
{
    int lo[3] = {0, 0, 0};
    int hi[3] = {0, 0, 0};
    Counts counts;

    qint64 at(int r, int g, int b) const { return counts.value((r << 10) + (g << 5) + b, 0); }

    template <typename Visit>
    void each(Visit visit) const
    {
        for (int r = lo[0]; r <= hi[0]; ++r)
            for (int g = lo[1]; g <= hi[1]; ++g)
                for (int b = lo[2]; b <= hi[2]; ++b)
                    visit(r, g, b, at(r, g, b));
    }

    int width(int axis) const { return hi[axis] - lo[axis] + 1; }
    int volume() const { return width(0) * width(1) * width(2); }

    int count()
    {
        if (knownCount < 0) {
            qint64 sum = 0;
            each([&](int, int, int, qint64 n) { sum += n; });
            knownCount = int(sum);
        }
        return knownCount;
    }

    QColor average() const
    {
        qint64 total = 0;
        double sum[3] = {0.0, 0.0, 0.0};
        each([&](int r, int g, int b, qint64 n) {
            total += n;
            sum[0] += n * (r + 0.5) * 8;
            sum[1] += n * (g + 0.5) * 8;
            sum[2] += n * (b + 0.5) * 8;
        });
        if (total > 0)
            return QColor(int(sum[0] / total), int(sum[1] / total), int(sum[2] / total));
        return QColor(8 * (lo[0] + hi[0] + 1) / 2, 8 * (lo[1] + hi[1] + 1) / 2, 8 * (lo[2] + hi[2] + 1) / 2);
    }

    int knownCount = -1;
};

using BoxPointer = QSharedPointer<Box>;

int byCount(const BoxPointer &a, const BoxPointer &b)
{
    if (a->count() < b->count())
        return -1;
    return a->count() == b->count() ? 0 : 1;
}

int byCountAndVolume(const BoxPointer &a, const BoxPointer &b)
{
    const int first = a->count() * a->volume();
    const int second = b->count() * b->volume();
    if (first < second)
        return -1;
    return first == second ? 0 : 1;
}

struct Queue
{
    std::function<int(const BoxPointer &, const BoxPointer &)> compare;
    QList<BoxPointer> boxes = {};
    bool inOrder = false;

    void push(const BoxPointer &box)
    {
        boxes.append(box);
        inOrder = false;
    }

    void order()
    {
        if (!inOrder)
            oldSort(boxes, compare);
        inOrder = true;
    }

    BoxPointer pop()
    {
        order();
        return boxes.takeLast();
    }
};

struct Grid
{
    const QImage &image;
    int rowStep;
    int columnStep;

    Grid(const QImage &image, int rowStep)
        : image(image)
        , rowStep(rowStep)
        , columnStep(int(qMax(2.0, rowStep * (double(image.height()) / double(image.width())))))
    {}

    template <typename Visit>
    void each(Visit visit) const
    {
        for (int y = 0; y < image.height(); y += rowStep)
            for (int x = 0; x < image.width(); x += columnStep)
                visit(image.pixelColor(x, y));
    }
};

BoxPointer firstBox(const QImage &image)
{
    const Grid grid(image, 2);
    auto box = BoxPointer::create();
    for (int &lowest : box->lo)
        lowest = 1000000;
    grid.each([&](const QColor &color) {
        const int channels[3] = {color.red() >> 3, color.green() >> 3, color.blue() >> 3};
        box->counts[(channels[0] << 10) + (channels[1] << 5) + channels[2]] += 1;
        for (int i = 0; i < 3; ++i) {
            if (channels[i] < box->lo[i])
                box->lo[i] = channels[i];
            else if (channels[i] > box->hi[i])
                box->hi[i] = channels[i];
        }
    });
    return box;
}

QList<BoxPointer> cut(const BoxPointer &box)
{
    if (box->count() == 1)
        return {box};
    const int longest = qMax(qMax(box->width(0), box->width(1)), box->width(2));
    int axis = 2;
    if (longest == box->width(0))
        axis = 0;
    else if (longest == box->width(1))
        axis = 1;
    const int c1 = box->lo[axis];
    const int c2 = box->hi[axis];

    Counts onPlane;
    box->each([&](int r, int g, int b, qint64 n) {
        const int channels[3] = {r, g, b};
        onPlane[channels[axis]] += n;
    });
    qint64 total = 0;
    Counts partial;
    for (int i = c1; i <= c2; ++i) {
        total += onPlane[i];
        partial[i] = total;
    }
    Counts ahead;
    for (auto it = partial.constBegin(); it != partial.constEnd(); ++it)
        ahead[it.key()] = total - it.value();

    for (int i = c1; i <= c2; ++i) {
        if (partial[i] > total / 2) {
            const int left = i - c1;
            const int right = c2 - i;
            int d = 0;
            if (right < left)
                d = qMax(c1, i - left / 2 - 1);
            else
                d = qMin(c2 - 1, i + right / 2);
            while (partial[d] == 0)
                d += 1;
            while (ahead[d] == 0 && partial[d - 1] != 0)
                d -= 1;
            auto one = BoxPointer::create(*box);
            auto two = BoxPointer::create(*box);
            one->knownCount = two->knownCount = -1;
            one->hi[axis] = d;
            two->lo[axis] = d + 1;
            return {one, two};
        }
    }
    return {box};
}

void split(Queue &queue, int target)
{
    int colors = 1;
    int iterations = 0;
    while (true) {
        const BoxPointer box = queue.pop();
        if (box->count() == 0) {
            queue.push(box);
            return;
        }
        const QList<BoxPointer> parts = cut(box);
        queue.push(parts[0]);
        if (parts.size() == 2) {
            queue.push(parts[1]);
            colors += 1;
        }
        if (colors >= target)
            return;
        iterations += 1;
        if (iterations == 1000)
            return;
    }
}

// ---- cubes ----------------------------------------------------------------------------------------------

struct Cube
{
    int hue = 0;
    int saturation = 0;
    int lightness = 0;
    QList<QColor> colors = {};
};

QString keyOf(const QColor &color, bool leaveOutExtremes)
{
    if (leaveOutExtremes && (color.lightness() < 5 || color.lightness() > 250))
        return QString();
    return QStringLiteral("%1_%2_%3")
        .arg(color.hslHue() / 60, 0, 10, QLatin1Char(' '))
        .arg(color.saturation() / 85, 0, 10, QLatin1Char(' '))
        .arg(color.lightness() / 85, 0, 10, QLatin1Char(' '));
}

QSharedPointer<Cube> cubeOf(const QString &key, const QColor &color)
{
    const QStringList parts = key.split(QLatin1Char('_'));
    return QSharedPointer<Cube>::create(Cube{parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), {color}});
}

QColor averageOf(const Cube &cube)
{
    qint64 red = 0;
    qint64 green = 0;
    qint64 blue = 0;
    for (const QColor &color : cube.colors) {
        red += color.red();
        green += color.green();
        blue += color.blue();
    }
    const qint64 n = cube.colors.size();
    return QColor(int(red / n), int(green / n), int(blue / n), 255);
}

QColor mix(const QColor &first, const QColor &second, double ratio)
{
    return QColor(int(first.red() * ratio + second.red() * (1.0 - ratio)),
                  int(first.green() * ratio + second.green() * (1.0 - ratio)),
                  int(first.blue() * ratio + second.blue() * (1.0 - ratio)), 255);
}

QList<QSharedPointer<Cube>> cubesOf(const QImage &image)
{
    QMap<QString, int> counts;
    QMap<QString, QSharedPointer<Cube>> known;
    QList<QSharedPointer<Cube>> cubes;
    Grid(image, 3).each([&](const QColor &color) {
        const QString key = keyOf(color, true);
        if (key.isEmpty())
            return;
        counts[key] += 1;
        if (counts[key] > 1) {
            known[key]->colors.append(color);
        } else {
            known[key] = cubeOf(key, color);
            cubes.append(known[key]);
        }
    });
    if (cubes.isEmpty())
        cubes.append(cubeOf(keyOf(Qt::white, false), Qt::white));
    return cubes;
}

} // namespace

QImage readPicture(const QString &path)
{
    QImageReader reader;
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    reader.setAutoDetectImageFormat(true);
    reader.setFileName(path);
    const QSize size = reader.size();
    if (size.isValid() && (size.width() > 400 || size.height() > 400)) {
        const double ratio = double(size.height()) / double(size.width());
        if (ratio < 1)
            reader.setScaledSize(QSize(400, int(size.height() * ratio)));
        else
            reader.setScaledSize(QSize(int(size.width() / ratio), 400));
    }
    return reader.read();
}

QList<QColor> mmcqPalette(const QImage &image, int colorCount)
{
    Queue first{byCount};
    first.push(firstBox(image));
    split(first, int(colorCount * 0.8));

    Queue second{byCountAndVolume};
    while (!first.boxes.isEmpty())
        second.push(first.pop());
    split(second, colorCount - second.boxes.size());

    Queue map{byCountAndVolume};
    while (!second.boxes.isEmpty())
        map.push(second.pop());
    map.order();

    QList<QColor> palette;
    for (const BoxPointer &box : qAsConst(map.boxes))
        palette.append(box->average());
    return palette;
}

QList<QColor> cubePalette(const QImage &image, int colorCount)
{
    QList<QSharedPointer<Cube>> cubes = cubesOf(image);
    if (cubes.size() > 1) {
        oldSort(cubes, [](const QSharedPointer<Cube> &a, const QSharedPointer<Cube> &b) {
            return a->colors.size() > b->colors.size();
        });
    } else {
        const QColor average = averageOf(*cubes[0]);
        const QColor complement =
            QColor::fromRgb(255 - average.red(), 255 - average.green(), 255 - average.blue(), 255);
        for (const QColor &color :
             {complement, mix(complement, average, 0.33), mix(complement, average, 0.66)})
            cubes.append(cubeOf(keyOf(color, false), color));
    }

    const QColor first = averageOf(*cubes[0]);
    QList<QColor> palette = {first};
    int best = 1;
    int farthest = 0;
    for (int i = 1; i < cubes.size(); ++i) {
        const QColor color = averageOf(*cubes[i]);
        bool isNew = true;
        for (const QColor &other : qAsConst(palette)) {
            if (std::abs(other.red() - color.red()) <= 15 && std::abs(other.green() - color.green()) <= 15 &&
                std::abs(other.blue() - color.blue()) <= 15)
                isNew = false;
        }
        if (!isNew)
            continue;
        const int distance = std::abs(first.red() - color.red()) + std::abs(first.green() - color.green()) +
                             std::abs(first.blue() - color.blue());
        if (distance > farthest) {
            farthest = distance;
            best = palette.size();
        }
        palette.append(color);
    }
    if (best > 1) {
        const QColor moved = palette.takeAt(best);
        palette.insert(1, moved);
    }
    return palette.size() <= colorCount ? palette : palette.mid(0, colorCount);
}

} // namespace reference
