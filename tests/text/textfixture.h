#pragma once

#include "text/usertextblock.h"

#include <QString>
#include <QVariant>

/// Ways to mark text that the tests of the view share.
namespace fixture {

/// Types of user blocks, as clients write them.
enum BlockType { Other = 0, Link = 1, Email = 2, Aite = 3, OstrelId = 4, Phone = 5, Sharp = 6 };

inline UserTextBlock block(int start, int length, int type, const QVariant &data)
{
    UserTextBlock result;
    result.start = start;
    result.length = length;
    result.type = type;
    result.data = data;
    return result;
}

inline QVariant blocks(const UserTextBlocks &list)
{
    return QVariant::fromValue(list);
}

/// A user block inside the text itself; `data` is JSON.
inline QString inBand(const QString &displayName, int type, const QString &data)
{
    return QChar(1) +
           QStringLiteral("{\"displayName\":\"%1\",\"data\":%2,\"type\":%3}")
               .arg(displayName, data)
               .arg(type) +
           QChar(2);
}

} // namespace fixture
