#pragma once

#include <QList>
#include <QMetaType>
#include <QVariant>

/// A marked stretch of a whole message, as the client hands it in (`DrawableText.userBlocks`) and as the
/// input box hands it out (`aiteData`).
struct UserTextBlock
{
    Q_GADGET
    Q_PROPERTY(int start MEMBER start)
    Q_PROPERTY(int length MEMBER length)
    Q_PROPERTY(int type MEMBER type)
    Q_PROPERTY(QVariant data MEMBER data)

public:
    /// First position in the raw text, in UTF-16 units: one for each line end, emoji at their full length.
    int start = 0;
    /// Number of UTF-16 units, counted the same way.
    int length = 0;
    /// 1 link, 2 e-mail, 3 mention, 4 user id, 5 phone number, 6 hash tag, any other a text block.
    int type = 0;
    /// The value of the block.
    QVariant data;
};

using UserTextBlocks = QList<UserTextBlock>;

Q_DECLARE_METATYPE(UserTextBlock)

/// Compares like `QVariant::cmp`, so two blocks with incomparable data are never equal.
[[nodiscard]] bool operator==(const UserTextBlock &a, const UserTextBlock &b);

/// Registers both metatypes by their names, and the conversions that let a script build and read such lists:
/// a list of maps with the keys "start", "length", "type" and "data" converts to `UserTextBlocks` and back.
/// Idempotent.
void registerUserTextBlockTypes();

/// The list inside `value`, or an empty list when it holds nothing that can be read as one.
[[nodiscard]] UserTextBlocks userTextBlocksFrom(const QVariant &value);
