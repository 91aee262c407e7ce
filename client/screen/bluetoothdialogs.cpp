// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/bluetoothdialogs.h"

#include <MMessageBox>
#include <NfcAgent>
#include <NfcPairingDialog>

#include "screen/dialogqueue.h"

using ConnUi::NfcAgent;
using ConnUi::NfcPairingDialog;

BluetoothDialogs::BluetoothDialogs(NfcAgent *agent, DialogQueue *queue)
    : QObject(agent)
    , agent(agent)
    , queue(queue)
{
    connect(
        agent, &NfcAgent::btPairingRequested, this,
        [this](const QDBusObjectPath &target, const QString &, const QString &name, uint cod,
               const QString &) { ask(target, name, cod, &NfcAgent::btPairingRequestGranted); });
    connect(
        agent, &NfcAgent::btConnectionRequested, this,
        [this](const QDBusObjectPath &target, const QString &, const QString &name, uint cod) {
            ask(target, name, cod, &NfcAgent::btConnectionRequestGranted);
        });
    connect(agent, &NfcAgent::btDisconnectionRequested, this,
            [this](const QDBusObjectPath &target, const QString &, const QString &name, uint) {
                askToDisconnect(target, name);
            });
}

void BluetoothDialogs::ask(const QDBusObjectPath &target, const QString &name, uint cod, Grant grant)
{
    queue->ask(
        {[name, cod] {
             auto *dialog = new NfcPairingDialog(cod);
             // Which device it is stands above the question.
             if (!name.isEmpty())
                 dialog->setTitle(name);
             return dialog;
         },
         [this, target, grant](MDialog *, int result) { answer(target, result == M::OkButton, grant); }});
}

void BluetoothDialogs::askToDisconnect(const QDBusObjectPath &target, const QString &name)
{
    queue->ask({[name] {
                    return new MMessageBox(qtTrId("qtn_nfc_disconnect_tit"),
                                           qtTrId("qtn_nfc_disconnect_text").arg(name),
                                           M::YesButton | M::NoButton);
                },
                [this, target](MDialog *, int result) {
                    answer(target, result == M::YesButton, &NfcAgent::btDisconnectionRequestGranted);
                }});
}

void BluetoothDialogs::answer(const QDBusObjectPath &target, bool granted, Grant grant)
{
    if (granted)
        (agent->*grant)(target);
    else
        agent->rejectDevice(target);
}
