#pragma once

#include <QString>
#include <QStringList>

/// Sizes in bytes as people read them: in Byte, KB, MB or GB, cut, not rounded, to two decimals.
namespace imutil {

/// The size in the unit that fits it, for example "1.5 KB".
[[nodiscard]] QString sizeText(double size);

/// Both sizes in the unit that fits `referenceSize`, the first with the unit, the second without: the parts
/// of "12.5 of 40 MB".
[[nodiscard]] QStringList sizeTexts(double referenceSize, double size);

} // namespace imutil
