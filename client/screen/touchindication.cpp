// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "touchindication.h"

#include <NfcAgent>
#include <NfcOverlay>
#include <NfcTagNotSupportedDialog>

#include "dialogqueue.h"

using ConnUi::NfcAgent;
using ConnUi::NfcOverlay;
using ConnUi::NfcTagNotSupportedDialog;

TouchIndication::TouchIndication(NfcAgent *agent, NfcOverlay *overlay, DialogQueue *queue)
    : QObject(agent)
    , overlay(overlay)
    , queue(queue)
{
    connect(agent, &NfcAgent::notifyTouch, this, &TouchIndication::tell);
}

void TouchIndication::tell(const QDBusObjectPath &, int status)
{
    overlay->showIndication();
    if (status == NfcAgent::Ok)
        return;
    queue->ask({[] { return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::UnsupportedTagError); },
                [](MDialog *, int) {}});
}
