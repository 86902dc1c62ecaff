#include "localpath.h"

#include <QDir>
#include <QUrl>

namespace imutil {
namespace {

const QLatin1String urlStart("file://");
const QLatin1String rootedUrlStart("file:///");
const QLatin1String urlScheme("file:");

[[nodiscard]] QString withSlashes(QString text)
{
    return text.replace(QLatin1Char('\\'), QLatin1Char('/'));
}

/// "C:/..." as Windows names it. Such URLs come in messages from other machines and stay what they say.
[[nodiscard]] bool isDrivePath(const QString &path)
{
    if (path.size() < 3 || path[1] != QLatin1Char(':') || path[2] != QLatin1Char('/'))
        return false;
    const ushort letter = path[0].toUpper().unicode();
    return letter >= 'A' && letter <= 'Z';
}

/// Whether every absolute path of this system starts with "/", so that the third slash of "file:///" belongs
/// to the path.
[[nodiscard]] bool pathsHaveOneRoot()
{
    return QDir::rootPath() == QLatin1String("/");
}

} // namespace

QString toLocalFile(const QString &url)
{
    QString path = withSlashes(url);
    if (!path.startsWith(urlStart))
        return path;

    const bool isRooted = path.contains(rootedUrlStart);
    path.remove(isRooted ? rootedUrlStart : urlScheme);
    path = QUrl::fromPercentEncoding(path.toUtf8());
    if (isRooted && pathsHaveOneRoot() && !path.startsWith(QLatin1Char('/')) && !isDrivePath(path))
        path.prepend(QLatin1Char('/'));
    return path;
}

QString fromLocalFile(const QString &filePath)
{
    if (filePath.isEmpty())
        return filePath;

    const QString path = withSlashes(filePath);
    if (path.startsWith(urlStart))
        return path;

    const QLatin1String prefix = path.startsWith(QLatin1String("//")) ? urlScheme : rootedUrlStart;
    return QString::fromLatin1(QUrl::toPercentEncoding(prefix + path, QByteArrayLiteral(":/")));
}

} // namespace imutil
