// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "offlinemode.h"

#include <QDBusConnection>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingReply>
#include <QVariantMap>

#include "connectionmanagerproxy.h"
#include "pendinganswer.h"
#include "support/runningservice.h"
#include "support/whenanswered.h"

namespace ConnUi {

namespace {

constexpr int offlineStatus = 0;
constexpr int notOffline = 1;
// Somewhat below the 100 ms that are promised: sending and waking up take time as well.
constexpr int timeout = 90;        // ms
constexpr int asyncTimeout = 2000; // ms

QString managerName()
{
    return QStringLiteral("net.connman");
}

QString managerPath()
{
    return QStringLiteral("/");
}

int statusOf(const QDBusPendingReply<QVariantMap> &reply)
{
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

} // namespace

OfflineMode::OfflineMode(QObject *parent) : QObject(parent) {}

int OfflineMode::currentStatus() const
{
    const auto bus = QDBusConnection::systemBus();
    const QString service = Support::runningService(bus, managerName());
    if (service.isEmpty())
        return notOffline;
    ConnectionManagerProxy manager(service, managerPath(), bus);
    manager.setTimeout(timeout);
    QDBusPendingReply<QVariantMap> reply = manager.GetProperties();
    reply.waitForFinished();
    return statusOf(reply);
}

PendingAnswer *OfflineMode::currentStatusAsync()
{
    auto *answer = new PendingAnswer(this);
    QDBusMessage call = QDBusMessage::createMethodCall(
        managerName(), managerPath(), QLatin1String(ConnectionManagerProxy::staticInterfaceName()),
        QStringLiteral("GetProperties"));
    call.setAutoStartService(false);
    Support::whenAnswered(QDBusConnection::systemBus().asyncCall(call, asyncTimeout), answer,
                          [answer](const QDBusPendingReply<QVariantMap> &reply) {
                              const QDBusError error = reply.error();
                              if (Support::isNotRunning(error))
                                  answer->finish(notOffline);
                              else
                                  answer->finish(statusOf(reply), error.name(), error.message());
                          });
    return answer;
}

} // namespace ConnUi
