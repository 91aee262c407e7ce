// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "console/handovernews.h"

#include <NfcAdapter>
#include <NfcBluetoothHandoverInfo>

#include "console/console.h"

using ConnUi::NfcAdapter;
using ConnUi::NfcBluetoothHandoverInfo;

HandoverNews::HandoverNews(NfcAdapter *adapter, Console *console) : QObject(adapter)
{
    connect(
        adapter, &NfcAdapter::handoverStarted, console,
        [console] { console->print(QStringLiteral("handover started")); });
    connect(
        adapter, &NfcAdapter::handoverCarrierSelected, console,
        [console](const QString &carrier) {
            console->print(QStringLiteral("handover goes on over %1").arg(carrier));
        });
    connect(
        adapter, &NfcAdapter::handoverCompleted, console,
        [console](const QString &carrier, const QVariant &data) {
            console->print(QStringLiteral("handover to %1 of %2 completed")
                               .arg(carrier, NfcBluetoothHandoverInfo(data).deviceAddress()));
        });
    connect(adapter, &NfcAdapter::handoverFailed, console, [console](const QString &reason) {
        console->print(QStringLiteral("handover failed: %1").arg(reason));
    });
}
