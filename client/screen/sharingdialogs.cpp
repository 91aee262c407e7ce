// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/sharingdialogs.h"

#include <utility>

#include <MMessageBox>
#include <NfcAdapter>
#include <NfcAgent>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcSharingPermissionDialog>
#include <NfcSharingSelectionDialog>

#include "screen/dialogqueue.h"
#include "screen/peername.h"

using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::NfcFileSendDialog;
using ConnUi::NfcFileSendPendingDialog;
using ConnUi::NfcSharingPermissionDialog;
using ConnUi::NfcSharingSelectionDialog;

SharingDialogs::SharingDialogs(NfcAdapter *adapter, NfcAgent *agent, DialogQueue *queue)
    : QObject(agent)
    , adapter(adapter)
    , agent(agent)
    , queue(queue)
{
    connect(agent, &NfcAgent::sharingPermissionRequested, this, &SharingDialogs::askForPermission);
    connect(agent, &NfcAgent::sharingSelectionRequested, this, &SharingDialogs::askForSelection);
    connect(adapter, &NfcAdapter::handoverCarrierSelected, this, &SharingDialogs::wait);
    connect(adapter, &NfcAdapter::handoverCompleted, this, &SharingDialogs::tellPeer);
    connect(adapter, &NfcAdapter::handoverFailed, this, &SharingDialogs::clear);
}

SharingDialogs::~SharingDialogs()
{
    clear();
}

void SharingDialogs::askForPermission(const QString &, const QVariant &info, const QStringList &resources)
{
    clear();
    queue->ask({[info, resources] {
                    auto *dialog = new NfcSharingPermissionDialog(resources);
                    // Who gets it stands above the question.
                    findPeerName(info, dialog, [dialog](const QString &name) { dialog->setTitle(name); });
                    return dialog;
                },
                [this, info](MDialog *, int result) { answer(info, result == M::YesButton); }});
}

void SharingDialogs::askForSelection(const QString &, const QVariant &info)
{
    clear();
    queue->ask({[] { return new NfcSharingSelectionDialog(NfcSharingSelectionDialog::ImageSelection); },
                [this, info](MDialog *, int result) {
                    answer(info, result == M::OkButton);
                    if (result == M::OkButton)
                        invite();
                }});
}

void SharingDialogs::answer(const QVariant &info, bool granted)
{
    if (granted)
        agent->acceptSharing(info);
    else
        agent->rejectSharing(info);
}

void SharingDialogs::invite()
{
    show(new NfcFileSendDialog);
}

void SharingDialogs::wait(const QString &carrier)
{
    auto *dialog = new NfcFileSendPendingDialog;
    connect(dialog, &MDialog::finished, adapter,
            [adapter = adapter, carrier] { adapter->cancelHandoverRequest(carrier); });
    show(dialog);
}

// With whom the phone is connected now; no news when that has no name.
void SharingDialogs::tellPeer(const QString &, const QVariant &info)
{
    clear();
    findPeerName(info, this, [this](const QString &name) {
        show(new MMessageBox(name, qtTrId("qtn_nfc_handover_text"), M::OkButton));
    });
}

void SharingDialogs::show(MDialog *dialog)
{
    clear();
    notice = dialog;
    dialog->appear(MSceneWindow::DestroyWhenDone);
}

// Not by done(): that is the person's way to give up.
void SharingDialogs::clear()
{
    if (MDialog *dialog = std::exchange(notice, nullptr))
        dialog->disappear();
}
