// SPDX-License-Identifier: MIT
#include "updates/showInFolder.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace tunedeck {

namespace {
constexpr int deadline = 5'000;

void openFolderOf(const QString &path)
{
    QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(path).path()));
}
} // namespace

void showInFolder(const QDBusConnection &bus, const QString &path)
{
    // Without a bus, the call ends before the watcher exists, which then emits nothing.
    if (!bus.isConnected()) {
        openFolderOf(path);
        return;
    }
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage message = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/FileManager1"), name, QStringLiteral("ShowItems"));
    const QString activationToken;
    message << QStringList(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded)) << activationToken;
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(message, deadline));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, path] {
        watcher->deleteLater();
        if (watcher->isError()) {
            openFolderOf(path);
        }
    });
}

} // namespace tunedeck
