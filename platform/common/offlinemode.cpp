// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "offlinemode.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusReply>
#include <QVariantMap>

namespace ConnUi {

static constexpr int Offline = 0;
static constexpr int NotOffline = 1;
// Somewhat below the 100 ms that are promised: sending and waking up take time as well.
static constexpr int Timeout = 90; // ms

OfflineMode::OfflineMode(QObject *parent) : QObject(parent) {}

int OfflineMode::currentStatus() const
{
    auto call = QDBusMessage::createMethodCall(QStringLiteral("net.connman"), QStringLiteral("/"),
                                               QStringLiteral("net.connman.Manager"),
                                               QStringLiteral("GetProperties"));
    call.setAutoStartService(false);
    const QDBusReply<QVariantMap> reply = QDBusConnection::systemBus().call(call, QDBus::Block, Timeout);
    if (!reply.isValid()) {
        // What the bus says of a name that nobody owns, when it may not start anybody.
        if (reply.error().name() != QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner"))
            qWarning("OfflineMode: GetProperties returned error '%s': %s",
                     qUtf8Printable(reply.error().name()), qUtf8Printable(reply.error().message()));
        return NotOffline;
    }
    const QVariant offline = reply.value().value(QStringLiteral("OfflineMode"));
    if (offline.typeId() != QMetaType::Bool) {
        qWarning("OfflineMode: the connection manager's OfflineMode is not a boolean");
        return NotOffline;
    }
    return offline.toBool() ? Offline : NotOffline;
}

} // namespace ConnUi
