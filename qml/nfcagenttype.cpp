// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcagenttype.h"

#include <functional>

#include <QDBusError>
#include <QQmlEngine>

#include <ApplicationTracker>
#include <NfcAdapter>
#include <NfcAgent>
#include <NfcPendingCall>
#include <NfcReplyOrder>

#include "connectionrequest.h"
#include "deliveryrequest.h"
#include "pairingrequest.h"

using ConnUi::ApplicationTracker;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::NfcPendingCall;
using ConnUi::NfcReplyOrder;

namespace {

constexpr int firstPause = 1000; // ms
constexpr int longestPause = 30 * firstPause;

QString canceledError()
{
    return QStringLiteral("com.tavix.nfc.UIAgent.Canceled");
}

NfcAgentType::TouchStatus touchStatus(int status)
{
    switch (status) {
    case NfcAgent::Ok:
        return NfcAgentType::Ok;
    case NfcAgent::UnsupportedTagTypeError:
        return NfcAgentType::UnsupportedTag;
    case NfcAgent::MalformedContentError:
        return NfcAgentType::MalformedTag;
    default:
        return NfcAgentType::UnknownError;
    }
}

} // namespace

NfcAgentType::NfcAgentType(QObject *parent) : QObject(parent), pending(std::make_unique<RequestModel>())
{
    QQmlEngine::setObjectOwnership(pending.get(), QQmlEngine::CppOwnership);
    retry.setSingleShot(true);
    retry.setInterval(firstPause);
    connect(&retry, &QTimer::timeout, this, &NfcAgentType::registerAgent);
}

NfcAgentType::~NfcAgentType()
{
    unregister();
    // The agent cancels all that waits, the oldest first.
    order.reset();
    agent.reset();
}

NfcAdapterType *NfcAgentType::adapter() const
{
    return source;
}

void NfcAgentType::setAdapter(NfcAdapterType *adapter)
{
    if (adapter == source)
        return;
    if (source)
        source->disconnect(this);
    source = adapter;
    const QPointer<NfcAgentType> guard(this);
    leaveDaemon();
    // A slot has deleted this agent, or set another adapter.
    if (!guard || source != adapter)
        return;
    if (source) {
        connect(source, &QObject::destroyed, this, &NfcAgentType::loseAdapter);
        daemon.reset(NfcAdapter::defaultAdapterAsync());
        connect(daemon.get(), &NfcAdapter::adapterValid, this, &NfcAgentType::createAgent);
        connect(daemon.get(), &NfcAdapter::adapterInvalid, this, &NfcAgentType::dropAgent);
        if (daemon->isValid())
            createAgent();
    }
    Q_EMIT adapterChanged();
}

void NfcAgentType::loseAdapter()
{
    const QPointer<NfcAgentType> guard(this);
    leaveDaemon();
    if (guard)
        Q_EMIT adapterChanged();
}

bool NfcAgentType::isRegistered() const
{
    return registered;
}

bool NfcAgentType::isSessionLocked() const
{
    return sessionLocked;
}

void NfcAgentType::setSessionLocked(bool locked)
{
    if (locked == sessionLocked)
        return;
    sessionLocked = locked;
    Q_EMIT sessionLockedChanged();
}

RequestModel *NfcAgentType::requests() const
{
    return pending.get();
}

// Each daemon has an agent of its own: a question that an old one left is not taken for one of the new one.
void NfcAgentType::createAgent()
{
    dropAgent();
    agent = std::make_unique<NfcAgent>();
    agent->setDaemonOnly(true);
    order = std::make_shared<NfcReplyOrder>();
    connectBluetooth();
    connectDeliveries();
    connectSharing();
    connect(agent.get(), &NfcAgent::notifyTouch, this,
            [this](const QDBusObjectPath &, int status) { Q_EMIT touched(touchStatus(status)); });
    // Queued: the daemon gets its reply before the agent that it called goes.
    connect(
        agent.get(), &NfcAgent::release, agent.get(), [this] { dropAgent(); }, Qt::QueuedConnection);
    registerAgent();
}

void NfcAgentType::dropAgent()
{
    retry.stop();
    retry.setInterval(firstPause);
    if (!agent)
        return;
    order.reset();
    agent.reset();
    const QPointer<NfcAgentType> guard(this);
    pending->expireAll();
    if (guard)
        setRegistered(false);
}

