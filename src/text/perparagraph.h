#pragma once

#include <QVector>

namespace drawabletext {

/// One default-constructed `Value` per paragraph. A chat message is one paragraph, most often without spans,
/// emoji or a selection: all such messages share one list until they have something to put in.
template <typename Value>
[[nodiscard]] QVector<Value> defaultPerParagraph(int count)
{
    static const QVector<Value> forOne(1);
    return count == 1 ? forOne : QVector<Value>(count);
}

} // namespace drawabletext
