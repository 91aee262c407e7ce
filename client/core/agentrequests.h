// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_AGENTREQUESTS_H
#define CONNUI_CLIENT_AGENTREQUESTS_H

#include <memory>

#include <QDBusObjectPath>
#include <QObject>

#include "core/deliveries.h"
#include "core/handovers.h"
#include "core/request.h"

namespace ConnUi {
class NfcAdapter;
class NfcAgent;
class NfcReplyOrder;
} // namespace ConnUi

class Face;
class QuestionQueue;

/** Takes what the daemon asks an agent into the queue, and the answers back to it. */
class AgentRequests : public QObject
{
    Q_OBJECT

public:
    AgentRequests(ConnUi::NfcAdapter *adapter, ConnUi::NfcAgent *agent, QuestionQueue *queue, Face *face);

private:
    using Grant = void (ConnUi::NfcAgent::*)(const QDBusObjectPath &target);

    PendingReply replyTo(const QDBusObjectPath &target, Grant grant);
    PendingReply replyToSharing(const QVariant &info);
    void connectBluetooth();
    void connectDeliveries();
    void connectSharing();
    void tellTouch(int status);

    ConnUi::NfcAdapter *const adapter;
    ConnUi::NfcAgent *const agent;
    QuestionQueue *const queue;
    Face *const face;
    const std::shared_ptr<ConnUi::NfcReplyOrder> order;
    Handovers handovers;
    Deliveries deliveries;
};

#endif
