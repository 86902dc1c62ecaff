#include "showinfolder.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace showinfolder {
namespace {

void openFolderOf(const QString &localFile)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(localFile).absolutePath()));
}

/// The service that file managers share, which opens the folder and selects the file.
[[nodiscard]] QDBusMessage showItemsMessage(const QString &localFile)
{
    const QUrl url = QUrl::fromLocalFile(QFileInfo(localFile).absoluteFilePath());
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    message << QStringList{url.toString(QUrl::FullyEncoded)} << QString();
    return message;
}

} // namespace

void show(const QString &localFile)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        openFolderOf(localFile);
        return;
    }
    // Starting a file manager takes seconds, so the answer is not waited for here.
    auto *watcher =
        new QDBusPendingCallWatcher(bus.asyncCall(showItemsMessage(localFile)), QCoreApplication::instance());
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [localFile, watcher] {
        if (watcher->isError())
            openFolderOf(localFile);
        watcher->deleteLater();
    });
}

} // namespace showinfolder
