// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/consoleclient.h"

#include <utility>

#include <NfcAgent>

#include "console/bluetoothquestions.h"
#include "console/deliveryquestions.h"
#include "console/handovernews.h"
#include "console/sharingquestions.h"
#include "console/touchnews.h"

using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;

ConsoleClient::ConsoleClient(QObject *parent) : QObject(parent), questions(&console)
{
    new HandoverNews(&adapter, &console);
    connect(&console, &Console::ended, this, &ConsoleClient::finished);
    connect(&adapter, &NfcAdapter::adapterValid, this, &ConsoleClient::meetDaemon);
    connect(&adapter, &NfcAdapter::adapterInvalid, this, &ConsoleClient::loseDaemon);
    connect(&adapter, &NfcAdapter::propertyChanged, this, &ConsoleClient::tellPower);
    // A daemon that was there before the adapter is not announced.
    if (adapter.isValid())
        meetDaemon();
    else
        console.print(QStringLiteral("waiting for the NFC daemon"));
}

ConsoleClient::~ConsoleClient()
{
    leaveDaemon();
}

void ConsoleClient::meetDaemon()
{
    leaveDaemon();
    agent = new NfcAgent(this);
    new BluetoothQuestions(agent, &questions);
    new DeliveryQuestions(agent, &questions, &console);
    new SharingQuestions(agent, &questions);
    new TouchNews(agent, &console);
    // Queued: the daemon gets its answer before the agent that it called goes.
    connect(
        agent, &NfcAgent::release, this,
        [this] {
            console.print(QStringLiteral("the NFC daemon has released the agent"));
            leaveDaemon();
        },
        Qt::QueuedConnection);
    adapter.registerAgent(agent);
    console.print(QStringLiteral("the NFC daemon is here"));
}

void ConsoleClient::loseDaemon()
{
    console.print(QStringLiteral("the NFC daemon has left"));
    leaveDaemon();
}

void ConsoleClient::leaveDaemon()
{
    if (!agent)
        return;
    questions.dropAll();
    adapter.unregisterAgent(agent);
    delete std::exchange(agent, nullptr);
}

void ConsoleClient::tellPower()
{
    console.print(adapter.isPowered() ? QStringLiteral("NFC is switched on")
                                      : QStringLiteral("NFC is switched off"));
}
