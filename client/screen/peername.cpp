// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "screen/peername.h"

#include <QPointer>
#include <QTimer>

#include <NfcBluetoothHandoverInfo>

using ConnUi::NfcBluetoothHandoverInfo;

void findPeerName(const QVariant &info, QObject *context, const std::function<void(const QString &)> &found)
{
    QTimer::singleShot(
        0, context,
        [context = QPointer<QObject>(context), info, found] {
            const NfcBluetoothHandoverInfo peer(info);
            if (peer.deviceAddress().isEmpty())
                return;
            // Runs the event loop: the context may be gone when it returns.
            const QString name = peer.device().name();
            if (context && !name.isEmpty())
                found(name);
        });
}
