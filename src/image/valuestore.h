#pragma once

#include "text/fuzzy.h"

/// Whether a setter has nothing to do. Real values compare by Qt's fuzzy rule.
template <typename Value>
[[nodiscard]] bool isUnchanged(const Value &stored, const Value &value)
{
    return stored == value;
}

[[nodiscard]] inline bool isUnchanged(double stored, double value)
{
    return isFuzzyEqual(stored, value);
}

/// Stores `value`, and says whether that changed anything.
template <typename Value>
[[nodiscard]] bool storeIfChanged(Value &stored, const Value &value)
{
    if (isUnchanged(stored, value))
        return false;
    stored = value;
    return true;
}
