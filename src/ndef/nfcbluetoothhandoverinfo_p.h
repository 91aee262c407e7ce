// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCBLUETOOTHHANDOVERINFO_P_H
#define CONNUI_NFCBLUETOOTHHANDOVERINFO_P_H

#include <memory>

#include <QDBusError>
#include <QObject>
#include <QVariant>

#include <BluetoothAdapter>
#include <BluetoothDevice>

#include "bluetoothhandoverdata.h"

namespace ConnUi {

class NfcPendingCall;

class NfcBluetoothHandoverInfoPrivate : public QObject
{
    Q_OBJECT

public:
    explicit NfcBluetoothHandoverInfoPrivate(const QVariant &info);

    NfcPendingCall *deviceAsync();

    bool creating = false;
    QVariant info;
    BluetoothHandoverData data;
    std::unique_ptr<BluetoothDevice> device;
    std::unique_ptr<BluetoothAdapter> adapter;
    /** Whether the adapter is being looked for, while nobody waits. */
    bool looking = false;
    /** Why the last creation has failed. */
    QDBusError failure;

public Q_SLOTS:
    bool startCreatingDevice();
    void deviceCreated(const BluetoothDevice &newDevice);
    void deviceCreationFailed(const QString &reason);

Q_SIGNALS:
    /** The creation has succeeded or failed. */
    void creationFinished();

private:
    void lookForAdapter();
    bool checkAdapter();
    void createDevice();
    void finishCreation(const QDBusError &error);
};

} // namespace ConnUi

#endif
