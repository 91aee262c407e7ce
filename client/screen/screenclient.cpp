// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/screenclient.h"

#include <utility>

#include <QTimer>

#include <NfcAgent>

#include "clientlog.h"
#include "screen/bluetoothdialogs.h"
#include "screen/deliverydialogs.h"
#include "screen/prewarm.h"
#include "screen/sharingdialogs.h"
#include "screen/touchindication.h"
#include "screen/transfersheets.h"
#include "screen/waitingbadge.h"

using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;

ScreenClient::ScreenClient(QObject *parent) : QObject(parent)
{
    new WaitingBadge(&queue);
    connect(&adapter, &NfcAdapter::adapterValid, this, &ScreenClient::meetDaemon);
    connect(&adapter, &NfcAdapter::adapterInvalid, this, &ScreenClient::leaveDaemon);
    // A daemon that was there before the adapter is not announced.
    if (adapter.isValid())
        meetDaemon();
    // When there is nothing else to do: the daemon gets its agent first.
    QTimer::singleShot(0, this, &prewarmQuestion);
}

ScreenClient::~ScreenClient()
{
    leaveDaemon();
}

bool ScreenClient::hasDaemon() const
{
    return agent;
}

void ScreenClient::meetDaemon()
{
    leaveDaemon();
    agent = new NfcAgent(this);
    // First: its questions wait in the event loop until everybody below is there.
    adapter.registerAgent(agent);
    if (!overlay)
        overlay.emplace();
    // Who answers what; each lives as long as the agent.
    new BluetoothDialogs(agent, &queue);
    new DeliveryDialogs(&adapter, agent, &queue);
    new SharingDialogs(&adapter, agent, &queue);
    new TouchIndication(agent, &*overlay, &queue);
    new TransferSheets(agent);
    // Queued: the daemon gets its answer before the agent that it called goes.
    connect(agent, &NfcAgent::release, this, &ScreenClient::leaveDaemon, Qt::QueuedConnection);
    qCInfo(clientLog, "the daemon is here; %s is its agent", qUtf8Printable(agent->path()));
    Q_EMIT daemonHere(true);
}

void ScreenClient::leaveDaemon()
{
    if (!agent)
        return;
    // Questions of a daemon that has left are not worth an answer.
    queue.dropAll();
    adapter.unregisterAgent(agent);
    delete std::exchange(agent, nullptr);
    qCInfo(clientLog, "the daemon has no agent here any more");
    Q_EMIT daemonHere(false);
}
