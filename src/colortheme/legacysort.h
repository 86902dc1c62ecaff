#pragma once

#include <QtAlgorithms>

/// Qt's old quicksort. The palettes rest on the exact order in which it leaves ties, and, for the median cut,
/// on what it makes of a predicate that is no ordering at all; std::sort gives other palettes there, or
/// undefined behaviour.
template <typename Container, typename LessThan>
void legacySort(Container &container, LessThan lessThan)
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    qSort(container.begin(), container.end(), lessThan);
    QT_WARNING_POP
}
