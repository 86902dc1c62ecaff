#include "texts.h"

#include <QCollator>
#include <QUuid>

#include <algorithm>

namespace imutil {

QString temporaryId(int length)
{
    return QUuid::createUuid().toString(QUuid::Id128).left(length);
}

int compareByLocale(const QString &a, const QString &b)
{
    return QCollator().compare(a, b);
}

QString trimmedText(QString text)
{
    const auto isCut = [](QChar character) {
        switch (character.unicode()) {
        case '\r':
        case '\n':
        case '\t':
        case '\f':
        case '\b':
            return true;
        default:
            return false;
        }
    };
    const auto end = std::remove_if(text.begin(), text.end(), isCut);
    text.truncate(int(end - text.begin()));
    return text.trimmed();
}

} // namespace imutil
