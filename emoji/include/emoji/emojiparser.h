#pragma once

#include "emojiglobal.h"

#include <QObject>
#include <QPair>
#include <QString>
#include <QVector>

/// Finds emoji in text. Holds no state: build one where it is needed, on any thread.
class EMOJI_EXPORT EmojiParser : public QObject
{
    Q_OBJECT

public:
    /// A parent that lives in another thread is left out, because Qt would refuse it with a warning.
    explicit EmojiParser(QObject *parent = nullptr);
    ~EmojiParser() override;

    /// Each emoji sequence in `text` as (start, length) in UTF-16 units, ascending, without overlap. The
    /// longest known sequence wins. Characters that are text by default, such as U+00A9, count only with
    /// U+FE0F behind them; what U+FE0E follows never counts. Takes a few nanoseconds per unit and allocates
    /// only for results.
    [[nodiscard]] QVector<QPair<int, int>> emojiIndexes(const QString &text) const;

    /// The text of the emoji with this key ("1f468-200d-1f469"; case, leading zeros and a "fe0f" inside do
    /// not matter), fully qualified. A key of valid code points that is no known emoji gives just those code
    /// points; a malformed one gives an empty string.
    [[nodiscard]] static QString unicodeToEmoji(const QString &key);
};
