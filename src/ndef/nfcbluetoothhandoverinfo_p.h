// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCBLUETOOTHHANDOVERINFO_P_H
#define CONNUI_NFCBLUETOOTHHANDOVERINFO_P_H

#include <QObject>
#include <QScopedPointer>
#include <QVariant>

#include <BluetoothAdapter>
#include <BluetoothDevice>

#include "bluetoothhandoverdata.h"

namespace ConnUi {

class NfcBluetoothHandoverInfoPrivate : public QObject
{
    Q_OBJECT

public:
    explicit NfcBluetoothHandoverInfoPrivate(const QVariant &info);

    bool creating = false;
    QVariant info;
    BluetoothHandoverData data;
    QScopedPointer<BluetoothDevice> device;
    QScopedPointer<BluetoothAdapter> adapter;

public Q_SLOTS:
    bool startCreatingDevice();
    void deviceCreated(const BluetoothDevice &newDevice);
    void deviceCreationFailed(const QString &reason);

Q_SIGNALS:
    /** The creation has ended, one way or the other. */
    void decided();

private:
    void finish();
};

} // namespace ConnUi

#endif
