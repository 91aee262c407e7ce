// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "agent/nfcagent_p.h"

#include <algorithm>
#include <utility>

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusError>
#include <QString>

#include "agent/daemonowner.h"
#include "agent/variantcontent.h"
#include "nfcagent.h"

namespace ConnUi {

namespace {

void refuse(const QDBusMessage &call, QDBusError::ErrorType error, const QString &reason)
{
    call.setDelayedReply(true);
    QDBusConnection::systemBus().send(call.createErrorReply(error, reason));
}

} // namespace

NfcAgentPrivate::NfcAgentPrivate(NfcAgent *agent) : QDBusAbstractAdaptor(agent), q(agent)
{
    static int counter = 0;
    path = QStringLiteral("/com/tavix/nfcUIAgent/%1").arg(counter++);
}

NfcAgentPrivate::~NfcAgentPrivate()
{
    cancelPendingRequests();
}

void NfcAgentPrivate::addPendingRequest(RequestType type, const QDBusObjectPath &target,
                                        const QDBusMessage &message)
{
    addPendingRequest(type, QVariant(target.path()), message);
}

void NfcAgentPrivate::addPendingRequest(RequestType type, const QVariant &key, const QDBusMessage &message)
{
    message.setDelayedReply(true);
    const auto request = requests.insert(requests.cend(), {type, key, message});
    requestsByKey.emplace(contentHash(key), request);
}

void NfcAgentPrivate::replyRequest(RequestType type, const QVariant &key, const QVariant &value,
                                   const QString &error)
{
    const auto [first, last] = requestsByKey.equal_range(contentHash(key));
    const auto match = std::find_if(first, last, [type, &key](const auto &entry) {
        const Request &request = *entry.second;
        return (type == AnyRequest || type == request.type) && sameContent(request.key, key);
    });
    if (match == last) {
        qWarning("No request for agent request type %d", int(type));
        return;
    }
    const Request request = std::move(*match->second);
    requests.erase(match->second);
    requestsByKey.erase(match);
    answer(request, value, error);
}

void NfcAgentPrivate::cancelPendingRequests()
{
    // By entry: a key may be a value that equals nothing, not even itself.
    requestsByKey.clear();
    const Requests pending = std::exchange(requests, {});
    for (const Request &request : pending)
        answer(request, QVariant(), QStringLiteral("com.tavix.nfc.UIAgent.Canceled"));
}

void NfcAgentPrivate::answer(const Request &request, const QVariant &value, const QString &error)
{
    QDBusMessage reply;
    if (!error.isEmpty()) {
        reply = request.message.createErrorReply(error, QString());
    } else {
        reply = request.message.createReply();
        if (value.isValid())
            reply << value;
    }
    QDBusConnection::systemBus().send(reply);
}

bool NfcAgentPrivate::refuseStranger(const QDBusMessage &message) const
{
    if (!daemon || daemon->isSenderOf(message))
        return false;
    refuse(message, QDBusError::AccessDenied, QStringLiteral("Only the NFC daemon may call this agent"));
    return true;
}

// A slot connected to the agent's signals may delete the agent, and this adaptor with it: nothing follows an
// emission.

void NfcAgentPrivate::Release(const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    // Alone, a parameter for the message lets every call of the name through.
    if (!message.arguments().isEmpty()) {
        refuse(message, QDBusError::UnknownMethod, QStringLiteral("Release takes no arguments"));
        return;
    }
    Q_EMIT q->release();
}

void NfcAgentPrivate::RequestBTPairing(const QDBusObjectPath &target, const QString &addr,
                                       const QString &name, uint cod, const QString &pin,
                                       const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    addPendingRequest(BtPairingRequest, target, message);
    Q_EMIT q->btPairingRequested(target, addr, name, cod, pin);
}

void NfcAgentPrivate::RequestBTConnection(const QDBusObjectPath &target, const QString &addr,
                                          const QString &name, uint cod, const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    addPendingRequest(BtConnectionRequest, target, message);
    Q_EMIT q->btConnectionRequested(target, addr, name, cod);
}

void NfcAgentPrivate::RequestBTDisconnection(const QDBusObjectPath &target, const QString &addr,
                                             const QString &name, uint cod, const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    addPendingRequest(BtDisconnectionRequest, target, message);
    Q_EMIT q->btDisconnectionRequested(target, addr, name, cod);
}

void NfcAgentPrivate::RequestNDEFDataDelivery(const NdefMessageHandlerList &handlers,
                                              const QDBusObjectPath &target, const QByteArray &data,
                                              const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    addPendingRequest(DataDeliveryRequest, target, message);
    Q_EMIT q->dataDeliveryRequested(handlers, target, data);
}

void NfcAgentPrivate::RequestSharingPermission(const QString &carrier, const QDBusVariant &info,
                                               const QStringList &resources, const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    const QVariant plain = info.variant();
    addPendingRequest(SharingRequest, plain, message);
    Q_EMIT q->sharingPermissionRequested(carrier, plain, resources);
}

void NfcAgentPrivate::RequestSharingSelection(const QString &carrier, const QDBusVariant &info,
                                              const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    const QVariant plain = info.variant();
    addPendingRequest(SharingRequest, plain, message);
    Q_EMIT q->sharingSelectionRequested(carrier, plain);
}

void NfcAgentPrivate::NotifyTouch(const QDBusObjectPath &target, const QString &status,
                                  const QDBusMessage &message)
{
    if (refuseStranger(message))
        return;
    int result = NfcAgent::Ok;
    if (status != QLatin1String("ok")) {
        qWarning("NfcAgent: failed touch status '%s' detected", qUtf8Printable(status));
        if (status == QLatin1String("unsupported-tag-type"))
            result = NfcAgent::UnsupportedTagTypeError;
        else if (status == QLatin1String("malformed-content"))
            result = NfcAgent::MalformedContentError;
        else
            result = NfcAgent::UnknownError;
    }
    Q_EMIT q->notifyTouch(target, result);
}

} // namespace ConnUi