void NfcAgentType::registerAgent()
{
    isRefused = false;
    const NfcPendingCall *call = daemon->registerAgentAsync(agent.get());
    connect(call, &NfcPendingCall::finished, agent.get(), [this](const NfcPendingCall *answered) {
        if (!answered->isError()) {
            setRegistered(true);
            return;
        }
        // A daemon that takes too long may still register the agent.
        isRefused = answered->error().type() != QDBusError::NoReply;
        retry.start();
        retry.setInterval(qMin(2 * retry.interval(), longestPause));
    });
}

// The daemon carries out the calls of a program in their order: a registration that it has not answered yet
// is taken back as well.
void NfcAgentType::unregister()
{
    if (agent && !isRefused)
        daemon->unregisterAgentAsync(agent.get());
}

// The daemon's adapter goes before the agent is dropped: a slot may set another.
void NfcAgentType::leaveDaemon()
{
    unregister();
    daemon.reset();
    dropAgent();
}

void NfcAgentType::setRegistered(bool isKnown)
{
    if (registered == isKnown)
        return;
    registered = isKnown;
    // The first record of an application does not wait for this.
    if (registered && !isFollowing) {
        isFollowing = true;
        ApplicationTracker::subscribeAsync(this);
    }
    Q_EMIT registeredChanged();
}

NfcRequest::Place NfcAgentType::placeOf(const QDBusObjectPath &target) const
{
    return {order, target.path()};
}

// The replies are given while the agent exists.
NfcRequest::Replies NfcAgentType::repliesTo(const QDBusObjectPath &target, Grant grant) const
{
    NfcAgent *to = agent.get();
    return {[to, target, grant] { std::invoke(grant, to, target); },
            [to, target] { to->rejectDevice(target); },
            [to, target] { to->replyError(target, canceledError()); }};
}

void NfcAgentType::connectBluetooth()
{
    connect(
        agent.get(), &NfcAgent::btPairingRequested, this,
        [this](const QDBusObjectPath &target, const QString &address, const QString &name, uint deviceClass,
               const QString &pin) {
            pending->add(std::make_unique<PairingRequest>(
                target.path(), TouchedDevice{address, name, deviceClass}, pin, placeOf(target),
                repliesTo(target, &NfcAgent::btPairingRequestGranted)));
        });
    const auto add = [this](const QDBusObjectPath &target, const TouchedDevice &device,
                            ConnectionRequest::Direction direction, Grant grant) {
        pending->add(std::make_unique<ConnectionRequest>(target.path(), device, direction, placeOf(target),
                                                         repliesTo(target, grant)));
    };
    connect(
        agent.get(), &NfcAgent::btConnectionRequested, this,
        [add](const QDBusObjectPath &target, const QString &address, const QString &name, uint deviceClass) {
            add(target, {address, name, deviceClass}, ConnectionRequest::Connect,
                &NfcAgent::btConnectionRequestGranted);
        });
    connect(
        agent.get(), &NfcAgent::btDisconnectionRequested, this,
        [add](const QDBusObjectPath &target, const QString &address, const QString &name, uint deviceClass) {
            add(target, {address, name, deviceClass}, ConnectionRequest::Disconnect,
                &NfcAgent::btDisconnectionRequestGranted);
        });
}

void NfcAgentType::connectDeliveries()
{
    connect(
        agent.get(), &NfcAgent::dataDeliveryRequested, this,
        [this](const NdefMessageHandlerList &handlers, const QDBusObjectPath &tag, const QByteArray &data) {
            const DeliveryRequest::Circumstances now{source->isConfirmationEnabled(), sessionLocked};
            pending->add(std::make_unique<DeliveryRequest>(tag, data, handlers, now, placeOf(tag),
                                                           repliesTo(tag, &NfcAgent::dataDeliveryGranted)));
        });
}

void NfcAgentType::connectSharing()
{
    connect(
        agent.get(), &NfcAgent::sharingPermissionRequested, this,
        [this](const QString &carrier, const QVariant &info, const QStringList &resources) {
            addSharing(SharingRequest::Permission, carrier, info, resources);
        });
    connect(agent.get(), &NfcAgent::sharingSelectionRequested, this,
            [this](const QString &carrier, const QVariant &info) {
                addSharing(SharingRequest::Selection, carrier, info, {});
            });
}

void NfcAgentType::addSharing(SharingRequest::Purpose purpose, const QString &carrier, const QVariant &info,
                              const QStringList &resources)
{
    NfcAgent *to = agent.get();
    const NfcRequest::Replies replies{[to, info] { to->acceptSharing(info); },
                                      [to, info] { to->rejectSharing(info); },
                                      [to, info] { to->cancelSharing(info); }};
    const NfcRequest::Place place(order, QStringLiteral("sharing"));
    pending->add(std::make_unique<SharingRequest>(purpose, carrier, resources, place, replies));
}
