// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/registration.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QVariant>

#include "core/clientlog.h"
#include "nfcadapterproxy.h"
#include "nfcmanagerproxy.h"
#include "support/whenanswered.h"

using Support::whenAnswered;

namespace {

constexpr QLatin1String service("com.tavix.nfc");

} // namespace

Registration::Registration(const QString &agent, int pause, QObject *parent)
    : QObject(parent)
    , agent(agent)
    , longestPause(30 * pause)
    , pause(pause)
{
    retry.setSingleShot(true);
    connect(&retry, &QTimer::timeout, this, &Registration::begin);
    begin();
}

Registration::~Registration()
{
    if (!isComplete())
        return;
    QDBusMessage farewell = QDBusMessage::createMethodCall(
        service, adapter, QLatin1String(NfcAdapterProxy::staticInterfaceName()),
        QStringLiteral("UnregisterUIAgent"));
    farewell << QVariant::fromValue(QDBusObjectPath(agent));
    // A daemon that has left knows no agent, and whoever stopped it does not want it back.
    farewell.setAutoStartService(false);
    QDBusConnection::systemBus().send(farewell);
}

bool Registration::isComplete() const
{
    return !adapter.isEmpty();
}

void Registration::begin()
{
    NfcManagerProxy manager(service, QStringLiteral("/"), QDBusConnection::systemBus());
    whenAnswered(manager.DefaultAdapter(), this, [this](const QDBusPendingReply<QDBusObjectPath> &reply) {
        if (reply.isError())
            fail(reply.error());
        else
            registerWith(reply.value().path());
    });
}

void Registration::registerWith(const QString &adapterPath)
{
    NfcAdapterProxy proxy(service, adapterPath, QDBusConnection::systemBus());
    whenAnswered(proxy.RegisterUIAgent(QDBusObjectPath(agent)), this,
                 [this, adapterPath](const QDBusPendingReply<> &reply) {
                     if (reply.isError()) {
                         fail(reply.error());
                         return;
                     }
                     adapter = adapterPath;
                     Q_EMIT succeeded(adapterPath);
                 });
}

void Registration::fail(const QDBusError &reason)
{
    qCWarning(clientLog, "The NFC daemon does not take the agent: %s: %s; trying again in %d ms",
              qUtf8Printable(reason.name()), qUtf8Printable(reason.message()), pause);
    retry.start(pause);
    pause = qMin(2 * pause, longestPause);
    Q_EMIT failed();
}
