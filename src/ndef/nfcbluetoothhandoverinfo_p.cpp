// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "ndef/nfcbluetoothhandoverinfo_p.h"

#include <utility>

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QMap>
#include <QString>

#include <PendingAnswer>

#include "bus/nfcpendingcall_p.h"

namespace ConnUi {

namespace {

// Reading a member as another type than it has would make a value of thin air, and reading what was never
// sent makes Qt warn, so the form is looked at first.
BluetoothHandoverData readData(const QVariant &info)
{
    BluetoothHandoverData data;
    const auto argument = info.value<QDBusArgument>();
    const bool received = argument.currentType() == QDBusArgument::StructureType;
    if (received && argument.currentSignature().startsWith(QLatin1String("(os")))
        argument >> data;
    return data;
}

} // namespace

NfcBluetoothHandoverInfoPrivate::NfcBluetoothHandoverInfoPrivate(const QVariant &info) : info(info)
{
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
        if (!checkAdapter())
            return false;
    }
    createDevice();
    return true;
}

NfcPendingCall *NfcBluetoothHandoverInfoPrivate::deviceAsync()
{
    if (device)
        return NfcPendingCallPrivate::createFinished(this, QVariant::fromValue(*device));
    NfcPendingCall *call = NfcPendingCallPrivate::create(this);
    // Queued: the outcome may come inside this function.
    connect(
        this, &NfcBluetoothHandoverInfoPrivate::creationFinished, call,
        [this, call] {
            NfcPendingCallPrivate::finish(call, QVariant::fromValue(device ? *device : BluetoothDevice()),
                                          device ? QDBusError() : failure);
        },
        Qt::QueuedConnection);
    if (creating || looking)
        return call;
    if (adapter)
        createDevice();
    else
        lookForAdapter();
    return call;
}

void NfcBluetoothHandoverInfoPrivate::lookForAdapter()
{
    looking = true;
    const PendingAnswer *answer = BluetoothAdapter::defaultAdapterAsync(this);
    connect(answer, &PendingAnswer::finished, this, [this](const PendingAnswer *answered) {
        // A device() that waited may have been quicker.
        if (!std::exchange(looking, false) || creating)
            return;
        if (!adapter)
            adapter.reset(answered->value().value<BluetoothAdapter *>());
        if (adapter)
            adapter->setParent(nullptr);
        if (checkAdapter())
            createDevice();
        else
            finishCreation(QDBusError(QDBusError::Failed, QStringLiteral("There is no Bluetooth adapter")));
    });
}

bool NfcBluetoothHandoverInfoPrivate::checkAdapter()
{
    if (adapter && adapter->isValid())
        return true;
    qWarning("NfcBluetoothHandoverInfo: No Bluetooth adapter for creating device");
    return false;
}

void NfcBluetoothHandoverInfoPrivate::createDevice()
{
    connect(adapter.get(), &BluetoothAdapter::deviceCreated, this,
            &NfcBluetoothHandoverInfoPrivate::deviceCreated);
    connect(adapter.get(), &BluetoothAdapter::deviceCreationFailed, this,
            &NfcBluetoothHandoverInfoPrivate::deviceCreationFailed);

    // Set before the call: the outcome may come inside it.
    creating = true;
    const QMap<QString, QVariant> properties{{QStringLiteral("Address"), data.address}};
    adapter->startCreatingDevice(BluetoothDevice(properties, nullptr));
}

void NfcBluetoothHandoverInfoPrivate::deviceCreated(const BluetoothDevice &newDevice)
{
    if (newDevice.address() != data.address) {
        qWarning("NfcBluetoothHandoverInfo: device %s created when expecting creation of %s",
                 qUtf8Printable(newDevice.address()), qUtf8Printable(data.address));
        return;
    }
    device = std::make_unique<BluetoothDevice>(newDevice);
    finishCreation(QDBusError());
}

void NfcBluetoothHandoverInfoPrivate::deviceCreationFailed(const QString &reason)
{
    qWarning("NfcBluetoothHandoverInfo: Unable to create device %s: %s", qUtf8Printable(data.address),
             qUtf8Printable(reason));
    finishCreation(QDBusError(QDBusError::Failed, reason));
}

void NfcBluetoothHandoverInfoPrivate::finishCreation(const QDBusError &error)
{
    if (adapter)
        adapter->disconnect(this);
    creating = false;
    looking = false;
    failure = error;
    Q_EMIT creationFinished();
}

} // namespace ConnUi
