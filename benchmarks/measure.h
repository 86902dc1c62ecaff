#pragma once

#include <QString>
#include <QVector>

#include <functional>

/// One of several ways to do the same thing.
struct Contender
{
    QString name;
    std::function<double()> once; ///< does it and returns what it cost
};

/// What one contender may cost at most, as a share of another's cost.
struct Target
{
    int peer = 1;       ///< index of the other
    double share = 1.0; ///< "at most 0.3 times" is 0.3
};

/// One line of the table.
struct Row
{
    QString title;
    QString unit;
    QVector<Contender> contenders; ///< the first is the one that is judged
    QVector<Target> targets;
    double limit = -1.0; ///< what the first may cost at most in itself; negative for no limit
    /// Index of a contender that does nothing but what the machine does to anyone; -1 for none. While that
    /// alone is above `limit` there is no saying whether the first is.
    int control = -1;
    int rounds = 9;
};

/// Median of `samples`, which are not empty.
[[nodiscard]] double median(QVector<double> samples);

/// Runs the contenders in turns, each as often as the row says, so that what else the machine does hits all
/// alike; prints medians, ratios and whether the targets are met. True when they are.
bool measure(const Row &row);

/// Prints the head of the table that `measure` fills.
void printHead();
