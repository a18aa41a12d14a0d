// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/DesktopNotifier.h"

#include "engine/BuildInfo.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QGuiApplication>
#include <QVariantMap>

void DesktopNotifier::runEnded(const QString &title, const QString &body)
{
    if (QGuiApplication::applicationState() == Qt::ApplicationActive)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    QDBusMessage notify = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.Notifications"),
        QStringLiteral("/org/freedesktop/Notifications"),
        QStringLiteral("org.freedesktop.Notifications"), QStringLiteral("Notify"));
    // app name, replaces id, icon, summary, body, actions, hints, timeout (server default)
    notify << QStringLiteral("Tonbrook") << 0u << QString::fromLatin1(BuildInfo::appId) << title
           << body << QStringList()
           << QVariantMap{{QStringLiteral("desktop-entry"), QString::fromLatin1(BuildInfo::appId)}}
           << -1;
    // Nobody waits for the answer: a missing service must not hold the window.
    bus.asyncCall(notify);
}
