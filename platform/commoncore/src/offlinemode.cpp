// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "offlinemode.h"

#include <QDBusConnection>
#include <QDBusPendingReply>
#include <QVariantMap>

#include "connectionmanagerproxy.h"
#include "support/runningservice.h"

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
    const auto bus = QDBusConnection::systemBus();
    const QString service = Support::runningService(bus, QStringLiteral("net.connman"));
    if (service.isEmpty())
        return notOffline;
    ConnectionManagerProxy manager(service, QStringLiteral("/"), bus);
    manager.setTimeout(timeout);
    QDBusPendingReply<QVariantMap> reply = manager.GetProperties();
    reply.waitForFinished();
    if (reply.isError()) {
        qWarning("OfflineMode: GetProperties returned error '%s': %s", qUtf8Printable(reply.error().name()),
                 qUtf8Printable(reply.error().message()));
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
