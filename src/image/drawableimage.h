#pragma once

#include <QColor>
#include <QPixmap>
#include <QQuickPaintedItem>
#include <QSizeF>
#include <QVector>

/// A decorated picture: over a plain or gradient background, with rounded corners, a border, blur, and a dark
/// variant of its colours.
///
/// Setting `source` reads the file at once, on the GUI thread. The item's `opacity` and `scale` are its own:
/// they act on the picture only and hide those of other items from QML.
class DrawableImage : public QQuickPaintedItem
{
    Q_OBJECT
    /// Path or URL of the picture. A "qrc:" URL is stored without its "qrc".
    Q_PROPERTY(QString source READ source WRITE setSource NOTIFY sourceChanged)
    /// Radius of all corners, in pixels; negative values become 0. Default: 0.
    Q_PROPERTY(int radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// Width of the border in pixels, its outer half cut off; none if not positive. Default: 0.
    Q_PROPERTY(int borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    /// Default: gray. Four times as light in dark mode, also when read.
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    /// The background, or the start of its gradient. Default: white. Of a gradient, a quarter as light in
    /// dark mode, also when read.
    Q_PROPERTY(
        QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY backgroundColorChanged)
    /// The end of the background's gradient; invalid, the default, for a plain background. A quarter as light
    /// in dark mode, also when read.
    Q_PROPERTY(QColor backgroundGradientColor READ backgroundGradientColor WRITE setBackgroundGradientColor
                   NOTIFY backgroundGradientColorChanged)
    /// Whether the blurred picture, stretched over the item, lies behind the picture. It is made of the first
    /// picture that is painted so and stays that one. Default: false.
    Q_PROPERTY(
        bool dizzyBackground READ dizzyBackground WRITE setDizzyBackground NOTIFY dizzyBackgroundChanged)
    /// Line of the border, as `Qt.SolidLine` and its like; `Qt.NoPen` for no border. Default: solid.
    Q_PROPERTY(Qt::PenStyle borderStyle READ borderStyle WRITE setBorderStyle NOTIFY borderStyleChanged)
    /// Opacity of the picture, 0 to 1. Default: 1.
    Q_PROPERTY(double opacity READ opacity WRITE setOpacity NOTIFY opacityChanged)
    /// Scale of the picture before it is laid on the item. Not positive: no picture. Default: 1.
    Q_PROPERTY(double scale READ scale WRITE setScale NOTIFY scaleChanged)
    /// Whether the colours are those of the dark variant. Default: false.
    Q_PROPERTY(bool darkMode READ darkMode WRITE setDarkMode NOTIFY darkModeChanged)
    /// How the picture lies on the item. Default: `Pad`, at the top left as it is. `TileVertically` and
    /// `TileHorizontally` show nothing.
    Q_PROPERTY(FillMode fillMode READ fillMode WRITE setFillMode NOTIFY fillModeChanged)
    /// Twice the radius of the picture's blur; none if not positive. Default: 0.
    Q_PROPERTY(int blurRatio READ blurRatio WRITE setBlurRatio NOTIFY blurRatioChanged)
    /// Direction of the background's gradient in degrees: 0 from top to bottom, and on by 45 clockwise. Any
    /// other value shows the end colour alone. Default: 0.
    Q_PROPERTY(
        int gradientRotation READ gradientRotation WRITE setGradientRotation NOTIFY gradientRotationChanged)

public:
    /// How the picture lies on the item: stretched to it, whole inside it, covering it, repeated in both
    /// directions or in one, or at the top left as it is.
    enum FillMode : int {
        Stretch,
        PreserveAspectFit,
        PreserveAspectCrop,
        Tile,
        TileVertically,
        TileHorizontally,
        Pad
    };
    Q_ENUM(FillMode)

    explicit DrawableImage(QQuickItem *parent = nullptr);

    [[nodiscard]] QString source() const;
    [[nodiscard]] int radius() const;
    [[nodiscard]] int borderWidth() const;
    [[nodiscard]] QColor borderColor() const;
    [[nodiscard]] QColor backgroundColor() const;
    [[nodiscard]] QColor backgroundGradientColor() const;
    [[nodiscard]] bool dizzyBackground() const;
    [[nodiscard]] Qt::PenStyle borderStyle() const;
    [[nodiscard]] double opacity() const;
    [[nodiscard]] double scale() const;
    [[nodiscard]] bool darkMode() const;
    [[nodiscard]] FillMode fillMode() const;
    [[nodiscard]] int blurRatio() const;
    [[nodiscard]] int gradientRotation() const;

    void paint(QPainter *painter) override;

public Q_SLOTS:
    void setSource(const QString &source);
    void setRadius(int radius);
    void setBorderWidth(int borderWidth);
    void setBorderColor(const QColor &borderColor);
    void setBackgroundColor(const QColor &backgroundColor);
    void setBackgroundGradientColor(const QColor &backgroundGradientColor);
    void setDizzyBackground(bool dizzyBackground);
    void setBorderStyle(Qt::PenStyle borderStyle);
    void setOpacity(double opacity);
    void setScale(double scale);
    void setDarkMode(bool darkMode);
    void setFillMode(DrawableImage::FillMode fillMode);
    void setBlurRatio(int blurRatio);
    void setGradientRotation(int gradientRotation);

Q_SIGNALS:
    void sourceChanged(QString source);
    void radiusChanged(int radius);
    void borderWidthChanged(int borderWidth);
    void borderColorChanged(QColor borderColor);
    void backgroundColorChanged(QColor backgroundColor);
    void backgroundGradientColorChanged(QColor backgroundGradientColor);
    void dizzyBackgroundChanged(bool dizzyBackground);
    void borderStyleChanged(Qt::PenStyle borderStyle);
    void opacityChanged(double opacity);
    void scaleChanged(double scale);
    void darkModeChanged(bool darkMode);
    void fillModeChanged(DrawableImage::FillMode fillMode);
    void blurRatioChanged(int blurRatio);
    void gradientRotationChanged(int gradientRotation);

private:
    struct Values
    {
        QString source;
        int radius = 0;
        int borderWidth = 0;
        QColor borderColor = Qt::gray;
        QColor backgroundColor = Qt::white;
        QColor backgroundGradientColor;
        bool dizzyBackground = false;
        Qt::PenStyle borderStyle = Qt::SolidLine;
        double opacity = 1.0;
        double scale = 1.0;
        bool darkMode = false;
        FillMode fillMode = Pad;
        int blurRatio = 0;
        int gradientRotation = 0;
    };

    template <typename Value, typename Argument>
    void store(Value &stored, const Value &value, void (DrawableImage::*changed)(Argument));

    void paintBackground(QPainter *painter);
    void paintImage(QPainter *painter);
    void paintScaled(QPainter *painter, const QPixmap &pixmap, const QVector<QSizeF> &sizes);
    void paintFadedTiles(QPainter *painter, const QPixmap &pixmap);
    void paintBorder(QPainter *painter);
    [[nodiscard]] QPixmap preparedPicture() const;

    Values values;
    QPixmap picture;     ///< what `source` names
    QPixmap dizzyPixmap; ///< the blurred picture of the background
};
