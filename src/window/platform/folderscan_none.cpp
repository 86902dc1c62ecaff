#include "folderscan.h"

namespace folderscan {

std::optional<Content> scan(const QString &)
{
    return {};
}

} // namespace folderscan
