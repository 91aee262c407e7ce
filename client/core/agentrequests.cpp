// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/agentrequests.h"

#include <functional>
#include <utility>

#include <NfcAdapter>
#include <NfcAgent>
#include <NfcReplyOrder>

#include "core/bluetoothrequest.h"
#include "core/deliveryrequest.h"
#include "core/face.h"
#include "core/notices.h"
#include "core/questionqueue.h"
#include "core/sharingrequest.h"

using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::NfcReplyOrder;

AgentRequests::AgentRequests(NfcAdapter *adapter, NfcAgent *agent, QuestionQueue *queue, Face *face)
    : adapter(adapter)
    , agent(agent)
    , queue(queue)
    , face(face)
    , order(std::make_shared<NfcReplyOrder>())
    , handovers(adapter, queue, nullptr)
    , deliveries(queue)
{
    connectBluetooth();
    connectDeliveries();
    connectSharing();
    connect(agent, &NfcAgent::notifyTouch, this,
            [this](const QDBusObjectPath &, int status) { tellTouch(status); });
}

PendingReply AgentRequests::replyTo(const QDBusObjectPath &target, Grant grant)
{
    return {order, target.path(), [this, target, grant] { std::invoke(grant, agent, target); },
            [this, target] { agent->rejectDevice(target); }};
}

PendingReply AgentRequests::replyToSharing(const QVariant &info)
{
    return {order, QStringLiteral("sharing"), [this, info] { agent->acceptSharing(info); },
            [this, info] { agent->rejectSharing(info); }};
}

void AgentRequests::connectBluetooth()
{
    const auto ask = [this](Request::Kind kind, Grant grant, const QDBusObjectPath &target,
                            const TouchedDevice &device) {
        queue->add(std::make_unique<BluetoothRequest>(kind, target.path(), device, replyTo(target, grant)));
    };
    connect(
        agent, &NfcAgent::btPairingRequested, this,
        [ask](const QDBusObjectPath &target, const QString &address, const QString &name, uint deviceClass,
              const QString &pin) {
            ask(Request::Pairing, &NfcAgent::btPairingRequestGranted, target,
                {address, name, deviceClass, pin});
        });
    connect(
        agent, &NfcAgent::btConnectionRequested, this,
        [ask](const QDBusObjectPath &target, const QString &address, const QString &name, uint deviceClass) {
            ask(Request::Connection, &NfcAgent::btConnectionRequestGranted, target,
                {address, name, deviceClass, {}});
        });
    connect(
        agent, &NfcAgent::btDisconnectionRequested, this,
        [ask](const QDBusObjectPath &target, const QString &address, const QString &name, uint deviceClass) {
            ask(Request::Disconnection, &NfcAgent::btDisconnectionRequestGranted, target,
                {address, name, deviceClass, {}});
        });
}

void AgentRequests::connectDeliveries()
{
    connect(
        agent, &NfcAgent::dataDeliveryRequested, this,
        [this](const NdefMessageHandlerList &handlers, const QDBusObjectPath &tag, const QByteArray &data) {
            const DeliveryRequest::Surroundings surroundings{adapter, &deliveries, queue};
            queue->add(std::make_unique<DeliveryRequest>(surroundings, handlers, tag, data,
                                                         replyTo(tag, &NfcAgent::dataDeliveryGranted)));
        });
}

void AgentRequests::connectSharing()
{
    connect(agent, &NfcAgent::sharingPermissionRequested, this,
            [this](const QString &, const QVariant &info, const QStringList &resources) {
                handovers.clear();
                queue->add(std::make_unique<SharingRequest>(info, resources, replyToSharing(info)));
            });
    connect(agent, &NfcAgent::sharingSelectionRequested, this, [this](const QString &, const QVariant &info) {
        handovers.clear();
        auto request = std::make_unique<SharingRequest>(info, replyToSharing(info));
        connect(request.get(), &SharingRequest::selectionGranted, &handovers, &Handovers::invite);
        queue->add(std::move(request));
    });
}

void AgentRequests::tellTouch(int status)
{
    // Nothing is shown on a screen that is locked.
    if (!queue->isPaused())
        face->indicateTouch();
    if (status != NfcAgent::Ok)
        queue->tell(unreadableTagNotice());
}
