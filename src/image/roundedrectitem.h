#pragma once

#include <QColor>
#include <QGradientStops>
#include <QPainterPath>
#include <QQuickPaintedItem>
#include <QVariantList>

/// A rectangle with four corner radii, a border, and one colour or a gradient from top to bottom.
///
/// The outline lies inside the item by the full width of the border. Radii are taken as they are: large ones
/// overlap.
class RoundedRectItem : public QQuickPaintedItem
{
    Q_OBJECT
    /// Radius of the corner at the top left in pixels. Default: 0.
    Q_PROPERTY(double topLeftRadius READ topLeftRadius WRITE setTopLeftRadius NOTIFY topLeftRadiusChanged)
    /// The same for the corner at the top right.
    Q_PROPERTY(double topRightRadius READ topRightRadius WRITE setTopRightRadius NOTIFY topRightRadiusChanged)
    /// The same for the corner at the bottom left.
    Q_PROPERTY(double bottomLeftRadius READ bottomLeftRadius WRITE setBottomLeftRadius NOTIFY
                   bottomLeftRadiusChanged)
    /// The same for the corner at the bottom right.
    Q_PROPERTY(double bottomRightRadius READ bottomRightRadius WRITE setBottomRightRadius NOTIFY
                   bottomRightRadiusChanged)
    /// In pixels; 0 is a line of one device pixel. Default: 0.5.
    Q_PROPERTY(double borderWidth READ borderWidth WRITE setBorderWidth NOTIFY borderWidthChanged)
    /// Colour of the fill while `gradient` is empty. Invalid, the default, fills black.
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    /// Invalid, the default, draws black.
    Q_PROPERTY(QColor borderColor READ borderColor WRITE setBorderColor NOTIFY borderColorChanged)
    /// Stops of the fill's gradient: objects with "position", 0 to 1, and "color". When the first and the
    /// last colour are the same, the fill is that colour alone.
    Q_PROPERTY(QVariantList gradient READ gradient WRITE setGradient NOTIFY gradientChanged)

public:
    explicit RoundedRectItem(QQuickItem *parent = nullptr);

    [[nodiscard]] double topLeftRadius() const;
    [[nodiscard]] double topRightRadius() const;
    [[nodiscard]] double bottomLeftRadius() const;
    [[nodiscard]] double bottomRightRadius() const;
    [[nodiscard]] double borderWidth() const;
    [[nodiscard]] QColor color() const;
    [[nodiscard]] QColor borderColor() const;
    [[nodiscard]] QVariantList gradient() const;

    void paint(QPainter *painter) override;

public Q_SLOTS:
    void setTopLeftRadius(double topLeftRadius);
    void setTopRightRadius(double topRightRadius);
    void setBottomLeftRadius(double bottomLeftRadius);
    void setBottomRightRadius(double bottomRightRadius);
    void setBorderWidth(double borderWidth);
    void setColor(const QColor &color);
    void setBorderColor(const QColor &borderColor);
    void setGradient(const QVariantList &gradient);

Q_SIGNALS:
    void topLeftRadiusChanged(double topLeftRadius);
    void topRightRadiusChanged(double topRightRadius);
    void bottomLeftRadiusChanged(double bottomLeftRadius);
    void bottomRightRadiusChanged(double bottomRightRadius);
    void borderWidthChanged(double borderWidth);
    void colorChanged(QColor color);
    void borderColorChanged(QColor borderColor);
    void gradientChanged(QVariantList gradient);

private Q_SLOTS:
    void updatePath();
    QGradientStop parseStop(const QVariant &data);

private:
    struct Values
    {
        double topLeftRadius = 0;
        double topRightRadius = 0;
        double bottomLeftRadius = 0;
        double bottomRightRadius = 0;
        double borderWidth = 0.5;
        QColor color;
        QColor borderColor;
        QVariantList gradient;
    };

    template <typename Value, typename Argument>
    void store(Value &stored, const Value &value, void (RoundedRectItem::*changed)(Argument));
    [[nodiscard]] QBrush fill();

    Values values;
    QPainterPath path;
};
