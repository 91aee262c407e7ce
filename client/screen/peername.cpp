// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "peername.h"

#include <QPointer>
#include <QTimer>

#include <MDialog>
#include <NfcBluetoothHandoverInfo>

using ConnUi::NfcBluetoothHandoverInfo;

void titleWithPeerName(MDialog *dialog, const QVariant &info)
{
    QTimer::singleShot(0, dialog, [dialog = QPointer<MDialog>(dialog), info] {
        const NfcBluetoothHandoverInfo peer(info);
        if (peer.deviceAddress().isEmpty())
            return;
        // Runs the event loop: the dialog may be gone when it returns.
        const QString name = peer.device().name();
        if (dialog && !name.isEmpty())
            dialog->setTitle(name);
    });
}
