// File URLs and paths from messages and scripts.

#include "fuzzinput.h"

#include "util/localpath.h"

namespace {

/// Whether `path` is one that a file URL can stand for: rooted, whole characters, and nothing of a URL
/// inside.
bool survivesAUrl(const QString &path)
{
    return path.startsWith(QLatin1Char('/')) && !path.startsWith(QLatin1String("//")) &&
           !path.contains(QLatin1String("file:")) && QString::fromUtf8(path.toUtf8()) == path;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = FuzzInput(data, size).text();

    const QString path = imutil::toLocalFile(text);
    require(path.size() <= text.size() + 1, "a path is no longer than its URL, but for its root");
    if (!text.contains(QLatin1Char('%')))
        require(!path.contains(QLatin1Char('\\')), "backslashes turn");

    const QString url = imutil::fromLocalFile(text);
    require(url.isEmpty() == text.isEmpty(), "only no path has no URL");

    const QString slashed = QString(text).replace(QLatin1Char('\\'), QLatin1Char('/'));
    if (survivesAUrl(slashed))
        require(imutil::toLocalFile(url) == slashed, "a path comes back from its URL");
    return 0;
}
