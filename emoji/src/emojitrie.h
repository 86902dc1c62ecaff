#pragma once

#include <QPair>
#include <QString>
#include <QStringView>
#include <QVector>

/// Questions to the list of emoji. An emoji's index is its place in that list; -1 is none.
namespace emoji {

constexpr ushort textSelector = 0xFE0E;
constexpr ushort emojiSelector = 0xFE0F;

/// The emoji in `text` as (start, length), ascending, without overlap.
[[nodiscard]] QVector<QPair<int, int>> candidates(QStringView text);

/// The emoji that `text` is in one of its known forms: fully qualified, or with some or all U+FE0F left out.
[[nodiscard]] int indexOfText(QStringView text);

/// The emoji that `key` names; -1 also for malformed keys.
[[nodiscard]] int indexOfKey(QStringView key);

/// The code points that `key` names; empty if it is malformed.
[[nodiscard]] QVector<uint> codePointsOfKey(QStringView key);

/// The emoji made of these code points, U+FE0F among them or not.
[[nodiscard]] int indexOfCodePoints(const QVector<uint> &codePoints);

/// The fully qualified text of an emoji, a view into static data.
[[nodiscard]] QStringView textOf(int index);

/// The key of an emoji.
[[nodiscard]] QString keyOf(int index);

} // namespace emoji
