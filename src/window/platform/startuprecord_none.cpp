#include "startuprecord.h"

namespace startuprecord {

bool add(const QString &, const QString &)
{
    return false;
}

bool remove(const QString &)
{
    return false;
}

} // namespace startuprecord
