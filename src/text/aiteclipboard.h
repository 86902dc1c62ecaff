#pragma once

#include "textspan.h"

#include <QByteArray>
#include <QString>
#include <QVector>

class QMimeData;

/// How mentions travel beside plain text on the clipboard and in drags: a serialised list of spans, in
/// Base64. Positions count from the start of the copied text in display form, where each emoji is one
/// character.
namespace aiteclipboard {

[[nodiscard]] QString mimeType();

/// Base64 form of `aites`, which are in ascending order of `from`. Empty for none.
[[nodiscard]] QString toBase64(const QVector<TextSpan> &aites);

/// The mentions in `base64`, which may come from any program: damaged data, a count that the data cannot
/// hold, or a value that no mention carries (anything but what a script can write down, and dates and
/// addresses) gives an empty list. What follows the list is not looked at.
[[nodiscard]] QVector<TextSpan> fromBase64(const QByteArray &base64);

/// `text`, and beside it the mentions if there are any. The caller owns the result.
[[nodiscard]] QMimeData *createMimeData(const QString &text, const QString &aiteData);

} // namespace aiteclipboard
