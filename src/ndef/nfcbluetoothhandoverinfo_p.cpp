// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndef/nfcbluetoothhandoverinfo_p.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QMap>
#include <QString>

namespace ConnUi {

namespace {

// Reading a member as another type than it has would make a value of thin air, and reading what was never
// sent makes Qt warn, so the form is looked at first.
BluetoothHandoverData readData(const QVariant &info)
{
    BluetoothHandoverData data;
    if (info.metaType() != QMetaType::fromType<QDBusArgument>())
        return data;
    const QDBusArgument argument = info.value<QDBusArgument>();
    const bool received = argument.currentType() == QDBusArgument::StructureType;
    if (received && argument.currentSignature().startsWith(QLatin1String("(os")))
        argument >> data;
    return data;
}

} // namespace

NfcBluetoothHandoverInfoPrivate::NfcBluetoothHandoverInfoPrivate(const QVariant &info) : info(info)
{
    qRegisterMetaType<BluetoothHandoverData>("ConnUi::BluetoothHandoverData");
    qDBusRegisterMetaType<BluetoothHandoverData>();
    qRegisterMetaType<QDBusArgument>();
    data = readData(info);
}

bool NfcBluetoothHandoverInfoPrivate::startCreatingDevice()
{
    if (creating)
        return true;
    if (device && device->isValid())
        return true;
    device.reset();

    if (!adapter) {
        // Kept at once, valid or not: an adapter that is not valid yet may have become so when it is asked
        // again.
        adapter.reset(BluetoothAdapter::defaultAdapter());
        if (!adapter || !adapter->isValid()) {
            qWarning("NfcBluetoothHandoverInfo: No Bluetooth adapter for creating device");
            return false;
        }
    }
    connect(adapter.get(), &BluetoothAdapter::deviceCreated, this,
            &NfcBluetoothHandoverInfoPrivate::deviceCreated);
    connect(adapter.get(), &BluetoothAdapter::deviceCreationFailed, this,
            &NfcBluetoothHandoverInfoPrivate::deviceCreationFailed);

    // Set before the call: the outcome may come inside it.
    creating = true;
    const QMap<QString, QVariant> properties{{QStringLiteral("Address"), data.address}};
    adapter->startCreatingDevice(BluetoothDevice(properties, nullptr));
    return true;
}

void NfcBluetoothHandoverInfoPrivate::deviceCreated(const BluetoothDevice &newDevice)
{
    if (newDevice.address() != data.address) {
        qWarning("NfcBluetoothHandoverInfo: device %s created when expecting creation of %s",
                 qUtf8Printable(newDevice.address()), qUtf8Printable(data.address));
        return;
    }
    device = std::make_unique<BluetoothDevice>(newDevice);
    finishCreation();
}

void NfcBluetoothHandoverInfoPrivate::deviceCreationFailed(const QString &reason)
{
    qWarning("NfcBluetoothHandoverInfo: Unable to create device %s: %s", qUtf8Printable(data.address),
             qUtf8Printable(reason));
    finishCreation();
}

void NfcBluetoothHandoverInfoPrivate::finishCreation()
{
    adapter->disconnect(this);
    creating = false;
    Q_EMIT creationFinished();
}

} // namespace ConnUi
