// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "offlinemode.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QVariantMap>

namespace ConnUi {

namespace {

constexpr int offlineStatus = 0;
constexpr int notOffline = 1;
// Somewhat below the 100 ms that are promised: sending and waking up take time as well.
constexpr int timeout = 90; // ms

} // namespace

OfflineMode::OfflineMode(QObject *parent) : QObject(parent) {}

int OfflineMode::currentStatus() const
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("net.connman"), QStringLiteral("/"),
                                               QStringLiteral("net.connman.Manager"),
                                               QStringLiteral("GetProperties"));
    call.setAutoStartService(false);
    const QDBusReply<QVariantMap> reply = QDBusConnection::systemBus().call(call, QDBus::Block, timeout);
    if (!reply.isValid()) {
        // What the bus says of a name that nobody owns, when it may not start anybody.
        if (reply.error().name() != QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"))
            qWarning("OfflineMode: GetProperties returned error '%s': %s",
                     qUtf8Printable(reply.error().name()), qUtf8Printable(reply.error().message()));
        return notOffline;
    }
    const QVariant offline = reply.value().value(QStringLiteral("OfflineMode"));
    if (offline.typeId() != QMetaType::Bool) {
        qWarning("OfflineMode: the connection manager's OfflineMode is not a boolean");
        return notOffline;
    }
    return offline.toBool() ? offlineStatus : notOffline;
}

} // namespace ConnUi
