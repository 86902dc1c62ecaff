#pragma once

#include <QColor>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

namespace imutil {

/// Gives each name a colour of its own that is the same on every client. Not safe on several threads at once.
class NameColors
{
public:
    /// The colour of `name`; black for an empty one. `lightness` lies between 0 and 1, and 0 stands for the
    /// default of 0.35; outside that range the colour is invalid.
    [[nodiscard]] QColor color(const QString &name, double lightness);

private:
    [[nodiscard]] int hash(const QString &name) const;

    // The hash is cut to 8 bits after every character, so the safe limit and the second seed never act. They
    // stay because they belong to the hash that all clients share, some of which reckon in doubles.
    qint64 seed = 131;
    qint64 seed2 = 137;
    qint64 maxSafeInteger = 0x3BCBADC7F10D; ///< 9007199254740991 / 137
    QList<double> lightnessList{0.35, 0.5, 0.65};
    QList<double> saturationList{0.35, 0.5, 0.65};
    QHash<QString, QColor> colorCache;
};

/// One of eight colours for a user without a picture; ids 1 and 2 share one, 3 and 4 the next. Invalid where
/// a negative id leads to a negative index.
[[nodiscard]] QColor colorById(int id);

/// The keys "h", -1 to 359, "s" and "l", 0 to 255.
[[nodiscard]] QVariantMap hslOf(const QColor &color);

/// The colour with its alpha set, from 0 to 1; what lies outside becomes the nearer of the two, NaN 0.
[[nodiscard]] QColor withAlpha(QColor color, double alpha);

/// The two end colours of the part of a gradient that a chat bubble covers, from `yStart` to `yEnd` of a list
/// that is `containerHeight` high, as "#rrggbb". The gradient runs from `colorEnd` at the top to `colorStart`
/// at the bottom; black stands for what lies so far outside the list that it has no colour.
[[nodiscard]] QStringList bubbleGradientColors(double containerHeight, double yStart, double yEnd,
                                               const QColor &colorStart, const QColor &colorEnd);

} // namespace imutil
