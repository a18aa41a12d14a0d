// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DesktopRevealer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDesktopServices>
#include <QUrl>

void DesktopRevealer::revealFolder(const QString &path)
{
    const QUrl folder = QUrl::fromLocalFile(path);
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        QDesktopServices::openUrl(folder);
        return;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"),
        QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{folder.toString()} << QString();
    // Asynchronous: a slow or absent file manager must not hold up the window.
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(call, 3000));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished,
                     [folder](QDBusPendingCallWatcher *finished) {
                         if (finished->isError())
                             QDesktopServices::openUrl(folder);
                         finished->deleteLater();
                     });
}
