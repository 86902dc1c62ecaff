#pragma once

#include "areadocument.h"
#include "text/textspan.h"

#include <QString>
#include <QVector>

#include <optional>

/// Text on its way into the input box. Pure functions.
namespace areatext {

/// What every text goes through: form feeds become line ends, spaces and U+FFFC no-break spaces, tabs
/// placeholders.
[[nodiscard]] QString normalised(QString text);

/// A normalised text with each known emoji as one placeholder.
struct Prepared
{
    QString text;
    /// One entry for each U+EEEE of `text`, in order; none for one that stood in the text itself.
    QVector<std::optional<areadocument::Emoji>> emojis;
};
[[nodiscard]] Prepared prepared(const QString &text);

/// A part of a text that comes with mentions.
struct Piece
{
    QString text;
    bool isMention = false;
    QVariant data; ///< of the mention
};
/// `text` cut at its mentions, which have positions of `text` with each emoji as one. A part is in one piece
/// only: of a mention that reaches into the one before, the rest counts, and one outside the text is left
/// out.
[[nodiscard]] QVector<Piece> pieces(const QString &text, const QVector<TextSpan> &mentions);

/// Longer runs of line ends than `limit` cut down to it. A `limit` of -1 limits nothing.
[[nodiscard]] QString withLimitedReturns(const QString &text, int limit);

/// The part of `text` that may go between `before` and `after` line ends when no more than `limit` may follow
/// one another. None when nothing of it may: then it is a text of line ends alone.
[[nodiscard]] std::optional<QString> fittingReturns(const QString &text, int limit, int before, int after);

/// `text` without blanks and unprintable characters at both edges.
struct Trimmed
{
    QString text;
    int leftCut = 0; ///< UTF-16 units cut at the left
};
[[nodiscard]] Trimmed trimmed(const QString &text);

/// How many characters of `text`, counted from its end, "clear to the head of the word" takes away: at least
/// one of a text that isn't empty. `text` is what stands before the cursor.
[[nodiscard]] int wordHeadLength(const QString &text);

} // namespace areatext
