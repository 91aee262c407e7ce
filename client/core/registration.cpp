// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/registration.h"

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include "core/clientlog.h"
#include "nfcadapterproxy.h"
#include "nfcmanagerproxy.h"

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
    if (isComplete())
        NfcAdapterProxy(service, adapter, QDBusConnection::systemBus())
            .UnregisterUIAgent(QDBusObjectPath(agent));
}

bool Registration::isComplete() const
{
    return !adapter.isEmpty();
}

void Registration::begin()
{
    NfcManagerProxy manager(service, QStringLiteral("/"), QDBusConnection::systemBus());
    auto *watcher = new QDBusPendingCallWatcher(manager.DefaultAdapter(), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
        watcher->deleteLater();
        if (reply.isError())
            fail(reply.error());
        else
            registerWith(reply.value().path());
    });
}

void Registration::registerWith(const QString &adapterPath)
{
    NfcAdapterProxy proxy(service, adapterPath, QDBusConnection::systemBus());
    auto *watcher = new QDBusPendingCallWatcher(proxy.RegisterUIAgent(QDBusObjectPath(agent)), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, adapterPath] {
        const QDBusPendingReply<> reply = *watcher;
        watcher->deleteLater();
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
