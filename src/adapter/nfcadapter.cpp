// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcadapter.h"

#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>
#include <QString>

#include <ConnectivitySettings>
#include <RadioState>

#include "adapter/nfcadapter_p.h"
#include "bus/nfcpendingcall_p.h"
#include "bus/nfcservice.h"
#include "nfcadapterproxy.h"
#include "nfcagent.h"
#include "support/whenanswered.h"

namespace ConnUi {

using Support::whenAnswered;

namespace {

constexpr int userSettings = 1;

QString showConfirmations()
{
    return QStringLiteral("nfc_show_confirmations");
}

QDBusError noAgent()
{
    return QDBusError(QDBusError::InvalidArgs, QStringLiteral("There is no agent"));
}

} // namespace

NfcAdapter *NfcAdapter::defaultAdapter()
{
    return new NfcAdapter;
}

NfcAdapter *NfcAdapter::defaultAdapterAsync()
{
    if (NfcAdapterPrivate::instance)
        NfcAdapterPrivate::instance->bindAsynchronously();
    else
        NfcAdapterPrivate::instance = new NfcAdapterPrivate(NfcAdapterPrivate::Asynchronous);
    return new NfcAdapter;
}

NfcAdapter::NfcAdapter(QObject *parent) : QObject(parent)
{
    if (!NfcAdapterPrivate::instance)
        NfcAdapterPrivate::instance = new NfcAdapterPrivate;
    d = NfcAdapterPrivate::instance;
    NfcAdapterPrivate::adapters.append(this);
}

NfcAdapter::~NfcAdapter()
{
    NfcAdapterPrivate::adapters.removeAll(this);
    d = nullptr;
    if (!NfcAdapterPrivate::adapters.isEmpty())
        return;
    delete NfcAdapterPrivate::instance;
    NfcAdapterPrivate::instance = nullptr;
}

bool NfcAdapter::isAsynchronous() const
{
    return d->isAsynchronous();
}

bool NfcAdapter::isValid() const
{
    return d->isValid();
}

bool NfcAdapter::isPowered() const
{
    return isPowered(std::chrono::milliseconds(NfcAdapterPrivate::defaultTimeout));
}

bool NfcAdapter::isPowered(std::chrono::milliseconds timeout) const
{
    if (!isValid())
        return false;
    d->getProperties(int(timeout.count()));
    return d->isPowered();
}

NfcPendingCall *NfcAdapter::isPoweredAsync()
{
    if (!isValid())
        return NfcPendingCallPrivate::createFinished(this, false, NfcPendingCallPrivate::noDaemon());
    if (d->propertiesFetched)
        return NfcPendingCallPrivate::createFinished(this, d->isPowered());
    NfcPendingCall *call = NfcPendingCallPrivate::create(this);
    d->getPropertiesAsync(call);
    return call;
}

void NfcAdapter::setPowered(bool on)
{
    setPowered(on, std::chrono::milliseconds(NfcAdapterPrivate::defaultTimeout));
}

void NfcAdapter::setPowered(bool on, std::chrono::milliseconds timeout)
{
    if (on && !d->isNfcServiceStarted()) {
        d->startNfcService(int(timeout.count()));
        return;
    }
    d->radioState->setEnabled(on);
    d->setProperty(QStringLiteral("State"), on ? QStringLiteral("on") : QStringLiteral("off"),
                   int(timeout.count()));
}

NfcPendingCall *NfcAdapter::setPoweredAsync(bool on)
{
    NfcPendingCall *call = NfcPendingCallPrivate::create(this);
    d->setPoweredAsync(on, call);
    return call;
}

bool NfcAdapter::isConfirmationEnabled() const
{
    const QVariant stored = ConnectivitySettings(userSettings).get(showConfirmations());
    return stored.metaType() == QMetaType::fromType<bool>() && stored.toBool();
}

void NfcAdapter::setConfirmationEnabled(bool enabled)
{
    ConnectivitySettings(userSettings).set(showConfirmations(), enabled);
}

void NfcAdapter::registerAgent(NfcAgent *agent)
{
    if (!isValid() || !agent)
        return;
    QDBusPendingReply<> reply = d->adapterProxy->RegisterUIAgent(QDBusObjectPath(agent->path()));
    reply.waitForFinished();
    if (reply.isError())
        NfcAdapterPrivate::warnFailedCall("RegisterUIAgent", reply.error());
}

void NfcAdapter::unregisterAgent(NfcAgent *agent)
{
    if (!isValid() || !agent)
        return;
    QDBusPendingReply<> reply = d->adapterProxy->UnregisterUIAgent(QDBusObjectPath(agent->path()));
    reply.waitForFinished();
    if (reply.isError())
        NfcAdapterPrivate::warnFailedCall("UnregisterUIAgent", reply.error());
}

NfcPendingCall *NfcAdapter::registerAgentAsync(NfcAgent *agent)
{
    if (!isValid() || !agent)
        return NfcPendingCallPrivate::createFinished(this, {},
                                                     agent ? NfcPendingCallPrivate::noDaemon() : noAgent());
    NfcPendingCall *call = NfcPendingCallPrivate::create(this);
    const QDBusObjectPath path(agent->path());
    d->reportOutcome("RegisterUIAgent", d->adapterProxy->RegisterUIAgent(path), call);
    return call;
}

NfcPendingCall *NfcAdapter::unregisterAgentAsync(NfcAgent *agent)
{
    if (!isValid() || !agent)
        return NfcPendingCallPrivate::createFinished(this, {},
                                                     agent ? NfcPendingCallPrivate::noDaemon() : noAgent());
    NfcPendingCall *call = NfcPendingCallPrivate::create(this);
    const QDBusObjectPath path(agent->path());
    d->reportOutcome("UnregisterUIAgent", d->adapterProxy->UnregisterUIAgent(path), call);
    return call;
}

NfcPendingCall *NfcAdapter::cancelHandoverRequestAsync(const QString &carrier)
{
    if (!isValid())
        return NfcPendingCallPrivate::createFinished(this, {}, NfcPendingCallPrivate::noDaemon());
    NfcPendingCall *call = NfcPendingCallPrivate::create(this);
    whenAnswered(d->adapterProxy->CancelHandoverRequest(carrier), d,
                 [pending = QPointer(call)](const QDBusPendingCall &answer) {
                     NfcPendingCallPrivate::finish(pending, {}, answer.error());
                 });
    return call;
}

void NfcAdapter::requestHandover(const QString &carrier, const QString &type)
{
    if (!isValid())
        return;
    const QDBusObjectPath requestor(NfcService::handoverRequestorPath());
    auto *watcher =
        new QDBusPendingCallWatcher(d->adapterProxy->RequestHandover(requestor, carrier, type), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, d, &NfcAdapterPrivate::handoverCallFinished);
}

void NfcAdapter::cancelHandoverRequest(const QString &carrier)
{
    if (!isValid())
        return;
    d->adapterProxy->call(QDBus::NoBlock, QStringLiteral("CancelHandoverRequest"), carrier);
}

} // namespace ConnUi
