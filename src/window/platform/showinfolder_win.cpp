#include "showinfolder.h"

#include <QProcess>

namespace showinfolder {

void show(const QString &localFile)
{
    QString path = localFile;
    path.replace(QLatin1Char('/'), QLatin1Char('\\'));
    QProcess explorer;
    explorer.setProgram(QStringLiteral("explorer"));
    // Explorer reads its command line by rules of its own: the usual quotes around an argument with blanks
    // would become part of the path.
    explorer.setNativeArguments(QLatin1String("/select,") + path);
    explorer.startDetached();
}

} // namespace showinfolder
