// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfcbluetoothhandoverinfo.h"

#include <QEventLoop>
#include <QObject>
#include <QPointer>

#include "ndef/nfcbluetoothhandoverinfo_p.h"

namespace ConnUi {

NfcBluetoothHandoverInfo::NfcBluetoothHandoverInfo(const QVariant &info)
    : d(new NfcBluetoothHandoverInfoPrivate(info))
{}

NfcBluetoothHandoverInfo::~NfcBluetoothHandoverInfo()
{
    delete d;
}

QString NfcBluetoothHandoverInfo::deviceAddress() const
{
    return d->data.address;
}

BluetoothDevice NfcBluetoothHandoverInfo::device() const
{
    // This object may be deleted while the loop runs; then only the pointer shows it.
    const QPointer<NfcBluetoothHandoverInfoPrivate> guard(d);

    if (!d->device && !d->creating)
        d->startCreatingDevice();
    if (guard && guard->creating) {
        // A loop for each caller: one loop cannot run twice, and a second call may come while the first
        // waits.
        QEventLoop wait;
        QObject::connect(guard, &NfcBluetoothHandoverInfoPrivate::creationFinished, &wait, &QEventLoop::quit);
        QObject::connect(guard, &QObject::destroyed, &wait, &QEventLoop::quit);
        wait.exec();
    }
    return guard && guard->device ? *guard->device : BluetoothDevice();
}

NfcPendingCall *NfcBluetoothHandoverInfo::deviceAsync()
{
    return d->deviceAsync();
}

} // namespace ConnUi
