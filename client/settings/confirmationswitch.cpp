// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "settings/confirmationswitch.h"

#include <QSignalBlocker>

#include <MMessageBox>
#include <NfcAdapter>

using ConnUi::NfcAdapter;

namespace {

constexpr int interval = 1000; // milliseconds: the store does not announce what others store

} // namespace

ConfirmationSwitch::ConfirmationSwitch(MButton *button, const NfcAdapter *adapter, QObject *parent)
    : QObject(parent)
    , button(button)
    , adapter(adapter)
{
    // After the view has stored it.
    connect(button, &MButton::toggled, this, &ConfirmationSwitch::check);
    connect(&timer, &QTimer::timeout, this, &ConfirmationSwitch::follow);
    timer.start(interval);
}

void ConfirmationSwitch::follow()
{
    // Not stored once more: somebody else may be about to change it.
    const QSignalBlocker blocker(button);
    button->setChecked(adapter->isConfirmationEnabled());
}

void ConfirmationSwitch::check(bool wanted)
{
    if (adapter->isConfirmationEnabled() == wanted)
        return;
    follow();
    auto *box =
        new MMessageBox(qtTrId("qtn_nfc_store_fail_tit"), qtTrId("qtn_nfc_store_fail_text"), M::OkButton);
    box->appear(MSceneWindow::DestroyWhenDone);
}
