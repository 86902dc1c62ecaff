#include "drawableimage.h"

#include "imagereading.h"
#include "util/localpath.h"
#include "valuestore.h"

#include <QDebug>
#include <QUrl>

#include <algorithm>

namespace {

constexpr int darkFactor = 400; // percent

} // namespace

DrawableImage::DrawableImage(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setFlag(QQuickItem::ItemHasContents);
    setAntialiasing(true);
    setRenderTarget(QQuickPaintedItem::FramebufferObject);
    setFillColor(Qt::transparent);
}

template <typename Value, typename Argument>
void DrawableImage::store(Value &stored, const Value &value, void (DrawableImage::*changed)(Argument))
{
    if (!storeIfChanged(stored, value))
        return;
    update(QRect());
    Q_EMIT(this->*changed)(stored);
}

QString DrawableImage::source() const
{
    return values.source;
}

void DrawableImage::setSource(const QString &source)
{
    const QLatin1String scheme("qrc");
    const QString path = source.startsWith(scheme) ? source.mid(scheme.size()) : source;
    if (!storeIfChanged(values.source, path))
        return;
    const QUrl url = QUrl::fromLocalFile(path);
    if (!url.isValid() || !url.isLocalFile())
        qWarning() << "background image path is invalid, path:" << path;
    const QString file = imutil::toLocalFile(path);
    picture = isFileWithinPictureLimit(file) ? QPixmap(file) : QPixmap();
    update(QRect());
    Q_EMIT sourceChanged(values.source);
}

int DrawableImage::radius() const
{
    return values.radius;
}

void DrawableImage::setRadius(int radius)
{
    store(values.radius, std::max(radius, 0), &DrawableImage::radiusChanged);
}

int DrawableImage::borderWidth() const
{
    return values.borderWidth;
}

void DrawableImage::setBorderWidth(int borderWidth)
{
    store(values.borderWidth, borderWidth, &DrawableImage::borderWidthChanged);
}

QColor DrawableImage::borderColor() const
{
    return values.darkMode ? values.borderColor.lighter(darkFactor) : values.borderColor;
}

void DrawableImage::setBorderColor(const QColor &borderColor)
{
    store(values.borderColor, borderColor, &DrawableImage::borderColorChanged);
}

QColor DrawableImage::backgroundColor() const
{
    // A plain background keeps its colour in dark mode: clients choose a dark one themselves.
    const bool isDarkened = values.darkMode && values.backgroundGradientColor.isValid();
    return isDarkened ? values.backgroundColor.darker(darkFactor) : values.backgroundColor;
}

void DrawableImage::setBackgroundColor(const QColor &backgroundColor)
{
    store(values.backgroundColor, backgroundColor, &DrawableImage::backgroundColorChanged);
}

QColor DrawableImage::backgroundGradientColor() const
{
    return values.darkMode ? values.backgroundGradientColor.darker(darkFactor)
                           : values.backgroundGradientColor;
}

void DrawableImage::setBackgroundGradientColor(const QColor &backgroundGradientColor)
{
    store(values.backgroundGradientColor, backgroundGradientColor,
          &DrawableImage::backgroundGradientColorChanged);
}

bool DrawableImage::dizzyBackground() const
{
    return values.dizzyBackground;
}

void DrawableImage::setDizzyBackground(bool dizzyBackground)
{
    store(values.dizzyBackground, dizzyBackground, &DrawableImage::dizzyBackgroundChanged);
}

Qt::PenStyle DrawableImage::borderStyle() const
{
    return values.borderStyle;
}

void DrawableImage::setBorderStyle(Qt::PenStyle borderStyle)
{
    store(values.borderStyle, borderStyle, &DrawableImage::borderStyleChanged);
}

double DrawableImage::opacity() const
{
    return values.opacity;
}

void DrawableImage::setOpacity(double opacity)
{
    store(values.opacity, opacity, &DrawableImage::opacityChanged);
}

double DrawableImage::scale() const
{
    return values.scale;
}

void DrawableImage::setScale(double scale)
{
    store(values.scale, scale, &DrawableImage::scaleChanged);
}

bool DrawableImage::darkMode() const
{
    return values.darkMode;
}

void DrawableImage::setDarkMode(bool darkMode)
{
    store(values.darkMode, darkMode, &DrawableImage::darkModeChanged);
}

DrawableImage::FillMode DrawableImage::fillMode() const
{
    return values.fillMode;
}

void DrawableImage::setFillMode(FillMode fillMode)
{
    store(values.fillMode, fillMode, &DrawableImage::fillModeChanged);
}

int DrawableImage::blurRatio() const
{
    return values.blurRatio;
}

void DrawableImage::setBlurRatio(int blurRatio)
{
    store(values.blurRatio, blurRatio, &DrawableImage::blurRatioChanged);
}

int DrawableImage::gradientRotation() const
{
    return values.gradientRotation;
}

void DrawableImage::setGradientRotation(int gradientRotation)
{
    store(values.gradientRotation, gradientRotation, &DrawableImage::gradientRotationChanged);
}
