#include "imagecolortheme.h"

#include "cube.h"
#include "mmcq.h"
#include "themeimage.h"

#include <QThreadPool>
#include <QUrl>
#include <QtConcurrentRun>

#include <algorithm>

namespace {

void announce(QObject *target)
{
    if (target)
        QMetaObject::invokeMethod(target, "processFinished", Qt::QueuedConnection);
}

QString resolvedPath(const QString &source)
{
    const QUrl url(source);
    if (url.isLocalFile())
        return url.toLocalFile();
    const QLatin1String resourceScheme("qrc");
    if (source.startsWith(resourceScheme))
        return source.mid(resourceScheme.size());
    return url.toString();
}

} // namespace

QList<QColor> processMmcq(const QString &path, int colorCount, QObject *target)
{
    const QImage image = readThemeImage(path);
    if (image.isNull() || !isValidColorCount(colorCount))
        return {};
    mmcq::PQueue boxes = mmcq::quantise(image, colorCount);
    announce(target);

    QList<QColor> palette;
    palette.reserve(boxes.size());
    for (int i = 0; i < boxes.size(); ++i)
        palette.append(boxes.peek(i)->average());
    return palette;
}

QList<QColor> processCube(const QString &path, int colorCount, QObject *target)
{
    const QImage image = readThemeImage(path);
    if (image.isNull() || !isValidColorCount(colorCount))
        return {};
    const QList<QColor> palette = cube::paletteFromCubes(cube::collectCubes(image));
    announce(target);
    return palette.mid(0, colorCount);
}

ImageColorTheme::ImageColorTheme(QObject *parent)
    : QObject(parent)
{
    // Scripts get the palette as an array only if its type is known by name; moc sees to that for parameters,
    // and not for results.
    qRegisterMetaType<QList<QColor>>();
}

ImageColorTheme::~ImageColorTheme()
{
    if (task.isRunning())
        task.waitForFinished();
}

QString ImageColorTheme::source() const
{
    return path;
}

void ImageColorTheme::setSource(const QString &source)
{
    const QString newPath = resolvedPath(source);
    if (newPath == path)
        return;
    path = newPath;
    // Without a picture the theme colour and the state stay as they are, and a worker that runs is left to
    // finish.
    if (path.isEmpty())
        palette.clear();
    else
        init();
    Q_EMIT sourceChanged(path);
}

void ImageColorTheme::init()
{
    if (task.isRunning()) {
        task.cancel();
        task.waitForFinished();
    }
    setState(Initing);
    QObject *target = this;
    switch (currentAlgorithm) {
    case MMCQ:
        task = QtConcurrent::run(QThreadPool::globalInstance(), processMmcq, path, count, target);
        break;
    case CUBE:
        task = QtConcurrent::run(QThreadPool::globalInstance(), processCube, path, count, target);
        break;
    }
}

void ImageColorTheme::processFinished()
{
    // A cancelled worker's call is still under way when the next one starts. It then takes the next one's
    // palette and so announces that twice. Where nothing followed it there is no result to take.
    task.waitForFinished();
    palette = task.resultCount() > 0 ? task.resultAt(0) : QList<QColor>();
    if (!palette.isEmpty())
        setThemeColor(palette.constFirst());
    Q_EMIT ready();
    setState(Ready);
}

QList<QColor> ImageColorTheme::getPalette() const
{
    return palette;
}

QColor ImageColorTheme::getColor(int index) const
{
    const int clamped = std::max(std::min(palette.size(), index), 0);
    return clamped < palette.size() ? palette.at(clamped) : QColor(Qt::white);
}

QColor ImageColorTheme::themeColor() const
{
    return theme;
}

void ImageColorTheme::setThemeColor(const QColor &themeColor)
{
    if (theme == themeColor)
        return;
    theme = themeColor;
    Q_EMIT themeColorChanged(themeColor);
}

int ImageColorTheme::colorCount() const
{
    return count;
}

void ImageColorTheme::setColorCount(int colorCount)
{
    if (count == colorCount)
        return;
    count = colorCount;
    Q_EMIT colorCountChanged(colorCount);
}

ImageColorTheme::State ImageColorTheme::state() const
{
    return currentState;
}

void ImageColorTheme::setState(State state)
{
    if (currentState == state)
        return;
    currentState = state;
    Q_EMIT stateChanged(state);
}

ImageColorTheme::Algorithm ImageColorTheme::algorithm() const
{
    return currentAlgorithm;
}

void ImageColorTheme::setAlgorithm(Algorithm algorithm)
{
    if (currentAlgorithm == algorithm)
        return;
    currentAlgorithm = algorithm;
    Q_EMIT algorithmChanged(algorithm);
}
