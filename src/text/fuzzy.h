#pragma once

#include <QSizeF>
#include <QtGlobal>

/// Qt's own fuzzy rule, which near zero holds for equal values only. Setters of real-valued properties
/// compare by it, so that a value that went through a script and back does not count as new.
[[nodiscard]] inline bool isFuzzyEqual(double a, double b)
{
    return qFuzzyCompare(a, b);
}

[[nodiscard]] inline bool isFuzzyZero(double value)
{
    return qFuzzyCompare(value, 0.0);
}

[[nodiscard]] inline bool isFuzzyEqual(const QSizeF &a, const QSizeF &b)
{
    return qFuzzyCompare(a.width(), b.width()) && qFuzzyCompare(a.height(), b.height());
}
