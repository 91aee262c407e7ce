// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/bluetoothquestions.h"

#include <functional>

#include <NfcAgent>

#include "console/questionqueue.h"

using ConnUi::NfcAgent;

BluetoothQuestions::BluetoothQuestions(NfcAgent *agent, QuestionQueue *queue)
    : QObject(agent)
    , agent(agent)
    , queue(queue)
{
    connect(agent, &NfcAgent::btPairingRequested, this, &BluetoothQuestions::askForPairing);
    connect(agent, &NfcAgent::btConnectionRequested, this, &BluetoothQuestions::askForConnection);
    connect(agent, &NfcAgent::btDisconnectionRequested, this, &BluetoothQuestions::askForDisconnection);
}

void BluetoothQuestions::askForPairing(const QDBusObjectPath &target, const QString &address,
                                       const QString &name, uint, const QString &pin)
{
    const QString withPin = pin.isEmpty() ? QString() : QStringLiteral(", PIN %1").arg(pin);
    ask(QStringLiteral("Pair with %1 (%2)%3").arg(name, address, withPin), target,
        &NfcAgent::btPairingRequestGranted);
}

void BluetoothQuestions::askForConnection(const QDBusObjectPath &target, const QString &address,
                                          const QString &name)
{
    ask(QStringLiteral("Connect to %1 (%2)").arg(name, address), target,
        &NfcAgent::btConnectionRequestGranted);
}

void BluetoothQuestions::askForDisconnection(const QDBusObjectPath &target, const QString &address,
                                             const QString &name)
{
    ask(QStringLiteral("Disconnect from %1 (%2)").arg(name, address), target,
        &NfcAgent::btDisconnectionRequestGranted);
}

void BluetoothQuestions::ask(const QString &subject, const QDBusObjectPath &target, Grant grant)
{
    queue->ask({subject,
                {},
                [this, target, grant](int) { std::invoke(grant, agent, target); },
                [this, target] { agent->rejectDevice(target); }});
}
